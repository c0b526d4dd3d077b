#include "netlist_design_editor.h"

#include "debug_line.h"

namespace {

/// The bit that an editor of a design has among the kinds of variable servers.
constexpr std::size_t kDesignEditorFlag = 7;

} // namespace

CNetlistDesignEditor::CNetlistDesignEditor(IComponent* component, CNetlistFactory& factory)
    : CNetlistEditor(component ? component->GetDesign() : nullptr, factory) {}

CNetlistDesignEditor::~CNetlistDesignEditor() {
    WriteDebugLine("NetlistDesignEditor destructor called\n");
    EndViews();
}

void* CNetlistDesignEditor::GetInterface(int kind) {
    if (kind == IViewDoc::kDesignEditorInterface)
        return static_cast<IDesignEditor*>(this);
    return CNetlistEditor::GetInterface(kind);
}

IComponentLibrary* CNetlistDesignEditor::GetComponentLibrary() {
    IDesignManager* const manager = m_Design ? m_Design->GetManager() : nullptr;
    return manager ? manager->GetComponentLibrary() : nullptr;
}

int CNetlistDesignEditor::ReadEditor(io::CBlock*, int) {
    constexpr int kFlag = 1;
    IComponentLibrary* const library = GetComponentLibrary();
    AString name;
    GetObjectName(name);
    m_pComponent = library ? library->FindComponent(name, kFlag, m_Design) : nullptr;
    return 0;
}

Property* CNetlistDesignEditor::FindProperty(const AString&) {
    return nullptr;
}

PropList* CNetlistDesignEditor::GetComponentProperties() {
    USE_ASSERT(m_pComponent);
    return m_pComponent ? m_pComponent->GetPropertyList() : nullptr;
}

PropList* CNetlistDesignEditor::GetComponentVariables() {
    USE_ASSERT(m_pComponent);
    return m_pComponent ? m_pComponent->GetVariableList() : nullptr;
}

Variable* CNetlistDesignEditor::CreateVariable(int, const AString&, const AString&, int, bool) {
    return nullptr;
}

Variable* CNetlistDesignEditor::GetVariable(const AString&) {
    return nullptr;
}

IVariableServer::Flags CNetlistDesignEditor::GetServerFlags() {
    return Flags().set(kDesignEditorFlag);
}
