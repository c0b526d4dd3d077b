#include "output.h"

#include <cerrno>
#include <cstdio>

#include <unistd.h>

#include "tool_error.h"

namespace {

constexpr std::size_t kBufferSize = 64 * 1024;

[[noreturn]] void FailWriting() {
    throw ToolError(ExitCode::file, sys::Failure("write", "standard output", errno).reason);
}

} // namespace

Output& Output::Get() {
    static Output output;
    return output;
}

Output::Output() {
    std::setvbuf(stdout, nullptr, _IOFBF, kBufferSize);
}

void Output::Write(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        FailWriting();
}

void Output::Flush() {
    if (std::fflush(stdout) != 0)
        FailWriting();
}

bool Output::IsTerminal() const {
    return ::isatty(STDOUT_FILENO) != 0;
}
