#include "module_state.h"

#include "class_object.h"
#include "module_resources.h"
#include "netlist_app.h"
#include "netlist_factory.h"

namespace {

// In the order of their making; they end in the reverse one, so that documents and factory find
// application and resources.
const ResourceRegistration sResources(kModuleResources);
CNetlistApp sApp;
ModuleState sState;

} // namespace

CNetlistApp& CNetlistApp::Get() {
    return sApp;
}

ModuleState& ModuleState::Get() {
    return sState;
}

ModuleState::ModuleState() = default;

ModuleState::~ModuleState() {
    m_ClassObject.reset();
    if (m_Factory && !m_Factory->IsHeld())
        delete m_Factory;
}

CNetlistFactory& ModuleState::GetFactory() {
    if (!m_Factory) {
        m_Factory = new CNetlistFactory;
        Lock();
    }
    return *m_Factory;
}

void ModuleState::FactoryEnds() {
    m_Factory = nullptr;
    Unlock();
}

NetlistClassObject& ModuleState::GetClassObject() {
    const std::lock_guard lock(m_ObjectLock);
    if (!m_ClassObject)
        m_ClassObject = std::make_unique<NetlistClassObject>();
    return *m_ClassObject;
}
