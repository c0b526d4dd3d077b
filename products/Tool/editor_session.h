/// The module at work for one command: an editor with a view in a window that nobody sees.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "command.h"
#include "host_design.h"
#include "host_desktop.h"
#include "ifactory_tools.h"
#include "module_host.h"
#include "resources.h"

class CComboBox;

/// What a command line says of the editor.
struct SessionOptions {
    std::string m_Editor = "netlist";
    std::string m_Config;               ///< as SyntaxOptions has it
    std::vector<std::string> m_Options; ///< KEY=VALUE
};
/// Whether that names a kind of editor.
bool IsEditor(const std::string& name);
void AddSessionOptions(CLI::App& command, SessionOptions& options);

/// A folder with a syntax configuration under the name by which the module looks for it; gone with
/// this object.
class ConfigFolder {
public:
    /// @param given "none": a configuration without descriptions; a file: that one, its description
    ///        files where it has them; empty: no folder is made, the path is the installed one's.
    ///        ExitCode::file when it can't be read
    explicit ConfigFolder(const std::string& given);
    ConfigFolder(const ConfigFolder&) = delete;
    ConfigFolder& operator=(const ConfigFolder&) = delete;
    ~ConfigFolder();

    const std::string& GetPath() const { return m_Path; }

private:
    std::string m_Path; ///< with a closing slash
    std::string m_Name; ///< of the file that reserves the folder's name; empty: not our folder
};

/// The module and one editor after the other, each with a view, as the editor's kind, options and
/// configuration say. Ends the module with it; a process has one session.
class EditorSession {
public:
    /// Starts the module and opens an editor. @param desk outlives the editor
    EditorSession(const SessionOptions& options, IBackendDesk& desk);
    EditorSession(const EditorSession&) = delete;
    EditorSession& operator=(const EditorSession&) = delete;
    ~EditorSession();

    /// Opens an editor in place of the one that is open, from nothing: nothing of the former one is
    /// left, options are read anew. The configuration stays. @param desk outlives the editor
    void Reopen(const SessionOptions& options, IBackendDesk& desk);
    /// Ends the editor. None of the operations below is good until Reopen.
    void Close() { m_Editor = {}; }

    IEditor& GetEditor() { return *m_Editor.m_Editor; }
    IEditorInspector& GetInspector() { return *m_Editor.m_Inspector; }
    IEditorDriver& GetDriver() { return *m_Editor.m_Driver; }
    HostDesktop& GetDesktop() { return m_Desktop; }
    /// The editor's commands: a script's own, or its design's.
    Undo_Manager& GetCommands();
    /// The find box of the module's toolbar.
    CComboBox& GetFindBox();
    /// The keys of the module's commands.
    std::span<const Accelerator> GetKeys() { return GetTools().GetKeys(); }
    /// Gives the document a title in place of the one that the editor has formed.
    void SetTitle(const AString& title);

private:
    void TakeOptions(const std::vector<std::string>& options);
    void OpenEditor(const std::string& kind);
    HostedEditor MakeEditor(const std::string& kind);
    IFactoryTools& GetTools();

    ConfigFolder m_Config;
    OptionStore m_Store;
    HostDesktop m_Desktop;
    HostDesign m_Design{u"quorel", m_Desktop};
    HostContext m_ScriptOwner{u"quorel", &m_Desktop};
    HostInstance m_Instance{u"quorel", m_Design.GetViewKeys()}; // the only one
    ModuleHost m_Host;
    HostedEditor m_Editor; // gone before the module
};
