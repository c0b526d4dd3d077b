// Bytes as a project file: they read without harm; a project is written as a file that reads back
// as the same project with the same kept items, and is written as the same bytes again.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "../products/Host/test/project_law.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    if (const auto broken = project_law::FindBrokenLaw(bytes)) {
        std::fwrite(broken->data(), 1, broken->size(), stderr);
        std::abort();
    }
    return 0;
}
