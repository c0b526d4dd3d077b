/// CNetlistDesignEditor: the editor that the factory makes for netlists.
#pragma once

#include "idesign_editor.h"
#include "ivariable_server.h"
#include "netlist_editor.h"

/// A netlist editor that belongs to a design component. It keeps no properties and variables of its
/// own yet: operations on them find and make none.
class CNetlistDesignEditor : public CNetlistEditor, public IDesignEditor, public IVariableServer {
public:
    /// The editor of a component's design; null for a netlist without one. The component itself is
    /// set by SetComponent or ReadEditor.
    CNetlistDesignEditor(IComponent* component, CNetlistFactory& factory);
    ~CNetlistDesignEditor() override;

    // In CNetlistEditor and IDesignEditor alike.
    void* GetInterface(int kind) override;
    int GetEditorKind() override { return IViewDoc::kDesignEditorInterface; }
    IVariableServer* GetVariableServer() override { return this; }
    void GetBlockName(AString& name) override { CNetlistEditor::GetBlockName(name); }
    bool WriteEditor(io::CBlock*) override { return true; }

    // IDesignEditor
    IComponentLibrary* GetComponentLibrary() override;
    IDesign* GetDesign() override { return m_Design; }
    IEditor* GetEditor() override { return this; }
    int ReadEditor(io::CBlock* parent, int second) override;
    void SetComponent(IComponent* component) override { m_pComponent = component; }
    IComponent* GetComponent() override { return m_pComponent; }
    Property* FindProperty(const AString& name) override;
    PropList* GetComponentProperties() override;
    PropList* GetComponentVariables() override;
    PropList* GetProperties() override { return nullptr; }
    void GetVariables(std::vector<Variable*>& variables) override { variables.clear(); }
    Variable* CreateVariable(int reserved, const AString& name, const AString& value, int unitKind,
                             bool predefined) override;

    // IVariableServer
    Variable* GetVariable(const AString& name) override;
    Flags GetServerFlags() override;

private:
    IComponent* m_pComponent = nullptr; ///< not owned
};
