#include "file_helpers.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "assertion.h"
#include "atomic_file.h"
#include "directory.h"
#include "file_io.h"
#include "file_status.h"
#include "temporary_file.h"

namespace {

class FileHelpers : public testing::Test {
protected:
    FileHelpers() {
        std::string form = sys::TemporaryDirectory() + "\xC3\xA4-XXXXXX";
        mFolder = std::string(::mkdtemp(form.data())) + '/';
        for (const char* name : {"empty", "full", "full/inner", "outside"}) {
            EXPECT_TRUE(sys::MakeDirectory(mFolder + name));
        }
        for (const char* name : {"file", "full/file", "full/inner/file", "outside/kept"}) {
            EXPECT_TRUE(sys::WriteFileAtomically(mFolder + name, "x"));
        }
        Link("outside", "link");
        Link("../outside", "full/link");
        Link("none", "dangling");
    }
    ~FileHelpers() override {
        static_cast<void>(sys::EmptyDirectoryTree(mFolder, nullptr));
        static_cast<void>(sys::RemoveDirectory(mFolder));
    }

    void Link(const char* target, const char* name) const {
        EXPECT_EQ(::symlink(target, (mFolder + name).c_str()), 0);
    }
    FilePath At(const char* name) const {
        return FilePath(AString(name), AString::FromMultiByte(AString::kUtf8, mFolder));
    }
    bool IsThere(const char* name) const {
        sys::FileStatus status;
        return sys::GetLinkStatus(mFolder + name, status).IsOk();
    }

    std::string mFolder;
};

TEST_F(FileHelpers, TellWhatIsThere) {
    const struct {
        const char* name;
        bool exists, isDirectory, hasNoFileName;
    } rows[] = {{"file", true, false, false},
                {"full", true, true, false},
                {"full/", true, true, true},
                {"none", false, false, false},
                {"none/", false, false, true},
                {"link", true, true, false},
                {"dangling", false, false, false},
                {"file/", false, false, true},
                {"", true, true, true},
                {"full/..", true, true, false}};
    for (const auto& row : rows) {
        EXPECT_EQ(FileExists(At(row.name)), row.exists) << row.name;
        EXPECT_EQ(IsDirectory(At(row.name)), row.isDirectory) << row.name;
        EXPECT_EQ(HasNoFileName(At(row.name)), row.hasNoFileName) << row.name;
    }
}

TEST_F(FileHelpers, MakeDirectoryMakesOneLevel) {
    const struct {
        const char* name;
        bool isMade;
    } rows[] = {{"new", false}, {"new/", true}, {"new/", false}, {"a/b/", false}, {"file/", false}};
    for (const auto& row : rows) {
        EXPECT_EQ(MakeDirectory(At(row.name)), row.isMade) << row.name;
    }
    EXPECT_FALSE(IsThere("a"));
}

TEST_F(FileHelpers, RemovePathRemovesOnlyWhatItIsGiven) {
    const struct {
        const char* name;
        bool isRemoved;
        const char* gone;
    } rows[] = {{"file/", false, "none"},  {"file", true, "file"},  {"file", false, "file"},
                {"empty/", true, "empty"}, {"link/", true, "link"}, {"dangling", true, "dangling"},
                {"full/", true, "full"},   {"none/", false, "none"}};
    for (const auto& row : rows) {
        EXPECT_EQ(RemovePath(At(row.name)), row.isRemoved) << row.name;
        EXPECT_FALSE(IsThere(row.gone)) << row.name;
    }
    EXPECT_TRUE(IsThere("outside/kept"));
}

TEST_F(FileHelpers, EmptyDirectoryDeletesAllButWhatLinksName) {
    ASSERT_EQ(::chmod((mFolder + "full/inner/file").c_str(), 0444), 0);
    std::string asserted;
    const AssertHandler before = SetAssertHandler([&](const std::string& text, unsigned) {
        asserted += text;
        return AssertAnswer::kRetry;
    });
    const bool wereIgnored = std::exchange(gIgnoreAllAsserts, false);
    EXPECT_TRUE(EmptyDirectory(At("full/")));
    gIgnoreAllAsserts = wereIgnored;
    SetAssertHandler(before);
    EXPECT_NE(asserted.find("!(lfd.dwFileAttributes & FILE_ATTRIBUTE_READONLY)"), asserted.npos)
        << asserted;
    EXPECT_TRUE(IsThere("full"));
    EXPECT_TRUE(sys::RemoveDirectory(mFolder + "full"));
    EXPECT_TRUE(IsThere("outside/kept"));
    EXPECT_FALSE(EmptyDirectory(At("file")));
    EXPECT_FALSE(EmptyDirectory(At("none/")));
}

} // namespace
