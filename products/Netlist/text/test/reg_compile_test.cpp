// Compilation: errors, programs, and what is known of every match.
#include "reg_exp.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>
#include <vector>

namespace {

using namespace std::string_literals;

TEST(RegCompile, ReportsTheFirstErrorInTextOrder) {
    const std::tuple<int, const char*, std::vector<std::string>> rows[] = {
        {11, "regexp too big", {std::string(32756, 'a')}},
        {12, "too many ()", {"((((((((((a))))))))))", "()()()()()()()()()()", "(((((((((("}},
        {13, "unterminated ()", {"(a", "(a|b", "((a)"}},
        {14, "unmatched ()", {"a)", ")", "a|b)c"}},
        {16,
         "*+ operand could be empty",
         {"(a*)*", "(a?|b)+", "^*", "$+", R"(\<*)", R"(\>+)", "()*", "(|a)+", "^**"}},
        {17, "nested *?+", {"a**", "a*?", "(a)?+", "^?*", "(a**", std::string(40000, 'a') + "**"}},
        {18, "invalid [] range", {"[z-a]", "[z-a", "[a-c-b]", "[\xE4-z]", "[a--]"}},
        {19, "unmatched []", {"[a", "[", "[]", "[^]", "[a-"}},
        {21, "?+* follows nothing", {"*a", "a|*", "(+)", "?"}},
        {22, "trailing \\", {"ab\\", "(\\"}},
        {0, "", {"a\0)"s, "", "()?", "^?", "(a+)+", "]", "((((((((()))))))))"}}};
    for (const auto& [code, wantedText, expressions] : rows)
        for (const std::string& text : expressions) {
            const CRegExp expression{std::string_view(text)};
            SCOPED_TRACE(text.substr(0, 40));
            EXPECT_EQ(expression.LastErrorCode(), code);
            EXPECT_STREQ(expression.LastError(), wantedText);
            EXPECT_EQ(expression.IsValid(), code == 0);
        }
}

TEST(RegCompile, InvalidExpressionsAnswerEverything) {
    for (CRegExp& expression :
         std::array{CRegExp(static_cast<const char*>(nullptr)), CRegExp("a**")}) {
        const std::string error = expression.LastError();
        EXPECT_FALSE(expression.Match("a"));
        EXPECT_EQ(expression.LastError(), error);
        EXPECT_FALSE(expression.MatchFrom(RegSubject("a")).Found());
        EXPECT_EQ(expression.MatchAt(RegSubject("a"), 0, 0), -1);
        EXPECT_EQ(expression.SubStart(0), -1);
        EXPECT_EQ(expression.GroupCount(), -1);
        EXPECT_TRUE(expression.Facts().firstBytes.Empty());
        EXPECT_EQ(expression.Dump(), "");
        EXPECT_EQ(expression.Size(), 0U);
    }
    EXPECT_STREQ(CRegExp(static_cast<const char*>(nullptr)).LastError(),
                 "NULL argument to regcomp");
}

TEST(RegCompile, Programs) {
    const std::tuple<const char*, std::size_t, const char*> rows[] = {
        {"", 10, "0:BRANCH>2 1:NOTHING>2 2:END"},
        {"abc", 14, R"(0:BRANCH>2 1:EXACTLY"abc">2 2:END)"},
        {"abc+", 21, R"(0:BRANCH>4 1:EXACTLY"ab">2 2:PLUS>4 3:EXACTLY"c" 4:END)"},
        {R"(a\.b\\)", 27,
         R"(0:BRANCH>5 1:EXACTLY"a">2 2:EXACTLY".">3 3:EXACTLY"b">4 4:EXACTLY"\x5C">5 5:END)"},
        {".*", 13, "0:BRANCH>3 1:STAR>3 2:ANY 3:END"},
        {"[a-c]$", 17, "0:BRANCH>3 1:ANYOF[a-c]>2 2:EOL>3 3:END"},
        {R"(^\<[^"]\>)", 21,
         R"(0:BRANCH>5 1:BOL>2 2:WORDA>3 3:ANYBUT[\x01-!#-\xFF]>4 4:WORDZ>5 5:END)"},
        {"a|b|", 26,
         R"(0:BRANCH>2 1:EXACTLY"a">6 2:BRANCH>4 3:EXACTLY"b">6 4:BRANCH>6 5:NOTHING>6 6:END)"},
        {"a?", 21, R"(0:BRANCH>5 1:BRANCH>3 2:EXACTLY"a">4 3:BRANCH>4 4:NOTHING>5 5:END)"},
        {"(ab)*", 34,
         R"(0:BRANCH>9 1:BRANCH>7 2:OPEN1>3 3:BRANCH>5 4:EXACTLY"ab">5 5:CLOSE1>6 6:BACK>1 )"
         R"(7:BRANCH>8 8:NOTHING>9 9:END)"},
        {"(a)+b", 38,
         R"(0:BRANCH>10 1:OPEN1>2 2:BRANCH>4 3:EXACTLY"a">4 4:CLOSE1>5 5:BRANCH>7 6:BACK>1 )"
         R"(7:BRANCH>8 8:NOTHING>9 9:EXACTLY"b">10 10:END)"},
        {"(a|(b))", 38,
         R"(0:BRANCH>10 1:OPEN1>2 2:BRANCH>4 3:EXACTLY"a">9 4:BRANCH>9 5:OPEN2>6 6:BRANCH>8 )"
         R"(7:EXACTLY"b">8 8:CLOSE2>9 9:CLOSE1>10 10:END)"}};
    for (const auto& [givenExpression, size, dump] : rows) {
        const CRegExp expression(givenExpression);
        EXPECT_EQ(expression.Dump(), dump) << givenExpression;
        EXPECT_EQ(expression.Size(), size) << givenExpression;
    }
}

TEST(RegCompile, ClassMembers) {
    const std::pair<const char*, const char*> rows[] = {{"[]a]", R"([\x5Da])"},
                                                        {"[-a]", R"([\x2Da])"},
                                                        {"[a-]", R"([\x2Da])"},
                                                        {"[a-c-e]", "[a-e]"},
                                                        {"[--0]", R"([\x2D-0])"},
                                                        {"[]-a]", R"([\x5D-a])"},
                                                        {R"([\t])", R"([\x5Ct])"},
                                                        {"[a^]", R"([\x5Ea])"},
                                                        {"[[]", "[[]"},
                                                        {"[a-a]", "[a]"},
                                                        {"[aab]", "[ab]"},
                                                        {R"([\-z])", R"([\x5C-z])"},
                                                        {"[\x7F-\xFF]", R"([\x7F-\xFF])"},
                                                        {"[^]a]", R"([\x01-\x5C\x5E-`b-\xFF])"},
                                                        {"[^-a]", R"([\x01-,.-`b-\xFF])"}};
    for (const auto& [expression, members] : rows) {
        const std::string op = expression[1] == '^' ? "ANYBUT" : "ANYOF";
        EXPECT_EQ(CRegExp(expression).Dump(), "0:BRANCH>2 1:" + op + members + ">2 2:END")
            << expression;
    }
}

TEST(RegCompile, SizeIsCountedInTheCompactEncoding) {
    std::string classes;
    for (int i = 0; i < 127; ++i)
        classes += "[\x01-\xFE]"; // 258 bytes each
    // size 0: too big
    const std::tuple<std::string, bool, std::size_t> rows[] = {
        {std::string(32755, 'a'), false, 32766},
        {std::string(32756, 'a'), false, 0},
        {std::string(32755, '1'), true, 32766},
        {std::string(5459, 'a'), true, 32761},
        {std::string(5460, 'a'), true, 0},
        {"[aaa-cb]", false, 17},
        {classes, false, 0},
        {classes.substr(0, 126 * 5), false, 32515}};
    for (const auto& [givenExpression, ignoreCase, size] : rows) {
        const CRegExp expression(std::string_view(givenExpression), ignoreCase);
        EXPECT_EQ(expression.Size(), size) << givenExpression.substr(0, 20);
        EXPECT_EQ(expression.LastErrorCode(), size == 0 ? 11 : 0);
    }
}

TEST(RegCompile, WhatEveryMatchMustHave) {
    const std::tuple<char, bool, const char*, std::vector<const char*>> rows[] = {
        {'a', false, "", {"abc", "abc*"}},
        {'*', false, "", {R"(\*.*)"}},
        {0, true, "", {"^abc"}},
        {0, false, "b", {".*a*bb+"}},
        {0, false, "bc", {"a*bc", "a+bc", "(a|b)+bc(longer)d"}},
        {0, false, "de", {"(a)*bc.de.f"}},
        {0, false, "cd", {R"(x*ab\.cd)"}},
        {0,
         false,
         "",
         {"a?bc", "(a*)bc", "a*[b]", "a*b|c", "^a|b", "(^a)", "^?a", "a|b", "a*", "a+", "[a]b",
          R"(\<ab)"}}};
    for (const auto& [firstChar, anchored, mustHave, expressions] : rows)
        for (const char* text : expressions) {
            const CRegExp expression(text);
            SCOPED_TRACE(text);
            EXPECT_EQ(expression.FirstChar(), firstChar);
            EXPECT_EQ(expression.Anchored(), anchored);
            EXPECT_EQ(expression.MustHave(), mustHave);
        }
}

/// Letters in classes and behind a backslash; the twin has the rest.
TEST(RegCompile, IgnoringCaseRewritesTheText) {
    const std::pair<const char*, const char*> rows[] = {
        {"[a-c]d1", "[a-c][Dd]1"}, {R"(\a)", R"(\[Aa])"}, {R"(\<a\.)", R"(\<[Aa]\.)"},
        {"\xE4\xC4", "\xE4\xC4"},  {"@[`{", "@[`{"},      {"a\\", "[Aa]\\"}};
    for (const auto& [expression, compiled] : rows) {
        const CRegExp folded(expression, true);
        EXPECT_EQ(folded.Dump(), CRegExp(compiled).Dump()) << expression;
        EXPECT_EQ(folded.LastErrorCode(), CRegExp(compiled).LastErrorCode()) << expression;
    }
}

} // namespace
