#include "painted_cells.h"

#include <algorithm>

#include "glyph_cells.h"

PaintedCells::PaintedCells(GlyphCells& glyphs, QRgb ink, QRgb paper)
    : m_Glyphs(glyphs), m_Ink(ink), m_Paper(paper),
      m_Size(static_cast<std::size_t>(glyphs.GetMetrics().m_AverageWidth) *
             static_cast<std::size_t>(glyphs.GetMetrics().m_Height)) {}

void PaintedCells::Paint(char16_t c, QRgb* pixels) {
    const std::uint8_t* const coverage = m_Glyphs.Find(c);
    if (!coverage)
        std::fill_n(pixels, m_Size, m_Paper);
    else
        std::transform(coverage, coverage + m_Size, pixels,
                       [this](std::uint8_t ink) { return MixColors(m_Paper, m_Ink, ink); });
}

const QRgb* PaintedCells::Find(char16_t c) {
    if (c >= m_Low.size()) {
        m_Rare.resize(m_Size);
        Paint(c, m_Rare.data());
        return m_Rare.data();
    }
    std::unique_ptr<QRgb[]>& cell = m_Low[c];
    if (!cell) {
        cell = std::make_unique<QRgb[]>(m_Size);
        Paint(c, cell.get());
    }
    return cell.get();
}
