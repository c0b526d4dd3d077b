/// HostDesktop: the desktop of any host, with or without windows.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "command_runner.h"
#include "host_prompt.h"
#include "host_tool_bars.h"
#include "idesktop.h"
#include "iglobal_manager.h"
#include "option_store.h"
#include "quorel_export.h"
#include "undo_manager.h"

class QUOREL_API HostUserInterface : public IUserInterface {
public:
    virtual ~HostUserInterface();

    void Refresh() override;

    std::function<void()> m_OnRefresh; ///< may be empty
};

/// An IDesktop from parts. One serves all modules of a process; it outlives them.
///
/// Commands stand with the undo manager that they are run with; null names the desktop's own. The
/// most that a manager keeps is the option "NumberOfCommands".
class QUOREL_API HostDesktop : public IDesktop {
public:
    struct Settings {
        std::string m_InstallDirectory; ///< UTF-8, as the next one
        std::string m_SysLibDirectory;
        AString m_RegistryKey = u"Quorel";
    };

    /// @param options must outlive the desktop
    HostDesktop(Settings settings, OptionStore& options);
    HostDesktop(const HostDesktop&) = delete;
    HostDesktop& operator=(const HostDesktop&) = delete;
    virtual ~HostDesktop();

    HostMessageSink* GetMessageSink() override { return &m_MessageSink; }
    HostToolBars* GetToolBarHost() override { return &m_ToolBars; }
    HostUserInterface* GetUserInterface() override { return &m_UserInterface; }
    void GetInstallDirectory(AString& directory) override;
    void GetSysLibDirectory(AString& directory) override;
    void GetRegistryKey(AString& key) override { key = m_Settings.m_RegistryKey; }
    void RunCommand(IQuorelCommand* command, Undo_Manager* manager) override;
    void UndoCommand(Undo_Manager* manager) override;
    void RedoCommand(Undo_Manager* manager) override;
    int GetIntegerOption(int reserved, const AString& section, const AString& key,
                         int defaultValue) override;
    void GetStringOption(AString& value, int reserved, const AString& section, const AString& key,
                         const AString& defaultValue) override;
    bool GetBlockOption(int reserved, const AString& section, const AString& key,
                        io::CStreamio_object& object) override;
    void SetStringOption(int reserved, const AString& section, const AString& key,
                         const AString& value) override;
    void SetIntegerOption(int reserved, const AString& section, const AString& key,
                          int value) override;
    IGlobalManager* GetGlobalManager(const AString& name) override;
    /// Null only takes the name away. A manager may have several names; it is destroyed with the
    /// last one.
    void SetGlobalManager(const AString& name, IGlobalManager* manager) override;
    HostPrompt* GetPrompt() override { return &m_Prompt; }
    void SetActiveEditor(IEditor* editor, int reserved) override;

    /// The editor last told to be active, null when none is.
    IEditor* GetActiveEditor() const { return m_ActiveEditor; }
    /// The desktop's own commands.
    Undo_Manager& GetCommands() { return m_Commands; }
    /// Has a manager, not owned, cleared with the desktop's own; or no longer.
    void AddCommands(Undo_Manager& manager) { m_Managed.push_back(&manager); }
    void RemoveCommands(Undo_Manager& manager) { std::erase(m_Managed, &manager); }
    /// @name The end of what modules have given, to be called while they are loaded
    /// @{
    /// Deletes the desktop's own commands and those of the managers added, and forgets the active
    /// editor. The next command finds its limit in the options anew.
    void ReleaseCommands();
    /// Destroys the global managers, the one registered last first.
    void ReleaseGlobalManagers();
    /// @}

private:
    CommandRunner& GetRunner();
    Undo_Manager& ManagerOr(Undo_Manager* manager) { return manager ? *manager : m_Commands; }

    using Managers = std::vector<std::pair<AString, std::shared_ptr<IGlobalManager>>>;
    Managers::iterator FindManager(const AString& name);
    std::shared_ptr<IGlobalManager> Share(IGlobalManager* manager) const;

    Settings m_Settings;
    OptionStore& m_Options;
    HostPrompt m_Prompt;
    HostMessageSink m_MessageSink{m_Prompt};
    HostToolBars m_ToolBars{*this};
    HostUserInterface m_UserInterface;
    CommandRunner m_Runner;
    bool m_HasLimit = false; ///< the runner has the option's
    Undo_Manager m_Commands;
    std::vector<Undo_Manager*> m_Managed; ///< further ones
    Managers m_Managers;                  // in the order of registration
    IEditor* m_ActiveEditor = nullptr;
};
