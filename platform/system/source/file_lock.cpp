#include "file_lock.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace sys {

FileLock::~FileLock() {
    Unlock();
}

Status FileLock::TryLock(const std::string& path) {
    Unlock();
    const int descriptor = path.find('\0') == path.npos
                               ? ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)
                               : (errno = EINVAL, -1);
    if (descriptor < 0)
        return Failure("open", path, errno);
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        const int code = errno;
        ::close(descriptor);
        return Failure("lock", path, code);
    }
    mDescriptor = descriptor;
    return {};
}

void FileLock::Unlock() {
    if (mDescriptor >= 0)
        ::close(mDescriptor);
    mDescriptor = -1;
}

} // namespace sys
