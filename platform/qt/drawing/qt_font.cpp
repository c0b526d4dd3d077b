#include "qt_font.h"

#include <algorithm>
#include <cmath>

#include <QFontDatabase>
#include <QFontMetricsF>

#include "qt_text.h"

namespace {

/// What stands in for a family that isn't there: the first has the measures of "Courier New".
constexpr const char* kSubstitutes[] = {"Liberation Mono", "DejaVu Sans Mono", "Noto Sans Mono",
                                        "FreeMono"};
/// The height of characters in pixels when none is asked for.
constexpr int kDefaultHeight = 16;
constexpr double kLargestPixels = 4000;

QString ChooseFamily(const QString& asked) {
    if (!asked.isEmpty() && QFontDatabase::hasFamily(asked))
        return asked;
    for (const char* family : kSubstitutes)
        if (QFontDatabase::hasFamily(QString::fromLatin1(family)))
            return QString::fromLatin1(family);
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

void SetPixels(QFont& font, double pixels) {
    font.setPixelSize(static_cast<int>(std::clamp(std::round(pixels), 1.0, kLargestPixels)));
}

/// A positive height is that of the cell: ascent and descent together.
void SetCellHeight(QFont& font, double height) {
    SetPixels(font, height);
    const QFontMetricsF metrics(font);
    const double cell = metrics.ascent() + metrics.descent();
    if (cell > 0)
        SetPixels(font, std::floor(height * font.pixelSize() / cell));
}

void SetCellWidth(QFont& font, double width) {
    const double natural = QFontMetricsF(font).horizontalAdvance(QLatin1Char('x'));
    if (natural > 0)
        font.setStretch(std::clamp(static_cast<int>(std::lround(100 * width / natural)), 1, 4000));
}

QFont MakeFont(const LogFont& asked, double scale) {
    QFont font(ChooseFamily(ToQt(asked.m_FaceName)));
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    if (asked.m_Weight > 0)
        font.setWeight(static_cast<QFont::Weight>(std::clamp(asked.m_Weight, 1, 1000)));
    font.setItalic(asked.m_Italic != 0);
    font.setUnderline(asked.m_Underline != 0);
    font.setStrikeOut(asked.m_StrikeOut != 0);
    font.setKerning(false);
    if (asked.m_Height > 0)
        SetCellHeight(font, asked.m_Height * scale);
    else
        SetPixels(font,
                  (asked.m_Height < 0 ? -double{1} * asked.m_Height : kDefaultHeight) * scale);
    if (asked.m_Width != 0)
        SetCellWidth(font, std::abs(double{1} * asked.m_Width) * scale);
    return font;
}

} // namespace

PrintGlyphs::PrintGlyphs(const QFont& font)
    : m_Font(font), m_Raw(QRawFont::fromFont(font)), m_Measured(MeasureFont(font)) {
    m_Run.setRawFont(m_Raw);
    m_Run.setUnderline(font.underline());
    m_Run.setStrikeOut(font.strikeOut());
}

quint32 PrintGlyphs::NumberOf(char16_t c) const {
    const QList<quint32> numbers = m_Raw.glyphIndexesForString(QString(QChar(c)));
    return numbers.size() == 1 ? numbers.front() : 0;
}

quint32 PrintGlyphs::Find(char16_t c) {
    if (c < m_Low.size()) {
        std::optional<quint32>& number = m_Low[c];
        return number ? *number : *(number = NumberOf(c));
    }
    const auto [place, isNew] = m_High.try_emplace(c, 0);
    if (isNew)
        place->second = NumberOf(c);
    return place->second;
}

QtFont::~QtFont() = default;

GlyphCells& QtFont::GetCells(double ratio) const {
    if (m_LastCells && ratio == m_LastRatio)
        return *m_LastCells;
    std::unique_ptr<GlyphCells>& cells = m_Cells[ratio];
    if (!cells)
        cells = std::make_unique<GlyphCells>(MakeFont(m_Font, ratio));
    m_LastRatio = ratio;
    m_LastCells = cells.get();
    return *cells;
}

PrintGlyphs& QtFont::GetPrintGlyphs() const {
    if (!m_Print) {
        QFont font = MakeFont(m_Font, 1);
        font.setHintingPreference(QFont::PreferNoHinting);
        m_Print = std::make_unique<PrintGlyphs>(font);
    }
    return *m_Print;
}

QFont QtFont::GetControlFont() const {
    return MakeFont(m_Font, 1);
}

const QtFont& QtFont::Of(const IBackendFont* font, const QtFont& otherwise) {
    const auto* own = dynamic_cast<const QtFont*>(font);
    return own ? *own : otherwise;
}

std::vector<AString> QtFont::GetFixedPitchFamilies() {
    std::vector<AString> names;
    for (const QString& family : QFontDatabase::families())
        if (QFontDatabase::isFixedPitch(family) && !QFontDatabase::isPrivateFamily(family))
            names.push_back(FromQt(family));
    return names;
}
