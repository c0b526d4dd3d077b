#include "editor_options.h"

#include <gtest/gtest.h>

namespace {

TEST(EditorOptions, FontsHaveATextForm) {
    const LogFont fixed{.m_FaceName = u"Courier New",
                        .m_Height = -12,
                        .m_Weight = 400,
                        .m_OutPrecision = 3,
                        .m_ClipPrecision = 2,
                        .m_Quality = 1,
                        .m_PitchAndFamily = 34};
    const struct {
        const char16_t* text;
        LogFont font;
    } rows[] = {
        {u"Courier New,-12,0,0,0,400,0,0,0,0,3,2,1,34", fixed},
        {u"F,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15",
         {u"F", 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}},
        {u",,F,,,1,,2,", {.m_FaceName = u"F", .m_Height = 1, .m_Width = 2}},
        {u"F, +3,\t-4,5x,x6,+-7,--8,,256,257,-1",
         {.m_FaceName = u"F",
          .m_Height = 3,
          .m_Width = -4,
          .m_Escapement = 5,
          .m_StrikeOut = 1,
          .m_CharSet = 255}},
        {u"F,2147483648,-99999999999,\u00B51",
         {.m_FaceName = u"F", .m_Height = 2147483647, .m_Width = -2147483648}},
        {u"", {}},
        {u",,", {}},
    };
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
