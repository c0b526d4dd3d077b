/// Printing of a text view on a device that records.
#include <regex>

#include "breaking_desk.h"
#include "dc.h"
#include "document.h"
#include "editor_options.h"
#include "header_footer.h"
#include "messages.h"
#include "print_info.h"
#include "view_fixture.h"

namespace {

/// A page as a text: "x,y text" with "#color" unless it is 0, a rule as "x-x at y".
std::string Dump(const PrintedPage& page) {
    std::string text;
    for (const PrintedText& drawn : page.m_Texts) {
        text += (text.empty() ? "" : " / ") + std::to_string(drawn.m_X) + ',' +
                std::to_string(drawn.m_Y) + ' ' + AString(drawn.m_Text).ToCString(AString::kUtf8);
        if (drawn.m_Color)
            text += '#' + std::to_string(drawn.m_Color);
    }
    for (const PrintedRule& rule : page.m_Rules)
        text += (text.empty() ? "" : " / ") + std::to_string(rule.m_From.x) + '-' +
                std::to_string(rule.m_To.x) + " at " + std::to_string(rule.m_From.y);
    return text;
}

} // namespace

/// The device is 400 by 200 with characters of 10 by 20; borders leave 20 columns from x = 100.
class ViewPrintTest : public ViewTest {
protected:
    ViewPrintTest() { m_Desk.m_Printer.m_PageSize = {400, 200}; }

    /// Sets options, which are given as "key=value key=value".
    void Set(const std::string& options) {
        std::istringstream words(options);
        for (std::string word; words >> word;) {
            const std::size_t at = word.find('=');
            m_Options.Set(u"Options", AString(word.substr(0, at)), AString(word.substr(at + 1)));
        }
    }
    void SelectText(TextPosition anchor, TextPosition end, bool block) {
        EXPECT_TRUE(Editor().m_Driver->Select(anchor, end, block));
    }
    const PrintRecord& Print(unsigned command = kCommandPrint) {
        EXPECT_TRUE(Editor().m_Driver->RunCommand(command));
        return command == kCommandPrintPreview ? *m_Desk.m_Previews.back()
                                               : *m_Desk.m_PrintJobs.back();
    }
    std::string PrintedPages() {
        std::string text;
        for (const PrintedPage& page : Print().m_Pages)
            text += (text.empty() ? "" : " | ") + Dump(page);
        return text;
    }
};

TEST_F(ViewPrintTest, PagesHoldTheText) {
    const std::string nine = "1\n2\n3\n4\n5\n6\n7\n8\n9";
    const std::tuple<const char*, std::string, const char*> kRows[] = {
        {"", "", ""},
        {"", "R1 a b 1k\n\nend\n", "100,0 R1 a b 1k / 100,40 end"},
        {"", "a\tb\n\xB5\x80", "100,0 a   b / 100,20 \u00b5\u20ac"},
        {"", std::string(25, 'x') + "\ny", "100,0 xxxxxxxxxxxxxxxxxxxx / 100,20 xxxxx / 100,40 y"},
        {"PrintLineNumbers=1", std::string(16, 'x') + "\n\ny\n",
         "100,0 0001:  / 160,0 xxxxxxxxxxxxxx / 100,20        / 160,20 xx / 100,40 0002:  / "
         "100,60 0003:  / 160,60 y"},
        {"PrintLBorder=2 PrintRBorder=30", std::string(9, 'x'), "20,0 xxxxxxxx / 20,20 x"},
        {"PrintLBorder=99", "ab", "990,0 a / 990,20 b"}, // which leaves nothing
        {"", "a/*b*/c", "100,0 a / 110,0 /*b*/#2 / 160,0 c"},
        {"", "a/*234567890123456789012*/b",
         "100,0 a / 110,0 /*23456789012345678#2 / 100,20 9012*/#2 / 160,20 b"},
        {"PrintHead=9 PrintHeadText=top PrintFoot=268435468 PrintFootText=end", nine,
         "100,0 top / 270,180 end / 100,25 1 / 100,45 2 / 100,65 3 / 100,85 4 / 100,105 5 / "
         "100,125 6 / 100,145 7 / 100-300 at 175 | 100,0 top / 270,180 end / 100,25 8 / 100,45 9 "
         "/ 100-300 at 175"},
        {"PrintHead=536907776", nine,
         "100,0 Page 1 Of 2 / 100,25 1 / 100,45 2 / 100,65 3 / 100,85 4 / 100,105 5 / 100,125 6 "
         "/ 100,145 7 / 100,165 8 | 100,0 Page 2 Of 2 / 100,25 9"},
        {"PrintHead=1073741824", "x", "100,0 x"}, // can't ask for measuring
    };
    WriteConfig("install", 3);
    Factory();
    for (const auto& [options, text, pages] : kRows) {
        SCOPED_TRACE(pages);
        m_Options.Clear();
        Set(options);
        LoadOptions(m_Desktop);
        Open(text);
        EXPECT_EQ(PrintedPages(), pages);
        EXPECT_TRUE(m_Desk.m_PrintJobs.back()->m_Completed);
        EXPECT_FALSE(Editor().m_Inspector->GetPrint());
    }
}

TEST_F(ViewPrintTest, ASelectionIsPrintedAlone) {
    Set("PrintLineNumbers=1");
    const std::tuple<TextPosition, TextPosition, bool, const char*> kRows[] = {
        {{2, 2},
         {0, 3},
         false,
         "100,0 0001:  / 160,0 3456789 / 100,20 0002:  / 160,20 ab / 100,40 0003:  / 160,40 AB"},
        {{0, 3}, {1, 0}, false, "100,0 0001:  / 160,0 3456789"},
        {{0, 7},
         {2, 3},
         true,
         "100,0 0001:  / 160,0 3456 / 100,20 0002:  / 100,40 0003:  / 160,40 DEFG"},
        {{2, 99}, {7, 99}, false, "100,0 0003:  / 100,20 0004:  / 160,20 z"}};
    Open("0123456789\nab\nABCDEFGH\nz");
    for (const auto& [anchor, end, block, pages] : kRows) {
        SelectText(anchor, end, block);
        EXPECT_EQ(PrintedPages(), pages);
    }
    m_Desk.m_PrintAnswers = {[](PrintRequest& request) {
        EXPECT_TRUE(request.m_AllowSelection && request.m_Selection);
        request.m_Selection = false; // the user wants it all
        return true;
    }};
    EXPECT_EQ(Print().m_Pages[0].m_Texts.size(), 8u);
    Click({0, 0});
    m_Desk.m_PrintAnswers = {[](PrintRequest& request) {
        EXPECT_FALSE(request.m_AllowSelection || request.m_Selection);
        return true;
    }};
    EXPECT_EQ(Print().m_Pages[0].m_Texts.size(), 8u);
}

TEST_F(ViewPrintTest, JobsGoThroughTheirSequence) {
    Set("PrintHead=32768");            // the page's number
    Open(std::string(30, '\n') + "x"); // four pages
    m_Desk.m_Messages.clear();
    EXPECT_EQ(Print(kCommandPrintDirect).m_Pages.size(), 4u);
    EXPECT_EQ(Print(kCommandPrintPreview).m_Pages.size(), 4u);
    EXPECT_EQ(m_Desk.m_PrintJobs.size(), 1u);

    const struct {
        int m_From, m_To;
        std::vector<std::u16string> m_First; ///< texts of the pages
    } kRows[] = {{2, 3, {u"Page 2", u"Page 3"}}, {4, 9, {u"Page 4"}}, {5, 9, {}}};
    for (const auto& row : kRows) {
        m_Desk.m_PrintAnswers = {[&](PrintRequest& request) {
            request.m_FromPage = row.m_From;
            request.m_ToPage = row.m_To;
            return true;
        }};
        std::vector<std::u16string> shown;
        for (const PrintedPage& page : Print().m_Pages)
            shown.push_back(page.m_Texts[0].m_Text);
        EXPECT_EQ(shown, row.m_First);
        EXPECT_EQ(m_Desk.m_PrintJobs.back()->m_Completed, !row.m_First.empty());
    }
    m_Desk.m_PrintAnswers = {[](PrintRequest&) { return false; }};
    Editor().m_Driver->RunCommand(kCommandPrint);
    EXPECT_TRUE(m_Desk.m_Messages.empty());
    EXPECT_EQ(m_Desk.m_PrintJobs.size(), 4u);
}

/// A selection is printed when a dialog says so; without one, everything is.
TEST_F(ViewPrintTest, OnlyADialogAsksForTheSelection) {
    Open("first\r\nsecond\r\nthird");
    Drag({1, 0}, {1, 6});
    const std::pair<unsigned, const char*> kRows[] = {
        {kCommandPrint, "100,0 second"},
        {kCommandPrintDirect, "100,0 first / 100,20 second / 100,40 third"},
        {kCommandPrintPreview, "100,0 first / 100,20 second / 100,40 third"}};
    for (const auto& [command, page] : kRows) {
        EXPECT_TRUE(Editor().m_Driver->RunCommand(command));
        ASSERT_EQ(m_Desk.m_PrintJobs.back()->m_Pages.size(), 1u);
        EXPECT_EQ(Dump(m_Desk.m_PrintJobs.back()->m_Pages[0]), page) << command;
    }
}

TEST_F(ViewPrintTest, AJobThatEndsEarlyIsDropped) {
    BreakingDesk breaking(m_Desk);
    const std::tuple<unsigned, int, std::size_t, bool, bool> kRows[] = {
        {kBreakPrintStart, 0, 0, false, true},   {kBreakPrintPage, 0, 1, false, true},
        {kBreakPrintPageEnd, 0, 2, false, true}, {kBreakPrintEnd, 0, 4, false, true},
        {kBreakFont, 0, 4, true, false},         {0, 2, 2, false, false}};
    Open(std::string(33, '\n') + "x"); // four pages
    SetBackend(&breaking);
    breaking.m_LostPage = 2;
    for (const auto& [broken, lastWanted, pages, completed, told] : kRows) {
        breaking.m_Broken = broken;
        m_Desk.m_Printer.m_LastWanted = lastWanted;
        m_Desk.m_Messages.clear();
        const PrintRecord& record = Print();
        EXPECT_EQ(record.m_Pages.size(), pages) << broken;
        EXPECT_EQ(record.m_Completed, completed) << broken;
        EXPECT_EQ(!m_Desk.m_Messages.empty(), told) << broken;
        EXPECT_FALSE(Editor().m_Inspector->GetPrint());
    }
    SetBackend(&m_Desk);
}

/// The font is asked for in the device's units, and the pages are told while the job runs.
TEST_F(ViewPrintTest, MeasuresAreTheDevices) {
    class Desk : public BreakingDesk {
    public:
        using BreakingDesk::BreakingDesk;
        std::unique_ptr<IBackendFont> CreateFont(const LogFont& font) override {
            m_Asked.push_back(font);
            return BreakingDesk::CreateFont(font);
        }
        std::vector<LogFont> m_Asked;
    } desk(m_Desk);
    Set("TextFont=Mono,-13,5 PrintLineNumbers=1");
    m_Desk.m_Printer.m_Resolution = {600, 1200};
    m_Desk.m_Printer.m_Font = {20, 3, 7, 10};
    Open("a\nb");
    SetBackend(&desk);
    Print();
    SetBackend(&m_Desk);
    ASSERT_EQ(desk.m_Asked.size(), 1u);
    EXPECT_EQ(desk.m_Asked[0].m_FaceName, u"Mono");
    EXPECT_EQ(desk.m_Asked[0].m_Height, -163); // -162.5, away from 0
    EXPECT_EQ(desk.m_Asked[0].m_Width, 31);    // 31.25
    EXPECT_EQ(Dump(m_Desk.m_PrintJobs.back()->m_Pages[0]),
              "100,0 0001:  / 142,0 a / 100,23 0002:  / 142,23 b");
}

TEST(HeaderFooterTest, ItemsStandWhereTheirNibblesSay) {
    constexpr std::uint32_t kTotal = kBandTotal, kRule = kBandRule;
    const struct {
        std::uint32_t m_Header, m_Footer;
        int m_Page, m_PagesPerUnit;
        const char* m_Drawn;
        int m_Top, m_Bottom; ///< of what is left
    } kRows[] = {
        {0, 0, 1, 1, "", 10, 190},
        {0xC9, 0, 1, 1, "20,12 head / 320,12 netlist.cir", 38, 190},
        {0x8, 0xC8, 1, 1, "205,12 head / 205,169 foot / 320,169 netlist.cir", 38, 162},
        {0xD, 0, 1, 1, "20,12 head", 38, 190},
        {0x1, 0, 1, 1, "", 38, 190},
        {kRule, kRule, 1, 1, "20-430 at 38 / 20-430 at 162", 43, 157},
        {kRule | kBandMeasureOnly, 0x9 | kBandMeasureOnly, 1, 1, "", 43, 162},
        {kBandMeasureOnly, kBandMeasureOnly, 1, 1, "", 10, 190},
        {0x9000, 0x9000 | kTotal, 3, 1, "20,12 Page 3 / 20,169 Page 3 Of 5", 38, 162},
        {0x90000, 0x90000 | kTotal, 3, 1, "20,12 Page 3 / 20,169 Page 3 Of 5", 38, 162},
        {0x9000 | kTotal, 0, 3, 4, "20,12 Page 3 Of 20", 38, 190},
        {0x90000, 0x90000 | kTotal, 7, 4, "20,12 Page 2.3 / 20,169 Page 2.3 Of 5.4", 38, 162},
        {0x90000, 0, 8, 4, "20,12 Page 2.4", 38, 190}};
    CDocument document;
    document.SetTitle(u"netlist.cir");
    const AString head = u"head", foot = u"foot";
    for (const auto& row : kRows) {
        PageSurface surface({.m_PageSize = {450, 200}, .m_Font = {19, 4, 10, 10}});
        PrintedPage page;
        surface.SetPage(&page);
        CDC dc(surface);
        CPrintInfo info;
        info.m_CurPage = row.m_Page;
        CRect rect{20, 10, 430, 190};
        PrintHeaderFooter(dc, info, row.m_Header, row.m_Footer, &rect, &document, &head, &foot, 5,
                          row.m_PagesPerUnit, 2);
        EXPECT_EQ(Dump(page), row.m_Drawn) << std::hex << row.m_Header;
        EXPECT_EQ(rect, (CRect{20, row.m_Top, 430, row.m_Bottom})) << std::hex << row.m_Header;
    }
    PageSurface surface({.m_PageSize = {450, 200}});
    PrintedPage page;
    surface.SetPage(&page);
    CDC dc(surface);
    PrintHeaderFooter(dc, {}, 0x999, 0xCC, nullptr, nullptr, nullptr, nullptr, 1, 1, 2);
    ASSERT_EQ(page.m_Texts.size(), 1u); // neither text nor title is given
    EXPECT_EQ(page.m_Texts[0].m_X, 0);
    const std::string time = AString(page.m_Texts[0].m_Text).ToCString(AString::kUtf8);
    EXPECT_TRUE(std::regex_match(time, std::regex(R"(\d\d\.\d\d\.\d{4} \d\d:\d\d)"))) << time;
}
