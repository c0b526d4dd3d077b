#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "combo_box.h"
#include "headless_desk.h"
#include "view.h"

namespace {

std::vector<std::string> sLog;

/// Logs its messages under a name.
class LogWindow : public CWnd {
public:
    explicit LogWindow(std::string name) : m_Name(std::move(name)) {}
    std::intptr_t OnFocus(std::uintptr_t other, std::intptr_t) { return Note("focus", other); }
    std::intptr_t OnBlur(std::uintptr_t other, std::intptr_t) { return Note("blur", other); }
    std::intptr_t OnDestroy(std::uintptr_t, std::intptr_t) { return Note("destroy", 0); }
    std::intptr_t OnKey(std::uintptr_t key, std::intptr_t) {
        if (key == 'P')
            PostMessage(kMsgKeyDown, 'Q');
        Note("key " + std::string(1, static_cast<char>(key)), 0);
        return static_cast<std::intptr_t>(key);
    }

protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageEntry kEntries[] = {
            Message<&LogWindow::OnFocus>(kMsgSetFocus), Message<&LogWindow::OnBlur>(kMsgKillFocus),
            Message<&LogWindow::OnDestroy>(kMsgDestroy), Message<&LogWindow::OnKey>(kMsgKeyDown)};
        static const MessageMap kMap{kEntries, &CWnd::GetMessageMap()};
        return kMap;
    }
    void PostNcDestroy() override { Note("gone", 0); }

private:
    std::intptr_t Note(const std::string& what, std::uintptr_t other) {
        sLog.push_back(m_Name + " " + what +
                       (other ? " " + reinterpret_cast<LogWindow*>(other)->m_Name : ""));
        return 0;
    }
    std::string m_Name;
};

using Lines = std::vector<std::string>;

class WindowTest : public ::testing::TestWithParam<bool> {
protected:
    WindowTest() {
        sLog.clear();
        if (GetParam())
            SetBackend(&m_Desk);
        m_Parent.Create(WindowKind::frame, nullptr);
        m_Child.Create(WindowKind::view, &m_Parent);
    }
    ~WindowTest() override {
        m_Parent.DestroyWindow();
        SetBackend(nullptr);
    }
    static Lines TakeLog() { return std::exchange(sLog, {}); }

    HeadlessDesk m_Desk;
    LogWindow m_Parent{"parent"};
    LogWindow m_Child{"child"};
};
INSTANTIATE_TEST_SUITE_P(Backends, WindowTest, ::testing::Bool());

} // namespace

TEST_P(WindowTest, EndsBeforeItsChildrenDoAndIsGoneAfterThem) {
    EXPECT_FALSE(m_Child.Create(WindowKind::view, nullptr)) << "created already";
    EXPECT_EQ(m_Parent.GetChildren(), std::vector<CWnd*>{&m_Child});
    m_Parent.DestroyWindow();
    m_Parent.DestroyWindow();
    EXPECT_EQ(TakeLog(), (Lines{"parent destroy", "child destroy", "child gone", "parent gone"}));
    EXPECT_EQ(m_Child.GetParent(), nullptr);
    EXPECT_TRUE(m_Parent.GetChildren().empty());
    EXPECT_TRUE(m_Desk.GetWindows().empty());
}

TEST_P(WindowTest, FocusMovesOnceAndBothSidesKnowTheOther) {
    m_Child.SetFocus();
    m_Child.SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &m_Child);
    m_Parent.SetFocus();
    EXPECT_EQ(TakeLog(), (Lines{"child focus", "child blur parent", "parent focus child"}));
    if (GetParam()) {
        static_cast<HeadlessWindow*>(m_Child.GetBackendWindow())->SetFocus();
        EXPECT_EQ(TakeLog(), (Lines{"parent blur", "child focus"})) << "moved by the user";
    }
    m_Child.SetFocus();
    TakeLog();
    m_Child.DestroyWindow();
    EXPECT_EQ(TakeLog(), (Lines{"child destroy", "child blur", "child gone"}));
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
}

TEST_P(WindowTest, MessagesAreSentAtOnceAndPostedInTheirTurn) {
    EXPECT_EQ(m_Child.SendMessage(kMsgKeyDown, 'A'), 'A');
    EXPECT_EQ(m_Child.SendMessage(kMsgChar, 'A'), 0) << "nobody handles it";
    m_Child.PostMessage(kMsgKeyDown, 'P');
    m_Parent.PostMessage(kMsgKeyDown, 'R');
    m_Child.SendMessage(kMsgKeyDown, 'B');
    EXPECT_EQ(TakeLog(), (Lines{"child key A", "child key B"}));
    EXPECT_EQ(m_Desk.Pump(), GetParam() ? 3 : 0);
    EXPECT_EQ(TakeLog(),
              GetParam() ? (Lines{"child key P", "parent key R", "child key Q"}) : Lines{});
    m_Child.PostMessage(kMsgKeyDown, 'C');
    m_Child.DestroyWindow();
    EXPECT_EQ(m_Desk.Pump(), 0) << "messages end with their window";
}

TEST(MessageValue, KeepsNegativePlaces) {
    for (const auto& [x, y] : {std::pair(0, 0), std::pair(-1, 5), std::pair(7, -3),
                               std::pair(-2147483647 - 1, 2147483647)}) {
        EXPECT_EQ(PointValueX(MakePointValue(x, y)), x);
        EXPECT_EQ(PointValueY(MakePointValue(x, y)), y);
    }
}

TEST(ScrollView, KeepsItsPositionInTheRange) {
    HeadlessDesk desk;
    SetBackend(&desk);
    auto* view = new CScrollView;
    view->Create(WindowKind::view, nullptr);
    auto* window = static_cast<HeadlessWindow*>(view->GetBackendWindow());
    view->SetScrollSizes({1000, 4000}, {160, 384}, {8, 16});
    EXPECT_EQ(view->GetScrollLimit(), (CPoint{360, 3600}));
    const std::pair<CPoint, CPoint> kRows[] = {
        {{8, 16}, {8, 16}}, {{-1, 32}, {0, 32}}, {{361, 3601}, {360, 3600}}, {{360, 0}, {360, 0}}};
    for (const auto& [to, is] : kRows) {
        view->SetScrollPosition(to);
        EXPECT_EQ(view->GetScrollPosition(), is);
        EXPECT_EQ(window->GetScrollBar(ScrollBar::horizontal), (ScrollInfo{1000, 160, 8, is.x}));
        EXPECT_EQ(window->GetScrollBar(ScrollBar::vertical), (ScrollInfo{4000, 384, 16, is.y}));
    }
    desk.Pump();
    window->GetSurface().DrawText({0, 16}, u"abcdef", {});
    view->ScrollToPosition({344, 16});
    EXPECT_EQ(window->GetGrid().GetRowText(0), u"  abcdef");
    EXPECT_EQ(window->GetInvalid(), (CRect{0, 0, 640, 400})) << "a column and a row";
    desk.Pump();
    view->ScrollToPosition({344, 32});
    EXPECT_EQ(window->GetInvalid(), (CRect{0, 384, 640, 400}));
    view->SetScrollSizes({100, 100}, {}, {});
    EXPECT_EQ(view->GetScrollLimit(), CPoint{});
    EXPECT_EQ(view->GetScrollPosition(), CPoint{});
    view->DestroyWindow();
    SetBackend(nullptr);
}

namespace {

class CountingPeer : public IComboBoxPeer {
public:
    void ComboBoxChanged() override { ++m_Changes; }
    void EditCommand(unsigned message) override { m_Commands.push_back(message); }
    int m_Changes = 0;
    std::vector<unsigned> m_Commands;
};

} // namespace

TEST(ComboBox, KeepsItsListWithoutAScreen) {
    CComboBox box;
    CountingPeer peer;
    box.SetPeer(&peer);
    EXPECT_EQ(box.FindStringExact(-1, u"R1"), -1);
    EXPECT_EQ(box.InsertString(-1, u"R1"), 0);
    EXPECT_EQ(box.InsertString(0, u"C1"), 0);
    EXPECT_EQ(box.InsertString(-1, u"r1"), 2);
    EXPECT_EQ(box.InsertString(4, u"x"), -1);
    EXPECT_EQ(box.InsertString(-2, u"x"), -1);
    EXPECT_EQ(peer.m_Changes, 3);
    const std::tuple<int, const char16_t*, int> kRows[] = {
        {-1, u"R1", 1}, {1, u"R1", 2}, {2, u"R1", 1}, {7, u"c1", 0}, {-1, u"R", -1}};
    for (const auto& [start, text, found] : kRows)
        EXPECT_EQ(box.FindStringExact(start, text), found) << start;

    EXPECT_EQ(box.SetCurSel(1), 1);
    EXPECT_EQ(box.GetWindowText(), u"R1");
    EXPECT_EQ(box.InsertString(1, u"L1"), 1);
    EXPECT_EQ(box.GetCurSel(), 2);
    EXPECT_EQ(box.DeleteString(0), 3);
    EXPECT_EQ(box.GetCurSel(), 1);
    EXPECT_EQ(box.DeleteString(1), 2);
    EXPECT_EQ(box.GetCurSel(), -1);
    EXPECT_EQ(box.DeleteString(2), -1);
    EXPECT_EQ(box.GetItemText(1), u"r1");
    EXPECT_EQ(box.GetItemText(2), u"");
    EXPECT_EQ(box.SetCurSel(5), -1);
    EXPECT_EQ(box.GetWindowText(), u"");
    for (const unsigned message : {kMsgCut, kMsgCopy, kMsgPaste})
        box.SendMessage(message);
    EXPECT_EQ(peer.m_Commands, (std::vector<unsigned>{kMsgCut, kMsgCopy, kMsgPaste}));
    box.ResetContent();
    EXPECT_EQ(box.GetCount(), 0);
}
