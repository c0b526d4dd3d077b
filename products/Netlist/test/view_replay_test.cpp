/// Undo and redo of the journal through a view.
#include "view_script.h"

namespace {

class ViewReplay : public ScriptTest {};

TEST_F(ViewReplay, EveryRecordGoesBackAndForth) {
    const struct {
        const char* m_Start;
        const char* m_Script;
        const char* m_Undone; ///< null: as it was before the script
        const char* m_Redone; ///< null: as it was behind the script
    } kRows[] = {
        {"ab|c", "Del", "abc|", nullptr},
        {"ab|", "Back", nullptr, nullptr},
        {"ab|\ncd", "Del", "ab\n|cd", nullptr},
        {"ab\n|cd", "Back", nullptr, nullptr},
        {"a|b", "'x'", nullptr, nullptr},
        {"a|b", "Enter", nullptr, nullptr},
        {"|ab", "Enter", nullptr, nullptr},
        {"x\na|b", "Enter", nullptr, nullptr},
        {"x\n|ab", "Enter", "x|\nab", "x\n|\nab"},
        {"a|bc", "Ins 'x'", "ab|c", nullptr},
        {"a|\tb", "Ins 'x'", "a |b", nullptr},
        {"ab|", "Ins 'x'", nullptr, nullptr},
        {"a|\tb", "Del", "a>--|b", nullptr},
        {"a|bc", "'~'", nullptr, nullptr},
        {"a|bc", "Ins '~'", "ab|c", nullptr},
        {"a|bcd", "S-Right*2 Del", nullptr, nullptr},
        {"a|\tb", "S-Right Del", "a|   b", nullptr},
        {"a|b\ncd\nef", "S-Down*2 Del", nullptr, "a|f"},
        {"ab|\ncd\nef", "S-Down*2 S-Home Del", "ab\n|cd\nef", "ab|ef"},
        {"|abcd\nef\nghij", "Right S-A-Down*2 S-A-Right*2 Del", "a|bcd\nef\nghij", "ad\ne\ng|j"},
        {"a|b", "C-V", nullptr, "ap\n|>---q\nb"},
        {"x\n|\ny", "C-V", nullptr, "x\np\n|>---q\n\ny"},
    };
    for (const auto& row : kRows) {
        m_Desk.m_Clipboard = u"p\n\tq\n";
        Start(row.m_Start);
        const std::string before = State();
        Play(row.m_Script);
        const std::string done = State();
        for (int round = 0; round < 2; ++round) {
            Play("undo");
            EXPECT_EQ(State(), row.m_Undone ? row.m_Undone : before) << row.m_Start << row.m_Script;
            EXPECT_EQ(Journal(), "");
            ExpectTruePicture();
            Play("redo");
            EXPECT_EQ(State(), row.m_Redone ? row.m_Redone : done) << row.m_Start << row.m_Script;
            EXPECT_EQ(RedoJournal(), "");
            ExpectTruePicture();
        }
    }
}

TEST_F(ViewReplay, AnActionIsUndoneWhole) {
    SetOption(u"NumberOfUndos", 4);
    const struct {
        const char* m_Script;
        const char* m_State;
        int m_Undo, m_Redo; ///< records there are then
    } kRows[] = {
        {"'ab'", "ab|", 2, 0},
        {"undo", "a|", 1, 1},
        {"'c'", "ac|", 2, 0},
        {"redo", "ac|", 2, 0},
        {"undo undo undo", "|", 0, 2},
        {"redo", "a|", 1, 1},
        {"redo S-Left undo", "a|", 1, 1},
        {"'bcdef'", "abcdef|", 4, 0},
        {"undo undo undo undo undo undo", "ab|", 0, 4},
    };
    Start("|");
    for (const auto& row : kRows) {
        Play(row.m_Script);
        EXPECT_EQ(State(), row.m_State) << row.m_Script;
        std::vector<JournalEntry> records;
        Editor().m_Inspector->GetUndoRecords(records);
        EXPECT_EQ(records.size(), static_cast<std::size_t>(row.m_Undo)) << row.m_Script;
        Editor().m_Inspector->GetRedoRecords(records);
        EXPECT_EQ(records.size(), static_cast<std::size_t>(row.m_Redo)) << row.m_Script;
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
    Play("undo undo undo");
    EXPECT_EQ(Editor().m_Inspector->GetLineCount(), 2);
    Play("redo redo redo redo");
    EXPECT_EQ(Editor().m_Inspector->GetLineCount(), 2);
    ExpectTruePicture();
}

/// What a user may do, in the words of scripts.
const char* const kWords[] = {
    "'ab'",   "'_('",  "'x'",      "Enter",       "Back",      "Back*3", "Del",     "Left",
    "Right",  "Up",    "Down",     "Home",        "End",       "C-Left", "C-Right", "C-Home",
    "C-End",  "PgUp",  "PgDn",     "S-Left*2",    "S-Right*3", "S-Down", "S-Up*2",  "S-A-Down*2",
    "S-A-Up", "S-End", "S-C-Left", "S-A-Right*2", "Ins",       "Esc",    "C-C",     "C-X",
    "C-V",    "C-V",   "C-A",      "C-F2",        "F2",        "S-F2",   "undo",    "redo"};

class RandomKeys : public ScriptTest, public testing::WithParamInterface<bool> {};
INSTANTIATE_TEST_SUITE_P(Tabs, RandomKeys, testing::Bool());

TEST_P(RandomKeys, LeaveATruePictureAndGoBack) {
    const bool tabs = GetParam();
    SetOption(u"NumberOfUndos", 1'000'000);
    SetOption(u"FillBlanksOnEnter", 1);
    WriteConfig("install", 3);
    for (unsigned seed = 1; seed <= 12; ++seed) {
        m_Desk.m_Clipboard = tabs ? u"\tp/*\n\tq\t" : u"p/*\nqq */";
        std::string text = "|one (two)\n\n  three /* four\nfive */ six\n\nseven\n";
        if (tabs)
            text += "\teight\tnine\n\n\t\tten\n";
        Start(text, {12, 6});
        const std::string first = Bytes();
        const RandomStep act = [&](std::minstd_rand& random) {
            std::string word = kWords[random() % std::size(kWords)];
            if (tabs && random() % 12 == 0)
                word = "'~'";
            Play(word);
            return word;
        };
        RunRandomly(seed, 150, act);
        if (tabs) // a record of a range keeps no tabs
            continue;
        const std::string last = Bytes();
        while (Editor().m_Driver->UndoEdit()) {
        }
        EXPECT_EQ(Bytes(), first) << "seed " << seed;
        while (Editor().m_Driver->RedoEdit()) {
        }
        ExpectTruePicture();
        while (Editor().m_Driver->UndoEdit()) {
        }
        EXPECT_EQ(Bytes(), first) << "seed " << seed;
    }
}

} // namespace
