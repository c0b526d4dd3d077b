/// The expansion of tab characters to blanks.
#pragma once

#include "tab_table.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

/// Writes text to out with each tab as the blanks up to the next tab stop, and appends an entry for
/// each. out has room for kTabStop bytes a character. @return the bytes written
inline std::size_t ExpandTabs(std::string_view text, char* out, TabTable& tabs) {
    char* const begin = out;
    for (const char character : text) {
        if (character != '\t') {
            *out++ = character;
            continue;
        }
        const auto column = static_cast<std::int32_t>(out - begin);
        tabs.push_back({column, TabWidthAt(column)});
        out = std::fill_n(out, TabWidthAt(column), ' ');
    }
    return static_cast<std::size_t>(out - begin);
}
