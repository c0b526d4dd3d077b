/// Where the tabs of one line stand.
#pragma once

#include <cstdint>
#include <vector>

/// One tab: its first column in the expanded text and the columns that it takes, 1 to 4. Position
/// plus width is a multiple of kTabStop, and the text's columns there are blanks.
struct TabEntry {
    std::int32_t Position = 0;
    std::int32_t Width = 0;

    friend bool operator==(const TabEntry&, const TabEntry&) = default;
};

/// Sorted by ascending position.
using TabTable = std::vector<TabEntry>;

/// The distance of the tab stops in columns.
inline constexpr std::int32_t kTabStop = 4;

/// The columns from a place to the next tab stop behind it.
inline constexpr std::int32_t TabWidthAt(std::int32_t column) {
    return kTabStop - column % kTabStop;
}
