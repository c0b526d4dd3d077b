#include "module_entries.h"

#include "class_object.h"
#include "guarded.h"
#include "module_registration.h"
#include "module_state.h"
#include "netlist_factory.h"

void* DllGetFactoryInterface(const InterfaceId* id) {
    if (!id)
        return nullptr;
    void* factory = nullptr;
    return Guarded<void*>(nullptr, [&] {
        ModuleState::Get().GetFactory().QueryInterface(*id, &factory);
        return factory;
    });
}

ResultCode DllGetClassObject(const InterfaceId* classId, const InterfaceId* id, void** object) {
    if (!object)
        return kResultPointer;
    *object = nullptr;
    if (!classId || !id)
        return kResultPointer;
    if (*classId != kNetlistFactoryClassId)
        return kResultClassNotAvailable;
    return Guarded(kResultOutOfMemory,
                   [&] { return ModuleState::Get().GetClassObject().QueryInterface(*id, object); });
}

ResultCode DllCanUnloadNow() {
    return ModuleState::Get().IsLocked() ? kResultFalse : kResultOk;
}

ResultCode DllRegisterServer() {
    return Guarded(kResultOutOfMemory,
                   [] { return RegisterNetlistModule() ? kResultOk : kResultFail; });
}

ResultCode DllUnregisterServer() {
    return Guarded(kResultOk, [] {
        static_cast<void>(UnregisterNetlistModule());
        return kResultOk;
    });
}
