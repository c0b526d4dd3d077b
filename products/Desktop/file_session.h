/// FileSession: the file that a text came from and goes back to.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "file_stamp.h"
#include "status.h"
#include "text_file.h"

/// The path, form and last known state of one document's file. It holds no text.
class FileSession {
public:
    enum class Disk { same, changed, gone };
    /// The largest file that is opened.
    static constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 31;

    /// Reads a file. @param archive what IEditorDriver::LoadArchive takes; on failure, upon which
    /// the session is as it was, of no use
    sys::Status Load(const std::string& path, std::string& archive);
    /// Writes the text to a file, which is the session's from then on.
    /// @param archive the text as IEditorInspector::GetArchive gives it
    /// @param modified whether it differs from what was last loaded or saved. If not, and the file
    ///        on the disk is still the one known, its bytes are kept or copied as they are.
    sys::Status Save(const std::string& path, std::string archive, bool modified);

    /// Looks at the file on the disk, reading it only when its size or time has changed. A session
    /// without a file is always the same.
    Disk CheckDisk();
    /// Takes the file as it is now for the one known, whatever it holds.
    void AcceptDisk();

    /// A text from elsewhere, such as one recovered: its file, if any, differs from it.
    /// @param knownDisk what GetKnownDisk gave; without it a file that is there counts as changed
    void Adopt(const std::string& path, const FileForm& form, const std::string& knownDisk = {});
    /// The file as it is known, in words for a later Adopt; empty if none was there.
    std::string GetKnownDisk() const;

    /// Empty for a text that has no file yet.
    const std::string& GetPath() const { return m_Path; }
    const FileForm& GetForm() const { return m_Form; }
    bool HasMixedLineEnds() const { return m_Form.m_LineEnds == LineEnds::mixed; }
    /// Whether a save would write the file's own bytes rather than the text.
    /// @param modified as for Save
    bool KeepsBytes(bool modified) const;
    /// The ends that all lines get at the next save, which writes the text even if it is as loaded.
    void SetLineEnds(LineEnds ends);
    /// The ends that a save writes: those of a file without any are LF.
    LineEnds GetSavedLineEnds() const;

private:
    /// Reads the known file. @return false: the text has to be written
    bool ReadKnown(bool modified, std::string& bytes) const;
    void Know(const std::string& path, std::string_view bytes);
    void NoteForm(const std::string& archive);

    std::string m_Path;
    FileForm m_Form;
    std::optional<FileStamp> m_Stamp; ///< when it was last read or written; nothing: not there
    std::size_t m_Hash = 0;           ///< of the file's bytes
    bool m_FormChanged = false;
};
