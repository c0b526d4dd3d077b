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
        /* kTabInserted */ {&R::TakeBack, &R::PutTab},
        /* kOverwrittenByTab */ {&R::PutOldOver, &R::PutNewOver},
    }};
    const auto type = static_cast<std::size_t>(record.Record().Type);
    return kActions[std::min(type, kActions.size() - 1)];
}

/// Puts the caret at the record's place, or the nearest that there is, and acts.
void EditReplay::Replay(CSimEditLine& record, Action action) {
    m_lastRow = record.Record().Row;
    m_row = std::clamp(m_lastRow, 0, std::max(m_document.LineCount() - 1, 0));
    m_column = std::clamp(record.Record().Column, 0, m_document.Line(m_row).Length());
    (this->*action)(record);
}

void EditReplay::PutBack(CSimEditLine& record) {
    if (record.Record().Char == kLineBreak)
        Return();
    else
        Type(static_cast<char>(record.Record().Char));
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
    if (record.Record().Char != kLineBreak)
        return Delete();
    if (record.Record().Row < 1)
        return Join();
    if (record.Record().Column == 0 && m_row > 0) {
        m_row -= 1;
        m_column = m_document.Line(m_row).Length();
    }
    Join();
    PlaceRecordAtCaret(record);
}

void EditReplay::PutAgain(CSimEditLine& record) {
    if (record.Record().Char != kLineBreak)
        return Type(static_cast<char>(record.Record().Char));
    Return();
    PlaceRecordAtCaret(record);
}

void EditReplay::PutOldOver(CSimEditLine& record) {
    Delete();
    Type(static_cast<char>(record.Record().Char));
}

void EditReplay::PutNewOver(CSimEditLine& record) {
    Delete();
    if (record.Record().Type == kOverwrittenByTab)
        Type('\t');
    else if (!record.Text().empty())
        Type(record.Text().front());
}

void EditReplay::PutLineBack(CSimEditLine& record) {
    const std::int32_t row = std::clamp(record.Record().Row, 0, m_document.LineCount());
    m_document.InsertLine(row, 0, 0, record.GetText());
}

void EditReplay::TakeLine(CSimEditLine& record) {
    if (record.Record().Column == 0 && record.Record().EndColumn == -1 &&
        m_document.LineCount() > 1)
        m_document.DeleteLine(m_row, 0, 0);
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
    const std::int32_t row = m_row;
    const std::int32_t column = m_column;
    if (record.Record().Char == kLineBreak)
        Return();
    m_row = row;
    m_column = column;
    m_document.InsertString(row, column, record.Record().EndColumn, record.GetText(), 0, 0);
}

void EditReplay::RestoreLine(CSimEditLine& record) {
    m_document.DeleteLine(m_row, 0, 0);
    m_document.InsertLine(m_row, 0, 0, record.GetText());
}

void EditReplay::TakeRange(CSimEditLine& record) {
    const std::int32_t end =
        std::clamp(record.Record().EndColumn, m_column, m_document.Line(m_row).Length());
    m_document.DelRange(m_row, m_column, end, 0, 0);
}

void EditReplay::PutTab(CSimEditLine&) {
    Type('\t');
}

void EditReplay::Delete() {
    std::int32_t width = 0;
    if (m_column < m_document.Line(m_row).Length())
        m_document.DelChar(m_row, m_column, 0, width);
}

void EditReplay::Join() {
    if (m_column == m_document.Line(m_row).Length() && m_row + 1 < m_document.LineCount())
        m_document.CatLine(m_row, 0, 0);
}

void EditReplay::Return() {
    m_document.SplitLine(m_row, m_column, 0, 0, 0);
    m_row += 1;
    m_column = 0;
}

void EditReplay::Type(char character) {
    std::int32_t width = 0;
    m_document.InsertChar(m_row, m_column, character, 0, width);
    m_column += width;
}

void EditReplay::PlaceRecordAtCaret(CSimEditLine& record) const {
    JournalFields fields = record.Record();
    fields.Row = m_row;
    fields.Column = m_column;
    record.SetRecord(fields);
}
