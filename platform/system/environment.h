/// What surrounds the process: environment variables, user directories, its own files.
#pragma once

#include <optional>
#include <string>

#include "quorel_export.h"

namespace sys {

/// The value of an environment variable; nothing when it isn't set.
QUOREL_API std::optional<std::string> GetEnvironment(const std::string& name);

/// The user's directories by the XDG base directory rules.
enum class UserFolder {
    kConfig, ///< "XDG_CONFIG_HOME", else ".config" in the home directory: options
    kData,   ///< "XDG_DATA_HOME", else ".local/share": registrations
    kState,  ///< "XDG_STATE_HOME", else ".local/state": window places, recent files
};

/// This system's own directory in the folder, with a closing slash: "/home/ada/.config/quorel/". It
/// need not exist. A variable that holds no absolute path doesn't count. Empty when no home
/// directory is known.
QUOREL_API std::string UserDirectory(UserFolder folder);

/// The number of the running process, which no other running one has.
QUOREL_API int ProcessId();

/// Full path of the running program; empty when the system can't tell.
QUOREL_API std::string ExecutablePath();

/// Full path of the program or loaded library that holds a function or static object; empty when
/// `address` lies in none.
QUOREL_API std::string ModulePath(const void* address);

} // namespace sys
