/// Output: standard output with its failures.
#pragma once

#include <string_view>

/// Standard output as all commands write it, gathered in a large buffer. A write that fails (a full
/// disk) ends the command with ExitCode::file.
class Output {
public:
    static Output& Get();

    void Write(std::string_view text);
    /// Hands everything written so far on.
    void Flush();
    /// Whether a person reads it.
    bool IsTerminal() const;

private:
    Output();
};
