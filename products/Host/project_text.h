/// ProjectText: a text of a project, and what is kept of a project file.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "astring.h"
#include "quorel_export.h"

/// An item of a project file that wasn't understood.
struct KeptItem {
    std::string m_Bytes{};   ///< as it stood in the file, without its last line end
    bool m_IsQuoted = false; ///< it would take others with it where it stands: it is written quoted
    bool operator==(const KeptItem&) const = default;
};
using KeptItems = std::vector<KeptItem>;

/// A text of lines with LF between them. One that was read from a file is a piece of the file's
/// bytes, and becomes a text each time that it is asked for.
class QUOREL_API ProjectText {
public:
    ProjectText() = default;
    explicit ProjectText(AString text);
    /// @param file   the bytes of the whole file, which live as long as one of its texts
    /// @param body   a part of them: the items of a text's block, all of them sound
    /// @param lines  how many lines they are
    ProjectText(std::shared_ptr<const std::string> file, std::string_view body, std::size_t lines);

    /// Cost: the text's length.
    AString Get() const;
    /// A text that is the same leaves all as it was, bytes of a file included.
    void Set(AString text);
    /// 0 for the empty text.
    std::size_t CountLines() const { return m_LineCount; }

    /// Whether nobody has set it since it was read from a file.
    bool IsOfFile() const { return m_File != nullptr; }
    /// The items of its block, while it is of a file.
    std::string_view GetBody() const { return m_Body; }

    KeptItems m_Kept{}; ///< what was not understood in its block

private:
    AString m_Text; ///< when it is not of a file
    std::shared_ptr<const std::string> m_File;
    std::string_view m_Body;
    std::size_t m_LineCount = 0;
};
