#include "code_page.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

#include "astring.h"

namespace {

using namespace codepage;

constexpr Page kPages[] = {Page::kWindows1252, Page::kDos850};

TEST(CodePageTest, EachByteComesBack) {
    for (const Page page : kPages) {
        for (int b = 0; b < 0x100; ++b) {
            const char16_t ch = DecodeByte(page, static_cast<char>(b));
            EXPECT_EQ(EncodeUnit(page, ch), static_cast<char>(b)) << b;
            EXPECT_EQ(ch == b,
                      b < 0x80 || (page == Page::kWindows1252 && b >= 0xA0) ||
                          (page == Page::kWindows1252 &&
                           (b == 0x81 || b == 0x8D || b == 0x8F || b == 0x90 || b == 0x9D)))
                << b;
        }
    }
}

TEST(CodePageTest, KnownCharacters) {
    const std::tuple<Page, unsigned char, char16_t> rows[] = {
        {Page::kWindows1252, 0x80, u'€'}, {Page::kWindows1252, 0x99, u'™'},
        {Page::kWindows1252, 0xB5, u'µ'}, {Page::kWindows1252, 0x9F, u'Ÿ'},
        {Page::kDos850, 0x81, u'ü'},      {Page::kDos850, 0xE6, u'µ'},
        {Page::kDos850, 0xD5, u'ı'},      {Page::kDos850, 0xC4, u'─'},
        {Page::kDos850, 0xFF, u'\u00A0'}, {Page::kDos850, 0xE1, u'ß'}};
    for (const auto& [page, byte, ch] : rows)
        EXPECT_EQ(DecodeByte(page, static_cast<char>(byte)), ch) << int(byte);
    EXPECT_EQ(EncodeUnit(Page::kWindows1252, u'Ω'), '?');
    EXPECT_EQ(EncodeUnit(Page::kWindows1252, u'\u0080'), '?');
    EXPECT_EQ(EncodeUnit(Page::kDos850, u'€'), '?');
    EXPECT_EQ(EncodeUnit(Page::kDos850, u'\xD83D'), '?');
}

/// Texts in bulk are what their units are one by one, wherever in a block the unusual one stands.
TEST(CodePageTest, BulkIsAsUnitByUnit) {
    for (const Page page : kPages) {
        for (std::size_t length = 0; length < 50; ++length) {
            for (std::size_t at = 0; at < length; ++at) {
                for (const char16_t odd : {u'µ', u'€', u'\0', u'Ω', u'\u00A0', u'ı'}) {
                    std::u16string text(length, u'a'), back;
                    text[at] = odd;
                    std::string expected(length, 'a'), bytes;
                    expected[at] = EncodeUnit(page, odd);
                    AppendEncoded(page, text, bytes);
                    ASSERT_EQ(bytes, expected);
                    ASSERT_EQ(CanEncode(page, text), expected[at] != '?');
                    AppendDecoded(page, bytes, back);
                    text[at] = DecodeByte(page, expected[at]);
                    ASSERT_EQ(back, text);
                }
            }
        }
    }
}

/// Ill-formed bytes, with the replacements that the Unicode standard recommends (its table 3-8 and
/// those beside it).
TEST(Utf8Test, ReplacesEachIllFormedPiece) {
    const std::pair<const char*, std::u16string_view> rows[] = {
        {"\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41",
         u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41",
         u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA\uFFFD\uFFFDB"},
        {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41", u"\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"\xC1\xBF", u"\uFFFD\uFFFD"},
        {"\xF5\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF8\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"ab\xE2\x82", u"ab\uFFFD"},
        {"\xF0\x9F\x98", u"\uFFFD"},
        {"\xC3", u"\uFFFD"}};
    for (const auto& [givenBytes, wantedText] : rows) {
        for (const std::u16string filler : {u"a", u"é", u"€", u"😀"}) {
            for (const std::size_t ahead : {0u, 1u, 2u, 3u, 7u, 16u, 340u, 511u, 1022u, 1023u}) {
                // With and without text behind, and across the ends of words, blocks and steps.
                for (const std::size_t behind : {0u, 1u, 40u}) {
                    std::u16string front, back, text;
                    for (std::size_t i = 0; i < std::max(ahead, behind); ++i) {
                        front += i < ahead ? filler : u"";
                        back += i < behind ? filler : u"";
                    }
                    std::string bytes, tail;
                    AppendUtf16ToUtf8(front, bytes);
                    AppendUtf16ToUtf8(back, tail);
                    bytes += givenBytes + tail;
                    AppendUtf8ToUtf16(bytes, text);
                    ASSERT_EQ(text, front.append(wantedText) + back);
                    ASSERT_FALSE(IsValidUtf8(bytes));
                }
            }
        }
    }
}

TEST(Utf8Test, EachCharacterComesBackAndEachSurrogateIsReplaced) {
    constexpr int kTimes = 14; // words of them, and a few one by one
    for (char32_t ch = 0; ch < 0x110000; ch += ch < 0x11000 ? 1 : 253) {
        const bool isLone = ch >= 0xD800 && ch < 0xE000;
        std::u16string text, expected, back;
        for (int i = 0; i < kTimes; ++i) {
            if (ch >= 0x10000)
                text += static_cast<char16_t>(0xD7C0 + (ch >> 10));
            text += static_cast<char16_t>(ch < 0x10000 ? ch : 0xDC00 + (ch & 0x3FF));
            expected += isLone ? kReplacement : text.back();
        }
        std::string bytes;
        AppendUtf16ToUtf8(text, bytes);
        AppendUtf8ToUtf16(bytes, back);
        ASSERT_EQ(back, isLone ? expected : text) << std::hex << +ch;
        ASSERT_EQ(IsValidUtf16(text), !isLone);
        ASSERT_EQ(Utf16ToUtf8Length(text), bytes.size());
        ASSERT_TRUE(IsValidUtf8(bytes));
    }
}

/// Texts of one kind of character and of several, in exactly the room that they are said to take,
/// and long ones, which go in steps that may divide no character.
TEST(Utf8Test, RunsComeBack) {
    for (const std::u16string character : {u"é", u"€", u"😀", u"aß", u"z😀€", u"ж ", u"\xD800"}) {
        for (std::size_t count = 0; count < 4000; count = count < 40 ? count + 1 : count * 3) {
            std::u16string text(count % 4, u'a'), expected;
            for (std::size_t i = 0; i < count; ++i)
                text += character;
            for (const char16_t ch : text)
                expected += ch == 0xD800 && character.size() == 1 ? kReplacement : ch;
            std::vector<char> bytes(Utf16ToUtf8Length(text));
            ASSERT_EQ(Utf16ToUtf8(text, bytes.data()), bytes.size());
            std::string appended;
            AppendUtf16ToUtf8(text, appended);
            ASSERT_EQ(appended, std::string(bytes.begin(), bytes.end()));
            std::vector<char16_t> units(bytes.size());
            units.resize(Utf8ToUtf16(appended, units.data()));
            ASSERT_EQ(std::u16string(units.begin(), units.end()), expected);
            std::u16string back;
            AppendUtf8ToUtf16(appended, back);
            ASSERT_EQ(back, expected);
        }
    }
}

TEST(EncodingTest, SaysBeforehandWhatIsLost) {
    struct Row {
        const char16_t* text;
        bool ansi, utf8, oem;
    };
    const Row rows[] = {{u"", true, true, true},
                        {u"abc µ ß", true, true, true},
                        {u"20 €", true, true, false},
                        {u"10 kΩ", false, true, false},
                        {u"─┼", false, true, true},
                        {u"really?", true, true, true},
                        {u"\xD83D x", false, false, false},
                        {u"😀", false, true, false}};
    for (const Row& row : rows) {
        const AString text = row.text;
        for (const auto& [encoding, exact] :
             {std::pair(AString::kAnsi, row.ansi), std::pair(AString::kUtf8, row.utf8),
              std::pair(AString::kOem, row.oem), std::pair(AString::kWestern, row.ansi)}) {
            EXPECT_EQ(text.CanEncode(encoding), exact);
            const std::string bytes = text.ToCString(encoding);
            EXPECT_EQ(AString::FromMultiByte(encoding, bytes) == text, exact);
            EXPECT_TRUE(AString::CanDecode(encoding, bytes));
            const auto length = AString::MultiByteLength(encoding, row.text);
            EXPECT_EQ(static_cast<std::size_t>(length), bytes.size());
        }
    }
    EXPECT_FALSE(AString::CanDecode(AString::kUtf8, "caf\xE9"));
    EXPECT_TRUE(AString::CanDecode(AString::kAnsi, "caf\xE9"));
}

} // namespace
