/// Clicks, drags, words and the pointer's shape.
#include "breaking_desk.h"
#include "view_fixture.h"

namespace {

TextPosition CaretOf(IEditorInspector& inspector) {
    return inspector.GetCaret()->m_Caret;
}

TEST_F(ViewTest, ClickPutsTheCaretToTheNearestPlace) {
    Open("ab\tcd\r\n\r\nlast line"); // the tab is two columns wide
    const std::tuple<ScreenCell, CPoint, TextPosition> kRows[] = {
        {{0, 1}, {4, 15}, {0, 1}}, // the middle of a character belongs to its left half
        {{0, 1}, {5, 15}, {0, 2}},  {{0, 3}, {0, 0}, {0, 2}}, // inside the tab
        {{0, 2}, {7, 0}, {0, 2}},   {{0, 3}, {5, 0}, {0, 4}},  {{0, 40}, {0, 0}, {0, 6}},
        {{1, 5}, {0, 0}, {1, 0}},   {{20, 3}, {0, 0}, {2, 3}}, // below the text
        {{20, 79}, {0, 0}, {2, 9}}, {{-3, -3}, {0, 0}, {0, 0}}};
    for (const auto& [cell, pixels, caret] : kRows) {
        Mouse(kMsgLButtonDown, cell, pixels);
        Mouse(kMsgLButtonUp, cell, pixels);
        EXPECT_EQ(CaretOf(*Editor().m_Inspector), caret)
            << testing::PrintToString(cell) << pixels.x;
        EXPECT_FALSE(Editor().m_Inspector->GetSelection()->m_Selected);
    }
}

TEST_F(ViewTest, DragHighlightsAStreamOrABlock) {
    Open("first line\r\n\r\nab\r\nfourth");
    const struct {
        ScreenCell from, to;
        bool alt;
        const char* rows[4];
    } kRows[] = {{{0, 2}, {3, 3}, false, {"..xxxxxxxx", "", "xx", "xxx"}},
                 {{3, 3}, {0, 2}, false, {"..xxxxxxxx", "", "xx", "xxx"}},
                 {{2, 1}, {9, 70}, false, {"", "", ".x", "xxxxxx"}},
                 {{0, 2}, {3, 5}, true, {"..xxx", "..xxx", "..xxx", "..xxx"}},
                 {{3, 2}, {0, 5}, true, {"..xxx", "..xxx", "..xxx", "..xxx"}},
                 {{0, 2}, {2, 7}, true, {"", "", "", ""}}, // a line's end bounds the corner
                 {{2, 2}, {0, 2}, false, {"..xxxxxxxx", "", "xx", ""}}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(testing::PrintToString(row.from) + testing::PrintToString(row.to));
        Drag(row.from, row.to, row.alt);
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(Highlight(i), row.rows[i]) << i;
        ExpectTruePicture();
        Click({20, 79});
        ExpectTruePicture();
    }
}

TEST_F(ViewTest, DoubleClickTakesAWord) {
    Open("a.b:=c1_(x),  end");
    constexpr std::pair<int, int> kWords[] = {
        // by the column clicked; at an end, the word before
        {0, 3},  {0, 3}, {0, 3}, {0, 3}, {},       {5, 8},   {5, 8},   {5, 8},   {5, 8},  {9, 10},
        {9, 10}, {},     {},     {},     {14, 17}, {14, 17}, {14, 17}, {14, 17}, {14, 17}};
    for (int column = 0; column < static_cast<int>(std::size(kWords)); ++column) {
        const auto [start, end] = kWords[column];
        const std::string word = std::string(static_cast<std::size_t>(start), '.') +
                                 std::string(static_cast<std::size_t>(end - start), 'x');
        DoubleClick({0, column});
        EXPECT_EQ(Highlight(0), word) << column;
        Release({0, column});
        EXPECT_FALSE(View().IsCaptured());
        Mouse(kMsgMouseMove, {0, 6}); // the drag is over
        EXPECT_EQ(Highlight(0), word) << column;
        Click({20, 0});
    }
}

TEST_F(ViewTest, DoubleClickDragTakesWholeWords) {
    Open("one two three\r\nfour five");
    DoubleClick({0, 5});
    const struct {
        ScreenCell cell;
        const char* rows[2];
        int caret;
    } kRows[] = {
        {{0, 6}, {"....xxx", ""}, 7},           {{0, 9}, {"....xxxxxxxxx", ""}, 13},
        {{0, 1}, {"xxxxxxx", ""}, 0},           {{1, 6}, {"....xxxxxxxxx", "xxxxxxxxx"}, 9},
        {{1, 0}, {"....xxxxxxxxx", "xxxx"}, 4}, {{0, 4}, {"....xxx", ""}, 7}};
    for (const auto& row : kRows) {
        Mouse(kMsgMouseMove, row.cell);
        SCOPED_TRACE(testing::PrintToString(row.cell));
        EXPECT_EQ(Highlight(0), row.rows[0]);
        EXPECT_EQ(Highlight(1), row.rows[1]);
        EXPECT_EQ(CaretOf(*Editor().m_Inspector).m_Column, row.caret);
        ExpectTruePicture();
    }
}

TEST_F(ViewTest, DragPastTheWindowScrollsWhileTheMouseStandsStill) {
    std::string text;
    for (int i = 0; i < 60; ++i)
        text += "row\r\n";
    Open(text, {20, 10});
    Press({0, 0});
    Mouse(kMsgMouseMove, {12, 1});
    EXPECT_EQ(TopRow(), 3);
    EXPECT_EQ(m_Desk.m_WaitedMilliseconds, 50);
    m_Desk.Pump(1);
    EXPECT_EQ(TopRow(), 6);
    m_Desk.m_Pointer.x += 8; // a movement of its own goes on with the drag
    m_Desk.Pump();
    EXPECT_EQ(TopRow(), 9);
    EXPECT_EQ(m_Desk.m_WaitedMilliseconds, 100);
    Mouse(kMsgMouseMove, {12, 1});
    m_Desk.Pump();
    EXPECT_EQ(TopRow(), 51);
    ExpectTruePicture();
    Mouse(kMsgMouseMove, {-1, 1});
    m_Desk.Pump();
    EXPECT_EQ(TopRow(), 0);
    Hold(kKeyLeftButton, false);
    Mouse(kMsgMouseMove, {11, 0});
    m_Desk.Pump();
    EXPECT_EQ(TopRow(), 2);
    ExpectTruePicture();
}

TEST_F(ViewTest, PressInsideASelectionDragsItsText) {
    Open("first\tline\r\nsecond");
    m_Desk.m_DropEffect = DropEffect::copy;
    Drag({0, 2}, {1, 3});
    Press({0, 4});
    EXPECT_EQ(m_Desk.m_Dragged, (std::vector<AString>{u"rst\tline\r\nsec"}));
    EXPECT_EQ(Highlight(1), "xxx"); // stays, and the text too
    m_Desk.m_DropEffect = DropEffect::none;
    Press({0, 4}); // let go where it began
    EXPECT_EQ(Highlight(1), "");
    EXPECT_EQ(Caret(), (ScreenCell{0, 4}));
    EXPECT_FALSE(View().IsCaptured());
    EXPECT_EQ(Editor().Text(), u"first\tline\nsecond");
}

TEST_F(ViewTest, ADragWithoutMemoryEndsQuietly) {
    BreakingDesk breaking(m_Desk);
    breaking.m_Broken = kBreakDragMemory;
    Open("first\tline\r\nsecond");
    Drag({0, 2}, {1, 3});
    SetBackend(&breaking);
    Press({0, 4});
    SetBackend(&m_Desk);
    EXPECT_EQ(breaking.m_Refusals, 1);
    EXPECT_EQ(Highlight(1), "xxx");
    EXPECT_FALSE(View().IsCaptured());
    ExpectTruePicture();
}

TEST_F(ViewTest, PointerIsAnArrowOverASelection) {
    Open("first line\r\n\r\nab\r\nfourth");
    constexpr int kColumns[] = {1, 2, 3, 70};
    constexpr const char* kInside[][5] = {{"0111", "1111", "1111", "1100", "0000"},
                                          {"1111", "1111", "1111", "1111", "0000"}};
    for (const bool block : {false, true})
        for (int row = 0; row < 5; ++row)
            for (int i = 0; i < 4; ++i) {
                Click({20, 79});
                Drag({0, 2}, {3, 3}, block);
                m_Desk.m_Cursors.clear();
                Mouse(kMsgMouseMove, {row, kColumns[i]});
                const bool inside = View().Send(kMsgSetCursor) != 0;
                EXPECT_EQ(inside, kInside[block][row][i] == '1') << block << row << kColumns[i];
                Mouse(kMsgMouseMove, {20, 0});
                EXPECT_EQ(m_Desk.m_Cursors.size(), inside ? 2u : 0u); // an arrow, an I-beam
            }
}

TEST_F(ViewTest, TitleShowsTheNamesWhileThePointerIsOnIt) {
    m_Desk.m_TitleHeight = 20;
    Open("text");
    const AString title = Editor().Title();
    Mouse(kMsgNcMouseMove, {3, -1}); // left of the window
    EXPECT_EQ(Editor().Title(), title);
    Mouse(kMsgNcMouseMove, {-1, 3}); // only the first one counts
    EXPECT_EQ(Editor().Title(), title);
    Mouse(kMsgMouseMove, {1, 1});
    Mouse(kMsgNcMouseMove, {-1, 3});
    EXPECT_NE(Editor().Title(), title);
    Mouse(kMsgMouseMove, {1, 1});
    EXPECT_EQ(Editor().Title(), title);
}

TEST_F(ViewTest, ContextMenuGivesCommands) {
    Open("ab\r\ncd");
    m_Desk.m_MenuAnswers = {57634, 57642}; // copy, which is disabled, and select all
    View().Send(kMsgContextMenu, 0, MakePointValue(5, 5));
    EXPECT_EQ(m_Desk.m_Clipboard, std::nullopt);
    View().Send(kMsgContextMenu, 0, MakePointValue(5, 5));
    EXPECT_EQ(Highlight(1), "xx");
}

TEST_F(ViewTest, EditsElsewhereKeepCaretAndSelectionInsideTheText) {
    Open("first\r\nsecond\r\nthird");
    IEditorDriver& driver = *Editor().m_Driver;
    Drag({0, 3}, {2, 5});
    driver.DeleteLine(2, true, true);
    driver.DelRange(1, 2, 6, true, true);
    driver.NotifyEdited(1);
    EXPECT_EQ(CaretOf(*Editor().m_Inspector), (TextPosition{1, 2}));
    EXPECT_EQ(Highlight(1), "xx");
    ExpectTruePicture();
    Key(kKeyDelete);
    EXPECT_EQ(Editor().Text(), u"fir");
    ExpectTruePicture();
}

} // namespace
