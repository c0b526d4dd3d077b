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
    } integers[] = {
        {u"PrintLineNumbers", &EditorOptions::PrintLineNumbers, 0},
        {u"PrintLBorder", &EditorOptions::PrintLBorder, 10},
        {u"PrintRBorder", &EditorOptions::PrintRBorder, 10},
        {u"PrintHead", &EditorOptions::PrintHead, 0},
        {u"PrintFoot", &EditorOptions::PrintFoot, 0},
        {u"BMColor", &EditorOptions::BMColor, 0xC0C0C0},
        {u"FillBlanksOnEnter", &EditorOptions::FillBlanksOnEnter, 0},
        {u"DropBlanksOnSave", &EditorOptions::DropBlanksOnSave, 0},
        {u"NumberOfUndos", &EditorOptions::NumberOfUndos, 1000},
        {u"ModelComment", &EditorOptions::ModelComment, 1},
    };
    int value = -3;
    for (const auto& row : integers)
        m_Store.Set(u"Options", row.key, AString(std::to_string(--value)));
    m_Store.Set(u"Options", u"PrintHeadText", u"head");
    m_Store.Set(u"Options", u"PrintFootText", u"foot");
    m_Store.Set(u"Options", u"TextFont", u"Other,,-9");
    LoadOptions(m_Desktop);
    EditorOptions& options = CurrentOptions();
    value = -3;
    for (const auto& row : integers)
        EXPECT_EQ(options.*row.field, --value) << AString(row.key).ToCString();
    EXPECT_EQ(options.PrintHeadText, u"head");
    EXPECT_EQ(options.PrintFootText, u"foot");
    EXPECT_EQ(options.TextFont, (LogFont{.m_FaceName = u"Other", .m_Height = -9}));

    m_Store.Clear();
    LoadOptions(m_Desktop);
    for (const auto& row : integers)
        EXPECT_EQ(options.*row.field, row.standard) << AString(row.key).ToCString();
    EXPECT_EQ(options.PrintHeadText, u"");
    EXPECT_EQ(options.PrintFootText, u"");
    EXPECT_EQ(options.TextFont.m_FaceName, u"Courier New");
}

TEST_F(Options, WhatIsSavedIsLoadedAgain) {
    const LogFont font{.m_FaceName = u"Other", .m_Height = -20, .m_Italic = 1};
    SaveTextFont(m_Desktop, font);
    SaveBookmarkColor(m_Desktop, 0x123456);
    EXPECT_NE(CurrentOptions().BMColor, 0x123456) << "saving changes the store alone";
    LoadOptions(m_Desktop);
    EXPECT_EQ(CurrentOptions().TextFont, font);
    EXPECT_EQ(CurrentOptions().BMColor, 0x123456);
    EXPECT_EQ(m_Store.Find(u"Options", u"BMColor"), u"1193046");
}

} // namespace
