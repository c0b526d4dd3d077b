/// ImageSurface: draws into the image behind a window.
#pragma once

#include <functional>
#include <optional>

#include <QImage>

#include "qt_font.h"

/// Works on the image's pixels (Format_RGB32) directly, one for one: a window's client area, in
/// device pixels.
class ImageSurface : public IBackendSurface {
public:
    /// @param drawn hears which part of the image was touched; image, ratio and font outlive this
    ImageSurface(QImage& image, const double& ratio, const QtFont& defaultFont,
                 std::function<void(const CRect&)> drawn);
    ~ImageSurface() override;

    void FillRect(const CRect& rect, ColorRef color) override;
    void InvertRect(const CRect& rect) override;
    int DrawText(CPoint at, std::u16string_view text, const TextStyle& style) override;
    CSize MeasureText(std::u16string_view text, const IBackendFont* font) override;
    FontMetrics GetFontMetrics(const IBackendFont* font) override;
    void DrawLine(CPoint from, CPoint to, int width, ColorRef color) override;
    void SetOrigin(CPoint origin) override { m_Origin = origin; }
    void SetClip(const CRect* clip) override;
    CRect GetClipBox() override;
    CSize GetSize() override { return {m_Image.width(), m_Image.height()}; }
    CSize GetResolution() override;

private:
    GlyphCells& CellsOf(const IBackendFont* font) const;
    CRect GetDeviceClip() const;
    /// The part of a logical rectangle that is drawn on.
    CRect ToDevice(const CRect& rect) const;

    QImage& m_Image;
    const double& m_Ratio;
    const QtFont& m_DefaultFont;
    std::function<void(const CRect&)> m_Drawn;
    CPoint m_Origin;
    std::optional<CRect> m_Clip;
};
