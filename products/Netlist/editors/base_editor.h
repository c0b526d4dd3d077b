/// CBaseEditor: what all editors share beside their text: factory, syntax, views and menus.
#pragma once

#include <memory>

#include "editor_access.h"
#include "editor_syntax.h"
#include "ieditor.h"
#include "menu.h"
#include "sim_edit_doc.h"

class CNetlistFactory;
class CSimEditView;
namespace io {
class CBlock_func;
}

/// A text document that a desktop can drive. It may be shown in several frames, one for each design
/// instance: a view belongs to an instance, and hosts speak of views by instance.
class CBaseEditor : public CSimEditDoc, public EditorAccess {
public:
    /// @param factory not owned; it tells when it ends
    explicit CBaseEditor(CNetlistFactory& factory);
    ~CBaseEditor() override;

    /// Hands a command to the stack on which this editor's commands stand.
    virtual void RunEditCommand(IQuorelCommand* command) = 0;
    /// The interface of an IViewDoc::InterfaceKind, null for a kind that the editor hasn't got.
    virtual void* GetInterface(int kind) = 0;
    /// Sets the title: the given one if isExplicit, else the one that the editor forms.
    virtual void UpdateTitle(const AString& title, bool isExplicit) = 0;
    /// Null when there is none.
    virtual ICommandContext* GetCommandContext() = 0;
    /// Tells the extenders that a keystroke has changed the text.
    virtual void TellTextChanged(IQuorelCommand* command) = 0;

    void SetModifiedFlag(bool modified = true) override;
    /// The factory's accelerators; null without a factory.
    const CAcceleratorTable* GetDefaultAccelerator() override;

    /// What commands hold, which may outlive the editor: empty once that ends.
    const std::shared_ptr<CBaseEditor>& GetHandle() const { return m_Handle; }

    /// Null after the factory's end.
    CNetlistFactory* GetNetlistFactory() const { return m_Factory; }
    /// The factory is being destroyed.
    void FactoryEnds() { m_Factory = nullptr; }

    /// Colours by the factory's description for that kind of text; without one nothing changes.
    void UseSyntax(const EditorSyntax& syntax);
    /// The index of the description in use, -1 for none.
    int SyntaxIndex() const;

    /// The view that last became active, null when none is.
    CSimEditView* GetActiveView() const { return m_ActiveView; }
    void SetActiveView(CSimEditView* view) { m_ActiveView = view; }

protected:
    /// @name The operations of IViewDoc and IEditor that are alike in all editors
    /// @{
    void OpenViewOf(IDesignInstance* instance);
    bool IsFirstView(IDesignInstance* instance) const;
    void CloseViewsOf(IDesignInstance* instance);
    /// Places the instance's views as the function of that name in the block says, and opens one
    /// for each item that is left; nothing without the function.
    void ReadViewsOf(const io::CBlock* block, const AString& name, IDesignInstance* instance);
    /// Adds the function with an item for each view of the instance.
    void WriteViewsOf(io::CBlock* block, const AString& name, IDesignInstance* instance) const;
    void CloseEveryView();
    /// Closes the frames of an editor that ends. To be called by the destructor of its widest
    /// class, since those who are told of it still ask for the editor's interfaces.
    void EndViews();
    void NameEditors(AString& name) const;
    void ReplaceText(const AString& text);
    /// Gives a menu, loaded from a resource at the first use, and the active view as its target.
    bool GiveMenu(CMenu& own, unsigned resourceId, CMenu*& menu,
                  std::vector<CCmdTarget*>& targets) const;
    /// @}

private:
    CSimEditView* OpenNewView(IDesignInstance* instance, const char* viewText);
    void OpenPlacedView(IDesignInstance* instance, const io::CBlock_func& placement);
    template <class Condition>
    void CloseViewsIf(Condition condition);

    CNetlistFactory* m_Factory;
    CSimEditView* m_ActiveView = nullptr;
    std::shared_ptr<CBaseEditor> m_Handle;             ///< doesn't own the editor
    std::shared_ptr<const CSyntaxDscr> m_SharedSyntax; ///< keeps what the document has borrowed
};
