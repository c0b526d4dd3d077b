#include "class_object.h"

#include "guarded.h"
#include "module_state.h"
#include "netlist_factory.h"

ResultCode NetlistClassObject::QueryInterface(const InterfaceId& id, void** object) {
    if (!object)
        return kResultPointer;
    *object = nullptr;
    if (id != kUnknownId && id != kClassFactoryId)
        return kResultNoInterface;
    *object = static_cast<IClassFactory*>(this);
    AddRef();
    return kResultOk;
}

std::uint32_t NetlistClassObject::AddRef() {
    const std::uint32_t references = ++m_References;
    if (references == 1)
        ModuleState::Get().Lock();
    return references;
}

std::uint32_t NetlistClassObject::Release() {
    const std::uint32_t references = --m_References;
    if (references == 0)
        ModuleState::Get().Unlock();
    return references;
}

ResultCode NetlistClassObject::CreateInstance(IUnknown* outer, const InterfaceId& id,
                                              void** object) {
    if (!object)
        return kResultPointer;
    *object = nullptr;
    if (outer)
        return kResultNoAggregation;
    return Guarded(kResultOutOfMemory,
                   [&] { return ModuleState::Get().GetFactory().QueryInterface(id, object); });
}

ResultCode NetlistClassObject::LockServer(bool lock) {
    if (lock)
        ModuleState::Get().Lock();
    else
        ModuleState::Get().Unlock();
    return kResultOk;
}
