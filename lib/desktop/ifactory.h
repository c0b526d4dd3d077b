/// IFactory, IEditorFactory, INetlistFactory: what the module's entry gives.
#pragma once

#include <cstdint>
#include <vector>

#include "astring.h"
#include "iunknown.h"

class CCmdTarget;
class CMenu;
class ICommandContext;
class IComponent;
class IDesignEditor;
class IDesktop;
class IEditor;

/// A module's factory. The operations stand in their fixed order.
class QUOREL_API IFactory : public IUnknown {
public:
    /// Starts the module's work with the desktop, once per process. @return 1
    virtual int InitializeFactory(IDesktop* desktop) = 0;
    /// Ends the module's work. Editors and templates stay.
    virtual void UninitializeFactory() = 0;
    /// As GetFactoryMenu, with the menu appended to a list. @return whether the kind has a menu
    virtual bool GetFactoryMenus(int kind, std::vector<CMenu*>& menus,
                                 std::vector<CCmdTarget*>& targets);
    /// The module's menu of a kind (8: its options), which stays the factory's; those who answer
    /// its commands are appended. @return false for any other kind, nothing is touched then
    virtual bool GetFactoryMenu(int kind, CMenu*& menu, std::vector<CCmdTarget*>& targets) = 0;
    virtual void GetEnvironmentName(AString& name) = 0;
    /// What GetEnvironmentName gives, unless a factory says otherwise.
    virtual void GetFactoryName(AString& name);
    virtual int ReservedQuery(std::intptr_t argument);
    virtual bool ReservedTest(std::intptr_t argument);

protected:
    ~IFactory() = default;
};

/// A factory of editors.
class QUOREL_API IEditorFactory : public IFactory {
public:
    /// A new editor of the component's text, or null. The caller destroys it through its first
    /// operation.
    virtual IEditor* CreateEditor(IComponent* component) = 0;
    /// CreateEditor, and the new editor's design side; editor is null where there is none.
    virtual void CreateDesignEditor(IComponent* component, IDesignEditor*& editor);
    virtual void ReservedStep(std::intptr_t first, std::intptr_t second, std::intptr_t third);
    /// The name of the editors that this factory makes.
    virtual void GetEditorsName(AString& name) = 0;

protected:
    ~IEditorFactory() = default;
};

/// The factory of the module: netlist and script editors.
class QUOREL_API INetlistFactory : public IEditorFactory {
public:
    /// A new editor of a script, or null.
    /// @param owner who holds the script: the context of its commands; must outlive the editor
    virtual IEditor* CreateScriptEditor(ICommandContext* owner, const AString& text,
                                        const AString& language, const AString& name) = 0;

protected:
    ~INetlistFactory() = default;
};
