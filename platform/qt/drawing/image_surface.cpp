#include "image_surface.h"

#include <algorithm>

#include <QPainter>

#include "qt_text.h"

namespace {

/// An image's pixels, for one operation.
class Pixels {
public:
    explicit Pixels(QImage& image)
        : m_First(reinterpret_cast<QRgb*>(image.bits())),
          m_Stride(image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb))) {}
    QRgb* At(int x, int y) const { return m_First + y * m_Stride + x; }

private:
    QRgb* m_First;
    qsizetype m_Stride;
};

QRgb RgbOf(ColorRef color) {
    return qRgb(color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF);
}

void Fill(const Pixels& pixels, const CRect& part, QRgb color) {
    for (int y = part.top; y < part.bottom; ++y)
        std::fill_n(pixels.At(part.left, y), part.Width(), color);
}

/// One character's place in the picture, and what of it is seen.
struct CellPlace {
    CPoint m_Corner;
    int m_Width;
    CRect m_Part;

    int FirstColumn() const { return std::max(m_Part.left - m_Corner.x, 0); }
    int EndColumn() const { return std::min(m_Part.right - m_Corner.x, m_Width); }
};

/// Lays ink over what is there.
void Blend(const Pixels& pixels, const std::uint8_t* coverage, const CellPlace& place, QRgb ink) {
    for (int y = place.m_Part.top; y < place.m_Part.bottom; ++y) {
        const std::uint8_t* const row = coverage + (y - place.m_Corner.y) * place.m_Width;
        QRgb* const line = pixels.At(place.m_Corner.x, y);
        for (int x = place.FirstColumn(); x < place.EndColumn(); ++x)
            line[x] = MixColors(line[x], ink, row[x]);
    }
}

/// Puts a whole cell over what is there.
void Copy(const Pixels& pixels, const QRgb* cell, const CellPlace& place) {
    const int first = place.FirstColumn();
    for (int y = place.m_Part.top; y < place.m_Part.bottom; ++y)
        std::copy_n(cell + (y - place.m_Corner.y) * place.m_Width + first,
                    place.EndColumn() - first, pixels.At(place.m_Corner.x + first, y));
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

void ImageSurface::FillRect(const CRect& rect, ColorRef color) {
    const CRect part = ToDevice(rect);
    if (part.IsEmpty())
        return;
    Fill(Pixels(m_Image), part, RgbOf(color));
    m_Drawn(part);
}

void ImageSurface::InvertRect(const CRect& rect) {
    const CRect part = ToDevice(rect);
    if (part.IsEmpty())
        return;
    const Pixels pixels(m_Image);
    for (int y = part.top; y < part.bottom; ++y) {
        QRgb* const line = pixels.At(part.left, y);
        for (int x = 0; x < part.Width(); ++x)
            line[x] ^= 0xFFFFFF;
    }
    m_Drawn(part);
}

GlyphCells& ImageSurface::CellsOf(const IBackendFont* font) const {
    return QtFont::Of(font, m_DefaultFont).GetCells(m_Ratio);
}

int ImageSurface::DrawText(CPoint at, std::u16string_view text, const TextStyle& style) {
    GlyphCells& cells = CellsOf(style.m_Font);
    const int width = cells.GetMetrics().m_AverageWidth;
    const int length = static_cast<int>(text.size());
    const CRect run{at.x, at.y, at.x + length * width, at.y + cells.GetMetrics().m_Height};
    const CRect part = ToDevice(run);
    if (part.IsEmpty())
        return run.Width();
    const Pixels pixels(m_Image);
    const QRgb ink = RgbOf(style.m_Color);
    PaintedCells* const painted =
        style.m_Opaque ? &cells.GetPainted(ink, RgbOf(style.m_Background)) : nullptr;
    CellPlace place{{at.x + m_Origin.x, at.y + m_Origin.y}, width, part};
    const int first = (part.left - place.m_Corner.x) / width;
    const int last = (part.right - 1 - place.m_Corner.x) / width;
    place.m_Corner.x += first * width;
    for (int i = first; i <= last; ++i, place.m_Corner.x += width) {
        const char16_t c = text[static_cast<std::size_t>(i)];
        if (painted)
            Copy(pixels, painted->Find(c), place);
        else if (const std::uint8_t* coverage = cells.Find(c))
            Blend(pixels, coverage, place, ink);
    }
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
