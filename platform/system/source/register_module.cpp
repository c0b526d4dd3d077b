#include "register_module.h"

#include <array>
#include <cerrno>

#include "directory.h"
#include "environment.h"
#include "file_io.h"
#include "profile_file.h"
#include "profile_store.h"

namespace sys {
namespace {

constexpr std::string_view kSection = "Class";

struct Entry {
    std::string_view key;
    std::string ModuleRegistration::*member;
};
constexpr std::array<Entry, 10> kEntries{{
    {"ClassId", &ModuleRegistration::classId},
    {"Title", &ModuleRegistration::title},
    {"VersionIndependentName", &ModuleRegistration::versionIndependentName},
    {"CurrentVersion", &ModuleRegistration::currentVersion},
    {"ModulePath", &ModuleRegistration::modulePath},
    {"ThreadingModel", &ModuleRegistration::threadingModel},
    {"TypeLibraryId", &ModuleRegistration::typeLibraryId},
    {"ApplicationId", &ModuleRegistration::applicationId},
    {"ApplicationName", &ModuleRegistration::applicationName},
    {"ApplicationFile", &ModuleRegistration::applicationFile},
}};

/// The class id in upper case; empty unless it has the form of one. A file is named after it, so
/// nothing else may pass.
std::string NormalizeClassId(std::string_view classId) {
    constexpr std::string_view kForm = "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}";
    constexpr std::string_view kHexDigits = "0123456789ABCDEFabcdef";
    if (classId.size() != kForm.size()) {
        return {};
    }
    std::string normal(classId);
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        const bool isDigit = kForm[i] == 'X';
        if (isDigit ? kHexDigits.find(normal[i]) == kHexDigits.npos : normal[i] != kForm[i]) {
            return {};
        }
        if (isDigit && normal[i] >= 'a') {
            normal[i] = static_cast<char>(normal[i] - 'a' + 'A');
        }
    }
    return normal;
}

Status BadClassId(std::string_view classId) {
    return Failure("use class id", classId, EINVAL, "its form is another");
}

/// Directory of all registrations; empty when the user has none.
std::string ClassesDirectory() {
    const std::string data = UserDirectory(UserFolder::kData);
    return data.empty() ? data : data + "classes/";
}

/// File of a class, by its normalized id.
std::string FileOfClass(const std::string& classId) {
    return ClassesDirectory() + classId + ".ini";
}

Status NoDirectory() {
    return Failure("find", "the user's data directory", ENOENT,
                   "neither XDG_DATA_HOME nor HOME is set");
}

} // namespace

Status RegisterModule(const ModuleRegistration& registration) {
    ModuleRegistration written = registration;
    written.classId = NormalizeClassId(registration.classId);
    if (written.classId.empty()) {
        return BadClassId(registration.classId);
    }
    if (ClassesDirectory().empty()) {
        return NoDirectory();
    }
    ProfileStore store;
    for (const Entry& entry : kEntries) {
        const bool isMissing =
            entry.member == &ModuleRegistration::modulePath && written.modulePath.empty();
        if (isMissing || !store.Set(kSection, entry.key, written.*entry.member)) {
            return Failure("register class", written.classId, EINVAL,
                           std::string("bad value of ").append(entry.key));
        }
    }
    Status status = MakeDirectories(ClassesDirectory());
    return status ? store.Save(FileOfClass(written.classId)) : status;
}

Status UnregisterModule(std::string_view classId) {
    const std::string normal = NormalizeClassId(classId);
    if (normal.empty()) {
        return BadClassId(classId);
    }
    if (ClassesDirectory().empty()) {
        return {};
    }
    Status status = DeleteFile(FileOfClass(normal));
    return status.code == ENOENT || status.code == ENOTDIR ? Status() : status;
}

Status ReadRegistration(std::string_view classId, ModuleRegistration& registration) {
    registration = {};
    const std::string normal = NormalizeClassId(classId);
    if (normal.empty()) {
        return BadClassId(classId);
    }
    if (ClassesDirectory().empty()) {
        return NoDirectory();
    }
    ProfileFile profile;
    Status status = profile.Open(FileOfClass(normal));
    if (!status) {
        return status;
    }
    ModuleRegistration read;
    for (const Entry& entry : kEntries) {
        read.*entry.member = profile.GetString(kSection, entry.key);
    }
    if (NormalizeClassId(read.classId) != normal || read.modulePath.empty()) {
        return Failure("read", FileOfClass(normal), EINVAL, "not the registration of this class");
    }
    registration = std::move(read);
    return {};
}

} // namespace sys
