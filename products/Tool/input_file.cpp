#include "input_file.h"

#include <cerrno>
#include <cstdio>
#include <vector>

#include <unistd.h>

#include "file_io.h"
#include "progress.h"
#include "tool_error.h"

namespace {

constexpr std::size_t kChunk = 64 * 1024;

std::string ReadStandardInput() {
    if (::isatty(STDIN_FILENO) != 0)
        Progress::Stop();
    std::string text;
    std::vector<char> chunk(kChunk);
    while (const std::size_t count = std::fread(chunk.data(), 1, chunk.size(), stdin)) {
        text.append(chunk.data(), count);
        if (text.size() > kMaxInput)
            Require(sys::Failure("read", "standard input", EFBIG));
    }
    if (std::ferror(stdin))
        Require(sys::Failure("read", "standard input", errno));
    return text;
}

} // namespace

std::string ReadInput(const std::string& path) {
    if (path == kStandardInput)
        return ReadStandardInput();
    std::string text;
    Require(sys::ReadWholeFile(path, kMaxInput, text));
    return text;
}
