#include "tool_bars_data.h"

#include <algorithm>

#include "idesktop.h"
#include "resources.h"
#include "tool_bar_messages.h"
#include "tool_bar_options.h"

namespace {

constexpr char16_t kNameEnd = u'^';
constexpr const char16_t* kSeparatorText = u"Separator";

} // namespace

CToolBarsData::CToolBarsData(IDesktop& desktop, AString name)
    : mName(std::move(name)), mHost(desktop.GetToolBarHost()), mDesktop(desktop) {
    if (mHost)
        mMainWindow = mHost->GetMainWindow();
    mDesktop.GetStringOption(mSavedNames, 0, GetToolBarSection(), GetToolBarNamesKey(mName),
                             AString());
}

/// The bars go ahead of the lists of buttons, which a host may have given them.
CToolBarsData::~CToolBarsData() {
    DestroyBars(true);
    if (!mSavedNames.empty())
        mDesktop.SetStringOption(0, GetToolBarSection(), GetToolBarNamesKey(mName), mSavedNames);
}

void CToolBarsData::AddToolBar(const AString& name, ToolBarTable table) {
    AddDefinition(mToolBarDefs, name, table);
}

void CToolBarsData::AddShownToolBar(const AString& name, ToolBarTable table) {
    AddDefinition(mShownBars, name, table);
}

void CToolBarsData::AddBuiltInToolBar(const AString& name, ToolBarTable table) {
    AddDefinition(mBuiltInBars, name, table);
    AddShownToolBar(name, table);
}

void CToolBarsData::AddDefinition(std::vector<ToolBarDefinition>& list, const AString& name,
                                  ToolBarTable table) {
    auto buttons = std::make_unique<ToolBarButtonList>();
    FillButtons(*buttons, table);
    list.push_back({name, std::move(buttons)});
}

void CToolBarsData::FillButtons(ToolBarButtonList& buttons, ToolBarTable table) {
    for (const ToolBarEntry& entry : table) {
        if (entry.m_Bitmap == ToolBarEntry::kTableEnd)
            break;
        buttons.push_back({.mCommand = entry.m_Command,
                           .mBitmap = entry.m_Bitmap,
                           .mState = entry.m_State,
                           .mStyle = entry.m_Style,
                           .mText = {}});
        TellButton(buttons.back());
    }
}

/// Gives the host a button with picture and text, unless it has it.
void CToolBarsData::TellButton(const ToolBarButton& button) {
    if (SendButton(kButtonAdded, button) != 0)
        return;
    ToolBarButton loaded = button;
    loaded.mText =
        button.IsSeparator() ? AString(kSeparatorText) : AString(ResourceId{button.mCommand});
    if (!button.IsSeparator() && !button.IsControlPlace())
        loaded.mBitmapObject = FindPicture(button.mBitmap);
    SendButton(kButtonLoaded, loaded);
}

std::intptr_t CToolBarsData::SendButton(ToolBarButtonNotice notice, const ToolBarButton& button) {
    return mMainWindow ? mMainWindow->SendMessage(kMsgToolBarButton, notice, ToMessageValue(button))
                       : 0;
}

void CToolBarsData::AddControl(CWnd* window, std::uint32_t id, std::uint32_t style, int width,
                               int height) {
    mControls.push_back(std::make_unique<ToolBarControl>(ToolBarControl{.mId = id,
                                                                        .mStyle = style,
                                                                        .mWidth = width,
                                                                        .mHeight = height,
                                                                        .mWindow = window,
                                                                        .mItems = {}}));
}

bool CToolBarsData::FindControl(std::uint32_t id, ToolBarControl*& control) const {
    const auto found =
        std::ranges::find_if(mControls, [id](const auto& each) { return each->mId == id; });
    if (found == mControls.end())
        return false;
    control = found->get();
    return true;
}

bool CToolBarsData::CreateBars() {
    if (mCreated)
        return true;
    AString stateName;
    if (mHost)
        mHost->GetToolBarStateName(stateName);
    MergeSavedNames();
    for (ToolBarDefinition& definition : mShownBars)
        CreateBar(definition, stateName);
    if (mMainWindow)
        mMainWindow->SendMessage(kMsgTakeToolBars, 0, ToMessageValue(*this));
    mCreated = true;
    return true;
}

/// A bar without a definition, which the host has added once, gets an empty one. What stands behind
/// the last "^" is no name.
void CToolBarsData::MergeSavedNames() {
    std::u16string_view rest = mSavedNames;
    for (std::size_t end; (end = rest.find(kNameEnd)) != rest.npos; rest.remove_prefix(end + 1)) {
        AString name(rest.substr(0, end));
        if (std::ranges::find(mShownBars, name, &ToolBarDefinition::mName) == mShownBars.end())
            mShownBars.push_back({std::move(name), std::make_unique<ToolBarButtonList>()});
    }
}

void CToolBarsData::CreateBar(ToolBarDefinition& definition, const AString& stateName) {
    auto bar = std::make_unique<CQrToolBar>(*this);
    bar->LoadState(stateName, mName, definition.mName);
    std::vector<ToolBarEntry> table;
    if (bar->ParseButtons(table)) {
        definition.mButtons->clear();
        FillButtons(*definition.mButtons, table);
    }
    for (const ToolBarButton& button : *definition.mButtons)
        if (button.mBitmap != ToolBarEntry::kNoBitmap)
            SendButton(kButtonShown, button);
    mBars.push_back(std::move(bar));
}

void CToolBarsData::DestroyBars(bool forget) {
    if (!mCreated)
        return;
    mSavedNames = AString();
    for (auto& bar : mBars) {
        mSavedNames += bar->GetBarName() + AString(1, kNameEnd);
        if (forget)
            bar->SetNotifyHost(false);
        bar.reset();
    }
    mBars.clear();
    mCreated = false;
}
