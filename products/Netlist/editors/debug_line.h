/// Lines of the debug log.
#pragma once

#include <string_view>

#include "debug_log.h"

/// Writes a text, which brings its own line end, to the debug log if the environment names one.
inline void WriteDebugLine(std::string_view text) {
    if (const auto& log = DebugLog::Get().mLog)
        *log << text << std::flush;
}
