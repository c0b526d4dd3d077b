#include "image_surface.h"

#include <algorithm>

#include <QPainter>

#include "qt_text.h"

namespace {

QRgb* PixelsAt(QImage& image, int x, int y) {
    return reinterpret_cast<QRgb*>(image.scanLine(y)) + x;
}

/// The mixture of two colours, ink by `coverage` of 255.
QRgb Mix(QRgb paper, QRgb ink, unsigned coverage) {
    const unsigned a = coverage + (coverage >> 7); // of 256, so that full ink is the ink itself
    const unsigned redBlue =
        ((ink & 0xFF00FF) * a + (paper & 0xFF00FF) * (256 - a)) >> 8 & 0xFF00FF;
    const unsigned green = ((ink & 0x00FF00) * a + (paper & 0x00FF00) * (256 - a)) >> 8 & 0x00FF00;
    return 0xFF000000 | redBlue | green;
}

} // namespace

ImageSurface::ImageSurface(QImage& image, const double& ratio, const QtFont& defaultFont,
                           std::function<void(const CRect&)> drawn)
    : m_Image(image), m_Ratio(ratio), m_DefaultFont(defaultFont), m_Drawn(std::move(drawn)) {}

ImageSurface::~ImageSurface() = default;

CRect ImageSurface::GetDeviceClip() const {
    const CRect all{0, 0, m_Image.width(), m_Image.height()};
    return m_Clip ? m_Clip->Intersect(all) : all;
}

CRect ImageSurface::ToDevice(const CRect& rect) const {
    return rect.Offset(m_Origin.x, m_Origin.y).Intersect(GetDeviceClip());
}

void ImageSurface::FillPixels(const CRect& part, QRgb color) {
    for (int y = part.top; y < part.bottom; ++y)
        std::fill_n(PixelsAt(m_Image, part.left, y), part.Width(), color);
}

void ImageSurface::FillRect(const CRect& rect, ColorRef color) {
    const CRect part = ToDevice(rect);
    if (part.IsEmpty())
        return;
    FillPixels(part, ToQt(color).rgb());
    m_Drawn(part);
}

void ImageSurface::InvertRect(const CRect& rect) {
    const CRect part = ToDevice(rect);
    if (part.IsEmpty())
        return;
    for (int y = part.top; y < part.bottom; ++y) {
        QRgb* const pixels = PixelsAt(m_Image, part.left, y);
        for (int x = 0; x < part.Width(); ++x)
            pixels[x] ^= 0xFFFFFF;
    }
    m_Drawn(part);
}

GlyphCells& ImageSurface::CellsOf(const IBackendFont* font) const {
    return QtFont::Of(font, m_DefaultFont).GetCells(m_Ratio);
}

void ImageSurface::BlendCell(const std::uint8_t* coverage, CPoint at, int width, const CRect& part,
                             QRgb ink) {
    const int left = std::max(at.x, part.left) - at.x;
    const int right = std::min(at.x + width, part.right) - at.x;
    for (int y = part.top; y < part.bottom; ++y) {
        const std::uint8_t* const row = coverage + (y - at.y) * width;
        QRgb* const pixels = PixelsAt(m_Image, at.x + left, y) - left;
        for (int x = left; x < right; ++x)
            if (row[x])
                pixels[x] = Mix(pixels[x], ink, row[x]);
    }
}

int ImageSurface::DrawText(CPoint at, std::u16string_view text, const TextStyle& style) {
    GlyphCells& cells = CellsOf(style.m_Font);
    const int width = cells.GetMetrics().m_AverageWidth;
    const int length = static_cast<int>(text.size());
    const CRect run{at.x, at.y, at.x + length * width, at.y + cells.GetMetrics().m_Height};
    const CRect part = ToDevice(run);
    if (part.IsEmpty())
        return run.Width();
    if (style.m_Opaque)
        FillPixels(part, ToQt(style.m_Background).rgb());
    const QRgb ink = ToQt(style.m_Color).rgb();
    const CPoint start{at.x + m_Origin.x, at.y + m_Origin.y};
    const int last = (part.right - 1 - start.x) / width;
    for (int i = (part.left - start.x) / width; i <= last; ++i)
        if (const std::uint8_t* cell = cells.Find(text[static_cast<std::size_t>(i)]))
            BlendCell(cell, {start.x + i * width, start.y}, width, part, ink);
    m_Drawn(part);
    return run.Width();
}

CSize ImageSurface::MeasureText(std::u16string_view text, const IBackendFont* font) {
    const FontMetrics& metrics = CellsOf(font).GetMetrics();
    return {static_cast<int>(text.size()) * metrics.m_AverageWidth, metrics.m_Height};
}

FontMetrics ImageSurface::GetFontMetrics(const IBackendFont* font) {
    return CellsOf(font).GetMetrics();
}

void ImageSurface::DrawLine(CPoint from, CPoint to, int width, ColorRef color) {
    const int half = std::max(width, 1);
    const CRect around = ToDevice({std::min(from.x, to.x) - half, std::min(from.y, to.y) - half,
                                   std::max(from.x, to.x) + half, std::max(from.y, to.y) + half});
    if (around.IsEmpty())
        return;
    QPainter painter(&m_Image);
    painter.setClipRect(ToQt(GetDeviceClip()));
    painter.translate(m_Origin.x, m_Origin.y);
    painter.setPen(QPen(ToQt(color), std::max(width, 1), Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(from.x, from.y, to.x, to.y);
    m_Drawn(around);
}

void ImageSurface::SetClip(const CRect* clip) {
    m_Clip = clip ? std::optional(*clip) : std::nullopt;
}

CRect ImageSurface::GetClipBox() {
    return GetDeviceClip().Offset(-m_Origin.x, -m_Origin.y);
}

CSize ImageSurface::GetResolution() {
    return {96, 96};
}
