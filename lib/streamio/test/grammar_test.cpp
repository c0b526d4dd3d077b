// The grammars: their matrices against the rules in words, classes, scanning, changes.
#include <atomic>
#include <map>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "assertion.h"
#include "delimiter_grammar.h"
#include "token_dump.h"

namespace io::test {
namespace {

using enum CharClass;

/// A row of a matrix in words: where some classes lead, and where all the others do.
struct Rule {
    unsigned state;
    std::map<CharClass, unsigned> next;
    unsigned otherwise;
};

const std::map<CharClass, unsigned> kSingle{
    {LineEnd, 39}, {EndOfInput, 39}, {CarriageReturn, 39}, {SingleQuote, 21}, {Backslash, 15}};
const std::map<CharClass, unsigned> kDouble{
    {LineEnd, 40}, {EndOfInput, 40}, {CarriageReturn, 40}, {DoubleQuote, 22}, {Backslash, 16}};

std::map<CharClass, unsigned> With(std::map<CharClass, unsigned> rule, CharClass key,
                                   unsigned state) {
    rule[key] = state;
    return rule;
}

const Rule kCommon[] = {
    {1, {{LineEnd, 42}, {EndOfInput, 42}, {CarriageReturn, 42}}, 1},
    {2, {{Blank, 2}}, 43},
    {3, {}, 35},
    {4, {}, 33},
    {6, kSingle, 13},
    {7, kDouble, 14},
    {12, {{LineEnd, 4}}, 33},
    {13, kSingle, 13},
    {14, kDouble, 14},
    {15, {{EndOfInput, 39}, {CarriageReturn, 17}}, 19},
    {16, {{EndOfInput, 40}, {CarriageReturn, 18}}, 20},
    {17, With(kSingle, LineEnd, 6), 13},
    {18, With(kDouble, LineEnd, 7), 14},
    {19, kSingle, 13},
    {20, kDouble, 14},
    {21, {}, 39},
    {22, {}, 40},
};
const Rule kToken[] = {
    {0,
     {{Other, 3},
      {Backslash, 3},
      {LineEnd, 4},
      {EndOfInput, 34},
      {IdentStart, 5},
      {Zero, 8},
      {Digit, 11},
      {Blank, 2},
      {Sign, 9},
      {Point, 10},
      {CommentStart, 1},
      {DoubleQuote, 7},
      {SingleQuote, 6},
      {CarriageReturn, 12}},
     32},
    {5, {{IdentPart, 5}}, 36},
    {8, {{Digit, 11}, {Point, 28}, {Exponent, 29}, {HexMark, 26}}, 38},
    {9, {{Digit, 11}, {Point, 25}}, 35},
    {10, {{Digit, 28}}, 35},
    {11, {{Digit, 11}, {Point, 28}, {Exponent, 29}}, 38},
    {23, {{Dollar, 24}, {EndOfInput, 41}}, 23},
    {24, {{IdentPart, 24}}, 41},
    {25, {{Digit, 28}}, 44},
    {26, {{Digit, 27}, {HexLetter, 27}}, 47},
    {27, {{Digit, 27}, {HexLetter, 27}}, 48},
    {28, {{Digit, 28}, {Exponent, 29}}, 37},
    {29, {{Digit, 30}, {Sign, 31}}, 45},
    {30, {{Digit, 30}}, 37},
    {31, {{Digit, 30}}, 46},
};
const Rule kDelimiter[] = {
    {0,
     {{Other, 5},
      {Exponent, 5},
      {Zero, 11},
      {Digit, 11},
      {LineEnd, 4},
      {EndOfInput, 34},
      {Blank, 2},
      {Sign, 9},
      {Point, 10},
      {CommentStart, 1},
      {DoubleQuote, 7},
      {SingleQuote, 6},
      {CarriageReturn, 12},
      {Delimiter, 3}},
     32},
    {5, {{Other, 5}, {Digit, 5}, {Sign, 5}, {Point, 5}, {Exponent, 5}}, 36},
    {9, {{Digit, 11}, {Point, 25}, {Other, 5}, {Sign, 5}, {Exponent, 5}}, 35},
    {10, {{Digit, 28}, {Other, 5}, {Sign, 5}, {Point, 5}, {Exponent, 5}}, 35},
    {11, {{Digit, 11}, {Point, 28}, {Exponent, 29}, {Other, 5}, {Sign, 5}}, 38},
    {25, {{Digit, 28}, {Other, 5}, {Sign, 5}, {Point, 5}, {Exponent, 5}}, 36},
    {28, {{Digit, 28}, {Exponent, 29}, {Other, 5}, {Sign, 5}, {Point, 5}}, 37},
    {29, {{Digit, 30}, {Sign, 31}, {Other, 5}, {Point, 5}, {Exponent, 5}}, 36},
    {30, {{Digit, 30}, {Other, 5}, {Sign, 5}, {Point, 5}, {Exponent, 5}}, 37},
    {31, {{Digit, 30}, {Other, 5}, {Sign, 5}, {Point, 5}, {Exponent, 5}}, 36},
};

template <std::size_t Count>
void CheckMatrix(const CBase_grammar& grammar, const Rule (&own)[Count]) {
    std::map<unsigned, const Rule*> rules;
    for (const Rule& rule : kCommon)
        rules[rule.state] = &rule;
    for (const Rule& rule : own)
        rules[rule.state] = &rule;
    for (unsigned state = 0; state < kStateCount; ++state) {
        const Rule* const rule = rules[state];
        for (unsigned n = 0; n < kCharClassCount; ++n) {
            const auto charClass = static_cast<CharClass>(n);
            unsigned expected = 32;
            if (rule && charClass != Invalid)
                expected =
                    rule->next.contains(charClass) ? rule->next.at(charClass) : rule->otherwise;
            EXPECT_EQ(grammar.GetTransition(state, charClass), expected)
                << "state " << state << " class " << n;
        }
    }
}

TEST(Grammar, MatricesFollowTheRules) {
    CheckMatrix(CToken_grammar_default::Get(), kToken);
    CheckMatrix(CDelimiter_grammar_default::Get(), kDelimiter);
}

/// The characters below 256 of each class, in a state, in order.
std::string Members(const CBase_grammar& grammar, unsigned state, CharClass charClass) {
    std::u16string members;
    for (int ch = 0; ch < 0x100; ++ch) {
        if (grammar.Classify(ch, state) == charClass)
            members += static_cast<char16_t>(ch);
    }
    return Show(members);
}

TEST(Grammar, ClassesDependOnTheState) {
    const CToken_grammar_default& token = CToken_grammar_default::Get();
    const CDelimiter_grammar_default& delimiter = CDelimiter_grammar_default::Get();
    const struct {
        const CBase_grammar& grammar;
        unsigned state;
        CharClass charClass;
        std::string members;
    } rows[] = {
        {token, 0, LineEnd, "{0}{a}"},
        {token, 0, CarriageReturn, "{d}"},
        {token, 0, CommentStart, "!"},
        {token, 0, Zero, "0"},
        {token, 0, Digit, "123456789"},
        {token, 0, Sign, "+-"},
        {token, 0, Point, "."},
        {token, 0, Exponent, ""},
        {token, 5, IdentPart,
         "$0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz{aa}{b5}{ba}{c0}{c1}{c2}"
         "{c3}{c4}{c5}{c6}{c7}{c8}{c9}{ca}{cb}{cc}{cd}{ce}{cf}{d0}{d1}{d2}{d3}{d4}{d5}{d6}{d8}{d9}"
         "{da}{db}{dc}{dd}{de}{df}{e0}{e1}{e2}{e3}{e4}{e5}{e6}{e7}{e8}{e9}{ea}{eb}{ec}{ed}{ee}{ef}"
         "{f0}{f1}{f2}{f3}{f4}{f5}{f6}{f8}{f9}{fa}{fb}{fc}{fd}{fe}{ff}"},
        {token, 8, HexMark, "x"},
        {token, 8, Digit, "0123456789"},
        {token, 11, Exponent, "Ee"},
        {token, 11, HexMark, ""},
        {token, 13, Backslash, "\\"},
        {token, 13, Digit, ""},
        {token, 23, Dollar, "$"},
        {token, 24, IdentPart, Members(token, 5, IdentPart)},
        {token, 27, HexLetter, "abcdef"},
        {token, 26, HexLetter, "abcdef"},
        {delimiter, 0, Delimiter, "(),="},
        {delimiter, 5, Digit, "0123456789"},
        {delimiter, 5, Zero, ""},
        {delimiter, 5, Exponent, "Ee"},
        {delimiter, 14, Backslash, "\\"},
        {delimiter, 14, Delimiter, ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Members(row.grammar, row.state, row.charClass), row.members) << row.state;
    for (const unsigned state : {0U, 5U, 13U, 30U}) {
        EXPECT_EQ(token.Classify(kEndOfInput, state), EndOfInput);
        EXPECT_EQ(token.Classify(-1, state), Invalid);
        EXPECT_EQ(token.Classify(0x10000, state), Invalid);
        EXPECT_EQ(token.Classify(0x416, state), Other);
    }
}

TEST(Grammar, ScansOneToken) {
    using namespace std::string_view_literals;
    const struct {
        std::u16string_view text;
        TokenKind kind;
        std::size_t stop;
    } rows[] = {
        {u"", TokenKind::Eol, 0},
        {u"abc", TokenKind::Keyword, 3},
        {u"true", TokenKind::Keyword, 4},
        {u"$begin_cdata$", TokenKind::Keyword, 13},
        {u"two words", TokenKind::Keyword, 3},
        {u"12", TokenKind::Int, 2},
        {u"1.5e3", TokenKind::Double, 5},
        {u"0x1f", TokenKind::Hex, 4},
        {u"=", TokenKind::Symbol, 1},
        {u"\n", TokenKind::Eol, 0},
        {u"\r", TokenKind::Eol, 1},
        {u" \t", TokenKind::WhiteSpace, 2},
        {u"!x", TokenKind::Comment, 2},
        {u"'a b'", TokenKind::SingleQuotedText, 5},
        {u"'a", TokenKind::SingleQuotedText, 2},
        {u"\"a\\\"\"", TokenKind::DoubleQuotedText, 5},
        {u"'a'b", TokenKind::SingleQuotedText, 3},
        {u"'a\\", TokenKind::Error, 0},
        {u"'a\\\r", TokenKind::Error, 0},
        {u"a\0b"sv, TokenKind::Keyword, 1},
        {u"'a\0'"sv, TokenKind::SingleQuotedText, 2},
        {u"\u0416", TokenKind::Symbol, 1},
    };
    for (const auto& row : rows) {
        std::size_t stop = 99;
        EXPECT_EQ(CToken_grammar_default::Get().Scan(row.text, stop), row.kind) << Show(row.text);
        EXPECT_EQ(stop, row.stop) << Show(row.text);
    }
    const char16_t* stop = nullptr;
    const char16_t text[] = u"abc=";
    EXPECT_EQ(CToken_grammar_default::Get().Scan(text, stop), TokenKind::Keyword);
    EXPECT_EQ(stop, text + 3);
}

TEST(Grammar, FindsItsCommentCharacter) {
    CToken_grammar grammar;
    EXPECT_EQ(grammar.GetCommentChar(), u'\0');
    grammar.AddCommentChars(u"#!");
    EXPECT_EQ(grammar.GetCommentChar(), u'!'); // the first in the table
    grammar.AddCommentChars(u"\"\u0416");
    EXPECT_EQ(grammar.GetCommentChar(), u'!');
    grammar.RemoveCommentChars(u"!#\"\u4000");
    EXPECT_EQ(grammar.GetCommentChar(), u'\u0416');
    grammar.AddCommentChars(nullptr);
    EXPECT_EQ(grammar.GetCommentChar(), u'\u0416');
}

/// Collects the conditions of failed assertions.
class AssertionCount {
public:
    AssertionCount() : mWasIgnoring(gIgnoreAllAsserts) {
        gIgnoreAllAsserts = false;
        mOld = SetAssertHandler([this](const std::string&, unsigned) {
            ++mCount;
            return AssertAnswer::kRetry;
        });
    }
    ~AssertionCount() {
        SetAssertHandler(mOld);
        gIgnoreAllAsserts = mWasIgnoring;
    }
    int mCount = 0;

private:
    bool mWasIgnoring;
    AssertHandler mOld;
};

/// A grammar works tables out when it is first used, which may be on several threads at once.
TEST(Grammar, MayBeReadByManyThreadsFromTheFirstTokenOn) {
    for (int round = 0; round < 50; ++round) {
        const CToken_grammar grammar;
        std::atomic<int> waiting = 4, good = 0;
        std::vector<std::jthread> threads(4);
        for (std::jthread& thread : threads)
            thread = std::jthread([&] {
                for (--waiting; waiting != 0;) { // all begin together
                }
                TokenKind kind;
                const bool isOne = grammar.IsOneToken(u"abc_1", kind);
                good += isOne && kind == TokenKind::Keyword &&
                        grammar.GetFast().alone[u'+'] == TokenKind::Symbol;
            });
        threads.clear();
        EXPECT_EQ(good, 4);
    }
}

TEST(Grammar, SharedOnesCannotBeChanged) {
    AssertionCount asserted;
    CToken_grammar_default& token = CToken_grammar_default::Get();
    CDelimiter_grammar_default& delimiter = CDelimiter_grammar_default::Get();
    token.AddCommentChars(u"#");
    token.RemoveCommentChars(u"!");
    token.AddIdentStartChars(u"#");
    token.AddIdentChars(u"#");
    token.RemoveIdentStartChars(u"a");
    token.RemoveIdentChars(u"a");
    delimiter.AddCommentChars(u"#");
    delimiter.RemoveCommentChars(u"!");
    delimiter.AddDelimiters(u"#");
    EXPECT_EQ(asserted.mCount, 9);
    EXPECT_EQ(ShowTokens(u"#a!"), "Symbol(#) Keyword(a)");
}

} // namespace
} // namespace io::test
