/// GlyphCells: the characters of a font at one size, each as a picture of one cell.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>

#include <QFont>

#include "backend.h"
#include "painted_cells.h"

/// A font's measures, and how far its base line is below the top of a row.
struct MeasuredFont {
    FontMetrics m_Metrics;
    int m_Ascent = 0;
};
/// Measures a font at the size that it has. Average and maximum width are that of one cell, which
/// holds the widest of the ASCII characters.
MeasuredFont MeasureFont(const QFont& font);

/// Draws each character once, into a cell of the same size, and keeps its coverage. Painting text
/// is then copying cells: there is no shaping, each character advances by the cell's width, and a
/// row painted in parts looks as one painted at once, since nothing reaches out of its cell.
class GlyphCells {
public:
    /// @param font with its size in device pixels
    explicit GlyphCells(const QFont& font);

    const FontMetrics& GetMetrics() const { return m_Measured.m_Metrics; }
    /// A byte a pixel, row by row, 255 for full ink; null for a blank. Valid until the next call.
    /// The first call for a character draws it, later ones are a look-up. What isn't printable, and
    /// half a surrogate pair, is a hollow square.
    const std::uint8_t* Find(char16_t c);
    /// The cells in these colours, made when first asked for. Valid until the next call.
    PaintedCells& GetPainted(QRgb ink, QRgb paper);

private:
    using Cell = std::unique_ptr<std::uint8_t[]>;
    struct Slot {
        bool m_Drawn = false;
        Cell m_Cell;
    };

    Cell Draw(char16_t c) const;

    QFont m_Font;
    MeasuredFont m_Measured;
    std::array<Slot, 256> m_Low;
    std::unordered_map<char16_t, Slot> m_High;
    std::vector<std::unique_ptr<PaintedCells>> m_Painted; ///< the one used last in front
};
