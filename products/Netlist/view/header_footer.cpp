#include "header_footer.h"

#include <ctime>
#include <optional>

#include "assertion.h"
#include "dc.h"
#include "document.h"
#include "print_info.h"

namespace {

AString Now() {
    const std::time_t now = std::time(nullptr);
    char text[32] = "";
    if (const std::tm* local = std::localtime(&now))
        std::strftime(text, sizeof text, "%d.%m.%Y %H:%M", local);
    return AString::FromMultiByte(AString::kAnsi, text);
}

/// Both bands of one page.
class Bands {
public:
    Bands(CDC& dc, CRect& rect, const CDocument* document, std::int32_t page, std::int64_t total,
          std::int32_t pagesPerUnit, std::int32_t penWidth)
        : m_Dc(dc), m_Rect(rect), m_Document(document), m_Page(page), m_Total(total),
          m_PagesPerUnit(pagesPerUnit), m_PenWidth(penWidth), m_Metrics(dc.GetTextMetrics()),
          m_Height(m_Metrics.m_Height + m_Metrics.m_ExternalLeading) {}

    void Print(bool isHeader, std::uint32_t flags, const AString* text);

private:
    struct Item {
        std::uint32_t m_Unit; ///< a nibble's lowest bit
        std::optional<AString> (Bands::*m_Text)() const;
    };
    static const Item kItems[];

    std::optional<AString> Text() const;
    std::optional<AString> Title() const;
    std::optional<AString> Time() const { return Now(); }
    std::optional<AString> Page() const;
    std::optional<AString> TwoLevelPage() const;

    void Draw(const CRect& band, std::uint32_t place, const AString& text);
    void Take(bool isHeader, std::int32_t height) {
        (isHeader ? m_Rect.top : m_Rect.bottom) += isHeader ? height : -height;
    }

    CDC& m_Dc;
    CRect& m_Rect;
    const CDocument* m_Document;
    const std::int32_t m_Page;
    const std::int64_t m_Total;
    const std::int32_t m_PagesPerUnit;
    const std::int32_t m_PenWidth;
    const FontMetrics m_Metrics;
    const std::int32_t m_Height;
    std::uint32_t m_Flags = 0; ///< of the band in work
    const AString* m_Text = nullptr;
};

const Bands::Item Bands::kItems[] = {{kBandText, &Bands::Text},
                                     {kBandTitle, &Bands::Title},
                                     {kBandTime, &Bands::Time},
                                     {kBandPage, &Bands::Page},
                                     {kBandTwoLevelPage, &Bands::TwoLevelPage}};

std::optional<AString> Bands::Text() const {
    return m_Text ? std::optional(*m_Text) : std::nullopt;
}

std::optional<AString> Bands::Title() const {
    return m_Document ? std::optional(m_Document->GetTitle()) : std::nullopt;
}

std::optional<AString> Bands::Page() const {
    AString text;
    return m_Flags & kBandTotal ? text.Format(u"Page %d Of %I64d", m_Page, m_Total * m_PagesPerUnit)
                                : text.Format(u"Page %d", m_Page);
}

std::optional<AString> Bands::TwoLevelPage() const {
    AString text;
    if (m_PagesPerUnit == 1)
        return Page();
    const std::int32_t rest = m_Page % m_PagesPerUnit;
    const std::int32_t unit = m_Page / m_PagesPerUnit + (rest ? 1 : 0);
    const std::int32_t page = rest ? rest : m_PagesPerUnit;
    return m_Flags & kBandTotal
               ? text.Format(u"Page %d.%d Of %I64d.%d", unit, page, m_Total, m_PagesPerUnit)
               : text.Format(u"Page %d.%d", unit, page);
}

void Bands::Draw(const CRect& band, std::uint32_t place, const AString& text) {
    const int room = band.Width() - m_Dc.GetTextExtent(text).cx;
    const int before = place & kItemLeft ? 0 : place & kItemRight ? room : room / 2;
    if (room < 0)
        m_Dc.SetClip(&band);
    m_Dc.MoveTo({band.left + before, band.top + (band.Height() - m_Metrics.m_Height) / 2});
    m_Dc.TextOut(text);
    if (room < 0)
        m_Dc.SetClip(nullptr);
}

void Bands::Print(bool isHeader, std::uint32_t flags, const AString* text) {
    m_Flags = flags;
    m_Text = text;
    const bool draws = !(flags & kBandMeasureOnly);
    if ((flags & ~std::uint32_t{kBandMeasureOnly}) == 0)
        return;
    CRect band = m_Rect;
    (isHeader ? band.bottom : band.top) = isHeader ? band.top + m_Height : band.bottom - m_Height;
    for (const Item& item : kItems)
        if (const std::uint32_t nibble = flags / item.m_Unit; draws && (nibble & kItemShown))
            if (const std::optional<AString> shown = (this->*item.m_Text)())
                Draw(band, nibble, *shown);
    Take(isHeader, m_Height * 5 / 4);
    if (!(flags & kBandRule))
        return;
    const int edge = isHeader ? m_Rect.top : m_Rect.bottom;
    if (draws)
        m_Dc.DrawLine({m_Rect.left, edge}, {m_Rect.right, edge}, m_PenWidth, kBlack);
    Take(isHeader, m_Height / 4);
}

} // namespace

void PrintHeaderFooter(CDC& dc, const CPrintInfo& info, std::uint32_t headerFlags,
                       std::uint32_t footerFlags, CRect* rect, const CDocument* document,
                       const AString* headerText, const AString* footerText, std::int32_t pageTotal,
                       std::int32_t pagesPerUnit, std::int32_t penWidth) {
    USE_ASSERT(pagesPerUnit > 0);
    const CSize size = dc.GetSize();
    CRect whole{0, 0, size.cx, size.cy};
    const ColorRef before = dc.SetTextColor(kBlack);
    Bands bands(dc, rect ? *rect : whole, document, info.m_CurPage, pageTotal,
                pagesPerUnit > 0 ? pagesPerUnit : 1, penWidth);
    bands.Print(true, headerFlags, headerText);
    bands.Print(false, footerFlags, footerText);
    dc.SetTextColor(before);
}
