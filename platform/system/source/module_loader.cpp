#include "module_loader.h"

#include <cerrno>
#include <dlfcn.h>

#include "file_descriptor.h"

namespace sys {
namespace {

std::string LoaderReason() {
    const char* reason = ::dlerror();
    return reason == nullptr ? "unknown reason" : reason;
}

} // namespace

ModuleLoader::~ModuleLoader() {
    Unload();
}

Status ModuleLoader::Load(const std::string& path) {
    Unload();
    if (!IsUsablePath(path)) {
        return Failure("load module", path, errno);
    }
    const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
    mHandle = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (mHandle == nullptr) {
        return Failure("load module", path, ENOEXEC, LoaderReason());
    }
    mPath = path;
    return {};
}

void ModuleLoader::Unload() {
    if (mHandle != nullptr) {
        ::dlclose(mHandle);
        mHandle = nullptr;
        mPath.clear();
    }
}

Status ModuleLoader::FindAddress(const std::string& name, void*& address) const {
    if (mHandle == nullptr) {
        return Failure("find entry", name, ENOENT, "no module is loaded");
    }
    ::dlerror();
    address = ::dlsym(mHandle, name.c_str());
    return address == nullptr ? Failure("find entry", name, ENOENT, LoaderReason()) : Status();
}

} // namespace sys
