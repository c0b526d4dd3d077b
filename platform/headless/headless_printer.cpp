#include "headless_printer.h"

PageSurface::~PageSurface() = default;

int PageSurface::DrawText(CPoint at, std::u16string_view text, const TextStyle& style) {
    if (m_Page)
        m_Page->m_Texts.push_back(
            {at.x + m_Origin.x, at.y + m_Origin.y, std::u16string(text), style.m_Color});
    return MeasureText(text, style.m_Font).cx;
}

CSize PageSurface::MeasureText(std::u16string_view text, const IBackendFont*) {
    return {static_cast<int>(text.size()) * m_Settings.m_Font.m_AverageWidth,
            m_Settings.m_Font.m_Height};
}

void PageSurface::DrawLine(CPoint from, CPoint to, int width, ColorRef) {
    if (m_Page)
        m_Page->m_Rules.push_back({{from.x + m_Origin.x, from.y + m_Origin.y},
                                   {to.x + m_Origin.x, to.y + m_Origin.y},
                                   width});
}

CRect PageSurface::GetClipBox() {
    const CSize size = GetSize();
    return CRect{0, 0, size.cx, size.cy}.Offset(-m_Origin.x, -m_Origin.y);
}

HeadlessPrinter::HeadlessPrinter(const PrinterSettings& settings,
                                 std::shared_ptr<PrintRecord> record)
    : m_Settings(settings), m_Record(std::move(record)), m_Surface(settings) {}

HeadlessPrinter::~HeadlessPrinter() = default;

bool HeadlessPrinter::StartDocument(const AString& title) {
    m_Record->m_Title = title;
    return true;
}

bool HeadlessPrinter::GoOn(int page, int) {
    return m_Settings.m_LastWanted == 0 || page <= m_Settings.m_LastWanted;
}

bool HeadlessPrinter::StartPage() {
    if (static_cast<int>(m_Record->m_Pages.size()) + 1 == m_Settings.m_FailingPage)
        return false;
    m_Surface.SetPage(&m_Record->m_Pages.emplace_back());
    m_Surface.SetOrigin({});
    return true;
}

bool HeadlessPrinter::EndPage() {
    m_Surface.SetPage(nullptr);
    return true;
}

bool HeadlessPrinter::EndDocument() {
    m_Record->m_Completed = true;
    return true;
}
