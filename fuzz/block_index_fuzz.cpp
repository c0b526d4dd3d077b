// Bytes as a file with an index: reading it, checking it, going to its entries and making one anew
// do no harm. An index that passes its check, and one that is made, lead to the blocks they name;
// so does the one that is stored when the blocks are written with an index.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "../lib/streamio/test/tree_law.h"
#include "block_index.h"

namespace {

/// True at a block whose name, which may have tabs, ends the path.
bool IsAtBlock(io::CToken_istream& stream, const AString& path) {
    if (stream.IsBegin(path))
        return true;
    for (std::size_t tab = path.find(u'\t'); tab != AString::npos; tab = path.find(u'\t', tab + 1))
        if (stream.IsBegin(std::u16string_view(path).substr(tab + 1)))
            return true;
    return false;
}

void SeekAll(io::CToken_istream& stream, bool isSound) {
    if (!stream.GetIndex() || !stream.GetIndex()->GetTable())
        return;
    for (const io::CBlockItemPtr& entry : *stream.GetIndex()->GetTable()) {
        AString path;
        entry->GetName(path);
        stream.Clear();
        const bool isThere = stream.SeekBlock(path) && IsAtBlock(stream, path);
        if (isSound && !isThere && !path.starts_with(u"$"))
            std::abort();
    }
}

/// The blocks of a file in one with an index, which must pass the check.
void WriteIndexed(const std::string& bytes, unsigned flags) {
    std::stringbuf buffer;
    io::CByte_streambuf units(buffer);
    io::CRawOstream raw(&units);
    io::CToken_ostream out(raw, &io::CToken_grammar_default::Get(), flags & io::kBinary);
    out.BuildIndex(flags & io::kAllLevels);
    for (const io::CBlockPtr& block : io::test::ReadBlocks(bytes))
        if (!block->GetNameToken().GetTextView().starts_with(u"$")) // no index within one
            block->Write(out);
    out.Close();
    io::test::Bytes_in in(buffer.str(), io::kReadIndex | io::kCheckIndex | io::kCheckBlocks);
    if (in.stream.Fail() || !in.stream.GetIndex())
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    io::test::Bytes_in stored(bytes, io::kReadIndex | io::kCheckIndex | io::kCheckBlocks);
    SeekAll(stored.stream, stored.stream.Good());
    for (const unsigned flags : {0u, unsigned{io::kAllLevels}, io::kAllLevels | io::kFastScan}) {
        io::test::Bytes_in made(bytes);
        made.stream.BuildIndex(flags);
        SeekAll(made.stream, true);
    }
    for (const unsigned flags : {0u, io::kAllLevels | io::kBinary})
        WriteIndexed(bytes, flags);
    return 0;
}
