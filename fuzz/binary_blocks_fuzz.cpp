// Bytes as tokens of the binary form behind its header and the begin of a block: they read without
// harm, and what was read obeys the laws of writing.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "../lib/streamio/test/tree_law.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr char kBegin[] = "\0\14\6$begin\15\1A"; // header, Keyword, name
    std::string bytes(kBegin, sizeof kBegin - 1);
    bytes.append(reinterpret_cast<const char*>(data), size);
    for (const io::CBlockPtr& block : io::test::ReadBlocks(bytes)) {
        if (const auto broken = io::test::FindBrokenLaw(*block)) {
            std::fwrite(broken->data(), 1, broken->size(), stderr);
            std::abort();
        }
    }
    return 0;
}
