#include "view_placement.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "frame.h"

namespace {

constexpr const char16_t* kViewName = u"View";
constexpr const char16_t* kWindowPosName = u"WindowPos";

/// The numbers of a placement in the order in which they are kept.
template <class Placement>
auto NumbersOf(Placement& placement) {
    return std::array{
        &placement.m_ShowCommand,   &placement.m_MinPosition.x, &placement.m_MinPosition.y,
        &placement.m_MaxPosition.x, &placement.m_MaxPosition.y, &placement.m_Normal.left,
        &placement.m_Normal.top,    &placement.m_Normal.right,  &placement.m_Normal.bottom};
}

bool IsActive(const CView& view, const CFrameWnd& frame) {
    const CWnd* const focus = CWnd::GetFocus();
    return focus == &view || focus == &frame || CMDIChildWnd::GetActiveChild() == &frame;
}

/// Reads the arguments as integers. @return whether they are that many
bool ReadNumbers(const io::CBlock_func& func, WindowPlacement& placement) {
    const auto numbers = NumbersOf(placement);
    if (func.GetSize() < numbers.size())
        return false;
    for (unsigned i = 0; i < numbers.size(); ++i) {
        const auto argument = func.GetArg(i);
        const auto* const value = dynamic_cast<const io::CBlock_getters*>(&*argument);
        if (!value || !value->Get(*numbers[i]))
            return false;
    }
    return true;
}

/// Where the side that ends a stretch may be at most.
int LimitedEnd(int start, int end, int most) {
    return static_cast<int>(std::min<std::int64_t>(end, std::int64_t{start} + most));
}

void LimitSize(CRect& rect, CSize most) {
    if (most.cx <= 0 || most.cy <= 0)
        return;
    rect.right = LimitedEnd(rect.left, rect.right, most.cx);
    rect.bottom = LimitedEnd(rect.top, rect.bottom, most.cy);
}

} // namespace

io::CBlock_func PlacementOf(const CView& view) {
    io::CBlock_func written{AString(kViewName)};
    const CFrameWnd* const frame = view.GetParentFrame();
    if (!frame)
        return written;
    WindowPlacement placement = frame->GetPlacement();
    if (!IsActive(view, *frame))
        placement.m_ShowCommand = kShow;
    else if (placement.m_ShowCommand != kShowMaximized)
        placement.m_ShowCommand = kShowNormal;
    const io::CBlock_ptr<io::CBlock_func> place(new io::CBlock_func{AString(kWindowPosName)});
    for (const int* number : NumbersOf(placement))
        *place << *number;
    return written << place;
}

void ReadPlacement(const CView& view, const io::CBlock_func& placement) {
    CFrameWnd* const frame = view.GetParentFrame();
    const auto found = placement.Find(kWindowPosName);
    const auto* const place = found ? dynamic_cast<const io::CBlock_func*>(&*found) : nullptr;
    WindowPlacement read;
    if (!frame || !place || !ReadNumbers(*place, read))
        return;
    if (IBackendDesk* desk = GetBackend())
        LimitSize(read.m_Normal, desk->GetFrameAreaSize());
    frame->SetPlacement(read);
    if (read.m_ShowCommand == kShowNormal || read.m_ShowCommand == kShowMaximized)
        frame->ActivateFrame(kShowDefault);
}
