/// RecoveryStore: texts kept against the process's sudden end.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "astring.h"
#include "file_lock.h"
#include "text_file.h"

/// A text as it was when it was last kept.
struct RecoveredText {
    std::string m_Id{};   ///< chosen by whoever keeps it; a file name
    std::string m_Path{}; ///< the file that it is the text of; empty for an untitled one
    std::string m_Title{};
    std::string m_Editor{};    ///< the sort of editor, in the host's own words
    std::string m_KnownFile{}; ///< what its file was like when last seen, in the host's own words
    FileForm m_Form{};
    TextPosition m_Caret{0, 0};
    std::string m_Archive{}; ///< the text, as a document's archive
};

/// A folder of its own for each running process, locked while it lives, under one that all share.
/// Every file in it is whole at every moment: it is written beside, flushed and renamed. A folder
/// whose process has ended belongs to whoever takes it.
class QUOREL_API RecoveryStore {
public:
    /// The user's own folder; empty when no home directory is known.
    static std::string UserFolder();

    RecoveryStore() = default;
    RecoveryStore(const RecoveryStore&) = delete;
    RecoveryStore& operator=(const RecoveryStore&) = delete;
    /// What is kept stays; an empty folder goes.
    ~RecoveryStore();

    /// Makes and locks this process's folder below a shared one, which is made if need be.
    sys::Status Open(const std::string& sharedFolder);
    bool IsOpen() const { return m_Lock.IsLocked(); }

    /// Keeps a text, in place of the one with its id.
    sys::Status Keep(const RecoveredText& text);
    /// Forgets a text; nothing when there is none of that id.
    void Forget(const std::string& id);

    /// Takes over what processes that have ended left behind, in the order of their ids, each under
    /// a new id. What can't be read as a kept text stays where it is, for a person to look at.
    std::vector<RecoveredText> TakeOrphans();

private:
    std::string NewId();
    std::string PathOf(const std::string& id) const { return m_Folder + id + ".text"; }
    void TakeFolder(const std::string& folder, std::vector<RecoveredText>& texts);

    std::string m_Shared; ///< with a closing slash
    std::string m_Folder; ///< likewise
    sys::FileLock m_Lock;
    int m_NextId = 0;
};
