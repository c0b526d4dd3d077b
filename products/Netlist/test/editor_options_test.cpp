#include "editor_options.h"

#include <gtest/gtest.h>

#include "test_desktop.h"

namespace {

/// The one set, put back at the end.
class Options : public testing::Test {
protected:
    ~Options() override { CurrentOptions() = m_Before; }

    const EditorOptions m_Before = CurrentOptions();
    OptionStore m_Store;
    TestDesktop m_Desktop{m_Store};
};

TEST_F(Options, EachKeyIsReadAndAMissingOneGivesItsDefault) {
    const struct {
        const char16_t* key;
        std::int32_t EditorOptions::*field;
        std::int32_t standard;
    } integers[] = {{u"PrintLineNumbers", &EditorOptions::PrintLineNumbers, 0},
                    {u"PrintLBorder", &EditorOptions::PrintLBorder, 10},
                    {u"PrintRBorder", &EditorOptions::PrintRBorder, 10},
                    {u"PrintHead", &EditorOptions::PrintHead, 0},
                    {u"PrintFoot", &EditorOptions::PrintFoot, 0},
                    {u"BMColor", &EditorOptions::BMColor, 0xC0C0C0},
                    {u"FillBlanksOnEnter", &EditorOptions::FillBlanksOnEnter, 0},
                    {u"DropBlanksOnSave", &EditorOptions::DropBlanksOnSave, 0},
                    {u"NumberOfUndos", &EditorOptions::NumberOfUndos, 1000},
                    {u"ModelComment", &EditorOptions::ModelComment, 1}};
    EditorOptions& options = CurrentOptions();
    for (const bool stored : {true, false}) {
        m_Store.Clear();
        for (int i = 0; stored && i < static_cast<int>(std::size(integers)); ++i)
            m_Store.Set(u"Options", integers[i].key, AString(std::to_string(-3 - i)));
        if (stored)
            m_Store.Set(u"Options", u"PrintHeadText", u"head");
        if (stored)
            m_Store.Set(u"Options", u"PrintFootText", u"foot");
        LoadOptions(m_Desktop);
        for (int i = 0; i < static_cast<int>(std::size(integers)); ++i)
            EXPECT_EQ(options.*integers[i].field, stored ? -3 - i : integers[i].standard) << i;
        EXPECT_EQ(options.PrintHeadText, stored ? u"head" : u"");
        EXPECT_EQ(options.PrintFootText, stored ? u"foot" : u"");
        EXPECT_EQ(options.TextFont.m_FaceName, u"Courier New");
    }
}

TEST(OptionFont, FontsHaveATextForm) {
    const LogFont fixed{u"Courier New", -12, 0, 0, 0, 400, 0, 0, 0, 0, 3, 2, 1, 34};
    const struct {
        const char16_t* text;
        LogFont font;
    } rows[] = {
        {u"Courier New,-12,0,0,0,400,0,0,0,0,3,2,1,34", fixed},
        {u"F,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15",
         {u"F", 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}},
        {u",,F,,,1,,2,", {.m_FaceName = u"F", .m_Height = 1, .m_Width = 2}},
        {u"F, +3,\t-4,5x,x6,+-7,--8,,256,257,-1", {u"F", 3, -4, 5, 0, 0, 0, 0, 1, 255, 0, 0, 0, 0}},
        {u"F,2147483648,-99999999999,\u00B51",
         {.m_FaceName = u"F", .m_Height = 2147483647, .m_Width = -2147483648}},
        {u"", {}},
        {u",,", {}}};
    for (const auto& row : rows) {
        const LogFont font = ParseTextFont(row.text);
        EXPECT_EQ(font, row.font) << AString(row.text).ToCString();
        if (!font.m_FaceName.empty()) {
            EXPECT_EQ(ParseTextFont(FormatTextFont(font)), font) << AString(row.text).ToCString();
        }
    }
    EXPECT_EQ(FormatTextFont(fixed), rows[0].text);
    EXPECT_EQ(CurrentOptions().TextFont, fixed) << "the default";
}

} // namespace
