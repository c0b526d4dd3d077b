/// Writing of a file that may exist already: all of it, or nothing.
#pragma once

#include <string>
#include <string_view>

#include "status.h"

namespace sys {

/// Writes beside the target, flushes to the disk and renames. Until Commit succeeds the old file is
/// untouched, and whatever fails, nothing is left beside it. The new file takes the old one's mode;
/// a symbolic link stays, and the file that it names is replaced or made. A device or pipe is
/// written in place.
class QUOREL_API AtomicFile {
public:
    AtomicFile() = default;
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Begins to write `path`, and discards what was begun before. Fails on a directory and on a
    /// file that this user may not write.
    Status Open(const std::string& path);

    /// Appends bytes. After a failure each further Write, and Commit, give that failure again.
    Status Write(std::string_view bytes);

    /// Puts the new file in the place of the old one and ends the writing, failed or not.
    Status Commit();

    /// Ends the writing and leaves the old file. The destructor does the same.
    void Discard();

private:
    Status CreateBeside(const std::string& path, unsigned mode);
    Status Fail(std::string_view action, int code);
    Status FlushAndClose();

    std::string mTarget;
    std::string mTemporary; // empty when the target is written in place
    int mDescriptor = -1;
    Status mFailure; // the first failure since Open
};

/// An AtomicFile in one step.
QUOREL_API Status WriteFileAtomically(const std::string& path, std::string_view bytes);

} // namespace sys
