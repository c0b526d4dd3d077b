#include "syntax_config.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>

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
                   "[A]\nNumberOfFileExt=3\nFileExt0=cir\nFileExt2=\"sp\"\nNumberOfLanguages=1\n"
                   "Language0=Netlist\nDscrFile=missing/../d.dsc\n[B]\n[C]\nDscrFile=d.dsc\n");
    Write("d.dsc", "[Tokens]\nNumberOfTokenGroups=1\nTokenGroup0=G\n"
                   "[G]\nColor=255\nStdStartSep=.\nStdStopSep=.\nNumberOfDscr=1\nTokenDscr0=a\n");
    const SyntaxDscrs syntaxes = Read();
    ASSERT_EQ(syntaxes.size(), 3u);
    EXPECT_EQ(syntaxes[0]->FileExts, (std::vector<AString>{u"cir", u"", u"sp"}));
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
        "[Ranges]\nNumberOfRangeGroups=3\nRangeGroup0=R\nRangeGroup1=S\nRangeGroup2=r\n"
        "[R]\nNumberOfDscr=5\nOpen0=a\nClose0=b\nOpen1=a**\nClose1=(b\nOpen3=c\nClose4=d\n"
        "[S]\nColor=7\nNumberOfDscr=1\nOpen0=s\nClose0=t\n"
        "[Tokens]\nNumberOfTokenGroups=2\nTokenGroup0=T\nTokenGroup1=U\n"
        "[T]\nStdStartSep=[\nStdStopSep=[\nNumberOfDscr=4\nTokenDscr0=x\nTokenDscr1=y\n"
        "StartSep1=.\nStopSep1=.\nTokenDscr2=z\nStartSep2=[\nTokenDscr3=z\nStartSep3=[\n"
        "[U]\nStdStartSep=.\nNumberOfDscr=1\nTokenDscr0=z\n");
    ASSERT_EQ(syntaxes.size(), 1u);
    ASSERT_EQ(syntaxes[0]->Ranges().size(), 3u);
    EXPECT_EQ(syntaxes[0]->Ranges()[1]->Color, 7u);
    EXPECT_EQ(syntaxes[0]->Tokens().size(), 1u);
    EXPECT_EQ(Dropped(), "R/Open1 'a**' nested *?+\n"
                         "R/Close1 '(b' unterminated ()\n"
                         "R/Open2 '' empty expression\n"
                         "R/Close2 '' empty expression\n"
                         "R/Close3 '' empty expression\n"
                         "R/Open4 '' empty expression\n"
                         "T/StdStartSep '[' unmatched []\n"
                         "T/StdStopSep '[' unmatched []\n"
                         "T/StartSep2 '[' unmatched []\n"
                         "T/StartSep3 '[' unmatched []\n"
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

TEST_F(SyntaxConfigTest, HugeCountsAreReportedInAFewItems) {
    const SyntaxDscrs syntaxes =
        ReadDescription("[Ranges]\nNumberOfRangeGroups=2000000000\nRangeGroup7=R\n"
                        "[R]\nNumberOfDscr=2000000000\nOpen150=a\nClose150=b\n");
    EXPECT_EQ(syntaxes.at(0)->Ranges().size(), 1u);
    const auto& dropped = m_reports.at(0).dropped;
    ASSERT_EQ(dropped.size(), 201u);
    EXPECT_EQ(dropped[199].key, "Close99");
    EXPECT_EQ(dropped[200].key, "NumberOfDscr");
    EXPECT_EQ(dropped[200].reason, "1999999899 more entries are empty");
}

/// Small files that ask for much: sections that name themselves, or one section many times, from
/// one description or from many.
TEST_F(SyntaxConfigTest, WhatIsNamedManyTimesIsBoundedForTheWholeConfiguration) {
    const auto numbered = [](const std::string& stem, int count, const std::string& value) {
        std::string lines;
        for (int i = 0; i < count; ++i)
            lines += stem + std::to_string(i) + '=' + value + '\n';
        return lines;
    };
    const std::string many = "NumberOfDscr=2000000000\nNumberOfTokenGroups=2000000000\n"
                             "NumberOfFileExt=2000000000\nStdStartSep=.\nStdStopSep=.\n";
    // key: the first that was too many; none where it was reports
    const std::tuple<const char*, std::string, std::string, const char*> rows[] = {
        {"itself", numbered("Dscr", 1, "D"),
         "[Tokens]\n" + many + numbered("TokenGroup", 2000, "Tokens") +
             numbered("TokenDscr", 2000, "a"),
         "TokenDscr"},
        {"long", numbered("Dscr", 1, "D"),
         "[Tokens]\n" + many + numbered("TokenGroup", 2000, "T") + "[T]\n" + many +
             numbered("TokenDscr", 10, std::string(1000, '.')),
         "TokenDscr"},
        {"file", numbered("Dscr", 900, "D"),
         "[Tokens]\n" + many + "TokenGroup0=T\n[T]\n" + many + numbered("TokenDscr", 1000, "a"),
         "TokenDscr"},
        {"list", numbered("Dscr", 900, "D"), "", "FileExt"},
        {"faults", numbered("Dscr", 900, "D"), "[Tokens]\n" + many + "TokenGroup0=T\n[T]\n" + many,
         ""}};
    for (const auto& [name, config, description, key] : rows) {
        SCOPED_TRACE(name);
        Write("c.cfg", "[SyntaxColoring]\n" + many + config + "[D]\nDscrFile=d.dsc\n" + many +
                           numbered("FileExt", description.empty() ? 300 : 0, "x"));
        Write("d.dsc", description);
        m_reports.clear();
        std::size_t kept = 0;
        for (const auto& syntax : Read())
            kept += syntax->Tokens().size() + syntax->FileExts.size();
        EXPECT_LE(kept, 50'000u);
        std::optional<std::string> tooMany;
        std::size_t items = 0;
        for (const DescriptionReport& report : m_reports) {
            items += report.dropped.size();
            for (const DroppedExpression& item : report.dropped)
                if (!tooMany && (item.reason == "too many entries" ||
                                 item.reason.find("more faults") != std::string::npos))
                    tooMany = item.key.substr(0, item.key.find_first_of("0123456789"));
        }
        EXPECT_EQ(tooMany, key);
        EXPECT_LE(items, 13'000u);
    }
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
    EXPECT_FALSE(
        syntaxes[2]->CanCarry()); // so that of a large netlist only what is seen is coloured
    EXPECT_EQ(syntaxes[3]->Languages.at(0), AString(u"JavaScript"));
    EXPECT_EQ(syntaxes[4]->Languages.at(0), AString(u"VBScript"));
}

} // namespace
