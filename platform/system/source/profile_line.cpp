#include "profile_line.h"

#include <algorithm>

#include "profile_file.h"

namespace sys {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kQuotes = "\"'";

std::string_view StripBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

std::string_view StripQuotes(std::string_view text) {
    const bool isQuoted = text.size() >= 2 && text.front() == text.back() &&
                          kQuotes.find(text.front()) != std::string_view::npos;
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

} // namespace

std::string_view SkipByteOrderMark(std::string_view text) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    return text.substr(text.starts_with(kMark) ? kMark.size() : 0);
}

std::string_view TakeLine(std::string_view& rest) {
    const auto isEnd = [](char byte) { return byte == '\n' || byte == '\r'; };
    const auto end = std::find_if(rest.begin(), rest.end(), isEnd);
    const std::string_view line(rest.begin(), end);
    rest.remove_prefix(line.size());
    const std::size_t endSize = rest.starts_with("\r\n") ? 2 : 1;
    rest.remove_prefix(std::min(endSize, rest.size()));
    return line;
}

ProfileLine ReadProfileLine(std::string_view line) {
    const std::string_view text = StripBlanks(line);
    if (text.empty() || text.front() == ';') {
        return {};
    }
    if (text.front() == '[') {
        const std::string_view name = text.substr(1, text.find(']', 1) - 1);
        return {ProfileLine::Kind::kSection, StripBlanks(name), {}};
    }
    const std::size_t equals = text.find('=');
    if (equals == 0 || equals == std::string_view::npos) {
        return {};
    }
    const std::string_view value = StripQuotes(StripBlanks(text.substr(equals + 1)));
    return {ProfileLine::Kind::kKey, StripBlanks(text.substr(0, equals)),
            value.substr(0, ProfileFile::kMaxValue)};
}

int CompareNames(std::string_view left, std::string_view right) {
    const std::size_t shared = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < shared; ++i) {
        const int difference = LowerByte(left[i]) - LowerByte(right[i]);
        if (difference != 0) {
            return difference;
        }
    }
    return static_cast<int>(left.size() > shared) - static_cast<int>(right.size() > shared);
}

} // namespace sys
