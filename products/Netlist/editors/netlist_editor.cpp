#include "netlist_editor.h"

#include "debug_line.h"
#include "iquorel_command.h"
#include "sim_edit_view.h"

CNetlistEditor::CNetlistEditor(IDesign* design, CNetlistFactory& factory)
    : EditorOf(factory), m_Design(design) {}

CNetlistEditor::~CNetlistEditor() {
    WriteDebugLine("NetlistEditor destructor called\n");
}

void CNetlistEditor::RunEditCommand(IQuorelCommand* command) {
    if (m_Design)
        m_Design->RunCommand(command);
    else
        delete command;
}

ICommandContext* CNetlistEditor::GetCommandContext() {
    IProject* const project = m_Design ? m_Design->GetProject() : nullptr;
    return project ? project->GetCommandContext() : nullptr;
}

void CNetlistEditor::UpdateTitle(const AString& title, bool isExplicit) {
    if (isExplicit)
        return SetTitle(title);
    AString made;
    if (IDesignInstance* instance = GetActiveView() ? GetActiveView()->GetInstance() : nullptr) {
        AString name;
        instance->GetInstanceName(name);
        return SetTitle(made.Format(u"%s - Netlist", name));
    }
    AString project;
    if (IProject* owner = m_Design ? m_Design->GetProject() : nullptr)
        owner->GetName(project);
    AString design;
    GetObjectName(design);
    SetTitle(made.Format(u"%s - %s - Netlist", project, design));
}

void CNetlistEditor::GetObjectName(AString& name) {
    name.clear();
    if (m_Design)
        m_Design->GetName(name);
}

void CNetlistEditor::GetBlockName(AString& name) {
    name = u"Netlist";
}
