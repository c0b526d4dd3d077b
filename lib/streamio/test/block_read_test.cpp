// The block syntax as it is read: rows of text and tree.

#include <gtest/gtest.h>

#include "block.h"
#include "block_dump.h"
#include "block_func.h"
#include "block_named_value.h"
#include "block_vec.h"
#include "code_page.h"
#include "token_istring.h"

namespace io {
namespace {

std::u16string Wide(const std::string& text) {
    std::u16string wide;
    codepage::AppendUtf8ToUtf16(text, wide);
    return wide;
}

struct Row {
    const char* text;
    const char* tree;
};

std::string ReadTree(const std::string& text) {
    CToken_istring stream{AString(Wide(text))};
    CBlock block;
    block.Read(stream);
    return DumpItem(block);
}

class Block_read : public testing::TestWithParam<Row> {};

TEST_P(Block_read, GivesTheTree) {
    EXPECT_EQ(ReadTree(GetParam().text), GetParam().tree) << GetParam().text;
}

constexpr Row kItems[] = {
    {"$begin 'A'\nx=1\n$end 'A'\n", "'A'{x=1i}"},
    {"$begin 'A' x=1 y='t' z=\"d\" $end 'A'", "'A'{x=1i; y='t'; z=\"d\"}"},
    {"$begin 'A'\nx=1.5\ny=0x1f\nz=true\nw=FALSE\nk=word\n$end 'A'",
     "'A'{x=1.5d; y=31x; z=true; w=false; k=word}"},
    {"$begin 'A'\nx=\n  ! on the next line\n 1\n$end 'A'", "'A'{x=1i}"},
    {"$begin 'A'\nc=$begin_cdata$ a\nb $end_cdata$\n$end 'A'", "'A'{c=< a\nb >}"},
    {"$begin 'A'\n'two words'=1\n\"d\"=2\n5=3\ntrue=4\n''=5\n$end 'A'",
     "'A'{'two words'=1i; \"d\"=2i; 5i=3i; true=4i; ''=5i}"},
    {"$begin 'A' ! comment\n! $end 'A'\nx=1 ! more\n$end 'A'", "'A'{x=1i}"},
    // functions
    {"$begin 'A'\nf()\ng(1, 'a', b=2, h(3), v[1: 4])\n$end 'A'",
     "'A'{f(); g(1i, 'a', b=2i, h(3i), v[4i])}"},
    {"$begin 'A'\nf(1,,2)\ng(,)\nh(1,)\ni('','')\n$end 'A'",
     "'A'{f(1i, ~, 2i); g(~); h(1i); i('', '')}"},
    {"$begin 'A'\nf(\n a\n =\n 1,\n 2\n)\n$end 'A'", "'A'{f(a=1i, 2i)}"},
    {"$begin 'A'\nf($begin, $end)\n$end 'A'", "'A'{f($begin, $end)}"},
    // vectors: the size is only a hint, but checked
    {"$begin 'A'\nv[3: 1, 'b', c]\nw[0:]\nx[]\ny[1]\nz[3: 1]\nu[1:2,3,]\n$end 'A'",
     "'A'{v[1i 'b' c]; w[]; x[]; y[1i]; z[1i]; u[2i 3i]}"},
    {"$begin 'A'\nv[a, 1]\nw[65535.9, 1]\nx[65535: true]\n$end 'A'", "'A'{v[a 1i]; x[true]}!12@3"},
    {"$begin 'A'\nx[70000, 1]\ny[-1, 2]\nz=1\n$end 'A'", "'A'{z=1i}!12@2!12@3"},
    // blocks
    {"$begin 'P'\n$begin 'C'\nx=1\n$end 'C'\n$begin D $end D\n$end 'P'", "'P'{'C'{x=1i}; D{}}"},
    {"$BEGIN 'Project'\n$End 'PROJECT'", "'Project'{}"},
    {"$begin 'A'\nx=1\n$end\n", "'A'{x=1i}"},
    {"$begin '' $end ''", "''{}"},
    {"$begin 5\n$end ''\n", "5i{}"},
    {"$begin = 1\n$end\n", "Symbol ={}!7@1"},
    {"\n\n$begin\n'A'\n$end 'A'\n", "'A'{}"}};
INSTANTIATE_TEST_SUITE_P(Items, Block_read, testing::ValuesIn(kItems));

constexpr Row kErrors[] = {
    {"", "~{}!3@1"},
    {"\n\nx=1", "~{}!3@3"},
    {"$begin", "~{}!3@1"},
    {"$begin 'A'", "'A'{}"},
    {"$begin 'A'\nx=1\n", "'A'{x=1i}"},
    {"$begin 'A'\nword\nx=1\n$end 'A'", "'A'{x=1i}!7@2"},
    {"$begin 'A'\nword more\nx=1\n$end 'A'", "'A'{x=1i}!7@2"},
    {"$begin 'A'\nx\n=1\ny=2\n$end 'A'", "'A'{y=2i}!7@2!11@3"},
    {"$begin 'A'\n(1) y=2\nx=1\n$end 'A'", "'A'{x=1i}!11@2"},
    {"$begin 'A'\nx=(\ny=2\n$end 'A'", "'A'{y=2i}!5@2"},
    {"$begin 'A'\nx=\n(\ny=2\n$end 'A'", "'A'{y=2i}!5@3"},
    {"$begin 'A'\nx=", "'A'{}!5@2"},
    {"$begin 'A'\nf(+) z=1\nx=1\n$end 'A'", "'A'{x=1i}!5@2"},
    {"$begin 'A'\nf(1 2)\nx=1\n$end 'A'", "'A'{x=1i}!10@2"},
    {"$begin 'A'\nf(''=1)\n''=1\n$end 'A'", "'A'{''=1i}!10@2"}, // as an argument a value
    {"$begin 'A'\nf(\n1\n2)\nx=1\n$end 'A'", "'A'{x=1i}!10@4"},
    {"$begin 'A'\nv[1: 2 3]\nw[1 2]\nx[(]\ny=1\n$end 'A'", "'A'{y=1i}!10@2!10@3!5@4"},
    {"$begin 'A'\nf(1,", "'A'{f(1i)}"},
    {"$begin 'A'\nf(1", "'A'{}!10@2"},
    {"$begin 'A'\nf(", "'A'{f()}"},
    {"$begin 'A'\nv[2:", "'A'{v[]}"},
    {"$begin 'A'\nv[2", "'A'{}!10@2"},
    {"$begin 'A'\nv[2: 1,", "'A'{v[1i]}"},
    // the name at the end
    {"$begin 'A'\n$end 'B'\nx=1", "'A'{}!3@2"},
    {"$begin 'A'\n$begin 'B'\n$end 'C' x=1\ny=2\n$end 'A'", "'A'{'B'{}!3@3; y=2i}"},
    {"$begin 5\n$end 5\n", "5i{}!3@2"},
    // errors of children stay theirs
    {"$begin 'P'\n$begin 'C'\nx\n$end 'C'\ny=1\n$end 'P'", "'P'{'C'{}!7@3; y=1i}"},
    // a lone CR is a line end to the tokens, but not to what skips a line
    {"$begin 'A'\rx\ry=1\rz=\r2\r$end 'A'", "'A'{y=1i; z=2i}!7@2"},
    {"$begin 'A'\rx y\rz=1\r$end 'A'", "'A'{}!7@2"},
    {"$begin 'A'\r\nx y\r\nz=1\r\n$end 'A'", "'A'{z=1i}!7@2"}};
INSTANTIATE_TEST_SUITE_P(Errors, Block_read, testing::ValuesIn(kErrors));

TEST(Block_read, ComparesNamesByTheCaseMode) {
    const AString text(u"$begin 'A'\n$end 'a'\n");
    CToken_istring any(text);
    CToken_istring exact(text, &CToken_grammar_default::Get(), kCaseSensitive);
    CBlock first, second;
    first.Read(any);
    second.Read(exact);
    EXPECT_EQ(DumpItem(first), "'A'{}");
    EXPECT_EQ(DumpItem(second), "'A'{}!3@2");
}

TEST(Block_read, FromStringTellsWhetherThereWereErrors) {
    const std::tuple<const char*, bool, const char*> rows[] = {
        {"$begin 'A'\nx=1\n$end 'A'", true, "'A'{x=1i}"},
        {"$begin 'A'\n$begin 'B'\nx\n$end 'B'\n$end 'A'", false, "'A'{'B'{}!7@3}"},
        {"x=1", false, "'A'{}!3@1"}};
    CBlock block;
    for (const auto& [text, isRead, tree] : rows) {
        EXPECT_EQ(block.FromString(text), isRead);
        EXPECT_EQ(DumpItem(block), tree);
    }
    CBlock_func func;
    CBlock_named_value value;
    CBlock_value bare;
    CBlock_vec vec;
    EXPECT_TRUE(func.FromString("f(1, a=2)") && value.FromString("x=5") && bare.FromString(" 7") &&
                vec.FromString("v[1: 9]"));
    EXPECT_EQ(DumpItem(func) + DumpItem(value) + DumpItem(bare) + DumpItem(vec),
              "f(1i, a=2i)x=5i7iv[9i]");
    EXPECT_FALSE(func.FromString("x=5") || value.FromString("f(1)") || bare.FromString("(") ||
                 vec.FromString(""));
}

/// A text that isn't UTF-8 is no value, and what stands behind it isn't taken for it.
TEST(Block_read, ABinaryTextThatIsLostIsAnError) {
    const std::u16string head(u"\0\x0C\6$begin\x0D\1A\x13", 13);
    const std::pair<const char16_t*, const char*> rows[] = {
        {u"\x0D\1\xFF", "'A'{y=1us}"}, // on its own it is nothing
        {u"\x0D\1\xFF\x12=\x3D\1", "'A'{y=1us}!11@2"},
        {u"\x0C\1x\x12=\x0D\1\xFF", "'A'{y=1us}!5@2"},
        {u"\x0C\1x\x12(\x3D\1\x0D\1\xFF\x3D\1\x12)", "'A'{y=1us}!5@2"},
        {u"\x0C\1x\x12[\x3D\1\x12:\x0D\1\xFF\x12]", "'A'{y=1us}!5@2"}};
    for (const auto& [item, tree] : rows) {
        CBlock block;
        block.FromString(AString(head + item + u"\x13\x0C\1y\x12=\x3D\1\x13"));
        EXPECT_EQ(DumpItem(block), tree);
    }
}

// --- Depth ---

std::string Repeat(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

TEST(Block_read, NestingHasABound) {
    const std::string head = "$begin 'A'\n";
    const std::string end = "x=1\n$end 'A'\ny=2\n$end 'A'";
    // Error 4 for the block and the function that nest too deep, and reading goes on behind the
    // line.
    EXPECT_TRUE(ReadTree(head + Repeat("f(", 1000) + "1" + Repeat(")", 1000) + "\n" + end) ==
                "'A'{" + Repeat("f(", 1000) + "1i" + Repeat(")", 1000) + "; x=1i}");
    EXPECT_EQ(ReadTree(head + "f(1,\n" + Repeat("f(", 1000) + "1)\n" + end), "'A'{x=1i}!4@3");
    EXPECT_TRUE(ReadTree(Repeat(head, 1000) + "x=1") ==
                Repeat("'A'{", 1000) + "x=1i" + Repeat("}", 1000));
    EXPECT_TRUE(ReadTree(Repeat(head, 1001) + end) ==
                Repeat("'A'{", 1000) + "x=1i}!4@1001; y=2i}" + Repeat("}", 998));
}

TEST(Block_read, SurvivesPiecesThatNeverEnd) {
    // piece, count, how the tree starts
    const std::tuple<const char*, int, const char*> rows[] = {
        {"$begin 'A'\n", 1000000, "'A'{'A'{'A'{"},
        {"$begin A ", 100000, "'A'{A{A{"},
        {"f(", 100000, "'A'{}!4@2"},
        {"x[65535:", 100000, "'A'{}!10@2"},
        {"x=\n", 50000, "'A'{x=x; x=x"}};
    for (const auto& [piece, count, wantedTree] : rows) {
        const std::string tree = ReadTree("$begin 'A'\n" + Repeat(piece, count));
        EXPECT_EQ(tree.substr(0, std::string(wantedTree).size()), wantedTree) << piece;
    }
}

TEST(Block_read, ABlockMayBeOfAnyDepthWhenItIsBuilt) {
    CBlock_ptr<CBlock> root(new CBlock(AString("root")));
    CBlock_ptr<CBlock_func> func(new CBlock_func(AString("f")));
    for (int i = 0; i < 100000; ++i) {
        const CBlock_ptr<CBlock> outer(new CBlock(AString("b")));
        outer->AddItem(CBlockItemPtr(root));
        root = outer;
        const CBlock_ptr<CBlock_func> outerFunc(new CBlock_func(AString("f")));
        *outerFunc << func;
        func = outerFunc;
    }
    root->AddItem(CBlockItemPtr(func));
    EXPECT_EQ(root->GetStats(true).tally[Block_stats::kBlocks], 100001u);
    EXPECT_FALSE(root->HasErrors(true));
    AString text;
    func->ToString(text);
    EXPECT_EQ(text.size(), 100001u * 3);
    int number = 0;
    EXPECT_FALSE(func->CBlock_getters::Get(number));
}

} // namespace
} // namespace io
