/// ModuleHost: loads the editor module and makes editors through its entry.
#pragma once

#include <memory>
#include <string>

#include "ieditor.h"
#include "ieditor_driver.h"
#include "ieditor_inspector.h"
#include "ifactory.h"
#include "module_loader.h"
#include "quorel_export.h"
#include "status.h"

class HostDesktop;
class IBackendDesk;

/// An editor with what a host looks at and drives it by. The two are parts of the editor.
struct HostedEditor {
    std::unique_ptr<IEditor> m_Editor; ///< null: none was made
    IEditorInspector* m_Inspector = nullptr;
    IEditorDriver* m_Driver = nullptr;

    explicit operator bool() const { return m_Editor && m_Inspector && m_Driver; }
};

/// The module at work. A process starts it once, with one desktop, since the module's factory takes
/// only the first.
class QUOREL_API ModuleHost {
public:
    /// @param desktop and desk outlive the host; a null desk is a host without any backend
    ModuleHost(HostDesktop& desktop, IBackendDesk* desk);
    ModuleHost(const ModuleHost&) = delete;
    ModuleHost& operator=(const ModuleHost&) = delete;
    ~ModuleHost() { Stop(); }

    /// Loads the module, gives the framework its backend and initialises the factory.
    /// @param path the module's file; empty: what FindModule gives
    /// @return a failure when it can't be loaded, isn't the module, or was started before; all is
    ///         as it was then
    sys::Status Start(const std::string& path = {});

    /// Destroys the desktop's commands, ends the module's work, releases its factory and the
    /// desktop's global managers, takes the backend away and unloads the module. All editors must
    /// be gone by then.
    void Stop();

    bool IsRunning() const { return m_Factory != nullptr; }
    const std::string& GetPath() const { return m_Module.GetPath(); }
    /// Null unless it runs.
    INetlistFactory* GetFactory() const { return m_Factory; }

    /// A new editor of a netlist; no editor unless the module runs.
    /// @param component outlives the editor; may be null
    HostedEditor CreateNetlistEditor(IComponent* component);
    /// A new editor of a script. @param owner outlives the editor
    HostedEditor CreateScriptEditor(ICommandContext* owner, const AString& text,
                                    const AString& language, const AString& name);

private:
    sys::Status LoadFactory(const std::string& path);

    HostDesktop& m_Desktop;
    IBackendDesk* m_Desk;
    sys::ModuleLoader m_Module;
    INetlistFactory* m_Factory = nullptr; // one reference is ours
};
