/// CDC: a device context: a surface with a font, colours and a place at which text goes on.
#pragma once

#include <string_view>

#include "backend.h"

/// Draws on a surface in logical coordinates. The surface and the font must outlive it; a new
/// context has the surface's own font, black on white, and the place (0, 0).
class QUOREL_API CDC {
public:
    explicit CDC(IBackendSurface& surface) : m_Surface(surface) {}
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    /// The device place of the logical point (0, 0).
    void SetViewportOrg(CPoint origin) { m_Surface.SetOrigin(origin); }
    /// Null: the backend's default font.
    void SelectFont(const IBackendFont* font) { m_Style.m_Font = font; }
    /// @return the colour before
    ColorRef SetTextColor(ColorRef color);
    ColorRef SetBkColor(ColorRef color);
    /// Whether the background colour fills the cells of text.
    void SetOpaque(bool opaque) { m_Style.m_Opaque = opaque; }

    void MoveTo(CPoint place) { m_Place = place; }
    CPoint GetCurrentPosition() const { return m_Place; }
    /// Draws text with its upper left corner at the current position, which moves behind it.
    void TextOut(std::u16string_view text);

    void FillRect(const CRect& rect, ColorRef color) { m_Surface.FillRect(rect, color); }
    void InvertRect(const CRect& rect) { m_Surface.InvertRect(rect); }
    void DrawLine(CPoint from, CPoint to, int width, ColorRef color) {
        m_Surface.DrawLine(from, to, width, color);
    }

    /// Of the selected font.
    FontMetrics GetTextMetrics() { return m_Surface.GetFontMetrics(m_Style.m_Font); }
    CSize GetTextExtent(std::u16string_view text) {
        return m_Surface.MeasureText(text, m_Style.m_Font);
    }
    /// Limits drawing to a device rectangle; null takes the limit away.
    void SetClip(const CRect* clip) { m_Surface.SetClip(clip); }
    /// What needs drawing, in logical coordinates.
    CRect GetClipBox() { return m_Surface.GetClipBox(); }
    CSize GetSize() { return m_Surface.GetSize(); }
    /// Device units per inch, across and down.
    CSize GetResolution() { return m_Surface.GetResolution(); }

private:
    IBackendSurface& m_Surface;
    TextStyle m_Style;
    CPoint m_Place;
};
