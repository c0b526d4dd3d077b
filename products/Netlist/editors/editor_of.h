/// EditorOf: an editor's side towards hosts, as far as it is alike for all kinds of editors.
#pragma once

#include <algorithm>
#include <vector>

#include "assertion.h"
#include "base_editor.h"
#include "idesign.h"
#include "netlist_factory.h"
#include "resource_ids.h"

/// CBaseEditor behind INetlistEditor or IScriptEditor, with the list of extenders that both have.
template <class Interface>
class EditorOf : public CBaseEditor, public Interface {
public:
    using CBaseEditor::CBaseEditor;

    // CBaseEditor and Interface have these in common.
    void* GetInterface(int kind) override {
        if (kind == IViewDoc::kDocumentInterface)
            return static_cast<CObject*>(this);
        if (kind == IViewDoc::kViewDocInterface)
            return static_cast<IViewDoc*>(this);
        return kind == IViewDoc::kEditorInterface ? static_cast<IEditor*>(this) : nullptr;
    }
    void RunEditCommand(IQuorelCommand* command) override = 0;
    ICommandContext* GetCommandContext() override = 0;

    void TellTextChanged(IQuorelCommand* command) override {
        TellExtenders(&IEditorExtender::TextChanged, command);
    }

    // IViewDoc
    bool WriteEditor(io::CBlock*) override { return true; }
    void ReadViews(io::CBlock* block, IDesignInstance* instance) override {
        AString name;
        this->GetBlockName(name);
        ReadViewsOf(block, name, instance);
    }
    bool WriteViews(io::CBlock* block, IDesignInstance* instance) override {
        AString name;
        this->GetBlockName(name);
        WriteViewsOf(block, name, instance);
        return true;
    }
    void OpenView(IDesignInstance* instance) override { OpenViewOf(instance); }
    bool IsFirstViewOf(IDesignInstance* instance) override { return IsFirstView(instance); }
    void CloseViews(IDesignInstance* instance) override { CloseViewsOf(instance); }
    void CloseAllViews() override { CloseEveryView(); }
    void RefreshTitle() override { UpdateTitle({}, false); }
    bool GetEditorMenu(int kind, CMenu*& menu, std::vector<CCmdTarget*>& targets) override {
        if (kind == IViewDoc::kEditMenu)
            return GiveMenu(m_EditMenu, kMenuEdit, menu, targets);
        return kind == IViewDoc::kExportMenu && GiveMenu(m_ExportMenu, ExportMenu(), menu, targets);
    }
    CToolBarsData* GetToolBars() override {
        return GetNetlistFactory() ? GetNetlistFactory()->GetToolBars() : nullptr;
    }

    // IEditor
    int GetEditorKind() override { return IViewDoc::kEditorInterface; }
    void GetEditorsName(AString& name) override { NameEditors(name); }
    IFactory* GetFactory() override { return GetNetlistFactory(); }
    void SetText(AString text) override { ReplaceText(text); }
    void GetText(AString& text) override { CSimEditDoc::GetText(text); }

    // INetlistEditor, IScriptEditor
    bool AddExtender(IEditorExtender* extender) override {
        USE_ASSERT(extender);
        if (!extender || std::ranges::find(m_Extenders, extender) != m_Extenders.end())
            return false;
        m_Extenders.push_back(extender);
        return true;
    }
    bool RemoveExtender(IEditorExtender* extender) override {
        USE_ASSERT(extender);
        const std::size_t erased = std::erase(m_Extenders, extender);
        USE_ASSERT(erased < 2);
        return erased != 0;
    }

protected:
    /// The resource of the menu that holds the export command.
    virtual unsigned ExportMenu() const = 0;

    /// Calls a notice of every extender; one may leave the list meanwhile.
    template <class... Parameters, class... Arguments>
    void TellExtenders(void (IEditorExtender::*notice)(Parameters...), Arguments... arguments) {
        const std::vector<IEditorExtender*> extenders = m_Extenders;
        for (IEditorExtender* extender : extenders)
            (extender->*notice)(arguments...);
    }

private:
    CMenu m_EditMenu;
    CMenu m_ExportMenu;
    std::vector<IEditorExtender*> m_Extenders; ///< not owned, no repeats
};
