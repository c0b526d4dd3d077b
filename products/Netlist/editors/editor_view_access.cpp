/// The part of EditorAccess that goes through a view of the editor.
#include "base_editor.h"
#include "editor_access.h"
#include "sim_edit_view.h"

CSimEditView* EditorAccess::GetViewInUse() const {
    if (CSimEditView* active = m_Editor.GetActiveView())
        return active;
    const std::vector<CView*>& views = m_Editor.GetViews();
    return views.empty() ? nullptr : dynamic_cast<CSimEditView*>(views.front());
}

std::optional<CaretState> EditorAccess::GetCaret() {
    const CSimEditView* const view = GetViewInUse();
    return view ? std::optional(view->GetCaretState()) : std::nullopt;
}

std::optional<SelectionState> EditorAccess::GetSelection() {
    const CSimEditView* const view = GetViewInUse();
    return view ? std::optional(view->GetSelectionState()) : std::nullopt;
}

std::optional<ScrollState> EditorAccess::GetScroll() {
    const CSimEditView* const view = GetViewInUse();
    return view ? std::optional(view->GetScrollState()) : std::nullopt;
}

bool EditorAccess::SetCaret(TextPosition place) {
    CSimEditView* const view = GetViewInUse();
    if (view)
        view->GoToPlace({place.m_Column, place.m_Row});
    return view != nullptr;
}

std::optional<PrintState> EditorAccess::GetPrint() {
    const CSimEditView* const view = GetViewInUse();
    return view ? view->GetPrintState() : std::nullopt;
}

bool EditorAccess::Select(TextPosition anchor, TextPosition end, bool block) {
    CSimEditView* const view = GetViewInUse();
    if (view)
        view->SelectRange({anchor.m_Column, anchor.m_Row}, {end.m_Column, end.m_Row}, block);
    return view != nullptr;
}

bool EditorAccess::RunCommand(unsigned id) {
    if (CSimEditView* view = GetViewInUse())
        return view->RunCommand(id);
    return m_Editor.CCmdTarget::RunCommand(id);
}

int EditorAccess::UndoEdit(int count) {
    if (CSimEditView* view = GetViewInUse())
        return view->UndoEdit(count);
    return Replayed(&EditReplay::Undo, count);
}

int EditorAccess::RedoEdit(int count) {
    if (CSimEditView* view = GetViewInUse())
        return view->RedoEdit(count);
    return Replayed(&EditReplay::Redo, count);
}

int EditorAccess::Replayed(std::int32_t (EditReplay::*replay)(), int count) {
    EditReplay replayed(m_Editor);
    int done = 0;
    while (done < count && (replayed.*replay)() != 0)
        ++done;
    if (done > 0)
        NotifyEdited(0);
    return done;
}
