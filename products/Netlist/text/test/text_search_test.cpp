/// The literal search against trying every place.
#include "text_search.h"

#include <cctype>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// All texts of two letters up to a length.
std::vector<std::string> Words(std::size_t longest) {
    std::vector<std::string> words{""};
    for (std::size_t i = 0; words[i].size() < longest; ++i)
        for (const char letter : {'a', 'B'})
            words.push_back(words[i] + letter);
    return words;
}

TEST(LiteralSearch, FindsWhatTryingEveryPlaceFinds) {
    const auto fold = [](std::string text) {
        for (char& c : text)
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        return text;
    };
    const std::vector<std::string> words = Words(4);
    const std::vector<std::string> lines = Words(7);
    // Before and behind what is searched, so that lines have every length around a step of sixteen.
    for (const std::size_t padding : {0u, 9u, 17u, 40u})
        for (const bool keepCase : {true, false})
            for (const std::string& word : words) {
                // Long ones too, which count their comparisons.
                const std::string wanted = padding == 40 ? std::string(33, 'a') + word : word;
                const TextSearch search(wanted, keepCase);
                for (const std::string& middle : lines) {
                    const std::string line =
                        std::string(padding, 'a') + middle + middle + std::string(padding / 2, 'A');
                    const std::string in = keepCase ? line : fold(line);
                    const std::string what = keepCase ? wanted : fold(wanted);
                    const bool any = !wanted.empty();
                    ASSERT_EQ(search.Find(line), any ? in.find(what) : in.npos) << wanted << line;
                    ASSERT_EQ(search.FindLast(line), any ? in.rfind(what) : in.npos)
                        << wanted << line;
                }
            }
}

TEST(LiteralSearch, ALongTextMuchLikeItsLineIsFoundInLinearTime) {
    const std::string line(1 << 20, 'a');
    const std::string begin(1 << 18, 'a');
    for (const std::string& wanted : {begin + "ba", "ab" + begin}) {
        const TextSearch search(wanted, false);
        EXPECT_EQ(search.Find(line), TextSearch::kNone);
        EXPECT_EQ(search.FindLast(line), TextSearch::kNone);
        EXPECT_EQ(search.Find(line + wanted + line), line.size());
        EXPECT_EQ(search.FindLast(line + wanted + line), line.size());
    }
}

} // namespace
