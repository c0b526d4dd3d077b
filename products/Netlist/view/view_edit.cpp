/// Editing in a CSimEditView: what keys, commands and search do to the text at the caret.
#include <algorithm>

#include "base_editor.h"
#include "netlist_edit_cmd.h"
#include "record_type.h"
#include "sim_edit_doc.h"
#include "sim_edit_view.h"

namespace {

/// Recolouring is off while it lives.
class ColouringPause {
public:
    explicit ColouringPause(CSimEditDoc& document)
        : m_Document(document), m_Before(document.Colouring()) {
        m_Document.SetColouring(0);
    }
    ColouringPause(const ColouringPause&) = delete;
    ColouringPause& operator=(const ColouringPause&) = delete;
    ~ColouringPause() { m_Document.SetColouring(m_Before); }

private:
    CSimEditDoc& m_Document;
    std::int32_t m_Before;
};

/// The bytes of the line end with which text begins, 0 for none.
std::size_t LineEndLength(std::string_view text) {
    if (text.starts_with("\r\n"))
        return 2;
    return text.starts_with('\r') || text.starts_with('\n') ? 1 : 0;
}

} // namespace

void CSimEditView::RaiseMaxLineLength(std::int32_t row) {
    m_MaxLineLength = std::max(m_MaxLineLength, GetTextDocument()->Line(row).Length());
}

/// The text has changed from a row on.
void CSimEditView::TextChanged(std::int32_t row) {
    CSimEditDoc& document = *GetTextDocument();
    document.SetModifiedFlag();
    document.UpdateAllViews(nullptr, row);
}

CSimEditView::RowState CSimEditView::StateOfRow(std::int32_t row) const {
    CSimEditDoc& document = *GetTextDocument();
    return {document.Line(row).Length(), document.RangeOut(row)};
}

/// The caret's row has changed: only this row is painted when those below look as before.
void CSimEditView::ShowEditedRow(const RowState& before) {
    CSimEditDoc& document = *GetTextDocument();
    const std::int32_t row = m_Caret.Row;
    if (document.RangeOut(row) != before.RangeOut)
        return document.UpdateAllViews(nullptr, row);
    const CSimEditLine& line = CanPaint() ? document.ColouredLine(row) : document.Line(row);
    PaintLine(line, row, nullptr, line.Length() < before.Length, line.Bookmark() != 0, false);
    document.UpdateAllViews(this, row);
}

void CSimEditView::DeleteCharAtCaret() {
    CSimEditDoc& document = *GetTextDocument();
    const RowState before = StateOfRow(m_Caret.Row);
    std::int32_t width = 0;
    document.DelChar(m_Caret.Row, m_Caret.Column, m_Recording, width);
    ShowEditedRow(before);
    document.SetModifiedFlag();
}

/// Appends the next row to the caret's.
void CSimEditView::JoinAtCaret() {
    GetTextDocument()->CatLine(m_Caret.Row, 1, m_Recording);
    RaiseMaxLineLength(m_Caret.Row);
    TextChanged(m_Caret.Row);
}

/// Hands the command of a keystroke over; whoever hears of it may close the view.
void CSimEditView::MakeCommand() {
    if (CBaseEditor* editor = GetEditor())
        editor->RunEditCommand(new NetlistEditCmd(
            editor->GetCommandContext(), m_ViewKey,
            static_cast<IEditor*>(editor->GetInterface(IViewDoc::kEditorInterface))));
}

/// What is selected, or was until just now, inside the text: of a block, its corners.
TextRange CSimEditView::SelectedRange() const {
    TextRange range = NormalizeSelection(m_SelAnchor, m_SelEnd);
    if (m_BlockSelect && range.From.Column > range.To.Column)
        std::swap(range.From.Column, range.To.Column);
    const std::int32_t last = GetTextDocument()->LineCount() - 1;
    range.From.Row = std::min(range.From.Row, last);
    range.To.Row = std::min(range.To.Row, last);
    return range;
}

/// The columns of a row that are selected, a block's as far as the line has them.
WordRange CSimEditView::SelectedColumns(std::int32_t row) const {
    const WordRange all = HighlightedColumns({m_SelAnchor, m_SelEnd, true}, row);
    const std::int32_t length = GetTextDocument()->Line(row).Length();
    return {std::min(all.Start, length), std::min(all.End, length)};
}

/// Deletes the selection and ends it. @return whether there was one
bool CSimEditView::TakeSelection() {
    if (!m_Selected)
        return false;
    CancelSelection(false);
    DeleteSelection();
    m_BlockSelect = false;
    return true;
}

void CSimEditView::DeleteSelection() {
    if (!GetTextDocument())
        return;
    const TextRange range = SelectedRange();
    if (range.From.Row == range.To.Row || m_BlockSelect)
        DeleteColumns(range.From.Row, range.To.Row);
    else
        DeleteRows(range);
    m_Caret = range.From;
    m_Caret.Column = std::min(m_Caret.Column, GetTextDocument()->Line(m_Caret.Row).Length());
}

void CSimEditView::DeleteColumns(std::int32_t from, std::int32_t to) {
    std::int32_t first = 1;
    for (std::int32_t row = from; row <= to; ++row) {
        const WordRange columns = SelectedColumns(row);
        if (columns.Start == columns.End)
            continue;
        GetTextDocument()->DelRange(row, columns.Start, columns.End, first, 1);
        first = 0;
    }
}

void CSimEditView::DeleteRows(const TextRange& range) {
    CSimEditDoc& document = *GetTextDocument();
    const std::int32_t row = range.From.Row;
    const WordRange head = SelectedColumns(row);
    const WordRange tail = SelectedColumns(range.To.Row);
    std::int32_t first = 1;
    if (head.Start < head.End) {
        document.DelRange(row, head.Start, head.End, first, 1);
        first = 0;
    }
    for (std::int32_t between = range.To.Row - row - 1; between > 0; --between) {
        document.DeleteLine(row + 1, 1, first);
        first = 0;
    }
    if (tail.End > 0) {
        document.DelRange(row + 1, 0, tail.End, first, 1);
        first = 0;
    }
    document.CatLine(row, first, m_Recording);
    RaiseMaxLineLength(row);
}

void CSimEditView::PasteText(std::string_view text, bool replaceSelection) {
    CSimEditDoc* const document = GetTextDocument();
    if (!document)
        return;
    HideCaret();
    m_WantedColumn = 0;
    if (replaceSelection)
        TakeSelection();
    const std::int32_t row = m_Caret.Row;
    InsertText(text);
    UpdateScrollSizes(true, true, document->LineCount(), true);
    TextChanged(row);
    EnsureVisible(true, false, true);
}

/// The rest of the caret's line goes to a row of its own first, so that what stands behind the
/// caret is moved once and not with every piece.
std::int32_t CSimEditView::InsertText(std::string_view text) {
    CSimEditDoc* const document = GetTextDocument();
    if (!document || text.empty())
        return 0;
    if (text.find_first_of("\r\n\t") == std::string_view::npos) {
        InsertPlainText(text);
        return 0;
    }
    const std::int32_t firstRow = m_Caret.Row;
    std::int32_t lineEnds = 0;
    {
        const ColouringPause pause(*document);
        document->SplitLine(firstRow, m_Caret.Column, 0, 0, 0);
        std::size_t end = 0;
        do {
            const std::string_view piece = text.substr(0, text.find_first_of("\r\n"));
            end = LineEndLength(text.substr(piece.size()));
            InsertPiece(piece, m_Caret.Row == firstRow, end != 0);
            lineEnds += end != 0;
            text.remove_prefix(piece.size() + end);
        } while (!text.empty());
        if (end == 0)
            document->CatLine(m_Caret.Row, 0, 0);
    }
    for (std::int32_t row = firstRow; row <= m_Caret.Row; ++row)
        document->Recolour(row, 1);
    RaiseMaxLineLength(m_Caret.Row);
    return lineEnds;
}

/// Inserts a text without line ends and tabs: one edit of the caret's row.
void CSimEditView::InsertPlainText(std::string_view text) {
    CSimEditDoc& document = *GetTextDocument();
    const auto [column, row] = m_Caret;
    const std::int32_t end = column + static_cast<std::int32_t>(text.size());
    document.InsertString(row, column, end, text, 1, 1);
    RaiseMaxLineLength(row);
    m_Caret.Column = std::min(end, document.Line(row).Length());
}

/// Inserts a text without line ends, at the end of the caret's row if it is the first one, else as
/// a row of its own; the caret goes behind it.
void CSimEditView::InsertPiece(std::string_view piece, bool isFirst, bool hasLineEnd) {
    CSimEditDoc& document = *GetTextDocument();
    const auto [column, row] = m_Caret;
    if (isFirst)
        document.InsertString(row, column, column, piece, 0, 0);
    else
        document.InsertLine(row, 0, 0, piece);
    const std::int32_t end = document.Line(row).Length();
    document.InsertNewUndo(kTextInserted, row, column, isFirst, hasLineEnd ? kLineBreak : 0, piece,
                           end, row);
    RaiseMaxLineLength(row);
    m_Caret = hasLineEnd ? TextPlace{0, row + 1} : TextPlace{end, row};
}
