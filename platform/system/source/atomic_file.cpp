#include "atomic_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "file_descriptor.h"

namespace sys {
namespace {

constexpr unsigned kNewFile = 0666; // less the user's mask
constexpr unsigned kPrivate = 0600; // until it has the mode of the file that it replaces

std::string DirectoryOf(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

/// The file that a path stands for when symbolic links are followed; it need not exist yet.
std::string FollowLinks(std::string path) {
    constexpr int kMostLinks = 40; // as many as the system follows
    std::array<char, PATH_MAX> target{};
    for (int i = 0; i < kMostLinks; ++i) {
        const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
        if (length <= 0) {
            break;
        }
        const std::string_view text(target.data(), static_cast<std::size_t>(length));
        path = (text.front() == '/' ? std::string() : DirectoryOf(path)).append(text);
    }
    return path;
}

/// The new file is to be the old one for everybody who may use it. Where its owner can't be kept,
/// the rights to act as the owner aren't either.
void TakeOver(int descriptor, const struct stat& old) {
    const bool isOwnerKept = ::fchown(descriptor, old.st_uid, old.st_gid) == 0;
    const mode_t kept = isOwnerKept ? 07777 : 0777;
    static_cast<void>(::fchmod(descriptor, old.st_mode & kept));
}

/// A rename is on the disk when its directory is. Not every file system can do it, and the file's
/// bytes are safe already, so a failure is none of the writing's.
void FlushDirectory(const std::string& directory) {
    const FileDescriptor handle(
        ::open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.IsOpen()) {
        static_cast<void>(::fsync(handle.Get()));
    }
}

} // namespace

AtomicFile::~AtomicFile() {
    Discard();
}

Status AtomicFile::Fail(std::string_view action, int code) {
    mFailure = Failure(action, mTarget, code);
    return mFailure;
}

Status AtomicFile::Open(const std::string& path) {
    Discard();
    mFailure = {};
    mTarget = path;
    struct stat old {};
    if (!IsUsablePath(path)) {
        return Fail("write", errno);
    }
    if (::stat(path.c_str(), &old) != 0) {
        return errno == ENOENT ? CreateBeside(FollowLinks(path), kNewFile) : Fail("write", errno);
    }
    if (S_ISDIR(old.st_mode)) {
        return Fail("write", EISDIR);
    }
    if (!S_ISREG(old.st_mode)) {
        mDescriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
        return mDescriptor >= 0 ? Status() : Fail("write", errno);
    }
    if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) {
        return Fail("write", errno);
    }
    Status status = CreateBeside(FollowLinks(path), kPrivate);
    if (status && Before(FileStep::takeOver) == 0) {
        TakeOver(mDescriptor, old);
    }
    return status;
}

Status AtomicFile::CreateBeside(const std::string& path, unsigned mode) {
    mTarget = path;
    if (const int error = Before(FileStep::create)) {
        return Fail("write beside", error);
    }
    FileDescriptor file = CreateUniqueFile(DirectoryOf(path) + ".quorel-", mode, mTemporary);
    if (!file.IsOpen()) {
        mTemporary.clear();
        return Fail("write beside", errno);
    }
    mDescriptor = file.Release();
    return {};
}

Status AtomicFile::Write(std::string_view bytes) {
    if (!mFailure) {
        return mFailure;
    }
    if (mDescriptor < 0) {
        return Fail("write", EBADF);
    }
    for (; !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), kMaxPiece))) {
        const int refusal = Before(FileStep::write);
        const int error =
            refusal != 0 ? refusal : WriteAll(mDescriptor, bytes.substr(0, kMaxPiece));
        if (error != 0) {
            return Fail("write", error);
        }
    }
    return {};
}

Status AtomicFile::FlushAndClose() {
    int flushError = Before(FileStep::flush);
    // A device or pipe can't be flushed.
    if (flushError == 0 && !mTemporary.empty() && ::fsync(mDescriptor) != 0) {
        flushError = errno;
    }
    const int refusal = Before(FileStep::close);
    const int closed = FileDescriptor(std::exchange(mDescriptor, -1)).Close();
    const int closeError = refusal != 0 ? refusal : closed;
    const int error = flushError != 0 ? flushError : closeError;
    return error == 0 ? Status() : Fail("write", error);
}

Status AtomicFile::Commit() {
    Status status = Write({});
    if (status) {
        status = FlushAndClose();
    }
    if (status && !mTemporary.empty()) {
        int error = Before(FileStep::rename);
        if (error == 0 && ::rename(mTemporary.c_str(), mTarget.c_str()) != 0) {
            error = errno;
        }
        if (error == 0) {
            mTemporary.clear();
            if (Before(FileStep::flushDirectory) == 0) {
                FlushDirectory(DirectoryOf(mTarget));
            }
        } else {
            status = Fail("replace", error);
        }
    }
    Discard();
    return status;
}

void AtomicFile::Discard() {
    FileDescriptor(std::exchange(mDescriptor, -1)).Close();
    if (!mTemporary.empty()) {
        static_cast<void>(Before(FileStep::remove)); // what was begun goes, if it can
        ::unlink(mTemporary.c_str());
        mTemporary.clear();
    }
}

Status WriteFileAtomically(const std::string& path, std::string_view bytes) {
    AtomicFile file;
    Status status = file.Open(path);
    if (status) {
        status = file.Write(bytes);
    }
    return status ? file.Commit() : status;
}

} // namespace sys
