/// Reading, copying and deleting of whole files.
#pragma once

#include <cstdint>
#include <limits>
#include <string>

#include "status.h"

namespace sys {

/// Reads a regular file into `text`. Anything else (a directory, a device, a pipe) is refused,
/// since it may never end; so is a file of more than `limit` bytes (EFBIG). On failure `text` is
/// empty. Memory: what was read, never what the file claims beyond the limit.
QUOREL_API Status ReadWholeFile(const std::string& path, std::uint64_t limit, std::string& text);

/// Copies the bytes of the regular file `from` into `to`, which is created or replaced in place. A
/// copy onto itself is refused with EINVAL, a file of more than `limit` bytes with EFBIG. On
/// failure a `to` that was begun may be incomplete.
QUOREL_API Status CopyFile(const std::string& from, const std::string& to,
                           std::uint64_t limit = std::numeric_limits<std::uint64_t>::max());

/// Deletes a file or a symbolic link, not a directory.
QUOREL_API Status DeleteFile(const std::string& path);

} // namespace sys
