#include "view.h"

#include <algorithm>
#include <cstdlib>

#include "dc.h"
#include "document.h"
#include "frame.h"
#include "print_info.h"

namespace {

/// Where a scroll code leads from a position; at is what the thumb says.
int ScrolledTo(std::uintptr_t code, int at, const ScrollInfo& bar, int limit) {
    static constexpr struct {
        ScrollCode m_Code;
        int m_Lines, m_Pages;
    } kSteps[] = {{kScrollLineUp, -1, 0},
                  {kScrollLineDown, 1, 0},
                  {kScrollPageUp, 0, -1},
                  {kScrollPageDown, 0, 1}};
    for (const auto& step : kSteps)
        if (step.m_Code == code)
            return bar.m_Position + step.m_Lines * bar.m_Line + step.m_Pages * bar.m_Page;
    if (code == kScrollThumbPosition || code == kScrollThumbTrack)
        return at;
    if (code == kScrollTop || code == kScrollBottom)
        return code == kScrollTop ? 0 : limit;
    return bar.m_Position;
}

} // namespace

CView::CView() = default;

CView::~CView() {
    if (CFrameWnd* frame = GetParentFrame(); frame && frame->m_ActiveView == this)
        frame->m_ActiveView = nullptr;
    if (m_Document)
        m_Document->RemoveView(this);
}

CFrameWnd* CView::GetParentFrame() const {
    for (CWnd* window = GetParent(); window; window = window->GetParent())
        if (auto* frame = dynamic_cast<CFrameWnd*>(window))
            return frame;
    return nullptr;
}

void CView::OnInitialUpdate() {
    OnUpdate(nullptr, 0, nullptr);
}

void CView::OnActivateView(bool activate, CView* activated, CView*) {
    if (activate && activated == this)
        SetFocus();
}

void CView::OnUpdate(CView*, std::intptr_t, CObject*) {
    Invalidate();
}

void CView::OnPrepareDC(CDC&, CPrintInfo* info) {
    if (info)
        info->m_ContinuePrinting = info->m_MaxPage != kPagesUnknown || info->m_CurPage == 1;
}

void CView::OnDraw(CDC&) {}

void CView::OnEraseBackground(CDC& dc) {
    dc.FillRect(dc.GetClipBox(), kWhite);
}

void CView::HandlePaint(IBackendSurface& surface, bool erase) {
    CDC dc(surface);
    OnPrepareDC(dc, nullptr);
    if (erase)
        OnEraseBackground(dc);
    OnDraw(dc);
}

CCmdTarget::Route CView::RouteCommand(unsigned id) {
    const Route own = CWnd::RouteCommand(id);
    return own.m_Target || !m_Document ? own : m_Document->RouteCommand(id);
}

void CView::PostNcDestroy() {
    delete this;
}

void CScrollView::SetScrollSizes(CSize total, CSize page, CSize line, CPoint position) {
    m_Total = total;
    m_Page = page;
    m_Line = line;
    SetScrollPosition(position);
}

CPoint CScrollView::GetScrollLimit() const {
    const CSize client = GetClientSize();
    return {std::max(m_Total.cx - client.cx, 0), std::max(m_Total.cy - client.cy, 0)};
}

void CScrollView::SetScrollPosition(CPoint position) {
    const CPoint limit = GetScrollLimit();
    m_Position = {std::clamp(position.x, 0, limit.x), std::clamp(position.y, 0, limit.y)};
    ShowScrollBars();
}

void CScrollView::ScrollToPosition(CPoint position) {
    const CPoint before = m_Position;
    SetScrollPosition(position);
    const CSize distance{before.x - m_Position.x, before.y - m_Position.y};
    IBackendWindow* const window = GetBackendWindow();
    if (!window || distance == CSize{})
        return;
    const CSize client = GetClientSize();
    window->ScrollPixels(distance, {0, 0, client.cx, client.cy});
    InvalidateUncovered(distance);
}

const MessageMap& CScrollView::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {
        Message<&CScrollView::OnHScroll>(kMsgHScroll),
        Message<&CScrollView::OnVScroll>(kMsgVScroll),
    };
    static const MessageMap kMap{kEntries, &CView::GetMessageMap()};
    return kMap;
}

std::intptr_t CScrollView::OnHScroll(std::uintptr_t code, std::intptr_t position) {
    const ScrollInfo bar{m_Total.cx, m_Page.cx, m_Line.cx, m_Position.x};
    ScrollToPosition(
        {ScrolledTo(code, static_cast<int>(position), bar, GetScrollLimit().x), m_Position.y});
    return 0;
}

std::intptr_t CScrollView::OnVScroll(std::uintptr_t code, std::intptr_t position) {
    const ScrollInfo bar{m_Total.cy, m_Page.cy, m_Line.cy, m_Position.y};
    ScrollToPosition(
        {m_Position.x, ScrolledTo(code, static_cast<int>(position), bar, GetScrollLimit().y)});
    return 0;
}

void CScrollView::InvalidateUncovered(CSize distance) {
    const CSize client = GetClientSize();
    const int width = std::min(std::abs(distance.cx), client.cx);
    const int height = std::min(std::abs(distance.cy), client.cy);
    const int left = distance.cx > 0 ? 0 : client.cx - width;
    const int top = distance.cy > 0 ? 0 : client.cy - height;
    if (width > 0)
        GetBackendWindow()->Invalidate({left, 0, left + width, client.cy}, true);
    if (height > 0)
        GetBackendWindow()->Invalidate({0, top, client.cx, top + height}, true);
}

void CScrollView::ShowScrollBars() {
    IBackendWindow* const window = GetBackendWindow();
    if (!window)
        return;
    window->SetScrollBar(ScrollBar::horizontal, {m_Total.cx, m_Page.cx, m_Line.cx, m_Position.x});
    window->SetScrollBar(ScrollBar::vertical, {m_Total.cy, m_Page.cy, m_Line.cy, m_Position.y});
}
