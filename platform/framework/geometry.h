/// Points, sizes, rectangles and colours, in pixels or device units.
#pragma once

#include <algorithm>
#include <cstdint>

/// A colour, red in the lowest byte, green and blue above it; the highest byte is 0.
using ColorRef = std::uint32_t;

inline constexpr ColorRef kBlack = 0x000000;
inline constexpr ColorRef kWhite = 0xFFFFFF;

/// A place in pixels or device units, so far from the type's limits that sums of two of them don't
/// overflow.
constexpr int ToPixel(std::int64_t value) {
    constexpr std::int64_t kFarthest = 0x1FFFFFFF;
    return static_cast<int>(std::clamp(value, -kFarthest, kFarthest));
}

/// value times numerator by denominator, rounded to the nearest, halves away from 0; 0 unless the
/// denominator is above 0.
constexpr std::int64_t MulDiv(std::int64_t value, std::int64_t numerator,
                              std::int64_t denominator) {
    const std::int64_t product = value * numerator;
    const std::int64_t half = product < 0 ? -denominator / 2 : denominator / 2;
    return denominator > 0 ? (product + half) / denominator : 0;
}

struct CPoint {
    int x = 0;
    int y = 0;
    bool operator==(const CPoint&) const = default;
};

struct CSize {
    int cx = 0;
    int cy = 0;
    bool operator==(const CSize&) const = default;
};

/// A rectangle from left and top up to, but not including, right and bottom.
struct CRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    constexpr int Width() const { return right - left; }
    constexpr int Height() const { return bottom - top; }
    constexpr bool IsEmpty() const { return right <= left || bottom <= top; }
    constexpr bool Contains(CPoint p) const {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
    constexpr CRect Intersect(const CRect& o) const {
        return {std::max(left, o.left), std::max(top, o.top), std::min(right, o.right),
                std::min(bottom, o.bottom)};
    }
    /// The smallest rectangle around both; an empty one doesn't count.
    constexpr CRect Union(const CRect& o) const {
        if (IsEmpty())
            return o;
        if (o.IsEmpty())
            return *this;
        return {std::min(left, o.left), std::min(top, o.top), std::max(right, o.right),
                std::max(bottom, o.bottom)};
    }
    constexpr CRect Offset(int dx, int dy) const {
        return {left + dx, top + dy, right + dx, bottom + dy};
    }
    bool operator==(const CRect&) const = default;
};
