#include <set>

#include <gtest/gtest.h>

#include "command_line.h"

namespace {

bool IsThere(const std::string& path) {
    static const std::set<std::string> kFiles{"/home/a.cir", "/home/odd:3", "/home/odd:3:4"};
    return kFiles.contains(path);
}

TEST(CommandLine, AFileMayBeFollowedByLineAndColumn) {
    const std::pair<const char*, FileTarget> kRows[] = {
        {"a.cir", {"/home/a.cir", {-1, -1}}},
        {"/tmp/x", {"/tmp/x", {-1, -1}}},
        {"a.cir:12", {"/home/a.cir", {11, 0}}},
        {"a.cir:12:3", {"/home/a.cir", {11, 2}}},
        {"new.cir:2", {"/home/new.cir", {1, 0}}},
        {"new.cir:2:9", {"/home/new.cir", {1, 8}}},
        {"a.cir:0", {"/home/a.cir:0", {-1, -1}}},
        {"a.cir:", {"/home/a.cir:", {-1, -1}}},
        {"a.cir:1x", {"/home/a.cir:1x", {-1, -1}}},
        {"a.cir:99999999999", {"/home/a.cir:99999999999", {-1, -1}}},
        {":7", {"/home/:7", {-1, -1}}},
        {"odd:3", {"/home/odd:3", {-1, -1}}},
        {"odd:3:4", {"/home/odd:3:4", {-1, -1}}},
        {"odd:3:5", {"/home/odd:3", {4, 0}}}};
    for (const auto& [argument, wanted] : kRows)
        EXPECT_EQ(ParseFileTarget(argument, "/home", IsThere), wanted) << argument;
}

TEST(CommandLine, OptionsStandBeforeTwoDashes) {
    const CommandLine line =
        ParseCommandLine({"-n", "a.cir:2", "--", "-n", "--help"}, "/home", IsThere);
    EXPECT_TRUE(line.m_NewWindow);
    EXPECT_FALSE(line.m_Help);
    EXPECT_EQ(line.m_Error, "");
    EXPECT_EQ(line.m_Files,
              (std::vector<FileTarget>{{"/home/a.cir", {1, 0}}, {"/home/-n"}, {"/home/--help"}}));
    EXPECT_EQ(ParseCommandLine({"--what", "-x"}, "/", IsThere).m_Error, "unknown option '--what'");
}

} // namespace
