#include "edit_replay.h"

#include "record_type.h"
#include "sim_edit_doc.h"

#include <algorithm>
#include <array>

namespace {

/// Marks a document as replaying for as long as it lives.
class Replaying {
public:
    explicit Replaying(CSimEditDoc& document) : m_document(document) { m_document.SetReplaying(1); }
    Replaying(const Replaying&) = delete;
    Replaying& operator=(const Replaying&) = delete;
    ~Replaying() { m_document.SetReplaying(0); }

private:
    CSimEditDoc& m_document;
};

bool IsRange(const JournalFields& fields) {
    return fields.EndColumn != -1 && fields.EndRow != -1;
}

} // namespace

std::int32_t EditReplay::Undo() {
    const Replaying replaying(m_document);
    std::int32_t count = 0;
    for (bool more = true; more && !m_document.UndoList().Empty(); ++count) {
        CSimEditLine& record = m_document.UndoList().Newest();
        Replay(record, ActionsOf(record).undo);
        more = record.Record().First == 0;
        m_document.InsertNewRedo(record);
        m_document.DelUndoNewest(1);
    }
    return count;
}

std::int32_t EditReplay::Redo() {
    const Replaying replaying(m_document);
    std::int32_t count = 0;
    const RecordList& list = m_document.RedoList();
    for (; !list.Empty() && (count == 0 || list.Newest().Record().First == 0); ++count) {
        CSimEditLine& record = list.Newest();
        Replay(record, ActionsOf(record).redo);
        m_document.InsertNewUndoFromRedo(record);
        m_document.DelRedoNewest(1);
    }
    return count;
}

const EditReplay::Actions& EditReplay::ActionsOf(const CSimEditLine& record) {
    using R = EditReplay;
    static constexpr std::array<Actions, 9> kActions{{
        /* kDeleted */ {&R::PutBack, &R::TakeAgain},
        /* kInserted */ {&R::TakeBack, &R::PutAgain},
        /* kOverwritten */ {&R::PutOldOver, &R::PutNewOver},
        /* kLineDeleted */ {&R::PutLineBack, &R::TakeLine},
        /* kTextInserted */ {&R::TakeTextBack, &R::PutTextAgain},
        /* kRangeDeleted */ {&R::RestoreLine, &R::TakeRange},
        /* kTabDeleted */ {&R::PutTab, &R::TakeAgain},
        /* kTabInserted */ {&R::TakeBack, &R::PutTabAgain},
        /* kOverwrittenByTab */ {&R::PutOldOver, &R::PutNewOver},
    }};
    const auto type = static_cast<std::size_t>(record.Record().Type);
    return kActions[std::min(type, kActions.size() - 1)];
}

/// Puts the caret at the record's place, or the nearest that there is, and acts.
void EditReplay::Replay(CSimEditLine& record, Action action) {
    const bool hasLine = m_document.LineCount() > 0;
    if (hasLine)
        PutCaretNear(record.Record().Row, record.Record().Column);
    if (hasLine ||
        action == &EditReplay::PutLineBack) // the only line was deleted: it can come back
        (this->*action)(record);
    m_lastRow = record.Record().Row; // which the action may have moved
    m_lastType = record.Record().Type;
}

void EditReplay::PutCaretNear(std::int32_t row, std::int32_t column) {
    row = std::clamp(row, 0, m_document.LineCount() - 1);
    m_keys.PutCaret(row, std::clamp(column, 0, m_document.Line(row).Length()));
}

void EditReplay::PutBack(CSimEditLine& record) {
    if (record.Record().Char == kLineBreak)
        m_keys.PressReturn();
    else
        m_keys.TypeChar(static_cast<char>(record.Record().Char));
}

void EditReplay::TakeAgain(CSimEditLine& record) {
    if (record.Record().Char == kLineBreak)
        Join();
    else
        Delete();
}

/// A break that left its line empty is taken back by joining that line to the one before, which has
/// the same result and leaves the place right for doing it again.
void EditReplay::TakeBack(CSimEditLine& record) {
    const JournalFields& fields = record.Record();
    if (fields.Char != kLineBreak)
        return Delete();
    if (fields.Row < 1)
        return Join();
    const std::int32_t row = fields.Column == 0 ? fields.Row : fields.Row + 1;
    if (row >= m_document.LineCount())
        return;
    m_keys.PutCaret(row, 0);
    m_keys.PressBackspace();
    PlaceRecordAtCaret(record);
}

void EditReplay::PutAgain(CSimEditLine& record) {
    PutBack(record);
    if (record.Record().Char == kLineBreak)
        PlaceRecordAtCaret(record);
}

void EditReplay::PutOldOver(CSimEditLine& record) {
    Delete();
    m_keys.TypeChar(static_cast<char>(record.Record().Char));
}

void EditReplay::PutNewOver(CSimEditLine& record) {
    Delete();
    if (record.Record().Type == kOverwrittenByTab)
        m_keys.TypeChar('\t');
    else if (!record.Text().empty())
        m_keys.TypeChar(record.Text().front());
}

void EditReplay::PutLineBack(CSimEditLine& record) {
    const std::int32_t row = std::clamp(record.Record().Row, 0, m_document.LineCount());
    m_document.InsertLine(row, 0, 0, record.GetText());
    m_keys.PutCaret(row, 0);
    m_keys.LineChanged(row);
}

void EditReplay::TakeLine(CSimEditLine& record) {
    const std::int32_t row = m_keys.CaretRow();
    if (record.Record().Column != 0 || record.Record().EndColumn != -1 ||
        m_document.LineCount() == 1)
        return;
    m_document.DeleteLine(row, 0, 0);
    PutCaretNear(row, 0);
}

void EditReplay::TakeTextBack(CSimEditLine& record) {
    if (!IsRange(record.Record()))
        return TakeLine(record);
    TakeRange(record);
    if (record.Record().Char == kLineBreak)
        Join();
}

void EditReplay::PutTextAgain(CSimEditLine& record) {
    if (!IsRange(record.Record()))
        return PutLineBack(record);
    const std::int32_t row = m_keys.CaretRow();
    const std::int32_t column = m_keys.CaretColumn();
    if (record.Record().Char == kLineBreak)
        m_keys.PressReturn();
    m_keys.PutCaret(row, column);
    m_document.InsertString(row, column, record.Record().EndColumn, record.GetText(), 0, 0);
    m_keys.LineChanged(row);
}

void EditReplay::RestoreLine(CSimEditLine& record) {
    const std::int32_t row = m_keys.CaretRow();
    m_document.DeleteLine(row, 0, 0);
    m_document.InsertLine(row, 0, 0, record.GetText());
    PutCaretNear(row, record.Record().Column);
    m_keys.LineChanged(row);
}

void EditReplay::TakeRange(CSimEditLine& record) {
    const std::int32_t row = m_keys.CaretRow();
    const std::int32_t column = m_keys.CaretColumn();
    const std::int32_t end =
        std::clamp(record.Record().EndColumn, column, m_document.Line(row).Length());
    m_document.DelRange(row, column, end, 0, 0);
}

void EditReplay::PutTab(CSimEditLine&) {
    m_keys.TypeChar('\t');
}

void EditReplay::PutTabAgain(CSimEditLine& record) {
    if (record.Record().Char == kLineBreak)
        m_keys.PressReturn();
    else
        m_keys.TypeChar('\t');
}

/// A character behind the caret goes, but no line break.
void EditReplay::Delete() {
    if (m_keys.CaretColumn() < m_document.Line(m_keys.CaretRow()).Length())
        m_keys.PressDelete();
}

/// The line break at the end of the caret's line goes.
void EditReplay::Join() {
    const std::int32_t row = m_keys.CaretRow();
    if (row + 1 == m_document.LineCount())
        return;
    m_keys.PutCaret(row, m_document.Line(row).Length());
    m_keys.PressDelete();
}

void EditReplay::PlaceRecordAtCaret(CSimEditLine& record) const {
    JournalFields fields = record.Record();
    fields.Row = m_keys.CaretRow();
    fields.Column = m_keys.CaretColumn();
    record.SetRecord(fields);
}
