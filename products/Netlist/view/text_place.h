/// Places in the text of a document.
#pragma once

#include <cstdint>

/// A place in the text, 0-based; the column counts in the expanded text.
struct TextPlace {
    std::int32_t Column = 0;
    std::int32_t Row = 0;
    bool operator==(const TextPlace&) const = default;
};

/// Two places in order.
struct TextRange {
    TextPlace From;
    TextPlace To;
};
