// Bytes as a file with an index: reading it, checking it, going to its entries and making one anew
// do no harm, and an index that is made leads to the blocks it names.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "../lib/streamio/test/tree_law.h"
#include "block_index.h"

namespace {

void SeekAll(io::CToken_istream& stream, bool isOwn) {
    if (!stream.GetIndex() || !stream.GetIndex()->GetTable())
        return;
    for (const io::CBlockItemPtr& entry : *stream.GetIndex()->GetTable()) {
        AString path;
        entry->GetName(path);
        stream.Clear();
        const bool isThere = stream.SeekBlock(path) && stream.IsBegin();
        if (isOwn && !isThere)
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    io::test::Bytes_in stored(bytes, io::kReadIndex | io::kCheckIndex | io::kCheckBlocks);
    SeekAll(stored.stream, false);
    for (const unsigned flags : {0u, unsigned{io::kAllLevels}, io::kAllLevels | io::kFastScan}) {
        io::test::Bytes_in made(bytes);
        made.stream.BuildIndex(flags);
        SeekAll(made.stream, true);
    }
    return 0;
}
