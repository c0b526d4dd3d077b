/// Temporary files.
#pragma once

#include <string>
#include <string_view>

#include "status.h"

namespace sys {

/// The directory for temporary files with a closing slash: that of "TMPDIR" if it names an existing
/// directory, else "/tmp/". Empty when neither exists.
QUOREL_API std::string TemporaryDirectory();

/// Creates an empty file in `directory` that nobody else can read and whose name nobody could
/// guess: the prefix, random characters, ".tmp". The caller deletes it. A prefix with a "/" is
/// refused. On failure `path` is empty.
QUOREL_API Status CreateTemporaryFile(const std::string& directory, std::string_view prefix,
                                      std::string& path);

} // namespace sys
