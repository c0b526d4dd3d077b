#include "data_files.h"

#include <cerrno>
#include <string_view>

#include "directory.h"
#include "environment.h"
#include "file_status.h"
#include "interface_id.h"
#include "register_module.h"

namespace {

constexpr std::string_view kConfig = "config/";
constexpr std::string_view kConfigFile = "NetlistEditor.cfg";
constexpr std::string_view kInstalledData = QUOREL_DATA_FOLDER; // as seen from the program's
constexpr std::string_view kModuleFile = "Netlist.so";
constexpr int kFoldersAbove = 4;

bool IsFile(const std::string& path) {
    sys::FileStatus status;
    return sys::GetFileStatus(path, status) && status.isRegular;
}

bool HoldsData(const std::string& folder) {
    return !folder.empty() && IsFile(folder + std::string(kConfig) + std::string(kConfigFile));
}

/// The folder above one with a closing slash; empty above the root.
std::string FolderAbove(const std::string& folder) {
    return folder.size() < 2 ? std::string()
                             : folder.substr(0, folder.rfind('/', folder.size() - 2) + 1);
}

} // namespace

std::string ProgramDirectory() {
    const std::string program = sys::ExecutablePath();
    return program.substr(0, program.rfind('/') + 1);
}

std::string FindDataDirectory() {
    const auto given = sys::GetEnvironment("QUOREL_DATA_DIR");
    if (std::string folder = sys::WithClosingSlash(given.value_or("")); HoldsData(folder))
        return folder;
    std::string folder = ProgramDirectory();
    if (HoldsData(folder + std::string(kInstalledData)))
        return folder + std::string(kInstalledData);
    for (int i = 0; i < kFoldersAbove; ++i)
        if (folder = FolderAbove(folder); HoldsData(folder))
            return folder;
    return {};
}

std::string FindConfigFile() {
    const std::string folder = FindConfigDirectory();
    return folder.empty() ? folder : folder + std::string(kConfigFile);
}

std::string FindConfigDirectory() {
    const std::string folder = FindDataDirectory();
    return folder.empty() ? folder : folder + std::string(kConfig);
}

sys::Status FindModule(std::string& path) {
    path = ProgramDirectory() + std::string(kModuleFile);
    if (IsFile(path))
        return {};
    const std::string beside = path;
    path.clear();
    const std::string classId = kNetlistFactoryClassId.ToText();
    sys::ModuleRegistration registration;
    if (!sys::ReadRegistration(classId, registration))
        return sys::Failure("find the module", beside, ENOENT,
                            "it is not there, and class " + classId + " is not registered");
    path = registration.modulePath;
    return {};
}
