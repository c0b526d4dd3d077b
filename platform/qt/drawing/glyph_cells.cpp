#include "glyph_cells.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

namespace {

/// Characters beyond the first 256 that are kept; then drawing starts anew.
constexpr std::size_t kMostHigh = 2048;
/// Pairs of colours that are kept; the one not used for longest goes.
constexpr std::size_t kMostPainted = 32;
constexpr char16_t kHollowSquare = u'\u25A1';

bool IsBlank(char16_t c) {
    return c == u' ' || c == u'\u00A0';
}

bool IsPrintable(char16_t c) {
    const bool control = c < 0x20 || (c >= 0x7F && c < 0xA0);
    const bool surrogate = c >= 0xD800 && c < 0xE000;
    return !control && !surrogate;
}

/// Lines under and through a character, over the whole cell, so that a run has no gaps in them.
void DrawBars(QPainter& painter, const QFont& font, int ascent, int width) {
    const QFontMetricsF metrics(font);
    const int thick = std::max(1, static_cast<int>(std::lround(metrics.lineWidth())));
    if (font.underline())
        painter.fillRect(0, ascent + static_cast<int>(std::lround(metrics.underlinePos())), width,
                         thick, Qt::white);
    if (font.strikeOut())
        painter.fillRect(0, ascent - static_cast<int>(std::lround(metrics.strikeOutPos())), width,
                         thick, Qt::white);
}

} // namespace

MeasuredFont MeasureFont(const QFont& font) {
    const QFontMetricsF metrics(font);
    double widest = 1;
    for (char16_t c = u' '; c < 0x7F; ++c)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(c)));
    const int ascent = static_cast<int>(std::lround(metrics.ascent()));
    const int height = ascent + static_cast<int>(std::lround(metrics.descent()));
    const int width = static_cast<int>(std::lround(widest));
    const int leading = static_cast<int>(std::lround(metrics.leading()));
    return {{std::max(height, 1), std::max(leading, 0), width, width}, ascent};
}

GlyphCells::GlyphCells(const QFont& font) : m_Font(font), m_Measured(MeasureFont(font)) {}

const std::uint8_t* GlyphCells::Find(char16_t c) {
    if (c >= m_Low.size() && m_High.size() >= kMostHigh && !m_High.contains(c))
        m_High.clear();
    Slot& slot = c < m_Low.size() ? m_Low[c] : m_High[c];
    if (!slot.m_Drawn) {
        slot.m_Drawn = true;
        slot.m_Cell = Draw(c);
    }
    return slot.m_Cell.get();
}

PaintedCells& GlyphCells::GetPainted(QRgb ink, QRgb paper) {
    auto place = std::ranges::find_if(
        m_Painted, [&](const auto& painted) { return painted->Has(ink, paper); });
    if (place == m_Painted.end()) {
        if (m_Painted.size() >= kMostPainted)
            m_Painted.pop_back();
        m_Painted.push_back(std::make_unique<PaintedCells>(*this, ink, paper));
        place = std::prev(m_Painted.end());
    }
    std::rotate(m_Painted.begin(), place, place + 1);
    return *m_Painted.front();
}

GlyphCells::Cell GlyphCells::Draw(char16_t c) const {
    const bool bars = m_Font.underline() || m_Font.strikeOut();
    if (IsBlank(c) && !bars)
        return nullptr;
    const int width = GetMetrics().m_AverageWidth;
    QImage image(width, GetMetrics().m_Height, QImage::Format_Grayscale8);
    image.fill(0);
    QPainter painter(&image);
    QFont plain = m_Font;
    plain.setUnderline(false);
    plain.setStrikeOut(false);
    painter.setFont(plain);
    painter.setPen(Qt::white);
    const QString text(QChar(IsPrintable(c) ? c : kHollowSquare));
    // A narrower or wider character from another font stands in the middle of its cell.
    const double spare = width - QFontMetricsF(plain).horizontalAdvance(text);
    painter.drawText(QPointF(std::abs(spare) < 1 ? 0 : spare / 2, m_Measured.m_Ascent), text);
    DrawBars(painter, m_Font, m_Measured.m_Ascent, width);
    painter.end();

    auto cell = std::make_unique<std::uint8_t[]>(static_cast<std::size_t>(width) *
                                                 static_cast<std::size_t>(GetMetrics().m_Height));
    for (int row = 0; row < GetMetrics().m_Height; ++row)
        std::memcpy(cell.get() + row * width, image.constScanLine(row),
                    static_cast<std::size_t>(width));
    return cell;
}
