/// The part of CQrToolBar that is its saved forms.
#include "idesktop.h"
#include "qr_tool_bar.h"
#include "stream_operators.h"
#include "token_istring.h"
#include "tool_bar_options.h"
#include "tool_bars_data.h"

namespace {

constexpr int kMostByte = 255;

/// A byte stands in a text as a number; a number that is none fails the stream.
void ReadByte(io::CAbstract_istream& stream, std::uint8_t& byte) {
    int number = 0;
    if (!stream.Read(number))
        return;
    if (number < 0 || number > kMostByte)
        stream.SetFail();
    byte = static_cast<std::uint8_t>(number);
}

bool ReadEntry(io::CAbstract_istream& stream, ToolBarEntry& entry) {
    stream >> entry.m_Command >> entry.m_Bitmap;
    ReadByte(stream, entry.m_State);
    ReadByte(stream, entry.m_Style);
    return stream.Good();
}

} // namespace

CQrToolBar::ToolbarButtons::~ToolbarButtons() = default;

void CQrToolBar::ToolbarButtons::Read(io::CAbstract_istream& stream) {
    mButtons->clear();
    int count = 0;
    stream >> count;
    for (ToolBarEntry entry{}; count > 0 && ReadEntry(stream, entry); --count)
        mButtons->push_back({.mCommand = entry.m_Command,
                             .mBitmap = entry.m_Bitmap,
                             .mState = entry.m_State,
                             .mStyle = entry.m_Style,
                             .mText = {}});
}

void CQrToolBar::ToolbarButtons::Write(io::CAbstract_ostream& stream) const {
    stream << static_cast<unsigned>(mButtons->size());
    for (const ToolBarButton& button : *mButtons)
        stream << button.mCommand << button.mBitmap << unsigned{button.mState}
               << unsigned{button.mStyle};
}

void CQrToolBar::LoadState(const AString& stateName, const AString& dataName,
                           const AString& barName) {
    constexpr int kAheadOfOthers = -2;
    mBarName = barName;
    mStateText = AString();
    mButtonsText = AString();
    mData.GetDesktop().GetStringOption(mStateText, 0, GetToolBarStateSection(stateName),
                                       GetToolBarStateKey(dataName, barName), AString());
    if (!FromString(mStateText)) {
        mStateText = AString();
        if (mBarName == u"Standard" && mPlace.mX == 0 && mPlace.mY == 0) {
            mPlace.mX = kAheadOfOthers;
            PlaceOnScreen();
        }
    }
    LoadButtons(GetToolBarButtonsKey(dataName, barName));
}

void CQrToolBar::LoadButtons(const AString& key) {
    IDesktop& desktop = mData.GetDesktop();
    if (!mButtons) {
        desktop.GetStringOption(mButtonsText, 0, GetToolBarSection(), key, AString());
        return;
    }
    ToolbarButtons buttons(*mButtons);
    if (desktop.GetBlockOption(0, GetToolBarSection(), key, buttons))
        MakeButtonsText();
}

void CQrToolBar::MakeButtonsText() {
    ToolbarButtons(*mButtons).ToString(mButtonsText);
}

bool CQrToolBar::ParseButtons(std::vector<ToolBarEntry>& table) {
    table.clear();
    if (mButtonsText.empty())
        return false;
    io::CToken_istring stream(mButtonsText);
    int count = 0;
    bool isGood = stream.Read(count) && count >= 1 && count <= kMostButtons;
    for (ToolBarEntry entry{}; isGood && count > 0; --count) {
        isGood = ReadEntry(stream, entry);
        table.push_back(entry);
    }
    if (isGood)
        return true;
    mButtonsText = AString();
    table.clear();
    return false;
}

void CQrToolBar::SaveState() {
    if (!HasWindow())
        return;
    const bool isVisible = IsBarVisible();
    const std::optional<CRect> frame = GetFrameRect();
    if (IsFloating() && isVisible != mPlace.mVisible && frame) {
        mPlace.mX = frame->left;
        mPlace.mY = frame->top;
        mPlace.mDocked = false;
    }
    mPlace.mVisible = isVisible;
    if (isVisible) {
        mPlace.mDocked = !IsFloating();
        if (mPlace.mDocked)
            mPlace.mDockBarId = GetDockBarId();
    }
    const CRect rect = mPlace.mDocked || !frame ? GetWindowRect() : *frame;
    if (isVisible) {
        mPlace.mX = rect.left;
        mPlace.mY = rect.top;
    }
    mPlace.mWidth = static_cast<std::uint32_t>(rect.Width());
    ToString(mStateText);
}

void CQrToolBar::Read(io::CAbstract_istream& stream) {
    Place place;
    long x = 0, y = 0;
    stream >> place.mDockBarId >> place.mVisible >> place.mDocked >> x >> y >> place.mWidth >>
        place.mPersistedFlag >> place.mPersistedValue;
    if (!stream.Good())
        return;
    place.mX = ToPixel(x);
    place.mY = ToPixel(y);
    mPlace = place;
    mPositionPending = !mHostWindow;
    PlaceOnScreen();
}

/// The place was relative to the holder; without one it stays so.
void CQrToolBar::PlaceOnScreen() {
    if (!mHostWindow)
        return;
    const CPoint place = mHostWindow->ClientToScreen({mPlace.mX, mPlace.mY});
    mPlace.mX = place.x;
    mPlace.mY = place.y;
}

void CQrToolBar::Write(io::CAbstract_ostream& stream) const {
    CPoint place{mPlace.mX, mPlace.mY};
    if (mHostWindow)
        place = mHostWindow->ScreenToClient(place);
    stream << mPlace.mDockBarId << mPlace.mVisible << mPlace.mDocked << long{place.x}
           << long{place.y} << mPlace.mWidth << mPlace.mPersistedFlag << mPlace.mPersistedValue;
}

void CQrToolBar::SetHostWindow(CDockSite* window) {
    mHostWindow = window;
    if (mPositionPending && window) {
        PlaceOnScreen();
        mPositionPending = false;
    }
}

void CQrToolBar::SetPersisted(bool flag, std::int32_t value) {
    mPlace.mPersistedFlag = flag;
    mPlace.mPersistedValue = value;
}
