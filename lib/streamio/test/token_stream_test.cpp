// Token streams: tests, reads, searches, operators, manipulators, positions.

#include <filesystem>

#include <gtest/gtest.h>

#include "block_dump.h"
#include "named_value_manip.h"
#include "stream_operators.h"
#include "token_ifile.h"
#include "token_istring.h"
#include "token_ofile.h"
#include "token_ostring.h"

namespace io {
namespace {

/// The tests that hold at the first token of a text, by name.
std::string Holds(const char16_t* text) {
    CToken_istring in{AString(text)};
    const std::pair<const char*, bool> tests[] = {
        {"eol", in.IsEol()},       {"keyword", in.IsKeyword()}, {"word", in.IsKeyword(u"WORD")},
        {"value", in.IsValue()},   {"v=5", in.IsValue(u"5")},   {"comment", in.IsComment()},
        {"symbol", in.IsSymbol()}, {"(", in.IsSymbol(u'(')},    {"number", in.IsNumber()},
        {"5", in.IsNumber(5)},     {"begin", in.IsBegin()},     {"begin A", in.IsBegin(u"a")},
        {"end", in.IsEnd()},       {"end A", in.IsEnd(u"a")},   {"eof", in.IsAtEof()}};
    std::string names;
    for (const auto& [name, holds] : tests)
        names += holds ? std::string(names.empty() ? "" : ", ") + name : "";
    return names;
}

TEST(Token_istream, TestsLookAtTheCurrentToken) {
    const std::pair<const char16_t*, const char*> rows[] = {
        {u"", "eof"},
        {u"word", "keyword, word, value"},
        {u"\n\nword", "eol, keyword, word, value"},
        {u"5", "value, v=5, number, 5"},
        {u"'5'", "value, v=5"},
        {u"''", "value"},
        {u"(", "value, symbol, ("},
        {u"true", "value"},
        {u"$begin 'A'", "keyword, value, begin, begin A"},
        {u"$BEGIN\n5", "keyword, value, begin"},
        {u"$begin", "keyword, value"},
        {u"$end A", "keyword, value, end, end A"},
        {u"$end", "keyword, value, end"}};
    for (const auto& [text, holds] : rows)
        EXPECT_EQ(Holds(text), holds) << AString(text).ToCString();
}

TEST(Token_istream, ReadsConsumeOrFail) {
    CToken_istring in(u"word 'two words' 5 -1.9 true ( $begin 'A' $end 'B' last\n");
    AString text;
    int number = 0;
    unsigned short small = 9;
    bool flag = false;
    double real = 0;
    EXPECT_TRUE(in.ReadKeyword(u"Word") && in.Read(text));
    EXPECT_EQ(text, u"two words");
    EXPECT_FALSE(in.Read(flag));
    EXPECT_FALSE(in.Good() || in.Read(number) || in.IsNumber()); // nothing works until Clear
    in.Clear();
    EXPECT_TRUE(in.Read(number) && number == 5);
    EXPECT_FALSE(in.Read(small));
    EXPECT_FALSE(in.SetStopOnFail(false) ? false : true);
    EXPECT_TRUE(in.Read(number) && number == -1); // good again by itself
    EXPECT_FALSE(in.SetSkipOnFail(true));
    EXPECT_FALSE(in.Read(real)); // steps over true
    EXPECT_TRUE(in.ReadSymbol(u'(') && in.ReadBegin(text) && in.GetLevel() == 1);
    EXPECT_EQ(text, u"A");
    EXPECT_TRUE(in.ReadEnd(text) && in.GetLevel() == 0);
    EXPECT_EQ(text, u"B");
    CToken token;
    EXPECT_TRUE(in.Read(token) && in.Read(token));
    EXPECT_EQ(token.GetKind(), TokenKind::Eol);
    EXPECT_TRUE(in.Eof() && in.IsAtEof() && !in.ReadEol());
}

TEST(Token_istream, LinesAreReadAndSkipped) {
    CToken_istring in(u"a b 'c'\nd e\n\nf");
    AString line;
    EXPECT_TRUE(in.ReadKeyword(line) && in.ReadLine(line));
    EXPECT_EQ(line, u"b 'c'");
    EXPECT_EQ(in.GetLine(), 2);
    in.SkipLine();
    EXPECT_TRUE(in.IsEol());
    in.SkipLine();
    EXPECT_TRUE(in.IsKeyword(u"f"));
    in.PushBack(CToken(TokenKind::Int, 5));
    EXPECT_TRUE(in.IsNumber(5));
    in.SkipLine();
    EXPECT_TRUE(in.IsAtEof());
}

TEST(Token_istream, FindsForward) {
    const AString text(
        u"x=1 $begin 'A' $begin 'B' k $end 'B' $end 'A' 'B' $begin 'B' $end 'B' $end k +");
    const struct {
        bool (*find)(CToken_istring&);
        bool isFound;
        const char* current;
    } rows[] = {
        {[](CToken_istring& in) { return in.FindKeyword(u"K"); }, true, "k"},
        {[](CToken_istring& in) { return in.FindSymbol(u'+'); }, true, "Symbol +"},
        {[](CToken_istring& in) { return in.FindValue(u"1"); }, true, "1i"},
        {[](CToken_istring& in) { return in.FindValue(u"none"); }, false, "x"},
        {[](CToken_istring& in) { return in.FindKeywordAtLineStart(u"k"); }, false, "x"},
        {[](CToken_istring& in) { return in.FindBegin(u"a"); }, true, "$begin"},
        {[](CToken_istring& in) { return in.FindBegin(u"B"); }, true, "$begin"}, // the outer one
        {[](CToken_istring& in) { return in.FindBegin(u"C"); }, false, "x"},
        {[](CToken_istring& in) {
             return in.FindBegin(u"A") && in.ReadBegin() && in.FindEnd(u"A");
         },
         true, "$end"}};
    for (const auto& row : rows) {
        CToken_istring in(text);
        EXPECT_EQ(row.find(in), row.isFound);
        EXPECT_EQ(in.Good(), row.isFound);
        in.Clear();
        EXPECT_EQ(DumpToken(in.PeekToken()), row.current);
    }
    CToken_istring outer(text);
    outer.FindBegin(u"B");
    EXPECT_TRUE(outer.ReadBegin() && outer.ReadEnd(u"B") && outer.IsEnd(u"k"));
}

TEST(Token_istream, BlockWordsMustBeOneToken) {
    CToken_istring in(u"{ A } A");
    EXPECT_FALSE(in.SetBeginWord(u"two words") || in.SetBeginWord(u"5") || in.SetEndWord(u"'q'"));
    EXPECT_TRUE(in.SetBeginWord(u"{") && in.SetEndWord(u"}"));
    EXPECT_TRUE(in.ReadBegin(u"a") && in.ReadEnd(u"a") && in.IsAtEof());
    EXPECT_FALSE(in.ReadEnd());
}

TEST(Token_istream, GoesBackToAPosition) {
    CToken_istring in(u"a 'b' $begin\n\n'A' 5 6\nrest");
    in.ReadKeyword(u"a");
    const CAbstract_stream_pos pos = in.Tell();
    for (int round = 0; round < 2; ++round) {
        AString text;
        EXPECT_TRUE(in.Read(text) && in.ReadBegin(u"A") && in.IsNumber(5));
        EXPECT_EQ(in.GetLine(), 3);
        EXPECT_EQ(in.GetLevel(), 1u);
        EXPECT_TRUE(in.Seek(pos));
    }
    EXPECT_FALSE(in.Seek(CAbstract_stream_pos(1000)));
    EXPECT_FALSE(in.Seek(CAbstract_stream_pos()));
    EXPECT_TRUE(in.IsValue(u"b"));
}

TEST(Stream_operators, WriteAndReadBack) {
    CToken_ostring out;
    const CBlock_named_value named(AString("n"), 7);
    out << static_cast<const char16_t*>(nullptr) << 5 << -1.5 << true << AString("two words")
        << u'(' << u"word" << EndLine << named << NewLine
        << CToken(TokenKind::DoubleQuotedText, u"d");
    EXPECT_EQ(out.GetView(), u"5 -1.5 true 'two words'(word\nn=7\n\"d\"");
    AString text;
    out.GetString(text);
    CToken_istring in(text);
    int number = 0, seven = 0;
    double real = 0;
    bool flag = false;
    AString words, word, d;
    CNamed_value_manip<int> read(CBlock_named_value(AString("N")), &seven);
    in >> number >> real >> flag >> words >> u'(' >> word >> ReadEol >> read >> SkipLine >> d;
    EXPECT_TRUE(in.Good());
    EXPECT_EQ(number + real + (flag ? 100 : 0) + seven, 110.5);
    EXPECT_EQ(words + word + d, u"two wordswordd");
}

TEST(Named_value_manip, FailsWithoutLosingAToken) {
    const struct {
        const char16_t* text;
        bool isRead, isTested; ///< into an int; without a destination, against 5
    } rows[] = {{u"x=5", true, true},     {u"X = 5", true, true}, {u"x=6", true, false},
                {u"x='5'", false, false}, {u"x=+", false, false}, {u"x 5", false, false},
                {u"y=5", false, false},   {u"", false, false}};
    const CBlock_named_value five(AString("x"), 5.0);
    for (const auto& row : rows) {
        int number = 0;
        CToken_istring first{AString(row.text)}, second{AString(row.text)};
        first >> CNamed_value_manip<int>(five, &number);
        second >> CNamed_value_manip<int>(five);
        EXPECT_EQ(first.Good(), row.isRead);
        EXPECT_EQ(second.Good(), row.isTested);
        CToken_istring fresh{AString(row.text)};
        second.Clear();
        for (CToken a, b; !row.isTested && a.GetKind() != TokenKind::Eof;) {
            second.Read(a), fresh.Read(b);
            EXPECT_EQ(a, b) << AString(row.text).ToCString();
        }
    }
    char16_t room[16];
    char16_t* target = room;
    CToken_istring in(u"b=TRUE t='text'");
    in >> CNamed_value_manip<bool>(CBlock_named_value(AString("b"), true)) >>
        CNamed_value_manip<char16_t*>(CBlock_named_value(AString("t")), &target);
    EXPECT_EQ(AString(room), u"text");
}

TEST(Token_ostream, WritesLevelsAndRawText) {
    CToken_ostring out;
    out.WriteComment(u"head");
    out.BeginBlock(AString("A"));
    out.SetIndentWidth(2);
    out.SetIndentChar(u' ');
    out.BeginBlock();
    out.WriteRaw(u"raw text");
    out.EndBlock();
    out.WriteRawLine(u"=line");
    out.EndBlock(AString("A"));
    out.PopLevel();
    EXPECT_EQ(out.GetView(),
              u"! head\n$begin 'A'\n\t$begin\n\t  raw text\n\t$end\n=line\n$end 'A'\n");
    EXPECT_EQ(out.GetLine(), 8);
}

TEST(Token_files, HoldUtf8AndTellFailures) {
    const std::string path = testing::TempDir() + "token_stream_test.blk";
    for (const unsigned flags : {0u, unsigned{kBinary}}) {
        {
            CToken_ofile out(path, flags);
            out << AString(u"\u00E9\u20AC\U0001F600 x") << 1.5;
            out.Close();
            EXPECT_TRUE(out.Good());
        }
        CToken_ifile in(path);
        AString text;
        double number = 0;
        EXPECT_EQ(in.IsBinary(), flags != 0);
        EXPECT_TRUE(in.Read(text) && in.Read(number) && in.IsAtEof());
        EXPECT_EQ(text, u"\u00E9\u20AC\U0001F600 x");
    }
    std::filesystem::remove(path);
    CToken_ifile none(path);
    EXPECT_FALSE(none.Good() || none.IsOpen());
    CToken_ifile directory(testing::TempDir());
    EXPECT_TRUE(directory.Fail() && directory.Bad() && directory.Eof());
    CToken_ofile nowhere(path + "/none/x");
    nowhere << 5;
    nowhere.Close();
    EXPECT_TRUE(nowhere.Fail());
    CToken_ofile full("/dev/full");
    for (int i = 0; i < 100000; ++i)
        full << i;
    full.Close();
    EXPECT_TRUE(full.Fail());
    CToken_ofile wide(path);
    wide.WriteRawLine(u"\u20AC"); // no byte
    wide.Close();
    EXPECT_TRUE(wide.Fail());
    std::filesystem::remove(path);
}

} // namespace
} // namespace io
