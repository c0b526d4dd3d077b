#include "painter_surface.h"

#include <algorithm>
#include <utility>

#include "qt_text.h"

PainterSurface::PainterSurface(QPainter& painter, CSize size, CSize resolution,
                               const QtFont& defaultFont)
    : m_Painter(painter), m_Size(size), m_Resolution(resolution), m_DefaultFont(defaultFont) {}

PainterSurface::~PainterSurface() = default;

PrintGlyphs& PainterSurface::GlyphsOf(const IBackendFont* font) const {
    return QtFont::Of(font, m_DefaultFont).GetPrintGlyphs();
}

void PainterSurface::FillRect(const CRect& rect, ColorRef color) {
    Flush();
    if (m_Painter.isActive())
        m_Painter.fillRect(ToQt(rect.Offset(m_Origin.x, m_Origin.y)), ToQt(color));
}

void PainterSurface::SetPen(ColorRef color, int width) {
    if (m_PenColor == color && m_PenWidth == width)
        return;
    m_PenColor = color;
    m_PenWidth = width;
    m_Painter.setPen(QPen(ToQt(color), width, Qt::SolidLine, Qt::FlatCap));
}

int PainterSurface::DrawText(CPoint at, std::u16string_view text, const TextStyle& style) {
    PrintGlyphs& glyphs = GlyphsOf(style.m_Font);
    const CSize size{static_cast<int>(text.size()) * glyphs.m_Measured.m_Metrics.m_MaxWidth,
                     glyphs.m_Measured.m_Metrics.m_Height};
    if (!m_Painter.isActive() || text.empty())
        return size.cx;
    if (style.m_Opaque && style.m_Background != kWhite)
        FillRect({at.x, at.y, at.x + size.cx, at.y + size.cy}, style.m_Background);
    Waiting next{&glyphs,
                 {at.x + m_Origin.x, at.y + m_Origin.y},
                 {},
                 style.m_Color,
                 text.find_first_not_of(u' ') == text.npos};
    if (!GoesOn(next)) {
        Flush();
        std::swap(next.m_Text, m_Waiting.m_Text); // for its room
        m_Waiting = std::move(next);
    } else if (m_Waiting.m_IsBlank) {
        m_Waiting.m_Color = style.m_Color;
        m_Waiting.m_IsBlank = next.m_IsBlank;
    }
    m_Waiting.m_Text += text;
    return size.cx;
}

/// Whether a text stands right behind the one that waits and looks the same in its colour.
bool PainterSurface::GoesOn(const Waiting& next) const {
    const Waiting& first = m_Waiting;
    if (first.m_Text.empty() || first.m_Glyphs != next.m_Glyphs || first.m_At.y != next.m_At.y)
        return false;
    const MeasuredFont& font = first.m_Glyphs->m_Measured;
    const auto width = static_cast<int>(first.m_Text.size()) * font.m_Metrics.m_MaxWidth;
    if (next.m_At.x != first.m_At.x + width)
        return false;
    return first.m_Color == next.m_Color ||
           ((first.m_IsBlank || next.m_IsBlank) && !first.m_Glyphs->HasLines());
}

void PainterSurface::Flush() {
    if (m_Waiting.m_Text.empty())
        return;
    const Waiting& text = m_Waiting;
    SetPen(text.m_Color, 1);
    DrawGlyphs(*text.m_Glyphs,
               QPointF(text.m_At.x, text.m_At.y + text.m_Glyphs->m_Measured.m_Ascent), text.m_Text);
    m_Waiting.m_Text.clear();
}

void PainterSurface::DrawGlyphs(PrintGlyphs& glyphs, QPointF base, std::u16string_view text) {
    m_Numbers.clear();
    m_Places.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
        const QPointF place(static_cast<double>(i) * glyphs.m_Measured.m_Metrics.m_MaxWidth, 0);
        if (const quint32 number = glyphs.Find(text[i])) {
            m_Numbers.push_back(number);
            m_Places.push_back(place);
        } else if (text[i] >= u' ') {
            // Not in this font: Qt finds one that has it.
            m_Painter.setFont(glyphs.m_Font);
            m_Painter.drawText(base + place, QString(QChar(text[i])));
        }
    }
    glyphs.m_Run.setRawData(m_Numbers.data(), m_Places.data(), static_cast<int>(m_Numbers.size()));
    m_Painter.drawGlyphRun(base, glyphs.m_Run);
}

CSize PainterSurface::MeasureText(std::u16string_view text, const IBackendFont* font) {
    const FontMetrics& metrics = GlyphsOf(font).m_Measured.m_Metrics;
    return {static_cast<int>(text.size()) * metrics.m_MaxWidth, metrics.m_Height};
}

FontMetrics PainterSurface::GetFontMetrics(const IBackendFont* font) {
    return GlyphsOf(font).m_Measured.m_Metrics;
}

void PainterSurface::DrawLine(CPoint from, CPoint to, int width, ColorRef color) {
    if (!m_Painter.isActive())
        return;
    Flush();
    SetPen(color, std::max(width, 1));
    m_Painter.drawLine(from.x + m_Origin.x, from.y + m_Origin.y, to.x + m_Origin.x,
                       to.y + m_Origin.y);
}

void PainterSurface::SetClip(const CRect* clip) {
    Flush();
    m_Clip = clip ? std::optional(*clip) : std::nullopt;
    if (!m_Painter.isActive())
        return;
    if (clip)
        m_Painter.setClipRect(ToQt(*clip));
    else
        m_Painter.setClipping(false);
}

CRect PainterSurface::GetClipBox() {
    const CRect all{0, 0, m_Size.cx, m_Size.cy};
    return (m_Clip ? m_Clip->Intersect(all) : all).Offset(-m_Origin.x, -m_Origin.y);
}
