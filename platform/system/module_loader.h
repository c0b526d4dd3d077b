/// Loading of modules at run time.
#pragma once

#include <string>
#include <type_traits>

#include "status.h"

namespace sys {

/// One loaded module. It is unloaded with the loader, so the loader must outlive every object that
/// the module made.
class QUOREL_API ModuleLoader {
public:
    ModuleLoader() = default;
    ~ModuleLoader();
    ModuleLoader(const ModuleLoader&) = delete;
    ModuleLoader& operator=(const ModuleLoader&) = delete;

    /// Unloads what was loaded and loads the module file `path`, with all its symbols resolved. The
    /// path is taken as it is, relative to the current directory; no library path is searched.
    Status Load(const std::string& path);

    /// Unloads the module, if any. Entries that were found in it are dead from here on.
    void Unload();

    bool IsLoaded() const { return mHandle != nullptr; }
    const std::string& GetPath() const { return mPath; }

    /// Finds an exported function: `Find("DllCanUnloadNow", entry)` sets the function pointer
    /// `entry`, or null on failure. The caller answers for the type.
    template <class Function>
    Status Find(const std::string& name, Function*& entry) const {
        static_assert(std::is_function_v<Function>);
        void* address = nullptr;
        Status status = FindAddress(name, address);
        entry = reinterpret_cast<Function*>(address);
        return status;
    }

private:
    Status FindAddress(const std::string& name, void*& address) const;

    void* mHandle = nullptr;
    std::string mPath;
};

} // namespace sys
