/// LinePainter: draws the 8-bit text of lines in their colours.
#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

#include "color_spans.h"
#include "dc.h"

class CSimEditLine;

/// Draws at a context's current position, which moves behind what was drawn. Text goes out in
/// pieces of at most 1024 characters, and nothing is allocated.
class LinePainter {
public:
    /// @param right what would begin at or behind this logical place is left out
    explicit LinePainter(CDC& dc, int right = std::numeric_limits<int>::max())
        : m_Dc(dc), m_Right(right) {}

    /// Columns from up to but not including to, clamped to the line: its spans in their colours,
    /// the rest in the context's text colour. A line drawn in pieces, in order, is walked once; it
    /// must not change in between.
    void Columns(const CSimEditLine& line, std::int32_t from, std::int32_t to);
    void Text(std::string_view text);
    void Blanks(std::int64_t count);

private:
    void Coloured(std::string_view text, ColorRef color);

    CDC& m_Dc;
    int m_Right;
    // Where the last call of Columns stopped, for the one that goes on there.
    const CSimEditLine* m_Line = nullptr;
    ColorSpans::const_iterator m_Span;
    std::int32_t m_Behind = 0;
};
