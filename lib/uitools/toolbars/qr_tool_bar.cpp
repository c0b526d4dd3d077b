#include "qr_tool_bar.h"

#include "assertion.h"
#include "combo_box.h"
#include "idesktop.h"
#include "tool_bar_messages.h"
#include "tool_bars_data.h"

CQrToolBar::CQrToolBar(CToolBarsData& data) : mData(data) {}

CQrToolBar::~CQrToolBar() {
    EndWindow();
    if (mHostWindow && mNotifyHost)
        mHostWindow->SendMessage(kMsgForgetToolBar, 0, ToMessageValue(*this));
}

const MessageMap& CQrToolBar::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {
        Message<&CQrToolBar::OnLButtonDown>(kMsgLButtonDown),
        Message<&CQrToolBar::OnLButtonUp>(kMsgLButtonUp),
        Message<&CQrToolBar::OnMouseMove>(kMsgMouseMove),
        Message<&CQrToolBar::OnDestroy>(kMsgDestroy),
        Message<&CQrToolBar::OnWindowPosChanged>(kMsgWindowPosChanged),
        Message<&CQrToolBar::OnSetCursor>(kMsgSetCursor),
    };
    static const MessageMap kMap{kEntries, &CToolBar::GetMessageMap()};
    return kMap;
}

std::intptr_t CQrToolBar::OnLButtonDown(std::uintptr_t first, std::intptr_t second) {
    return Default(kMsgLButtonDown, first, second);
}

std::intptr_t CQrToolBar::OnSetCursor(std::uintptr_t first, std::intptr_t second) {
    return Default(kMsgSetCursor, first, second);
}

std::intptr_t CQrToolBar::OnLButtonUp(std::uintptr_t first, std::intptr_t second) {
    SaveState();
    return Default(kMsgLButtonUp, first, second);
}

/// While toolbars are customised, a separator can't be used to drag the bar.
std::intptr_t CQrToolBar::OnMouseMove(std::uintptr_t first, std::intptr_t second) {
    constexpr std::intptr_t kSwallowed = 1;
    if ((first & kModLeftButton) != 0 &&
        HitTest({PointValueX(second), PointValueY(second)}).IsSeparator() && AskCustomizing() != 0)
        return kSwallowed;
    return Default(kMsgMouseMove, first, second);
}

std::intptr_t CQrToolBar::OnWindowPosChanged(std::uintptr_t first, std::intptr_t second) {
    const std::intptr_t result = Default(kMsgWindowPosChanged, first, second);
    if (IToolBarHost* host = mData.GetHost(); host && !mSkipRelayout)
        host->RecalcLayout(0, 1);
    return result;
}

std::intptr_t CQrToolBar::OnDestroy(std::uintptr_t, std::intptr_t) {
    if (mButtons)
        for (const ToolBarButton& button : *mButtons)
            if (button.IsControlPlace())
                EndControl(button.mCommand);
    mButtonsText = AString();
    if (mButtons)
        MakeButtonsText();
    return 0;
}

/// Keeps what a box holds and ends its window.
void CQrToolBar::EndControl(std::uint32_t id) {
    ToolBarControl* control = nullptr;
    if (!mData.FindControl(id, control) || !control->mWindow)
        return;
    if (const auto* box = dynamic_cast<CComboBox*>(control->mWindow); box && box->GetCount() > 0) {
        for (int i = 0; i < box->GetCount(); ++i)
            control->mItems.push_back(box->GetItemText(i));
        control->mSelection = box->GetCurSel();
    }
    control->mWindow->DestroyWindow();
}

bool CQrToolBar::OnChildNotify(unsigned notice, std::intptr_t& result) {
    if (notice != kNoticeBeginDrag)
        return CToolBar::OnChildNotify(notice, result);
    result = AskCustomizing();
    return true;
}

/// While toolbars are customised, a control doesn't take the focus.
bool CQrToolBar::OnCommand(std::uintptr_t first, std::intptr_t second) {
    if (ControlNoticeOf(first) != kNoticeGotFocus || AskCustomizing() == 0)
        return CToolBar::OnCommand(first, second);
    if (second != 0)
        DisableControl(FromMessageValue<CWnd>(second));
    return true;
}

std::intptr_t CQrToolBar::AskCustomizing() {
    return mHostWindow ? mHostWindow->SendMessage(kMsgAskCustomizing, 0, ToMessageValue(*this)) : 0;
}

ToolBarButton CQrToolBar::HitTest(CPoint point) {
    mClick = point;
    USE_ASSERT(mButtons);
    for (std::size_t i = 0; mButtons && i < mButtons->size(); ++i) {
        if (!GetItemRect(i).Contains(point))
            continue;
        mHitIndex = i;
        return (*mButtons)[i];
    }
    return {};
}
