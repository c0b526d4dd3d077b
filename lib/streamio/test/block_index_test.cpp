// The index over the blocks of a file: made on writing, made by a scan, stored, checked, damaged.

#include <gtest/gtest.h>

#include "block_index.h"
#include "block_named_value.h"
#include "token_ostring.h"
#include "tree_law.h"

namespace io {
namespace {

constexpr unsigned kChecked = kReadIndex | kCheckIndex | kCheckBlocks;

CBlock Sample(const char* name, int number) {
    CBlock block{AString(name)};
    block.Add(CBlock_named_value(AString("x"), number));
    CBlock inner(AString("In ner"));
    inner.Add(CBlock_named_value(AString("y"), number + 1));
    block.Add(inner);
    return block;
}

/// Bytes of a file with an index over some blocks.
std::string Indexed(unsigned flags, const std::vector<CBlock>& blocks) {
    std::stringbuf buffer;
    CByte_streambuf units(buffer);
    CRawOstream raw(&units);
    CToken_ostream stream(raw, &CToken_grammar_default::Get(), flags & kBinary);
    EXPECT_TRUE(stream.BuildIndex(flags) && stream.BuildIndex(flags));
    for (const CBlock& block : blocks)
        block.Write(stream);
    stream.Close();
    EXPECT_TRUE(stream.Good());
    return buffer.str();
}

std::string ReadAt(CToken_istream& stream, const char* path) {
    if (!stream.SeekBlock(AString(path)))
        return "none";
    const int line = stream.IsBinary() ? 0 : stream.GetTokenLine();
    CBlock block;
    block.Read(stream);
    return DumpItem(block) + (line == 0 ? "" : "@" + std::to_string(line));
}

class Block_index : public testing::TestWithParam<unsigned> {};
INSTANTIATE_TEST_SUITE_P(Forms, Block_index,
                         testing::Values(0u, unsigned{kAllLevels}, unsigned{kBinary},
                                         kBinary | kAllLevels));

TEST_P(Block_index, LeadsToTheBlocksOfAFile) {
    const bool isBinary = (GetParam() & kBinary) != 0;
    const bool isDeep = (GetParam() & kAllLevels) != 0;
    const std::string bytes = Indexed(
        GetParam(), {Sample("Geometry", 1), Sample("Results", 100000), Sample("geometry", 5)});
    test::Bytes_in stored(bytes, kChecked), made(bytes), fast(bytes);
    ASSERT_TRUE(stored.stream.Good() && stored.stream.GetIndex());
    EXPECT_TRUE(made.stream.BuildIndex(GetParam()));
    EXPECT_TRUE(fast.stream.BuildIndex(GetParam() | kFastScan));
    EXPECT_TRUE(made.stream.IsBegin(CBlock_index::kBaseIndexName)); // where it stood
    for (CToken_istream* stream : {&stored.stream, &made.stream, &fast.stream}) {
        const std::string second = ReadAt(*stream, "RESULTS");
        EXPECT_EQ(second.substr(0, second.find('}')),
                  isBinary ? "'Results'{'x'=100000i; 'In ner'{'y'=100001i"
                           : "'Results'{x=100000i; 'In ner'{y=100001i");
        // of two blocks of one name the last
        EXPECT_NE(ReadAt(*stream, "Geometry").find("=5"), std::string::npos);
        EXPECT_EQ(ReadAt(*stream, "geometry\tin ner") != "none", isDeep);
        EXPECT_EQ(stream->GetLevel(), isDeep ? 1u : 0u); // that of the last one found
        EXPECT_EQ(ReadAt(*stream, "none"), "none");
        EXPECT_TRUE(stream->Good());
    }
    EXPECT_EQ(stored.stream.GetIndex()->GetAllLevels(), isDeep);
}

TEST_P(Block_index, AScanEntersWhatTheWriterEntered) {
    const std::string bytes = Indexed(GetParam(), {Sample("A", 1), Sample("B", 2)});
    test::Bytes_in stored(bytes, kChecked), made(bytes);
    made.stream.BuildIndex(GetParam());
    ASSERT_TRUE(stored.stream.GetIndex());
    for (const CBlockItemPtr& entry : *stored.stream.GetIndex()->GetTable()) {
        AString path;
        entry->GetName(path);
        CAbstract_stream_pos written, scanned;
        stored.stream.NewState(written);
        made.stream.NewState(scanned);
        EXPECT_TRUE(stored.stream.GetIndex()->FindEntry(path, written) &&
                    made.stream.GetIndex()->FindEntry(path, scanned));
        EXPECT_EQ(written.mPos, scanned.mPos);
        EXPECT_EQ(written.GetState()->GetLine(), scanned.GetState()->GetLine());
        EXPECT_EQ(written.GetState()->mLevel, scanned.GetState()->mLevel);
    }
}

/// A text with one piece replaced.
std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.rfind(from);
    return at == std::string::npos ? "not found" : text.replace(at, from.size(), to);
}

TEST(Block_index, DamageIsAsGoodAsNoIndexUnlessItIsChecked) {
    const std::string sound = Indexed(0, {Sample("A", 1), Sample("B", 2)});
    const std::size_t a = sound.find("$begin 'A'");
    const auto pos = [](std::size_t value) { return "(pos=" + std::to_string(value); };
    const std::tuple<const char*, std::string, bool, bool> rows[] = {
        {"sound", sound, true, true},
        {"no index", sound.substr(a), false, true},
        {"base index points outside", Replaced(sound, "$index$(pos=0000", "$index$(pos=9999"),
         false, false},
        {"base index without a position", Replaced(sound, "$index$(pos", "$index$(pqs"), false,
         false},
        {"table cut off", sound.substr(0, sound.rfind("$begin '$index$'")), false, false},
        {"table with an error", Replaced(sound, "\tB(", "\tB "), false, false},
        {"entry outside", Replaced(sound, "A" + pos(a), "A" + pos(99999)), true, false},
        {"line out of range", Replaced(sound, "lin=9", "lin=2147483647"), true, true},
        {"entry below zero", Replaced(sound, "A" + pos(a), "A(pos=-1"), true, false},
        {"entry in a token", Replaced(sound, "A" + pos(a), "A" + pos(a + 1)), true, false},
        {"entry of another name", Replaced(sound, "A" + pos(a), "C" + pos(a)), true, false},
        {"two entries at one block",
         Replaced(sound, "\tB(pos=" + std::to_string(sound.find("$begin 'B'")),
                  "\tB(pos=" + std::to_string(sound.find("$begin 'B'")) +
                      ", lin=1, lvl=0)\n\tb(pos=" + std::to_string(sound.find("$begin 'B'"))),
         true, false},
        {"entry that is no function", Replaced(sound, "\tB(", "\tC=5\n\tB("), true, false},
        {"block with an error", Replaced(sound, "\tx=2", "\tx 2"), true, false}};
    for (const auto& [what, bytes, hasIndex, isSound] : rows) {
        test::Bytes_in lax(bytes, kReadIndex), strict(bytes, kChecked);
        EXPECT_EQ(lax.stream.GetIndex() != nullptr, hasIndex) << what;
        EXPECT_TRUE(lax.stream.Good()) << what;
        EXPECT_EQ(strict.stream.Good(), isSound) << what;
        strict.stream.Clear();
        EXPECT_EQ(strict.stream.GetLine(), 1) << what;
        ReadAt(lax.stream, "A");
    }
}

/// The base index is written over at the end and must take the same room then.
TEST(Block_index, StandsWhateverIsSetMeanwhile) {
    using Change = void (*)(CToken_ostream&, CRawOstream&);
    const Change changes[] = {
        [](CToken_ostream& out, CRawOstream&) { out.SetHex(true); },
        [](CToken_ostream& out, CRawOstream&) { out.SetAutoBlank(std::array{false}.data()); },
        [](CToken_ostream& out, CRawOstream&) { out.SetIndentChar(u'\u2003'); },
        [](CToken_ostream& out, CRawOstream&) { out.SetBeginWord(u"$b"), out.SetEndWord(u"$e"); },
        [](CToken_ostream&, CRawOstream& raw) { raw.setf(std::ios_base::showpos); },
        [](CToken_ostream& out, CRawOstream&) { out.SetQuoteBlockNames(false); },
        [](CToken_ostream& out, CRawOstream&) { out.GetTokenStreambuf().SetCrLf(true); }};
    for (const Change change : changes) {
        std::stringbuf buffer;
        CByte_streambuf units(buffer);
        CRawOstream raw(&units);
        CToken_ostream out(raw);
        out.BuildIndex(0);
        Sample("A", 1).Write(out);
        change(out, raw);
        out.Close();
        test::Bytes_in in(buffer.str(), kChecked);
        EXPECT_TRUE(in.stream.Good() && in.stream.GetIndex()) << buffer.str();
    }
}

TEST(Block_index, OfOddNamesPassesItsCheck) {
    const std::string bytes =
        Indexed(kAllLevels, {Sample("a\tb", 1), Sample("'q'", 2), Sample("it's", 3),
                             Sample("c\rd", 4), Sample("'tis", 5)});
    test::Bytes_in stored(bytes, kChecked);
    ASSERT_TRUE(stored.stream.Good() && stored.stream.GetIndex());
    for (const char* path : {"a\tb", "a\tb\tIn ner", "q", "it's", "c\nd", "'tis"})
        EXPECT_TRUE(stored.stream.SeekBlock(AString(path))) << path;
}

TEST(Block_index, IsMadeOfWhatIsThere) {
    const std::tuple<const char*, bool, const char*> rows[] = {
        {"", true, ""},
        {"$begin 'A'\n$end 'A'\n$begin B $end", true, "A|B|"},
        {"$begin 'A'\n$begin 'C'\n$end 'C'\n$end 'A'\n", true, "A|A/C|"},
        {"$begin 'A'\nx\n$end 'A'\n$begin 'B'\n$end", false, "A|B|"},
        {"$begin 'A'\n$end 'C'\n$begin 'B'\n$end", false, "A|B|"},
        {"$begin 'A'\n$begin 'B'\n$begin 'C'\n", false, "A|A/B|A/B/C|"},
        {"$begin 5\n$begin 'C'\n$end\n$end\n", true, "C|"},
        {"x=1", true, ""}};
    for (const auto& [text, isSound, wantedPaths] : rows) {
        test::Bytes_in in(text);
        EXPECT_EQ(in.stream.BuildIndex(kAllLevels), isSound) << text;
        std::string paths;
        for (const CBlockItemPtr& entry : *in.stream.GetIndex()->GetTable()) {
            AString path;
            entry->GetName(path);
            std::replace(path.begin(), path.end(), u'\t', u'/');
            paths += path.ToCString() + "|";
        }
        EXPECT_EQ(paths, wantedPaths) << text;
    }
    test::Bytes_in fast("$begin 'A'\nx y z\n$end 'A'\n"); // looks at no item
    EXPECT_TRUE(fast.stream.BuildIndex(kFastScan));
}

TEST(Block_index, PathsStayInProportionToTheFile) {
    std::string text;
    for (int i = 0; i < 500; ++i)
        text += "$begin '" + std::string(100, 'a') + "'\n";
    for (int i = 0; i < 5000; ++i)
        text += "$begin '" + std::to_string(i) + "' $end\n";
    test::Bytes_in in(text);
    EXPECT_FALSE(in.stream.BuildIndex(kAllLevels));
    const Block_stats stats = in.stream.GetIndex()->GetTable()->GetStats(true);
    EXPECT_LT(stats.tally[Block_stats::kNameBytes], 40 * text.size());
}

TEST(Block_index, IsMadeFromTheStartAlone) {
    CToken_ostring late;
    late.Write(5);
    EXPECT_FALSE(late.BuildIndex(0));
    EXPECT_FALSE(late.SeekBlock(AString("A")));
    CBlock_index index(AString("i"));
    CAbstract_stream_pos pos(7);
    late.NewState(pos);
    EXPECT_FALSE(index.AddEntry(AString("p"), CAbstract_stream_pos()));
    EXPECT_TRUE(index.AddEntry(AString("p"), pos) && index.AddEntry(AString("P"), pos));
    pos.GetState()->mLevel = 1;
    EXPECT_TRUE(index.AddEntry(AString("q"), pos)); // passed over
    EXPECT_EQ(DumpItem(*index.GetTable()), "'i'{'P'('pos'=7l, 'lin'=1i, 'lvl'=0ui)}");
    pos.mPos = 3000000000;
    pos.GetState()->mLevel = 0;
    EXPECT_TRUE(index.AddEntry(AString("far"), pos) && index.FindEntry(AString("FAR"), pos));
    EXPECT_EQ(pos.mPos, 3000000000);
    AString text;
    index.ToString(text);
    EXPECT_NE(text.find(u"far(pos=003000000000, "), AString::npos);
}

} // namespace
} // namespace io
