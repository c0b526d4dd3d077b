#include "syntax_config.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

/// A folder of its own with files written for one test.
class SyntaxConfigTest : public testing::Test {
protected:
    SyntaxConfigTest()
        : m_folder(std::filesystem::path(testing::TempDir()) /
                   (std::string("syntax_") +
                    testing::UnitTest::GetInstance()->current_test_info()->name())) {
        std::filesystem::create_directories(m_folder);
    }
    ~SyntaxConfigTest() override { std::filesystem::remove_all(m_folder); }

    void Write(const std::string& name, const std::string& text) {
        std::ofstream(m_folder / name, std::ios::binary) << text;
    }
    SyntaxDscrs Read() {
        const std::string path = (m_folder / "c.cfg").string();
        return ReadSyntaxDscrs(path, path, &m_reports);
    }
    /// A configuration whose only description is the file d.dsc with this text.
    SyntaxDscrs ReadDescription(const std::string& text) {
        Write("c.cfg", "[SyntaxColoring]\nNumberOfDscr=1\nDscr0=D\n[D]\nDscrFile=d.dsc\n");
        Write("d.dsc", text);
        return Read();
    }
    std::string Dropped() const {
        std::string text;
        for (const DroppedExpression& item : m_reports.at(0).dropped)
            text +=
                item.section + '/' + item.key + " '" + item.expression + "' " + item.reason + '\n';
        return text;
    }

    std::filesystem::path m_folder;
    std::vector<DescriptionReport> m_reports;
};

TEST_F(SyntaxConfigTest, ReadsDescriptionsInOrderAndPassesOverEmptyNames) {
    Write("c.cfg", "[SyntaxColoring]\nNumberOfDscr=5\nDscr0=A\nDscr1=\nDscr2=B\nDscr4=C\n"
                   "[A]\nNumberOfFileExt=2\nFileExt0=cir\nFileExt1=\"sp\"\nNumberOfLanguages=1\n"
                   "Language0=Netlist\nDscrFile=missing.dsc\n[B]\n[C]\nDscrFile=d.dsc\n");
    Write("d.dsc", "[Tokens]\nNumberOfTokenGroups=1\nTokenGroup0=G\n"
                   "[G]\nColor=255\nStdStartSep=.\nStdStopSep=.\nNumberOfDscr=1\nTokenDscr0=a\n");
    const SyntaxDscrs syntaxes = Read();
    ASSERT_EQ(syntaxes.size(), 3u);
    EXPECT_EQ(syntaxes[0]->FileExts, (std::vector<AString>{u"cir", u"sp"}));
    EXPECT_EQ(syntaxes[0]->Languages, (std::vector<AString>{u"Netlist"}));
    EXPECT_TRUE(m_reports[0].unreadable);
    EXPECT_FALSE(m_reports[1].unreadable);
    EXPECT_EQ(m_reports[1].file, "");
    EXPECT_EQ(m_reports[2].file, (m_folder / "d.dsc").string());
    ASSERT_EQ(syntaxes[2]->Tokens().size(), 1u);
    EXPECT_EQ(syntaxes[2]->Tokens()[0]->Color, 255u);
}

TEST_F(SyntaxConfigTest, DropsFaultyEntriesAndSaysWhy) {
    const SyntaxDscrs syntaxes = ReadDescription(
        "[Ranges]\nNumberOfRangeGroups=2\nRangeGroup0=R\nRangeGroup1=S\n"
        "[R]\nNumberOfDscr=4\nOpen0=a\nClose0=b\nOpen1=a**\nClose1=(b\nOpen2=c\n"
        "[S]\nColor=7\nNumberOfDscr=1\nOpen0=s\nClose0=t\n"
        "[Tokens]\nNumberOfTokenGroups=2\nTokenGroup0=T\nTokenGroup1=U\n"
        "[T]\nStdStartSep=[\nStdStopSep=.\nNumberOfDscr=2\nTokenDscr0=x\nTokenDscr1=y\n"
        "StartSep1=.\n"
        "[U]\nStdStartSep=.\nNumberOfDscr=1\nTokenDscr0=z\n");
    ASSERT_EQ(syntaxes.size(), 1u);
    ASSERT_EQ(syntaxes[0]->Ranges().size(), 2u);
    EXPECT_EQ(syntaxes[0]->Ranges()[1]->Color, 7u);
    EXPECT_EQ(syntaxes[0]->Tokens().size(), 1u);
    EXPECT_EQ(Dropped(), "R/Open3 '' empty expression\n"
                         "R/Open1 'a**' nested *?+\n"
                         "R/Close1 '(b' unterminated ()\n"
                         "R/Close2 '' empty expression\n"
                         "T/StdStartSep '[' unmatched []\n"
                         "U/StdStopSep '' empty expression\n");
}

TEST_F(SyntaxConfigTest, OneCaseSensitivityCountsForAGroup) {
    const SyntaxDscrs syntaxes = ReadDescription(
        "[General]\nCaseSensitivity=0\n[Ranges]\nNumberOfRangeGroups=2\nRangeGroup0=A\n"
        "RangeGroup1=B\n[A]\nNumberOfDscr=1\nOpen0=a\nClose0=b\nCaseSensitivity0=1\n"
        "[B]\nCaseSensitivity=1\nNumberOfDscr=1\nOpen0=a\nClose0=b\n");
    ASSERT_EQ(syntaxes.at(0)->Ranges().size(), 2u);
    EXPECT_TRUE(syntaxes[0]->Ranges()[0]->Open.Match("A"));
    EXPECT_FALSE(syntaxes[0]->Ranges()[1]->Open.Match("A"));
}

TEST_F(SyntaxConfigTest, HugeCountsAndSectionsThatNameThemselvesEnd) {
    std::string groups = "[Tokens]\nNumberOfTokenGroups=2000000000\nNumberOfDscr=2000000000\n"
                         "StdStartSep=.\nStdStopSep=.\n";
    for (int i = 0; i < 2000; ++i)
        groups +=
            "TokenGroup" + std::to_string(i) + "=Tokens\nTokenDscr" + std::to_string(i) + "=a\n";
    const SyntaxDscrs syntaxes = ReadDescription(groups);
    EXPECT_GE(syntaxes.at(0)->Tokens().size(), 2000u);
    EXPECT_LE(syntaxes[0]->Tokens().size(), 20'000u);
    EXPECT_NE(Dropped().find("too many entries"), std::string::npos);
}

TEST_F(SyntaxConfigTest, PathsAreTakenFromTheConfigurationOrStandAlone) {
    const std::string d = m_folder.string();
    const struct {
        std::string value, opened;
    } rows[] = {{"x.dsc", d + "/x.dsc"},      {"sub\\x.dsc", d + "/sub/x.dsc"},
                {"/abs/x.dsc", "/abs/x.dsc"}, {"\\abs\\x.dsc", "/abs/x.dsc"},
                {"c:x.dsc", "c:x.dsc"},       {"/", d + "//"}};
    for (const auto& row : rows) {
        Write("c.cfg", "[SyntaxColoring]\nNumberOfDscr=1\nDscr0=D\n[D]\nDscrFile=" + row.value);
        m_reports.clear();
        Read();
        EXPECT_EQ(m_reports.at(0).file, row.opened);
        EXPECT_TRUE(m_reports[0].unreadable);
    }
}

/// What the product ships compiles to the last entry and has what its users were promised.
TEST(ShippedSyntax, IsWhole) {
    const std::string path = QUOREL_SOURCE_DIR "/config/NetlistEditor.cfg";
    std::vector<DescriptionReport> reports;
    const SyntaxDscrs syntaxes = ReadSyntaxDscrs(path, path, &reports);
    ASSERT_GE(syntaxes.size(), 5u);
    for (const DescriptionReport& report : reports) {
        EXPECT_FALSE(report.unreadable) << report.file;
        for (const DroppedExpression& item : report.dropped)
            ADD_FAILURE() << report.section << ' ' << item.key << ' ' << item.reason;
    }
    EXPECT_GE(syntaxes[2]->Tokens().size(), 100u);
    EXPECT_EQ(syntaxes[3]->Languages.at(0), AString(u"JavaScript"));
    EXPECT_EQ(syntaxes[4]->Languages.at(0), AString(u"VBScript"));
}

} // namespace
