/// IEditorDriver: what a host can do to an editor, beside the contract.
#pragma once

#include <optional>
#include <string_view>

#include "astring.h"
#include "ieditor_inspector.h"
#include "quorel_export.h"

/// The number of the command that exports the text to a file of the user's choice.
inline constexpr unsigned kExportTextCommand = 42009;

/// Drives an editor. Reached by dynamic_cast from the document that GetInterface (0) gives.
///
/// The edit operations are the document's primitives, with their arguments: `record` writes a
/// journal record, `first` marks it as the oldest of a user action. They recolour, and touch
/// neither the modified flag nor the views; NotifyEdited does both. Texts are 8-bit. An operation
/// whose row or columns lie outside the text changes nothing and answers false or nothing.
class QUOREL_API IEditorDriver {
public:
    static constexpr int kMostIndent = 65535;

    /// Inserts a line before row; row may be the line count. Tabs in text count, CR and LF are
    /// refused.
    virtual bool InsertLine(int row, bool record, bool first, std::string_view text) = 0;
    /// Deletes a line; the only line of a text is refused.
    virtual bool DeleteLine(int row, bool record, bool first) = 0;
    /// Inserts a character or a tab, but no CR or LF. @return the columns that it takes
    virtual std::optional<int> InsertChar(int row, int column, char character, bool record) = 0;
    /// Overwrites a character, or appends at the line's end. @return the columns that it takes
    virtual std::optional<int> OverwriteChar(int row, int column, char character, bool record) = 0;
    /// Inserts a text without line ends. @return the column behind it
    virtual std::optional<int> InsertString(int row, int column, std::string_view text, bool record,
                                            bool first) = 0;
    /// Divides a line, the second one indented by that many blanks if it is empty. An indent above
    /// kMostIndent is refused.
    virtual bool SplitLine(int row, int column, bool first, int indent, bool record) = 0;
    /// Appends line row + 1 to line row. @return the former length of line row
    virtual std::optional<int> CatLine(int row, bool first, bool record) = 0;
    /// Deletes a character or a whole tab. @return the columns that it took
    virtual std::optional<int> DelChar(int row, int column, bool record) = 0;
    /// Deletes the columns from column up to, but not including, endColumn.
    virtual bool DelRange(int row, int column, int endColumn, bool first, bool record) = 0;

    /// Sets the modified flag and updates all views from the first changed row.
    virtual void NotifyEdited(int firstRow) = 0;

    /// Tells the editor that its text was saved (false), or is to be.
    virtual void SetModified(bool modified) = 0;
    /// Puts the caret of the view to a place, clamped to the text, without a selection, and scrolls
    /// so that it is in sight. @return false while there is no view
    virtual bool SetCaret(TextPosition place) = 0;

    /// Replaces the text by a document's archive. Every sequence of bytes is one. The modified flag
    /// stays as it is.
    /// @param mayStop whether the user may stop it
    /// @return false: stopped, the text is empty
    virtual bool LoadArchive(std::string_view bytes, bool mayStop = false) = 0;

    /// Runs a command through the active view, or through the document while it has none, if its
    /// update handler has it enabled. @return whether it ran
    virtual bool RunCommand(unsigned id) = 0;
    /// Selects in the view as a drag from one place to the other does, the places clamped to the
    /// text. @param block as with Alt held: a rectangle @return false while there is no view
    virtual bool Select(TextPosition anchor, TextPosition end, bool block) = 0;
    /// The language of a script. @return false for an editor without languages
    virtual bool SetLanguage(const AString& language) = 0;

    /// Undoes, or does again, the newest user actions of the journal, as NotifyEdited says; many at
    /// a time are painted once.
    /// @return the actions there were, at most count
    virtual int UndoEdit(int count = 1) = 0;
    virtual int RedoEdit(int count = 1) = 0;

protected:
    ~IEditorDriver() = default;
};
