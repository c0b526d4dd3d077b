#include "temporary_file.h"

#include <cerrno>
#include <sys/stat.h>

#include "directory.h"
#include "environment.h"
#include "file_descriptor.h"

namespace sys {

std::string TemporaryDirectory() {
    for (const std::string& candidate :
         {GetEnvironment("TMPDIR").value_or(""), std::string("/tmp")}) {
        FileStatus status;
        if (GetFileStatus(candidate, status) && status.IsDirectory()) {
            return WithClosingSlash(candidate);
        }
    }
    return {};
}

Status CreateTemporaryFile(const std::string& directory, std::string_view prefix,
                           std::string& path) {
    constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;
    path.clear();
    if (prefix.find('/') != std::string_view::npos) {
        return Failure("make a temporary file in", directory, EINVAL, "bad prefix");
    }
    const std::string stem = WithClosingSlash(directory).append(prefix);
    const FileDescriptor file = CreateUniqueFile(stem, kOwnerOnly, path);
    if (!file.IsOpen()) {
        path.clear();
        return Failure("make a temporary file in", directory, errno);
    }
    return {};
}

} // namespace sys
