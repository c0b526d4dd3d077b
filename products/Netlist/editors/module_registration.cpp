#include "module_registration.h"

#include "environment.h"
#include "interface_id.h"
#include "register_module.h"

namespace {

constexpr char kTitle[] = "NetlistFactory Class";
constexpr char kVersionIndependentName[] = "QuorelMeridane.Netlist";
constexpr char kCurrentVersion[] = "QuorelMeridane.Netlist.1";
constexpr char kThreadingModel[] = "Apartment";
constexpr char kApplicationName[] = "Netlist";
constexpr char kApplicationFile[] = "Netlist.EXE";

/// Where the module was loaded from: its name may be relative to the directory of that moment.
const std::string sModulePath = sys::ModulePath(kTitle);

} // namespace

sys::Status RegisterNetlistModule() {
    return sys::RegisterModule({.classId = kNetlistFactoryClassId.ToText(),
                                .title = kTitle,
                                .versionIndependentName = kVersionIndependentName,
                                .currentVersion = kCurrentVersion,
                                .modulePath = sModulePath,
                                .threadingModel = kThreadingModel,
                                .typeLibraryId = kNetlistTypeLibraryId.ToText(),
                                .applicationId = kNetlistApplicationId.ToText(),
                                .applicationName = kApplicationName,
                                .applicationFile = kApplicationFile});
}

sys::Status UnregisterNetlistModule() {
    return sys::UnregisterModule(kNetlistFactoryClassId.ToText());
}
