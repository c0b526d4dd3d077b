/// A lock that a process holds until it ends, however it ends.
#pragma once

#include <string>

#include "status.h"

namespace sys {

/// Holds a lock on a file, so that other processes can tell that this one lives. Where the file
/// system knows no locks, every lock is refused.
class QUOREL_API FileLock {
public:
    FileLock() = default;
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// Makes the file if need be and locks it, in place of what was held before. Doesn't wait: a
    /// lock that somebody holds is EWOULDBLOCK. Two objects of one process exclude each other too.
    Status TryLock(const std::string& path);
    /// Gives the lock back; the file stays.
    void Unlock();
    bool IsLocked() const { return mDescriptor >= 0; }

private:
    int mDescriptor = -1;
};

} // namespace sys
