/// What the sources of this room share: an owned descriptor, and checked paths.
#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>

namespace sys {

/// Owns one file descriptor and closes it.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : mDescriptor(descriptor) {}
    ~FileDescriptor() { Close(); }
    FileDescriptor(FileDescriptor&& other) noexcept : mDescriptor(other.Release()) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;

    bool IsOpen() const { return mDescriptor >= 0; }
    int Get() const { return mDescriptor; }

    /// Gives up the descriptor: the caller closes it.
    int Release();

    /// Closes it; the result is 0 or the error number.
    int Close();

private:
    int mDescriptor = -1;
};

/// True when the system sees all of the path: it isn't empty and holds no NUL. Sets errno
/// otherwise.
bool IsUsablePath(const std::string& path);

/// Opens a path for reading, if it is a regular file. Never waits, as opening a pipe would. Sets
/// errno on failure.
FileDescriptor OpenRegularFile(const std::string& path);

/// Writes all bytes; 0 or the error number.
int WriteAll(int descriptor, std::string_view bytes);

/// Creates a file that didn't exist, its name made of `prefix` (with its directory), random
/// characters and ".tmp", open for writing. `path` is its name. On failure the descriptor isn't
/// open and errno set.
FileDescriptor CreateUniqueFile(std::string_view prefix, mode_t mode, std::string& path);

} // namespace sys
