#include "file_status.h"

#include <cerrno>
#include <sys/stat.h>

#include "file_descriptor.h"
#include "file_status_from.h"

namespace sys {

FileStatus FileStatusFrom(const struct stat& from) {
    FileStatus status;
    status.size = static_cast<std::uint64_t>(from.st_size);
    status.modifiedTime = from.st_mtime;
    const bool isDirectory = S_ISDIR(from.st_mode);
    status.isRegular = S_ISREG(from.st_mode);
    status.isLink = S_ISLNK(from.st_mode);
    const bool isReadOnly = (from.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
    status.attributes =
        (isDirectory ? kAttributeDirectory : 0u) | (isReadOnly ? kAttributeReadOnly : 0u);
    return status;
}

namespace {

using StatusCall = int (*)(const char* path, struct stat* status);

Status AskStatus(StatusCall call, const std::string& path, FileStatus& status) {
    struct stat answer {};
    if (!IsUsablePath(path) || call(path.c_str(), &answer) != 0) {
        return Failure("find", path, errno);
    }
    status = FileStatusFrom(answer);
    return {};
}

} // namespace

Status GetFileStatus(const std::string& path, FileStatus& status) {
    return AskStatus(&::stat, path, status);
}

Status GetLinkStatus(const std::string& path, FileStatus& status) {
    return AskStatus(&::lstat, path, status);
}

} // namespace sys
