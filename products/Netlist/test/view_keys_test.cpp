/// What keys do to caret and selection.
#include "view_script.h"

namespace {

class ViewKeys : public ScriptTest {};

TEST_F(ViewKeys, MoveSideways) {
    static constexpr Case kCases[] = {{"|ab", "Left", "|ab"},
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
                                      {"ab|c", "C-A", "[abc|"},
                                      {"ab|c", "A", "ab|c"}};
    Check(kCases);
}

TEST_F(ViewKeys, MoveByWords) {
    static constexpr Case kCases[] = {{"ab cd|", "C-Left", "ab |cd"},
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
                                      {"ab|\n  cd", "C-Right", "ab\n  |cd"},
                                      {"ab|\n(= cd", "C-Right", "ab\n(= |cd"},
                                      {"ab|\n  (", "C-Right", "ab\n  |("},
                                      {"ab|\n\ncd", "C-Right", "ab\n|\ncd"},
                                      {"ab|\n  \ncd", "C-Right", "ab\n  |\ncd"},
                                      {"ab|", "C-Right", "ab|"},
                                      {"|\xe4\xf6 b", "C-Right", "\xe4\xf6 |b"}};
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
        {"|a\nb\nc\nd\ne", "PgDn*2", "a\nb\nc\nd\n|e"}};
    Check(kCases, {80, 4});
}

} // namespace
