/// How a call on the system ended: the reason of a failure as a value.
#pragma once

#include <string>
#include <string_view>

#include "quorel_export.h"

/// Everything that the libraries ask of the operating system. Paths are in the file system's own
/// bytes (UTF-8), separated by "/"; a path that holds a NUL is refused with EINVAL, never cut.
/// Nothing here throws but for lack of memory.
namespace sys {

/// Success, or an error with a sentence for the user.
struct [[nodiscard]] Status {
    int code = 0;       ///< 0 for success, else the system's error number (errno)
    std::string reason; ///< "cannot read '/x/y': Permission denied"; empty for success

    bool IsOk() const { return code == 0; }
    explicit operator bool() const { return IsOk(); }
};

/// The failure "cannot <action> '<subject>': <text of the error number>". A code of 0 counts as
/// EIO, so that a failure never looks like a success.
QUOREL_API Status Failure(std::string_view action, std::string_view subject, int code);

/// The failure with a reason of one's own in place of the error number's text.
QUOREL_API Status Failure(std::string_view action, std::string_view subject, int code,
                          std::string_view reason);

} // namespace sys
