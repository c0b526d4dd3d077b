/// Batches: one JSON object a line in, one a line out.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

#include "json_text.h"
#include "tool_error.h"

/// A request that can't be served. Its text is the answer's "error".
class BadRequest : public std::runtime_error {
public:
    explicit BadRequest(std::string reason)
        : std::runtime_error(reason), m_Reason(std::move(reason)) {}

    /// Unlike what(), it may hold NULs.
    const std::string& GetReason() const { return m_Reason; }

private:
    std::string m_Reason;
};

/// Reads standard input to its end and answers each line, in order, flushed. A line that is no
/// object or is too large (256 MB, 16 million values, 1000 keys, 100 levels), and each exception of
/// `serve`, is answered by {"error": "..."}. Nothing in the input ends it early; a failing output
/// does.
ExitCode RunBatch(const std::function<Json(const Json& request)>& serve);
/// The same for answers that are JSON text already: one line, without its end.
ExitCode RunTextBatch(const std::function<std::string(const Json& request)>& serve);

/// @name Members of a request; BadRequest when missing (for those with a default: not when missing)
/// or of another type
/// @{
/// 8-bit text; a character above U+00FF is refused.
std::string RequireBytes(const Json& request, const char* member);
bool GetFlag(const Json& request, const char* member, bool defaultValue);
/// @}
