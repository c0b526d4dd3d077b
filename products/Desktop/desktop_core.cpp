#include "desktop_core.h"

#include "data_files.h"
#include "ifactory_tools.h"

namespace {

HostDesktop::Settings FindSettings() {
    const std::string config = FindConfigDirectory();
    return {.m_InstallDirectory = config, .m_SysLibDirectory = config};
}

} // namespace

DesktopCore::DesktopCore() : m_Desktop(FindSettings(), m_Options), m_Module(m_Desktop, &m_Desk) {}

sys::Status DesktopCore::Start(const Places& places) {
    Note(m_Options.Open(places.m_Options));
    m_RecoveryFolder = places.m_Recovery;
    if (!places.m_Recovery.empty())
        Note(m_Recovery.Open(places.m_Recovery));
    return m_Module.Start(places.m_Module);
}

void DesktopCore::Stop() {
    m_Module.Stop();
    static_cast<void>(m_Options.Save()); // nobody is left to be told
}

void DesktopCore::Note(const sys::Status& status) {
    if (!status)
        m_Troubles.push_back(status.reason);
}

IFactoryTools* DesktopCore::GetTools() {
    return dynamic_cast<IFactoryTools*>(m_Module.GetFactory());
}
