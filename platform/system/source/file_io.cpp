#include "file_io.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "file_descriptor.h"

namespace sys {
namespace {

constexpr std::size_t kBlock = 64u << 10u;

/// Reads up to `size` bytes; -1 with errno set on failure.
ssize_t ReadSome(int descriptor, char* to, std::size_t size) {
    ssize_t got = 0;
    do {
        got = ::read(descriptor, to, size);
    } while (got < 0 && errno == EINTR);
    return got;
}

/// Appends the rest of the file to `text`; 0 or the error number. Files that grow while they are
/// read, or that claim no size as those of /proc do, are read to their end as well.
int ReadRest(int descriptor, std::uint64_t claimed, std::uint64_t limit, std::string& text) {
    if (claimed > limit) {
        return EFBIG;
    }
    std::size_t length = 0;
    text.resize(static_cast<std::size_t>(claimed) + 1);
    while (true) {
        if (length == text.size()) {
            text.resize(length + std::max(length / 2, kBlock));
        }
        const ssize_t got = ReadSome(descriptor, text.data() + length, text.size() - length);
        if (got < 0) {
            return errno;
        }
        length += static_cast<std::size_t>(got);
        if (length > limit) {
            return EFBIG;
        }
        if (got == 0) {
            text.resize(length);
            return 0;
        }
    }
}

bool IsSameFile(int descriptor, const std::string& path) {
    struct stat left {};
    struct stat right {};
    return ::fstat(descriptor, &left) == 0 && ::stat(path.c_str(), &right) == 0 &&
           left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

int CopyBytes(int from, int to, std::uint64_t limit) {
    std::string block(kBlock, '\0');
    while (true) {
        const ssize_t got = ReadSome(from, block.data(), block.size());
        if (got <= 0) {
            return got < 0 ? errno : 0;
        }
        if (static_cast<std::uint64_t>(got) > limit) {
            return EFBIG;
        }
        limit -= static_cast<std::uint64_t>(got);
        const int error = WriteAll(to, {block.data(), static_cast<std::size_t>(got)});
        if (error != 0) {
            return error;
        }
    }
}

Status TooLarge(std::string_view action, const std::string& path, std::uint64_t limit) {
    return Failure(action, path, EFBIG,
                   "larger than the limit of " + std::to_string(limit) + " bytes");
}

} // namespace

Status ReadWholeFile(const std::string& path, std::uint64_t limit, std::string& text) {
    text.clear();
    const FileDescriptor file = OpenRegularFile(path);
    struct stat status {};
    if (!file.IsOpen() || ::fstat(file.Get(), &status) != 0) {
        return errno == EINVAL ? Failure("read", path, EINVAL, "not a regular file")
                               : Failure("read", path, errno);
    }
    const int error = ReadRest(file.Get(), static_cast<std::uint64_t>(status.st_size), limit, text);
    if (error == 0) {
        return {};
    }
    text = std::string();
    return error == EFBIG ? TooLarge("read", path, limit) : Failure("read", path, error);
}

Status CopyFile(const std::string& from, const std::string& to, std::uint64_t limit) {
    const FileDescriptor source = OpenRegularFile(from);
    struct stat status {};
    if (!source.IsOpen() || ::fstat(source.Get(), &status) != 0) {
        return Failure("copy", from, errno);
    }
    if (static_cast<std::uint64_t>(status.st_size) > limit) {
        return TooLarge("copy", from, limit);
    }
    if (!IsUsablePath(to)) {
        return Failure("write", to, errno);
    }
    if (IsSameFile(source.Get(), to)) {
        return Failure("copy", from, EINVAL, "source and target are the same file");
    }
    constexpr mode_t kNewFile = 0666; // less the user's mask
    FileDescriptor target(
        ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY, kNewFile));
    if (!target.IsOpen()) {
        return Failure("write", to, errno);
    }
    const int error = CopyBytes(source.Get(), target.Get(), limit);
    const int closeError = target.Close();
    if (error != 0 || closeError != 0) {
        return Failure("write", to, error != 0 ? error : closeError);
    }
    return {};
}

Status DeleteFile(const std::string& path) {
    if (!IsUsablePath(path) || ::unlink(path.c_str()) != 0) {
        return Failure("delete", path, errno);
    }
    return {};
}

} // namespace sys
