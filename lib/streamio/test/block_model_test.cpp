// The tree in memory: getters, look-ups, cursors, errors, ownership.

#include <gtest/gtest.h>

#include "assertion_watch.h"
#include "block.h"
#include "block_dump.h"
#include "block_func.h"
#include "block_named_value.h"
#include "block_vec.h"
#include "streamio_block_object.h"
#include "token_istring.h"
#include "token_ostring.h"

namespace io {
namespace {

CToken Number(TokenKind kind, double number) {
    return CToken(kind, number);
}

/// What each getter gives of a value, by its letter: wchar, bool, AString, unsigned int and long,
/// unsigned short, int and long, short, float and double.
std::string Succeeds(const CBlock_getters& value) {
    char16_t text[32];
    bool isTrue;
    AString string;
    unsigned u;
    unsigned long ul;
    unsigned short us;
    int i;
    long l;
    short s;
    float f;
    double d;
    std::string letters;
    letters += value.Get(text) ? "w" : "";
    letters += value.Get(isTrue) ? "b" : "";
    letters += value.Get(string) ? "A" : "";
    letters += value.Get(u) ? "U" : "";
    letters += value.Get(ul) ? "U" : "";
    letters += value.Get(us) ? "u" : "";
    letters += value.Get(i) ? "I" : "";
    letters += value.Get(l) ? "I" : "";
    letters += value.Get(s) ? "s" : "";
    letters += value.Get(f) ? "f" : "";
    letters += value.Get(d) ? "d" : "";
    return letters;
}

TEST(Block_getters, SucceedByKindAndRange) {
    const std::pair<CToken, const char*> rows[] = {
        {Number(TokenKind::Int, 5), "UUuIIsfd"},
        {Number(TokenKind::Int, -1), "IIsfd"},
        {Number(TokenKind::Double, -32768), "IIsfd"},
        {Number(TokenKind::Double, -32769), "IIfd"},
        {Number(TokenKind::Double, 32768), "UUuIIfd"},
        {Number(TokenKind::Double, 65535), "UUuIIfd"},
        {Number(TokenKind::Double, 65535.9), "UUIIfd"}, // the bound is compared before the cut
        {Number(TokenKind::Double, 2147483647), "UUIIfd"},
        {Number(TokenKind::Hex, 3e9), "UUfd"},
        {Number(TokenKind::Long, 4294967296.0), "fd"},
        {Number(TokenKind::Double, -2147483648.5), "fd"},
        {CToken(TokenKind::Int, 7, "7"), "UUuIIsfd"}, // source text is no text
        {CToken(TokenKind::True), "b"},
        {CToken(TokenKind::Keyword, u"k"), "wA"},
        {CToken(TokenKind::Symbol, u"+"), "wA"},
        {CToken(TokenKind::SingleQuotedText, u""), "wA"},
        {CToken(), ""}};
    for (const auto& [givenValue, letters] : rows) {
        const CBlock_value value(givenValue);
        EXPECT_EQ(Succeeds(value), letters) << DumpItem(value);
        CBlock_func inner(AString("g")), outer(AString("f"));
        inner << givenValue << 1;
        outer << CBlock_ptr<CBlock_func>(new CBlock_func(inner)) << true;
        EXPECT_EQ(Succeeds(outer), letters); // the first argument, through functions
        CBlock_vec vec;
        EXPECT_EQ(Succeeds(vec), "");
        vec.Add(givenValue);
        EXPECT_EQ(Succeeds(vec), letters);
    }
    int number = 3;
    EXPECT_TRUE(CBlock_value(-2.9).Get(number));
    EXPECT_EQ(number, -2);
    EXPECT_FALSE(CBlock_value(1e10).Get(number));
    EXPECT_EQ(number, -2);
}

// --- Look-ups ---

AString Name(int i) {
    AString name;
    name.Format(u"Item_%d", i);
    return name;
}

/// Walks of additions, removals and look-ups, against a list that is searched from its start. Large
/// enough to build the index, and small enough not to, and drop it again.
TEST(Block_lookup, GivesTheFirstOfANameThroughAnyChange) {
    for (const int names : {3, 40}) {
        CBlock block(AString("A"));
        std::vector<std::pair<AString, int>> twin;
        unsigned random = 12345;
        const auto next = [&](int bound) {
            random = random * 1103515245 + 12345;
            return static_cast<int>((random >> 16) % static_cast<unsigned>(bound));
        };
        for (int step = 0; step < 4000; ++step) {
            const AString name = Name(next(names));
            const auto first = std::find_if(twin.begin(), twin.end(),
                                            [&](const auto& item) { return item.first == name; });
            if (next(5) < 2) {
                block.Add(CBlock_named_value(name, step));
                twin.emplace_back(name, step);
            } else if (next(2) == 0 && step % 500 < 400) {
                block.Remove(block.Find(name.ToLower()));
                if (first != twin.end())
                    twin.erase(first);
            } else {
                CBlock_named_value value(next(2) == 0 ? name : AString(name.ToLower()), -1);
                int found = -1;
                const bool isThere = first != twin.end();
                EXPECT_EQ(block.Get(value), isThere);
                EXPECT_EQ(block.WasFound(), isThere);
                EXPECT_TRUE(value.CBlock_value::Get(found));
                EXPECT_EQ(found, isThere ? first->second : -1) << step;
            }
            ASSERT_EQ(block.GetSize(), twin.size());
        }
        auto expected = twin.begin();
        for (const CBlockItemPtr& item : block) {
            int number = 0;
            EXPECT_TRUE(CBlock_ptr<CBlock_named_value>(item)->Get(number));
            EXPECT_EQ(number, (expected++)->second);
        }
        EXPECT_EQ(expected, twin.end());
    }
}

TEST(Block_lookup, ReadingOnBehindARemovalKeepsCount) {
    CBlock block(AString("A"));
    for (int i = 0; i < 40; ++i)
        block.Add(CBlock_named_value(Name(i), i));
    block.Remove(block.Find(Name(7)));
    CToken_istring more(u"$begin A\nx=1\n$end");
    block.Read(more);
    EXPECT_EQ(block.GetSize(), 40u);
    EXPECT_EQ(std::distance(block.begin(), block.end()), 40);
}

TEST(Block_lookup, GetAsksForTheClassOfTheFirst) {
    CBlock block(AString("A"));
    block.Add(CBlock_func(AString("twice")));
    block.Add(CBlock_named_value(AString("twice"), 1));
    block.AddItem(CBlockItemPtr());
    CBlock_named_value value(AString("Twice"), 7);
    EXPECT_FALSE(block.Get(value));
    EXPECT_EQ(DumpItem(value), "'Twice'=7i");
    CBlock_func func(AString("TWICE"));
    EXPECT_TRUE(block.Get(func));
    CBlock child(AString("twice"));
    EXPECT_FALSE(block.Get(child));
    block.Remove(block.end());
    EXPECT_EQ(block.GetSize(), 2u);
    EXPECT_EQ(block.Find(AString("none")), block.end());
}

TEST(Block_lookup, FunctionsSearchFromTheCursor) {
    CBlock_func func(AString("f"));
    func << CBlock_named_value(AString("a"), 1) << 5 << CBlock_named_value(AString("b"), 2)
         << CBlock_named_value(AString("A"), 3);
    const auto get = [&](const char* name) {
        CBlock_named_value value(AString(name), 0);
        func.Get(value);
        return DumpToken(value.GetValue());
    };
    EXPECT_EQ(get("A"), "1i");
    EXPECT_EQ(get("b"), "2i");
    EXPECT_EQ(get("a"), "3i"); // on from b
    EXPECT_EQ(get("none"), "0i");
    EXPECT_FALSE(func.WasFound());
    EXPECT_EQ(get("a"), "3i"); // the cursor stayed
    EXPECT_EQ(get(""), "0i");  // an argument without a name doesn't match
    func << CBlock_named_value(CToken(TokenKind::Int, 6, "6"), 4);
    EXPECT_TRUE(func.WasFound());
    EXPECT_EQ(get("6"), "4i");
    EXPECT_EQ(get("a"), "1i");
}

// --- Ownership and errors ---

TEST(Block_items, AreSharedAndGoWithTheLastPointer) {
    struct Counted : CBlock_value {
        explicit Counted(int& count) : mCount(&count) { ++*mCount; }
        ~Counted() override { --*mCount; }
        int* mCount;
    };
    int count = 0;
    {
        CBlockItemPtr item(new Counted(count));
        CBlock first(AString("A")), second(AString("B"));
        first.AddItem(item);
        second.Append(first);
        second.Append(second); // asserted and ignored
        second = first;
        item = nullptr;
        EXPECT_EQ(second.GetSize(), 1u);
        EXPECT_FALSE(CBlock_ptr<CBlock>(*second.begin()));
        EXPECT_TRUE(CBlock_ptr<CBlock_value>(*second.begin()));
        first.Clear();
        EXPECT_EQ(count, 1);
    }
    EXPECT_EQ(count, 0);
    // A block that takes over what hangs below itself.
    CBlock tree(AString("A"));
    EXPECT_TRUE(tree.FromString(u"$begin A\n$begin B\nx=1\n$end B\n$end A\n"));
    tree = static_cast<const CBlock&>(**tree.begin());
    EXPECT_EQ(DumpItem(tree), "B{x=1i}");
}

/// What is read in numbers shares memory; none of it may go, or be grown into, while it is in use.
TEST(Block_items, ThatWereReadTogetherChangeAndStayOneByOne) {
    AString text(u"$begin A\n");
    for (int i = 0; i < 500; ++i)
        text += u"f(1, b='longer text')\nv[3: 1, 2, 3]\n$begin C\nx=1\ny=2\n$end C\n";
    CBlock tree;
    ASSERT_TRUE(tree.FromString(text + u"$end A\n"));
    std::vector<CBlockItemPtr> items(tree.begin(), tree.end());
    tree.Clear();
    items.erase(items.begin(), items.end() - 6); // all but two rows
    const CBlock_ptr<CBlock_func> func(items[3]);
    const CBlock_ptr<CBlock_vec> vec(items[4]);
    const CBlock_ptr<CBlock> block(items[5]);
    *func << 3 << func->GetArg(1);
    vec->Add(CToken(TokenKind::Int, 4));
    block->Remove(block->begin());
    block->Add(*func);
    std::string dump;
    for (const CBlockItemPtr& item : items)
        dump += DumpItem(*item) + " ";
    const std::string f = "f(1i, b='longer text'", v = "v[1i 2i 3i";
    EXPECT_EQ(dump, f + ") " + v + "] C{x=1i; y=2i} " + f + ", 3i, b='longer text') " + v +
                        " 4i] C{y=2i; " + f + ", 3i, b='longer text')} ");
}

TEST(Block_items, AnItemThatIsStillHeldMustNotGo) {
    const AssertionWatch asserted;
    alignas(CBlock_value) unsigned char room[sizeof(CBlock_value)];
    auto* const value = new (room) CBlock_value(1);
    alignas(CBlockItemPtr) unsigned char holder[sizeof(CBlockItemPtr)];
    new (holder) CBlockItemPtr(value); // never goes
    value->~CBlock_value();
    EXPECT_NE(asserted.GetText().find("'mRefCount == 0'"), std::string::npos);
}

TEST(Block_errors, AreToldByLine) {
    CBlock block;
    block.FromString(
        u"$begin 'P'\n(\n$begin 'C'\nx\n$begin 'D'\nv[-1]\n$end 'E' y\n$end 'C'\n)\n$end");
    std::vector<AString> errors;
    EXPECT_TRUE(block.GetErrors(errors, true));
    const std::vector<AString> expected = {
        u"P:2: identifier expected", u"C:4: expected a '(' or a '='", u"D:6: invalid vector size",
        u"D:7: begin/end block syntax invalid", u"P:9: identifier expected"};
    EXPECT_EQ(errors, expected);
    errors.clear();
    EXPECT_TRUE(block.GetErrors(errors, false) && block.HasErrors(false));
    EXPECT_EQ(errors.size(), 2u);
    EXPECT_EQ(XStreamioError(static_cast<ReadError>(13), 1).GetMessage(), u"");
}

// --- Objects that persist as a block ---

class Sample : public CStreamio_block_object {
public:
    explicit Sample(const char* name, int result = 0) : mName(name), mResult(result) {}
    void GetBlockName(AString& name) const override { name = mName; }
    int Exchange(CBlock& block, bool reading) override {
        CBlock_named_value width(AString("Width"), mWidth);
        if (reading)
            block.Get(width) && width.CBlock_value::Get(mWidth);
        else
            block.Add(width);
        mSeenFlag = GetFlag();
        if (mResult == 99)
            throw ReadError::kWrite;
        return mResult;
    }
    AString mName;
    int mResult;
    int mWidth = 5;
    bool mSeenFlag = false;
};

TEST(Streamio_block_object, MovesItsFieldsBothWays) {
    Sample sample("Frame");
    AString text;
    sample.ToString(text);
    EXPECT_EQ(text, u"$begin 'Frame'\n\tWidth=5\n$end 'Frame'\n");
    EXPECT_TRUE(sample.FromString(u"$begin 'FRAME' width=7 $end"));
    EXPECT_EQ(sample.mWidth, 7);
    EXPECT_FALSE(sample.FromString(u"$begin 'Other' width=8 $end"));
    EXPECT_EQ(sample.mWidth, 7);

    Sample any("");
    EXPECT_TRUE(any.FromString(u"$begin 'Other' Width=8 $end"));
    EXPECT_EQ(any.mWidth, 8);
    Sample refusing("", 3);
    EXPECT_THROW(refusing.FromString(u"$begin 'Other' $end"), XStreamioError);
    EXPECT_EQ(refusing.GetReadError(), 3);
    EXPECT_FALSE(refusing.FromItem(CBlockItemPtr(new CBlock_value(1))));

    CBlock block;
    EXPECT_TRUE(sample.ToBlockFlagged(block) && sample.mSeenFlag && !sample.GetFlag());
    EXPECT_EQ(DumpItem(block), "'Frame'{'Width'=7i}");
    CBlockItemPtr item;
    EXPECT_TRUE(sample.ToItem(item) && any.FromItem(item));
    EXPECT_EQ(any.mWidth, 7);
    EXPECT_FALSE(Sample("F", 1).ToBlock(block) || Sample("F", 99).ToBlock(block));
    EXPECT_TRUE(Sample("F", 1).FromBlockFlagged(block));
    EXPECT_FALSE(Sample("F", -1).FromBlockFlagged(block));
}

} // namespace
} // namespace io
