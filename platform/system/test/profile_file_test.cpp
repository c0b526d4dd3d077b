#include "profile_file.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

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
    const struct {
        std::string text, dump;
    } rows[] = {
        {"", ""},
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
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Dump(Parsed(row.text)), row.dump) << row.text;
    }
}

TEST(ProfileFile, FindsWithoutCase) {
    const sys::ProfileFile profile = Parsed("[SyntaxColoring]\nNumberOfDscr=5\nEmpty=\n");
    EXPECT_EQ(profile.GetString("SYNTAXcoloring", "numberofDSCR"), "5");
    EXPECT_EQ(profile.GetString("SyntaxColoring", "Empty", "x"), "");
    EXPECT_EQ(profile.GetString("SyntaxColoring", "NumberOf", "x"), "x");
    EXPECT_EQ(profile.GetString("Syntax", "NumberOfDscr", "x"), "x");
    EXPECT_TRUE(profile.HasSection("syntaxcoloring"));
    EXPECT_FALSE(profile.HasSection(""));
    EXPECT_TRUE(profile.HasKey("syntaxcoloring", "empty"));
    EXPECT_FALSE(profile.HasKey("syntaxcoloring", ""));
}

TEST(ProfileFile, CutsValues) {
    const std::string longest(sys::ProfileFile::kMaxValue, 'v');
    const sys::ProfileFile profile =
        Parsed("[a]\nx=" + longest + "\ny=" + longest + "w\nz=\"" + longest + "w\"\n");
    EXPECT_EQ(profile.GetString("a", "x"), longest);
    EXPECT_EQ(profile.GetString("a", "y"), longest);
    EXPECT_EQ(profile.GetString("a", "z"), longest);
}

TEST(ProfileFile, ReadsIntegers) {
    const struct {
        const char* value;
        std::int32_t number;
    } rows[] = {
        {"0", 0},
        {"16711680", 16711680},
        {"007", 7},
        {"12abc", 12},
        {"-5", -5},
        {"+5", 5},
        {"\"42\"", 42},
        {"1.9", 1},
        {"0x10", 0},
        {"2147483648", 2147483647},
        {"-2147483648", -2147483648},
        {"99999999999999999999", 2147483647},
        {"-99999999999999999999", -2147483648},
        {"", 77},
        {"abc", 77},
        {"-", 77},
        {"+-5", 77},
        {"- 5", 77},
    };
    for (const auto& row : rows) {
        const sys::ProfileFile profile = Parsed("[a]\nx="s + row.value);
        EXPECT_EQ(profile.GetInt("a", "x", 77), row.number) << row.value;
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

std::string Lower(std::string text) {
    for (char& byte : text) {
        byte = static_cast<char>(std::tolower(byte));
    }
    return text;
}

TEST(ProfileFile, AgreesWithAMapOfRandomEntries) {
    std::mt19937 random(20240229);
    const auto name = [&] { return std::string(1 + random() % 2, "abAB"[random() % 4]); };
    for (int round = 0; round < 200; ++round) {
        std::map<std::string, std::map<std::string, std::string>> twin;
        std::map<std::string, std::string> ignored;
        std::map<std::string, std::string>* current = &ignored;
        std::string text;
        for (int line = 0; line < 60; ++line) {
            if (random() % 5 == 0) {
                const std::string section = name();
                text += "[" + section + "]\n";
                const bool isNew = twin.count(Lower(section)) == 0;
                current = isNew ? &twin[Lower(section)] : &ignored;
            } else {
                const std::string key = name();
                text += key + "=" + std::to_string(line) + "\n";
                current->emplace(Lower(key), std::to_string(line));
            }
        }
        const sys::ProfileFile profile = Parsed(text);
        ASSERT_EQ(profile.GetSectionCount(), twin.size()) << text;
        for (const char* section : {"a", "b", "aa", "BB", "ab"}) {
            for (const char* key : {"A", "b", "AA", "bb"}) {
                const auto& keys = twin[Lower(section)];
                const auto found = keys.find(Lower(key));
                ASSERT_EQ(profile.GetString(section, key, "none"),
                          found == keys.end() ? "none" : found->second)
                    << text;
            }
        }
    }
}

TEST(ProfileFile, KeepsItsAnswersAtSize) {
    constexpr int kKeys = 50000;
    std::string text = "[keys]\n";
    for (int i = 0; i < kKeys; ++i) {
        text += "k" + std::to_string(i) + "=" + std::to_string(i) + "\n";
    }
    for (int i = 0; i < kKeys; ++i) {
        text += "[keys]\nk=1\n[s" + std::to_string(i) + "]\nx=" + std::to_string(i) + "\n";
    }
    text += "[line]\nx=" + std::string(10u << 20u, 'y') + "\nz=1\n";
    const sys::ProfileFile profile = Parsed(text);
    EXPECT_EQ(profile.GetSectionCount(), kKeys + 2u);
    EXPECT_EQ(profile.GetKeyCount(0), kKeys + 0u);
    EXPECT_EQ(profile.GetInt("keys", "k49999"), 49999);
    EXPECT_EQ(profile.GetInt("s49999", "x"), 49999);
    EXPECT_EQ(profile.GetInt("line", "z"), 1);
}

TEST(ProfileFile, OpensFiles) {
    const TemporaryFolder folder;
    sys::ProfileFile profile;
    EXPECT_FALSE(profile.HasFile());
    EXPECT_TRUE(profile.Open(folder.Write("a.cfg", "[a]\nx=1\n")));
    EXPECT_TRUE(profile.HasFile());
    EXPECT_EQ(Dump(profile), "[a]x=1|");
    const sys::Status status = profile.Open(folder.At("missing.cfg"));
    EXPECT_EQ(status.code, ENOENT);
    EXPECT_EQ(status.reason,
              "cannot read '" + folder.At("missing.cfg") + "': No such file or directory");
    EXPECT_FALSE(profile.HasFile());
    EXPECT_EQ(Dump(profile), "");
}

} // namespace
