#include "astring.h"

#include <clocale>
#include <gtest/gtest.h>
#include <set>
#include <stdexcept>

#include "assertion.h"
#include "char_class.h"
#include "locale_table.h"
#include "text_helpers.h"

namespace {

TEST(AStringTest, ConstructionAndAssignment) {
    const std::vector<char16_t> source{u'a', u'b', u'c'};
    const AString made[] = {u"abc",
                            "abc",
                            std::u16string(u"abc"),
                            std::u16string_view(u"abcd", 3),
                            std::string("abc"),
                            AString(u"abcd", 3),
                            AString(u"ab") + u'c',
                            AString{u'a', u'b', u'c'},
                            AString(source.begin(), source.end())};
    for (const AString& text : made)
        EXPECT_EQ(text, u"abc");
    EXPECT_EQ(AString() = u'x', u"x");
    EXPECT_EQ(AString(2, u'x'), u"xx");
    EXPECT_EQ(AString(), AString(0, u'x'));
    EXPECT_EQ(AString("\x80\x81"), u"\u20AC\u0081");
    EXPECT_EQ(AString(u"a\0b", 3).size(), 3u);
    EXPECT_EQ(AString(std::string("a\0b\0", 4)).size(), 3u);

    AString text;
    text.Assign(AString::kUtf8, "\xCE\xA9m\0x", 4);
    EXPECT_EQ(text, u"Ωm") << "a zero at the end isn't counted";
    text.Assign(AString::kOem, "\x81", -1);
    EXPECT_EQ(text, u"ü");
    text.Assign(AString::kAnsi, u"abc", 2);
    EXPECT_EQ(text, u"ab");
    text.Assign(AString::kAnsi, text.c_str() + 1);
    EXPECT_EQ(text, u"b");
    text.Assign(AString::kAnsi, static_cast<const char16_t*>(nullptr), 5);
    EXPECT_EQ(text, u"");
    EXPECT_THROW(text.Assign(AString::kMaxLength + 1, u'x'), std::length_error);
    EXPECT_THROW(text.Assign(AString::kUtf8, "", std::ptrdiff_t{1} << 40), std::length_error);
    const std::u16string_view tooLong(u"", AString::kMaxLength + 1);
    EXPECT_THROW(AString{tooLong}, std::length_error);
    EXPECT_THROW(text = tooLong, std::length_error);
}

TEST(AStringTest, NullPointersAreAssertedAndEmpty) {
    std::vector<std::string> failed;
    SetAssertHandler([&](const std::string& text, unsigned) {
        const std::size_t start = text.find('\'') + 1;
        failed.push_back(text.substr(start, text.find('\'', start) - start));
        AString().Format(u"%s", u"formats itself");
        return AssertAnswer::kRetry;
    });
    gIgnoreAllAsserts = false;
    std::vector<AString> pieces;
    const char* narrow = nullptr;
    const char16_t* wide = nullptr;
    AString text(narrow);
    text += AString(wide);
    text += AString(wide, 3);
    text += AString().Format(wide);
    text += AString().Format(u"%d.");
    EXPECT_EQ(AString::Split(wide, u",", pieces), 0u);
    AString().Assign(static_cast<AString::Encoding>(9), "x");
    gIgnoreAllAsserts = true;
    SetAssertHandler({});
    EXPECT_EQ(text, u".");
    EXPECT_EQ(failed, (std::vector<std::string>{"a_string != 0", "a_string != 0", "a_string != 0",
                                                "format != 0", "hadAllArguments", "string != 0",
                                                "encoding < kEncodings"}));
}

TEST(AStringTest, MultiByteBuffers) {
    EXPECT_TRUE(AString().ToMultiByte().IsNull());
    const AStringBuf8 buffer = AString(u"kΩ").ToMultiByte(AString::kUtf8);
    EXPECT_EQ(buffer.Length(), 3);
    EXPECT_STREQ(buffer.Data(), "k\xCE\xA9");
    EXPECT_EQ(AString::MultiByteLength(AString::kUtf8, u"kΩx", 2), 3);
    EXPECT_EQ(AString::MultiByteLength(AString::kUtf8, nullptr, 2), 0);

    AStringBuf work;
    EXPECT_EQ(work.Reserve(-1), 0);
    EXPECT_EQ(work.Reserve(8), 8);
    work[7] = u'x';
    const AStringBuf shared = work;
    EXPECT_EQ(work.Reserve(5), 8);
    EXPECT_EQ(work.Data(), shared.Data());
    EXPECT_EQ(work.Reserve(9), 9);
    EXPECT_NE(work.Data(), shared.Data());
    EXPECT_EQ(shared.Capacity(), 8);
    work[9] = u'y'; // outside: a spare
    EXPECT_EQ(work[9], u'\0');
}

TEST(AStringTest, Comparison) {
    const std::tuple<const char*, const char*, int, int> rows[] = {
        {"", "", 0, 0},      {"Abc", "aBC", -1, 0}, {"abc", "abd", -1, -1}, {"ab", "abc", -1, -1},
        {"abc", "ab", 1, 1}, {"a", "B", 1, -1},     {"_", "A", 1, -1},      {"ÄÖÜ", "äöü", -1, 0},
        {"Ω", "ω", -1, 0},   {"ЖЩ", "жщ", -1, 0},   {"\uFFFD", "😀", 1, 1}};
    for (const auto& [givenA, givenB, order, orderNoCase] : rows) {
        const AString a = S(givenA), b = S(givenB);
        EXPECT_EQ(a.Compare(b), order) << givenA;
        EXPECT_EQ(b.Compare(a), -order) << givenA;
        EXPECT_EQ(a.CompareNoCase(b), orderNoCase) << givenA;
        EXPECT_EQ(AString::CompareNoCase(b.c_str(), a.c_str()), -orderNoCase) << givenA;
        EXPECT_EQ(AStringNoCaseLess()(a, b), orderNoCase < 0) << givenA;
    }
    const std::tuple<std::size_t, std::size_t, const char16_t*, int> parts[] = {
        {0, 3, u"ABC", 0}, {1, 2, u"bc", 0},    {1, 9, u"BCD", 0}, {1, 2, u"bcx", 0},
        {1, 9, u"bc", 1},  {1, 9, u"bcde", -1}, {0, 0, u"", 0},    {0, 0, u"a", -1},
        {4, 1, u"", 0},    {9, 1, u"a", -1}};
    for (const auto& [pos, count, other, order] : parts)
        EXPECT_EQ(AString(u"aBcD").CompareNoCase(pos, count, other), order)
            << pos << " " << count << U8(other);
}

TEST(AStringTest, SubstringsNeverFail) {
    const AString abc = u"abc";
    constexpr std::ptrdiff_t kMost = PTRDIFF_MAX;
    EXPECT_EQ(Joined({abc.Left(0), abc.Left(2), abc.Left(99), abc.Left(-1)}), "|ab|abc||");
    EXPECT_EQ(Joined({abc.Right(-3), abc.Right(2), abc.Right(99), abc.Right(kMost)}),
              "|bc|abc|abc|");
    EXPECT_EQ(
        Joined({abc.Mid(-2, 1), abc.Mid(10, 2), abc.Mid(3, 1), abc.Mid(1, 0), abc.Mid(1, 99)}),
        "a||||bc|");
    EXPECT_EQ(Joined({abc.Mid(1), abc.Mid(-1), abc.Mid(3), abc.Mid(kMost, kMost)}), "bc|abc|||");
    EXPECT_EQ(AString(u"AÄΩ1").ToLower(), u"aäω1");
}

TEST(AStringTest, Trimming) {
    const std::tuple<const char16_t*, const char16_t*, const char16_t*, const char16_t*> rows[] = {
        {u"", u"", u"", u""},
        {u" \t\u00A0\u2003", u"", u"", u""},
        {u" a b\n", u"a b\n", u" a b", u"a b"},
        {u"x", u"x", u"x", u"x"}};
    for (const auto& [text, wantedLeft, wantedRight, wantedBoth] : rows) {
        AString left = text, right = text, both = text;
        left.TrimLeft();
        right.TrimRight();
        both.Trim();
        EXPECT_EQ(left, wantedLeft);
        EXPECT_EQ(right, wantedRight);
        EXPECT_EQ(both, wantedBoth);
    }
}

TEST(AStringTest, IdentifiersAndSplitting) {
    for (const char* name : {"_a1", "x", "Ähre", "µ2", "_", "Ωm"})
        EXPECT_TRUE(S(name).IsIdentifier()) << name;
    for (const char* name : {"", "1a", "a b", "a-", "$a", "a\u00B2", "٣"})
        EXPECT_FALSE(S(name).IsIdentifier()) << name;
    const std::pair<const char16_t*, const char*> rows[] = {
        {u"a,,b", "a||b|"}, {u",", "||"}, {u"", ""}, {u"a,b;", "a|b||"}, {u"ab", "ab|"}};
    for (const auto& [text, expected] : rows) {
        std::vector<AString> pieces = {u"first"};
        const std::size_t added = AString(text).Split(u",;", pieces);
        EXPECT_EQ(Joined(pieces), std::string("first|") + expected);
        EXPECT_EQ(added + 1, pieces.size());
    }
}

TEST(AStringTest, NothingDependsOnTheLocale) {
    const auto results = [] {
        double value = 0;
        AString(u"2.5").ToDouble(value);
        return U8(AString().Format(u"%.2f %g", 1234.5, value) + AString(u"ÄI\u0130").ToLower() +
                  AString("\xE4"));
    };
    const std::string expected = results();
    for (const char* name : {"de_DE.UTF-8", "tr_TR.UTF-8", "C.UTF-8"}) {
        std::setlocale(LC_ALL, name); // as far as the machine has it
        EXPECT_EQ(results(), expected) << name;
    }
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(expected, "1234.50 2.5äiiä");
}

TEST(LocaleTest, EachIsFoundByItsName) {
    std::set<unsigned> ids;
    for (const LocaleRow& row : GetLocaleTable()) {
        EXPECT_EQ(FindLocale(row.name).id, row.id) << U8(row.name);
        EXPECT_TRUE(ids.insert(row.id).second) << U8(row.name);
    }
    EXPECT_EQ(FindLocale(AString(u"German_Austria.1252")).id, 0x0C07u);
    EXPECT_EQ(FindLocale(u"Greek_Greece.1253").language, u"ελληνικά");
    for (const char16_t* name : {u"", u"German", u"German_Austria.1250", u"Zulu_South Africa.1252"})
        EXPECT_EQ(FindLocale(name).language, u"") << U8(name);
}

TEST(CharClassTest, Classes) {
    using namespace chars;
    const std::tuple<char16_t, int, char16_t> rows[] = {{u'A', kAlpha | kUpper, u'a'},
                                                        {u'z', kAlpha | kLower, u'z'},
                                                        {u'5', kDigit, u'5'},
                                                        {u'\t', kSpace | kControl, u'\t'},
                                                        {u' ', kSpace, u' '},
                                                        {u'\x7F', kControl, u'\x7F'},
                                                        {u'\u0085', kSpace | kControl, u'\u0085'},
                                                        {u'×', 0, u'×'},
                                                        {u'ß', kAlpha | kLower, u'ß'},
                                                        {u'ÿ', kAlpha | kLower, u'ÿ'},
                                                        {u'Ÿ', kAlpha | kUpper, u'ÿ'},
                                                        {u'Ā', kAlpha | kUpper, u'ā'},
                                                        {u'ā', kAlpha | kLower, u'ā'},
                                                        {u'\u01C5', kAlpha, u'\u01C6'},
                                                        {u'Ⅷ', 0, u'ⅷ'},
                                                        {u'\u212A', kAlpha | kUpper, u'k'},
                                                        {u'中', kAlpha, u'中'},
                                                        {u'\xD800', 0, u'\xD800'},
                                                        {u'\uFF3A', kAlpha | kUpper, u'\uFF5A'},
                                                        {u'\u3000', kSpace, u'\u3000'},
                                                        {u'\uFFFF', 0, u'\uFFFF'}};
    for (const auto& [ch, classes, lower] : rows) {
        EXPECT_EQ(ClassesOf(ch), classes) << std::hex << +ch;
        EXPECT_EQ(chars::ToLower(ch), lower) << std::hex << +ch;
    }
}

} // namespace
