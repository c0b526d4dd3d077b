/// Any bytes as a document: they load, obey the text's rules, come back on a save, and stay in
/// order under edits taken from the same bytes.
#include "archive.h"
#include "sim_edit_doc.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

void Require(bool law) {
    if (!law)
        std::abort();
}

std::string Save(const CSimEditDoc& document) {
    std::string bytes;
    CArchive archive(&bytes);
    document.SaveArchive(archive);
    archive.Close();
    return bytes;
}

void Load(CSimEditDoc& document, std::string_view bytes) {
    CArchive archive(bytes);
    document.LoadArchive(archive);
}

/// Four bytes an edit: what, row, column, character.
void Edit(CSimEditDoc& document, std::string_view script) {
    std::int32_t width = 0;
    for (; script.size() >= 4; script.remove_prefix(4)) {
        const std::int32_t row = static_cast<unsigned char>(script[1]) % document.LineCount();
        const std::int32_t length = document.Line(row).Length();
        const std::int32_t column = static_cast<unsigned char>(script[2]) % (length + 1);
        const bool isText = script[3] != '\r' && script[3] != '\n';
        switch (script[0] & 7) {
        case 0:
            document.SplitLine(row, column, 1, script[3] & 3, 1);
            break;
        case 1:
            if (row + 1 < document.LineCount())
                document.CatLine(row, 1, 1);
            break;
        case 2:
            if (column < length)
                document.DelChar(row, column, 1, width);
            break;
        case 3:
            document.DelRange(row, column, length, 1, 1);
            break;
        case 4:
            if (document.LineCount() > 1)
                document.DeleteLine(row, 1, 1);
            break;
        case 5:
            document.OverwriteChar(row, column, isText ? script[3] : ' ', 1, width);
            break;
        default:
            document.InsertChar(row, column, isText ? script[3] : '\t', 1, width);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    CSimEditDoc document;
    Load(document, bytes);
    Require(document.Check().empty());
    const std::string saved = Save(document);
    CSimEditDoc again;
    Load(again, saved);
    Require(Save(again) == saved && again.LineCount() == document.LineCount());
    Edit(document, bytes.substr(0, 400));
    Require(document.Check().empty());
    return 0;
}
