#include "number_pair.h"

#include <charconv>

std::optional<NumberPair> ParsePair(std::string_view text, char between) {
    NumberPair pair{};
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, pair.m_First);
    if (first.ec != std::errc() || first.ptr == end || *first.ptr != between)
        return std::nullopt;
    const auto second = std::from_chars(first.ptr + 1, end, pair.m_Second);
    if (second.ec != std::errc() || second.ptr != end || pair.m_First < 1 || pair.m_Second < 1)
        return std::nullopt;
    return pair;
}
