/// EditorAccess: an editor as hosts look at it and drive it beside the contract.
#pragma once

#include "edit_replay.h"
#include "ieditor_driver.h"
#include "ieditor_inspector.h"

class CBaseEditor;
class CSimEditLine;
class CSimEditView;
class RecordList;

/// The part of an editor that answers IEditorInspector and IEditorDriver; the language is the
/// script editor's to answer.
class EditorAccess : public IEditorInspector, public IEditorDriver {
public:
    EditorAccess(const EditorAccess&) = delete;
    EditorAccess& operator=(const EditorAccess&) = delete;

    // IEditorInspector
    int GetLineCount() override;
    std::string_view GetLineText(int row) override;
    void GetLineTabs(int row, std::vector<TabSpan>& tabs) override;
    void GetLineColors(int row, std::vector<ColorSpan>& colors) override;
    int GetLineRangeIn(int row) override;
    int GetLineRangeOut(int row) override;
    bool HasBookmark(int row) override;
    int GetBookmarkCount() override;
    bool IsModified() override;
    std::uint64_t GetChangeCount() override { return m_Changes; }
    LineEnds GetLineEnds() override;
    void GetArchive(std::string& bytes) override;
    void GetTitle(AString& title) override;
    void GetLanguage(AString& language) override;
    int GetSyntaxIndex() override;
    int GetUndoCount() override;
    int GetRedoCount() override;
    void GetUndoRecords(std::vector<JournalEntry>& records) override;
    void GetRedoRecords(std::vector<JournalEntry>& records) override;
    int GetReplacedInputs() override { return m_ReplacedInputs; }
    std::optional<CaretState> GetCaret() override;
    std::optional<SelectionState> GetSelection() override;
    std::optional<ScrollState> GetScroll() override;
    std::optional<PrintState> GetPrint() override;

    // IEditorDriver
    bool InsertLine(int row, bool record, bool first, std::string_view text) override;
    bool DeleteLine(int row, bool record, bool first) override;
    std::optional<int> InsertChar(int row, int column, char character, bool record) override;
    std::optional<int> OverwriteChar(int row, int column, char character, bool record) override;
    std::optional<int> InsertString(int row, int column, std::string_view text, bool record,
                                    bool first) override;
    bool SplitLine(int row, int column, bool first, int indent, bool record) override;
    std::optional<int> CatLine(int row, bool first, bool record) override;
    std::optional<int> DelChar(int row, int column, bool record) override;
    bool DelRange(int row, int column, int endColumn, bool first, bool record) override;
    void NotifyEdited(int firstRow) override;
    void SetModified(bool modified) override;
    bool SetCaret(TextPosition place) override;
    bool LoadArchive(std::string_view bytes, bool mayStop) override;
    bool RunCommand(unsigned id) override;
    bool Select(TextPosition anchor, TextPosition end, bool block) override;
    bool SetLanguage(const AString& language) override;
    int UndoEdit(int count) override;
    int RedoEdit(int count) override;

    /// Text typed or pasted had characters that were replaced.
    void NoteReplacedInput() { ++m_ReplacedInputs; }
    /// The text has changed.
    void NoteChange() { ++m_Changes; }

protected:
    /// @param editor the editor of which this is a part
    explicit EditorAccess(CBaseEditor& editor) : m_Editor(editor) {}
    ~EditorAccess() = default;

private:
    bool HasRow(int row) const;
    bool HasPlace(int row, int column) const;
    /// The active view, else the first one, else null.
    CSimEditView* GetViewInUse() const;
    int Replayed(std::int32_t (EditReplay::*replay)(), int count);

    CBaseEditor& m_Editor;
    int m_ReplacedInputs = 0;
    std::uint64_t m_Changes = 0;
};
