/// Undo and redo of the journal through a view.
#include <array>

#include "view_script.h"

namespace {

class ViewReplay : public ScriptTest {};

TEST_F(ViewReplay, AnActionIsUndoneWhole) {
    SetOption(u"NumberOfUndos", 4);
    // undo and redo: the records there are then
    const std::tuple<const char*, const char*, int, int> kRows[] = {
        {"'ab'", "ab|", 2, 0},        {"undo", "a|", 1, 1},   {"'c' redo", "ac|", 2, 0},
        {"undo*3", "|", 0, 2},        {"redo", "a|", 1, 1},   {"redo S-Left undo", "a|", 1, 1},
        {"'bcdef'", "abcdef|", 4, 0}, {"undo*6", "ab|", 0, 4}};
    Start("|");
    for (const auto& [script, state, undo, redo] : kRows) {
        Play(script);
        EXPECT_EQ(State(), state) << script;
        EXPECT_EQ(Editor().m_Inspector->GetUndoCount(), undo) << script;
        EXPECT_EQ(Editor().m_Inspector->GetRedoCount(), redo) << script;
        ExpectTruePicture();
    }
}

TEST_F(ViewReplay, NothingIsRecordedWithoutRoom) {
    SetOption(u"NumberOfUndos", 0);
    Start("a|b\nc\nd");
    Play("S-Down*2 Del 'x' undo redo");
    EXPECT_EQ(State(), "ax|");
    EXPECT_EQ(Journal(), "");
}

TEST_F(ViewReplay, AnEmptyJournalStillShowsTheCaret) {
    std::string text = "|a";
    for (int row = 0; row < 50; ++row)
        text += "\nb";
    Start(text, {80, 10});
    Play("S-Right");
    Wheel(-1200);
    EXPECT_GT(TopRow(), 0);
    EXPECT_FALSE(Editor().m_Driver->UndoEdit());
    EXPECT_EQ(TopRow(), 0);
    EXPECT_FALSE(Editor().m_Inspector->GetSelection()->m_Selected);
    ExpectTruePicture();
}

TEST_F(ViewReplay, RecordsOfAPlaceThatWentJoinNoLines) {
    Start("a|\tb\nc");
    Play("S-Right Del undo"); // the tab is blanks now
    EXPECT_EQ(State(), "a|   b\nc");
    Play("End 'x' Left*2 'yz'");
    Editor().m_Driver->DelRange(0, 1, 5, false, false); // behind the journal's back
    for (const char* script : {"undo*3", "redo*4"}) {
        Play(script);
        EXPECT_EQ(Editor().m_Inspector->GetLineCount(), 2);
    }
    ExpectTruePicture();
}

/// What a user may do, in the words of scripts.
const char* const kWords[] = {
    "'ab'",   "'_('",  "'x'",      "Enter",       "Back",      "Back*3", "Del",     "Left",
    "Right",  "Up",    "Down",     "Home",        "End",       "C-Left", "C-Right", "C-Home",
    "C-End",  "PgUp",  "PgDn",     "S-Left*2",    "S-Right*3", "S-Down", "S-Up*2",  "S-A-Down*2",
    "S-A-Up", "S-End", "S-C-Left", "S-A-Right*2", "Ins",       "Esc",    "C-C",     "C-X",
    "C-V",    "C-V",   "C-A",      "C-F2",        "F2",        "S-F2",   "undo",    "redo"};

class RandomUser : public ScriptTest, public testing::WithParamInterface<bool> {
protected:
    std::string PlayKeys(std::minstd_rand& random) {
        const std::string word =
            GetParam() && random() % 12 == 0 ? "'~'" : kWords[random() % std::size(kWords)];
        Play(word);
        return word;
    }

    /// Mouse, scroll bars and window, and edits as another view makes them.
    std::string PlayOther(std::minstd_rand& random) {
        const auto below = [&random](std::size_t n) { return static_cast<int>(random() % n); };
        IEditorInspector& look = *Editor().m_Inspector;
        IEditorDriver& driver = *Editor().m_Driver;
        const ScreenCell cell{below(18) - 3, below(40) - 5};
        const int row = below(static_cast<std::size_t>(look.GetLineCount()));
        const int column = below(look.GetLineText(row).size() + 1);
        const int value = below(960);
        const char* const text =
            std::array{"/*", "*/", "word", "  ", "\t"}[random() % (4u + GetParam())];
        const std::function<void()> actions[] = {
            [&] { Click(cell); },
            [&] { Press(cell, value % 2 != 0); },
            [&] { Hold(kKeyLeftButton, value % 2 != 0); },
            [&] { Mouse(kMsgMouseMove, cell); },
            [&] { m_Desk.Pump(3); },
            [&] { Release(cell); },
            [&] { DoubleClick(cell); },
            [&] { Wheel(value - 480); },
            [&] { Scroll(kMsgVScroll, static_cast<ScrollCode>(value % 9), value); },
            [&] { Scroll(kMsgHScroll, static_cast<ScrollCode>(value % 9), value); },
            [&] {
                View().Resize({value % 300, value / 4});
            },
            [&] { View().Send(value % 2 ? kMsgKillFocus : kMsgSetFocus); },
            [&] { driver.InsertString(row, column, text, true, true); },
            [&] { driver.SplitLine(row, column, true, 0, true); },
            [&] { driver.CatLine(row, true, true); },
            [&] { driver.DelChar(row, column, true); }};
        const auto which = random() % std::size(actions);
        actions[which]();
        if (which >= 12)
            driver.NotifyEdited(row);
        return testing::PrintToString(
            std::tuple(which, cell.m_Row, cell.m_Column, row, column, value));
    }
};
INSTANTIATE_TEST_SUITE_P(Tabs, RandomUser, testing::Bool());

TEST_P(RandomUser, LeavesATruePictureAndGoesBack) {
    const bool tabs = GetParam();
    SetOption(u"NumberOfUndos", 1'000'000);
    SetOption(u"FillBlanksOnEnter", 1);
    WriteConfig("install", 3);
    std::string text = "|one (two)\n\n  three /* four\nfive */ six\n\n" + std::string(1100, 'z');
    for (int i = 0; i < 30; ++i)
        text += '\n' + std::string(static_cast<std::size_t>(i * 7 % 40), 'a') +
                (tabs ? "\tb\t" : " b ") + std::to_string(i) +
                (i % 5   ? ""
                 : i % 2 ? "/*"
                         : "*/");
    for (unsigned seed = 1; seed <= 30; ++seed) {
        m_Desk.m_Clipboard = tabs ? u"\tp/*\n\tq\t" : u"p/*\nqq */";
        Start(text, {seed % 2 ? 12 : 30, seed % 4 < 2 ? 6 : 12});
        const std::string first = Bytes();
        // Every third one with keys alone, so that they go on from each other.
        RunRandomly(seed, 150, [&](std::minstd_rand& random) {
            return seed % 3 == 0 || random() % 2 == 0 ? PlayKeys(random) : PlayOther(random);
        });
        if (tabs) // a record of a range keeps no tabs
            continue;
        RedoAll(); // what was undone last
        const std::string last = Bytes();
        for (int round = 0; round < 2; ++round) {
            UndoAll();
            EXPECT_EQ(Bytes(), first) << "seed " << seed;
            RedoAll();
            EXPECT_EQ(Bytes(), last) << "seed " << seed;
            ExpectTruePicture();
        }
    }
}

} // namespace
