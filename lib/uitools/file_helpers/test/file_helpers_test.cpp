#include "file_helpers.h"

#include <gtest/gtest.h>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

#include "assertion_watch.h"
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
        for (const char* name : {"empty", "full", "full/inner", "outside"})
            EXPECT_TRUE(sys::MakeDirectory(mFolder + name));
        for (const char* name : {"file", "full/file", "full/inner/file", "outside/kept"})
            EXPECT_TRUE(sys::WriteFileAtomically(mFolder + name, "x"));
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
    /// True for a dangling link too.
    static bool IsThere(const FilePath& path) {
        sys::FileStatus status;
        return sys::GetLinkStatus(path.GetSystemPath(), status).IsOk();
    }

    std::string mFolder;
};

TEST_F(FileHelpers, DoOneAfterTheOther) {
    const struct {
        bool (*work)(const FilePath&);
        const char* name;
        bool result;
    } rows[] = {{FileExists, "file", true},        {FileExists, "full", true},
                {FileExists, "full/", true},       {FileExists, "none", false},
                {FileExists, "link", true},        {FileExists, "dangling", false},
                {FileExists, "file/", false},      {FileExists, "", true},
                {IsDirectory, "file", false},      {IsDirectory, "full", true},
                {IsDirectory, "full/", true},      {IsDirectory, "none/", false},
                {IsDirectory, "link", true},       {IsDirectory, "full/..", true},
                {HasNoFileName, "full", false},    {HasNoFileName, "none/", true},
                {HasNoFileName, "full/..", false}, {HasNoFileName, "", true},
                {MakeDirectory, "new", false},     {FileExists, "new", false},
                {MakeDirectory, "new/", true},     {MakeDirectory, "new/", false},
                {MakeDirectory, "a/b/", false},    {FileExists, "a", false},
                {MakeDirectory, "file/", false},   {EmptyDirectory, "file", false},
                {EmptyDirectory, "none/", false},  {RemovePath, "file/", false},
                {RemovePath, "file", true},        {RemovePath, "file", false},
                {RemovePath, "empty/", true},      {IsThere, "empty", false},
                {RemovePath, "link/", true},       {IsThere, "link", false},
                {RemovePath, "dangling", true},    {IsThere, "dangling", false},
                {RemovePath, "full/", true},       {IsThere, "full", false},
                {RemovePath, "none/", false},      {IsThere, "outside/kept", true}};
    for (std::size_t i = 0; i < std::size(rows); ++i)
        EXPECT_EQ(rows[i].work(At(rows[i].name)), rows[i].result) << i << " " << rows[i].name;
}

TEST_F(FileHelpers, EmptyDirectoryDeletesAllButWhatLinksName) {
    ASSERT_EQ(::chmod((mFolder + "full/inner/file").c_str(), 0444), 0);
    {
        const AssertionWatch asserted;
        EXPECT_TRUE(EmptyDirectory(At("full/")));
        EXPECT_NE(asserted.GetText().find("!(lfd.dwFileAttributes & FILE_ATTRIBUTE_READONLY)"),
                  std::string::npos);
    }
    EXPECT_TRUE(sys::RemoveDirectory(mFolder + "full")) << "itself stays, empty";
    EXPECT_TRUE(FileExists(At("outside/kept")));
}

} // namespace
