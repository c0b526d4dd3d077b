/// IEditor: an editor of a text, and the two kinds that the module makes.
#pragma once

#include "iview_doc.h"

class IEditorExtender;
class IFactory;
class IQuorelCommand;
class IVariableServer;

/// What every editor answers, behind what every document answers.
class QUOREL_API IEditor : public IViewDoc {
public:
    /// The kind of the editor's widest interface, kEditorInterface or kDesignEditorInterface.
    virtual int GetEditorKind() = 0;
    virtual bool Reserved21() { return false; }
    /// The factory's name for its editors, empty without a factory.
    virtual void GetEditorsName(AString& name) = 0;
    virtual IFactory* GetFactory() = 0;
    virtual void Reserved24() {}
    virtual int Reserved25() { return 0; }
    virtual void Reserved26() {}
    virtual int Reserved27() { return 0; }
    virtual bool Reserved28() { return true; }
    /// Null when the editor serves no variables.
    virtual IVariableServer* GetVariableServer() { return nullptr; }
    virtual int Reserved30() { return 0; }
    /// Tells the extenders to take the text. Script editors only.
    virtual void SaveText() {}
    /// Whether a script editor's text differs from what was saved; false for the others.
    virtual bool IsTextModified() { return false; }
    /// Hands a command to the stack on which this editor's commands stand.
    virtual void RunEditCommand(IQuorelCommand* command) = 0;
    /// Replaces the whole text and updates the views; CR, LF and CR LF end lines.
    virtual void SetText(AString text) = 0;
    /// Appends the whole text, an LF between lines.
    virtual void GetText(AString& text) = 0;

protected:
    IEditor() = default;
};

/// An editor of a netlist.
class QUOREL_API INetlistEditor : public IEditor {
public:
    /// Adds a listener, which stays its owner's. @return false when it is there already
    virtual bool AddExtender(IEditorExtender* extender) = 0;
    /// @return whether it was there
    virtual bool RemoveExtender(IEditorExtender* extender) = 0;

protected:
    INetlistEditor() = default;
};

/// An editor of a script.
class QUOREL_API IScriptEditor : public IEditor {
public:
    /// Names the language and colours the text by it: "VBScript" in any case, else JavaScript.
    virtual void SetLanguage(AString language) { (void)language; }
    virtual void GetLanguage(AString& language) { language.clear(); }
    virtual void SetScriptName(AString name) { (void)name; }
    virtual void GetScriptName(AString& name) { name.clear(); }
    virtual void SetUseScript(bool use) { (void)use; }
    virtual bool GetUseScript() { return false; }
    /// Whether the script menu offers to run; only what is set before the menu's first request.
    virtual void SetShowRunMenu(bool show) { (void)show; }
    virtual bool AddExtender(IEditorExtender* extender) {
        (void)extender;
        return false;
    }
    virtual bool RemoveExtender(IEditorExtender* extender) {
        (void)extender;
        return false;
    }

protected:
    IScriptEditor() = default;
};
