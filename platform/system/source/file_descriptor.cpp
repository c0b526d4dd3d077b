#include "file_descriptor.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace sys {

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    if (this != &other) {
        Close();
        mDescriptor = other.Release();
    }
    return *this;
}

int FileDescriptor::Release() {
    return std::exchange(mDescriptor, -1);
}

int FileDescriptor::Close() {
    if (!IsOpen()) {
        return 0;
    }
    // After EINTR the descriptor is closed all the same: a second close could hit another's file.
    const bool isClosed = ::close(Release()) == 0 || errno == EINTR;
    return isClosed ? 0 : errno;
}

bool IsUsablePath(const std::string& path) {
    if (path.empty() || path.find('\0') != std::string::npos) {
        errno = path.empty() ? ENOENT : EINVAL;
        return false;
    }
    return true;
}

FileDescriptor OpenRegularFile(const std::string& path) {
    if (!IsUsablePath(path)) {
        return {};
    }
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!file.IsOpen() || ::fstat(file.Get(), &status) != 0) {
        return {};
    }
    if (!S_ISREG(status.st_mode)) {
        errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        return {};
    }
    return file;
}

int WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            return errno;
        }
        bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return 0;
}

namespace {

constexpr std::string_view kNameLetters = "0123456789abcdefghijklmnopqrstuv";
constexpr std::size_t kRandomLetters = 12; // 60 bits

bool AppendRandomLetters(std::string& name) {
    std::array<unsigned char, kRandomLetters> bytes{};
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        return false;
    }
    for (const unsigned char byte : bytes) {
        name += kNameLetters[byte % kNameLetters.size()];
    }
    return true;
}

} // namespace

FileDescriptor CreateUniqueFile(std::string_view prefix, mode_t mode, std::string& path) {
    constexpr int kAttempts = 16;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        path = prefix;
        if (!AppendRandomLetters(path)) {
            break;
        }
        path += ".tmp";
        if (!IsUsablePath(path)) {
            break;
        }
        FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (file.IsOpen() || errno != EEXIST) {
            return file;
        }
    }
    return {};
}

} // namespace sys
