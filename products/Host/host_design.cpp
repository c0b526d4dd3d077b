#include "host_design.h"

#include "host_desktop.h"

HostContext::~HostContext() = default;

HostProject::~HostProject() = default;

HostDesign::HostDesign(AString name, HostDesktop& desktop)
    : m_Name(std::move(name)), m_Desktop(desktop), m_Project(m_Name, &desktop) {
    m_Desktop.AddCommands(m_Commands);
}

HostDesign::~HostDesign() {
    m_Desktop.RemoveCommands(m_Commands);
}

void HostDesign::RunCommand(IQuorelCommand* command) {
    m_Desktop.RunCommand(command, &m_Commands);
}

IComponent* HostDesign::FindComponent(const AString& name, int, IDesign*) {
    return m_Name.CompareNoCase(name) == 0 ? this : nullptr;
}
