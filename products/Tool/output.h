/// Output: standard output with its failures; and messages on standard error.
#pragma once

#include <string>
#include <string_view>

/// Standard output as all commands write it, gathered in a large buffer. A write that fails (a full
/// disk, a reader that has gone) ends the command with ExitCode::file.
class Output {
public:
    static Output& Get();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void Write(std::string_view text);
    /// Hands everything written so far on.
    void Flush();
    /// Whether a person reads it.
    bool IsTerminal() const { return m_IsTerminal; }
    /// Whether a write has failed because nobody reads any more, as with `| head`.
    bool IsReaderGone() const { return m_IsReaderGone; }

private:
    Output();
    void HandOn(std::string_view text);

    bool m_IsTerminal;
    bool m_IsReaderGone = false;
    std::string m_Buffer;
};

/// Writes a file, all of it or nothing, or to standard output for "-". A failure ends the command
/// with ExitCode::file.
void WriteOutput(const std::string& path, std::string_view bytes);

/// Writes a line to standard error. What it quotes of a file can't work a terminal: control
/// characters are shown as their pictures.
void Complain(std::string_view line);

/// "1 line", "2 lines".
std::string Count(std::size_t count, const char* what);
