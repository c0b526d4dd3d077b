#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "atomic_file.h"
#include "file_io.h"
#include "file_status.h"
#include "temporary_folder.h"

namespace {

using namespace std::string_literals;
using Names = std::vector<std::string>;

mode_t ModeOf(const std::string& path) {
    struct stat status {};
    ::stat(path.c_str(), &status);
    return status.st_mode & 07777;
}

TEST(ReadWholeFile, ReadsRegularFilesUpToTheLimit) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("a", "1234"s + '\0');
    ASSERT_EQ(::mkfifo(folder.At("pipe").c_str(), 0600), 0);
    const std::tuple<std::string, std::uint64_t, int> rows[] = {{file, 5, 0},
                                                                {file, 4, EFBIG},
                                                                {file, 0, EFBIG},
                                                                {folder.At("none"), 5, ENOENT},
                                                                {folder.At(""), 5, EISDIR},
                                                                {folder.At("pipe"), 5, EINVAL},
                                                                {"/dev/zero", 5, EINVAL},
                                                                {"", 5, ENOENT},
                                                                {file + '\0', 5, EINVAL}};
    for (const auto& [path, limit, code] : rows) {
        std::string text = "old";
        EXPECT_EQ(sys::ReadWholeFile(path, limit, text).code, code) << path;
        EXPECT_EQ(text, code == 0 ? "1234"s + '\0' : "") << path;
    }
    // The system claims a size of 0 for these.
    std::string text;
    EXPECT_TRUE(sys::ReadWholeFile("/proc/self/status", 1u << 20u, text));
    EXPECT_TRUE(text.starts_with("Name:")) << text;
}

TEST(CopyFile, ReplacesButNeverItself) {
    const TemporaryFolder folder;
    const std::string bytes(200000, 'x');
    const std::string from = folder.Write("from", bytes);
    const std::string to = folder.Write("to", std::string(300000, 'y'));
    EXPECT_EQ(sys::CopyFile("/proc/self/status", to, 1).code, EFBIG); // it claims none
    EXPECT_TRUE(sys::CopyFile(from, to));
    EXPECT_EQ(sys::CopyFile(folder.At("none"), to).code, ENOENT);
    EXPECT_EQ(sys::CopyFile(from, to, bytes.size() - 1).code, EFBIG);
    EXPECT_EQ(Contents(to), bytes);
    ASSERT_EQ(::symlink("from", folder.At("link").c_str()), 0);
    EXPECT_EQ(sys::CopyFile(from, folder.At("link")).code, EINVAL);
    EXPECT_EQ(Contents(from), bytes);
    EXPECT_TRUE(sys::DeleteFile(folder.At("link")));
    EXPECT_EQ(folder.List(), (Names{"from", "to"}));
}

TEST(AtomicFile, ReplacesTheFileAndKeepsModeAndLink) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("a", "old");
    ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
    ASSERT_EQ(::symlink("a", folder.At("link").c_str()), 0);
    sys::AtomicFile writer;
    ASSERT_TRUE(writer.Open(folder.At("link")));
    EXPECT_TRUE(writer.Write("new "));
    EXPECT_TRUE(writer.Write("text"));
    EXPECT_EQ(Contents(file), "old");
    EXPECT_TRUE(writer.Commit());
    EXPECT_EQ(Contents(file), "new text");
    EXPECT_EQ(ModeOf(file), 0640u);
    sys::FileStatus status;
    EXPECT_TRUE(sys::GetLinkStatus(folder.At("link"), status) && status.isLink);
    EXPECT_EQ(writer.Commit().code, EBADF);
    ASSERT_TRUE(sys::DeleteFile(file)); // which the link still names
    ASSERT_EQ(::symlink(folder.At("link").c_str(), folder.At("other").c_str()), 0);
    EXPECT_TRUE(sys::WriteFileAtomically(folder.At("other"), "again"));
    EXPECT_EQ(Contents(file), "again");
    ASSERT_EQ(::symlink("round", folder.At("round").c_str()), 0);
    EXPECT_EQ(sys::WriteFileAtomically(folder.At("round"), "x").code, ELOOP);
    EXPECT_EQ(folder.List(), (Names{"a", "link", "other", "round"}));
}

TEST(AtomicFile, LeavesTheOldFileWhenItFails) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("a", "old");
    {
        sys::AtomicFile writer;
        ASSERT_TRUE(writer.Open(file));
        EXPECT_TRUE(writer.Write("forgotten"));
    }
    EXPECT_EQ(Contents(file), "old");

    // A disk that is full, in the form of a limit of the process.
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small{1000, limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    sys::AtomicFile writer;
    EXPECT_TRUE(writer.Open(file));
    EXPECT_EQ(writer.Write(std::string(5000, 'x')).code, EFBIG);
    EXPECT_EQ(writer.Write("x").code, EFBIG);
    EXPECT_EQ(writer.Commit().code, EFBIG);
    ::setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, oldHandler);

    EXPECT_EQ(Contents(file), "old");
    EXPECT_EQ(folder.List(), Names{"a"});
}

TEST(AtomicFile, RefusesDirectoriesAndWritesDevicesInPlace) {
    const TemporaryFolder folder;
    const std::pair<std::string, int> rows[] = {{folder.At(""), EISDIR},
                                                {folder.At("none/a"), ENOENT},
                                                {"", ENOENT},
                                                {folder.At("a") + '\0' + "b", EINVAL},
                                                {"/dev/null", 0}};
    for (const auto& [path, code] : rows)
        EXPECT_EQ(sys::WriteFileAtomically(path, "x").code, code) << path;
    EXPECT_EQ(folder.List(), Names());
    sys::FileStatus status;
    EXPECT_TRUE(sys::GetLinkStatus("/dev/null", status) && !status.isRegular);
}

TEST(TemporaryFile, IsNewPrivateAndNamedByThePrefix) {
    const TemporaryFolder folder;
    const ScopedVariable variable("TMPDIR", folder.At("").c_str());
    EXPECT_EQ(sys::TemporaryDirectory(), folder.At(""));
    std::string path, other;
    ASSERT_TRUE(sys::CreateTemporaryFile(sys::TemporaryDirectory(), "cfg", path));
    ASSERT_TRUE(sys::CreateTemporaryFile(sys::TemporaryDirectory(), "cfg", other));
    EXPECT_TRUE(path.starts_with(folder.At("cfg")) && path.ends_with(".tmp")) << path;
    EXPECT_NE(path, other);
    EXPECT_EQ(ModeOf(path), 0600u);
    EXPECT_EQ(Contents(path), "");
    EXPECT_EQ(sys::CreateTemporaryFile(folder.At("none"), "cfg", path).code, ENOENT);
    EXPECT_EQ(sys::CreateTemporaryFile(folder.At(""), "../cfg", path).code, EINVAL);
    EXPECT_EQ(path, "");
    const ScopedVariable missing("TMPDIR", folder.At("none").c_str());
    EXPECT_EQ(sys::TemporaryDirectory(), "/tmp/");
}

} // namespace
