/// CScriptEditor: an editor of a script, a named piece of JavaScript or VBScript.
#pragma once

#include "editor_of.h"
#include "undo_manager.h"

/// The script's owner is the context of its commands. The editor runs no script: saving clears the
/// modified flag and tells the extenders, who take the text.
class CScriptEditor : public EditorOf<IScriptEditor> {
public:
    /// @param owner not owned, outlives the editor; may be null
    CScriptEditor(ICommandContext* owner, CNetlistFactory& factory);
    ~CScriptEditor() override;

    /// Runs it by the desktop with the editor's own manager; without a desktop it is destroyed.
    void RunEditCommand(IQuorelCommand* command) override;
    ICommandContext* GetCommandContext() override { return m_Owner; }
    /// By default "NAME - Script" with the script's name or, if that is empty, the owner's, and
    /// "* " in front while the text is modified.
    void UpdateTitle(const AString& title, bool isExplicit) override;

    /// Asks the user whether a modified script is to be saved, and saves it if so.
    /// @return false: the user wants to go on
    bool SaveModified() override;
    Undo_Manager* GetUndoManager() override { return &m_UndoManager; }

    // IViewDoc, IEditor
    void GetObjectName(AString& name) override { GetScriptName(name); }
    void GetBlockName(AString& name) override;
    void CloseAllViews() override;
    void SaveText() override;
    bool IsTextModified() override { return CDocument::IsModified(); }

    // IScriptEditor, and the driver's form
    using EditorAccess::SetLanguage;
    void SetLanguage(AString language) override;
    void GetLanguage(AString& language) override { language = m_Language; }
    void SetScriptName(AString name) override { m_ScriptName = std::move(name); }
    void GetScriptName(AString& name) override { name = m_ScriptName; }
    void SetUseScript(bool use) override { m_UseScript = use; }
    bool GetUseScript() override { return m_UseScript; }
    void SetShowRunMenu(bool show) override { m_ShowRunMenu = show; }

protected:
    const CommandMap& GetCommandMap() const override;
    unsigned ExportMenu() const override { return m_ShowRunMenu ? kMenuRunScript : kMenuScript; }

private:
    void OnJavaScript();
    void OnVBScript();
    void OnUndo();
    void OnRedo();
    void UpdateUndo(CCmdUI& ui);
    void UpdateRedo(CCmdUI& ui);
    void OnUseScript() { m_UseScript = !m_UseScript; }
    void UpdateJavaScript(CCmdUI& ui);
    void UpdateVBScript(CCmdUI& ui);
    void UpdateUseScript(CCmdUI& ui) { ui.SetCheck(m_UseScript); }

    Undo_Manager m_UndoManager;
    ICommandContext* m_Owner;
    AString m_ScriptName;
    AString m_Language;
    bool m_UseScript = false;
    bool m_ShowRunMenu = true;
};
