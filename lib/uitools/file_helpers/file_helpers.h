/// Work on the disk with file paths. Nothing here throws or reports: a call that the system refuses
/// shows as false.
#pragma once

#include "file_path.h"
#include "quorel_export.h"

/// True when the path names anything that is there.
QUOREL_API bool FileExists(const FilePath& path);

/// True when the path names a directory, or a symbolic link to one.
QUOREL_API bool IsDirectory(const FilePath& path);

/// True for a path that ends with its directory.
QUOREL_API bool HasNoFileName(const FilePath& path);

/// Creates the directory `path`, one level only: missing parents aren't made. False, and nothing
/// happens, for a path with a file name, so close the path with a slash.
QUOREL_API bool MakeDirectory(const FilePath& path);

/// Deletes all that is in the directory, at any depth. True for every directory, even if something
/// couldn't be deleted; false, and nothing happens, for anything else. Read-only files are deleted
/// too, though each is an assertion. Symbolic links in it are removed, never followed.
QUOREL_API bool EmptyDirectory(const FilePath& path);

/// Removes a directory with all that is in it, or deletes a file; true on success. A directory is
/// to be given with its closing slash. A symbolic link goes itself, and what it names stays.
QUOREL_API bool RemovePath(const FilePath& path);
