/// The design side of a host that edits single files: one component, design, project and context.
#pragma once

#include "astring.h"
#include "host_instance.h"
#include "idesign.h"
#include "quorel_export.h"
#include "undo_manager.h"

class HostDesktop;

/// Where the commands of a project or a script act. Counts what it is told.
class QUOREL_API HostContext : public ICommandContext {
public:
    /// @param desktop outlives the context; may be null
    HostContext(AString name, IDesktop* desktop) : m_Name(std::move(name)), m_Desktop(desktop) {}
    virtual ~HostContext();

    void GetName(AString& name) override { name = m_Name; }
    IDesktop* GetOwner() override { return m_Desktop; }
    void CommandDone(IQuorelCommand*) override { ++m_Done; }
    void CommandUndone(IQuorelCommand*) override { ++m_Undone; }
    void CommandFinished(IQuorelCommand*) override { ++m_Finished; }

    int m_Done = 0;
    int m_Undone = 0;
    int m_Finished = 0;

private:
    AString m_Name;
    IDesktop* m_Desktop;
};

class QUOREL_API HostProject : public IProject {
public:
    HostProject(AString name, IDesktop* desktop) : m_Context(std::move(name), desktop) {}
    virtual ~HostProject();

    void GetName(AString& name) override { m_Context.GetName(name); }
    HostContext* GetCommandContext() override { return &m_Context; }

private:
    HostContext m_Context;
};

/// A design with one component of the same name, which it manages itself, and with commands of its
/// own, which the desktop runs.
class QUOREL_API HostDesign : public IDesign,
                              public IComponent,
                              public IDesignManager,
                              public IComponentLibrary {
public:
    /// @param desktop outlives the design
    HostDesign(AString name, HostDesktop& desktop);
    virtual ~HostDesign();

    void GetName(AString& name) override { name = m_Name; }
    void RunCommand(IQuorelCommand* command) override;
    HostProject* GetProject() override { return &m_Project; }
    IDesignManager* GetManager() override { return this; }
    Undo_Manager& GetCommands() { return m_Commands; }
    /// For the keys of its instances.
    HostViewKeys& GetViewKeys() { return m_ViewKeys; }

    /// The two lists, null until the host that knows the property library has set them.
    PropList* GetVariableList() override { return m_Variables; }
    PropList* GetPropertyList() override { return m_Properties; }
    IDesign* GetDesign() override { return this; }

    IComponentLibrary* GetComponentLibrary() override { return this; }
    IComponent* FindComponent(const AString& name, int flag, IDesign* design) override;

    PropList* m_Variables = nullptr;  ///< not owned
    PropList* m_Properties = nullptr; ///< not owned

private:
    AString m_Name;
    HostDesktop& m_Desktop;
    HostProject m_Project;
    HostViewKeys m_ViewKeys;
    Undo_Manager m_Commands;
};
