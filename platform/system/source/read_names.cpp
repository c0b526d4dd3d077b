#include "read_names.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string_view>

#include "file_descriptor.h"

namespace sys {

int ReadNames(int directory, std::vector<std::string>& names) {
    // A handle of its own: the stream closes it and moves its position.
    FileDescriptor handle(::openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!handle.IsOpen()) {
        return errno;
    }
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::fdopendir(handle.Get()), &::closedir);
    if (!stream) {
        return errno;
    }
    handle.Release();
    while (true) {
        errno = 0;
        const dirent* entry = ::readdir(stream.get());
        if (entry == nullptr) {
            return errno;
        }
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            names.emplace_back(name);
        }
    }
}

} // namespace sys
