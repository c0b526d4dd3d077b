/// Undo and redo of the journal through a CSimEditView: its own handlers take the keys of a replay.
#include "base_editor.h"
#include "edit_replay.h"
#include "paint_gathering.h"
#include "record_type.h"
#include "sim_edit_view.h"

/// The view's keyboard and caret as a replay uses them.
class CSimEditView::ReplayKeys final : public IReplayKeys {
public:
    explicit ReplayKeys(CSimEditView& view) : m_View(view) {}

    void PutCaret(std::int32_t row, std::int32_t column) override {
        m_View.m_Caret = {column, row};
    }
    std::int32_t CaretRow() const override { return m_View.m_Caret.Row; }
    std::int32_t CaretColumn() const override { return m_View.m_Caret.Column; }
    void PressDelete() override { m_View.OnKeyDown(kKeyDelete, 0); }
    void PressBackspace() override { m_View.OnKeyDown(kKeyBack, 0); }
    void PressReturn() override { m_View.OnKeyDown(kKeyReturn, 0); }
    void TypeChar(char character) override {
        if (CanBeTyped(character))
            m_View.TypeChar(character);
    }
    void LineChanged(std::int32_t row) override { m_View.RaiseMaxLineLength(row); }

private:
    CSimEditView& m_View;
};

namespace {

/// Sets a flag to false for as long as it lives.
class Off {
public:
    explicit Off(bool& flag) : m_Flag(flag) { m_Flag = false; }
    Off(const Off&) = delete;
    Off& operator=(const Off&) = delete;
    ~Off() { m_Flag = true; }

private:
    bool& m_Flag;
};

bool ChangesRows(std::int32_t recordType) {
    return recordType == kLineDeleted || recordType == kTextInserted || recordType == kRangeDeleted;
}

} // namespace

std::int32_t CSimEditView::UndoEdit(std::int32_t count) {
    return ReplayActions(count, &EditReplay::Undo, &CSimEditDoc::UndoList);
}

std::int32_t CSimEditView::RedoEdit(std::int32_t count) {
    return ReplayActions(count, &EditReplay::Redo, &CSimEditDoc::RedoList);
}

std::int32_t CSimEditView::ReplayActions(std::int32_t count, std::int32_t (EditReplay::*replay)(),
                                         const RecordList& (CSimEditDoc::*list)() const) {
    CSimEditDoc* const document = GetTextDocument();
    if (!document)
        return 0;
    const PaintGathering gathering(*document);
    ReplayKeys keys(*this);
    EditReplay replayed(*document, keys);
    std::int32_t done = 0;
    for (bool more = true; more && done < count; done += more) {
        if (m_Selected)
            CancelSelection();
        const Off recording(m_Recording);
        const std::int32_t records = (replayed.*replay)();
        more = records != 0;
        if (records != 1 || (document->*list)().Empty() || ChangesRows(replayed.LastType())) {
            HideCaret();
            document->UpdateAllViews(nullptr, replayed.LastRow());
            EnsureVisible(true);
        }
        if (more)
            document->SetModifiedFlag();
        document->UpdateAllViews(nullptr, 0);
    }
    return done;
}
