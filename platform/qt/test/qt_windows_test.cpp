// What only real windows do: keys, pointer, scroll bars, frames in an area, screen readers.

#include <QAccessible>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include "accessible_canvas.h"
#include "stage.h"

namespace {

class QtWindowsTest : public ::testing::Test {
protected:
    QtWindowsTest() {
        m_Area.resize(800, 600);
        m_Area.show();
        Desk().SetFrameArea(&m_Area);
        m_Frame = Desk().CreateWindow(WindowKind::frame, nullptr, m_FrameSink);
        m_Window = Desk().CreateWindow(WindowKind::view, m_Frame.get(), m_Sink);
        m_Frame->Show(kShowDefault);
        m_Window->SetFocus();
        m_Stage.Settle();
        m_Sink.m_Log.clear();
        m_FrameSink.m_Log.clear();
    }
    QtDesk& Desk() { return m_Stage.GetDesk(); }
    QWidget& Canvas() { return QtStage::CanvasOf(*m_Window); }
    QMdiSubWindow& Shell() { return *qobject_cast<QMdiSubWindow*>(QtDesk::GetWidget(*m_Frame)); }
    double Ratio() { return Canvas().devicePixelRatioF(); }
    void Press(int key, Qt::KeyboardModifiers modifiers, const QString& text) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QApplication::sendEvent(&Canvas(), &event);
    }
    void Point(QEvent::Type type, QPointF at, Qt::KeyboardModifiers modifiers = {}) {
        QMouseEvent event(type, at, Canvas().mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                          modifiers);
        QApplication::sendEvent(&Canvas(), &event);
    }
    void Wheel(QPoint pixels, QPoint angle) {
        QWheelEvent event({5, 5}, Canvas().mapToGlobal(QPointF(5, 5)), pixels, angle, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&Canvas(), &event);
    }
    std::vector<NotingSink::Message> TakeLog() { return std::exchange(m_Sink.m_Log, {}); }

    using Log = std::vector<NotingSink::Message>;
    QtStage m_Stage;
    QMdiArea m_Area;
    NotingSink m_FrameSink, m_Sink;
    std::unique_ptr<IBackendWindow> m_Frame, m_Window;
};

} // namespace

TEST_F(QtWindowsTest, KeysAreKeysThenCharactersUnlessAnAcceleratorTakesThem) {
    m_Sink.m_Accelerator = {'C', kModControl};
    const std::tuple<int, Qt::KeyboardModifiers, QString, Log> kRows[] = {
        {Qt::Key_A, {}, u"a"_qs, {{kMsgKeyDown, 'A', 1}, {kMsgChar, 'a', 1}}},
        {Qt::Key_C, Qt::ControlModifier, u"\u0003"_qs, {}},
        {Qt::Key_V, Qt::ControlModifier, u"\u0016"_qs, {{kMsgKeyDown, 'V', 1}, {kMsgChar, 22, 1}}},
        {Qt::Key_1, Qt::ControlModifier, u"1"_qs, {{kMsgKeyDown, '1', 1}}},
        {Qt::Key_X, Qt::AltModifier, u"x"_qs, {{kMsgKeyDown, 'X', 1}}},
        {Qt::Key_Delete, {}, u"\u007F"_qs, {{kMsgKeyDown, kKeyDelete, 1}}},
        {Qt::Key_Backtab, Qt::ShiftModifier, {}, {{kMsgKeyDown, kKeyTab, 1}}},
        {Qt::Key_F3, {}, {}, {{kMsgKeyDown, kKeyF3, 1}}},
        {Qt::Key_Enter, {}, u"\r"_qs, {{kMsgKeyDown, kKeyReturn, 1}, {kMsgChar, 13, 1}}},
        {0x20AC, {}, u"\u20AC"_qs, {{kMsgChar, 0x20AC, 1}}},
        {Qt::Key_unknown, {}, u"\U0001F600"_qs, {{kMsgChar, 0xD83D, 1}, {kMsgChar, 0xDE00, 1}}}};
    for (const auto& [key, modifiers, text, sent] : kRows) {
        Press(key, modifiers, text);
        EXPECT_EQ(TakeLog(), sent) << key;
    }
    Press(Qt::Key_Left, Qt::ShiftModifier, {});
    EXPECT_TRUE(Desk().IsKeyDown(kKeyShift, false));
    EXPECT_FALSE(Desk().IsKeyDown(kKeyControl, false));
    TakeLog();
    QInputMethodEvent composed(u"x"_qs, {});
    composed.setCommitString(u"\u00E9"_qs);
    QApplication::sendEvent(&Canvas(), &composed);
    EXPECT_EQ(TakeLog(), (Log{{kMsgChar, 0xE9, 1}}));
}

TEST_F(QtWindowsTest, ThePointerTellsItsPlaceInTheScreensPixels) {
    const auto at = [&](int x, int y) {
        return MakePointValue(static_cast<int>(x * Ratio()), static_cast<int>(y * Ratio()));
    };
    Point(QEvent::MouseButtonPress, {8, 16}, Qt::AltModifier);
    Point(QEvent::MouseMove, {-40, 4000}, Qt::ShiftModifier);
    Point(QEvent::MouseButtonRelease, {8, 16});
    Point(QEvent::MouseButtonDblClick, {16, 8});
    EXPECT_EQ(TakeLog(), (Log{{kMsgLButtonDown, kModAlt, at(8, 16)},
                              {kMsgSetCursor, 0, 0},
                              {kMsgMouseMove, kModShift, at(-40, 4000)},
                              {kMsgLButtonUp, 0, at(8, 16)},
                              {kMsgLButtonDblClk, 0, at(16, 8)}}));
    Desk().SetCursor(CursorShape::arrow);
    EXPECT_EQ(Canvas().cursor().shape(), Qt::ArrowCursor);
    const QPoint global = Canvas().mapToGlobal(QPoint(8, 8));
    QContextMenuEvent menu(QContextMenuEvent::Mouse, {8, 8}, global);
    QApplication::sendEvent(&Canvas(), &menu);
    const CPoint screen = m_Window->ClientToScreen({PointValueX(at(8, 8)), PointValueY(at(8, 8))});
    EXPECT_EQ(TakeLog(), (Log{{kMsgContextMenu, 0, MakePointValue(screen.x, screen.y)}}));
    EXPECT_TRUE(m_Window->GetWindowRect().Contains(screen));
}

TEST_F(QtWindowsTest, WheelTurnsAddUpToNotches) {
    m_Window->SetScrollBar(ScrollBar::vertical, {9000, 100, 20, 0});
    m_Window->SetScrollBar(ScrollBar::horizontal, {9000, 100, 10, 0});
    m_Stage.Settle();
    TakeLog();
    Wheel({}, {0, 120});
    Wheel({}, {0, -60});
    Wheel({}, {0, -60});
    const int notch = static_cast<int>(std::ceil(40 / Ratio())); // two lines of pixels
    Wheel({0, notch / 2}, {0, 15});
    Wheel({0, notch}, {0, 30});
    Wheel({}, {-120, 0});
    const auto turn = [](int delta) {
        return NotingSink::Message{kMsgMouseWheel,
                                   static_cast<std::uintptr_t>(std::intptr_t{delta}), 0};
    };
    const NotingSink::Message right{kMsgHScroll, kScrollLineDown, 0};
    EXPECT_EQ(TakeLog(), (Log{turn(120), turn(-120), turn(120), right, right, right}));
}

TEST_F(QtWindowsTest, ScrollBarsComeWithNeedAndAskTheView) {
    auto* area = static_cast<ViewArea*>(QtDesk::GetWidget(*m_Window));
    QScrollBar& bar = area->GetScrollBar(ScrollBar::vertical);
    const CSize client = m_Window->GetClientSize();
    m_Window->SetScrollBar(ScrollBar::vertical, {client.cy, 100, 20, 0});
    EXPECT_FALSE(bar.isVisible());
    m_Window->SetScrollBar(ScrollBar::vertical, {client.cy + 500, 100, 20, 40});
    EXPECT_TRUE(bar.isVisible());
    EXPECT_LT(m_Window->GetClientSize().cx, client.cx);
    EXPECT_EQ(bar.maximum(), 500);
    EXPECT_EQ(bar.value(), 40);
    EXPECT_EQ(TakeLog().back().m_Number, unsigned{kMsgSize});
    bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
    bar.triggerAction(QAbstractSlider::SliderPageStepSub);
    EXPECT_EQ(bar.value(), 40) << "the view alone moves it";
    bar.setSliderDown(true);
    bar.setSliderPosition(77);
    m_Window->SetScrollBar(ScrollBar::vertical, {client.cy + 500, 100, 20, 60});
    EXPECT_EQ(bar.sliderPosition(), 77) << "under the user's hand";
    bar.setSliderDown(false);
    EXPECT_EQ(bar.value(), 60);
    EXPECT_EQ(TakeLog(), (Log{{kMsgVScroll, kScrollLineDown, 60},
                              {kMsgVScroll, kScrollPageUp, 0},
                              {kMsgVScroll, kScrollThumbTrack, 77},
                              {kMsgVScroll, kScrollThumbPosition, 77},
                              {kMsgVScroll, kScrollEnd, 0}}));
    // A view that wants the bar exactly where there is none, and the other way round, comes to
    // rest.
    m_Sink.m_OnMessage = [&](unsigned message) {
        if (message == kMsgSize)
            m_Window->SetScrollBar(ScrollBar::vertical,
                                   {m_Window->GetClientSize().cx < client.cx ? 0 : 9000, 1, 1, 0});
    };
    m_Window->SetScrollBar(ScrollBar::vertical, {0, 1, 1, 0});
    EXPECT_TRUE(bar.isVisible());
}

TEST_F(QtWindowsTest, FramesOfAnAreaAreActivatedClosedAndPlaced) {
    std::vector<IBackendWindow*> activated;
    AString title;
    bool mayClose = false;
    Desk().SetFrameHooks({[&](IBackendWindow& frame) { activated.push_back(&frame); },
                          [&](IBackendWindow&, const AString& text) { title = text; },
                          [&](IBackendWindow&) { return mayClose; }});
    NotingSink sink;
    auto second = Desk().CreateWindow(WindowKind::frame, nullptr, sink);
    second->SetTitle(u"opamp[*].cir");
    EXPECT_EQ(title, u"opamp[*].cir");
    second->Show(kShowDefault);
    EXPECT_EQ(sink.m_Log.size(), 0u) << "the framework knows what it does";
    m_Area.setActiveSubWindow(&Shell());
    EXPECT_EQ(m_FrameSink.m_Log, (Log{{kMsgMdiActivate, 0, 0}}));
    EXPECT_EQ(activated, (std::vector<IBackendWindow*>{second.get(), m_Frame.get()}));

    Shell().close();
    m_Stage.Settle();
    EXPECT_EQ(m_FrameSink.TakeMessages(), std::vector<unsigned>{});
    mayClose = true;
    Shell().close();
    m_Stage.Settle();
    EXPECT_EQ(m_FrameSink.TakeMessages(), std::vector<unsigned>{kMsgClose});

    const WindowPlacement placement{kShowMaximized, {}, {}, {10, 20, 310, 220}};
    second->SetPlacement(placement);
    second->Show(kShowDefault);
    EXPECT_EQ(second->GetPlacement(), placement);
    second->Show(kShowRestore);
    EXPECT_EQ(QtDesk::GetWidget(*second)->geometry(), QRect(10, 20, 300, 200));

    const QPointF onTitle(40, 5);
    QMouseEvent move(QEvent::MouseMove, onTitle, Shell().mapToGlobal(onTitle), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    TakeLog();
    QApplication::sendEvent(&Shell(), &move);
    const Log log = TakeLog();
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(log[0].m_Number, unsigned{kMsgNcMouseMove});
    const CPoint at{PointValueX(log[0].m_Second), PointValueY(log[0].m_Second)};
    EXPECT_TRUE(m_Window->GetWindowRect().Contains(at));
    EXPECT_LT(at.y, m_Window->ClientToScreen({0, 0}).y);
}

TEST_F(QtWindowsTest, WindowsMayEndInTheirOwnMessages) {
    m_Sink.m_OnMessage = [this](unsigned message) {
        if (message == kMsgKeyDown || message == kMsgVScroll) {
            m_Window.reset();
            m_Frame.reset();
        }
    };
    Press(Qt::Key_A, {}, u"abc"_qs);
    EXPECT_EQ(TakeLog().back().m_Number, unsigned{kMsgKeyDown});
    m_Stage.Settle();
    EXPECT_TRUE(m_Area.subWindowList().isEmpty());
}

namespace {

class TwoLines : public IAccessibleText {
public:
    int GetLength() override { return static_cast<int>(m_Text.size()); }
    AString GetText(Range range) override {
        return m_Text.Mid(range.m_From, range.m_To - range.m_From);
    }
    int GetCaretOffset() override { return 8; }
    Range GetSelection() override { return {3, 8}; }
    AString GetSelectedText() override { return u"as copied"; }
    Range GetLineAt(int offset) override { return offset < 7 ? Range{0, 6} : Range{7, 12}; }
    AString m_Text = u"R1 1 0\nC2 10";
};

} // namespace

TEST_F(QtWindowsTest, ScreenReadersReadTextCaretAndSelection) {
    TwoLines text;
    m_Sink.m_Text = &text;
    QAccessibleInterface* canvas = QAccessible::queryAccessibleInterface(&Canvas());
    ASSERT_NE(canvas, nullptr);
    EXPECT_EQ(canvas->role(), QAccessible::EditableText);
    QAccessibleTextInterface* reader = canvas->textInterface();
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(reader->characterCount(), 12);
    EXPECT_EQ(reader->cursorPosition(), 8);
    int start = 0, end = 0;
    reader->selection(0, &start, &end);
    EXPECT_EQ(reader->text(start, end), u"1 0\nC"_qs);
    const std::tuple<int, QAccessible::TextBoundaryType, QString, QString, QString> kRows[] = {
        {8, QAccessible::LineBoundary, u"R1 1 0\n"_qs, u"C2 10"_qs, {}},
        {0, QAccessible::LineBoundary, {}, u"R1 1 0\n"_qs, u"C2 10"_qs},
        {8, QAccessible::WordBoundary, u"\n"_qs, u"C2"_qs, u" "_qs},
        {6, QAccessible::CharBoundary, u"0"_qs, u"\n"_qs, u"C"_qs}};
    for (const auto& [offset, boundary, before, at, after] : kRows) {
        EXPECT_EQ(reader->textAtOffset(offset, boundary, &start, &end), at);
        EXPECT_EQ(reader->textBeforeOffset(offset, boundary, &start, &end), before);
        EXPECT_EQ(reader->textAfterOffset(offset, boundary, &start, &end), after);
    }
    m_Sink.m_Text = nullptr;
    EXPECT_EQ(reader->characterCount(), 0);
}
