/// Sizes, scroll bars, wheel, and what brings the caret into sight.
#include <tuple>

#include "breaking_desk.h"
#include "view_fixture.h"

namespace {

std::string Lines(int count) {
    std::string text;
    for (int i = 1; i < count; ++i)
        text += "line " + std::to_string(i) + "\r\n";
    return text + "last";
}

AString Numbered(int line) {
    AString text;
    return text.Format(u"line %d", line);
}

TEST_F(ViewTest, ScrollingByBarAndWheelMovesRows) {
    Open(Lines(100));
    const auto expect = [this](int topRow) {
        EXPECT_EQ(TopRow(), topRow);
        EXPECT_EQ(View().GetScrollBar(ScrollBar::vertical).m_Position, topRow * 16);
        EXPECT_EQ(RowText(0), Numbered(topRow + 1));
        ExpectTruePicture();
    };
    const std::tuple<ScrollCode, int, int> kRows[] = {{kScrollLineUp, 0, 0},
                                                      {kScrollPageDown, 0, 24},
                                                      {kScrollPageDown, 0, 48},
                                                      {kScrollPageDown, 0, 72},
                                                      {kScrollPageDown, 0, 75},
                                                      {kScrollPageDown, 0, 75},
                                                      {kScrollLineDown, 0, 75},
                                                      {kScrollPageUp, 0, 51},
                                                      {kScrollLineUp, 0, 50},
                                                      {kScrollLineDown, 0, 51},
                                                      {kScrollThumbTrack, 800, 50},
                                                      {kScrollThumbPosition, 807, 50},
                                                      {kScrollThumbPosition, 808, 51},
                                                      {kScrollThumbTrack, -5, 0},
                                                      {kScrollThumbTrack, 1 << 30, 75},
                                                      {kScrollEnd, 0, 75},
                                                      {kScrollTop, 0, 75}};
    for (const auto& [code, position, wantedTopRow] : kRows) {
        SCOPED_TRACE(testing::Message() << code << ' ' << position);
        Scroll(kMsgVScroll, code, position);
        expect(wantedTopRow);
    }
    const std::pair<int, int> kTurns[] = {{120, 73}, {240, 68}, {-120, 70}, // a notch is two rows
                                          {-40, 70}, {39, 70},  {12000, 0}, {-12000, 75}};
    for (const auto& [delta, topRow] : kTurns) {
        SCOPED_TRACE(delta);
        Wheel(delta);
        expect(topRow);
    }
}

TEST_F(ViewTest, SizesFollowTextAndWindow) {
    const struct {
        int lines;
        std::size_t width;
        CSize client;
        ScrollInfo horizontal;
        ScrollInfo vertical;
        int linesPerPage;
    } kRows[] = {{10, 5, {640, 400}, {8010, 160, 8, 0}, {0, 384, 16, 0}, 25},
                 {25, 1000, {640, 400}, {8010, 160, 8, 0}, {0, 384, 16, 0}, 25},
                 {26, 1001, {643, 405}, {8019, 160, 8, 0}, {421, 384, 16, 0}, 25},
                 {26, 1200, {646, 399}, {9614, 160, 8, 0}, {431, 368, 16, 0}, 24},
                 {5000, 5000, {640, 400}, {32766, 160, 8, 0}, {32752, 384, 16, 0}, 25},
                 {3, 0, {30, 10}, {8014, 0, 8, 0}, {58, 0, 16, 0}, 1}};
    Open("");
    for (const auto& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.lines << " of " << row.width);
        Editor().m_Driver->LoadArchive(std::string(row.width, 'x') + "\n" + Lines(row.lines - 1));
        View().Resize(row.client);
        EXPECT_EQ(View().GetScrollBar(ScrollBar::horizontal), row.horizontal);
        EXPECT_EQ(View().GetScrollBar(ScrollBar::vertical), row.vertical);
        const auto scroll = Editor().m_Inspector->GetScroll();
        EXPECT_EQ(scroll->m_LinesPerPage, row.linesPerPage);
        EXPECT_EQ(scroll->m_MaxLineLength, std::max<int>(1000, static_cast<int>(row.width)));
        Scroll(kMsgVScroll, kScrollThumbTrack, row.vertical.m_Total); // the end of any text
        EXPECT_EQ(TopRow(), std::max(row.lines - row.linesPerPage, 0));
    }
}

TEST_F(ViewTest, HorizontalBarMovesByWholeColumns) {
    Open(std::string(1200, 'x') + "\r\nend");
    const std::tuple<ScrollCode, int, int> kRows[] = {{kScrollLineDown, 0, 8},
                                                      {kScrollPageDown, 0, 168},
                                                      {kScrollThumbTrack, 815, 808},
                                                      {kScrollThumbPosition, 7, 0},
                                                      {kScrollLineUp, 0, 0},
                                                      {kScrollBottom, 0, 9610 - 640},
                                                      {kScrollLineDown, 0, 9610 - 640},
                                                      {kScrollPageUp, 0, 9610 - 800},
                                                      {kScrollThumbPosition, 8960, 8960},
                                                      {kScrollTop, 0, 0}};
    for (const auto& [code, value, position] : kRows) {
        Scroll(kMsgHScroll, code, value);
        EXPECT_EQ(View().GetScrollBar(ScrollBar::horizontal).m_Position, position) << code;
        ExpectTruePicture();
    }
}

/// As on a screen whose ratio of pixels has changed: the font has other measures.
TEST_F(ViewTest, NewMeasuresOfTheScreenAreTaken) {
    struct Surface : CellSurface {
        using CellSurface::CellSurface;
        FontMetrics GetFontMetrics(const IBackendFont*) override { return {20, 0, 10, 10}; }
    };
    struct Desk : BreakingDesk {
        using BreakingDesk::BreakingDesk;
        IBackendSurface& GetScreen() override { return m_Larger; }
        CellGrid m_Grid{{0, 0}};
        CSize m_Size;
        Surface m_Larger{m_Grid, m_Size};
    } desk(m_Desk);
    Open(std::string(1200, 'x') + "\r\n" + Lines(99));
    Scroll(kMsgHScroll, kScrollThumbTrack, 808);
    SetBackend(&desk);
    View().Send(kMsgDpiChanged);
    EXPECT_EQ(View().GetScrollBar(ScrollBar::horizontal), (ScrollInfo{12012, 160, 10, 1010}));
    EXPECT_EQ(View().GetScrollBar(ScrollBar::vertical), (ScrollInfo{2000, 380, 20, 0}));
    EXPECT_EQ(View().GetCaret(), (CRect{-1010, 0, -1008, 20})); // the left column is the same
    EXPECT_EQ(View().GetInvalid(), (CRect{0, 0, 640, 400}));
    SetBackend(&m_Desk);
}

TEST_F(ViewTest, CaretIsBroughtIntoSight) {
    Open(std::string(1200, 'x') + "\r\n" + Lines(99));
    Key(kKeyEnd);
    Type(u"x");
    Key(kKeyBack);
    EXPECT_EQ(Caret(), (ScreenCell{0, 78})); // where typing had scrolled to
    EXPECT_EQ(View().GetScrollBar(ScrollBar::horizontal).m_Position, (1201 - 79) * 8);
    ExpectTruePicture();
    Key(kKeyDown);
    EXPECT_EQ(Caret(), (ScreenCell{1, 0})); // at the end of a short line, left of the window
    ExpectTruePicture();
    Key(kKeyHome);
    EXPECT_EQ(View().GetScrollBar(ScrollBar::horizontal).m_Position, 0);
    EXPECT_EQ(Editor().m_Inspector->GetScroll()->m_MaxLineLength, 1201); // never shrinks
    Click({24, 0});
    Type(u"a");
    EXPECT_EQ(TopRow(), 0); // the last visible row is in sight
    m_Desk.m_Clipboard = u"b";
    Editor().m_Driver->RunCommand(57637);
    EXPECT_EQ(TopRow(), 1); // a paste wants a row below
    Key(kKeyEnd, {kKeyControl});
    EXPECT_EQ(TopRow(), 75);
    EXPECT_EQ(Caret(), (ScreenCell{24, 0}));
    Editor().m_Driver->RunCommand(57637);
    EXPECT_EQ(TopRow(), 75); // there is none
    Key(kKeyHome, {kKeyControl});
    EXPECT_EQ(TopRow(), 0);
    Editor().m_Driver->InsertString(0, 0, std::string(500, 'y'), true, true);
    Editor().m_Driver->NotifyEdited(0); // as another view, so that this one's width is behind
    Key(kKeyEnd);
    EXPECT_EQ(Caret(), (ScreenCell{0, 79}));
    ExpectTruePicture();
}

TEST_F(ViewTest, TopRowStaysInsideTheText) {
    Open(Lines(100));
    Scroll(kMsgVScroll, kScrollThumbTrack, 1200);
    View().Resize({640, 640});
    EXPECT_EQ(TopRow(), 60);
    ExpectTruePicture();
    for (int row = 99; row >= 50; --row)
        Editor().m_Driver->DeleteLine(row, false, true);
    Editor().m_Driver->NotifyEdited(50);
    EXPECT_EQ(TopRow(), 10);
    ExpectTruePicture();
    EXPECT_EQ(RowText(39), u"line 50");
    Editor().m_Driver->LoadArchive("new");
    EXPECT_EQ(TopRow(), 0);
    EXPECT_EQ(RowText(0), u"new");
    EXPECT_EQ(RowText(1), u"");
    ExpectTruePicture();
}

TEST_F(ViewTest, CaretShowsWhileTheViewHasTheFocus) {
    Open("abc");
    EXPECT_EQ(View().GetCaret(), (CRect{0, 0, 2, 16}));
    View().Send(kMsgKillFocus);
    EXPECT_EQ(View().GetCaret(), std::nullopt);
    Key(kKeyRight); // moves it all the same
    ExpectTruePicture();
    EXPECT_EQ(View().GetCaret(), std::nullopt);
    View().Send(kMsgSetFocus);
    EXPECT_EQ(Caret(), (ScreenCell{0, 1}));
}

} // namespace
