#include <gtest/gtest.h>

#include "host_desktop.h"
#include "tool_bars_data.h"

namespace {

constexpr ToolBarEntry kTable[] = {{1, 11, 4, 0}, {2, 12, 4, 0}, {3, 13, 4, 0}};

/// A screen that logs, with a window for each bar.
struct Screen : IToolBarScreen, IToolBarPeer {
    void BarComes(CQrToolBar& bar) override {
        Note("comes", bar);
        bar.SetPeer(this);
    }
    void ButtonsChanged(CQrToolBar& bar) override { Note("changes", bar); }
    void BarGoes(CQrToolBar& bar) override {
        Note("goes", bar);
        bar.SetPeer(nullptr);
    }
    void CustomizingChanged() override { m_Log += "customise|"; }
    CPoint GetClientOrigin() override { return {1000, 2000}; }
    void RecalcLayout() override { m_Log += "layout|"; }

    CRect GetItemRect(std::size_t) override { return {}; }
    bool IsFloating() override { return true; }
    bool IsBarVisible() override { return true; }
    unsigned GetDockBarId() override { return 0; }
    CRect GetWindowRect() override { return {}; }
    std::optional<CRect> GetFrameRect() override { return CRect{1011, 2022, 1111, 2042}; }
    std::intptr_t DefaultMessage(unsigned, std::uintptr_t, std::intptr_t) override { return 0; }
    void DisableControl(CWnd&) override {}
    void ToolBarEnds() override { m_Log += "ends|"; }

    void Note(const char* what, const CQrToolBar& bar) {
        m_Log += what;
        for (const ToolBarButton& button : *bar.GetButtons())
            m_Log += ' ' + (button.IsSeparator() ? "-" : std::to_string(button.mCommand));
        m_Log += '|';
    }
    std::string Log() { return std::exchange(m_Log, {}); }
    std::string m_Log;
};

TEST(HostToolBars, BringBackWhatTheUserMadeOfTheBars) {
    OptionStore options;
    HostDesktop desktop({}, options);
    HostToolBars& host = *desktop.GetToolBarHost();
    host.SetStateName(u"Main");
    Screen screen;
    host.SetScreen(&screen);
    const auto stored = [&](const char16_t* section, const char16_t* key) {
        return options.Find(section, key).value_or(u"none");
    };
    const auto run = [&](auto&& work) {
        CToolBarsData data(desktop, u"Owner");
        data.AddBuiltInToolBar(u"Edit", kTable);
        data.AddToolBar(u"Edit", kTable);
        data.CreateBars();
        work(*host.GetBars().at(0));
        host.LetGo();
    };
    const auto buttons = [&] { return stored(u"ToolBars", u"ToolBar::Owner.Edit.Buttons"); };

    run([&](CQrToolBar& bar) {
        EXPECT_EQ(screen.Log(), "comes 1 2 3|");
        EXPECT_EQ(host.GetCatalogue().size(), 3u);
        ToolBarButtonList list = *bar.GetButtons();
        host.SetButtons(bar, list); // the same
        EXPECT_EQ(screen.Log(), "");
        std::swap(list[0], list[2]);
        list.pop_back();
        host.SetButtons(bar, list);
        EXPECT_EQ(screen.Log(), "changes 3 2|");
        EXPECT_EQ(buttons(), u"2 3 13 4 0 2 12 4 0");
    });
    EXPECT_EQ(screen.Log(), "goes 3 2|");
    EXPECT_EQ(stored(u"ToolBars\\ToolBarState\\Main", u"ToolBar::Owner.Edit.State"),
              u"0 true false 11 22 100 true 0");
    EXPECT_TRUE(host.GetBars().empty());

    run([&](CQrToolBar& bar) {
        EXPECT_EQ(screen.Log(), "comes 3 2|");
        EXPECT_EQ(bar.GetPlace().mX, 1011);
        host.SetButtons(bar, {});
        EXPECT_EQ(screen.Log(), "changes -|");
    });
    screen.Log();
    run([&](CQrToolBar& bar) {
        EXPECT_EQ(screen.Log(), "comes -|") << "nothing is something";
        host.ResetButtons(bar);
        EXPECT_EQ(screen.Log(), "changes 1 2 3|");
        EXPECT_EQ(buttons(), AString()) << "the module's own";
        host.SetButtons(bar, ToolBarButtonList(200, bar.GetButtons()->front()));
        EXPECT_EQ(bar.GetButtons()->size(), 99u);
    });
    screen.Log();
    run([&](CQrToolBar& bar) { EXPECT_EQ(bar.GetButtons()->size(), 99u); });
}

TEST(HostToolBars, TellTheScreenOfCustomisingLayoutAndTheEndOfBars) {
    OptionStore options;
    HostDesktop desktop({}, options);
    HostToolBars& host = *desktop.GetToolBarHost();
    Screen screen;
    CToolBarsData data(desktop, u"Owner");
    data.AddShownToolBar(u"Edit", kTable);
    data.CreateBars(); // nobody shows it yet
    host.SetScreen(&screen);
    EXPECT_EQ(screen.Log(), "comes 1 2 3|");
    CQrToolBar& bar = *host.GetBars().at(0);
    host.SetCustomizing(true);
    host.SetCustomizing(true);
    EXPECT_EQ(screen.Log(), "customise|");
    EXPECT_EQ(bar.HandleMessage(kMsgNotify, kNoticeBeginDrag, 0), 1);
    bar.HandleMessage(kMsgWindowPosChanged, 0, 0);
    EXPECT_EQ(screen.Log(), "");
    bar.SetSkipRelayout(false);
    bar.HandleMessage(kMsgWindowPosChanged, 0, 0);
    EXPECT_EQ(screen.Log(), "layout|");
    EXPECT_EQ(HostToolBars::FindDefaults(bar), nullptr) << "shown, but never described";
    data.DestroyBars(false);
    EXPECT_EQ(screen.Log(), "ends|");
    EXPECT_TRUE(host.GetBars().empty());
    host.SetScreen(nullptr);
}

} // namespace
