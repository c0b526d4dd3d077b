/// Clipboard and selection commands of a CSimEditView, and when they are enabled.
#include <algorithm>
#include <new>

#include "base_editor.h"
#include "code_page.h"
#include "combo_box.h"
#include "sim_edit_doc.h"
#include "sim_edit_view.h"

namespace {

/// Bytes that are decoded at a time, of long lines more.
constexpr std::size_t kPiece = 16 * 1024;

} // namespace

std::size_t CSimEditView::GetSelectionLength() const {
    if (!m_Selected || !GetTextDocument())
        return 0;
    const TextRange range = SelectedRange();
    std::int64_t length = 0;
    for (std::int32_t row = range.From.Row; row <= range.To.Row; ++row) {
        const WordRange columns = HighlightedColumns({m_SelAnchor, m_SelEnd, true}, row);
        length += columns.End - columns.Start;
    }
    constexpr std::int64_t kLineEnd = 2;
    return static_cast<std::size_t>(length + kLineEnd * (range.To.Row - range.From.Row));
}

AString CSimEditView::GetSelectedText() const {
    AString text;
    const CSimEditDoc* const document = GetTextDocument();
    if (!m_Selected || !document)
        return text;
    text.reserve(GetSelectionLength());
    std::string bytes; // decoded piece by piece
    const auto decode = [&] {
        codepage::AppendDecoded(codepage::Page::kWindows1252, bytes, text);
        bytes.clear();
    };
    const TextRange range = SelectedRange();
    for (std::int32_t row = range.From.Row; row <= range.To.Row; ++row) {
        const WordRange columns = SelectedColumns(row);
        if (columns.Start < columns.End)
            document->Line(row).AppendText(bytes, columns.Start, columns.End - 1);
        if (m_BlockSelect) // up to the block's width, whatever tabs made of the columns
            bytes.append(static_cast<std::size_t>(range.To.Column - range.From.Column -
                                                  (columns.End - columns.Start)),
                         ' ');
        if (row != range.To.Row)
            bytes += "\r\n";
        if (bytes.size() >= kPiece)
            decode();
    }
    decode();
    return text;
}

/// Gives an edit command to the find box if that has the focus.
bool CSimEditView::FindBoxTakes(unsigned message) const {
    CComboBox* const box = GetFindBox();
    const CWnd* focus = CWnd::GetFocus();
    while (focus && focus != box)
        focus = focus->GetParent();
    if (!box || !focus)
        return false;
    box->SendMessage(message);
    return true;
}

bool CSimEditView::HasWidth() const {
    const TextRange range = SelectedRange();
    return m_Selected &&
           (m_BlockSelect ? range.From.Column != range.To.Column : range.From != range.To);
}

/// @return false when memory or the clipboard fails; a selection without width copies nothing
bool CSimEditView::CopyToClipboard() const {
    if (!HasWidth())
        return true;
    IBackendDesk* const desk = GetBackend();
    try {
        return desk && desk->SetClipboardText(GetSelectedText());
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void CSimEditView::CopySelection() {
    if (!FindBoxTakes(kMsgCopy) && m_Selected && GetTextDocument())
        CopyToClipboard();
}

void CSimEditView::CutSelection() {
    if (FindBoxTakes(kMsgCut) || !m_Selected || !GetTextDocument() || !CopyToClipboard())
        return;
    HideCaret();
    m_WantedColumn = 0;
    TakeSelection();
    TextChanged(m_Caret.Row);
    EnsureVisible(true);
}

void CSimEditView::PasteClipboard() {
    if (!FindBoxTakes(kMsgPaste))
        PasteFromClipboard();
}

/// The middle button's paste is for the view that was clicked, whoever has the focus.
std::intptr_t CSimEditView::OnPaste(std::uintptr_t, std::intptr_t) {
    PasteFromClipboard();
    return 0;
}

void CSimEditView::PasteFromClipboard() {
    IBackendDesk* const desk = GetBackend();
    CBaseEditor* const editor = GetEditor();
    if (!desk || !editor)
        return;
    const std::optional<AString> text = desk->GetClipboardText();
    if (!text || text->empty())
        return;
    if (!text->CanEncode(AString::kAnsi))
        editor->NoteReplacedInput();
    PasteText(text->ToCString(AString::kAnsi), true);
}

void CSimEditView::SelectAll() {
    if (!GetTextDocument())
        return;
    HideCaret();
    if (m_Selected)
        CancelSelection();
    m_Caret = {};
    BeginSelection(false);
    m_Caret = EndOfRow(GetTextDocument()->LineCount() - 1);
    ExtendSelection();
    EnsureVisible(true);
}

/// The key itself, so that the command does what the key does.
void CSimEditView::OnEditClear() {
    SendMessage(kMsgKeyDown, kKeyDelete, 1);
}

void CSimEditView::OnUpdateNeedsSelection(CCmdUI& ui) {
    ui.Enable(m_Selected);
}

void CSimEditView::OnUpdatePaste(CCmdUI& ui) {
    IBackendDesk* const desk = GetBackend();
    ui.Enable(desk && desk->HasClipboardText());
}
