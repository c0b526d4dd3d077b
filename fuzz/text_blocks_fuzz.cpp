// Bytes as a file of blocks, text unless the first byte is 0: they read without harm, and what was
// read obeys the laws of writing.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "../lib/streamio/test/tree_law.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    for (const io::CBlockPtr& block : io::test::ReadBlocks(bytes)) {
        std::vector<AString> errors;
        block->GetErrors(errors, true);
        if (const auto broken = io::test::FindBrokenLaw(*block)) {
            std::fwrite(broken->data(), 1, broken->size(), stderr);
            std::abort();
        }
    }
    return 0;
}
