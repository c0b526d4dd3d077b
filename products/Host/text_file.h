/// The form of a text file: its encoding and line ends, kept while an editor holds its text.
#pragma once

#include <string>
#include <string_view>

#include "ieditor_inspector.h"
#include "quorel_export.h"

/// How the bytes of a file stand for the characters of an editor, which are those of Windows-1252.
enum class FileEncoding {
    ascii,       ///< goes back as UTF-8, should other characters come in
    windows1252, ///< every byte a character
    utf8,        ///< UTF-8 of which each character exists in Windows-1252
    bytes,       ///< UTF-8 with other characters, or UTF-16: each byte shown as a character
};

struct FileForm {
    FileEncoding m_Encoding = FileEncoding::ascii;
    bool m_ByteOrderMark = false; ///< of utf8
    LineEnds m_LineEnds = LineEnds::none;
    bool operator==(const FileForm&) const = default;
};

/// Finds out the form of a file and turns its bytes into a document's archive: characters of
/// Windows-1252, CR LF between lines, a line end at the file's end included. One pass for each
/// thing that has to change; a file of the archive's own form is returned as it came.
QUOREL_API FileForm DecodeFile(std::string& bytes);

/// Turns an archive back into a file of that form. Files without line ends get LF, files with mixed
/// ones CR LF. A text that was decoded from a file with uniform line ends gives that file's bytes.
QUOREL_API void EncodeFile(std::string& archive, const FileForm& form);

/// For people: "UTF-8", "CR LF" and so on.
QUOREL_API std::string_view NameOf(FileEncoding encoding);
QUOREL_API std::string_view NameOf(LineEnds lineEnds);
