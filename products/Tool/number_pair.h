/// Pairs of numbers as a command line has them: 80x25, 1-9.
#pragma once

#include <optional>
#include <string_view>

/// Two numbers of which neither is below 1, written with something in between.
struct NumberPair {
    int m_First;
    int m_Second;
};

/// Nothing unless the text is exactly such a pair.
std::optional<NumberPair> ParsePair(std::string_view text, char between);
