/// Layout of a CSimEditView: metrics, sizes, scroll bars, and what brings a place into sight.
#include <algorithm>
#include <cstdlib>
#include <limits>

#include "caret_pause.h"
#include "netlist_app.h"
#include "sim_edit_doc.h"
#include "sim_edit_view.h"

namespace {

/// The greatest size of a scrollable area in pixels.
constexpr int kMostPixels = 32766;

} // namespace

bool CSimEditView::CanPaint() const {
    return GetBackendWindow() && m_Gathering == 0;
}

std::int32_t CSimEditView::RowCount() const {
    const CSimEditDoc* const document = GetTextDocument();
    return document ? document->LineCount() : 0;
}

int CSimEditView::ColumnX(std::int32_t column) const {
    return ToPixel(std::int64_t{column} * m_CharWidth);
}

int CSimEditView::RowY(std::int32_t row) const {
    return ToPixel((std::int64_t{row} - m_TopRow) * m_LineHeight);
}

CRect CSimEditView::RowRect(std::int32_t row, std::int32_t from, std::int32_t to) const {
    const int top = RowY(row);
    return {ColumnX(from), top, ColumnX(to), top + m_LineHeight};
}

CSize CSimEditView::PageSize() const {
    return {GetClientSize().cx / 4 / m_CharWidth * m_CharWidth,
            (m_LinesPerPage - 1) * m_LineHeight};
}

void CSimEditView::MeasureFont() {
    IBackendDesk* const desk = GetBackend();
    if (!desk)
        return;
    const FontMetrics font = desk->GetScreen().GetFontMetrics(CNetlistApp::Get().GetTextFont());
    m_LineHeight = std::max(font.m_Height, 1);
    m_CharWidth = std::max(font.m_AverageWidth, 1);
    m_CaretWidth = 2 * desk->GetBorderWidth();
    m_FontNumber = CNetlistApp::Get().GetFontNumber();
}

/// A view that nobody told of changed options reads them anew.
void CSimEditView::TakeChangedOptions() {
    if (m_FontNumber == CNetlistApp::Get().GetFontNumber())
        return;
    SetFont(true);
    SetBookmarkColor(static_cast<ColorRef>(CNetlistApp::Get().GetOptions().BMColor));
}

/// The column at the left edge stays there.
void CSimEditView::SetFont(bool refresh) {
    const CaretPause pause(*this);
    const int column = GetScrollPosition().x / m_CharWidth;
    MeasureFont();
    if (!refresh)
        return;
    FitToClient();
    SetScrollPosition({ColumnX(column), GetScrollPosition().y});
    if (CanPaint())
        Invalidate();
}

std::intptr_t CSimEditView::OnCreate(std::uintptr_t, std::intptr_t) {
    SetFont(false);
    m_LinesPerPage = std::max(GetClientSize().cy / m_LineHeight, 1);
    SetScrollSizes({m_CharWidth * kLeastViewWidth, 0}, PageSize(), {m_CharWidth, m_LineHeight});
    return 0;
}

std::intptr_t CSimEditView::OnSize(std::uintptr_t, std::intptr_t) {
    FitToClient();
    return 0;
}

std::intptr_t CSimEditView::OnDpiChanged(std::uintptr_t, std::intptr_t) {
    SetFont(true);
    return 0;
}

void CSimEditView::FitToClient() {
    // A window lower than a row scrolls as if it had one.
    m_LinesPerPage = std::max(GetClientSize().cy / m_LineHeight, 1);
    const int x = GetScrollPosition().x;
    const std::int32_t topRow = m_TopRow;
    const CaretPause pause(*this);
    UpdateScrollSizes(true, true, RowCount(), true);
    m_TopRow = std::min(m_TopRow, m_MaxTopRow);
    MoveThumb(); // the range may have changed with the window alone
    if ((m_TopRow != topRow || GetScrollPosition().x != x) && CanPaint())
        Invalidate();
}

void CSimEditView::ResetView(std::int32_t lineCount, std::int32_t width) {
    const CaretPause pause(*this);
    m_MaxLineLength = width;
    m_WantedColumn = 0;
    m_Selected = m_BlockSelect = m_MouseSelecting = m_SearchSelected = m_WordSelecting = false;
    m_SearchCase = false;
    m_SearchDown = true;
    m_Caret = {};
    m_TopRow = 0;
    SetScrollSizes({m_CharWidth * kLeastViewWidth, 0}, PageSize(), {m_CharWidth, m_LineHeight});
    UpdateScrollSizes(true, true, lineCount, false);
    EnsureVisible(false);
    if (CanPaint())
        Invalidate();
}

bool CSimEditView::UpdateScrollSizes(bool horizontal, bool vertical, std::int32_t lineCount,
                                     bool keepPosition) {
    const CSize client = GetClientSize();
    CSize total = GetTotalSize();
    if (horizontal)
        total.cx = static_cast<int>(
            std::min<std::int64_t>((std::int64_t{m_MaxLineLength} + 1) * m_CharWidth +
                                       std::max(m_CaretWidth, client.cx % m_CharWidth),
                                   kMostPixels));
    if (vertical) {
        total.cy = static_cast<int>(std::min<std::int64_t>(
            std::int64_t{lineCount} * m_LineHeight + client.cy % m_LineHeight,
            kMostPixels / m_LineHeight * m_LineHeight));
        if (total.cy <= client.cy)
            total.cy = 0;
        m_MaxTopRow = std::max(lineCount - m_LinesPerPage, 0);
    }
    const CSize page = PageSize();
    const CSize line{m_CharWidth, m_LineHeight};
    const CPoint before = GetScrollPosition();
    const bool changed = total != GetTotalSize();
    if (changed || page != GetPageSize() || line != GetLineSize() || !keepPosition)
        SetScrollSizes(total, page, line, keepPosition ? before : CPoint{});
    if (GetScrollPosition().x != before.x && CanPaint())
        Invalidate();
    return changed;
}

std::int32_t CSimEditView::RowOfThumb(std::int64_t position) const {
    const std::int64_t limit = GetScrollLimit().y;
    const std::int64_t row =
        MulDiv(std::clamp<std::int64_t>(position, 0, limit), m_MaxTopRow, limit);
    return static_cast<std::int32_t>(row);
}

void CSimEditView::MoveThumb() {
    if (m_Gathering)
        return;
    const std::int64_t y = MulDiv(GetScrollLimit().y, m_TopRow, m_MaxTopRow);
    SetScrollPosition({GetScrollPosition().x, ToPixel(y)});
}

std::intptr_t CSimEditView::OnVScroll(std::uintptr_t code, std::intptr_t position) {
    const struct {
        ScrollCode m_Code;
        std::int32_t m_Rows;
    } kSteps[] = {{kScrollLineUp, -1},
                  {kScrollLineDown, 1},
                  {kScrollPageUp, 1 - m_LinesPerPage},
                  {kScrollPageDown, m_LinesPerPage - 1}};
    std::int32_t row = m_TopRow;
    for (const auto& step : kSteps)
        if (step.m_Code == code)
            row = std::clamp(m_TopRow + step.m_Rows, 0, m_MaxTopRow);
    if (code == kScrollThumbPosition || code == kScrollThumbTrack)
        row = RowOfThumb(position);
    ScrollByUser(row);
    return 0;
}

std::intptr_t CSimEditView::OnMouseWheel(std::uintptr_t delta, std::intptr_t) {
    constexpr std::int64_t kNotch = 120;
    constexpr std::int64_t kRowsOfNotch = 3;
    const std::int64_t rows =
        static_cast<int>(static_cast<std::intptr_t>(delta)) * kRowsOfNotch / kNotch;
    if (rows != 0) // the first one is left out
        ScrollByUser(static_cast<std::int32_t>(
            std::clamp<std::int64_t>(m_TopRow - (rows > 0 ? rows - 1 : rows + 1), 0, m_MaxTopRow)));
    return 0;
}

void CSimEditView::ScrollByUser(std::int32_t row) {
    if (row == m_TopRow)
        return;
    ScrollToRow(row);
    if (CanPaint())
        GetBackendWindow()->Update();
}

void CSimEditView::ScrollToRow(std::int32_t row) {
    const CaretPause pause(*this);
    ScrollPixelsTo(std::max(row, 0));
    MoveThumb();
}

void CSimEditView::ScrollPixelsTo(std::int32_t topRow) {
    const std::int64_t distance = (std::int64_t{m_TopRow} - topRow) * m_LineHeight;
    m_TopRow = topRow;
    if (!CanPaint() || distance == 0)
        return;
    const CSize client = GetClientSize();
    if (std::abs(distance) >= client.cy)
        return Invalidate();
    const int down = static_cast<int>(distance);
    IBackendWindow& window = *GetBackendWindow();
    window.ScrollPixels({0, down}, {0, 0, client.cx, client.cy});
    window.Invalidate({0, down > 0 ? 0 : client.cy + down, client.cx, down > 0 ? down : client.cy},
                      true);
    window.Update();
}

std::intptr_t CSimEditView::OnHScroll(std::uintptr_t code, std::intptr_t position) {
    const CaretPause pause(*this);
    const bool toEnd = GetScrollPosition().x + m_CharWidth + GetClientSize().cx > GetTotalSize().cx;
    if (code == kScrollLineDown && toEnd)
        return 0;
    if (code == kScrollThumbPosition || code == kScrollThumbTrack)
        position = position / m_CharWidth * m_CharWidth;
    return CScrollView::OnHScroll(code, position);
}

bool CSimEditView::EnsureVisible(bool showCaret, bool centre, bool evenAtLastRow) {
    if (showCaret)
        ShowCaret();
    if (m_Caret.Column > m_MaxLineLength) { // a line that came without this view
        m_MaxLineLength = m_Caret.Column;
        UpdateScrollSizes(true, false, RowCount(), true);
    }
    bool scrolled = ShowColumn();
    if (const std::int32_t row = TopRowFor(centre, evenAtLastRow); row != m_TopRow) {
        ScrollToRow(row);
        scrolled = true;
    }
    return scrolled;
}

/// Scrolls the caret's column into sight. @return whether that moved the text
bool CSimEditView::ShowColumn() {
    const int width = GetClientSize().cx;
    const CPoint before = GetScrollPosition();
    const int x = ColumnX(m_Caret.Column) - before.x;
    if (width == 0 || (x >= 0 && x + m_CaretWidth <= width))
        return false;
    const std::int32_t column =
        x < 0 ? m_Caret.Column : m_Caret.Column - (width - m_CaretWidth) / m_CharWidth;
    const CaretPause pause(*this);
    if (m_Gathering)
        SetScrollPosition({ColumnX(column), before.y});
    else
        ScrollToPosition({ColumnX(column), before.y});
    return GetScrollPosition() != before;
}

std::int32_t CSimEditView::TopRowFor(bool centre, bool evenAtLastRow) const {
    const std::int32_t row = m_Caret.Row;
    if (centre)
        return row == m_TopRow + m_LinesPerPage / 2
                   ? m_TopRow
                   : std::clamp(row - m_LinesPerPage / 2, 0, m_MaxTopRow);
    const std::int32_t last = m_TopRow + m_LinesPerPage - 1;
    if (row < m_TopRow)
        return row;
    if (row > last)
        return row - m_LinesPerPage + 1;
    const bool hasRoom = m_LinesPerPage > 1 && m_TopRow < m_MaxTopRow;
    return row == last && evenAtLastRow && hasRoom ? m_TopRow + 1 : m_TopRow;
}
