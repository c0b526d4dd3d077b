#include "host_design.h"

#include "host_desktop.h"

HostContext::~HostContext() = default;

HostProject::~HostProject() = default;

HostDesign::HostDesign(AString name, HostDesktop& desktop)
    : m_Name(std::move(name)), m_Desktop(desktop), m_Project(m_Name, &desktop) {}

HostDesign::~HostDesign() = default;

void HostDesign::RunCommand(IQuorelCommand* command) {
    m_Desktop.RunCommand(command, nullptr);
}

IComponent* HostDesign::FindComponent(const AString& name, int, IDesign*) {
    return m_Name.CompareNoCase(name) == 0 ? this : nullptr;
}
