/// A desktop for the module's tests: directories, options in memory, and a record of what it was
/// told.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "idesign.h"
#include "idesktop.h"

class TestDesktop : public IDesktop, public IMessageSink, public IUserInterface, public IPrompt {
public:
    AString m_InstallDirectory;
    AString m_SysLibDirectory;
    std::map<AString, int> m_Integers; ///< by key, all of section "Options"
    std::vector<std::pair<AString, int>> m_Prompts;
    std::vector<IEditor*> m_ActiveEditors;
    int m_RegistryKeyQueries = 0;

    // What the module asks for today.
    void GetInstallDirectory(AString& directory) override { directory = m_InstallDirectory; }
    void GetSysLibDirectory(AString& directory) override { directory = m_SysLibDirectory; }
    void GetRegistryKey(AString& key) override {
        key = u"Software\\Test";
        ++m_RegistryKeyQueries;
    }
    int GetIntegerOption(int, const AString&, const AString& key, int defaultValue) override {
        const auto option = m_Integers.find(key);
        return option == m_Integers.end() ? defaultValue : option->second;
    }
    void GetStringOption(AString& value, int, const AString&, const AString&,
                         const AString& defaultValue) override {
        value = defaultValue;
    }
    IPrompt* GetPrompt() override { return this; }
    int ShowPrompt(const AString& text, int style, int) override {
        m_Prompts.emplace_back(text, style);
        return kAnswerOk;
    }
    void SetActiveEditor(IEditor* editor, int) override { m_ActiveEditors.push_back(editor); }

    // What it doesn't.
    IMessageSink* GetMessageSink() override { return this; }
    IToolBarHost* GetToolBarHost() override { return nullptr; }
    IUserInterface* GetUserInterface() override { return this; }
    void RunCommand(IQuorelCommand*, Undo_Manager*) override {}
    void UndoCommand(Undo_Manager*) override {}
    void RedoCommand(Undo_Manager*) override {}
    bool GetBlockOption(int, const AString&, const AString&, io::CStreamio_object&) override {
        return false;
    }
    void SetStringOption(int, const AString&, const AString&, const AString&) override {}
    void SetIntegerOption(int, const AString&, const AString&, int) override {}
    IGlobalManager* GetGlobalManager(const AString&) override { return nullptr; }
    void SetGlobalManager(const AString&, IGlobalManager*) override {}
    void PostMessage(const QuorelMessage&) override {}
    void Refresh() override {}
    int GetMessageCount() override { return 0; }
    void ShowMessages(const QuorelCommandContext&) override {}
};

/// A component with its design, project and command context in one.
class TestDesign : public IComponent, public IDesign, public IProject, public ICommandContext {
public:
    PropList* GetVariableList() override { return nullptr; }
    PropList* GetPropertyList() override { return nullptr; }
    IDesign* GetDesign() override { return this; }
    void GetName(AString& name) override { name = u"amplifier"; } // of all but the component
    void RunCommand(IQuorelCommand*) override {}
    IProject* GetProject() override { return this; }
    IDesignManager* GetManager() override { return nullptr; }
    ICommandContext* GetCommandContext() override { return this; }
    IDesktop* GetOwner() override { return nullptr; }
    void CommandDone(IQuorelCommand*) override {}
    void CommandUndone(IQuorelCommand*) override {}
    void CommandFinished(IQuorelCommand*) override {}
};

/// An instance that notes when editors become active (+) and stop being it (-).
class TestInstance : public IDesignInstance, public IViewKey {
public:
    explicit TestInstance(AString name) : m_Name(std::move(name)) {}

    std::string m_Notices;

    void GetInstanceName(AString& name) override { name = m_Name; }
    IViewKey* GetViewKey() override { return this; }
    IDesignInstance* GetInstance() override { return this; }
    void EditorActivated(IEditor*) override { m_Notices += '+'; }
    void EditorDeactivated(IEditor*) override { m_Notices += '-'; }
    ICommandListener* GetCommandListener() override { return nullptr; }

private:
    AString m_Name;
};
