// The block syntax as it is written: rows of items and text.

#include <limits>

#include <gtest/gtest.h>

#include "block_named_value.h"
#include "block_time_func.h"
#include "delimiter_grammar.h"
#include "token_istring.h"
#include "token_ostring.h"
#include "tree_law.h"

namespace io {
namespace {

using namespace std::literals;

std::string Utf8(const AString& text) {
    return text.ToCString(AString::kUtf8);
}

std::string Write(const CBlock_item& item) {
    AString text;
    item.ToString(text);
    return Utf8(text);
}

CToken Keyword(const char16_t* text) {
    return CToken(TokenKind::Keyword, text);
}

TEST(Block_write, WritesWhatIsBuilt) {
    const std::string text = "$begin 'Project'\n"
                             "\tVersion=3\n"
                             "\tTitle='two words'\n"
                             "\tCreated(year=2004, month=7, day=1, hour=9, min=5, sec=0)\n"
                             "\tSize[3: 10, 20, 30]\n"
                             "\t$begin 'Child'\n"
                             "\t\tFlag=true\n"
                             "\t\tNote(1.5, 'x', Level=2)\n"
                             "\t$end 'Child'\n"
                             "$end 'Project'\n";
    CBlock built(AString("Project"));
    built.Add(CBlock_named_value(AString("Version"), 3));
    built.Add(CBlock_named_value(AString("Title"), AString("two words")));
    std::tm time{};
    time.tm_year = 104, time.tm_mon = 6, time.tm_mday = 1, time.tm_hour = 9, time.tm_min = 5;
    time.tm_isdst = -1;
    const CBlock_time_func created(AString("Created"), std::mktime(&time));
    built.Add(created);
    const CBlock_ptr<CBlock_vec> size(new CBlock_vec(Keyword(u"Size")));
    for (const int element : {10, 20, 30})
        size->Add(CToken(TokenKind::Int, element));
    built.AddItem(CBlockItemPtr(size));
    CBlock child(AString("Child"));
    child.Add(CBlock_named_value(AString("Flag"), true));
    CBlock_func note(AString("Note"));
    note << 1.5 << u"x" << CBlock_named_value(AString("Level"), 2);
    child.Add(note);
    built.Add(child);
    EXPECT_EQ(Write(built), text);
    EXPECT_EQ(created.GetTime(), std::mktime(&time));
    EXPECT_EQ(Write(CBlock_time_func(AString("t"), -1)), "t()");
}

/// What is read, and what is written of it; null for the same.
struct Row {
    const char* text;
    const char* written;
};

class Item_write : public testing::TestWithParam<Row> {};

TEST_P(Item_write, WritesWhatWasRead) {
    CToken_istring stream{AString(GetParam().text)};
    CBlockItemPtr item;
    item.Read(stream);
    EXPECT_EQ(Write(*item), GetParam().written ? GetParam().written : GetParam().text);
}

constexpr Row kItems[] = {
    {"x=1.50", nullptr}, // a real number keeps its source text
    {"x=007", "x=7"},    // an integer goes out in plain form
    {"x=+5", "x=5"},
    {"x=123456789012", nullptr}, // unless it doesn't fit its kind
    {"x=0x1f", nullptr},
    {"v[3: 007, +5, 0x1f]", nullptr}, // elements keep theirs
    {"v[1, 2]", "v[2: 1, 2]"},
    {"v[]", "v[0:]"},
    {"x=TRUE", "x=true"},
    {"x=\"d'q\\\"\"", nullptr},
    {"x='a\\tb\\\\'", "x='a\\\tb\\\\'"}, // control characters raw behind a backslash
    {"x=$begin_cdata$a$end_cdata$", nullptr},
    {"c=$begin_cdata$ <a> $end_cdata$", nullptr},
    {"f(1,2,a=b,g('x'),v[1:2])", "f(1, 2, a=b, g('x'), v[1: 2])"},
    {"f(1,,2)", "f(1, , 2)"},
    {"f(1,)", "f(1)"},
    // names go out bare if they read back so
    {"'x'=1", "x=1"},
    {"\"x\"=1", "x=1"},
    {"'5'=1", "5=1"},
    {"'-1.5e3'(1)", "-1.5e3(1)"},
    {"'1e'=1", nullptr},
    {"'0x'=1", nullptr},
    {"'0x1e'=1", "0x1e=1"},
    {"'1.'=1", "1.=1"},
    {"''=1", nullptr},
    {"'True'=1", nullptr},
    {"'$BEGIN'=1", nullptr},
    {"'$end'[0:]", nullptr},
    {"'$begin_cdata$'(1)", nullptr},
    {"'+'=1", nullptr},
    {"'\\'q\\''=1", nullptr},
    {"'a b'=1", nullptr},
    {"true=1", nullptr},
    {"FALSE(1)", nullptr},
    {"5=1", nullptr}};
INSTANTIATE_TEST_SUITE_P(Items, Item_write, testing::ValuesIn(kItems));

TEST(Block_write, NothingGoesOutThatReadsBackAsSomethingElse) {
    const double inf = std::numeric_limits<double>::infinity();
    const std::pair<CToken, const char*> rows[] = {
        {Keyword(u"a b"), "'a b'"},
        {Keyword(u"true"), "'true'"},
        {Keyword(u""), "''"},
        {Keyword(u"12"), "'12'"},
        {Keyword(u"$end"), "$end"},
        {CToken(TokenKind::Symbol, u"+"), "'+'"},
        {CToken(TokenKind::Comment, u"c"), "'c'"},
        {CToken(TokenKind::CData, u"a $END_cdata$ b"), "'a $END_cdata$ b'"},
        {CToken(TokenKind::CData, u"a"), "$begin_cdata$ a $end_cdata$"},
        {CToken(TokenKind::Eol), ""},
        {CToken(TokenKind::Double, inf), "1e999"},
        {CToken(TokenKind::Int, 3e9), "3e+09"},
        {CToken(TokenKind::Int, 2.9), "2"},
        {CToken(TokenKind::Float, 0.5), "0.5"}};
    for (const auto& [value, text] : rows) {
        EXPECT_EQ(Write(CBlock_named_value(AString("x"), value)), std::string("x=") + text);
        CBlock_vec vec(Keyword(u"v"));
        vec.Add(value);
        if (value.GetKind() != TokenKind::Int) {
            EXPECT_EQ(Write(vec), std::string("v[1: ") + text + "]");
        }
    }
}

TEST(Block_write, NamesThatLookLikeOthersAreLookedAt) {
    CBlock block(AString("A"));
    for (const std::u16string_view name : {u"a"sv, u"a\0"sv, u"a "sv, u"a"sv})
        block.Add(CBlock_named_value(AString(name), 1));
    const std::string expected = "$begin 'A'\n\ta=1\n\t'a\\\0'=1\n\t'a '=1\n\ta=1\n$end 'A'\n"s;
    EXPECT_EQ(Write(block), expected);
}

TEST(Block_write, NamesOfBlocksAreQuoted) {
    const std::pair<CToken, const char*> rows[] = {
        {Keyword(u"A"), "'A'"},
        {CToken(TokenKind::Int, 5, "5"), "''"},
        {CToken(TokenKind::True), "''"},
        {CToken(TokenKind::SingleQuotedText, u"it's"), "'it\\'s'"},
        {CToken(TokenKind::SingleQuotedText, u"\"q\""), "\"q\""}, // carries its own
        {CToken(TokenKind::SingleQuotedText, u"'tis"), "'\\'tis'"},
        {CToken(TokenKind::SingleQuotedText, u"'t\\'"), "'\\'t\\\\\\''"}};
    for (const auto& [name, written] : rows)
        EXPECT_EQ(Write(CBlock(name)),
                  std::string("$begin ") + written + "\n$end " + written + "\n");
    CToken_ostring words(&CDelimiter_grammar_default::Get()); // bare where they read back
    for (const char16_t* const name : {u"A", u"", u"!c", u"true", u"5", u"$END"})
        CBlock(AString(name)).Write(words);
    EXPECT_EQ(words.GetView(), u"$begin A\n$end A\n$begin ''\n$end ''\n$begin '!c'\n$end '!c'\n"
                               u"$begin 'true'\n$end 'true'\n$begin '5'\n$end '5'\n"
                               u"$begin '$END'\n$end '$END'\n");
}

TEST(Block_write, AVectorTellsASizeThatReads) {
    CBlock_vec vec(Keyword(u"v"));
    for (int i = 0; i < 65537; ++i)
        vec.Add(CToken(TokenKind::True));
    CBlock_vec read;
    AString text;
    vec.ToString(text);
    EXPECT_EQ(text.substr(0, 9), u"v[65535: ");
    EXPECT_TRUE(read.FromString(text));
    EXPECT_EQ(read.GetSize(), 65537u);
}

TEST(Block_write, FormatOfNumbersWithoutSourceText) {
    const CBlock_named_value value(AString("x"), 1234.5678);
    AString text;
    value.ToString(text);
    EXPECT_EQ(text, u"x=1234.57");
    value.ToString(text, CAbstract_ostream::kFixed, 1);
    EXPECT_EQ(text, u"x=1234.6");
    value.ToString(text, CAbstract_ostream::kScientific, 2);
    EXPECT_EQ(text, u"x=1.23e+03");
    value.ToString(text, 0, 17);
    EXPECT_EQ(text, u"x=1234.5678");
}

// --- The binary form ---

std::vector<int> Bytes(const CStreamio_object& object) {
    AString units;
    object.ToBinaryString(units);
    return std::vector<int>(units.begin(), units.end());
}

TEST(Block_write, BinaryFormIsTokensWithoutCommas) {
    CBlock_func func(AString("f"));
    func << 5 << CBlock_named_value(AString(" "), 1.0);
    EXPECT_EQ(Bytes(func), (std::vector<int>{0,                                   // header
                                             13, 1, 'f', 18, '(', 70, 5,          // f ( 5
                                             13, 1, ' ', 18, '=', 80, 0xF0, 0x3F, // ' ' = 1.0
                                             18, ')'}));
    EXPECT_EQ(Bytes(CBlock_value(CToken(TokenKind::Short, -2))),
              (std::vector<int>{0, 73, 0xFE, 0xFF, 0xFF, 0xFF})); // keeps its sign
}

/// The binary form has true and false without their words.
TEST(Block_write, NamesTrueAndFalseAreFoundInBothForms) {
    const auto read = test::ReadBlocks("$begin A\ntrue=1\nFALSE(2)\n$end");
    const auto again = test::ReadBlocks(test::WriteBytes(*read.at(0), kBinary));
    for (const CBlockPtr& block : {read.at(0), again.at(0)}) {
        EXPECT_EQ((*block->Find(u"True"))->GetNameToken().GetText(), u"true");
        EXPECT_EQ((*block->Find(u"false"))->GetNameToken().GetText(), u"FALSE");
        EXPECT_EQ(block->Find(u""), block->end());
    }
}

TEST(Block_write, TextToTreeToBinaryToTreeToText) {
    const std::string text =
        "$begin 'A'\n\ti=7\n\t0x1f=-5\n\t1.50(true=2)\n\tr=0.10000000000000001\n\th(true, 'two\\\n "
        "words', "
        "\"d\", k=word, , g())\n\t'two words'='\xE2\x82\xAC \xF0\x9F\x98\x80'\n"
        "\tv[2: 1.5, 'x']\n\tc=$begin_cdata$ a\n b $end_cdata$\n"
        "\t$begin 'B'\n\t$end 'B'\n$end 'A'\n";
    const auto read = test::ReadBlocks(text);
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(test::WriteBytes(*read[0], 0), text);
    EXPECT_EQ(test::FindBrokenLaw(*read[0]), std::nullopt);
    EXPECT_EQ(test::WriteBytes(*read[0], kCrLf).find("\r\n\ti=7\r\n"),
              std::string("$begin 'A'").size());
}

} // namespace
} // namespace io
