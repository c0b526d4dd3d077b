/// What a screen reader reads of a view.
#include "view_script.h"

namespace {

class ViewReader : public ScriptTest {
protected:
    IAccessibleText& Reader() { return *View().GetAccessibleText(); }
};

TEST_F(ViewReader, FollowsCaretAndSelection) {
    const std::tuple<const char*, const char*, const char16_t*, int, IAccessibleText::Range>
        kCases[] = {{"|", "Left", u"", 0, {}},
                    {"a\tb\ncd|", "Left", u"a   b\ncd", 7, {}},
                    {"ab\nc|d", "S-C-Home", u"ab\ncd", 0, {0, 4}},
                    {"\xB5|\n*", "S-C-End", u"\u00B5\n*", 2, {1, 2}}};
    for (const auto& [start, script, text, caret, selection] : kCases) {
        SCOPED_TRACE(start);
        Start(start);
        Play(script);
        EXPECT_EQ(Reader().GetText({-5, 1000}), text);
        EXPECT_EQ(Reader().GetLength(), static_cast<int>(std::u16string_view(text).size()));
        EXPECT_EQ(Reader().GetCaretOffset(), caret);
        EXPECT_EQ(Reader().GetSelection(), selection);
    }
}

TEST_F(ViewReader, FindsTheLineOfAnOffset) {
    Start("|ab\n\ncde");
    const IAccessibleText::Range lines[] = {{0, 2}, {0, 2}, {0, 2}, {3, 3}, {4, 7},
                                            {4, 7}, {4, 7}, {4, 7}, {4, 7}};
    for (int offset = 0; offset < static_cast<int>(std::size(lines)); ++offset)
        EXPECT_EQ(Reader().GetLineAt(offset), lines[offset]) << offset;
}

} // namespace
