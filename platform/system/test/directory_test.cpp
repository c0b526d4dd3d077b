#include "directory.h"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "temporary_folder.h"

namespace {

using Names = std::vector<std::string>;

/// Nests directories of this name so deep that no path reaches the last one.
void NestDirectories(const std::string& top, const char* name, int depth) {
    int current = ::open(top.c_str(), O_RDONLY | O_DIRECTORY);
    for (int i = 0; i < depth; ++i) {
        ASSERT_EQ(::mkdirat(current, name, 0700), 0);
        const int next = ::openat(current, name, O_RDONLY | O_DIRECTORY);
        ::close(current);
        current = next;
    }
    const int file = ::openat(current, "file", O_CREAT | O_WRONLY, 0600);
    ASSERT_GE(file, 0);
    ::close(file);
    ::close(current);
}

TEST(EmptyDirectoryTree, DeletesAtAnyDepthAndFollowsNoLink) {
    const TemporaryFolder folder;
    const TemporaryFolder outside;
    outside.Write("kept", "x");
    ASSERT_TRUE(sys::MakeDirectories(folder.At("top/a/b")));
    ASSERT_TRUE(sys::MakeDirectory(folder.At("top/c")));
    folder.Write("top/a/b/file", "x");
    ::chmod(folder.Write("top/c/fixed", "x").c_str(), 0444);
    ASSERT_EQ(::symlink(outside.At("").c_str(), folder.At("top/a/link").c_str()), 0);
    ASSERT_EQ(::symlink("none", folder.At("top/dangling").c_str()), 0);
    NestDirectories(folder.At("top"), std::string(200, 'd').c_str(), 100);

    int files = 0, readOnly = 0, links = 0;
    EXPECT_TRUE(sys::EmptyDirectoryTree(folder.At("top"), [&](const sys::FileStatus& file) {
        ++files;
        readOnly += file.IsReadOnly() ? 1 : 0;
        links += file.isLink ? 1 : 0;
    }));
    EXPECT_EQ(files, 5);
    EXPECT_EQ(readOnly, 1);
    EXPECT_EQ(links, 2);
    Names names;
    EXPECT_TRUE(sys::ListDirectory(folder.At("top"), names));
    EXPECT_EQ(names, Names());
    EXPECT_EQ(outside.List(), Names{"kept"});
    EXPECT_EQ(sys::EmptyDirectoryTree(folder.At("none"), nullptr).code, ENOENT);
}

TEST(MakeDirectories, MakesWhatIsMissing) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("file", "");
    const std::pair<std::string, int> rows[] = {{folder.At("a/b//c/"), 0},
                                                {folder.At("a/b/c"), 0},
                                                {folder.At("d"), 0},
                                                {file, EEXIST},
                                                {file + "/x", ENOTDIR},
                                                {"", ENOENT},
                                                {"/", 0}};
    for (const auto& [path, code] : rows)
        EXPECT_EQ(sys::MakeDirectories(path).code, code) << path;
    EXPECT_EQ(folder.List(), (Names{"a", "d", "file"}));
}

TEST(CurrentDirectory, IsAbsoluteEvenWhenItIsGone) {
    const std::string before = sys::CurrentDirectory();
    const TemporaryFolder folder;
    ASSERT_TRUE(sys::MakeDirectory(folder.At("gone")));
    ASSERT_EQ(::chdir(folder.At("gone").c_str()), 0);
    EXPECT_EQ(sys::CurrentDirectory(), folder.At("gone"));
    ASSERT_TRUE(sys::RemoveDirectory(folder.At("gone")));
    EXPECT_EQ(sys::CurrentDirectory(), "/proc/self/cwd");
    ASSERT_EQ(::chdir("/"), 0);
    EXPECT_EQ(sys::CurrentDirectory(), "");
    ASSERT_EQ(::chdir((before + "/").c_str()), 0);
}

} // namespace
