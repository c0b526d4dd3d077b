/// CSimEditDoc: the text of one editor, its journal and its colours.
#pragma once

#include "colour_front.h"
#include "document.h"
#include "edit_journal.h"
#include "ieditor_inspector.h"
#include "line_store.h"
#include "quorel_export.h"
#include "sim_edit_line.h"
#include "text_blocks.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class CArchive;
class CSyntaxDscr;

/// An ordered array of lines with two journal lists and the description that colours it.
///
/// Rows and columns are 0-based; a column indexes the line's expanded text. The primitives change
/// the text, write a journal record where record is nonzero, and recolour from the touched row;
/// they set no modified flag, move no caret and notify no view: their caller does. Their callers
/// keep positions inside the text; one that lies outside is an assertion, and nothing changes. So
/// is a text that would make a line longer than LineText::kMostSize. A text given has no CR or LF
/// and isn't a line's own: one behind a line end is left out, with an assertion.
/// There is always at least one line, but while a replay exchanges the only one.
///
/// Cost: an edit pays for the lines it touches; reading a row is constant. Colours are worked out
/// when first asked for, with the results of having worked them out at once.
class QUOREL_API CSimEditDoc : public CDocument {
public:
    CSimEditDoc();
    ~CSimEditDoc() override;

    /// Sets the description, borrowed, null for none. Nothing is recoloured by it: rows keep the
    /// colours of the description that was, and those that nobody has asked for yet are worked out
    /// by it now. So it must still be there; and it costs what colouring those rows costs.
    /// A description with lines to colour doesn't get further ranges.
    virtual const CSyntaxDscr* SetSyntaxDscr(const CSyntaxDscr* syntax);
    const CSyntaxDscr* SyntaxDscr() const { return m_syntax; }

    std::int32_t LineCount() const { return static_cast<std::int32_t>(m_lines.Size()); }
    /// A line's text, tabs and bookmark. Its colours are good only after ColouredLine.
    const CSimEditLine& Line(std::int32_t row) const { return m_lines[Index(row)]; }
    /// The line with its colours. Cost: the line, or those down to row that have none yet where the
    /// description lets lines depend on each other.
    const CSimEditLine& ColouredLine(std::int32_t row);
    /// The range open at the line's end, -1 if none. Costs no colouring where none can be open.
    std::int32_t RangeOut(std::int32_t row);
    /// Sets or clears a line's bookmark and keeps BookmarkCount.
    void SetBookmark(std::int32_t row, std::int32_t bookmark);
    std::int32_t BookmarkCount() const { return m_bookmarkCount; }

    /// While 0, primitives recolour nothing. Initially 1.
    std::int32_t Colouring() const { return m_colouring; }
    void SetColouring(std::int32_t on) { m_colouring = on; }
    /// 1 while records are replayed.
    std::int32_t Replaying() const { return m_replaying; }
    void SetReplaying(std::int32_t on) { m_replaying = on; }

    // Primitives. A width is given in columns: 1, or the width of a tab.

    void InsertLine(std::int32_t row, std::int32_t record, std::int32_t first,
                    std::string_view text = {});
    void DeleteLine(std::int32_t row, std::int32_t record, std::int32_t first);
    std::string_view InsertChar(std::int32_t row, std::int32_t column, char character,
                                std::int32_t record, std::int32_t& width);
    /// At the end of the line exactly InsertChar.
    std::string_view OverwriteChar(std::int32_t row, std::int32_t column, char character,
                                   std::int32_t record, std::int32_t& width);
    /// A record is written only if endColumn lies behind column.
    void InsertString(std::int32_t row, std::int32_t column, std::int32_t endColumn,
                      std::string_view text, std::int32_t record, std::int32_t first);
    /// Breaks a line. With indent above 0, outside a replay, an empty new line gets that many
    /// blanks, each with a record of its own whatever record says.
    void SplitLine(std::int32_t row, std::int32_t column, std::int32_t first, std::int32_t indent,
                   std::int32_t record);
    /// Joins the next line to this one. @return the former length of this line
    std::int32_t CatLine(std::int32_t row, std::int32_t first, std::int32_t record);
    void DelChar(std::int32_t row, std::int32_t column, std::int32_t record, std::int32_t& width);
    /// A record is written only if endColumn differs from column.
    void DelRange(std::int32_t row, std::int32_t column, std::int32_t endColumn, std::int32_t first,
                  std::int32_t record);
    /// 1 if column lies inside a tab, with the tab's start and width; else 0, -1 and 0.
    std::int32_t TabAt(std::int32_t row, std::int32_t column, std::int32_t& start,
                       std::int32_t& width) const;
    /// Colours from row on: with stopEarly only as far as the range open at a line's end differs
    /// from the one that the next line was coloured with. Nothing while Colouring is 0.
    void Recolour(std::int32_t row, std::int32_t stopEarly);
    /// Before many edits from row on: their rows are coloured once, when asked for, and not with
    /// each edit. Nobody can tell from the results.
    void PutOffColours(std::int32_t row);

    // Journal.

    void InsertNewUndo(std::int32_t type, std::int32_t row, std::int32_t column, std::int32_t first,
                       unsigned char character, std::string_view text, std::int32_t endColumn,
                       std::int32_t endRow);
    void InsertNewUndo(std::unique_ptr<CSimEditLine> record);
    void InsertNewUndoFromRedo(const CSimEditLine& record);
    void InsertNewRedo(const CSimEditLine& record);
    void DelUndoNewest(std::int32_t count);
    void DelRedoNewest(std::int32_t count);
    void ClearJournal();
    const RecordList& UndoList() const { return m_undo; }
    const RecordList& RedoList() const { return m_redo; }

    // Load and store. CR LF, CR and LF end a line on the way in. A load begins by taking the old
    // text away, and ends with a line and without a journal, whatever happens in between.

    void Serialize(CArchive& archive) override;
    /// A failing archive and a line longer than LineText::kMostSize are reported to the user; what
    /// was read before stays.
    void LoadArchive(CArchive& archive);
    /// CR LF between lines. What the archive throws comes through.
    void SaveArchive(CArchive& archive) const;
    /// As LoadArchive does.
    void SetText(const AString& text);
    /// The line ends that the last load met, SetText's included.
    LineEnds LoadedLineEnds() const { return m_lineEnds; }
    /// Appends the text with LF between lines.
    void GetText(AString& text) const;
    /// Asks for a path and writes the text there, CR LF between lines; answers the export command.
    /// A path that can't be written gives no message and no output.
    void ExportText();

    /// Checks the rules of lines, journal and counts. @return empty, or the broken rule in words
    std::string Check() const;

protected:
    const CommandMap& GetCommandMap() const override;

private:
    class Loader;

    static std::size_t Index(std::int32_t row) { return static_cast<std::size_t>(row); }
    CSimEditLine& At(std::int32_t row) { return m_lines[Index(row)]; }
    bool HasRow(std::int32_t row) const { return row >= 0 && row < LineCount(); }
    bool HasPlace(std::int32_t row, std::int32_t column) const {
        return HasRow(row) && column >= 0 && column <= Line(row).Length();
    }
    bool CanInsert(std::int32_t row, std::int32_t column, std::string_view text) const {
        return HasPlace(row, column) && HasRoomFor(row, text);
    }
    bool HasRoomFor(std::int32_t row, std::string_view text) const {
        return CSimEditLine::HasRoomFor(text, Line(row).Text().size());
    }
    void PutLine(std::int32_t row, std::unique_ptr<CSimEditLine> line);
    std::unique_ptr<CSimEditLine> TakeLine(std::int32_t row);
    /// The line, about to change.
    CSimEditLine& Touch(std::int32_t row);
    template <class Feed>
    void Load(Feed feed);
    void AppendBlanksWithRecords(std::int32_t row, std::int32_t count);
    template <class Sink>
    void SaveLines(std::string_view lineEnd, Sink sink) const;

    TextBlocks m_blocks; // before the lines, which may borrow from it
    LineStore m_lines;
    RecordList m_undo;
    RecordList m_redo;
    ColourFront m_front;
    const CSyntaxDscr* m_syntax = nullptr;
    std::int32_t m_colouring = 1;
    std::int32_t m_bookmarkCount = 0;
    std::int32_t m_replaying = 0;
    LineEnds m_lineEnds = LineEnds::none;
};
