#include "sim_edit_view.h"

#include "base_editor.h"
#include "desktop_access.h"
#include "idesign.h"
#include "idesktop.h"

CSimEditView::CSimEditView() = default;

CSimEditView::~CSimEditView() {
    CBaseEditor* const editor = GetEditor();
    if (editor && editor->GetActiveView() == this)
        editor->SetActiveView(nullptr);
}

CBaseEditor* CSimEditView::GetEditor() const {
    return dynamic_cast<CBaseEditor*>(GetDocument());
}

IDesignInstance* CSimEditView::GetInstance() const {
    return m_ViewKey ? m_ViewKey->GetInstance() : nullptr;
}

void CSimEditView::SetInstance(IDesignInstance* instance) {
    m_ViewKey = instance ? instance->GetViewKey() : nullptr;
}

void CSimEditView::ResetText(std::int32_t lineCount, std::int32_t width) {
    static_cast<void>(lineCount);
    m_MaxLineLength = width;
}

void CSimEditView::SetMaxLineLength(std::int32_t width) {
    m_MaxLineLength = width;
}

void CSimEditView::OnActivateView(bool activate, CView* activated, CView* deactivated) {
    if (auto* view = dynamic_cast<CSimEditView*>(activated); view && activate && !*m_Busy)
        view->ActivationNotice(true, view, dynamic_cast<CSimEditView*>(deactivated));
    CScrollView::OnActivateView(activate, activated, deactivated);
}

void CSimEditView::ActivationNotice(bool activate, CSimEditView* view, CSimEditView* losing) {
    CBaseEditor* const editor = GetEditor();
    if (!editor || (!activate && editor->GetActiveView() != losing))
        return;
    editor->SetActiveView(activate ? view : nullptr);
    TellActivation(*editor, activate);
}

void CSimEditView::TellActivation(CBaseEditor& editor, bool activate) {
    auto* const self = static_cast<IEditor*>(editor.GetInterface(IViewDoc::kEditorInterface));
    if (IDesignInstance* instance = GetInstance())
        activate ? instance->EditorActivated(self) : instance->EditorDeactivated(self);
    else if (IDesktop* desktop = GetDesktop())
        desktop->SetActiveEditor(activate ? self : nullptr, 0);
}
