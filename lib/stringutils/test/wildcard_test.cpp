// Matching, with the defined search as the twin: stars try tails in turn, one call each.

#include <gtest/gtest.h>

#include "text_helpers.h"

namespace {

struct Twin {
    std::u16string_view text, pattern;
    bool greedy;
    std::vector<AString> captures;

    void Store(std::size_t index, std::u16string_view taken) {
        if (captures.size() <= index)
            captures.resize(index + 1);
        captures[index] = taken;
    }

    bool Match(std::size_t t, std::size_t p, std::size_t index) {
        if (p == pattern.size())
            return t == text.size();
        if (pattern[p] == u'*') {
            for (std::size_t i = 0; i + t <= text.size(); ++i) {
                const std::size_t tail = greedy ? text.size() - i : t + i;
                if (Match(tail, p + 1, index + 1)) {
                    Store(index, text.substr(t, tail - t));
                    return true;
                }
            }
            return false;
        }
        if (t == text.size())
            return false;
        if (pattern[p] == u'?') {
            Store(index, text.substr(t, 1));
            return Match(t + 1, p + 1, index + 1);
        }
        if (pattern[p] == u'\\' && p + 1 < pattern.size())
            ++p;
        return pattern[p] == text[t] && Match(t + 1, p + 1, index);
    }
};

/// All texts over an alphabet up to a length.
std::vector<AString> AllTexts(std::u16string_view alphabet, std::size_t length) {
    std::vector<AString> all = {AString()};
    for (std::size_t i = 0; all[i].size() < length; ++i) {
        for (const char16_t ch : alphabet)
            all.push_back(all[i] + ch);
    }
    return all;
}

void CompareAll(std::u16string_view patternUnits, std::u16string_view textUnits,
                std::size_t length) {
    for (const AString& pattern : AllTexts(patternUnits, length)) {
        for (const AString& text : AllTexts(textUnits, length)) {
            for (const bool greedy : {false, true}) {
                Twin twin{text, pattern, greedy, {}};
                const bool matches = twin.Match(0, 0, 0);
                std::vector<AString> captures;
                ASSERT_EQ(text.Match(pattern, captures, greedy), matches)
                    << U8(pattern) << " on " << U8(text);
                ASSERT_EQ(Joined(captures), matches ? Joined(twin.captures) : "")
                    << U8(pattern) << " on " << U8(text) << greedy;
            }
        }
    }
}

TEST(WildcardTest, IsTheDefinedSearch) {
    CompareAll(u"ab*?", u"ab", 5);
    CompareAll(u"a*?\\", u"a*\\", 4);
}

TEST(WildcardTest, Cases) {
    const std::tuple<const char16_t*, const char16_t*, bool, bool> rows[] = {
        {u"abbc", u"a*c", true, true}, {u"ac", u"a?c", false, false}, {u"*", u"\\*", true, true},
        {u"x", u"\\*", false, false},  {u"", u"*", true, true},       {u"\\", u"\\", true, true},
        {u"ABC", u"a*c", false, true}, {u"ÄÖ", u"?ö", false, true},   {u"ΣΩ", u"σ*", false, true},
        {u"", u"", true, true}};
    for (const auto& [text, pattern, matches, matchesNoCase] : rows) {
        EXPECT_EQ(AString(text).Match(pattern), matches) << U8(pattern);
        EXPECT_EQ(AString(text).MatchNoCase(pattern), matchesNoCase) << U8(pattern);
    }
    EXPECT_TRUE(AString(std::u16string(u"a\0b", 3)).Match(u"a")) << "stops at a zero";
}

TEST(WildcardTest, CapturesGoWhereTheyShould) {
    const AString text = u"a-b-c";
    std::vector<AString> captures(4, u"kept");
    EXPECT_TRUE(text.Match(u"*-*", captures, true));
    EXPECT_EQ(Joined(captures), "a-b|c|kept|kept|");
    EXPECT_TRUE(text.Match(u"*-*", captures, false));
    EXPECT_EQ(Joined(captures), "a|b-c|kept|kept|");
    EXPECT_FALSE(text.Match(u"?x*", captures, false));
    EXPECT_EQ(Joined(captures), "a|b-c|kept|kept|");

    AString first = u"1", third = u"3", fourth = u"4";
    EXPECT_FALSE(text.Scan(u"*+*", &first));
    EXPECT_TRUE(text.Scan(u"?-*-*", &first, nullptr, &third, &fourth));
    EXPECT_EQ(U8(first + third + fourth), "ac4");
}

TEST(WildcardTest, ManyStarsOnALongText) {
    const AString text(20000, u'a');
    AString pattern;
    for (int i = 0; i < 500; ++i)
        pattern += u"a*";
    std::vector<AString> captures;
    EXPECT_TRUE(text.Match(pattern, captures, true));
    EXPECT_EQ(captures[0].size(), 19500u);
    EXPECT_FALSE(text.Match(pattern + u"b", captures, true));
    EXPECT_FALSE(text.Match(pattern + u"b*", captures, false));
}

} // namespace
