/// Undo and redo of a document's journal.
#pragma once

#include "quorel_export.h"
#include "replay_keys.h"

#include <cstdint>

class CSimEditDoc;
class CSimEditLine;

/// Replays user actions of the journal on the text, without writing records: each record by the
/// edit that a key at its place would make. A record whose place has gone (a tab was lost) acts on
/// the nearest one; a character's record never joins lines, and a line break's acts at its line's
/// end.
class QUOREL_API EditReplay {
public:
    /// The keys act on the document alone.
    explicit EditReplay(CSimEditDoc& document)
        : m_document(document), m_ownKeys(document), m_keys(m_ownKeys) {}
    /// @param keys outlive the replay
    EditReplay(CSimEditDoc& document, IReplayKeys& keys)
        : m_document(document), m_ownKeys(document), m_keys(keys) {}
    EditReplay(const EditReplay&) = delete;
    EditReplay& operator=(const EditReplay&) = delete;

    /// Undoes the newest action and moves its records to the redo list; undone ones alike.
    /// @return the number of records replayed, 0 when there is none
    std::int32_t Undo();
    std::int32_t Redo();

    /// Where the caret stands after the last replay, and what its last record was.
    std::int32_t CaretRow() const { return m_keys.CaretRow(); }
    std::int32_t CaretColumn() const { return m_keys.CaretColumn(); }
    std::int32_t LastRow() const { return m_lastRow; }
    std::int32_t LastType() const { return m_lastType; }

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
    void PutTabAgain(CSimEditLine& record);

    void PutCaretNear(std::int32_t row, std::int32_t column);
    void Delete();
    void Join();
    void PlaceRecordAtCaret(CSimEditLine& record) const;

    CSimEditDoc& m_document;
    PrimitiveKeys m_ownKeys;
    IReplayKeys& m_keys;
    std::int32_t m_lastRow = 0;
    std::int32_t m_lastType = 0;
};
