/// Writing of a file that may exist already: all of it, or nothing.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "status.h"

namespace sys {

/// What is done to the disk while a file is written, in the order in which it comes.
enum class FileStep { create, takeOver, write, flush, close, rename, flushDirectory, remove };

/// Told of the steps of a file's writing, for tests that let one fail or end the process at it.
class IFileWatch {
public:
    virtual ~IFileWatch() = default;
    /// Called before a step.
    /// @return 0, or the error number with which the step fails without being done
    virtual int Before(FileStep step) = 0;
};

/// Writes beside the target, flushes to the disk and renames. Until Commit succeeds the old file is
/// untouched, and whatever fails, nothing is left beside it. The new file takes the old one's mode;
/// a symbolic link stays, and the file that it names is replaced or made. A device or pipe is
/// written in place.
class QUOREL_API AtomicFile {
public:
    /// @param watch outlives the file; may be null
    explicit AtomicFile(IFileWatch* watch = nullptr) : mWatch(watch) {}
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Begins to write `path`, and discards what was begun before. Fails on a directory and on a
    /// file that this user may not write.
    Status Open(const std::string& path);

    /// Appends bytes, a piece of kMaxPiece at a time. After a failure each further Write, and
    /// Commit, give that failure again.
    Status Write(std::string_view bytes);

    static constexpr std::size_t kMaxPiece = 1 << 20;

    /// Puts the new file in the place of the old one and ends the writing, failed or not.
    Status Commit();

    /// Ends the writing and leaves the old file. The destructor does the same.
    void Discard();

private:
    Status CreateBeside(const std::string& path, unsigned mode);
    Status Fail(std::string_view action, int code);
    Status FlushAndClose();
    int Before(FileStep step) const { return mWatch ? mWatch->Before(step) : 0; }

    IFileWatch* mWatch;
    std::string mTarget;
    std::string mTemporary; // empty when the target is written in place
    int mDescriptor = -1;
    Status mFailure; // the first failure since Open
};

/// An AtomicFile in one step.
QUOREL_API Status WriteFileAtomically(const std::string& path, std::string_view bytes);

} // namespace sys
