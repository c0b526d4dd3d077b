// Writing of text tokens: what each operation puts out, and that it reads back.
#include <functional>
#include <limits>

#include <gtest/gtest.h>

#include "delimiter_grammar.h"
#include "token_dump.h"

namespace io::test {
namespace {

using Buffer = CToken_textstreambuf;
using enum TokenKind;

/// What some operations write.
std::string Written(const std::function<void(Buffer&)>& write,
                    StreamEncoding encoding = StreamEncoding::Utf16) {
    CString_streambuf raw;
    CToken_textstreambuf buffer(&raw, CToken_grammar_default::Get());
    buffer.SetEncoding(encoding);
    write(buffer);
    return Show(raw.GetView());
}

std::string WrittenTokens(const std::vector<CToken>& tokens) {
    return Written([&](Buffer& buffer) {
        for (const CToken& token : tokens)
            buffer.WriteToken(token, {});
    });
}

CToken Text(TokenKind kind, std::u16string_view text) {
    return CToken(kind, text);
}

TEST(TokenWrite, SeparatesWhereItMust) {
    const CToken a = Text(Keyword, u"a"), quoted = Text(SingleQuotedText, u"q");
    const CToken one(Int, 1.0), half(Double, 0.5, ".5"), negative(Int, -5.0), eol(Eol);
    const auto symbol = [](char16_t ch) { return CToken(Symbol, {&ch, 1}); };
    const std::pair<std::vector<CToken>, std::string_view> rows[] = {
        {{a, symbol(u'='), one}, "a=1"},
        {{a, symbol(u'('), one, symbol(u','), quoted, symbol(u')')}, "a(1,'q')"},
        {{a, one, a, quoted, quoted, one}, "a 1 a 'q' 'q' 1"},
        {{symbol(u'-'), one}, "- 1"},
        {{symbol(u'-'), negative}, "--5"},
        {{symbol(u'.'), one}, ". 1"},
        {{symbol(u'.'), half}, "..5"},
        {{symbol(u'='), half}, "=.5"},
        {{one, symbol(u'.')}, "1 ."},
        {{one, symbol(u'_')}, "1_"},
        {{a, symbol(u'_')}, "a _"},
        {{a, CToken(WhiteSpace), a, Text(WhiteSpace, u"\t"), one}, "a a{9}1"},
        {{a, Text(Comment, u"!c")}, "a !c"},
        {{a, eol, eol, a}, "a{a}{a}a"},
        {{a, CToken(), a, CToken(Keyword), CToken(True), CToken(False)}, "a a true false"}};
    for (const auto& [tokens, text] : rows)
        EXPECT_EQ(WrittenTokens(tokens), text);
}

TEST(TokenWrite, Words) {
    const struct {
        std::u16string_view text;
        std::string_view asWord, asQuoted;
    } rows[] = {
        {u"abc", "x abc y", "x 'abc' y"},
        {u"12", "x 12 y", "x '12' y"},
        {u"=", "x=y", "x '=' y"},
        {u"two words", "x 'two words' y", "x 'two words' y"},
        {u"it's", "x 'it\\'s' y", "x 'it\\'s' y"},
        {u"a\\b\"", "x 'a\\\\b\"' y", "x 'a\\\\b\"' y"},
        {u"'a b'", "x 'a b' y", "x 'a b' y"},
        {u"\"a b\"", "x \"a b\" y", "x \"a b\" y"},
        {u"'a\\", "x '\\'a\\\\' y", "x '\\'a\\\\' y"},
        {u"a\tb\nc\r\nd\re", "x 'a\\{9}b\\{a}c\\{a}d\\{d}e' y", "x 'a\\{9}b\\{a}c\\{a}d\\{d}e' y"},
        {u"\u0416\u0085", "x '{416}\\{85}' y", "x '{416}\\{85}' y"},
        {u"", "xy", "x '' y"}, // nothing, as if a line had ended
    };
    for (const auto& row : rows) {
        const auto write = [&](auto operation) {
            return Written([&](Buffer& buffer) {
                buffer.WriteWord(u"x");
                (buffer.*operation)(row.text);
                buffer.WriteWord(u"y");
            });
        };
        EXPECT_EQ(write(&Buffer::WriteWord), row.asWord);
        EXPECT_EQ(write(&Buffer::WriteQuoted), row.asQuoted);
    }
    EXPECT_EQ(Written([](Buffer& buffer) {
                  buffer.SetAutoBlank(false);
                  buffer.WriteWord(u"a");
                  buffer.WriteQuoted(u"b 'c");
              }),
              "ab 'c");
    EXPECT_EQ(WrittenTokens({Text(DoubleQuotedText, u"a\"'\n")}), "\"a\\\"'\\{a}\"");
}

TEST(TokenWrite, CData) {
    const std::pair<std::u16string_view, std::string_view> rows[] = {
        {u" a b ", "$begin_cdata$ a b $end_cdata$"},
        {u"a", "$begin_cdata$ a $end_cdata$"},
        {u"(a)", "$begin_cdata$(a) $end_cdata$"},
        {u"_", "$begin_cdata$ _ $end_cdata$"},
        {u"", "$begin_cdata${9}$end_cdata$"},
        {u"\na\n", "$begin_cdata${9}{a}a{a}{9}$end_cdata$"},
        {u"a$END_cdata$-'", "'a$END_cdata$-\\''"}, // CData can't hold its end word
        {u" $end_cdata$", "' $end_cdata$'"},
        {u" $end_cdata$b ", "$begin_cdata$ $end_cdata$b $end_cdata$"}, // this is another word
    };
    for (const auto& [text, written] : rows) {
        CString_streambuf raw;
        CToken_textstreambuf buffer(&raw, CToken_grammar_default::Get());
        buffer.SetEncoding(StreamEncoding::Utf16);
        buffer.PushIndent(1, u'\t');
        buffer.WriteWord(u"x");
        buffer.WriteToken(Text(CData, text), {});
        buffer.WriteWord(u"y");
        EXPECT_EQ(Show(raw.GetView()), "{9}x " + std::string(written) + " y");
        EXPECT_EQ(buffer.GetLine(), 1 + std::count(text.begin(), text.end(), u'\n'));
    }
}

TEST(TokenWrite, LinesIndentsAndComments) {
    EXPECT_EQ(Written([](Buffer& buffer) {
                  buffer.EndLine(false);
                  buffer.WriteWord(u"a");
                  buffer.PushIndent(2, u'.');
                  buffer.EndLine(false);
                  buffer.EndLine(false);
                  buffer.PushIndent(1, u'\t');
                  buffer.WriteWord(u"b");
                  buffer.WriteComment(u"note");
                  EXPECT_EQ(buffer.GetIndentDepth(), 2);
                  EXPECT_EQ(Show(buffer.GetIndent()), "..{9}");
                  buffer.PopIndent();
                  buffer.WriteComment(u"");
                  buffer.PopIndent();
                  buffer.PopIndent();
                  buffer.SetCrLf(true);
                  buffer.EndLine(true);
                  buffer.WriteWord(u"c");
                  EXPECT_EQ(buffer.GetLine(), 5);
                  EXPECT_EQ(buffer.GetWriteCount(), 22U);
              }),
              "a{a}..{9}b ! note{a}..! {a}{d}{a}c");
}

TEST(TokenWrite, Numbers) {
    const double big = 4294967296.0, nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<CToken, std::string_view> rows[] = {
        {CToken(Int, 3.9), "3"},
        {CToken(Short, -32768.0), "-32768"},
        {CToken(Short, 32768.0), "32768"},
        {CToken(UnsignedShort, -1.0), "-1"},
        {CToken(UnsignedLong, 4294967295.0), "4294967295"},
        {CToken(UnsignedLong, big), "4.29497e+09"},
        {CToken(Double, 0.1), "0.1"},
        {CToken(Float, 1234567.0), "1.23457e+06"},
        {CToken(Double, 1.0, "1.000"), "1.000"},
        {CToken(Hex, 31.0), "0x1f"},
        {CToken(Hex, -1.0), "-1"},
        {CToken(Hex, 2147483648.0), "2147483648"}, // more than hexadecimal digits read as
        {CToken(Hex, 171.0, "0xAB"), "0xab"},
        {CToken(Double, infinity), "1e999"},
        {CToken(Int, -infinity), "-1e999"},
        {CToken(Int, nan), "nan"},
        {CToken(Double, -0.0), "-0"}};
    for (const auto& [token, text] : rows)
        EXPECT_EQ(WrittenTokens({token}), text);
}

TEST(TokenWrite, NumberFormats) {
    using std::ios_base;
    const struct {
        std::function<void(Buffer&)> set;
        ios_base::fmtflags flags;
        double number;
        std::string_view asDouble, asInt;
    } rows[] = {
        {[](Buffer&) {}, {}, 255, "255", "255"},
        {[](Buffer& b) { b.SetPrecision(17); }, {}, 0.1, "0.10000000000000001", "0"},
        {[](Buffer& b) { b.SetPrecision(2); }, ios_base::fixed, 1.005, "1.00", "1"},
        {[](Buffer& b) { b.SetPrecision(2); }, ios_base::scientific, 1250, "1.25e+03", "1250"},
        {[](Buffer& b) { b.SetWidth(6); }, {}, -7, "    -7", "    -7"},
        {[](Buffer& b) { b.SetWidth(6), b.SetFill(u'0'); }, {}, 42, "000042", "000042"},
        {[](Buffer& b) { b.SetWidth(6), b.SetFill(u'\u00B7'); }, ios_base::internal, -7,
         "-{b7}{b7}{b7}{b7}7", "-{b7}{b7}{b7}{b7}7"},
        {[](Buffer& b) { b.SetWidth(3); }, ios_base::left | ios_base::showpos, 7, "+7 ", "+7 "},
        {[](Buffer& b) { b.SetHex(true); }, {}, 255, "255", "0xff"},
        {[](Buffer& b) { b.SetHex(true), b.SetWidth(4), b.SetFill(u'0'); }, ios_base::uppercase, -2,
         "00-2", "0xFFFFFFFE"},
        {[](Buffer& b) { b.SetHex(true), b.SetWidth(6); }, ios_base::showbase, 255, "   255",
         "    0xff"},
        {[](Buffer&) {}, ios_base::oct | ios_base::showbase, 8, "8", "010"},
        {[](Buffer&) {}, ios_base::showpoint, 10, "10.0000", "10"},
        {[](Buffer&) {}, ios_base::showpoint, 0, "0.00000", "0"},
        {[](Buffer&) {}, ios_base::showpoint, -0.0025, "-0.00250000", "0"},
        {[](Buffer& b) { b.SetPrecision(0); }, ios_base::showpoint, 4e7, "4.e+07", "40000000"},
        {[](Buffer& b) { b.SetPrecision(0); }, ios_base::showpoint | ios_base::fixed, 7, "7.",
         "7"}};
    for (const auto& row : rows) {
        EXPECT_EQ(Written([&](Buffer& buffer) {
                      row.set(buffer);
                      buffer.WriteDouble(&row.number, row.flags);
                  }),
                  row.asDouble);
        EXPECT_EQ(Written([&](Buffer& buffer) {
                      const int number = static_cast<int>(row.number);
                      row.set(buffer);
                      buffer.WriteInt(&number, row.flags);
                  }),
                  row.asInt);
    }
}

TEST(TokenWrite, Encodings) {
    const auto write = [](Buffer& buffer) { buffer.WriteQuoted(u"\u00E9\u20AC\U0001F600\xD83D."); };
    EXPECT_EQ(Written(write), "'{e9}{20ac}{d83d}{de00}{d83d}.'");
    EXPECT_EQ(Written(write, StreamEncoding::Utf8),
              "'{c3}{a9}{e2}{82}{ac}{f0}{9f}{98}{80}{ef}{bf}{bd}.'");
    std::u16string faces;
    for (int i = 0; i < 300; ++i)
        faces += u"x\U0001F600"; // pairs at every offset of a piece
    CString_streambuf raw;
    CToken_textstreambuf writer(&raw, CToken_grammar_default::Get());
    writer.WriteQuoted(faces);
    EXPECT_EQ(writer.GetWriteCount(), 902U);
    CToken_textstreambuf reader(&raw, CToken_grammar_default::Get());
    EXPECT_EQ(reader.NextToken().GetText(), faces);
}

/// What WriteToken writes reads back as the same tokens.
TEST(TokenWrite, ReadsBack) {
    const std::vector<CToken> tokens{Text(Keyword, u"name"),
                                     CToken(Int, 12.0, "12"),
                                     Text(Symbol, u"-"),
                                     CToken(Double, 0.5, "+.5"),
                                     Text(SingleQuotedText, u""),
                                     Text(Symbol, u"."),
                                     CToken(Double, 0.25, ".25"),
                                     CToken(True, u"true"),
                                     Text(Keyword, u"\u00E9_1"),
                                     Text(Symbol, u"\u0416"),
                                     CToken(Hex, 31.0, "0x1f"),
                                     Text(Symbol, u"_"),
                                     Text(DoubleQuotedText, u"'\\\"\t\n\x80\u20AC\U0001F600!"),
                                     CToken(Eol),
                                     Text(CData, u" $end_cdata "),
                                     CToken(Int, -1.0, "-1"),
                                     CToken(False, u"false"),
                                     CToken(Double, 1.0, "1."),
                                     Text(Symbol, u"."),
                                     Text(SingleQuotedText, u"$")};
    std::string expected;
    for (const CToken& token : tokens)
        expected += (expected.empty() ? "" : " ") + Show(token);
    for (const StreamEncoding encoding : {StreamEncoding::Utf16, StreamEncoding::Utf8}) {
        CString_streambuf raw;
        CToken_textstreambuf buffer(&raw, CToken_grammar_default::Get());
        buffer.SetEncoding(encoding);
        for (const CToken& token : tokens)
            buffer.WriteToken(token, {});
        EXPECT_EQ(ShowTokens(raw.GetView(), {.encoding = encoding}), expected);
    }
}

TEST(TokenWrite, TellsARefusal) {
    Trickle readOnly(u"");
    CToken_textstreambuf buffer(&readOnly, CToken_grammar_default::Get());
    EXPECT_FALSE(buffer.HasFailed());
    buffer.WriteWord(u"a");
    EXPECT_TRUE(buffer.HasFailed());
}

} // namespace
} // namespace io::test
