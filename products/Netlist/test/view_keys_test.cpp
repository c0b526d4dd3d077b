/// What keys do to caret, selection and text.
#include "view_script.h"

namespace {

struct Case {
    const char* m_Start;
    const char* m_Script;
    const char* m_End;
};

class ViewKeys : public ScriptTest {
protected:
    void Check(std::span<const Case> cases, CSize cells = {80, 25}) {
        for (const Case& c : cases) {
            Start(c.m_Start, cells);
            Play(c.m_Script);
            EXPECT_EQ(State(), c.m_End) << c.m_Start << ": " << c.m_Script;
            ExpectTruePicture();
        }
    }
};

TEST_F(ViewKeys, MoveSideways) {
    static constexpr Case kCases[] = {
        {"|ab", "Left", "|ab"},
        {"a\n|b", "Left", "a|\nb"},
        {"a\t|b", "Left", "a|>--b"},
        {"a|\tb", "Right", "a>--|b"},
        {"a|\nb", "Right", "a\n|b"},
        {"ab|", "Right", "ab|"},
        {"|\tb", "S-Right", "[>---|b"},
        {"|ab", "S-Left", "[|ab"},
        {"ab|c", "S-Left S-Right*2 Left", "ab|c"},
        {"ab|c", "S-Right Right", "abc|"},
        {"ab|\ncd", "S-Right*2 Esc", "ab\nc|d"},
        {"  ab|", "Home", "|  ab"},
        {"|  ab", "Home", "  |ab"},
        {"|  ab", "Home Home", "|  ab"},
        {"|   ", "Home", "|   "},
        {"ab|cd", "S-Home", "|ab[cd"},
        {"ab|cd", "S-A-End", "ab[cd|"},
        {"ab\nc|d", "C-Home", "|ab\ncd"},
        {"a|b\ncd", "C-End", "ab\n|cd"},
        {"a|b\ncd", "S-C-End", "a[b\n|cd"},
    };
    Check(kCases);
}

TEST_F(ViewKeys, MoveByWords) {
    static constexpr Case kCases[] = {
        {"ab cd|", "C-Left", "ab |cd"},
        {"ab (|", "C-Left", "|ab ("},
        {"(( |", "C-Left", "|(( "},
        {"a_1|", "C-Left", "|a_1"},
        {"ab\n\n\n|cd", "C-Left", "|ab\n\n\ncd"},
        {"\n\n|cd", "C-Left", "|\n\ncd"},
        {"(\n|cd", "C-Left", "|(\ncd"},
        {"|ab", "C-Left", "|ab"},
        {"|ab  cd", "C-Right", "ab  |cd"},
        {"a|b(cd", "C-Right", "ab|(cd"},
        {"ab|(= cd", "C-Right", "ab(= |cd"},
        {"ab|  (", "C-Right", "ab  |("},
        {"ab|\ncd", "C-Right", "ab\n|cd"},
        {"ab|\n  cd", "C-Right", "ab\n  |cd"},
        {"ab|\n(= cd", "C-Right", "ab\n(= |cd"},
        {"ab|\n  (", "C-Right", "ab\n  |("},
        {"ab|\n\ncd", "C-Right", "ab\n|\ncd"},
        {"ab|\n  \ncd", "C-Right", "ab\n  |\ncd"},
        {"ab|", "C-Right", "ab|"},
        {"|\xe4\xf6 b", "C-Right", "\xe4\xf6 |b"},
    };
    Check(kCases);
}

TEST_F(ViewKeys, MoveByRowsComesBackToTheColumn) {
    static constexpr Case kCases[] = {
        {"abcdef|\n\nabcdefgh", "Down Down", "abcdef\n\nabcdef|gh"},
        {"abcdef|\n\nabcdefgh", "Down Home Down", "abcdef\n\n|abcdefgh"},
        {"abcdef|\n\nabcdefgh", "Down Ins Esc Down", "abcdef\n\nabcdef|gh"},
        {"abcdef|\n\nabcdefgh", "Down S-Down", "abcdef\n[\n|abcdefgh"},
        {"abcdef|\n\nabcdefgh", "Down S-PgDn", "abcdef\n[\nabcdef|gh"},
        {"abcdef|\n\nabcdefgh", "Down S-A-Down", "abcdef\n{\nabcdef|gh"},
        {"abcdef|\n\nabcdefgh", "Down*2 Down Up*2", "abcdef|\n\nabcdefgh"},
        {"abc|\n\tx", "Down", "abc\n|>---x"},
        {"ab|\nabcd", "Up Down", "ab\nab|cd"},
        {"ab|", "Down", "ab|"},
        {"ab|", "S-Up", "ab[|"},
        {"ab|c", "S-Right Up", "abc|"},
        {"a\nb\nc\nd\ne|", "PgUp", "a\nb|\nc\nd\ne"},
        {"a\nb|\nc", "PgUp", "a|\nb\nc"},
        {"|a\nb\nc\nd\ne", "PgDn*2", "a\nb\nc\nd\n|e"},
    };
    Check(kCases, {80, 4});
}

TEST_F(ViewKeys, Edit) {
    static constexpr Case kCases[] = {
        {"a|b", "'xy'", "axy|b"},
        {"a|b", "'~'", "a>--|b"},
        {"|a\tb", "'x'", "x|a>-b"},
        {"a|bc", "Ins 'xyz'", "axyz|"},
        {"|\tb", "Ins 'x'", "x|b"},
        {"ab|c", "S-Left*2 'x'", "x|c"},
        {"a|b", "Enter", "a\n|b"},
        {"|ab", "Enter", "\n|ab"},
        {"ab|c\nd", "S-Right*2 Enter", "ab\n|d"},
        {"ab\n|c", "Back", "ab|c"},
        {"ab\t|c", "Back", "ab|c"},
        {"|ab", "Back", "|ab"},
        {"a|b", "Del", "a|"},
        {"a|\nb", "Del", "a|b"},
        {"a|\tb", "Del", "a|b"},
        {"ab|", "Del", "ab|"},
        {"ab|c", "C-Del", "ab|"},
        {"a|b\nc\nd", "S-Down*2 Back", "a|"},
        {"a|b\nc\nde", "S-Down*2 Del", "a|e"},
        {"|abcd\nef\nghij", "Right S-A-Down*2 S-A-Right*2 Del", "a|d\ne\ngj"},
        {"abc|d\n\nghij", "S-A-Down*2 S-A-Left*2 Del", "a|d\n\ngj"},
        {"  ab|", "Enter", "  ab\n|"},
        {"ab|c", "A", "ab|c"},
        {"ab|c", "C-A", "[abc|"},
        {"ab|c", "57642 57632", "|"},
    };
    Check(kCases);
}

TEST_F(ViewKeys, BlankColumnsOfACutTabStay) {
    Start("|abcdefgh\n\tx");
    Play("Right*2 S-A-Down");
    EXPECT_EQ(State(), "ab{cdefgh\n|>---x"); // up and down don't enter a tab
    Play("Del");
    EXPECT_EQ(State(), "|cdefgh\n  x");
    ExpectTruePicture();
}

TEST_F(ViewKeys, EnterIndentsAtALinesEnd) {
    SetOption(u"FillBlanksOnEnter", 1);
    const struct {
        const char* m_Start;
        const char* m_End;
    } kRows[] = {
        {"  ab|", "  ab\n  |"}, {"   |", "   \n   |"},    {"|", "\n|"},
        {"  a|b", "  a\n|b"},   {"\ta|", ">---a\n    |"},
    };
    for (const auto& row : kRows) {
        Start(row.m_Start);
        const std::string before = State();
        for (const auto& [word, state] :
             {std::pair("Enter", std::string(row.m_End)), std::pair("undo", before),
              std::pair("redo", std::string(row.m_End))}) {
            Play(word);
            EXPECT_EQ(State(), state) << row.m_Start << ": " << word;
            ExpectTruePicture();
        }
    }
}

} // namespace
