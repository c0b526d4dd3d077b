/// The forms of text files, and texts kept against a crash.
#include "text_file.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include "recovery_store.h"

namespace {

using namespace std::string_literals;
namespace fs = std::filesystem;
using E = FileEncoding;

TEST(TextFile, FormIsFoundAndTheTextGoesBackAsItCame) {
    const struct {
        std::string bytes;
        FileForm form;
        std::string archive;
        bool comesBack = true;
    } rows[] = {{"", {E::ascii, false, LineEnds::none}, ""},
                {"one\0line"s, {E::ascii, false, LineEnds::none}, "one\0line"s},
                {"a\nb\n", {E::ascii, false, LineEnds::lf}, "a\r\nb\r\n"},
                {"a\r\nb", {E::ascii, false, LineEnds::crLf}, "a\r\nb"},
                {"\r\ra", {E::ascii, false, LineEnds::cr}, "\r\n\r\na"},
                {"\xC3\xA4\xE2\x82\xAC\n", {E::utf8, false, LineEnds::lf}, "\xE4\x80\r\n"},
                {"\xEF\xBB\xBFx\r\n", {E::utf8, true, LineEnds::crLf}, "x\r\n"},
                {"\xE4 \x81\xFF\n", {E::windows1252, false, LineEnds::lf}, "\xE4 \x81\xFF\r\n"},
                {"\xCE\xA9\n", {E::bytes, false, LineEnds::lf}, "\xCE\xA9\r\n"},
                {"\xEF\xBB\xBF\xCE\xA9", {E::bytes, false, LineEnds::none}, "\xEF\xBB\xBF\xCE\xA9"},
                {"\xFF\xFE"s, {E::bytes, false, LineEnds::none}, "\xFF\xFE"s},
                {"a\n\rb\r\n", {E::ascii, false, LineEnds::mixed}, "a\r\n\r\nb\r\n", false}};
    for (const auto& row : rows) {
        std::string text = row.bytes;
        const FileForm form = DecodeFile(text);
        EXPECT_EQ(form, row.form) << row.bytes;
        EXPECT_EQ(text, row.archive);
        EncodeFile(text, form);
        EXPECT_EQ(text, row.comesBack ? row.bytes : row.archive) << row.bytes;
    }
    std::string typed = "\xE4\r\n\x80"; // into a file that was ASCII
    EncodeFile(typed, {E::ascii, false, LineEnds::lf});
    EXPECT_EQ(typed, "\xC3\xA4\n\xE2\x82\xAC");
}

class Recovery : public testing::Test {
protected:
    Recovery() { fs::remove_all(m_Folder); }
    ~Recovery() override { fs::remove_all(m_Folder); }
    const std::string m_Folder =
        testing::TempDir() + "recovery-" + std::to_string(::getpid()) + "/";
};

TEST_F(Recovery, WhatAProcessLeftIsTakenOnceByTheNext) {
    RecoveredText text{.m_Id = "1",
                       .m_Path = "/a b\n/c.cir",
                       .m_Title = "c.cir",
                       .m_Editor = "netlist",
                       .m_Form = {E::utf8, true, LineEnds::cr},
                       .m_Caret = {7, 3},
                       .m_Archive = "x\r\n\0\xFF"s};
    const pid_t child = ::fork();
    if (child == 0) {
        RecoveryStore store;
        text.m_Archive = "old";
        const bool good = store.Open(m_Folder) && store.Keep(text) &&
                          (text.m_Archive = "x\r\n\0\xFF"s, store.Keep(text)) &&
                          store.Keep({.m_Id = "2"}) && store.Keep({.m_Id = "3"});
        store.Forget("2");
        if (!good)
            ::_exit(1);
        ::abort();
    }
    int ended = 0;
    ASSERT_EQ(::waitpid(child, &ended, 0), child);
    ASSERT_TRUE(WIFSIGNALED(ended));

    RecoveryStore next, other;
    ASSERT_TRUE(next.Open(m_Folder));
    ASSERT_TRUE(other.Open(m_Folder));
    ASSERT_TRUE(other.Keep({.m_Id = "alive"}));
    std::vector<RecoveredText> taken = next.TakeOrphans();
    ASSERT_EQ(taken.size(), 2u);
    EXPECT_EQ(taken[0].m_Path, text.m_Path);
    EXPECT_EQ(taken[0].m_Title, text.m_Title);
    EXPECT_EQ(taken[0].m_Editor, text.m_Editor);
    EXPECT_EQ(taken[0].m_Form, text.m_Form);
    EXPECT_EQ(taken[0].m_Caret, text.m_Caret);
    EXPECT_EQ(taken[0].m_Archive, text.m_Archive);
    EXPECT_TRUE(next.TakeOrphans().empty());
    for (const RecoveredText& one : taken)
        next.Forget(one.m_Id);
}

TEST_F(Recovery, DamagedFilesStayAndOrderedEndsLeaveNothing) {
    for (const std::string& damaged :
         {""s, "quorel recovery 1\ntext 99\nx\n"s, "quorel recovery 1\ntext 1"s,
          "quorel recovery 1\nnumbers 4\n9 9 \n"s, "quorel recovery 1\ntext -1\n"s}) {
        fs::create_directories(m_Folder + "1-0");
        std::ofstream(m_Folder + "1-0/x.text", std::ios::binary) << damaged;
        RecoveryStore store;
        ASSERT_TRUE(store.Open(m_Folder));
        EXPECT_TRUE(store.TakeOrphans().empty());
        EXPECT_TRUE(fs::exists(m_Folder + "1-0/x.text")) << damaged;
    }
    fs::remove_all(m_Folder + "1-0");
    EXPECT_TRUE(fs::is_empty(m_Folder));
}

} // namespace
