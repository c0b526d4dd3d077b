/// Find, replace and go-to: dialogs worked by scripts, the F3 keys, the find box.
#include "view_script.h"

namespace {

class ViewSearch : public ScriptTest {
protected:
    ViewSearch() { WriteConfig("install", 3); }

    std::string History() {
        std::string all;
        for (int index = 0; index < FindBox().GetCount(); ++index)
            all += (index ? " " : "") + FindBox().GetItemText(index).ToCString();
        return all;
    }
};

TEST_F(ViewSearch, FindGoesToTheNextMatchRoundTheText) {
    static constexpr Case kCases[] = {
        {"ab |cd", "find:cd", "ab [|cd]"},
        {"ab c|d cd", "find:cd", "ab cd [|cd]"},
        {"ab c|d", "find:cd", "ab [|cd]"}, // the caret's row at last
        {"cd\na|b\ncd", "find:cd", "cd\nab\n[|cd]"},
        {"cd\na|b", "find:cd", "[|cd]\nab"}, // round the end
        {"cd cd\na|b", "find:cd:u", "cd [cd|\nab"},
        {"cd cd|\nab", "find:cd:u", "cd [cd|\nab"},
        {"cd c|d\nab", "find:cd:u", "[cd| cd\nab"},
        {"ab|\ncd cd", "find:cd:u", "ab\ncd [cd|"},
        {"c|d", "find:cd:u", "[cd|"},
        {"|AB", "find:ab", "[|AB]"},
        {"|ab", "find:AB:c", "|ab", "Cannot find string:\"AB\""},
        {"|ab", "find:xX", "|ab", "Cannot find string:\"xx\""},
        {"|ab", "find:abc", "|ab", "Cannot find string:\"abc\""},
        {"|ab\ncd", "find:bc", "|ab\ncd", "Cannot find string:\"bc\""},
        {"|ab", "find:", "|ab", "Cannot find string:\"\""},
        {"|a\tb", "find:a___b", "[|a>--b]"}, // a tab is blanks
        {"|a\tb", "find:~", "|a>--b", "Cannot find string:\"\t\""},
        {"|\xc4\x8a", "find:\xe4\x9a", "[|\xc4\x8a]"},
        {"|a.b*", "find:.B", "a[|.b]*"},
        // Find Next steps by the last direction, the keys by their own.
        {"|ab ab ab", "find:ab*2", "ab [|ab] ab"},
        {"|ab ab ab", "find:ab*2 find:ab:u", "[ab| ab ab"},
        {"|ab ab ab", "find:ab*2 find:ab:u A-F3", "ab [|ab] ab"},
        {"ab|cd ab", "find:ab C-Home S-Right F3", "abcd [|ab]"}, // a user's selection is cancelled
    };
    Check(kCases);
    Start("|?");
    FindBox().SetWindowText(u"\u0416");
    Play("F3");
    EXPECT_EQ(State(), "|?");
    EXPECT_EQ(m_Desktop.GetPrompt()->GetShown().back().m_Text, u"Cannot find string:\"\u0436\"");
    EXPECT_EQ(m_Desktop.GetPrompt()->GetShown().back().m_Style, 16);
}

TEST_F(ViewSearch, F3StepsFromMatchToMatch) {
    const struct {
        const char* m_Start;
        const char16_t* m_What;
        std::vector<std::pair<const char*, int>> m_Steps; ///< keys, and where the match starts then
    } kRows[] = {{"|aaaa", u"aa", {{"F3", 0}, {"F3", 1}, {"F3", 2}, {"F3", 0}}},
                 {"aaaa|", u"aa", {{"S-F3", 2}, {"S-F3", 1}, {"S-F3", 0}, {"S-F3", 2}}},
                 {"|ab Ab ab", u"Ab", {{"F3", 0}, {"F3", 3}, {"A-F3", 3}}},
                 {"|ab Ab ab", u"ab", {{"S-A-F3", 6}, {"S-A-F3", 0}, {"S-F3", 6}}},
                 {"|ab ab ab", u"ab", {{"F3", 0}, {"F3", 3}, {"S-F3", 0}}},
                 {"|ab ab ab", u"ab", {{"F3", 0}, {"S-F3", 6}, {"S-F3", 3}, {"F3", 6}}}};
    for (const auto& row : kRows) {
        Start(row.m_Start);
        FindBox().SetWindowText(row.m_What);
        for (const auto& [key, column] : row.m_Steps) {
            Play(key);
            const SelectionState selection = *Editor().m_Inspector->GetSelection();
            EXPECT_TRUE(selection.m_Selected);
            EXPECT_EQ(selection.m_Anchor.m_Column, column) << row.m_Start << key;
            ExpectTruePicture();
        }
    }
}

TEST_F(ViewSearch, DialogsOfferASelectionWithinARow) {
    const struct {
        const char* m_Start;
        const char* m_Script;
        const char16_t* m_Offered;
    } kRows[] = {{"|ab cd", "S-Right*2", u"ab"},
                 {"|ab\ncd", "S-Down", u"box"},
                 {"|ab", "", u"box"},
                 {"|a\tb", "S-End", u"a   b"}, // as it can be found
                 {"|abc\nabc", "Right S-A-Right*2", u"bc"}};
    for (const auto& row : kRows)
        for (const unsigned command : {57636u, 57641u}) {
            Start(row.m_Start);
            FindBox().SetWindowText(u"box");
            Play(row.m_Script);
            m_Desk.m_DialogScripts.push_back([&](HeadlessDialog& shown) {
                EXPECT_EQ(shown.GetTitle(), command == 57636 ? u"Find" : u"Replace");
                EXPECT_EQ(shown.GetText(9007), row.m_Offered);
                EXPECT_FALSE(shown.IsChecked(9004)); // case
            });
            Play(std::to_string(command));
            EXPECT_EQ(FindBox().GetWindowText(), u"box"); // opening changes nothing
        }
}

TEST_F(ViewSearch, AMatchThatHasChangedStillMovesTheCaret) {
    Start("|ab\nab");
    FindBox().SetWindowText(u"ab");
    // deleted: the row whose match goes
    const std::tuple<int, const char*, const char*> kRows[] = {{0, "F3", "\n[|ab]"},
                                                               {1, "S-F3", "\n|"}};
    Play("F3");
    for (const auto& [deleted, key, state] : kRows) {
        Editor().m_Driver->DelRange(deleted, 0, 2, false, false);
        Editor().m_Driver->NotifyEdited(deleted);
        Play(key);
        EXPECT_EQ(State(), state);
        ExpectTruePicture();
    }
}

TEST_F(ViewSearch, Replace) {
    constexpr const char* kNoA = "Cannot find string:\"a\"";
    constexpr const char* kNoAb = "Cannot find string:\"ab\"";
    const std::pair<Case, const char*> kRows[] = {
        {{"|ab ab", "replace:AB:x", "[|ab] ab"}, ""}, // only finds
        {{"|ab ab", "replace:ab:x*2", "x [|ab]"}, "5 0,0-2* 0 ab ab / 4 0,0-1* 0 x"},
        {{"ab ab|", "replace:ab:xyz:u*2", "[ab| xyz"}, "5 0,3-5* 0 ab ab / 4 0,3-6* 0 xyz"},
        {{"|ab", "replace:ab:*2", "|", kNoAb}, "5 0,0-2* 0 ab"},
        {{"|ab c", "replace:ab:1^~2*2", "1\n>---2| c", kNoAb},
         "5 0,0-2* 0 ab c / 4 0,0-1* 13 1 / 4 1,0-5 0     2"},
        // The user's own selection isn't replaced.
        {{"|ab ab ab", "S-Right*4 replace:ab:x", "ab ab [|ab]"}, ""},
        {{"|a b a", "all:A:xx", "xx b xx|"},
         "5 0,0-1* 0 a b a / 4 0,0-2* 0 xx / 5 0,5-6* 0 xx b a / 4 0,5-7* 0 xx"},
        {{"a\n|a\nA", "all:a::c", "\n|\nA"}, "5 0,0-1* 0 a / 5 1,0-1* 0 a"},
        {{"a|a\na", "all:a:aa", "aaaa\naa|"},
         "5 0,0-1* 0 aa / 4 0,0-2* 0 aa / 5 0,2-3* 0 aaa / 4 0,2-4* 0 aa / 5 1,0-1* 0 a / 4 1,0-2* "
         "0 aa"},
        {{"|aab", "all:ab:b", "ab|"}, "5 0,1-3* 0 aab / 4 0,1-2* 0 b"},
        {{"|a\na\na", "all:a:x:u", "a\na\nx|"}, "5 2,0-1* 0 a / 4 2,0-1* 0 x"},
        {{"|a a", "all:a:x:u", "a x|"}, "5 0,2-3* 0 a a / 4 0,2-3* 0 x"},
        {{"b\nc|b", "all:a:x", "b\nc|b", kNoA}, ""},
        {{"|a\tb\tc", "all:__b:x", "a x|>c"}, "5 0,2-5* 0 a   b   c / 4 0,2-3* 0 x"},
        {{"|ab", "all:a:1`2", "1\n2|b"}, "5 0,0-1* 0 ab / 4 0,0-1* 13 1 / 4 1,0-1 0 2"},
        {{"a|b ab", "S-Right all:ab:c", "c c|"},
         "5 0,0-2* 0 ab ab / 4 0,0-1* 0 c / 5 0,2-4* 0 c ab / 4 0,2-3* 0 c"}};
    for (const auto& [replacing, journal] : kRows) {
        Check({&replacing, 1});
        EXPECT_EQ(Journal(), journal) << replacing.m_Start;
        EXPECT_EQ(Editor().m_Inspector->IsModified(), *journal != 0);
    }
}

TEST_F(ViewSearch, ReplaceAllRecoloursAndIsUndone) {
    std::string text = "|";
    for (int row = 0; row < 100; ++row)
        text += row % 7 == 3 ? "/* ab\n" : "ab */ ab\tx\n";
    Start(text, {12, 6});
    const std::string before = Bytes();
    Play("all:ab:/*_abab");
    EXPECT_EQ(CaretPlace(), (TextPosition{99, 18}));
    ExpectTruePicture();
    UndoAll();
    EXPECT_EQ(Bytes().substr(0, 6), before.substr(0, 6)); // a record of a range keeps no tabs
    ExpectTruePicture();
}

TEST_F(ViewSearch, TheFindBoxKeepsThirtyTextsTheNewestFirst) {
    Start("|ab");
    const std::pair<const char*, const char*> kRows[] = {
        {"a", "a"},     {"b", "b a"},  {"b", "b a"},     {"a", "a b"},
        {"A", "A a b"}, {"", "A a b"}, {"c", "c A a b"}, {"a", "a c A b"}};
    for (const auto& [what, history] : kRows) {
        Play(std::string("find:") + what);
        EXPECT_EQ(History(), history);
        EXPECT_EQ(FindBox().GetWindowText(), AString(what));
    }
    FindBox().SetWindowText(u"typed"); // what stands in the box is no new text
    Play("find:typed");
    EXPECT_EQ(History(), "a c A b");
    std::string newest;
    for (int i = 0; i < 40; ++i) {
        Play("find:" + std::to_string(i));
        if (i >= 10)
            newest = std::to_string(i) + (newest.empty() ? "" : " ") + newest;
    }
    EXPECT_EQ(History(), newest);
    Play("find:10");
    EXPECT_EQ(History(), "10 " + newest.substr(0, newest.size() - 3));
}

TEST_F(ViewSearch, GoTo) {
    static constexpr Case kCases[] = {
        {"ab\nc|d\nef", "goto:3", "ab\ncd\n|ef"},
        {"ab\nc|d\nef", "goto:_1_", "|ab\ncd\nef"},
        {"ab\nc|d\nef", "goto:0", "ab\nc|d\nef"},
        {"ab\nc|d\nef", "goto:4", "ab\nc|d\nef"},
        {"ab\nc|d\nef", "goto:99999999999999", "ab\nc|d\nef"},
        {"ab\nc|d\nef", "goto:x", "ab\nc|d\nef", "Please enter an integer."},
        {"ab\nc|d\nef", "goto:", "ab\nc|d\nef", "Please enter an integer."},
        {"ab\nc|d\nef", "S-Left goto:3", "ab\n]c[d\n|ef"}, // the selection stays
    };
    Check(kCases, {20, 2});
    m_Desk.m_DialogScripts.push_back([](HeadlessDialog& shown) {
        EXPECT_EQ(shown.GetTitle(), u"GoTo Line");
        EXPECT_EQ(shown.GetText(9000), u"(1...3)");
        EXPECT_EQ(shown.GetText(9001), u"1");
        shown.Click(kIdCancel);
    });
    Play("C-G");
    EXPECT_EQ(CaretPlace(), (TextPosition{2, 0}));
    Start("|" + std::string(50, '\n'), {20, 10});
    Play("goto:31");
    EXPECT_EQ(TopRow(), 25);
    EXPECT_EQ(Caret(), (ScreenCell{5, 0}));
}

} // namespace
