/// How a command ends: the exit codes of the program, and the failures that lead to them.
#pragma once

#include <stdexcept>
#include <string>

#include "status.h"

/// The exit codes, on which scripts rely.
enum class ExitCode {
    done = 0,
    no = 1,    ///< the input is faulty, or the answer is no
    usage = 2, ///< the command line is wrong
    file = 3,  ///< a file can't be read or written, or the module can't be loaded
};

/// Ends a command with an exit code and a reason, which main prints to standard error.
class ToolError : public std::runtime_error {
public:
    ToolError(ExitCode code, const std::string& reason)
        : std::runtime_error(reason), m_Code(code) {}
    ExitCode GetCode() const { return m_Code; }

private:
    ExitCode m_Code;
};

/// Ends a command with ExitCode::file unless the status is a success.
inline void Require(const sys::Status& status) {
    if (!status)
        throw ToolError(ExitCode::file, status.reason);
}
