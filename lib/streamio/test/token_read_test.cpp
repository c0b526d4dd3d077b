// Reading of text tokens: rows of (text, tokens), and the run-wise way against the automaton.
#include <gtest/gtest.h>

#include "delimiter_grammar.h"
#include "token_dump.h"
#include "token_istring.h"

namespace io::test {
namespace {

struct Row {
    std::u16string_view text;
    std::string_view tokens;
};

/// Checks rows when the text is buffered as a whole and when it comes a unit at a time.
template <std::size_t Count>
void CheckRows(const Row (&rows)[Count], const Reading& reading = {}) {
    for (const Row& row : rows) {
        SCOPED_TRACE(Show(row.text));
        EXPECT_EQ(ShowTokens(row.text, reading), row.tokens);
        EXPECT_EQ(ShowTokens(row.text, reading, true), row.tokens);
    }
}

TEST(TokenRead, TokenGrammar) {
    using namespace std::string_view_literals;
    CheckRows(
        {{u"", ""},
         {u"name=1", "Keyword(name) Symbol(=) Int(1|1)"},
         {u"a_b$2 _c \u00E9\u00F7",
          "Keyword(a_b$2) Symbol(_) Keyword(c) Keyword({e9}) Symbol({f7})"},
         {u"\u0416x", "Symbol({416}) Keyword(x)"},
         // line ends
         {u"a\r\nb\rc\n\nd", "Keyword(a) Eol Keyword(b) Eol Keyword(c) Eol Eol Keyword(d)"},
         {u"a\r\r\n\r", "Keyword(a) Eol Eol Eol"},
         {u"a\0b"sv, "Keyword(a) Eol Keyword(b)"},
         {u" \t\f\v\u0001\u00A0a", "Keyword(a)"},
         // comments
         {u"a! no 'token'\nb", "Keyword(a) Eol Keyword(b)"},
         {u"a !end", "Keyword(a)"},
         {u"'a!b'", "SingleQuotedText(a!b)"},
         // numbers
         {u"5 -5 +5 +.5 -.5 .5 5. 0 00 07", "Int(5|5) Int(-5|-5) Int(+5|5) Double(+.5|0.5) "
                                            "Double(-.5|-0.5) Double(.5|0.5) Double(5.|5) Int(0|0) "
                                            "Int(00|0) Int(07|7)"},
         {u"1e5 1E-5 1.5e+10 0e0", "Double(1e5|1e+05) Double(1E-5|1e-05) "
                                   "Double(1.5e+10|1.5e+10) Double(0e0|0)"},
         {u"1e 1ex 1e+ 1e+x 1.5e-", "Double(1|1) Keyword(e) Double(1|1) Keyword(ex) Double(1|1) "
                                    "Keyword(e) Symbol(+) Double(1|1) Keyword(e) Symbol(+) "
                                    "Keyword(x) Double(1.5|1.5) Keyword(e) Symbol(-)"},
         {u"+ +. -x . .x 1-2", "Symbol(+) Symbol(+) Symbol(.) Symbol(-) Keyword(x) Symbol(.) "
                               "Symbol(.) Keyword(x) Int(1|1) Int(-2|-2)"},
         {u"1.2.3 1..2 12ab", "Double(1.2|1.2) Double(.3|0.3) Double(1.|1) Double(.2|0.2) "
                              "Int(12|12) Keyword(ab)"},
         {u"-0 -0.0", "Int(-0|-0) Double(-0.0|-0)"},
         {u"0x1f 0x1F 0X1 0x 0xg -0x1 0xffffffff",
          "Hex(0x1f|31) Hex(0x1|1) Keyword(F) Int(0|0) Keyword(X1) Short(0|0) Keyword(x) "
          "Short(0|0) Keyword(xg) Int(-0|-0) Keyword(x1) Hex(0xffffffff|2147483647)"},
         {u"123456789012 1234567890123 0.1234567890123456789",
          "Int(123456789012|123456789012) Int(1234567890123|1234567890123) "
          "Double(0.1234567890123456789|0.12345678901234568)"},
         {u"12345678901234567890123 9007199254740993 1e22 1e23 123e-25 4.9e-324",
          "Int(12345678901234567890123|1.2345678901234568e+22) "
          "Int(9007199254740993|9007199254740992) Double(1e22|1e+22) Double(1e23|1e+23) "
          "Double(123e-25|1.23e-23) Double(4.9e-324|5e-324)"},
         {u"1e999 -1e999 1e-999 0.0001e400 1e9223372036854775807 1e99999999999999999999 0e99999",
          "Double(1e999|inf) Double(-1e999|-inf) Double(1e-999|0) Double(0.0001e400|inf) "
          "Double(1e9223372036854775807|inf) "
          "Double(1e99999999999999999999|inf) Double(0e99999|0)"},
         // quoted text
         {u"'' \"\" 'a b' \"a'b\" 'a''b'",
          "SingleQuotedText() DoubleQuotedText() SingleQuotedText(a b) DoubleQuotedText(a'b) "
          "SingleQuotedText(a) SingleQuotedText(b)"},
         {u"'\\a\\b\\f\\n\\r\\t\\v\\0\\\\\\'\\x\\\u0416'",
          "SingleQuotedText({7}{8}{c}{a}{d}{9}{b}{0}\\'x{416})"},
         {u"'a\\\nb\\\r\nc\\\rd\\\r'", "SingleQuotedText(a{a}b{a}c{a}d{a})"},
         {u"'a\\\r\\n' \"a\\\r\\\"\"", "SingleQuotedText(a{a}{a}) DoubleQuotedText(a{a}\")"},
         {u"'open\nnext \"open\r\nx", "SingleQuotedText(open) Eol Keyword(next) "
                                      "DoubleQuotedText(open) Eol Keyword(x)"},
         {u"'open", "SingleQuotedText(open)"},
         {u"'open\\", "SingleQuotedText(open)"},
         {u"'a\0b'"sv, "SingleQuotedText(a) Eol Keyword(b) SingleQuotedText()"},
         {u"'a\\\0b'"sv, "SingleQuotedText(a{0}b)"},
         {u"'\u0416\U0001F600\u0085'", "SingleQuotedText({416}{d83d}{de00}{85})"},
         // words
         {u"true FALSE tRuE truex fals", "True(true) False(FALSE) True(tRuE) Keyword(truex) "
                                         "Keyword(fals)"},
         // CData
         {u"$begin_cdata$ a 'b\n!c $end_cdata$ d", "CData( a 'b{a}!c ) Keyword(d)"},
         {u"$BEGIN_cdata$ $END_Cdata$,", "CData( ) Symbol(,)"},
         {u"$begin_cdata$(a$end_cdat$end_cdata$", "CData((a$end_cdat$end_cdata$)"},
         {u"$begin_cdata$a$end_cdata$", "Keyword($begin_cdata$a$end_cdata$)"},
         {u"$begin_cdata$ a$end $end_cdata$", "CData( a$end )"},
         {u"$begin_cdata$ a$$end_cdata$", "CData( a$$end_cdata$)"},
         {u"$begin_cdata$ $end_cdata$x $end_cdata$", "CData( $end_cdata$x )"},
         {u"$begin_cdata$\r\nb", "CData({d}{a}b)"},
         {u"$begin_cdata$ $end_c", "CData( $end_c)"},
         {u"$begin_cdata$", "CData()"},
         {u"$begin_cdata", "Keyword($begin_cdata)"},
         // the end of input as a unit
         {u"a\uFFFFb", "Keyword(a) Symbol({fffd}) Keyword(b)"},
         {u"'a\uFFFFb' !\uFFFF\nc", "SingleQuotedText(a{fffd}b) Eol Keyword(c)"}});
}

TEST(TokenRead, KeptTokens) {
    CheckRows({{u"a \t! b\r\n!c", "Keyword(a) WhiteSpace( {9}) Comment(! b) Eol Comment(!c)"}},
              {.keepComments = true, .keepWhiteSpace = true});
    CheckRows({{u"a ! b\n c", "Keyword(a) Comment(! b) Eol Keyword(c)"}}, {.keepComments = true});
    CheckRows({{u"1 0x2 TRUE 3.0", "Int(|1) Hex(|2) True Double(|3)"}}, {.keepText = false});
}

TEST(TokenRead, CaseModes) {
    const std::u16string_view text =
        u"aB\u00C9\u00E9 'aB' 0xab 1e5 tRue $Begin_CData$ x$END_cdata$";
    for (const auto& [mode, tokens] :
         {std::pair(CaseMode::Upper, "Keyword(AB{c9}{c9}) SingleQuotedText(aB) Hex(0xAB|171) "
                                     "Double(1e5|1e+05) True(TRUE) CData( x)"),
          std::pair(CaseMode::Lower, "Keyword(ab{e9}{e9}) SingleQuotedText(aB) Hex(0xab|171) "
                                     "Double(1e5|1e+05) True(true) CData( x)"),
          std::pair(CaseMode::Sensitive, "Keyword(aB{c9}{e9}) SingleQuotedText(aB) "
                                         "Hex(0xab|171) Double(1e5|1e+05) True(tRue) CData( x)")}) {
        CheckRows({{text, tokens}}, {.caseMode = mode});
    }
    for (const auto& [mode, word] : {std::pair(0, u"\u042F\u03A3\u00FF\u00B5"), // no Latin-1 form
                                     std::pair(1, u"\u044F\u03C2\u00FF\u00B5")}) {
        CToken_istring words(u"x \u044F\u03C2\u00FF\u00B5", u","); // x is read ahead
        words.SetCaseMode(mode);
        words.Next();
        EXPECT_TRUE(words.IsValue(word)) << mode;
    }
}

TEST(TokenRead, DelimiterGrammar) {
    const Reading reading{.grammar = &CDelimiter_grammar_default::Get()};
    CheckRows(
        {{u"1.5kg 1.5 x=y,(z)", "Keyword(1.5kg) Double(1.5|1.5) Keyword(x) Symbol(=) Keyword(y) "
                                "Symbol(,) Symbol(() Keyword(z) Symbol())"},
         {u"/a/b.c \u0416+1 -5 -x - + . +. -.", "Keyword(/a/b.c) Keyword({416}+1) Int(-5|-5) "
                                                "Keyword(-x) Symbol(-) Symbol(+) Symbol(.) "
                                                "Keyword(+.) Keyword(-.)"},
         {u"1e 1e5 1e+ 1e+5 1e5x .5. 0x1f 00", "Keyword(1e) Double(1e5|1e+05) Keyword(1e+) "
                                               "Double(1e+5|1e+05) Keyword(1e5x) Keyword(.5.) "
                                               "Keyword(0x1f) Int(00|0)"},
         {u"# $ true \\ 'a b'!c", "Symbol(#) Symbol($) True(true) Symbol(\\) "
                                  "SingleQuotedText(a b)"},
         {u"1\u04162 '\u0416'", "Keyword(1{416}2) SingleQuotedText({416})"}},
        reading);
    CDelimiter_grammar colons(u":\u0416");
    CheckRows({{u"a:b\u0416!c", "Keyword(a) Symbol(:) Keyword(b) Symbol({416}) Keyword(!c)"}},
              {.grammar = &colons});
}

TEST(TokenRead, Utf8) {
    // bytes, one a unit
    CheckRows(
        {{u"'\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80'", "SingleQuotedText({e9}{20ac}{d83d}{de00})"},
         {u"\xC3\xA9t\xC3\xA9=\xC2\xB5", "Keyword({e9}t{e9}) Symbol(=) Keyword({b5})"},
         {u"a\xC2\xA0\x62 !\xC3\xA9\n\xC2\x85", "Keyword(a) Keyword(b) Eol"},
         {u"'a\x80\xFF'", "SingleQuotedText(a{80}{ff})"}, // no lead: a character of its own
         {u"'a\xC3' x", "SingleQuotedText(a) Eol SingleQuotedText( x)"},
         {u"'\\\xC3' x", "SingleQuotedText({0}) Keyword(x)"},
         {u"a\xE2\x82", "Keyword(a) Eol"},
         {u"a\xC3\xA9\xA9z", "Keyword(a) Eol Keyword(z)"},     // one too many
         {u"a\xC0\x80z", "Keyword(a) Eol Keyword(z)"},         // overlong
         {u"a\xED\xA0\x80z", "Keyword(a) Eol Keyword(z)"},     // a surrogate
         {u"a\xF4\x90\x80\x80z", "Keyword(a) Eol Keyword(z)"}, // beyond U+10FFFF
         {u"\r\xC3z", "Eol Keyword(z)"},                       // CR and what acts as LF
         {u"'\xEF\xBF\xBF'", "SingleQuotedText({fffd})"},
         {u"\xF0\x9F\x98\x80", "Symbol({d83d}) Symbol({de00})"},
         {u"1\xC3\xA9", "Int(1|1) Keyword({e9})"}},
        {.encoding = StreamEncoding::Utf8});
}

/// The grammar's words extended beyond 8 bits.
TEST(TokenRead, ExtendedGrammar) {
    CToken_grammar grammar;
    grammar.AddCommentChars(u"#");
    grammar.AddIdentStartChars(u"\u0416_");
    grammar.AddIdentChars(u"\u0416-");
    grammar.RemoveIdentStartChars(u"z");
    CheckRows({{u"\u0416a-\u0416 _x! z #c", "Keyword({416}a-{416}) Keyword(_x) Symbol(!) "
                                            "Symbol(z)"}},
              {.grammar = &grammar});
    grammar.RemoveCommentChars(u"#");
    CheckRows({{u"#c", "Symbol(#) Keyword(c)"}}, {.grammar = &grammar});
}

/// Counts through all texts of a length over an alphabet.
template <class Work>
void ForAllTexts(std::u16string_view alphabet, std::size_t length, Work work) {
    std::vector<std::size_t> digits(length);
    std::u16string text(length, alphabet[0]);
    for (std::size_t place = 0; place < length;) {
        work(text);
        for (place = 0; place < length; ++place) {
            digits[place] = (digits[place] + 1) % alphabet.size();
            text[place] = alphabet[digits[place]];
            if (digits[place] != 0)
                break;
        }
    }
}

/// Runs and automaton read the same, whatever characters that matter stand side by side.
TEST(TokenRead, RunsReadAsTheAutomatonDoes) {
    std::size_t count = 0;
    const auto check = [&](const std::u16string& text) {
        for (CBase_grammar* const grammar :
             {static_cast<CBase_grammar*>(&CToken_grammar_default::Get()),
              static_cast<CBase_grammar*>(&CDelimiter_grammar_default::Get())}) {
            const Reading reading{.grammar = grammar};
            ASSERT_EQ(ShowTokens(text, reading), ShowTokens(text, reading, true)) << Show(text);
        }
        ++count;
    };
    for (std::size_t length = 1; length <= 3; ++length)
        ForAllTexts(u"1.e-+0xat'\\ \n\r!\"$\u00E9\u0416,", length, check);
    ForAllTexts(u"10.e-'\\\r\na", 4, check);
    EXPECT_EQ(count, 20U + 20 * 20 + 20 * 20 * 20 + 10 * 10 * 10 * 10);
}

} // namespace
} // namespace io::test
