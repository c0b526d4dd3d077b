#include "profile_file.h"

#include <gtest/gtest.h>

#include "temporary_folder.h"

namespace {

using namespace std::string_literals;

/// All that the profile holds: "[section]key=value|key=value|".
std::string Dump(const sys::ProfileFile& profile) {
    std::string text;
    for (std::size_t i = 0; i < profile.GetSectionCount(); ++i) {
        text.append("[").append(profile.GetSectionName(i)).append("]");
        for (std::size_t k = 0; k < profile.GetKeyCount(i); ++k) {
            text.append(profile.GetKeyName(i, k)).append("=");
            text.append(profile.GetValue(i, k)).append("|");
        }
    }
    return text;
}

sys::ProfileFile Parsed(const std::string& text) {
    sys::ProfileFile profile;
    EXPECT_TRUE(profile.Parse(text)) << text.size();
    return profile;
}

TEST(ProfileFile, ReadsLines) {
    const std::string longest(sys::ProfileFile::kMaxValue, 'v');
    const struct {
        std::string text, dump;
    } rows[] = {{"", ""},
                {"\xEF\xBB\xBF", ""},
                {"[a]\nx=1\ny=2\n", "[a]x=1|y=2|"},
                {"[a]\r\nx=1\r\n\r\ny=2", "[a]x=1|y=2|"},
                {"[a]\rx=1\ry=2\r", "[a]x=1|y=2|"},
                {"\xEF\xBB\xBF[a]\nx=1", "[a]x=1|"},
                // Sections
                {"x=0\n[a]\n[b]\nx=1\n", "[a][b]x=1|"},
                {"\t[ a b ]tail\nx=1", "[a b]x=1|"},
                {"[a\nx=1", "[a]x=1|"},
                {"[]\nx=1", "[]x=1|"},
                {"[a]]\nx=1", "[a]x=1|"},
                {"[", "[]"},
                // Comments, and lines that mean nothing
                {"[a]\n;x=1\n \t;y=1\nz=1;2\n", "[a]z=1;2|"},
                {"[a]\nx\n=1\n#\nx=2", "[a]x=2|"},
                // Blanks, quotes, "="
                {"[a]\n \tx y \t= 1 2 \t\n", "[a]x y=1 2|"},
                {"[a]\nx=1=2==\ny=\nz= \n", "[a]x=1=2==|y=|z=|"},
                {"[a]\nx=\" 1 \"\ny=' 2 '\nz=\"\"3\"\"\n", "[a]x= 1 |y= 2 |z=\"3\"|"},
                {"[a]\nx=\"\ny=\"1'\nz=1\"\nu='\"2\"'\nv=\"\"", "[a]x=\"|y=\"1'|z=1\"|u=\"2\"|v=|"},
                // The first of equal names counts
                {"[a]\nKey=1\nkEY=2\nz=3\nz=4\nb=5", "[a]Key=1|z=3|b=5|"},
                {"[a]\nx=1\n[b]\ny=2\n[A]\nx=3\nz=4\n[c]\nu=5", "[a]x=1|[b]y=2|[c]u=5|"},
                {"[a]\n[a]\nx=1\n", "[a]"},
                // Bytes beyond ASCII have no case, and a NUL is a character
                {"[\xC4]\nx=1\n[\xE4]\nx=2", "[\xC4]x=1|[\xE4]x=2|"},
                {"[a\0b]\nx\0=1\0\n"s, "[a\0b]x\0=1\0|"s},
                // Values are cut
                {"[a]\nx=" + longest + "\ny=" + longest + "w\nz='" + longest + "w'\n",
                 "[a]x=" + longest + "|y=" + longest + "|z=" + longest + "|"}};
    for (const auto& row : rows)
        EXPECT_EQ(Dump(Parsed(row.text)), row.dump) << row.text;
}

TEST(ProfileFile, FindsWithoutCaseOrGivesTheFallback) {
    const sys::ProfileFile profile = Parsed("[SyntaxColoring]\nNumberOfDscr=5\nEmpty=\n");
    const struct {
        const char *section, *key, *value;
    } rows[] = {{"SYNTAXcoloring", "numberofDSCR", "5"},
                {"SyntaxColoring", "Empty", ""},
                {"SyntaxColoring", "NumberOf", "x"},
                {"Syntax", "NumberOfDscr", "x"}};
    for (const auto& row : rows) {
        EXPECT_EQ(profile.GetString(row.section, row.key, "x"), row.value) << row.key;
        EXPECT_EQ(profile.HasKey(row.section, row.key), std::string("x") != row.value) << row.key;
    }
    EXPECT_FALSE(profile.HasSection(""));
}

TEST(ProfileFile, ReadsIntegers) {
    const std::pair<std::int32_t, std::vector<const char*>> rows[] = {
        {0, {"0", "-0", "0x10"}},
        {16711680,
         {"16711680", "0016711680", "+16711680", "16711680.9", "16711680x", "'16711680'"}},
        {-5, {"-5", "\"-5\""}},
        {2147483647, {"2147483647", "2147483648", "99999999999999999999"}},
        {-2147483648, {"-2147483648", "-2147483649", "-99999999999999999999"}},
        {77, {"", "abc", "-", "+-5", "- 5"}}};
    for (const auto& [number, values] : rows) {
        for (const char* value : values) {
            EXPECT_EQ(Parsed("[a]\nx="s + value).GetInt("a", "x", 77), number) << value;
        }
    }
    EXPECT_EQ(Parsed("[a]").GetInt("a", "x", 77), 77);
}

TEST(ProfileFile, ListsNumberedKeys) {
    const sys::ProfileFile profile = Parsed("[a]\nOpen2=x\nOPEN0=x\nOpen10=x\nOpen01=x\nOpen=x\n"
                                            "Open-1=x\nOpen1x=x\nOpen2147483648=x\nOpenX=\n"
                                            "Open1999999999=\nClose1=x\n");
    using Numbers = std::vector<std::int32_t>;
    EXPECT_EQ(profile.GetNumberedKeys("a", "open", 2000000000), (Numbers{0, 2, 10, 1999999999}));
    EXPECT_EQ(profile.GetNumberedKeys("a", "Open", 10), (Numbers{0, 2}));
    EXPECT_EQ(profile.GetNumberedKeys("a", "Open", 0), Numbers());
    EXPECT_EQ(profile.GetNumberedKeys("b", "Open", 10), Numbers());
}

TEST(ProfileFile, KeepsItsAnswersAtSize) {
    constexpr int kKeys = 50000;
    std::string keys = "[keys]\n", sections;
    for (int i = 0; i < kKeys; ++i) {
        const std::string number = std::to_string(i);
        keys += "k" + number + "=" + number + "\n";
        sections += "[keys]\nk=1\n[s" + number + "]\nx=" + number + "\n";
    }
    const sys::ProfileFile profile =
        Parsed(keys + sections + "[line]\nx=" + std::string(10u << 20u, 'y') + "\nz=1\n");
    EXPECT_EQ(profile.GetSectionCount(), kKeys + 2u);
    EXPECT_EQ(profile.GetKeyCount(0), kKeys + 0u);
    EXPECT_EQ(profile.GetInt("keys", "k49999"), 49999);
    EXPECT_EQ(profile.GetInt("s49999", "x"), 49999);
    EXPECT_EQ(profile.GetInt("line", "z"), 1);
}

TEST(ProfileFile, OpensFiles) {
    const TemporaryFolder folder;
    sys::ProfileFile profile;
    EXPECT_TRUE(profile.Open(folder.Write("a.cfg", "[a]\nx=1\n")));
    EXPECT_EQ(Dump(profile), "[a]x=1|");
    const std::string missing = folder.At("missing.cfg");
    EXPECT_EQ(profile.Open(missing).reason,
              "cannot read '" + missing + "': No such file or directory");
    EXPECT_FALSE(profile.HasFile());
    EXPECT_EQ(Dump(profile), "");
}

} // namespace
