// Texts by number, and messages with inserts.

#include <gtest/gtest.h>

#include "text_helpers.h"

namespace {

constexpr StringRow kRows[] = {{5, u"five"}, {7, u"Net %1 has %2!d! pins"}};
constexpr StringRow kOtherRows[] = {{5, u"cinque"}};

TEST(ResourceTest, TheLaterSourceCounts) {
    const StringTable first(kRows), second(kOtherRows);
    EXPECT_EQ(AString(ResourceId{5}), u"");
    RegisterStringSource(first);
    RegisterStringSource(second);
    EXPECT_EQ(AString(ResourceId{5}), u"cinque");
    RegisterStringSource(first);
    EXPECT_EQ(AString(ResourceId{5}), u"five");
    EXPECT_EQ(AString(ResourceId{6}), u"");

    const FormatArg args[] = {u"out", 3};
    AString text;
    EXPECT_EQ(text.FormatMessageText(0x2800, nullptr, 7, 0, args), AString::kMessageDone);
    EXPECT_EQ(text, u"Net out has 3 pins");
    EXPECT_EQ(text.FormatMessageText(0x2800, &second, 7, 0, args), AString::kMessageUnknown);
    EXPECT_EQ(text, u"");
    UnregisterStringSource(first);
    UnregisterStringSource(second);
    EXPECT_EQ(text.FormatMessageText(0x2800, nullptr, 7, 0, args), AString::kMessageUnknown);
}

TEST(MessageTest, Inserts) {
    struct Row {
        const char16_t *message, *expected;
        unsigned flags = 0;
    };
    const Row rows[] = {{u"%1 and %2!s!, %1", u"one and 2, one"},
                        {u"%3!8.3f!|%3!-8.1e!|%2!05d!|%2!x!", u"   1.500|1.5e+00 |00002|2"},
                        {u"%10%1", u"tenone"},
                        {u"%4!*d!|%4!*.*s!", u"   2|  fo"},
                        {u"100%% %.%!% x%", u"100% .! x%"},
                        {u"a%nb%rc%td%be", u"a\r\nb\rc\td e"},
                        {u"end%0 of it", u"end"},
                        {u"a\nb\rc\r\nd", u"a\r\nb\r\nc\r\nd"},
                        {u"%1 %2!d! %% %n%0x", u"%1 %2!d! % \r\n", 0x200},
                        {u"a\nb\r\nc%nd", u"a b c\r\nd", 255},
                        {u"one two three four%nx", u"one two\r\nthree\r\nfour\r\nx", 8},
                        {u"unbreakable it", u"unbreakable\r\nit", 5},
                        {u"abcd efgh", u"abcd\r\nefgh", 4},
                        {u"%1 %1 %1 %1", u"one one\r\none one", 7},
                        {u"", u""}};
    const FormatArg args[] = {u"one", 2, 1.5, 4, 2, u"four", u"", u"", u"", u"ten"};
    for (const Row& row : rows) {
        AString text = u"before";
        EXPECT_EQ(text.FormatMessageText(0x2400 | row.flags, row.message, 0, 0, args),
                  AString::kMessageDone);
        EXPECT_EQ(U8(text), U8(row.expected)) << U8(row.message);
    }
}

TEST(MessageTest, ErrorsLeaveItEmpty) {
    const AString atLimit(4095, u'x'), tooLong(4096, u'x');
    const std::tuple<unsigned, const char16_t*, AString::MessageError> rows[] = {
        {0x400, u"%2", AString::kMessageInvalid},
        {0x400, u"%99", AString::kMessageInvalid},
        {0x400, u"%1!d", AString::kMessageInvalid},
        {0x400, u"%1!!", AString::kMessageInvalid},
        {0x400, u"%1!q!", AString::kMessageInvalid},
        {0x400, u"%1!dd!", AString::kMessageInvalid},
        {0x400, u"%1!*d!", AString::kMessageInvalid},
        {0x400, nullptr, AString::kMessageInvalid},
        {0x000, u"x", AString::kMessageInvalid},
        {0x400, u"%1!999999999d!", AString::kMessageTooLong},
        {0x400, u"%1!.999999999f!", AString::kMessageTooLong},
        {0x400, tooLong.c_str(), AString::kMessageTooLong},
        {0x400, atLimit.c_str(), AString::kMessageDone}};
    const FormatArg args[] = {1};
    for (const auto& [flags, message, error] : rows) {
        AString text = u"before";
        EXPECT_EQ(text.FormatMessageText(flags, message, 0, 0, args), error);
        EXPECT_EQ(text.size(), error == AString::kMessageDone ? 4095u : 0u);
    }
}

} // namespace
