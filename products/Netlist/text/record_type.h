/// The kinds of journal record, and the characters that stand for more than themselves there.
#pragma once

#include <cstdint>

/// The kinds of journal record.
enum RecordType : std::int32_t {
    kDeleted = 0,
    kInserted = 1,
    kOverwritten = 2,
    kLineDeleted = 3,
    kTextInserted = 4,
    kRangeDeleted = 5,
    kTabDeleted = 6,
    kTabInserted = 7,
    kOverwrittenByTab = 8,
};

inline constexpr unsigned char kLineBreak = 13;
inline constexpr unsigned char kTab = 9;

/// Whether a key types the character: any but the control characters other than the tab.
inline constexpr bool CanBeTyped(char character) {
    return static_cast<unsigned char>(character) >= 32 || character == '\t';
}
