#include "output.h"

#include <cerrno>
#include <cstdio>
#include <utility>

#include <unistd.h>

#include "ansi_text.h"
#include "atomic_file.h"
#include "progress.h"
#include "tool_error.h"

namespace {

constexpr const char* kStandardOutput = "-";
constexpr std::size_t kBufferSize = 64 * 1024;

/// @return 0, or the error
int WriteAll(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(STDOUT_FILENO, text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return errno;
    }
    return 0;
}

} // namespace

Output& Output::Get() {
    static Output output;
    return output;
}

Output::Output() : m_IsTerminal(::isatty(STDOUT_FILENO) != 0) {}

void Output::Write(std::string_view text) {
    if (!m_IsTerminal && text.size() >= kBufferSize) {
        Flush();
        return HandOn(text);
    }
    m_Buffer += text;
    if (m_Buffer.size() < kBufferSize)
        return;
    // A line that is begun would be in the way of the progress.
    const std::size_t lineEnd = m_IsTerminal ? m_Buffer.rfind('\n') : std::string::npos;
    std::string rest;
    if (lineEnd != std::string::npos) {
        rest = m_Buffer.substr(lineEnd + 1);
        m_Buffer.resize(lineEnd + 1);
    }
    Flush();
    m_Buffer = rest;
}

void Output::Flush() {
    const std::string text = std::exchange(m_Buffer, {}); // gone even if it can't be written
    HandOn(text);
}

void Output::HandOn(std::string_view text) {
    const Progress::Pause pause;
    const int error = WriteAll(text);
    m_IsReaderGone = m_IsReaderGone || error == EPIPE;
    if (error != 0)
        throw ToolError(ExitCode::file, sys::Failure("write", "standard output", error).reason);
}

void WriteOutput(const std::string& path, std::string_view bytes) {
    if (path == kStandardOutput)
        Output::Get().Write(bytes);
    else
        Require(sys::WriteFileAtomically(path, bytes));
}

void Complain(std::string_view line) {
    std::string shown;
    AnsiText(AnsiText::Style::plain, line).AppendLine(line, {}, shown);
    shown += '\n';
    const Progress::Pause pause;
    std::fwrite(shown.data(), 1, shown.size(), stderr);
}

std::string Count(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}
