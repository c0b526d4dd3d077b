/// PaintedCells: the cells of a font's characters in one colour on another.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include <QRgb>

class GlyphCells;

/// The mixture of two colours, ink by `coverage` of 255.
inline QRgb MixColors(QRgb paper, QRgb ink, unsigned coverage) {
    const unsigned a = coverage + (coverage >> 7); // of 256, so that full ink is the ink itself
    const unsigned redBlue =
        ((ink & 0xFF00FF) * a + (paper & 0xFF00FF) * (256 - a)) >> 8 & 0xFF00FF;
    const unsigned green = ((ink & 0x00FF00) * a + (paper & 0x00FF00) * (256 - a)) >> 8 & 0x00FF00;
    return 0xFF000000 | redBlue | green;
}

/// Mixes each character's pixels once and keeps those of the first 256 characters: a text shows few
/// characters in few colours, and painting one is then copying some short rows of pixels.
class PaintedCells {
public:
    /// @param glyphs must outlive this
    PaintedCells(GlyphCells& glyphs, QRgb ink, QRgb paper);

    bool Has(QRgb ink, QRgb paper) const { return ink == m_Ink && paper == m_Paper; }
    /// The pixels of a cell, row by row; valid until the next call.
    const QRgb* Find(char16_t c);

private:
    void Paint(char16_t c, QRgb* pixels);

    GlyphCells& m_Glyphs;
    const QRgb m_Ink;
    const QRgb m_Paper;
    const std::size_t m_Size;
    std::array<std::unique_ptr<QRgb[]>, 256> m_Low;
    std::vector<QRgb> m_Rare;
};
