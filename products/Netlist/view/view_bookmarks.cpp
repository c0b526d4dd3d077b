/// Bookmarks of a CSimEditView.
#include "sim_edit_doc.h"
#include "sim_edit_view.h"

void CSimEditView::ToggleBookmark() {
    CSimEditDoc* const document = GetTextDocument();
    if (!document)
        return;
    HideCaret();
    if (m_Selected)
        CancelSelection();
    const std::int32_t row = m_Caret.Row;
    const bool set = document->Line(row).Bookmark() == 0;
    document->SetBookmark(row, set);
    PaintLine(document->ColouredLine(row), row, nullptr, false, set, true);
    document->UpdateAllViews(this, row);
    ShowCaret();
}

void CSimEditView::NextBookmark() {
    GoToBookmark(1);
}

void CSimEditView::PrevBookmark() {
    GoToBookmark(-1);
}

/// Goes to the next row with a bookmark in a direction, round the ends of the text and back to the
/// caret's own row at last.
void CSimEditView::GoToBookmark(std::int32_t step) {
    const CSimEditDoc* const document = GetTextDocument();
    if (!document || document->BookmarkCount() == 0)
        return;
    const std::int32_t count = document->LineCount();
    std::int32_t row = m_Caret.Row;
    do
        row = (row + step + count) % count;
    while (row != m_Caret.Row && document->Line(row).Bookmark() == 0);
    if (document->Line(row).Bookmark() == 0)
        return;
    if (m_Selected)
        CancelSelection();
    m_Caret = {0, row};
    EnsureVisible(true, true);
}

void CSimEditView::ClearBookmarks() {
    CSimEditDoc* const document = GetTextDocument();
    if (!document || document->BookmarkCount() < 1)
        return;
    for (std::int32_t row = 0; row < document->LineCount() && document->BookmarkCount() > 0; ++row)
        document->SetBookmark(row, 0);
    document->UpdateAllViews(nullptr, 0);
}

void CSimEditView::OnUpdateNeedsBookmark(CCmdUI& ui) {
    const CSimEditDoc* const document = GetTextDocument();
    ui.Enable(document && document->BookmarkCount() != 0);
}
