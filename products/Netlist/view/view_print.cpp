/// Printing of a CSimEditView: one font, a table of pages built once, and each page from it.
#include <array>
#include <cstdio>
#include <new>

#include "dc.h"
#include "header_footer.h"
#include "line_painter.h"
#include "netlist_app.h"
#include "print_info.h"
#include "print_layout.h"
#include "sim_edit_doc.h"
#include "sim_edit_view.h"

namespace {

constexpr std::int32_t kNumberColumns = 6;
constexpr std::string_view kNoNumber = "      ";
static_assert(kNoNumber.size() == kNumberColumns);
constexpr std::int32_t kPenWidth = 2;

/// The text font as tall and wide on the device as on the screen; null without the memory for it.
std::unique_ptr<IBackendFont> MakePrintFont(IBackendDesk& desk, CSize resolution) {
    LogFont font = CNetlistApp::Get().GetOptions().TextFont;
    const CSize screen = desk.GetScreen().GetResolution();
    font.m_Height = ToPixel(MulDiv(font.m_Height, resolution.cy, screen.cy));
    font.m_Width = ToPixel(MulDiv(font.m_Width, resolution.cx, screen.cx));
    try {
        return desk.CreateFont(font);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

/// The flags of an option, which can't ask for measuring.
std::uint32_t BandFlags(std::int32_t option) {
    return static_cast<std::uint32_t>(option) & ~std::uint32_t{kBandMeasureOnly};
}

/// The header and footer of the options on a page of so many.
void PrintBands(CDC& dc, const CPrintInfo& info, std::uint32_t mode, CRect& area,
                const CDocument* document, std::int32_t pageTotal) {
    const EditorOptions& options = CNetlistApp::Get().GetOptions();
    PrintHeaderFooter(dc, info, BandFlags(options.PrintHead) | mode,
                      BandFlags(options.PrintFoot) | mode, &area, document, &options.PrintHeadText,
                      &options.PrintFootText, pageTotal, 1, kPenWidth);
}

void PrintLineNumber(LinePainter& painter, const PaperRow& row) {
    std::array<char, 16> text;
    const int size = std::snprintf(text.data(), text.size(), "%04d: ", row.Row + 1);
    painter.Text(row.Continues ? kNoNumber
                               : std::string_view(text.data(), static_cast<std::size_t>(size)));
}

} // namespace

bool CSimEditView::OnPreparePrinting(CPrintInfo& info) {
    const bool isAsked = !info.m_Preview && !info.m_Request.m_Direct;
    info.m_Request.m_AllowSelection = info.m_Request.m_Selection = m_Selected && isAsked;
    return CScrollView::OnPreparePrinting(info);
}

void CSimEditView::OnBeginPrinting(CDC& dc, CPrintInfo& info) {
    const EditorOptions& options = CNetlistApp::Get().GetOptions();
    m_Print = std::make_unique<PrintLayout>();
    if (IBackendDesk* desk = GetBackend())
        m_Print->m_Font = MakePrintFont(*desk, dc.GetResolution());
    dc.SelectFont(m_Print->m_Font.get());
    const FontMetrics metrics = dc.GetTextMetrics();
    m_Print->m_PrintLineHeight = std::max(metrics.m_Height + metrics.m_ExternalLeading, 1);
    m_Print->m_PrintCharWidth = std::max(metrics.m_MaxWidth, 1);
    const auto border = [this](std::int32_t columns) {
        return std::int64_t{columns} * m_Print->m_PrintCharWidth;
    };
    const CSize size = dc.GetSize();
    m_Print->m_PrintPage = {ToPixel(border(options.PrintLBorder)), 0,
                            ToPixel(size.cx - border(options.PrintRBorder)), size.cy};
    CRect area = m_Print->m_PrintPage;
    PrintBands(dc, info, kBandMeasureOnly, area, GetDocument(), 1);
    m_Print->m_PrintLinesPerPage = std::max(area.Height() / m_Print->m_PrintLineHeight, 1);
    m_Print->m_PrintCharsPerLine = std::max(area.Width() / m_Print->m_PrintCharWidth, 1);
    m_Print->m_LineNumbers = options.PrintLineNumbers != 0;
    BuildPageTable(info.m_Request.m_Selection);
    info.m_MinPage = 1;
    info.m_MaxPage = m_Print->m_PageTable.PageCount();
}

void CSimEditView::BuildPageTable(bool selectionOnly) {
    const CSimEditDoc* const document = GetTextDocument();
    if (!document)
        return;
    const std::int32_t last = document->LineCount() - 1;
    PrintRange range{{{}, {document->Line(last).Length(), last}}, false};
    if (selectionOnly && m_Selected)
        range = {SelectedRange(), m_BlockSelect};
    const std::int32_t numbers = m_Print->m_LineNumbers ? kNumberColumns : 0;
    m_Print->m_PageTable =
        PageTable(range, PrintedLengths(), m_Print->m_PrintCharsPerLine - numbers,
                  m_Print->m_PrintLinesPerPage);
}

std::function<std::int32_t(std::int32_t)> CSimEditView::PrintedLengths() const {
    return [document = GetTextDocument()](std::int32_t row) {
        return row < document->LineCount() ? document->Line(row).Length() : 0;
    };
}

void CSimEditView::PreparePrintDC(CDC& dc, CPrintInfo& info) const {
    dc.SetViewportOrg({});
    dc.SetOpaque(false);
    dc.SelectFont(m_Print ? m_Print->m_Font.get() : nullptr);
    info.m_ContinuePrinting = m_Print && info.m_CurPage <= m_Print->m_PageTable.PageCount();
}

void CSimEditView::OnPrint(CDC& dc, CPrintInfo& info) {
    CSimEditDoc* const document = GetTextDocument();
    if (!m_Print || !document)
        return;
    const PrintLayout& print = *m_Print;
    CRect area = print.m_PrintPage;
    PrintBands(dc, info, 0, area, document, print.m_PageTable.PageCount());
    dc.SetTextColor(kBlack);
    LinePainter painter(dc);
    CPoint place{print.m_PrintPage.left, area.top};
    print.m_PageTable.ForEachRow(info.m_CurPage, PrintedLengths(), [&](const PaperRow& row) {
        dc.MoveTo(place);
        if (print.m_LineNumbers)
            PrintLineNumber(painter, row);
        if (row.Row < document->LineCount())
            painter.Columns(document->ColouredLine(row.Row), row.From, row.To);
        place.y += print.m_PrintLineHeight;
    });
}

void CSimEditView::OnEndPrinting(CDC& dc, CPrintInfo&) {
    dc.SelectFont(nullptr);
    m_Print.reset();
}

std::optional<PrintState> CSimEditView::GetPrintState() const {
    if (!m_Print)
        return std::nullopt;
    PrintState state{m_Print->m_PrintLinesPerPage, m_Print->m_PrintCharsPerLine, {}};
    for (const TextPlace& place : m_Print->m_PageTable.GetPlaces())
        state.m_PageTable.push_back({place.Row, place.Column});
    return state;
}
