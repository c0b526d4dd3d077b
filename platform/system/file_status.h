/// What the system knows of a file without opening it.
#pragma once

#include <cstdint>
#include <string>

#include "status.h"

namespace sys {

/// Attribute bits, with the values that a host's callers know.
constexpr std::uint32_t kAttributeReadOnly = 0x01;  ///< nobody may write it, by its mode
constexpr std::uint32_t kAttributeDirectory = 0x10; ///< it is a directory

struct FileStatus {
    std::uint64_t size = 0;        ///< bytes
    std::int64_t modifiedTime = 0; ///< seconds since 1970-01-01 00:00 UTC
    std::uint32_t attributes = 0;  ///< kAttribute bits
    bool isRegular = false;        ///< a plain file: no directory, device, pipe or socket
    bool isLink = false;           ///< a symbolic link; only GetLinkStatus tells

    bool IsDirectory() const { return (attributes & kAttributeDirectory) != 0; }
    bool IsReadOnly() const { return (attributes & kAttributeReadOnly) != 0; }
};

/// Status of what the path names, symbolic links followed. On failure `status` is as it was.
QUOREL_API Status GetFileStatus(const std::string& path, FileStatus& status);

/// Status of the path itself: a symbolic link isn't followed.
QUOREL_API Status GetLinkStatus(const std::string& path, FileStatus& status);

} // namespace sys
