// CToken: what it holds, what a copy costs, where longer texts live.
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "allocation_count.h"
#include "token_dump.h"

namespace io::test {
namespace {

TEST(Token, HoldsTextAndNumber) {
    const std::u16string longText(300, u'x');
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        CToken token;
        std::string shown;
        std::size_t held;
    } rows[] = {{CToken(), "Null", 0},
                {CToken(TokenKind::Keyword, u"abc"), "Keyword(abc)", 0},
                {CToken(TokenKind::Keyword, u"abcdefg"), "Keyword(abcdefg)", 0},
                {CToken(TokenKind::Keyword, u"abcdefgh"), "Keyword(abcdefgh)", 16},
                {CToken(TokenKind::CData, longText), "CData(" + std::string(300, 'x') + ")", 600},
                {CToken(TokenKind::Symbol), "Symbol()", 0},
                {CToken(TokenKind::True, u"TRUE"), "True(TRUE)", 0},
                {CToken(TokenKind::Eol, u"abc"), "Eol", 0},
                {CToken(TokenKind::Error, 5.0), "Error", 0},
                {CToken(TokenKind::Int, u"12"), "Int(|0)", 0},
                {CToken(TokenKind::Int, 12.0), "Int(|12)", 0},
                {CToken(TokenKind::Double, -1.5, "-1.50e+00"), "Double(-1.50e+00|-1.5)", 0},
                {CToken(TokenKind::Double, 1.0, "1.0000000000"), "Double(1.0000000000|1)", 0},
                {CToken(TokenKind::Double, 1.0, "1.00000000000"), "Double(1.00000000000|1)", 21},
                {CToken(TokenKind::Hex, 31.0, "0x1f"), "Hex(0x1f|31)", 12},
                {CToken(TokenKind::Keyword, 1.0, "1"), "Keyword()", 0},
                {CToken(TokenKind::Double, nan), "Double(|nan)", 0}};
    for (const auto& row : rows) {
        EXPECT_EQ(Show(row.token), row.shown);
        EXPECT_EQ(row.token.GetHeldBytes(), row.held) << row.shown;
        EXPECT_EQ(row.token.GetTextLength(), row.token.GetText().size()) << row.shown;
        CToken copy = row.token;
        EXPECT_EQ(copy, row.token) << row.shown;
        const CToken moved = std::move(copy);
        copy = moved;
        EXPECT_EQ(copy, row.token) << row.shown;
        for (const auto& other : rows)
            EXPECT_EQ(row.token == other.token, &row == &other) << row.shown << other.shown;
    }
    EXPECT_NE(CToken(TokenKind::Double, 0.0), CToken(TokenKind::Double, -0.0));
    EXPECT_NE(CToken(TokenKind::Int, 1.0, "1"), CToken(TokenKind::Int, 1.0, "01"));
}

TEST(Token, ShortTextsAndCopiesNeedNoMemory) {
    const std::u16string longText(50, u'x');
    EXPECT_EQ(CountAllocations([] {
                  CToken name(TokenKind::Keyword, u"abc");
                  CToken number(TokenKind::Double, 1.5, "1.5");
              }),
              0U);
    const CToken token(TokenKind::Keyword, longText);
    std::vector<CToken> copies(1000);
    EXPECT_EQ(CountAllocations([&] {
                  for (CToken& copy : copies)
                      copy = token;
              }),
              0U);
    EXPECT_EQ(copies.back().GetTextView(), longText);
}

/// Texts of a store share blocks, outlive the store, and leave it its block when nobody keeps them.
TEST(Token, ReadingAllocatesByTheBlock) {
    std::u16string text;
    for (int i = 0; i < 10000; ++i)
        text +=
            u"'a text of " + std::u16string(static_cast<std::size_t>(i % 40), u'x') + u"' 1.25 ";
    std::vector<CToken> kept;
    kept.reserve(20000);
    CString_streambuf raw(text);
    const std::size_t keeping = CountAllocations([&] {
        CToken_textstreambuf buffer(&raw, CToken_grammar_default::Get());
        while (buffer.NextToken().GetKind() != TokenKind::Eof)
            kept.push_back(buffer.PeekToken());
    });
    EXPECT_LT(keeping, 100U);
    ASSERT_EQ(kept.size(), 20000U);
    EXPECT_EQ(Show(kept[78]), "SingleQuotedText(a text of " + std::string(39, 'x') + ")");

    CString_streambuf again(text);
    EXPECT_LT(CountAllocations([&] {
                  CToken_textstreambuf buffer(&again, CToken_grammar_default::Get());
                  while (buffer.NextToken().GetKind() != TokenKind::Eof) {
                  }
              }),
              10U);
}

} // namespace
} // namespace io::test
