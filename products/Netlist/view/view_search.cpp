/// Search of a CSimEditView: find, replace and go-to, with their dialogs and the find box.
///
/// A match stands inside one row. It is found in three steps: in the rest of the caret's row, in
/// the rows from there on, round the end of the text, and in the whole of the caret's row.
#include <algorithm>
#include <tuple>

#include "base_editor.h"
#include "caret_pause.h"
#include "desktop_access.h"
#include "find_dialog.h"
#include "find_replace_dlg.h"
#include "go_to_dlg.h"
#include "idesktop.h"
#include "job_progress.h"
#include "netlist_factory.h"
#include "paint_gathering.h"
#include "sim_edit_doc.h"
#include "sim_edit_view.h"
#include "text_search.h"

namespace {

constexpr int kMostHistory = 30;
constexpr std::u16string_view kNotFound = u"Cannot find string";

/// The entry with exactly that text, -1 when there is none.
int FindEntry(const CComboBox& box, const AString& text) {
    for (int index = 0; index < box.GetCount(); ++index)
        if (box.GetItemText(index) == text)
            return index;
    return -1;
}

/// Makes a text that is looked for the find box's and, unless it is empty, its newest entry.
void Remember(CComboBox& box, const AString& text) {
    if (!text.empty() && box.GetWindowText() == text)
        return;
    box.SetWindowText(text);
    const int index = FindEntry(box, text);
    if (text.empty() || index == 0)
        return;
    if (index > 0)
        box.DeleteString(index);
    box.InsertString(0, text);
    if (box.GetCount() > kMostHistory)
        box.DeleteString(kMostHistory);
}

/// A text of which the code page lacks a character is nowhere.
TextSearch SearchFor(const AString& wanted, bool keepCase) {
    const bool canBeThere = wanted.CanEncode(AString::kAnsi);
    return {canBeThere ? wanted.ToCString(AString::kAnsi) : std::string(), keepCase};
}

} // namespace

CComboBox* CSimEditView::GetFindBox() const {
    CNetlistFactory* const factory = GetFactory();
    return factory ? &factory->GetFindCombo() : nullptr;
}

AString CSimEditView::GetSearchText() const {
    if (m_Selected && m_SelAnchor.Row == m_SelEnd.Row && GetTextDocument()) {
        const WordRange columns = SelectedColumns(m_SelAnchor.Row);
        const std::string_view text = GetTextDocument()->Line(m_SelAnchor.Row).Text();
        return AString::FromMultiByte(
            AString::kAnsi, text.substr(static_cast<std::size_t>(columns.Start),
                                        static_cast<std::size_t>(columns.End - columns.Start)));
    }
    const CComboBox* const box = GetFindBox();
    return box ? box->GetWindowText() : AString();
}

void CSimEditView::OnEditFind() {
    CFindDialog dialog;
    RunSearchDialog(dialog);
}

void CSimEditView::OnEditReplace() {
    CFindReplaceDlg dialog;
    RunSearchDialog(dialog);
}

void CSimEditView::RunSearchDialog(CFindDialog& dialog) {
    if (!GetTextDocument())
        return;
    dialog.m_FindWhat = GetSearchText();
    dialog.m_View = this;
    dialog.DoModal();
}

void CSimEditView::DialogAction(CFindDialog& dialog) {
    if (!GetTextDocument())
        return;
    if (CComboBox* box = GetFindBox())
        Remember(*box, dialog.m_FindWhat);
    DoDialogAction(dialog);
}

void CSimEditView::DoDialogAction(const CFindDialog& dialog) {
    const CaretPause pause(*this);
    if (dialog.IsReplaceAll())
        ReplaceAll(dialog);
    else if (dialog.IsReplace())
        Replace(dialog);
    else
        FindNext(dialog);
}

void CSimEditView::TakeSearchSettings(const CFindDialog& dialog) {
    m_SearchCase = dialog.m_MatchCase;
    m_SearchDown = dialog.m_DownButton;
}

void CSimEditView::FindNext(const CFindDialog& dialog) {
    LeaveMatch();
    TakeSearchSettings(dialog);
    ShowNextMatch();
}

void CSimEditView::Replace(const CFindDialog& dialog) {
    TakeSearchSettings(dialog);
    const bool isMatch = m_Selected && m_SearchSelected;
    if (m_Selected)
        CancelSelection();
    if (isMatch) {
        DeleteSelection();
        const std::int32_t row = m_Caret.Row;
        InsertText(ReplacementOf(dialog));
        TextChanged(row);
        EnsureVisible(false, true);
    }
    ShowNextMatch();
}

void CSimEditView::ReplaceAll(const CFindDialog& dialog) {
    TakeSearchSettings(dialog);
    if (m_Selected)
        CancelSelection();
    const AString wanted = GetSearchText();
    const TextSearch search = SearchFor(wanted, m_SearchCase);
    std::optional<TextRange> match = FindFrom(search, {});
    if (!match)
        return ReportNotFound(wanted);
    const std::string replacement = ReplacementOf(dialog);
    const PaintGathering gathering(*GetTextDocument());
    GetTextDocument()->PutOffColours(match->From.Row);
    CJobProgress progress(u"Replacing");
    TextPlace last;
    while (match &&
           std::tie(match->From.Row, match->From.Column) >= std::tie(last.Row, last.Column) &&
           progress.GoOn(last.Row, RowCount())) { // what is replaced when it stops, undo takes back
        TakeMatch(*match);
        DeleteSelection();
        InsertText(replacement);
        last = m_Caret;
        match = FindFrom(search, last);
    }
    TextChanged(0);
    EnsureVisible(false, true);
}

/// The new text in the document's code page.
std::string CSimEditView::ReplacementOf(const CFindDialog& dialog) const {
    const AString text = dialog.GetReplaceText();
    if (CBaseEditor* editor = GetEditor(); editor && !text.CanEncode(AString::kAnsi))
        editor->NoteReplacedInput();
    return text.ToCString(AString::kAnsi);
}

void CSimEditView::SearchAgain(bool down, bool keepCase) {
    if (!GetTextDocument())
        return;
    m_SearchCase = keepCase;
    m_SearchDown = down;
    LeaveMatch();
    if (!FindText(true))
        return;
    SelectMatch();
    SetFocus();
    EnsureVisible(true, true);
}

/// Ends a selection. From a match the caret goes so far that the next one can begin, or end, one
/// column on.
void CSimEditView::LeaveMatch() {
    if (!m_Selected)
        return;
    if (m_SearchSelected) {
        m_Caret = m_SearchDown ? m_SelAnchor : m_SelEnd;
        m_Caret.Column = std::max(m_Caret.Column + (m_SearchDown ? 1 : -1), 0);
        KeepInsideText();
    }
    CancelSelection();
}

void CSimEditView::ShowNextMatch() {
    if (!FindText(true))
        return;
    SelectMatch();
    EnsureVisible(false, true);
}

void CSimEditView::SelectMatch() {
    m_BlockSelect = false;
    m_Selected = m_SearchSelected = true;
    ChangeHighlight({}, ShownHighlight());
}

/// Puts caret and selection to a match, which isn't shown as selected by that.
void CSimEditView::TakeMatch(const TextRange& match) {
    m_Caret = m_SearchDown ? match.From : match.To;
    m_SelAnchor = match.From;
    m_SelOld = m_SelEnd = match.To;
}

bool CSimEditView::FindText(bool reportFailure) {
    if (!GetTextDocument())
        return false;
    const AString wanted = GetSearchText();
    const auto match = FindFrom(SearchFor(wanted, m_SearchCase), m_Caret);
    if (match)
        TakeMatch(*match);
    else if (reportFailure)
        ReportNotFound(wanted);
    return match.has_value();
}

void CSimEditView::ReportNotFound(const AString& wanted) const {
    IDesktop* const desktop = GetDesktop();
    if (!desktop)
        return;
    AString text;
    text.Format(u"%s:\"%s\"", AString(kNotFound), m_SearchCase ? wanted : wanted.ToLower());
    desktop->GetPrompt()->ShowPrompt(text, IPrompt::kError, 0);
}

/// The next match in the direction of the search.
std::optional<TextRange> CSimEditView::FindFrom(const TextSearch& search, TextPlace from) const {
    const CSimEditDoc& document = *GetTextDocument();
    const std::int32_t count = document.LineCount();
    const std::string_view line = document.Line(from.Row).Text();
    const auto column = static_cast<std::size_t>(from.Column);
    std::int32_t row = from.Row;
    std::size_t at =
        m_SearchDown ? search.Find(line.substr(column)) : search.FindLast(line.substr(0, column));
    if (at != TextSearch::kNone && m_SearchDown)
        at += column;
    for (std::int32_t rows = 0; rows < count && at == TextSearch::kNone; ++rows) {
        if (m_SearchDown)
            row = row + 1 == count ? 0 : row + 1;
        else
            row = (row == 0 ? count : row) - 1;
        const std::string_view text = document.Line(row).Text();
        at = m_SearchDown ? search.Find(text) : search.FindLast(text);
    }
    if (at == TextSearch::kNone)
        return std::nullopt;
    const auto start = static_cast<std::int32_t>(at);
    return TextRange{{start, row}, {start + static_cast<std::int32_t>(search.Size()), row}};
}

void CSimEditView::OnGoTo() {
    const CSimEditDoc* const document = GetTextDocument();
    if (!document)
        return;
    CGoToDlg dialog(document->LineCount());
    if (dialog.DoModal() != kIdOk || dialog.m_Line < 1 || dialog.m_Line > document->LineCount())
        return;
    HideCaret();
    m_Caret = {0, dialog.m_Line - 1};
    EnsureVisible(true, true);
    SetFocus();
}
