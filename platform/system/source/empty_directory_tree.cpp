#include "directory.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "file_descriptor.h"
#include "file_status_from.h"
#include "read_names.h"

namespace sys {
namespace {

/// Walks the tree with one open directory at a time: down by a name, up by "..". Names are never
/// joined to paths, so a tree may be deeper than a path may be long, and a directory that somebody
/// replaces by a link while we are at it isn't followed. On the way up the directory must be the
/// one we came from.
class TreeEmptier {
public:
    explicit TreeEmptier(const std::function<void(const FileStatus&)>& onFile) : mOnFile(onFile) {}

    Status Run(const std::string& path) {
        if (!IsUsablePath(path)) {
            return Failure("empty", path, errno);
        }
        Enter(FileDescriptor(::open(path.c_str(), kOpenDirectory)), path);
        while (!mLevels.empty()) {
            if (!mLevels.back().directories.empty()) {
                Descend();
            } else if (!Ascend()) {
                break;
            }
        }
        return mFailure;
    }

private:
    static constexpr int kOpenDirectory = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

    struct Level {
        std::string name;
        dev_t device;
        ino_t node;
        std::vector<std::string> directories; // still to be removed
    };

    void Note(const char* action, const std::string& name, int code) {
        if (mFailure) {
            mFailure = Failure(action, name, code);
        }
    }

    /// Makes `directory` the current one and deletes what isn't a directory in it.
    bool Enter(FileDescriptor directory, const std::string& name) {
        struct stat status {};
        if (!directory.IsOpen() || ::fstat(directory.Get(), &status) != 0) {
            Note("open", name, errno);
            return false;
        }
        mCurrent = std::move(directory);
        mLevels.push_back({name, status.st_dev, status.st_ino, {}});
        std::vector<std::string> names;
        const int error = ReadNames(mCurrent.Get(), names);
        if (error != 0) {
            Note("list", name, error);
        }
        for (std::string& entry : names) {
            Delete(std::move(entry));
        }
        return true;
    }

    void Delete(std::string&& name) {
        struct stat status {};
        if (::fstatat(mCurrent.Get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
            Note("find", name, errno);
            return;
        }
        if (S_ISDIR(status.st_mode)) {
            mLevels.back().directories.push_back(std::move(name));
            return;
        }
        if (mOnFile) {
            mOnFile(FileStatusFrom(status));
        }
        if (::unlinkat(mCurrent.Get(), name.c_str(), 0) != 0) {
            Note("delete", name, errno);
        }
    }

    void Descend() {
        const std::string name = std::move(mLevels.back().directories.back());
        mLevels.back().directories.pop_back();
        FileDescriptor child(::openat(mCurrent.Get(), name.c_str(), kOpenDirectory | O_NOFOLLOW));
        // A directory without the way back open to us has nothing that we could delete either.
        const bool hasWayBack =
            child.IsOpen() && FileDescriptor(::openat(child.Get(), "..", kOpenDirectory)).IsOpen();
        if (!hasWayBack || !Enter(std::move(child), name)) {
            RemoveChild(name);
        }
    }

    bool Ascend() {
        const std::string name = std::move(mLevels.back().name);
        mLevels.pop_back();
        if (mLevels.empty()) {
            return true;
        }
        FileDescriptor parent(::openat(mCurrent.Get(), "..", kOpenDirectory));
        struct stat status {};
        const Level& level = mLevels.back();
        if (!parent.IsOpen() || ::fstat(parent.Get(), &status) != 0 ||
            status.st_dev != level.device || status.st_ino != level.node) {
            Note("leave", name, parent.IsOpen() ? ENOENT : errno);
            return false;
        }
        mCurrent = std::move(parent);
        RemoveChild(name);
        return true;
    }

    void RemoveChild(const std::string& name) {
        if (::unlinkat(mCurrent.Get(), name.c_str(), AT_REMOVEDIR) != 0) {
            Note("remove directory", name, errno);
        }
    }

    const std::function<void(const FileStatus&)>& mOnFile;
    std::vector<Level> mLevels;
    FileDescriptor mCurrent;
    Status mFailure;
};

} // namespace

Status EmptyDirectoryTree(const std::string& path,
                          const std::function<void(const FileStatus&)>& onFile) {
    return TreeEmptier(onFile).Run(path);
}

} // namespace sys
