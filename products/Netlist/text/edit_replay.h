/// Undo and redo of a document's journal.
#pragma once

#include "quorel_export.h"

#include <cstdint>

class CSimEditDoc;
class CSimEditLine;

/// Replays user actions of the journal on the text, without writing records: each record by the
/// edit that a key at its place would make. A record whose place has gone (a tab was lost) acts on
/// the nearest one; a character's record never joins lines.
class QUOREL_API EditReplay {
public:
    explicit EditReplay(CSimEditDoc& document) : m_document(document) {}

    /// Undoes the newest action and moves its records to the redo list; undone ones alike.
    /// @return the number of records replayed, 0 when there is none
    std::int32_t Undo();
    std::int32_t Redo();

    /// Where the caret stands after the last replay, and the row of its last record.
    std::int32_t CaretRow() const { return m_row; }
    std::int32_t CaretColumn() const { return m_column; }
    std::int32_t LastRow() const { return m_lastRow; }

private:
    using Action = void (EditReplay::*)(CSimEditLine& record);
    struct Actions {
        Action undo;
        Action redo;
    };
    static const Actions& ActionsOf(const CSimEditLine& record);

    void Replay(CSimEditLine& record, Action action);

    // What undoes or redoes a record; the names say what it does to the text.
    void PutBack(CSimEditLine& record);
    void TakeAgain(CSimEditLine& record);
    void TakeBack(CSimEditLine& record);
    void PutAgain(CSimEditLine& record);
    void PutOldOver(CSimEditLine& record);
    void PutNewOver(CSimEditLine& record);
    void PutLineBack(CSimEditLine& record);
    void TakeLine(CSimEditLine& record);
    void TakeTextBack(CSimEditLine& record);
    void PutTextAgain(CSimEditLine& record);
    void RestoreLine(CSimEditLine& record);
    void TakeRange(CSimEditLine& record);
    void PutTab(CSimEditLine& record);

    // The keys, at the caret.
    void Delete();
    void Join();
    void Return();
    void Type(char character);
    void PlaceRecordAtCaret(CSimEditLine& record) const;

    CSimEditDoc& m_document;
    std::int32_t m_row = 0;
    std::int32_t m_column = 0;
    std::int32_t m_lastRow = 0;
};
