/// Find, replace and go-to: dialogs worked by scripts, the F3 keys, the find box.
#include "netlist_factory.h"
#include "view_script.h"

namespace {

constexpr unsigned kGoTo = 42002;
constexpr unsigned kFindCommand = 57636;
constexpr unsigned kReplaceCommand = 57641;
constexpr unsigned kMatchCase = 9004, kUp = 9005, kDown = 9006, kFindWhat = 9007;
constexpr unsigned kReplaceWith = 9008, kReplaceOne = 9010, kReplaceAllOfThem = 9011;

/// F3 with modifiers, as the keys give it.
constexpr unsigned kSearchDown = 42008, kSearchUp = 42010;
constexpr unsigned kSearchDownCase = 42011, kSearchUpCase = 42012;

class ViewSearch : public ScriptTest {
protected:
    ViewSearch() { WriteConfig("install", 3); }

    CComboBox& Box() { return static_cast<CNetlistFactory&>(Factory()).GetFindCombo(); }
    void Run(unsigned command) { EXPECT_TRUE(Editor().m_Driver->RunCommand(command)); }

    /// Opens a dialog, fills it in and presses one of its buttons that often.
    struct Search {
        const char16_t* m_What;
        bool m_Case = false;
        bool m_Up = false;
        const char16_t* m_With = nullptr; ///< null: the Find dialog
        unsigned m_Button = kIdOk;
        int m_Times = 1;
    };
    void Do(const Search& search) {
        m_Desk.m_DialogScripts.push_back([search](HeadlessDialog& shown) {
            shown.Type(kFindWhat, search.m_What);
            if (search.m_With)
                shown.Type(kReplaceWith, search.m_With);
            if (search.m_Case)
                shown.Click(kMatchCase);
            EXPECT_TRUE(shown.IsChecked(kDown) && !shown.IsChecked(kUp));
            shown.Click(search.m_Up ? kUp : kDown);
            for (int time = 0; time < search.m_Times; ++time)
                shown.Click(search.m_Button);
            EXPECT_FALSE(shown.GetResult().has_value()); // only Cancel ends it
        });
        Run(search.m_With ? kReplaceCommand : kFindCommand);
        ExpectTruePicture();
    }
    /// The texts that the user was shown since the last call.
    std::string Shown() {
        std::string all;
        for (const auto& message : m_Desk.m_Messages)
            all += (all.empty() ? "" : "|") + message.m_Text.ToCString();
        m_Desk.m_Messages.clear();
        return all;
    }
};

TEST_F(ViewSearch, FindGoesToTheNextMatchRoundTheText) {
    const struct {
        const char* m_Start;
        Search m_Search;
        const char* m_End;
        const char* m_Shown = "";
    } kRows[] = {
        {"|ab cd", {u"cd"}, "ab [cd|"},
        {"ab |cd", {u"cd"}, "ab [cd|"},
        {"ab c|d cd", {u"cd"}, "ab cd [cd|"},
        {"ab c|d", {u"cd"}, "ab [cd|"}, // the caret's row at last
        {"cd\na|b\ncd", {u"cd"}, "cd\nab\n[cd|"},
        {"cd\na|b", {u"cd"}, "[cd|\nab"}, // round the end
        {"cd cd\na|b", {u"cd", false, true}, "cd [cd|\nab"},
        {"cd cd|\nab", {u"cd", false, true}, "cd [cd|\nab"},
        {"cd c|d\nab", {u"cd", false, true}, "[cd| cd\nab"},
        {"ab|\ncd cd", {u"cd", false, true}, "ab\ncd [cd|"},
        {"c|d", {u"cd", false, true}, "[cd|"},
        {"|AB", {u"ab"}, "[AB|"},
        {"|ab", {u"AB", true}, "|ab", "Cannot find string:\"AB\""},
        {"|ab", {u"xX"}, "|ab", "Cannot find string:\"xx\""},
        {"|ab", {u"abc"}, "|ab", "Cannot find string:\"abc\""},
        {"|ab\ncd", {u"bc"}, "|ab\ncd", "Cannot find string:\"bc\""},
        {"|ab", {u""}, "|ab", "Cannot find string:\"\""},
        {"|a\tb", {u"a   b"}, "[a>--b|"}, // a tab is blanks
        {"|a\tb", {u"\t"}, "|a>--b", "Cannot find string:\"\t\""},
        {"|\xc4\x8a", {u"\u00e4\u0161"}, "[\xc4\x8a|"},
        {"|?", {u"\u0416"}, "|?", "Cannot find string:\"?\""},
        {"|a.b*", {u".B*"}, "a[.b*|"},
    };
    for (const auto& row : kRows) {
        Start(row.m_Start);
        Box().SetWindowText(u"other");
        Do(row.m_Search);
        // A match found downward has the caret at its start; the selection is from start to end.
        std::string end = row.m_End;
        if (const std::size_t at = end.find('['); at != end.npos && !row.m_Search.m_Up) {
            std::erase(end, '|');
            end.insert(at + 1, "|");
        }
        EXPECT_EQ(State(), end) << row.m_Start;
        EXPECT_EQ(Shown(), row.m_Shown) << row.m_Start;
        EXPECT_FALSE(Editor().m_Inspector->IsModified());
        EXPECT_EQ(Box().GetWindowText(), row.m_Search.m_What);
    }
}

TEST_F(ViewSearch, F3StepsFromMatchToMatch) {
    const struct {
        const char* m_Start;
        const char16_t* m_What;
        std::vector<unsigned> m_Commands;
        std::vector<int> m_Columns; ///< where the match starts after each
    } kRows[] = {
        {"|aaaa", u"aa", {kSearchDown, kSearchDown, kSearchDown, kSearchDown}, {0, 1, 2, 0}},
        {"aaaa|", u"aa", {kSearchUp, kSearchUp, kSearchUp, kSearchUp}, {2, 1, 0, 2}},
        {"|ab Ab ab", u"Ab", {kSearchDown, kSearchDown, kSearchDownCase}, {0, 3, 3}},
        {"|ab Ab ab", u"ab", {kSearchUpCase, kSearchUpCase, kSearchUp}, {6, 0, 6}},
        {"|ab ab ab", u"ab", {kSearchDown, kSearchDown, kSearchUp}, {0, 3, 0}},
        {"|ab ab ab", u"ab", {kSearchDown, kSearchUp, kSearchUp, kSearchDown}, {0, 6, 3, 6}},
    };
    for (const auto& row : kRows) {
        Start(row.m_Start);
        Box().SetWindowText(row.m_What);
        for (std::size_t i = 0; i < row.m_Commands.size(); ++i) {
            Run(row.m_Commands[i]);
            const SelectionState selection = *Editor().m_Inspector->GetSelection();
            EXPECT_TRUE(selection.m_Selected);
            EXPECT_EQ(selection.m_Anchor.m_Column, row.m_Columns[i]) << row.m_Start << i;
            ExpectTruePicture();
        }
    }
}

TEST_F(ViewSearch, FindNextStepsByTheLastDirection) {
    Start("|ab ab ab");
    Do({u"ab", false, false, nullptr, kIdOk, 2});
    EXPECT_EQ(State(), "ab [|ab ab");
    Do({u"ab", false, true}); // one column on from the match's start, then up
    EXPECT_EQ(State(), "[ab| ab ab");
    Play("42011"); // the last direction was up: the keys step by their own
    EXPECT_EQ(State(), "ab [|ab ab");
}

TEST_F(ViewSearch, ASelectionOfTheUserIsCancelledByTheKeysAndOfferedByTheDialogs) {
    const struct {
        const char* m_Start;
        const char* m_Script;
        const char16_t* m_Offered;
    } kRows[] = {
        {"|ab cd", "S-Right*2", u"ab"},
        {"|ab\ncd", "S-Down", u"box"}, // more than one row
        {"|ab", "", u"box"},
        {"|a\tb", "S-End", u"a   b"}, // as it can be found
        {"|abc\nabc", "Right S-A-Right*2", u"bc"},
    };
    for (const auto& row : kRows) {
        for (const unsigned command : {kFindCommand, kReplaceCommand}) {
            Start(row.m_Start);
            Box().SetWindowText(u"box");
            Play(row.m_Script);
            m_Desk.m_DialogScripts.push_back([&](HeadlessDialog& shown) {
                EXPECT_EQ(shown.GetTitle(), command == kFindCommand ? u"Find" : u"Replace");
                EXPECT_EQ(shown.GetText(kFindWhat), row.m_Offered);
                EXPECT_FALSE(shown.IsChecked(kMatchCase));
            });
            Run(command);
        }
        EXPECT_EQ(Box().GetWindowText(), u"box"); // opening changes nothing
    }
    Start("ab|cd ab");
    Box().SetWindowText(u"ab");
    Play("S-Right " + std::to_string(kSearchDown));
    EXPECT_EQ(State(), "abcd [|ab");
}

TEST_F(ViewSearch, AMatchThatHasChangedStillMovesTheCaret) {
    Start("|ab\nab");
    Box().SetWindowText(u"ab");
    Run(kSearchDown);
    Editor().m_Driver->DelRange(0, 0, 2, false, false);
    Editor().m_Driver->NotifyEdited(0);
    Run(kSearchDown);
    EXPECT_EQ(State(), "\n[|ab");
    Editor().m_Driver->DelRange(1, 0, 2, false, false);
    Editor().m_Driver->NotifyEdited(1);
    Run(kSearchUp);
    EXPECT_EQ(State(), "\n|");
    EXPECT_EQ(Shown(), "Cannot find string:\"ab\"");
    ExpectTruePicture();
}

TEST_F(ViewSearch, Replace) {
    const struct {
        const char* m_Start;
        Search m_Search;
        const char* m_Bytes;
        const char* m_Journal;
        const char* m_Shown = "";
    } kRows[] = {
        {"|ab ab", {u"AB", false, false, u"x", kReplaceOne, 1}, "ab ab", ""}, // only finds
        {"|ab ab",
         {u"ab", false, false, u"x", kReplaceOne, 2},
         "x ab",
         "5 0,0-2* 0 ab ab / 4 0,0-1* 0 x"},
        {"ab ab|",
         {u"ab", false, true, u"xyz", kReplaceOne, 2},
         "ab xyz",
         "5 0,3-5* 0 ab ab / 4 0,3-6* 0 xyz"},
        {"|ab",
         {u"ab", false, false, u"", kReplaceOne, 2},
         "",
         "5 0,0-2* 0 ab",
         "Cannot find string:\"ab\""},
        {"|ab c",
         {u"ab", false, false, u"1\n\t2", kReplaceOne, 2},
         "1\r\n\t2 c",
         "5 0,0-2* 0 ab c / 4 0,0-1* 13 1 / 4 1,0-5 0     2",
         "Cannot find string:\"ab\""},
        {"|ab",
         {u"ab", false, false, u"\u0416", kReplaceOne, 2},
         "?",
         "5 0,0-2* 0 ab / 4 0,0-1* 0 ?",
         "Cannot find string:\"ab\""},
        {"|a b a",
         {u"A", false, false, u"xx", kReplaceAllOfThem},
         "xx b xx",
         "5 0,0-1* 0 a b a / 4 0,0-2* 0 xx / 5 0,5-6* 0 xx b a / 4 0,5-7* 0 xx"},
        {"a\n|a\nA",
         {u"a", true, false, u"", kReplaceAllOfThem},
         "\r\n\r\nA",
         "5 0,0-1* 0 a / 5 1,0-1* 0 a"},
        {"a|a\na",
         {u"a", false, false, u"aa", kReplaceAllOfThem},
         "aaaa\r\naa",
         "5 0,0-1* 0 aa / 4 0,0-2* 0 aa / 5 0,2-3* 0 aaa / 4 0,2-4* 0 aa / 5 1,0-1* 0 a / 4 1,0-2* "
         "0 aa"},
        {"|aab",
         {u"ab", false, false, u"b", kReplaceAllOfThem},
         "ab",
         "5 0,1-3* 0 aab / 4 0,1-2* 0 b"},
        {"|a\na\na",
         {u"a", false, true, u"x", kReplaceAllOfThem},
         "a\r\na\r\nx",
         "5 2,0-1* 0 a / 4 2,0-1* 0 x"},
        {"|a a",
         {u"a", false, true, u"x", kReplaceAllOfThem},
         "a x",
         "5 0,2-3* 0 a a / 4 0,2-3* 0 x"},
        {"b|b",
         {u"a", false, false, u"x", kReplaceAllOfThem},
         "bb",
         "",
         "Cannot find string:\"a\""},
        {"|a\tb\tc",
         {u"  b", false, false, u"x", kReplaceAllOfThem},
         "a x\tc",
         "5 0,2-5* 0 a   b   c / 4 0,2-3* 0 x"},
        {"|ab",
         {u"a", false, false, u"1\r2", kReplaceAllOfThem},
         "1\r\n2b",
         "5 0,0-1* 0 ab / 4 0,0-1* 13 1 / 4 1,0-1 0 2"},
    };
    for (const auto& row : kRows) {
        Start(row.m_Start);
        Box().SetWindowText(u"");
        Do(row.m_Search);
        EXPECT_EQ(Bytes(), row.m_Bytes) << row.m_Start;
        EXPECT_EQ(Journal(), row.m_Journal) << row.m_Start;
        EXPECT_EQ(Shown(), row.m_Shown) << row.m_Start;
        EXPECT_EQ(Editor().m_Inspector->IsModified(), *row.m_Journal != 0);
    }
    EXPECT_EQ(Editor().m_Inspector->GetReplacedInputs(), 0);
}

TEST_F(ViewSearch, ReplaceTakesTheMatchAndFindsTheNext) {
    Start("|ab ab ab");
    Do({u"ab", false, false, u"x", kReplaceOne, 2});
    EXPECT_EQ(State(), "x [|ab ab");
    Play("Right S-Right"); // the user's own selection isn't replaced
    Do({u"ab", false, false, u"x", kReplaceOne});
    EXPECT_EQ(State(), "x ab [|ab");
    Do({u"ab", false, false, u"yy", kReplaceAllOfThem});
    EXPECT_EQ(State(), "x yy yy|");
    Play("undo undo undo undo");
    EXPECT_EQ(Bytes(), "x ab ab");
}

TEST_F(ViewSearch, AFailedReplaceAllLeavesCaretAndText) {
    Start("ab\nc|d");
    Do({u"x", false, false, u"y", kReplaceAllOfThem});
    EXPECT_EQ(State(), "ab\nc|d");
    EXPECT_EQ(m_Desktop.GetPrompt()->GetShown(),
              (std::vector<HostPrompt::Shown>{{u"Cannot find string:\"x\"", 16}}));
}

TEST_F(ViewSearch, ReplaceAllRecoloursAndIsUndone) {
    SetOption(u"NumberOfUndos", 1000);
    std::string text = "|";
    for (int row = 0; row < 100; ++row)
        text += row % 7 == 3 ? "/* ab\n" : "ab */ ab\tx\n";
    Start(text, {12, 6});
    const std::string before = Bytes();
    Do({u"ab", false, false, u"/* abab", kReplaceAllOfThem});
    EXPECT_EQ(Editor().m_Inspector->GetCaret()->m_Caret, (TextPosition{99, 18}));
    while (Editor().m_Driver->UndoEdit()) {
    }
    std::string after = Bytes(); // a record of a range keeps no tabs
    EXPECT_EQ(after.substr(0, 6), before.substr(0, 6));
    ExpectTruePicture();
}

TEST_F(ViewSearch, TheFindBoxKeepsThirtyTextsTheNewestFirst) {
    Start("|ab");
    const auto history = [this] {
        std::string all;
        for (int index = 0; index < Box().GetCount(); ++index)
            all += Box().GetItemText(index).ToCString() + ' ';
        return all;
    };
    const struct {
        const char16_t* m_What;
        const char* m_History;
    } kRows[] = {
        {u"a", "a "},     {u"b", "b a "},  {u"b", "b a "},     {u"a", "a b "},
        {u"A", "A a b "}, {u"", "A a b "}, {u"c", "c A a b "}, {u"a", "a c A b "},
    };
    for (const auto& row : kRows) {
        Do({row.m_What});
        EXPECT_EQ(history(), row.m_History);
        EXPECT_EQ(Box().GetWindowText(), row.m_What);
    }
    Box().SetWindowText(u"typed"); // what stands in the box is no new text
    Do({u"typed"});
    EXPECT_EQ(history(), "a c A b ");
    for (int i = 0; i < 40; ++i)
        Do({AString(std::to_string(i)).c_str()});
    EXPECT_EQ(Box().GetCount(), 30);
    EXPECT_EQ(Box().GetItemText(0), u"39");
    EXPECT_EQ(Box().GetItemText(29), u"10");
    Do({u"10"});
    EXPECT_EQ(Box().GetCount(), 30);
    EXPECT_EQ(Box().GetItemText(0), u"10");
    EXPECT_EQ(Box().GetItemText(29), u"11");
}

TEST_F(ViewSearch, GoTo) {
    const struct {
        const char16_t* m_Line;
        unsigned m_Button;
        const char* m_State;
        int m_Messages;
    } kRows[] = {
        {u"3", kIdOk, "ab\ncd\n|ef", 0},     {u" 1 ", kIdOk, "|ab\ncd\nef", 0},
        {u"0", kIdOk, "ab\nc|d\nef", 0},     {u"4", kIdOk, "ab\nc|d\nef", 0},
        {u"-1", kIdOk, "ab\nc|d\nef", 0},    {u"99999999999999", kIdOk, "ab\nc|d\nef", 0},
        {u"3", kIdCancel, "ab\nc|d\nef", 0}, {u"x", kIdOk, "ab\nc|d\nef", 1},
        {u"", kIdOk, "ab\nc|d\nef", 1},
    };
    for (const auto& row : kRows) {
        Start("ab\nc|d\nef", {20, 2});
        m_Desk.m_Messages.clear();
        m_Desk.m_DialogScripts.push_back([&row](HeadlessDialog& shown) {
            EXPECT_EQ(shown.GetTitle(), u"GoTo Line");
            EXPECT_EQ(shown.GetText(9000), u"(1...3)");
            EXPECT_EQ(shown.GetText(9001), u"1");
            shown.Type(9001, row.m_Line);
            shown.Click(row.m_Button);
        });
        Play("C-G");
        EXPECT_EQ(State(), row.m_State);
        EXPECT_EQ(static_cast<int>(m_Desk.m_Messages.size()), row.m_Messages);
        ExpectTruePicture();
    }
}

TEST_F(ViewSearch, GoToLeavesTheSelectionAndCentresTheLine) {
    std::string text = "|ab";
    for (int row = 0; row < 50; ++row)
        text += "\nab";
    Start(text, {20, 10});
    Play("S-Right");
    m_Desk.m_DialogScripts.push_back([](HeadlessDialog& shown) {
        shown.Type(9001, u"31");
        shown.Click(kIdOk);
    });
    Play("C-G");
    EXPECT_EQ(TopRow(), 25);
    EXPECT_EQ(Caret(), (ScreenCell{5, 0}));
    const SelectionState selection = *Editor().m_Inspector->GetSelection();
    EXPECT_TRUE(selection.m_Selected);
    EXPECT_EQ(selection.m_End, (TextPosition{0, 1}));
    ExpectTruePicture();
}

} // namespace
