/// Selection of a CSimEditView: what it holds, and its highlight on the screen.
///
/// A highlight is a run of columns on each row, from the anchor or to it. When it changes, only the
/// columns in one of the two runs but not in both are inverted.
#include <algorithm>
#include <utility>

#include "caret_pause.h"
#include "dc.h"
#include "sim_edit_doc.h"
#include "sim_edit_view.h"

namespace {

constexpr std::string_view kDelimiters = " \t:=(){}/*+-,;";

} // namespace

TextPlace CSimEditView::PointToPosition(CPoint point, bool clamp) const {
    const CSimEditDoc* const document = GetTextDocument();
    const std::int32_t count = RowCount();
    if (count == 0)
        return {};
    // Above the client area is a row before the top one.
    const int above = point.y < 0 ? m_LineHeight - 1 : 0;
    const std::int32_t row = m_TopRow + (point.y - above) / m_LineHeight;
    const std::int32_t inside = std::clamp(row, 0, count - 1);
    const CSimEditLine& line = document->Line(inside);
    const int x = std::max(point.x, 0);
    std::int32_t column = x / m_CharWidth + (2 * (x % m_CharWidth) > m_CharWidth ? 1 : 0);
    if (clamp)
        column = std::min(column, line.Length());
    if (const TabEntry* tab = line.TabAt(column))
        column = tab->Position;
    return {column, clamp ? inside : row};
}

void CSimEditView::SetCaretFromPoint(CPoint point, bool show, bool extend, bool finish) {
    m_Caret = PointToPosition(point);
    if (extend || finish)
        ExtendSelection();
    if (show || finish) {
        HideCaret();
        ShowCaret();
    }
}

void CSimEditView::GoToPlace(TextPlace place) {
    if (RowCount() == 0)
        return;
    CancelSelection();
    HideCaret();
    const std::int32_t row = std::clamp(place.Row, 0, RowCount() - 1);
    const CSimEditLine& line = GetTextDocument()->Line(row);
    const std::int32_t column = std::clamp(place.Column, 0, line.Length());
    const TabEntry* const tab = line.TabAt(column);
    m_Caret = {tab ? tab->Position : column, row};
    m_WantedColumn = 0;
    EnsureVisible(true);
}

void CSimEditView::BeginSelection(bool block) {
    m_Selected = true;
    m_BlockSelect = block;
    m_SelAnchor = m_SelOld = m_SelEnd = m_Caret;
}

void CSimEditView::ExtendSelection() {
    const Highlight before = ShownHighlight();
    m_SelOld = m_SelEnd = m_Caret;
    ChangeHighlight(before, ShownHighlight());
}

void CSimEditView::CancelSelection(bool clearBlock) {
    ChangeHighlight(ShownHighlight(), {});
    m_Selected = m_MouseSelecting = m_SearchSelected = false;
    if (clearBlock)
        m_BlockSelect = false;
}

void CSimEditView::SelectRange(TextPlace anchor, TextPlace end, bool block) {
    const CSimEditDoc* const document = GetTextDocument();
    if (RowCount() == 0)
        return;
    const auto inText = [document](TextPlace place) {
        const std::int32_t row = std::clamp(place.Row, 0, document->LineCount() - 1);
        return TextPlace{std::clamp(place.Column, 0, document->Line(row).Length()), row};
    };
    m_WantedColumn = 0;
    CancelSelection();
    m_Caret = inText(anchor);
    BeginSelection(block);
    m_Caret = inText(end);
    ExtendSelection();
    if (const TabEntry* tab = document->Line(m_Caret.Row).TabAt(m_Caret.Column))
        m_Caret.Column = tab->Position;
    EnsureVisible(true);
}

TextRange CSimEditView::NormalizeSelection(TextPlace anchor, TextPlace end) {
    if (std::pair(end.Row, end.Column) < std::pair(anchor.Row, anchor.Column))
        std::swap(anchor, end);
    return {anchor, end};
}

WordRange CSimEditView::HighlightedColumns(const Highlight& highlight, std::int32_t row) const {
    const TextRange range = NormalizeSelection(highlight.Anchor, highlight.End);
    if (!highlight.Shown || row < range.From.Row || row > range.To.Row)
        return {};
    if (m_BlockSelect)
        return {std::min(range.From.Column, range.To.Column),
                std::max(range.From.Column, range.To.Column)};
    const std::int32_t length = GetTextDocument()->Line(row).Length();
    const std::int32_t end = row == range.To.Row ? std::min(range.To.Column, length) : length;
    return {row == range.From.Row ? std::min(range.From.Column, end) : 0, end};
}

void CSimEditView::InvertRow(CDC& dc, std::int32_t row) const {
    const WordRange columns = HighlightedColumns(ShownHighlight(), row);
    if (columns.Start < columns.End)
        dc.InvertRect(RowRect(row, columns.Start, columns.End));
}

void CSimEditView::ChangeHighlight(const Highlight& before, const Highlight& after) {
    const CaretPause pause(*this);
    if (!CanPaint() || !(before.Shown || after.Shown))
        return;
    CDC dc(GetBackendWindow()->GetSurface());
    OnPrepareDC(dc, nullptr);
    const std::int32_t last = std::min(m_TopRow + m_LinesPerPage, RowCount() - 1);
    for (std::int32_t row = m_TopRow; row <= last; ++row) {
        WordRange was = HighlightedColumns(before, row);
        WordRange is = HighlightedColumns(after, row);
        if (was.Start == was.End) // nothing, at whatever place is best
            was = {is.Start, is.Start};
        else if (is.Start == is.End)
            is = {was.Start, was.Start};
        for (const auto& [from, to] :
             {std::minmax(was.Start, is.Start), std::minmax(was.End, is.End)})
            if (from < to)
                dc.InvertRect(RowRect(row, from, to));
    }
}

WordRange CSimEditView::WordAt(std::string_view text, std::int32_t column) {
    const std::size_t at = std::min(static_cast<std::size_t>(std::max(column, 0)), text.size());
    const std::size_t start = text.substr(0, at).find_last_of(kDelimiters) + 1; // npos + 1 is 0
    const std::size_t end = std::min(text.find_first_of(kDelimiters, start), text.size());
    return {static_cast<std::int32_t>(start), static_cast<std::int32_t>(end)};
}
