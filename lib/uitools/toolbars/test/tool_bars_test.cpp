/// Toolbars between a store of options, a host that logs, and windows that are made up.
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "assert_log.h"
#include "combo_box.h"
#include "host_desktop.h"
#include "tool_bar_messages.h"
#include "tool_bar_options.h"
#include "tool_bars_data.h"

namespace {

constexpr ToolBarEntry kTable[] = {
    {1001, 11, 4, 0},
    {ToolBarEntry::kSeparator, ToolBarEntry::kNoBitmap, 0, 0},
    {1002, ToolBarEntry::kControlPlace, 0, 0},
    {1003, 12, 4, 1},
    {0, ToolBarEntry::kTableEnd, 0, 0},
    {1004, 13, 0, 0}, // behind the end
};
constexpr StringRow kStrings[] = {{1001, u"First"}, {1002, u"Box"}};

std::string Name(const ToolBarButton& button) {
    return button.IsSeparator() ? "-" : std::to_string(button.mCommand);
}

/// The host's window. It answers with what it is told to.
class Window : public CDockSite {
public:
    std::string m_Log;
    std::intptr_t m_Answer = 0;
    CPoint m_Origin;

protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageEntry kEntries[] = {Message<&Window::OnTake>(kMsgTakeToolBars),
                                                    Message<&Window::OnForget>(kMsgForgetToolBar),
                                                    Message<&Window::OnAsk>(kMsgAskCustomizing),
                                                    Message<&Window::OnButton>(kMsgToolBarButton)};
        static const MessageMap kMap{kEntries, &CDockSite::GetMessageMap()};
        return kMap;
    }
    CPoint GetClientOrigin() const override { return m_Origin; }

private:
    std::intptr_t OnTake(std::uintptr_t, std::intptr_t data) {
        return Log("take" + std::to_string(FromMessageValue<CToolBarsData>(data).GetBars().size()));
    }
    std::intptr_t OnForget(std::uintptr_t, std::intptr_t bar) {
        return Log("forget " + FromMessageValue<CQrToolBar>(bar).GetBarName().ToCString());
    }
    std::intptr_t OnAsk(std::uintptr_t, std::intptr_t) { return Log("ask"); }
    std::intptr_t OnButton(std::uintptr_t notice, std::intptr_t value) {
        constexpr const char* kNotices[] = {"add ", "show ", "load "};
        const auto& button = FromMessageValue<const ToolBarButton>(value);
        return Log(kNotices[notice] + Name(button) + button.mText.ToCString());
    }
    std::intptr_t Log(const std::string& text) {
        m_Log += text + ' ';
        return m_Answer;
    }
};

class Host : public HostToolBars {
public:
    using HostToolBars::HostToolBars;
    CWnd* GetMainWindow() override { return &m_Window; }
    Window m_Window;
};

class Desktop : public HostDesktop {
public:
    explicit Desktop(OptionStore& options) : HostDesktop({}, options) {}
    Host* GetToolBarHost() override { return &m_Host; }
    Host m_Host{*this};
};

/// A bar on a screen: each button 10 pixels wide.
struct Peer : IToolBarPeer {
    CRect GetItemRect(std::size_t index) override {
        const int left = static_cast<int>(index) * 10;
        return {left, 0, left + 10, 10};
    }
    bool IsFloating() override { return m_Floats; }
    bool IsBarVisible() override { return m_Visible; }
    unsigned GetDockBarId() override { return 7; }
    CRect GetWindowRect() override { return {100, 200, 150, 210}; }
    std::optional<CRect> GetFrameRect() override { return m_Frame; }
    std::intptr_t DefaultMessage(unsigned message, std::uintptr_t, std::intptr_t) override {
        m_Defaults.push_back(message);
        return 0;
    }
    void DisableControl(CWnd& control) override { m_Disabled = &control; }
    void ToolBarEnds() override { ++m_Ends; }

    bool m_Floats = false;
    bool m_Visible = true;
    std::optional<CRect> m_Frame;
    std::vector<unsigned> m_Defaults;
    CWnd* m_Disabled = nullptr;
    int m_Ends = 0;
};

class ToolBars : public testing::Test {
protected:
    ToolBars() { RegisterStringSource(m_Strings); }
    ~ToolBars() override { UnregisterStringSource(m_Strings); }

    /// The module's part of a start; the state "State", nothing when that is empty.
    CToolBarsData& Start(const AString& stateName = u"State") {
        m_Desktop.m_Host.SetStateName(stateName);
        m_Data.emplace(m_Desktop, u"Owner");
        m_Data->AddBuiltInToolBar(u"Edit", kTable);
        m_Data->AddControl(&m_Box, 1002, 0, 120, 100);
        return *m_Data;
    }
    CQrToolBar& Bar() { return *m_Data->GetBars().at(0); }
    std::string Log() { return std::exchange(m_Desktop.m_Host.m_Window.m_Log, {}); }
    AString Stored(const AString& key) {
        return m_Options.Find(GetToolBarSection(), key).value_or(u"none");
    }
    void Store(const AString& key, const AString& text, const AString& section) {
        m_Options.Set(section, key, text);
    }
    /// The bars with their buttons.
    std::string Dump() {
        std::string all;
        for (const ToolBarDefinition& definition : m_Data->GetShownBars()) {
            all += definition.mName.ToCString() + ':';
            for (const ToolBarButton& button : *definition.mButtons)
                all += ' ' + Name(button);
            all += '|';
        }
        return all;
    }

    OptionStore m_Options;
    Desktop m_Desktop{m_Options};
    StringTable m_Strings{kStrings};
    CComboBox m_Box;
    Peer m_Peer;
    std::optional<CToolBarsData> m_Data;
};

TEST_F(ToolBars, TellTheHostOfEachButtonAndOfTheBars) {
    Start();
    const std::string once = "add 1001 load 1001First add - load -Separator add 1002 "
                             "load 1002Box add 1003 load 1003 ";
    EXPECT_EQ(Log(), once + once) << "a list each for built-in and shown";
    m_Desktop.m_Host.m_Window.m_Answer = 1;
    m_Data->AddToolBar(u"Edit", kTable);
    EXPECT_EQ(Log(), "add 1001 add - add 1002 add 1003 ") << "the host has them";
    EXPECT_TRUE(m_Data->CreateBars());
    EXPECT_EQ(Log(), "show 1001 show 1002 show 1003 take1 ");
    EXPECT_TRUE(m_Data->CreateBars()); // once
    EXPECT_EQ(Log(), "");
    ToolBarControl* control = nullptr;
    EXPECT_TRUE(m_Data->FindControl(1002, control));
    EXPECT_EQ(control->mWindow, &m_Box);
    EXPECT_FALSE(m_Data->FindControl(1001, control));
}

TEST_F(ToolBars, TakeSavedNamesAndButtons) {
    std::u16string many = u"100";
    for (int i = 0; i < 100; ++i)
        many += u" 1001 11 4 0";
    const std::string table = "Edit: 1001 - 1002 1003|";
    const std::tuple<AString, AString, std::string, bool, AString> kRows[] = {
        {u"", u"", table, false, u"Edit^"},
        {u"Edit^Mine^", u"", table + "Mine:|", false, u"Edit^Mine^"},
        {u"Edit^Mine", u"", table, false, u"Edit^"},
        {u"Mine^Edit^", u"", table + "Mine:|", false, u"Edit^Mine^"},
        {u"", u"0", table, false, u"Edit^"},
        {u"", u"-3", table, false, u"Edit^"},
        {u"", u"2 1003 12 4 1 1001 11 4", table, false, u"Edit^"},
        {u"", u"1 1003 12 4 256", table, false, u"Edit^"},
        {u"", u"2 4294967295 4294967295 0 0 1003 12 4 1", "Edit: - 1003|", true, u"Edit^"},
        {u"", AString(many), table, false, u"Edit^"},
        {u"", AString(u"99") + AString(std::u16string_view(many).substr(3)), "", true, u"Edit^"},
        {u"", u"begin end", table, false, u"Edit^"}};
    for (const auto& [names, buttons, bars, isTextKept, namesAtEnd] : kRows) {
        SCOPED_TRACE(names.ToCString() + " / " + buttons.ToCString());
        Store(u"ToolBars::Owner", names, u"ToolBars");
        Store(u"ToolBar::Owner.Edit.Buttons", buttons, u"ToolBars");
        Start().CreateBars();
        EXPECT_TRUE(bars.empty() || Dump() == bars) << Dump();
        EXPECT_EQ(Bar().GetButtonsText(), isTextKept ? buttons : AString());
        m_Data.reset();
        EXPECT_EQ(Stored(u"ToolBars::Owner"), namesAtEnd);
    }
}

TEST_F(ToolBars, WithoutBarsLeaveTheNamesAsTheyWere) {
    Start();
    m_Data.reset();
    EXPECT_EQ(Stored(u"ToolBars::Owner"), u"none");
    Store(u"ToolBars::Owner", u"Other^x", u"ToolBars");
    Start().DestroyBars(false);
    m_Data.reset();
    EXPECT_EQ(Stored(u"ToolBars::Owner"), u"Other^x");
}

TEST_F(ToolBars, AListReadsBackAndKeepsWhatItHasRead) {
    ToolBarButtonList buttons(3);
    CQrToolBar::ToolbarButtons list(buttons);
    EXPECT_FALSE(list.FromString(u"2 1003 12 4 1 1001 11"));
    ASSERT_EQ(buttons.size(), 1u);
    EXPECT_EQ(buttons[0].mCommand, 1003u);
    buttons.push_back(
        {.mCommand = ToolBarEntry::kSeparator, .mBitmap = ToolBarEntry::kNoBitmap, .mText = {}});
    AString text;
    list.ToString(text);
    EXPECT_EQ(text, u"2 1003 12 4 1 4294967295 4294967295 0 0");
    EXPECT_TRUE(list.FromString(text));
    EXPECT_EQ(buttons.size(), 2u);
    EXPECT_TRUE(list.FromString(u"0"));
    EXPECT_TRUE(buttons.empty());
}

TEST_F(ToolBars, TakeTheirStateOnceItParses) {
    constexpr const char16_t* kText = u"3 false true 5 -6 70 false -8";
    const CQrToolBar::Place kPlace{3, false, true, 5, -6, 70, false, -8};
    const AString key = u"ToolBar::Owner.Edit.State";
    Store(key, kText, u"ToolBars\\ToolBarState\\State");
    Store(key, u"9 true true 0 0 0 true 0", u"");
    Start().CreateBars();
    EXPECT_EQ(Bar().GetPlace(), kPlace);
    EXPECT_TRUE(Bar().IsPositionPending());
    Window& window = m_Desktop.m_Host.m_Window;
    window.m_Origin = {1000, 2000};
    Bar().SetHostWindow(&window);
    EXPECT_FALSE(Bar().IsPositionPending());
    EXPECT_EQ(Bar().GetPlace().mX, 1005);
    EXPECT_EQ(Bar().GetPlace().mY, 1994);
    AString text;
    Bar().ToString(text);
    EXPECT_EQ(text, kText) << "in the holder's coordinates";
    Bar().LoadState(u"State", u"Owner", u"Edit"); // with a holder
    EXPECT_EQ(Bar().GetPlace().mX, 1005);
    EXPECT_FALSE(Bar().IsPositionPending());

    Bar().LoadState(u"", u"Owner", u"Edit");
    EXPECT_EQ(Bar().GetPlace().mDockBarId, 9u) << "no state name: no section";

    for (const char16_t* broken : {u"", u"3 false true 5 -6 70 false", u"3 maybe", u"x"}) {
        Store(key, broken, u"ToolBars\\ToolBarState\\State");
        Start().CreateBars();
        EXPECT_EQ(Bar().GetPlace(), CQrToolBar::Place());
        EXPECT_TRUE(Bar().GetStateText().empty());
    }
    Bar().LoadState(u"State", u"Owner", u"Standard");
    EXPECT_EQ(Bar().GetPlace().mX, -2) << "ahead of the others";
}

TEST_F(ToolBars, SaveTheStateOfTheirWindow) {
    const CRect frame{10, 20, 90, 60};
    const std::tuple<bool, bool, std::optional<CRect>, const char16_t*> kRows[] = {
        {false, true, std::nullopt, u"7 true true 100 200 50 true 0"},
        {true, true, frame, u"0 true false 10 20 80 true 0"},
        {true, true, std::nullopt, u"0 true false 100 200 50 true 0"},
        {false, false, std::nullopt, u"0 false true 0 0 50 true 0"},
        {true, false, frame, u"0 false false 10 20 80 true 0"},
        {true, false, std::nullopt, u"0 false true 0 0 50 true 0"}};
    for (const auto& [floats, visible, givenFrame, text] : kRows) {
        Start().CreateBars();
        Bar().SaveState();
        EXPECT_TRUE(Bar().GetStateText().empty()) << "no window";
        m_Peer.m_Floats = floats;
        m_Peer.m_Visible = visible;
        m_Peer.m_Frame = givenFrame;
        Bar().SetPeer(&m_Peer);
        Bar().HandleMessage(kMsgLButtonUp, 0, 0);
        EXPECT_EQ(Bar().GetStateText(), text);
    }
    EXPECT_EQ(m_Peer.m_Defaults, std::vector<unsigned>(std::size(kRows), kMsgLButtonUp));
}

TEST_F(ToolBars, AskTheHostWhetherItCustomises) {
    Start().CreateBars();
    Window& window = m_Desktop.m_Host.m_Window;
    CQrToolBar& bar = Bar();
    bar.SetPeer(&m_Peer);
    bar.SetButtons(m_Data->GetShownBars()[0].mButtons.get());
    const auto focus = [&] {
        return bar.HandleMessage(kMsgCommand, MakeControlNotice(1002, kNoticeGotFocus),
                                 reinterpret_cast<std::intptr_t>(static_cast<CWnd*>(&m_Box)));
    };
    EXPECT_EQ(bar.HandleMessage(kMsgNotify, kNoticeBeginDrag, 0), 0) << "nobody holds it";
    bar.SetHostWindow(&window);
    Log();
    for (const bool customizes : {false, true}) {
        window.m_Answer = customizes;
        m_Peer.m_Defaults.clear();
        EXPECT_EQ(bar.HandleMessage(kMsgMouseMove, kModLeftButton, MakePointValue(15, 5)),
                  customizes);
        EXPECT_EQ(bar.HandleMessage(kMsgNotify, kNoticeBeginDrag, 0), customizes);
        focus();
        EXPECT_EQ(Log(), "ask ask ask ");
        EXPECT_EQ(m_Peer.m_Defaults.size(), customizes ? 0u : 2u);
        EXPECT_EQ(m_Peer.m_Disabled, customizes ? &m_Box : nullptr);
        m_Peer.m_Defaults.clear();
        bar.HandleMessage(kMsgMouseMove, 0, MakePointValue(15, 5));
        bar.HandleMessage(kMsgMouseMove, kModLeftButton, MakePointValue(5, 5));
        bar.HandleMessage(kMsgLButtonDown, 0, 0);
        bar.HandleMessage(kMsgNotify, kNoticeBeginDrag + 1, 0);
        EXPECT_EQ(Log(), "");
        EXPECT_EQ(m_Peer.m_Defaults.size(), 4u);
    }
    EXPECT_EQ(bar.HitTest({35, 9}).mCommand, 1003u);
    EXPECT_EQ(bar.GetHitIndex(), 3u);
    EXPECT_EQ(bar.HitTest({35, 10}).mCommand, 0u);
    EXPECT_EQ(bar.GetHitIndex(), 3u);
    EXPECT_EQ(bar.GetClickPoint(), (CPoint{35, 10}));
}

TEST_F(ToolBars, KeepWhatTheirBoxesHoldAndEnd) {
    Start().CreateBars();
    m_Box.InsertString(-1, u"R1");
    m_Box.InsertString(-1, u"R2");
    m_Box.SetCurSel(1);
    ToolBarButtonList buttons = *m_Data->GetShownBars()[0].mButtons;
    buttons.erase(buttons.begin(), buttons.begin() + 2);
    Bar().SetButtons(&buttons);
    Bar().SetHostWindow(&m_Desktop.m_Host.m_Window);
    Bar().SetPeer(&m_Peer);
    Bar().SetPeer(nullptr); // its window goes, and comes again
    EXPECT_EQ(Bar().GetButtonsText(), u"2 1002 289 0 0 1003 12 4 1");
    Bar().SetPeer(&m_Peer);
    Log();
    m_Data->DestroyBars(false);
    EXPECT_EQ(Log(), "forget Edit ");
    EXPECT_EQ(m_Peer.m_Ends, 1);
    const ToolBarControl& control = *m_Data->GetControls()[0];
    EXPECT_EQ(control.mItems, (std::vector<AString>{u"R1", u"R2", u"R1", u"R2"}));
    EXPECT_EQ(control.mSelection, 1);
    EXPECT_FALSE(m_Data->AreCreated());
    m_Data->CreateBars();
    Bar().SetHostWindow(&m_Desktop.m_Host.m_Window);
    Log();
    m_Data.reset();
    EXPECT_EQ(Log(), "") << "the host isn't told at the end";
}

} // namespace
