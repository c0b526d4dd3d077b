#include "script_editor.h"

#include "debug_line.h"
#include "desktop_access.h"
#include "idesktop.h"
#include "quorel_command.h"

namespace {

constexpr std::u16string_view kJavaScript = u"JavaScript";
constexpr std::u16string_view kVBScript = u"VBScript";

/// Shows an entry as a word with what it would undo, or redo, behind it.
void ShowStep(CCmdUI& ui, unsigned word, const QuorelCommand* command) {
    AString description;
    if (command)
        command->GetDescription(description);
    ui.Enable(command != nullptr);
    ui.SetText(AString(ResourceId{word}) + u" " + description);
}

} // namespace

CScriptEditor::CScriptEditor(ICommandContext* owner, CNetlistFactory& factory)
    : EditorOf(factory), m_Owner(owner) {}

CScriptEditor::~CScriptEditor() {
    WriteDebugLine("ScriptEditor destructor called\n");
    EndViews();
}

void CScriptEditor::RunEditCommand(IQuorelCommand* command) {
    if (IDesktop* desktop = GetDesktop())
        desktop->RunCommand(command, &m_UndoManager);
    else
        delete command;
}

void CScriptEditor::UpdateTitle(const AString& title, bool isExplicit) {
    if (isExplicit)
        return SetTitle(title);
    AString name = m_ScriptName;
    if (name.empty() && m_Owner)
        m_Owner->GetName(name);
    AString made;
    made.Format(u"%s%s - Script", IsTextModified() ? u"* " : u"", name);
    SetTitle(made);
}

void CScriptEditor::GetBlockName(AString& name) {
    name = u"Script";
}

void CScriptEditor::CloseAllViews() {
    CloseEveryView();
    TellExtenders(&IEditorExtender::Closed);
}

void CScriptEditor::SaveText() {
    SetModifiedFlag(false);
    UpdateTitle({}, false);
    TellExtenders(&IEditorExtender::Saved);
}

bool CScriptEditor::SaveModified() {
    IDesktop* const desktop = GetDesktop();
    if (!IsTextModified() || !desktop)
        return true;
    constexpr int kStyle = IPrompt::kYesNoCancel | IPrompt::kInformation;
    const AString question = AString(u"Save changes to ") + m_ScriptName + u"?";
    const int answer = desktop->GetPrompt()->ShowPrompt(question, kStyle, 0);
    if (answer == IPrompt::kAnswerYes)
        SaveText();
    return answer != IPrompt::kAnswerCancel;
}

void CScriptEditor::OnUndo() {
    if (IDesktop* desktop = GetDesktop())
        desktop->UndoCommand(&m_UndoManager);
}

void CScriptEditor::OnRedo() {
    if (IDesktop* desktop = GetDesktop())
        desktop->RedoCommand(&m_UndoManager);
}

void CScriptEditor::UpdateUndo(CCmdUI& ui) {
    ShowStep(ui, kStringUndo, m_UndoManager.GetUndoCommand());
}

void CScriptEditor::UpdateRedo(CCmdUI& ui) {
    ShowStep(ui, kStringRedo, m_UndoManager.GetRedoCommand());
}

void CScriptEditor::SetLanguage(AString language) {
    m_Language = std::move(language);
    const bool isVBScript = m_Language.CompareNoCase(kVBScript) == 0;
    UseSyntax(isVBScript ? kVBScriptSyntax : kJavaScriptSyntax);
    AString text;
    GetText(text);
    if (text.empty())
        return;
    if (text.back() == u'\n')
        text += u'\n';        // one is taken for the end of the last line
    SetText(std::move(text)); // colours it anew
    m_UndoManager.Clear();    // its commands stood for what the journal held
}

const CommandMap& CScriptEditor::GetCommandMap() const {
    static constexpr CommandEntry kEntries[] = {
        Command<&CScriptEditor::SaveText>(kCommandSaveScript),
        Command<&CScriptEditor::OnJavaScript, &CScriptEditor::UpdateJavaScript>(kCommandJavaScript),
        Command<&CScriptEditor::OnVBScript, &CScriptEditor::UpdateVBScript>(kCommandVBScript),
        Command<&CScriptEditor::OnUseScript, &CScriptEditor::UpdateUseScript>(kCommandUseScript),
        Command<&CScriptEditor::OnUndo, &CScriptEditor::UpdateUndo>(kCommandUndo),
        Command<&CScriptEditor::OnRedo, &CScriptEditor::UpdateRedo>(kCommandRedo),
    };
    static const CommandMap kMap{kEntries, &EditorOf::GetCommandMap()};
    return kMap;
}

void CScriptEditor::OnJavaScript() {
    static_cast<IScriptEditor*>(this)->SetLanguage(kJavaScript);
}

void CScriptEditor::OnVBScript() {
    static_cast<IScriptEditor*>(this)->SetLanguage(kVBScript);
}

void CScriptEditor::UpdateJavaScript(CCmdUI& ui) {
    ui.SetCheck(m_Language.CompareNoCase(kJavaScript) == 0);
}

void CScriptEditor::UpdateVBScript(CCmdUI& ui) {
    ui.SetCheck(m_Language.CompareNoCase(kVBScript) == 0);
}
