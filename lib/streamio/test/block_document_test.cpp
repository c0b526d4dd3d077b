// The examples of doc/block-streams.md: what the document shows is what is read and written.

#include <fstream>
#include <iterator>
#include <regex>

#include <gtest/gtest.h>

#include "block_named_value.h"
#include "tree_law.h"

namespace io {
namespace {

/// The fenced examples of a kind, in their order.
std::vector<std::string> Examples(const std::string& kind) {
    std::ifstream file(QUOREL_SOURCE_DIR "/doc/block-streams.md");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::string open = "```" + kind + "\n";
    std::vector<std::string> examples;
    for (std::size_t at = text.find(open); at != std::string::npos; at = text.find(open, at + 1)) {
        const std::size_t start = at + open.size();
        examples.push_back(text.substr(start, text.find("```", start) - start));
    }
    return examples;
}

/// The bytes of lines of hexadecimal pairs, each up to what is no pair.
std::string BytesOf(const std::string& dump) {
    std::string bytes;
    std::istringstream lines(dump);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        for (std::string word; words >> word && word.size() == 2 &&
                               word.find_first_not_of("0123456789ABCDEF") == std::string::npos;)
            bytes += static_cast<char>(std::stoi(word, nullptr, 16));
    }
    return bytes;
}

TEST(Block_document, TextExamplesAreWrittenAsTheyAreRead) {
    const std::vector<std::string> examples = Examples("blocks");
    EXPECT_EQ(examples.size(), 2u);
    for (const std::string& example : examples) {
        const auto read = test::ReadBlocks(example);
        ASSERT_EQ(read.size(), 1u);
        EXPECT_FALSE(read[0]->HasErrors(true));
        EXPECT_EQ(test::WriteBytes(*read[0], 0), example);
    }
}

TEST(Block_document, TheBinaryExampleIsTheLastText) {
    const std::vector<std::string> dumps = Examples("binary");
    ASSERT_EQ(dumps.size(), 1u);
    const std::string bytes = BytesOf(dumps[0]);
    const std::string text = Examples("blocks").back();
    EXPECT_EQ(test::WriteBytes(*test::ReadBlocks(text).at(0), kBinary), bytes);
    EXPECT_EQ(test::WriteBytes(*test::ReadBlocks(bytes).at(0), 0), text);
}

TEST(Block_document, TheIndexExampleLeadsToItsBlocks) {
    const std::vector<std::string> examples = Examples("index");
    ASSERT_EQ(examples.size(), 1u);
    test::Bytes_in in(examples[0], kReadIndex | kCheckIndex | kCheckBlocks);
    ASSERT_TRUE(in.stream.Good());
    ASSERT_TRUE(in.stream.SeekBlock(AString("Results")));
    CBlock results;
    results.Read(in.stream);
    EXPECT_EQ(DumpItem(results), "'Results'{Peaks[10i 20i]}");

    std::stringbuf buffer;
    CByte_streambuf units(buffer);
    CRawOstream raw(&units);
    CToken_ostream out(raw);
    EXPECT_TRUE(out.BuildIndex(0));
    for (const CBlockPtr& block : test::ReadBlocks(examples[0]))
        if (block->GetNameToken().GetTextView()[0] != u'$')
            block->Write(out);
    out.Close();
    const std::regex time("time\\(.*\\)");
    EXPECT_EQ(std::regex_replace(buffer.str(), time, "time()"),
              std::regex_replace(examples[0], time, "time()"));
}

} // namespace
} // namespace io
