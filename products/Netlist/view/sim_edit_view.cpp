#include "sim_edit_view.h"

#include <algorithm>

#include "assertion.h"
#include "base_editor.h"
#include "desktop_access.h"
#include "idesign.h"
#include "idesktop.h"
#include "netlist_app.h"
#include "netlist_factory.h"
#include "print_layout.h"
#include "reader_text.h"
#include "resource_ids.h"
#include "tool_bars_data.h"

CSimEditView::CSimEditView()
    : m_BookmarkColor(static_cast<ColorRef>(CNetlistApp::Get().GetOptions().BMColor)) {}

CSimEditView::~CSimEditView() {
    CBaseEditor* const editor = GetEditor();
    if (editor && editor->GetActiveView() == this)
        editor->SetActiveView(nullptr);
}

CBaseEditor* CSimEditView::GetEditor() const {
    return dynamic_cast<CBaseEditor*>(GetDocument());
}

CNetlistFactory* CSimEditView::GetFactory() const {
    const CBaseEditor* const editor = GetEditor();
    return editor ? editor->GetNetlistFactory() : nullptr;
}

CSimEditDoc* CSimEditView::GetTextDocument() const {
    if (CDocument* document = GetDocument(); document != m_CastDocument) {
        m_CastDocument = document;
        m_TextDocument = dynamic_cast<CSimEditDoc*>(document);
    }
    return m_TextDocument;
}

IDesignInstance* CSimEditView::GetInstance() const {
    return m_ViewKey ? m_ViewKey->GetInstance() : nullptr;
}

void CSimEditView::SetInstance(IDesignInstance* instance) {
    m_ViewKey = instance ? instance->GetViewKey() : nullptr;
}

const MessageMap& CSimEditView::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {
        Message<&CSimEditView::OnCreate>(kMsgCreate),
        Message<&CSimEditView::OnSize>(kMsgSize),
        Message<&CSimEditView::OnDpiChanged>(kMsgDpiChanged),
        Message<&CSimEditView::OnSetFocus>(kMsgSetFocus),
        Message<&CSimEditView::OnKillFocus>(kMsgKillFocus),
        Message<&CSimEditView::OnHScroll>(kMsgHScroll),
        Message<&CSimEditView::OnVScroll>(kMsgVScroll),
        Message<&CSimEditView::OnMouseWheel>(kMsgMouseWheel),
        Message<&CSimEditView::OnKeyDown>(kMsgKeyDown),
        Message<&CSimEditView::OnChar>(kMsgChar),
        Message<&CSimEditView::OnPaste>(kMsgPaste),
        Message<&CSimEditView::OnLButtonDown>(kMsgLButtonDown),
        Message<&CSimEditView::OnLButtonUp>(kMsgLButtonUp),
        Message<&CSimEditView::OnLButtonDblClk>(kMsgLButtonDblClk),
        Message<&CSimEditView::OnMouseMove>(kMsgMouseMove),
        Message<&CSimEditView::OnSetCursor>(kMsgSetCursor),
        Message<&CSimEditView::OnNcMouseMove>(kMsgNcMouseMove),
        Message<&CSimEditView::OnContextMenu>(kMsgContextMenu),
    };
    static const MessageMap kMap{kEntries, &CScrollView::GetMessageMap()};
    return kMap;
}

const CommandMap& CSimEditView::GetCommandMap() const {
    using V = CSimEditView;
    static constexpr CommandEntry kEntries[] = {
        Command<&V::ClearBookmarks, &V::OnUpdateNeedsBookmark>(kCommandClearBookmarks),
        Command<&V::OnGoTo>(kCommandGoTo),
        Command<&V::ToggleBookmark>(kCommandToggleBookmark),
        Command<&V::NextBookmark>(kCommandNextBookmark),
        Command<&V::PrevBookmark>(kCommandPreviousBookmark),
        Command<&V::OnSearchDown>(kCommandSearchDown),
        Command<&V::OnSearchUp>(kCommandSearchUp),
        Command<&V::OnSearchDownCase>(kCommandSearchDownCase),
        Command<&V::OnSearchUpCase>(kCommandSearchUpCase),
        Command<&V::OnEditClear, &V::OnUpdateNeedsSelection>(kCommandClear),
        Command<&V::CopySelection, &V::OnUpdateNeedsSelection>(kCommandCopy),
        Command<&V::CutSelection, &V::OnUpdateNeedsSelection>(kCommandCut),
        Command<&V::OnEditFind>(kCommandFind),
        Command<&V::PasteClipboard, &V::OnUpdatePaste>(kCommandPaste),
        Command<&V::OnEditReplace>(kCommandReplace),
        Command<&V::SelectAll>(kCommandSelectAll),
    };
    static const CommandMap kMap{kEntries, &CScrollView::GetCommandMap()};
    return kMap;
}

void CSimEditView::OnInitialUpdate() {
    CScrollView::OnInitialUpdate();
    if (CBaseEditor* editor = GetEditor())
        editor->SetActiveView(this);
    CreateToolBars();
    if (const CDocument* document = GetDocument())
        for (CView* view : document->GetViews())
            if (const auto* other = dynamic_cast<CSimEditView*>(view))
                m_MaxLineLength = std::max(m_MaxLineLength, other->m_MaxLineLength);
    UpdateScrollSizes(true, true, RowCount(), true);
}

void CSimEditView::CreateToolBars() {
    CNetlistFactory* const factory = GetFactory();
    if (!factory || !factory->GetToolBars())
        return;
    const bool ret = factory->GetToolBars()->CreateBars();
    USE_ASSERT_TEXT(ret, "ret");
}

void CSimEditView::ResetText(std::int32_t lineCount, std::int32_t width) {
    ResetView(lineCount, width);
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

CaretState CSimEditView::GetCaretState() const {
    return {{m_Caret.Row, m_Caret.Column}, m_WantedColumn, m_InsertMode};
}

SelectionState CSimEditView::GetSelectionState() const {
    return {m_Selected,
            m_BlockSelect,
            {m_SelAnchor.Row, m_SelAnchor.Column},
            {m_SelEnd.Row, m_SelEnd.Column}};
}

ScrollState CSimEditView::GetScrollState() const {
    return {m_TopRow, m_LinesPerPage, m_MaxLineLength};
}
