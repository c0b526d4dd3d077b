/// The expansion of tab characters to blanks.
#pragma once

#include "tab_table.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

/// What a tab takes at most beside its own byte.
inline constexpr std::size_t kTabGrowth = kTabStop - 1;

inline std::size_t CountTabs(std::string_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\t'));
}

/// The bytes that text takes at most when its tabs are expanded.
inline std::size_t ExpandedRoom(std::string_view text) {
    return text.size() + CountTabs(text) * kTabGrowth;
}

/// Writes text, which stands at column, to out with each tab as the blanks up to the next tab stop,
/// and appends an entry for each. out has ExpandedRoom bytes. @return the bytes written
inline std::size_t ExpandTabs(std::string_view text, std::int32_t column, char* out,
                              TabTable& tabs) {
    char* const begin = out;
    for (const char character : text) {
        if (character != '\t') {
            *out++ = character;
            continue;
        }
        const std::int32_t position = column + static_cast<std::int32_t>(out - begin);
        tabs.push_back({position, TabWidthAt(position)});
        out = std::fill_n(out, TabWidthAt(position), ' ');
    }
    return static_cast<std::size_t>(out - begin);
}
