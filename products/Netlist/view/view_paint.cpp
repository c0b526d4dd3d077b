/// Painting of a CSimEditView: rows, highlight, background, caret.
///
/// Every row is drawn with opaque text over its cells, so what a row shows follows from the line,
/// its bookmark and the selection alone. The highlight is an inversion on top of that; whoever
/// draws a row takes it off first and puts it on again.
#include <algorithm>

#include "caret_pause.h"
#include "line_painter.h"
#include "netlist_app.h"
#include "sim_edit_doc.h"
#include "sim_edit_view.h"

namespace {

constexpr ColorRef kBackground = kWhite;

/// What overwrites the rest of a line that has become shorter; a tab is no wider.
constexpr int kTrailingBlanks = kTabStop;

} // namespace

void CSimEditView::OnPrepareDC(CDC& dc, CPrintInfo* info) {
    if (info)
        return PreparePrintDC(dc, *info);
    dc.SetViewportOrg({-GetScrollPosition().x, 0});
    dc.SetOpaque(true);
    dc.SelectFont(CNetlistApp::Get().GetTextFont());
}

void CSimEditView::OnEraseBackground(CDC& dc) {
    const CaretPause pause(*this);
    dc.FillRect(dc.GetClipBox(), kBackground);
}

void CSimEditView::OnDraw(CDC& dc) {
    HideCaret();
    CSimEditDoc* const document = GetTextDocument();
    const CRect clip = dc.GetClipBox();
    const std::int32_t first = m_TopRow + std::max(clip.top / m_LineHeight, 0);
    const std::int32_t last = std::min(m_TopRow + (clip.bottom - 1) / m_LineHeight, RowCount() - 1);
    for (std::int32_t row = first; row <= last; ++row) {
        const CSimEditLine& line = document->ColouredLine(row);
        InvertRow(dc, row);
        PaintLine(line, row, &dc, false, line.Bookmark() != 0, false);
        InvertRow(dc, row);
    }
    ShowCaret();
}

void CSimEditView::PaintLine(const CSimEditLine& line, std::int32_t row, CDC* dc,
                             bool trailingBlanks, bool bookmark, bool erase) {
    if (dc)
        return DrawRow(*dc, line, row, trailingBlanks, bookmark, erase);
    if (!CanPaint())
        return;
    CDC own(GetBackendWindow()->GetSurface());
    OnPrepareDC(own, nullptr);
    DrawRow(own, line, row, trailingBlanks, bookmark, erase);
}

void CSimEditView::DrawRow(CDC& dc, const CSimEditLine& line, std::int32_t row, bool trailingBlanks,
                           bool bookmark, bool erase) {
    const int top = RowY(row);
    const int right = GetClientSize().cx + GetScrollPosition().x;
    const ColorRef background = bookmark ? m_BookmarkColor : kBackground;
    if (bookmark || erase)
        dc.FillRect({0, top, right, top + m_LineHeight}, background);
    dc.SetBkColor(background);
    dc.MoveTo({0, top});
    LinePainter painter(dc, right);
    painter.Columns(line, 0, line.Length());
    if (trailingBlanks)
        painter.Blanks(kTrailingBlanks);
    else if (m_BlockSelect)
        painter.Blanks(std::max(m_SelAnchor.Column, m_SelEnd.Column) - line.Length());
}

void CSimEditView::OnUpdate(CView*, std::intptr_t hint, CObject*) {
    const CaretPause pause(*this);
    KeepInsideText();
    UpdateScrollSizes(true, true, RowCount(), true);
    if (CanPaint()) {
        const CSize client = GetClientSize();
        const auto first = std::clamp<std::intptr_t>(hint, m_TopRow, m_TopRow + m_LinesPerPage + 1);
        GetBackendWindow()->Invalidate(
            {0, RowY(static_cast<std::int32_t>(first)), client.cx, client.cy}, true);
        GetBackendWindow()->Update();
    }
    if (m_TopRow > m_MaxTopRow)
        ScrollToRow(m_MaxTopRow);
}

/// Another view may have taken away the text around this one's caret and selection. A block's
/// columns may lie behind the lines.
void CSimEditView::KeepInsideText() {
    const CSimEditDoc* const document = GetTextDocument();
    if (RowCount() == 0)
        return;
    const auto keep = [document](TextPlace& place, bool column) {
        place.Row = std::min(place.Row, document->LineCount() - 1);
        if (column)
            place.Column = std::min(place.Column, document->Line(place.Row).Length());
    };
    keep(m_Caret, true);
    if (!m_Selected)
        return;
    for (TextPlace* place : {&m_SelAnchor, &m_SelOld, &m_SelEnd})
        keep(*place, !m_BlockSelect);
}

void CSimEditView::EndGathering() {
    MoveThumb();
    ApplyCaret();
    if (!CanPaint())
        return;
    Invalidate();
    GetBackendWindow()->Update();
}

void CSimEditView::SetBookmarkColor(ColorRef color) {
    m_BookmarkColor = color;
    if (CanPaint())
        Invalidate();
}

void CSimEditView::HideCaret() {
    m_CaretHidden = true;
    ApplyCaret();
}

void CSimEditView::ShowCaret() {
    m_CaretHidden = false;
    ApplyCaret();
}

void CSimEditView::ApplyCaret() {
    m_CaretHidden = m_CaretHidden || !m_HasFocus;
    if (m_CaretHidden)
        return PutCaret(nullptr);
    const int left = ColumnX(m_Caret.Column) - GetScrollPosition().x;
    const int top = RowY(m_Caret.Row);
    const CRect caret{left, top, left + m_CaretWidth, top + m_LineHeight};
    PutCaret(&caret);
}

void CSimEditView::PutCaret(const CRect* caret) {
    if (!CanPaint() || (caret ? m_ShownCaret == *caret : !m_ShownCaret))
        return;
    m_ShownCaret = caret ? std::optional(*caret) : std::nullopt;
    GetBackendWindow()->SetCaret(caret);
}

std::intptr_t CSimEditView::OnSetFocus(std::uintptr_t other, std::intptr_t) {
    if (reinterpret_cast<CWnd*>(other) == this)
        return 0;
    m_HasFocus = true;
    TakeChangedOptions();
    ShowCaret();
    return 0;
}

std::intptr_t CSimEditView::OnKillFocus(std::uintptr_t other, std::intptr_t) {
    if (reinterpret_cast<CWnd*>(other) == this)
        return 0;
    m_HasFocus = false;
    HideCaret();
    return 0;
}
