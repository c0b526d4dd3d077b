// Runs a fuzz target once over each file of the folders and files that are named, without
// libFuzzer.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

void Replay(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    std::printf("%s: %zu bytes\n", path.c_str(), bytes.size());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

int ReplayAll(const fs::path& path) {
    if (!fs::is_directory(path)) {
        Replay(path);
        return 1;
    }
    int count = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) {
            Replay(entry.path());
            ++count;
        }
    }
    return count;
}

} // namespace

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        if (!fs::exists(argv[i])) {
            std::fprintf(stderr, "%s: not there\n", argv[i]);
            return 3;
        }
        count += ReplayAll(argv[i]);
    }
    if (count == 0) {
        std::fprintf(stderr, "usage: replay FILE-OR-FOLDER...; nothing was replayed\n");
        return 1;
    }
    return 0;
}
