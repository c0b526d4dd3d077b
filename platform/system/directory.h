/// Directories: where we are, what is in one, making and removing.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "file_status.h"
#include "status.h"

namespace sys {

/// The current directory as an absolute path without a closing slash, so empty for the root. Where
/// the system can't tell its name, a path that leads there all the same.
QUOREL_API std::string CurrentDirectory();

/// `path` with one slash behind it, unless it has one or is empty.
QUOREL_API std::string WithClosingSlash(std::string path);

/// Names of what is in a directory, without "." and "..", in the order of their bytes. On failure
/// `names` is empty.
QUOREL_API Status ListDirectory(const std::string& path, std::vector<std::string>& names);

/// Makes one directory; its parent must exist, itself must not (EEXIST).
QUOREL_API Status MakeDirectory(const std::string& path);

/// Makes a directory and all missing parents, open to this user alone as user directories are to
/// be. A directory that exists is a success.
QUOREL_API Status MakeDirectories(const std::string& path);

/// Removes an empty directory.
QUOREL_API Status RemoveDirectory(const std::string& path);

/// Deletes all that is in a directory, at any depth, and keeps the directory itself. Symbolic links
/// in it are removed, never followed. What can't be deleted is passed over; the result is the first
/// such failure. `onFile`, if not null, is told of each thing that isn't a directory before it
/// goes. Takes two file descriptors and no stack, however deep the tree, and memory for the names
/// of the directories that are open.
QUOREL_API Status EmptyDirectoryTree(const std::string& path,
                                     const std::function<void(const FileStatus&)>& onFile);

} // namespace sys
