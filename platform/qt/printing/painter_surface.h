/// PainterSurface: draws on the pages of a printer.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QPainter>

#include "qt_font.h"

/// Text stays text: a page keeps characters, which a reader of a PDF can search and copy. Texts of
/// one colour that stand side by side, and the blanks between them, are drawn in one go: each waits
/// for the next. Without a page nothing is drawn, but text can be measured.
class PainterSurface : public IBackendSurface {
public:
    /// @param painter is active while a page is; it and the font outlive this
    PainterSurface(QPainter& painter, CSize size, CSize resolution, const QtFont& defaultFont);
    ~PainterSurface() override;

    void FillRect(const CRect& rect, ColorRef color) override;
    /// A printer knows not what is on the page: nothing happens.
    void InvertRect(const CRect&) override {}
    int DrawText(CPoint at, std::u16string_view text, const TextStyle& style) override;
    CSize MeasureText(std::u16string_view text, const IBackendFont* font) override;
    FontMetrics GetFontMetrics(const IBackendFont* font) override;
    void DrawLine(CPoint from, CPoint to, int width, ColorRef color) override;
    void SetOrigin(CPoint origin) override { m_Origin = origin; }
    void SetClip(const CRect* clip) override;
    CRect GetClipBox() override;
    /// Draws the text that waits. Needed before the page or its font goes.
    void Flush();
    CSize GetSize() override { return m_Size; }
    CSize GetResolution() override { return m_Resolution; }

private:
    /// A text that waits, none when it is empty.
    struct Waiting {
        PrintGlyphs* m_Glyphs = nullptr;
        CPoint m_At; ///< on the device
        std::u16string m_Text;
        ColorRef m_Color = 0;
        bool m_IsBlank = false;
    };

    PrintGlyphs& GlyphsOf(const IBackendFont* font) const;
    void SetPen(ColorRef color, int width);
    bool GoesOn(const Waiting& next) const;
    void DrawGlyphs(PrintGlyphs& glyphs, QPointF base, std::u16string_view text);

    QPainter& m_Painter;
    const CSize m_Size;
    const CSize m_Resolution;
    const QtFont& m_DefaultFont;
    CPoint m_Origin;
    std::optional<CRect> m_Clip;
    std::optional<ColorRef> m_PenColor;
    int m_PenWidth = 0;
    Waiting m_Waiting;
    std::vector<quint32> m_Numbers; ///< of one run; kept for its room
    std::vector<QPointF> m_Places;
};
