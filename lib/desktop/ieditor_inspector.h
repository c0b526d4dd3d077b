/// IEditorInspector: what a host can look at in an editor, beside the contract.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "astring.h"
#include "quorel_export.h"

class Undo_Manager;

/// A tab of a line: its first column and its width in columns, 1 to 4.
struct TabSpan {
    int m_Position;
    int m_Width;
    bool operator==(const TabSpan&) const = default;
};

/// A coloured span of a line, first and last column; the colour has red in its lowest byte.
struct ColorSpan {
    int m_Start;
    int m_End;
    std::uint32_t m_Color;
    bool operator==(const ColorSpan&) const = default;
};

/// A place in the text, both numbers 0-based; the column counts in the tab-expanded text.
struct TextPosition {
    int m_Row;
    int m_Column;
    bool operator==(const TextPosition&) const = default;
};

/// One record of the journal.
struct JournalEntry {
    int m_Type;
    int m_Row;
    int m_Column;
    int m_EndColumn;
    int m_EndRow;
    int m_First;
    unsigned char m_Char;
    std::string m_String; ///< expanded
    std::vector<TabSpan> m_Tabs;
};

/// Where the caret of a view stands.
struct CaretState {
    TextPosition m_Caret;
    int m_WantedColumn;
    bool m_InsertMode;
};

/// The selection of a view; anchor and end mean something only while it is selected.
struct SelectionState {
    bool m_Selected;
    bool m_Block;
    TextPosition m_Anchor;
    TextPosition m_End;
};

/// What a view shows of the text.
struct ScrollState {
    int m_TopRow;
    int m_LinesPerPage;
    int m_MaxLineLength;
};

/// A print job while it runs.
struct PrintState {
    int m_LinesPerPage;
    int m_CharsPerLine;                    ///< line numbers included
    std::vector<TextPosition> m_PageTable; ///< where each page begins, and the end
};

/// The line ends that the last load met.
enum class LineEnds { none, crLf, lf, cr, mixed };

/// Looks at an editor and changes nothing. Reached by dynamic_cast from the document that
/// GetInterface (0) gives. Texts are 8-bit, one byte a column. A row outside the text gives an
/// empty text, an empty list or -1. What belongs to a view speaks of the active view, or of the
/// first one when none is active.
class QUOREL_API IEditorInspector {
public:
    virtual int GetLineCount() = 0;
    /// The line's text as stored, tabs expanded. Valid until the text changes.
    virtual std::string_view GetLineText(int row) = 0;
    /// Replaces tabs by the line's, in ascending order.
    virtual void GetLineTabs(int row, std::vector<TabSpan>& tabs) = 0;
    /// Replaces colors by the line's spans, in ascending order, worked out by now if need be.
    virtual void GetLineColors(int row, std::vector<ColorSpan>& colors) = 0;
    /// The index of the range open where the line begins, -1 for none.
    virtual int GetLineRangeIn(int row) = 0;
    /// The index of the range open where the line ends, -1 for none.
    virtual int GetLineRangeOut(int row) = 0;
    virtual bool HasBookmark(int row) = 0;
    virtual int GetBookmarkCount() = 0;

    virtual bool IsModified() = 0;
    /// Rises whenever the text is marked as modified or replaced: two equal counts, the same text.
    virtual std::uint64_t GetChangeCount() { return 0; }
    virtual LineEnds GetLineEnds() = 0;
    /// Appends the bytes that a save writes.
    virtual void GetArchive(std::string& bytes) = 0;
    virtual void GetTitle(AString& title) = 0;
    /// The language of a script, empty for a netlist.
    virtual void GetLanguage(AString& language) = 0;
    /// The index of the syntax description in use, -1 for none.
    virtual int GetSyntaxIndex() = 0;

    /// How many records the journal holds to undo.
    virtual int GetUndoCount() = 0;
    virtual int GetRedoCount() = 0;
    /// Replaces records by the journal's, oldest first.
    virtual void GetUndoRecords(std::vector<JournalEntry>& records) = 0;
    virtual void GetRedoRecords(std::vector<JournalEntry>& records) = 0;

    /// The manager of the editor's own commands; null for an editor whose commands its design runs.
    virtual Undo_Manager* GetUndoManager() { return nullptr; }

    /// How often text that was typed or pasted had characters which the 8-bit text can't hold, and
    /// which stand there as question marks: a host tells its user when the number rises.
    virtual int GetReplacedInputs() { return 0; }

    /// @name Of the view; nothing while the document has none
    /// @{
    virtual std::optional<CaretState> GetCaret() { return std::nullopt; }
    virtual std::optional<SelectionState> GetSelection() { return std::nullopt; }
    virtual std::optional<ScrollState> GetScroll() { return std::nullopt; }
    /// Nothing also while no job runs.
    virtual std::optional<PrintState> GetPrint() { return std::nullopt; }
    /// @}

protected:
    ~IEditorInspector() = default;
};
