#include "debug_log.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

/// The decimal integer that the whole text is, blanks around it aside; 0 for any other text.
std::int32_t DecimalOrZero(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return 0;
    text = text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
    const bool plus = text.front() == '+' && text.size() > 1 && text[1] != '-';
    std::int32_t value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + plus, end, value);
    return error == std::errc() && stop == end ? value : 0;
}

/// Made while the library starts, so that it sees the environment as it was then.
[[maybe_unused]] DebugLog& sAtStart = DebugLog::Get();

} // namespace

DebugLog& DebugLog::Get() {
    static DebugLog log;
    return log;
}

DebugLog::DebugLog() {
    if (const char* mode = std::getenv("QUOREL_DEBUG_MODE"))
        mMode = DecimalOrZero(mode);
    mVerbose = std::getenv("QUOREL_DEBUG_VERBOSE") != nullptr;
    if (const char* file = std::getenv("QUOREL_DEBUG_FILE"))
        mFile = file;
    if (const char* name = std::getenv("QUOREL_DEBUG_LOG")) {
        mLog = std::make_unique<std::ofstream>(name, std::ios::app);
        if (!mLog->is_open())
            mLog.reset();
    }
}
