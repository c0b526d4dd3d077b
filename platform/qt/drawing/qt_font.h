/// QtFont: a font of a QtDesk, good on screens of any pixel ratio and on printers.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <QFont>
#include <QGlyphRun>
#include <QRawFont>

#include "backend.h"
#include "glyph_cells.h"

/// A font at a printer's size: its glyphs by character, which need no shaping either.
struct PrintGlyphs {
    explicit PrintGlyphs(const QFont& font);
    /// The number of a character's glyph, 0 when the font lacks it.
    quint32 Find(char16_t c);
    /// Whether blanks show, by lines through or below them.
    bool HasLines() const { return m_Font.underline() || m_Font.strikeOut(); }

    QFont m_Font;
    QRawFont m_Raw;
    MeasuredFont m_Measured;
    QGlyphRun m_Run; ///< in this font, for whoever draws
private:
    quint32 NumberOf(char16_t c) const;

    std::array<std::optional<quint32>, 256> m_Low;
    std::map<char16_t, quint32> m_High;
};

/// What a LogFont asks for, resolved against the fonts there are: the family asked for, else the
/// first one installed of a fixed list, else the system's fixed-pitch font.
class QtFont : public IBackendFont {
public:
    explicit QtFont(const LogFont& font) : m_Font(font) {}
    ~QtFont() override;

    /// For a screen: the font's sizes times the ratio.
    GlyphCells& GetCells(double ratio) const;
    /// For a printer: the font's sizes are its device units.
    PrintGlyphs& GetPrintGlyphs() const;
    /// For a control of a dialog.
    QFont GetControlFont() const;

    /// The font behind that one; the other when it is null or another desk's.
    static const QtFont& Of(const IBackendFont* font, const QtFont& otherwise);
    static std::vector<AString> GetFixedPitchFamilies();

private:
    LogFont m_Font;
    mutable std::map<double, std::unique_ptr<GlyphCells>> m_Cells;
    mutable double m_LastRatio = 0;
    mutable GlyphCells* m_LastCells = nullptr;
    mutable std::unique_ptr<PrintGlyphs> m_Print;
};
