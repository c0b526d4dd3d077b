/// Clicks, drags, words and the pointer's shape.
#include "view_fixture.h"

namespace {

TextPosition CaretOf(IEditorInspector& inspector) {
    return inspector.GetCaret()->m_Caret;
}

TEST_F(ViewTest, ClickPutsTheCaretToTheNearestPlace) {
    Open("ab\tcd\r\n\r\nlast line"); // the tab is two columns wide
    const struct {
        ScreenCell cell;
        CPoint pixels;
        TextPosition caret;
    } kRows[] = {
        {{0, 1}, {4, 15}, {0, 1}}, // the middle of a character belongs to its left half
        {{0, 1}, {5, 15}, {0, 2}},  {{0, 3}, {0, 0}, {0, 2}}, // inside the tab
        {{0, 2}, {7, 0}, {0, 2}},   {{0, 3}, {5, 0}, {0, 4}},   {{0, 40}, {0, 0}, {0, 6}},
        {{1, 5}, {0, 0}, {1, 0}},   {{20, 3}, {0, 0}, {2, 3}}, // below the text
        {{20, 79}, {0, 0}, {2, 9}}, {{-3, -3}, {0, 0}, {0, 0}},
    };
    for (const auto& row : kRows) {
        Mouse(kMsgLButtonDown, row.cell, row.pixels);
        Mouse(kMsgLButtonUp, row.cell, row.pixels);
        EXPECT_EQ(CaretOf(*Editor().m_Inspector), row.caret)
            << testing::PrintToString(row.cell) << row.pixels.x;
        EXPECT_FALSE(Editor().m_Inspector->GetSelection()->m_Selected);
    }
}

TEST_F(ViewTest, DragHighlightsAStreamOrABlock) {
    Open("first line\r\n\r\nab\r\nfourth");
    const struct {
        ScreenCell from, to;
        bool alt;
        const char* rows[4];
    } kRows[] = {
        {{0, 2}, {0, 5}, false, {"..xxx", "", "", ""}},
        {{0, 2}, {3, 3}, false, {"..xxxxxxxx", "", "xx", "xxx"}},
        {{3, 3}, {0, 2}, false, {"..xxxxxxxx", "", "xx", "xxx"}},
        {{2, 1}, {9, 70}, false, {"", "", ".x", "xxxxxx"}},
        {{0, 2}, {3, 5}, true, {"..xxx", "..xxx", "..xxx", "..xxx"}},
        {{3, 5}, {0, 2}, true, {"..xxx", "..xxx", "..xxx", "..xxx"}},
        {{3, 2}, {0, 5}, true, {"..xxx", "..xxx", "..xxx", "..xxx"}},
        {{0, 2}, {2, 7}, true, {"", "", "", ""}}, // a line's end bounds the corner
        {{2, 2}, {0, 2}, false, {"..xxxxxxxx", "", "xx", ""}},
        {{1, 0}, {1, 9}, false, {"", "", "", ""}},
    };
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

TEST_F(ViewTest, HighlightFollowsADragAcrossItsAnchor) {
    Open("first line\r\n\r\nab\r\nfourth\r\nfifth");
    for (const bool alt : {false, true}) {
        Press({2, 1}, alt);
        for (const ScreenCell cell :
             {ScreenCell{3, 5}, ScreenCell{4, 0}, ScreenCell{0, 4}, ScreenCell{1, 0},
              ScreenCell{2, 2}, ScreenCell{0, 0}, ScreenCell{4, 5}, ScreenCell{2, 1}}) {
            SCOPED_TRACE(testing::PrintToString(cell));
            Mouse(kMsgMouseMove, cell);
            ExpectTruePicture();
        }
        Release({2, 1});
        EXPECT_FALSE(Editor().m_Inspector->GetSelection()->m_Selected);
    }
}

TEST_F(ViewTest, DoubleClickTakesAWord) {
    Open("a.b:=c1_(x),  end\r\n");
    const struct {
        ScreenCell cell;
        const char* highlight;
    } kRows[] = {
        {{0, 0}, "xxx"},
        {{0, 2}, "xxx"},
        {{0, 3}, "xxx"}, // just behind the word
        {{0, 4}, ""},
        {{0, 5}, ".....xxx"},
        {{0, 8}, ".....xxx"},
        {{0, 9}, ".........x"},
        {{0, 12}, ""},
        {{0, 13}, ""},
        {{0, 40}, "..............xxx"},
        {{1, 0}, ""},
    };
    for (const auto& row : kRows) {
        DoubleClick(row.cell);
        EXPECT_EQ(Highlight(0), row.highlight) << testing::PrintToString(row.cell);
        Mouse(kMsgLButtonUp, row.cell);
        EXPECT_FALSE(View().IsCaptured());
        EXPECT_EQ(Highlight(0), row.highlight);
        ExpectTruePicture();
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
        {{1, 0}, {"....xxxxxxxxx", "xxxx"}, 4}, {{0, 4}, {"....xxx", ""}, 7},
    };
    for (const auto& row : kRows) {
        Mouse(kMsgMouseMove, row.cell);
        SCOPED_TRACE(testing::PrintToString(row.cell));
        EXPECT_EQ(Highlight(0), row.rows[0]);
        EXPECT_EQ(Highlight(1), row.rows[1]);
        EXPECT_EQ(CaretOf(*Editor().m_Inspector).m_Column, row.caret);
        ExpectTruePicture();
    }
}

TEST_F(ViewTest, WordDragEndsWithTheButton) {
    Open("one two");
    DoubleClick({0, 40}); // behind "two"
    Release({0, 40});
    Click({1, 0});
    DoubleClick({0, 3});
    Release({0, 3});
    Mouse(kMsgMouseMove, {0, 6});
    EXPECT_EQ(Highlight(0), "xxx");
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

TEST_F(ViewTest, PointerIsAnArrowOverASelection) {
    Open("first line\r\n\r\nab\r\nfourth");
    const struct {
        bool block;
        ScreenCell cell;
        bool inside;
    } kRows[] = {
        {false, {0, 1}, false}, {false, {0, 2}, true}, {false, {0, 70}, true},
        {false, {1, 70}, true}, {false, {3, 2}, true}, {false, {3, 3}, false},
        {false, {4, 0}, false}, {true, {0, 1}, true},  {true, {3, 30}, true},
        {true, {4, 2}, false},
    };
    for (const auto& row : kRows) {
        Click({20, 79});
        Drag({0, 2}, {3, 3}, row.block);
        m_Desk.m_Cursors.clear();
        Mouse(kMsgMouseMove, row.cell);
        EXPECT_EQ(View().Send(kMsgSetCursor) != 0, row.inside)
            << row.block << testing::PrintToString(row.cell);
        EXPECT_EQ(m_Desk.m_Cursors.size(), row.inside ? 1u : 0u);
        Mouse(kMsgMouseMove, {20, 0});
        EXPECT_TRUE(!row.inside || m_Desk.m_Cursors.back() == CursorShape::iBeam);
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

/// Actions of the mouse and the scroll bars, and edits as another view makes them.
TEST_F(ViewTest, PicturesStayTrueOverRandomScripts) {
    WriteConfig("install", 3);
    std::string text;
    for (int i = 0; i < 45; ++i)
        text += std::string(static_cast<std::size_t>(i * 7 % 40), 'a') +
                (i % 5 ? "\tb\t" : " /* ") + std::to_string(i) + (i % 9 ? "\r\n" : " */\r\n");
    Open(text + std::string(1100, 'z'), {30, 12});
    const auto cell = [](std::minstd_rand& random) {
        return ScreenCell{static_cast<int>(random() % 18) - 3, static_cast<int>(random() % 40) - 5};
    };
    const auto told = [](const char* what, ScreenCell at) {
        return what + testing::PrintToString(at);
    };
    const auto at = [this](std::minstd_rand& random) {
        const int row = static_cast<int>(
            random() % static_cast<unsigned>(Editor().m_Inspector->GetLineCount()));
        const auto length = Editor().m_Inspector->GetLineText(row).size();
        return ScreenCell{row, static_cast<int>(random() % (length + 1))};
    };
    const RandomAction kActions[] = {
        [&](auto& random) {
            const ScreenCell to = cell(random);
            Click(to);
            return told("click", to);
        },
        [&](auto& random) {
            const ScreenCell from = cell(random);
            Press(from, random() % 2 != 0);
            return told("press", from);
        },
        [&](auto& random) {
            const ScreenCell to = cell(random);
            Hold(kKeyLeftButton, random() % 2 != 0);
            Mouse(kMsgMouseMove, to);
            m_Desk.Pump(3);
            return told("move", to);
        },
        [&](auto& random) {
            const ScreenCell to = cell(random);
            Release(to);
            return told("release", to);
        },
        [&](auto& random) {
            const ScreenCell to = cell(random);
            DoubleClick(to);
            return told("double click", to);
        },
        [&](auto& random) {
            const int delta = static_cast<int>(random() % 960) - 480;
            Wheel(delta);
            return "wheel " + std::to_string(delta);
        },
        [&](auto& random) {
            const unsigned message = random() % 2 ? kMsgVScroll : kMsgHScroll;
            const auto code = static_cast<ScrollCode>(random() % (kScrollEnd + 1));
            const int position = static_cast<int>(random() % 800);
            Scroll(message, code, position);
            return "scroll " + std::to_string(message) + ' ' + std::to_string(code) + ' ' +
                   std::to_string(position);
        },
        [&](auto& random) {
            const CSize size{static_cast<int>(random() % 300), static_cast<int>(random() % 250)};
            View().Resize(size);
            return "resize " + std::to_string(size.cx) + ' ' + std::to_string(size.cy);
        },
        [&](auto& random) {
            View().Send(random() % 2 ? kMsgKillFocus : kMsgSetFocus);
            return std::string("focus");
        },
        [&](auto& random) {
            const ScreenCell to = at(random);
            constexpr const char* kTexts[] = {"/*", "*/", "word", "\t", "  "};
            Editor().m_Driver->InsertString(to.m_Row, to.m_Column, kTexts[random() % 5], true,
                                            true);
            Editor().m_Driver->NotifyEdited(to.m_Row);
            return told("insert", to);
        },
        [&](auto& random) {
            const ScreenCell to = at(random);
            Editor().m_Driver->SplitLine(to.m_Row, to.m_Column, true, 0, true);
            Editor().m_Driver->NotifyEdited(to.m_Row);
            return told("split", to);
        },
        [&](auto& random) {
            const ScreenCell to = at(random);
            Editor().m_Driver->CatLine(to.m_Row, true, true);
            Editor().m_Driver->DelChar(to.m_Row, to.m_Column, true);
            Editor().m_Driver->NotifyEdited(to.m_Row);
            return told("join", to);
        },
        [&](auto&) {
            Editor().m_Driver->RunCommand(42005);
            return std::string("bookmark");
        },
    };
    for (unsigned seed = 1; seed <= 20; ++seed)
        RunRandomly(seed, 150, kActions);
}

} // namespace
