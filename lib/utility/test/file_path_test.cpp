#include "file_path.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "atomic_file.h"
#include "directory.h"
#include "file_io.h"
#include "temporary_file.h"

namespace {

std::string Bytes(const AString& text) {
    return text.ToCString(AString::kUtf8);
}
AString Text(std::string_view bytes) {
    return AString::FromMultiByte(AString::kUtf8, bytes);
}

TEST(FilePath, IsSplitAtConstruction) {
    const struct {
        const char *path, *base;
        const char *given, *directory, *name, *extension;
    } rows[] = {// Without a base
                {"", "", "", "/usr/share/", "", ""},
                {"a.cfg", "", "a.cfg", "/usr/share/", "a.cfg", "cfg"},
                {"x\\y/a", "", "x\\y/a", "/usr/share/x/y/", "a", ""},
                {"/x/a", "", "/x/a", "/x/", "a", ""},
                {"x/a/", "", "x/a/", "/usr/share/x/a/", "", ""},
                {"/", "", "/", "/", "", ""},
                // With a base
                {"", "/b", "/b/", "/b/", "", ""},
                {"a", "/b", "/b/a", "/b/", "a", ""},
                {"a", "/b/", "/b/a", "/b/", "a", ""},
                {"a", "\\b\\", "\\b\\a", "/b/", "a", ""},
                {"a", "c:", "c:a", "c:", "a", ""},
                {"x\\a", "b", "b/x\\a", "b/x/", "a", ""},
                {"x/", "/b", "/b/x/", "/b/x/", "", ""},
                // A rooted path, or one with a ":", drops the base
                {"/x/a", "/b", "/x/a", "/x/", "a", ""},
                {"\\a", "/b", "\\a", "/", "a", ""},
                {"c:a", "/b", "c:a", "c:", "a", ""},
                {"c:", "", "c:", "c:", "", ""},
                {"x/c:a", "/b", "x/c:a", "x/", "c:a", ""},
                {"c:x/y:z", "", "c:x/y:z", "c:x/", "y:z", ""},
                {"/x:y/a", "/b", "/x:y/a", "/x:y/", "a", ""},
                // Extensions
                {"/a.b.c", "", "/a.b.c", "/", "a.b.c", "c"},
                {"/.profile", "", "/.profile", "/", ".profile", ""},
                {"/.a.b", "", "/.a.b", "/", ".a.b", "b"},
                {"/a.", "", "/a.", "/", "a.", ""},
                {"/x.y/a", "", "/x.y/a", "/x.y/", "a", ""},
                {"/x.y/", "", "/x.y/", "/x.y/", "", ""},
                {"/...", "", "/...", "/", "...", ""},
                // A closing "." or ".."
                {".", "", ".", "/usr/", "share", ""},
                {"..", "", "..", "/", "usr", ""},
                {"/a/b.c/.", "", "/a/b.c/.", "/a/", "b.c", "c"},
                {"/a/b/..", "", "/a/b/..", "/", "a", ""},
                {"\\a\\b\\..", "", "\\a\\b\\..", "/", "a", ""},
                {"x/..", "/b", "/b/x/..", "/", "b", ""},
                {".", "b", "b/.", "/usr/share/", "b", ""},
                {"..", "b", "b/..", "/usr/", "share", ""},
                {"/a/././.", "", "/a/././.", "/", "a", ""},
                {"/a/../b", "", "/a/../b", "/a/../", "b", ""},
                {"/a/b/../..", "", "/a/b/../..", "/a/", "b", ""},
                {"/a/b/../", "", "/a/b/../", "/a/b/../", "", ""},
                {"/.", "", "/.", "/", "", ""},
                {"/..", "", "/..", "/", "", ""},
                {"/a/..", "", "/a/..", "/", "", ""},
                {"c:/..", "", "c:/..", "c:", "", ""},
                {"c:.", "", "c:.", "c:", "", ""},
                {"c:x/..", "", "c:x/..", "c:", "", ""}};
    ASSERT_EQ(::chdir("/usr/share"), 0);
    for (const auto& row : rows) {
        const FilePath path(Text(row.path), Text(row.base));
        const std::string shown = std::string(row.path) + " in " + row.base;
        EXPECT_EQ(Bytes(path.GetGivenPath()), row.given) << shown;
        EXPECT_EQ(Bytes(path.GetDirectory()), row.directory) << shown;
        EXPECT_EQ(Bytes(path.GetFileName()), row.name) << shown;
        EXPECT_EQ(Bytes(path.GetExtension()), row.extension) << shown;
        EXPECT_EQ(path.GetSystemPath(), std::string(row.directory) + row.name) << shown;
    }
}

TEST(FilePath, StandsInAnyCurrentDirectory) {
    ASSERT_EQ(::chdir("/"), 0);
    for (const auto& [path, full] : {std::pair(u"a", "/a"), {u"", "/"}, {u"..", "/"}})
        EXPECT_EQ(FilePath(path).GetSystemPath(), full);
    const std::string noText = sys::TemporaryDirectory() + "\xE9" + std::to_string(::getpid());
    ASSERT_EQ(::mkdir(noText.c_str(), 0700), 0);
    ASSERT_EQ(::chdir(noText.c_str()), 0);
    EXPECT_TRUE(sys::WriteFileAtomically(FilePath(u"a").GetSystemPath(), ""));
    EXPECT_TRUE(sys::DeleteFile(noText + "/a"));
    EXPECT_TRUE(sys::RemoveDirectory(noText));
    ASSERT_EQ(::chdir("/"), 0);
}

TEST(FilePath, ResolvesLongRowsOfDots) {
    AString dots = u"/a", parents;
    for (int i = 0; i < 500000; ++i) {
        dots += u"/.";
        parents += u"/..";
    }
    EXPECT_EQ(FilePath(dots).GetSystemPath(), "/a");
    EXPECT_EQ(FilePath(parents).GetSystemPath(), "/");
}

TEST(FilePath, TellsTheTimeOfWhatIsThere) {
    std::string file;
    ASSERT_TRUE(sys::CreateTemporaryFile(sys::TemporaryDirectory(), "\xC3\xA9\xE4\xB8\xAD:", file));
    const std::pair<time_t, std::uint32_t> rows[] = {
        {1000000000, 1000000000u}, {0, 1u}, {4294967295, 4294967295u}, {4294967296, 1u}};
    const FilePath path(Text(file));
    for (const auto& [modified, shown] : rows) {
        const timespec times[2] = {{modified, 0}, {modified, 0}};
        ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
        EXPECT_EQ(path.GetModifiedTime(), shown);
    }
    ASSERT_TRUE(sys::DeleteFile(file));
    EXPECT_EQ(path.GetModifiedTime(), 0u);
    for (const char16_t* there : {u"/", u"/usr", u"/usr/", u"\\usr\\", u"."})
        EXPECT_NE(FilePath(there).GetModifiedTime(), 0u) << Bytes(there);
    EXPECT_EQ(FilePath(u"c:").GetModifiedTime(), 0u);
    EXPECT_EQ(FilePath(AString(std::u16string(u"/usr\0x", 6))).GetModifiedTime(), 0u);
}

} // namespace
