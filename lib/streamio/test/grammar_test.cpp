// The grammars: their matrices against the rules in words, classes, scanning, changes.
#include <atomic>
#include <map>
#include <span>
#include <sstream>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "assertion_watch.h"
#include "delimiter_grammar.h"
#include "token_dump.h"

namespace io::test {
namespace {

using enum CharClass;

/// The classes in their order, a letter each, '_' for those without a rule.
constexpr std::string_view kClassLetters = "o_nEipzdbs_.c\"'exh\\r$,";
static_assert(kClassLetters.size() == kCharClassCount);

/// A row of a matrix: where some classes lead, and where all the others do.
struct Rule {
    unsigned state, otherwise;
    const char* next; ///< letters of classes, then the state to which they lead
};

constexpr Rule kCommon[] = {{1, 1, "nEr42"},
                            {2, 43, "b2"},
                            {3, 35, ""},
                            {4, 33, ""},
                            {6, 13, "nEr39 '21 \\15"},
                            {7, 14, "nEr40 \"22 \\16"},
                            {12, 33, "n4"},
                            {13, 13, "nEr39 '21 \\15"},
                            {14, 14, "nEr40 \"22 \\16"},
                            {15, 19, "E39 r17"},
                            {16, 20, "E40 r18"},
                            {17, 13, "n6 Er39 '21 \\15"},
                            {18, 14, "n7 Er40 \"22 \\16"},
                            {19, 13, "nEr39 '21 \\15"},
                            {20, 14, "nEr40 \"22 \\16"},
                            {21, 39, ""},
                            {22, 40, ""}};
constexpr Rule kToken[] = {{0, 32, "o\\3 n4 E34 i5 z8 d11 b2 s9 .10 c1 \"7 '6 r12"},
                           {5, 36, "p5"},
                           {8, 38, "d11 .28 e29 x26"},
                           {9, 35, "d11 .25"},
                           {10, 35, "d28"},
                           {11, 38, "d11 .28 e29"},
                           {23, 23, "$24 E41"},
                           {24, 41, "p24"},
                           {25, 44, "d28"},
                           {26, 47, "dh27"},
                           {27, 48, "dh27"},
                           {28, 37, "d28 e29"},
                           {29, 45, "d30 s31"},
                           {30, 37, "d30"},
                           {31, 46, "d30"}};
constexpr Rule kDelimiter[] = {{0, 32, "oe5 zd11 n4 E34 b2 s9 .10 c1 \"7 '6 r12 ,3"},
                               {5, 36, "ods.e5"},
                               {9, 35, "d11 .25 ose5"},
                               {10, 35, "d28 os.e5"},
                               {11, 38, "d11 .28 e29 os5"},
                               {25, 36, "d28 os.e5"},
                               {28, 37, "d28 e29 os.5"},
                               {29, 36, "d30 s31 o.e5"},
                               {30, 37, "d30 os.e5"},
                               {31, 36, "d30 os.e5"}};

void CheckMatrix(const CBase_grammar& grammar, std::span<const Rule> own) {
    std::map<std::pair<unsigned, std::size_t>, unsigned> expected;
    for (const std::span<const Rule> rules : {std::span<const Rule>(kCommon), own})
        for (const Rule& rule : rules) {
            for (std::size_t n = 0; n < kCharClassCount; ++n)
                expected[{rule.state, n}] = CharClass(n) == Invalid ? 32 : rule.otherwise;
            std::istringstream words(rule.next);
            for (std::string word; words >> word;) {
                const std::size_t letters = word.find_first_of("0123456789");
                for (const char letter : word.substr(0, letters))
                    expected[{rule.state, kClassLetters.find(letter)}] =
                        static_cast<unsigned>(std::stoi(word.substr(letters)));
            }
        }
    for (unsigned state = 0; state < kStateCount; ++state)
        for (std::size_t n = 0; n < kCharClassCount; ++n) {
            const auto known = expected.find({state, n});
            EXPECT_EQ(grammar.GetTransition(state, CharClass(n)),
                      known == expected.end() ? 32 : known->second)
                << "state " << state << " class " << n;
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
    const std::tuple<const CBase_grammar&, unsigned, CharClass, std::string> rows[] = {
        {token, 0, LineEnd, "{0}{a}"},
        {token, 0, Digit, "123456789"},
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
        {token, 13, Digit, ""},
        {token, 24, IdentPart, Members(token, 5, IdentPart)},
        {token, 27, HexLetter, "abcdef"},
        {token, 26, HexLetter, "abcdef"},
        {delimiter, 0, Delimiter, "(),="},
        {delimiter, 5, Digit, "0123456789"},
        {delimiter, 5, Zero, ""},
        {delimiter, 5, Exponent, "Ee"},
        {delimiter, 14, Backslash, "\\"},
        {delimiter, 14, Delimiter, ""}};
    for (const auto& [grammar, state, charClass, members] : rows)
        EXPECT_EQ(Members(grammar, state, charClass), members) << state;
    for (const unsigned state : {0U, 5U, 13U, 30U}) {
        EXPECT_EQ(token.Classify(kEndOfInput, state), EndOfInput);
        EXPECT_EQ(token.Classify(-1, state), Invalid);
        EXPECT_EQ(token.Classify(0x10000, state), Invalid);
        EXPECT_EQ(token.Classify(0x416, state), Other);
    }
}

TEST(Grammar, ScansOneToken) {
    using namespace std::string_view_literals;
    const std::tuple<std::u16string_view, TokenKind, std::size_t> rows[] = {
        {u"", TokenKind::Eol, 0},
        {u"abc", TokenKind::Keyword, 3},
        {u"true", TokenKind::Keyword, 4},
        {u"$begin_cdata$", TokenKind::Keyword, 13},
        {u"two words", TokenKind::Keyword, 3},
        {u"0x1f", TokenKind::Hex, 4},
        {u"\n", TokenKind::Eol, 0},
        {u"\r", TokenKind::Eol, 1},
        {u" \t", TokenKind::WhiteSpace, 2},
        {u"'a", TokenKind::SingleQuotedText, 2},
        {u"\"a\\\"\"", TokenKind::DoubleQuotedText, 5},
        {u"'a'b", TokenKind::SingleQuotedText, 3},
        {u"'a\\", TokenKind::Error, 0},
        {u"'a\\\r", TokenKind::Error, 0},
        {u"a\0b"sv, TokenKind::Keyword, 1},
        {u"'a\0'"sv, TokenKind::SingleQuotedText, 2},
        {u"\u0416", TokenKind::Symbol, 1}};
    for (const auto& [text, kind, wantedStop] : rows) {
        std::size_t stop = 99;
        EXPECT_EQ(CToken_grammar_default::Get().Scan(text, stop), kind) << Show(text);
        EXPECT_EQ(stop, wantedStop) << Show(text);
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
    AssertionWatch asserted;
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
    EXPECT_EQ(asserted.Take(), 9);
    EXPECT_EQ(ShowTokens(u"#a!"), "Symbol(#) Keyword(a)");
}

} // namespace
} // namespace io::test
