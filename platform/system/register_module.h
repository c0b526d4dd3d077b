/// Registration of modules, so that a host finds a module by its class id.
///
/// A registration is a small file "<user's data directory>/classes/{CLASS ID}.ini" with one section
/// [Class] and one key for each member of ModuleRegistration. Class ids have the form
/// "{4C958AF9-36BE-4B70-A715-DA9F9B1D24E7}" in any case; another form is refused with EINVAL.
#pragma once

#include <string>
#include <string_view>

#include "status.h"

namespace sys {

struct ModuleRegistration {
    std::string classId;
    std::string title;
    std::string versionIndependentName;
    std::string currentVersion; ///< name with its version: "Maker.Module.1"
    std::string modulePath;     ///< full path of the file to load
    std::string threadingModel;
    std::string typeLibraryId;
    std::string applicationId;
    std::string applicationName;
    std::string applicationFile; ///< the name by which the application's id is found
};

/// Writes the registration, over one of the same class if there is one.
QUOREL_API Status RegisterModule(const ModuleRegistration& registration);

/// Removes the registration of a class. One that isn't there is a success.
QUOREL_API Status UnregisterModule(std::string_view classId);

/// Reads the registration of a class: ENOENT when there is none, EINVAL when its file names no
/// module or another class. On failure `registration` is empty.
QUOREL_API Status ReadRegistration(std::string_view classId, ModuleRegistration& registration);

} // namespace sys
