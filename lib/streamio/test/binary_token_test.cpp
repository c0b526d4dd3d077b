// The binary form: rows of (token, units) both ways, and what faulty units read as.
#include <functional>

#include <gtest/gtest.h>

#include "assertion.h"
#include "token_binarystreambuf.h"
#include "token_dump.h"

namespace io::test {
namespace {

using Buffer = CToken_binarystreambuf;
using Units = std::u16string;
using enum TokenKind;

Units Written(const std::function<void(Buffer&)>& write) {
    CString_streambuf raw;
    Buffer buffer(&raw);
    write(buffer);
    return Units(raw.GetView());
}

/// The tokens of some units, buffered as a whole or not at all.
std::string ShowUnits(const Units& units, bool keepAll = true, bool isTrickled = false) {
    const std::unique_ptr<CRawStreambuf> raw =
        isTrickled ? std::unique_ptr<CRawStreambuf>(new Trickle(units))
                   : std::make_unique<CString_streambuf>(units);
    Buffer buffer(raw.get());
    buffer.SetKeepComments(keepAll);
    buffer.SetKeepWhiteSpace(keepAll);
    return ShowAll(buffer);
}

TEST(BinaryToken, ShortestForms) {
    const double zero = 0, one = 1, half = 0.5, third = 1.0 / 3, minusZero = -0.0;
    const float floatHalf = 0.5F;
    const unsigned u0 = 0, u5 = 5, u70000 = 70000;
    const int i256 = 256, minusOne = -1;
    const short minusFive = -5;
    const unsigned short u16 = 0x1234;
    const long large = 5000000000, minus = -5;
    const bool yes = true;
    const std::tuple<std::function<void(Buffer&)>, Units, std::string_view> rows[] = {
        {[&](Buffer& b) { b.WriteUnsignedInt(&u0, {}); }, {61, 0}, "UnsignedShort(|0)"},
        {[&](Buffer& b) { b.WriteInt(&i256, {}); }, {71, 0, 1}, "Short(|256)"},
        {[&](Buffer& b) { b.WriteUnsignedInt(&u70000, {}); },
         {63, 0x70, 0x11, 1},
         "UnsignedInt(|70000)"},
        {[&](Buffer& b) { b.WriteInt(&minusOne, {}); }, {73, 0xFF, 0xFF, 0xFF, 0xFF}, "Int(|-1)"},
        {[&](Buffer& b) { b.WriteLong(&minus, {}); }, {73, 0xFB, 0xFF, 0xFF, 0xFF}, "Int(|-5)"},
        {[&](Buffer& b) { b.WriteShort(&minusFive, {}); }, {71, 0xFB, 0xFF}, "Short(|65531)"},
        {[&](Buffer& b) { b.WriteUnsignedShort(&u16, {}); },
         {62, 0x34, 0x12},
         "UnsignedShort(|4660)"},
        {[&](Buffer& b) { b.WriteLong(&large, {}); },
         {83, 0x20, 0x5F, 0xA0, 0xF2, 0x41},
         "Double(|5e+09)"},
        {[&](Buffer& b) { b.WriteDouble(&one, {}); }, {80, 0xF0, 0x3F}, "Float(|1)"},
        {[&](Buffer& b) { b.WriteDouble(&half, {}); }, {80, 0xE0, 0x3F}, "Float(|0.5)"},
        {[&](Buffer& b) { b.WriteDouble(&zero, {}); }, {79, 0}, "Float(|0)"},
        {[&](Buffer& b) { b.WriteDouble(&minusZero, {}); }, {79, 0x80}, "Float(|-0)"},
        {[&](Buffer& b) { b.WriteDouble(&third, {}); },
         {86, 0x55, 0x55, 0x55, 0x55, 0x55, 0x55, 0xD5, 0x3F},
         "Double(|0.3333333333333333)"},
        {[&](Buffer& b) { b.WriteFloat(&floatHalf, {}); }, {79, 0x3F}, "Float(|3.0517578125e-05)"},
        {[&](Buffer& b) { b.SetWidth(12), b.WriteUnsignedInt(&u5, {}); },
         {64, 5, 0, 0, 0},
         "UnsignedInt(|5)"},
        {[&](Buffer& b) { b.SetWidth(1), b.WriteDouble(&one, {}); },
         {86, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F},
         "Double(|1)"},
        {[&](Buffer& b) { b.WriteQuoted(u"a"); }, {13, 1, 0x61}, "SingleQuotedText(a)"},
        {[&](Buffer& b) { b.WriteQuoted(u""); }, {13, 0}, "SingleQuotedText()"},
        {[&](Buffer& b) { b.WriteKeyword(u"\u20AC"); },
         {12, 3, 0xE2, 0x82, 0xAC},
         "Keyword({20ac})"},
        {[&](Buffer& b) { b.WriteComment(u"c"); }, {17, 1, 0x63}, "Comment(c)"},
        {[&](Buffer& b) { b.WriteSymbol(u'='); }, {18, 0x3D}, "Symbol(=)"},
        {[&](Buffer& b) { b.WriteSymbol(0xE9); }, {0x92, 2, 0, 0, 0, 0xC3, 0xA9}, "Symbol({e9})"},
        {[&](Buffer& b) { b.WriteBool(&yes); }, {10}, "True"},
        {[&](Buffer& b) { b.WriteWord(u"5"), b.WriteWord(u" \t"), b.WriteWord({}); },
         {13, 1, 0x35},
         "SingleQuotedText(5)"},
        {[&](Buffer& b) { b.SetKeepWhiteSpace(true), b.WriteChar(u' '); },
         {16, 1, 0x20},
         "WhiteSpace( )"},
        {[&](Buffer& b) { b.EndLine(false), b.EndLine(true), b.EndLine(false), b.EndLine(true); },
         {19, 19},
         "Eol Eol"},
        {[&](Buffer& b) { b.WriteHeader(); }, {0}, "Null"}};
    for (const auto& [write, wantedUnits, tokens] : rows) {
        const Units units = Written(write);
        EXPECT_EQ(Show(units), Show(wantedUnits)) << tokens;
        EXPECT_EQ(ShowUnits(units), tokens);
        EXPECT_EQ(ShowUnits(units, true, true), tokens);
    }
}

TEST(BinaryToken, WholeTokens) {
    const Units text255(255, u'x'), text256(256, u'x');
    const struct {
        CToken token;
        Units head; ///< what it begins with
        unsigned size;
    } rows[] = {{CToken(Int, 5.0), {80, 0x14, 0x40}, 3},
                {CToken(Hex, 0.0), {79, 0}, 2},
                {CToken(True), {10}, 1},
                {CToken(False), {11}, 1},
                {CToken(Symbol, u"("), {18, u'('}, 3},
                {CToken(Symbol, u"\U0001F600"), {0x92, 4, 0, 0, 0, 0xF0}, 6},
                {CToken(Keyword, text255), {12, 255, u'x'}, 257},
                {CToken(CData, text256), {0x8F, 0, 1, 0, 0, u'x'}, 261},
                {CToken(DoubleQuotedText, u"\u00E9"), {14, 2, 0xC3}, 4},
                {CToken(SingleQuotedText), {13, 0}, 1},
                {CToken(Eol), {19}, 1},
                {CToken(), {}, 1},
                {CToken(Eof), {}, 1},
                {CToken(Error), {}, 1}};
    for (const auto& row : rows) {
        const Units units = Written([&](Buffer& buffer) { buffer.WriteToken(row.token, {}); });
        EXPECT_EQ(Show(units.substr(0, row.head.size())), Show(row.head)) << Show(row.token);
        EXPECT_EQ(units.empty(), row.head.empty());
        EXPECT_EQ(Buffer::GetBinarySize(row.token), row.size) << Show(row.token);
        if (row.token.IsText()) {
            EXPECT_EQ(ShowUnits(units), Show(row.token));
            EXPECT_EQ(ShowUnits(units, true, true), Show(row.token));
        }
    }
}

TEST(BinaryToken, FaultyInput) {
    const std::pair<Units, std::string_view> rows[] = {
        {{1, 9, 22, 59, 60, 69, 78, 87, 0x7F},
         "Error Error Error Error Error Error Error Error Error"},
        {{0x100 | 13, 0}, "Error Null"}, // no unit of a byte
        {{0x80, 0x8A, 0x93, 0x80 | 61, 7}, "Null True Eol UnsignedShort(|7)"},
        {{19, 20, 10}, "Eol"},
        {{19, 0x94, 10}, "Eol"},
        {{65, 1, 2, 3, 4, 5, 10}, "UnsignedLong(|0) True"},
        {{77, 1, 2, 3, 4, 5, 6, 7, 8, 10}, "Long(|0) True"},
        {{13, 2, 0xC3, 0x28, 10}, "Null True"},
        {{13, 3, 0xED, 0xA0, 0x80, 10}, "Null True"},
        {{13, 3, 0xEF, 0xBF, 0xBF, 10}, "SingleQuotedText({fffd}) True"},
        {{13, 5, u'a'}, "Null"},
        {{13}, "Null"},
        {{0x8D, 0xFF, 0xFF, 0xFF, 0xFF, u'a'}, "Null"}, // 4 GB that aren't there
        {{0x8D, 1}, "Null"},
        {{18}, "Symbol({ff})"},
        {{0x92, 2, 0, 0, 0, u'a', u'b'}, "Symbol(ab)"},
        {{64, 1, 2}, "UnsignedInt(|4294902273)"},
        {{73, 1}, "Int(|-255)"},
        {{80, 0xF0}, "Float(|-inf)"},
        {{0x8D, 0, 0, 0, 0, 10}, "SingleQuotedText() True"}};
    for (const auto& [units, tokens] : rows) {
        EXPECT_EQ(ShowUnits(units), tokens) << Show(units);
        EXPECT_EQ(ShowUnits(units, true, true), tokens) << Show(units);
    }
    EXPECT_EQ(ShowUnits({17, 1, u'c', 16, 1, u' ', 10, 17, 9, u'c'}, false), "True Null");
}

/// However a stream is cut off, the tokens ahead of the cut are there, then at most one more.
TEST(BinaryToken, TruncationAtEveryUnit) {
    std::vector<std::size_t> ends{0};
    Units units;
    const std::u16string longText(300, u'\u00E9');
    for (const CToken& token :
         {CToken(Keyword, u"name"), CToken(Symbol, u"="), CToken(Double, 0.1), CToken(Eol),
          CToken(SingleQuotedText, u"\u20AC\U0001F600"), CToken(True), CToken(CData, longText),
          CToken(Symbol, u"\u0416"), CToken(SingleQuotedText), CToken(Int, -7.0)}) {
        units += Written([&](Buffer& buffer) { buffer.WriteToken(token, {}); });
        ends.push_back(units.size());
    }
    for (std::size_t size = 0; size <= units.size(); ++size) {
        CString_streambuf raw(units.substr(0, size));
        Buffer buffer(&raw);
        std::size_t count = 0;
        while (buffer.NextToken().GetKind() != Eof)
            ++count;
        const auto whole = std::upper_bound(ends.begin(), ends.end(), size) - ends.begin() - 1;
        const bool isCut = ends[static_cast<std::size_t>(whole)] != size;
        EXPECT_EQ(count, static_cast<std::size_t>(whole) + (isCut ? 1 : 0)) << size;
    }
}

TEST(BinaryToken, Lines) {
    CString_streambuf raw(Units{12, 1, u'a', 10, 19, 12, 1, u'b', 19, 19, 12, 1, u'c'});
    Buffer buffer(&raw);
    buffer.NewLine(); // nothing has been read yet
    EXPECT_EQ(Show(buffer.PeekToken()), "Keyword(b)");
    EXPECT_EQ(buffer.GetTokenLine(), 2);
    AString line(u"x");
    buffer.NewLine(line);
    EXPECT_TRUE(line.empty());
    EXPECT_EQ(Show(buffer.PeekToken()), "Eol");
    EXPECT_EQ(buffer.GetTokenLine(), 3);
    buffer.NewLine();
    EXPECT_EQ(Show(buffer.PeekToken()), "Keyword(c)");
    buffer.NewLine();
    EXPECT_EQ(Show(buffer.PeekToken()), "Eof");
}

} // namespace
} // namespace io::test
