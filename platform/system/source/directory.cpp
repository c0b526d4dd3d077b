#include "directory.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "file_descriptor.h"
#include "read_names.h"

namespace sys {

std::string CurrentDirectory() {
    const std::unique_ptr<char, decltype(&std::free)> text(::getcwd(nullptr, 0), &std::free);
    if (!text) {
        return "/proc/self/cwd"; // it was removed, or lies where we can't see
    }
    const std::string path = text.get();
    return path == "/" ? std::string() : path;
}

std::string WithClosingSlash(std::string path) {
    if (!path.empty() && path.back() != '/') {
        path += '/';
    }
    return path;
}

Status ListDirectory(const std::string& path, std::vector<std::string>& names) {
    names.clear();
    FileDescriptor directory;
    if (IsUsablePath(path)) {
        directory = FileDescriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    }
    const int error = directory.IsOpen() ? ReadNames(directory.Get(), names) : errno;
    if (error != 0) {
        names.clear();
        return Failure("list", path, error);
    }
    std::sort(names.begin(), names.end());
    return {};
}

Status MakeDirectory(const std::string& path) {
    constexpr mode_t kNewDirectory = 0777; // less the user's mask
    if (!IsUsablePath(path) || ::mkdir(path.c_str(), kNewDirectory) != 0) {
        return Failure("make directory", path, errno);
    }
    return {};
}

Status MakeDirectories(const std::string& path) {
    if (!IsUsablePath(path)) {
        return Failure("make directory", path, errno);
    }
    int error = 0;
    for (std::size_t end = 0; end != std::string::npos && end + 1 < path.size();) {
        end = path.find('/', end + 1);
        // A missing right on a parent that exists isn't a failure: only the last step tells.
        error = ::mkdir(path.substr(0, end).c_str(), S_IRWXU) == 0 ? 0 : errno;
    }
    FileStatus status;
    if (GetFileStatus(path, status) && status.IsDirectory()) {
        return {};
    }
    return Failure("make directory", path, error == 0 ? ENOTDIR : error);
}

Status RemoveDirectory(const std::string& path) {
    if (!IsUsablePath(path) || ::rmdir(path.c_str()) != 0) {
        return Failure("remove directory", path, errno);
    }
    return {};
}

} // namespace sys
