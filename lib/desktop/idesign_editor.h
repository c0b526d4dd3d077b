/// IDesignEditor: an editor that belongs to a design component.
#pragma once

#include <vector>

#include "astring.h"
#include "quorel_export.h"

class IComponent;
class IComponentLibrary;
class IDesign;
class IEditor;
class IVariableServer;
class PropList;
class Property;
class Variable;
namespace io {
class CBlock;
}

/// The component's side of a design editor. Reserved operations as in IViewDoc.
class QUOREL_API IDesignEditor {
public:
    virtual ~IDesignEditor() = default;
    /// The library of the design's manager; null when design or manager is missing.
    virtual IComponentLibrary* GetComponentLibrary() = 0;
    virtual IDesign* GetDesign() = 0;
    virtual int Reserved3() { return 0; }
    virtual IEditor* GetEditor() = 0;
    virtual int GetEditorKind() = 0;
    /// As IViewDoc's.
    virtual void* GetInterface(int kind) = 0;
    virtual int Reserved7() { return 0; }
    virtual bool Reserved8() { return false; }
    /// Finds the component by the design's name and reads the editor's properties.
    /// @param second not used by the netlist editor
    /// @return 0
    virtual int ReadEditor(io::CBlock* parent, int second) = 0;
    /// Writes the editor's properties. @return true
    virtual bool WriteEditor(io::CBlock* parent) = 0;
    virtual void Reserved11() {}
    virtual void GetBlockName(AString& name) = 0;
    virtual void Reserved13() {}
    virtual int Reserved14() { return 0; }
    virtual void Reserved15() {}
    virtual int Reserved16() { return 0; }
    virtual void Reserved17() {}
    virtual int Reserved18() { return 0; }
    virtual void SetComponent(IComponent* component) = 0;
    /// Null before SetComponent or ReadEditor.
    virtual IComponent* GetComponent() = 0;
    virtual int Reserved21() { return 0; }
    virtual IVariableServer* GetVariableServer() = 0;
    /// The property of that name, of the component first, then of the editor; null when absent.
    virtual Property* FindProperty(const AString& name) = 0;
    /// The component must be set: else an assertion, and null.
    virtual PropList* GetComponentProperties() = 0;
    virtual PropList* GetComponentVariables() = 0;
    /// The editor's own properties.
    virtual PropList* GetProperties() = 0;
    /// Replaces variables by those of the component, then those of the editor; repeats stay.
    virtual void GetVariables(std::vector<Variable*>& variables) = 0;
    virtual void Reserved28() {}
    virtual bool Reserved29() { return false; }
    virtual void Reserved30() {}
    virtual void Reserved31() {}
    virtual std::vector<Property*> GetEmptyList() { return {}; }
    virtual bool Reserved33() { return false; }
    virtual void Reserved34() {}
    virtual bool Reserved35() { return false; }
    virtual void Reserved36() {}
    /// Makes a variable among the editor's properties and gives it.
    /// @param reserved not used; @param unitKind the family of units whose default the value has
    /// @param predefined false marks the property as the user's
    virtual Variable* CreateVariable(int reserved, const AString& name, const AString& value,
                                     int unitKind, bool predefined) = 0;
    virtual bool Reserved38() { return false; }
    virtual void Reserved39() {}

protected:
    IDesignEditor() = default;
};
