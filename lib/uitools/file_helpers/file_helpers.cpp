#include "file_helpers.h"

#include "assertion.h"
#include "directory.h"
#include "file_io.h"
#include "file_status.h"

namespace {

/// The path without closing slashes, which would lead through a symbolic link.
std::string WithoutClosingSlash(std::string path) {
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

bool IsLink(const std::string& path) {
    sys::FileStatus status;
    return sys::GetLinkStatus(path, status) && status.isLink;
}

std::string DirectoryOf(const FilePath& path) {
    return path.GetDirectory().ToCString(AString::kUtf8);
}

} // namespace

bool FileExists(const FilePath& path) {
    sys::FileStatus status;
    return sys::GetFileStatus(path.GetSystemPath(), status).IsOk();
}

bool IsDirectory(const FilePath& path) {
    sys::FileStatus status;
    return sys::GetFileStatus(path.GetSystemPath(), status) && status.IsDirectory();
}

bool HasNoFileName(const FilePath& path) {
    return path.GetFileName().empty();
}

bool MakeDirectory(const FilePath& path) {
    return HasNoFileName(path) && sys::MakeDirectory(path.GetSystemPath());
}

bool EmptyDirectory(const FilePath& path) {
    if (!IsDirectory(path)) {
        return false;
    }
    const auto checkFile = [](const sys::FileStatus& file) {
        USE_ASSERT_TEXT(!file.IsReadOnly(), "!(lfd.dwFileAttributes & FILE_ATTRIBUTE_READONLY)");
    };
    // What can't be deleted is passed over, by contract without a word.
    static_cast<void>(sys::EmptyDirectoryTree(path.GetSystemPath(), checkFile));
    return true;
}

bool RemovePath(const FilePath& path) {
    const std::string full = path.GetSystemPath();
    const std::string itself = WithoutClosingSlash(full);
    if (IsLink(itself)) {
        return sys::DeleteFile(itself).IsOk();
    }
    if (IsDirectory(path)) {
        EmptyDirectory(path);
        return sys::RemoveDirectory(DirectoryOf(path)).IsOk();
    }
    return sys::DeleteFile(full).IsOk();
}
