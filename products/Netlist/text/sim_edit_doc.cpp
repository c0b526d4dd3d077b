#include "sim_edit_doc.h"

#include "assertion.h"
#include "editor_options.h"
#include "line_scan.h"
#include "record_type.h"

#include <limits>
#include <utility>

namespace {

/// Records that the journal holds at the most; a negative option sets no bound.
std::size_t UndoLimit() {
    const std::int32_t limit = CurrentOptions().NumberOfUndos;
    return limit >= 0 ? static_cast<std::size_t>(limit) : std::numeric_limits<std::size_t>::max();
}

unsigned char CharAt(const CSimEditLine& line, std::int32_t column) {
    return column < line.Length()
               ? static_cast<unsigned char>(line.Text()[static_cast<std::size_t>(column)])
               : 0;
}

/// What "%c" makes of a character.
std::string_view AsText(const char& character) {
    return {&character, character != 0 ? std::size_t{1} : std::size_t{0}};
}

} // namespace

CSimEditDoc::CSimEditDoc() : m_front(m_lines) {
    InsertLine(0, 0, 0);
}

CSimEditDoc::~CSimEditDoc() {
    m_lines.Clear();
    m_undo.Clear();
    m_redo.Clear();
}

const CSyntaxDscr* CSimEditDoc::SetSyntaxDscr(const CSyntaxDscr* syntax) {
    if (syntax != m_syntax)
        m_front.KeepAll(m_syntax, syntax);
    m_syntax = syntax;
    return m_syntax;
}

const CSimEditLine& CSimEditDoc::ColouredLine(std::int32_t row) {
    m_front.Ensure(Index(row), m_syntax);
    return At(row);
}

std::int32_t CSimEditDoc::RangeOut(std::int32_t row) {
    return m_front.RangeOut(Index(row), m_syntax);
}

void CSimEditDoc::SetBookmark(std::int32_t row, std::int32_t bookmark) {
    USE_ASSERT(HasRow(row));
    if (!HasRow(row))
        return;
    m_bookmarkCount += (bookmark != 0) - (Line(row).Bookmark() != 0);
    At(row).SetBookmark(bookmark);
}

void CSimEditDoc::PutLine(std::int32_t row, std::unique_ptr<CSimEditLine> line) {
    m_front.Inserting(Index(row), m_colouring != 0, m_syntax);
    m_lines.Insert(Index(row), std::move(line));
    m_front.Inserted(Index(row), m_colouring != 0);
}

std::unique_ptr<CSimEditLine> CSimEditDoc::TakeLine(std::int32_t row) {
    if (m_colouring == 0 && HasRow(row + 1))
        m_front.KeepStale(Index(row + 1), m_syntax);
    if (Line(row).Bookmark() != 0)
        --m_bookmarkCount;
    auto line = m_lines.Take(Index(row));
    m_front.Removed(Index(row));
    return line;
}

CSimEditLine& CSimEditDoc::Touch(std::int32_t row) {
    if (m_colouring == 0)
        m_front.KeepStale(Index(row), m_syntax);
    return At(row);
}

void CSimEditDoc::Recolour(std::int32_t row, std::int32_t stopEarly) {
    if (m_colouring != 0 && HasRow(row))
        m_front.Recolour(Index(row), stopEarly != 0, m_syntax);
}

void CSimEditDoc::PutOffColours(std::int32_t row) {
    if (HasRow(row))
        m_front.PutOff(Index(row));
}

void CSimEditDoc::InsertLine(std::int32_t row, std::int32_t record, std::int32_t first,
                             std::string_view text) {
    const bool valid = row >= 0 && row <= LineCount() && CSimEditLine::HasRoomFor(text, 0);
    USE_ASSERT(valid);
    if (!valid)
        return;
    if (record != 0) {
        text = BeforeLineEnd(text);
        InsertNewUndo(kTextInserted, row, 0, first, 0, text, -1, -1);
    }
    PutLine(row, std::make_unique<CSimEditLine>(text));
    Recolour(row, 1);
}

void CSimEditDoc::DeleteLine(std::int32_t row, std::int32_t record, std::int32_t first) {
    USE_ASSERT(HasRow(row));
    if (!HasRow(row))
        return;
    auto line = TakeLine(row);
    if (record != 0) {
        line->SetBookmark(0);
        line->SetRecord({.Type = kLineDeleted,
                         .Column = 0,
                         .Row = row,
                         .EndColumn = -1,
                         .EndRow = -1,
                         .First = first,
                         .Char = line->Record().Char});
        InsertNewUndo(std::move(line));
    }
    Recolour(row, 1);
}

std::string_view CSimEditDoc::InsertChar(std::int32_t row, std::int32_t column, char character,
                                         std::int32_t record, std::int32_t& width) {
    width = 0;
    const bool valid = CanInsert(row, column, {&character, 1}) && !IsLineEnd(character);
    USE_ASSERT(valid);
    if (!valid)
        return {};
    if (record != 0 && character == '\t')
        InsertNewUndo(kTabInserted, row, column, 1, kTab, "Tab", -1, -1);
    else if (record != 0)
        InsertNewUndo(kInserted, row, column, 1, static_cast<unsigned char>(character),
                      AsText(character), -1, -1);
    width = Touch(row).InsertChar(column, character);
    Recolour(row, 1);
    return Line(row).Text();
}

std::string_view CSimEditDoc::OverwriteChar(std::int32_t row, std::int32_t column, char character,
                                            std::int32_t record, std::int32_t& width) {
    width = 0;
    const bool valid = CanInsert(row, column, {&character, 1}) && !IsLineEnd(character);
    USE_ASSERT(valid);
    if (!valid)
        return {};
    if (column == Line(row).Length())
        return InsertChar(row, column, character, record, width);
    const unsigned char overwritten = CharAt(Line(row), column);
    if (record != 0 && character == '\t')
        InsertNewUndo(kOverwrittenByTab, row, column, 1, overwritten, "Tab", -1, -1);
    else if (record != 0)
        InsertNewUndo(kOverwritten, row, column, 1, overwritten, AsText(character), -1, -1);
    width = Touch(row).OverwriteChar(column, character);
    Recolour(row, 1);
    return Line(row).Text();
}

void CSimEditDoc::InsertString(std::int32_t row, std::int32_t column, std::int32_t endColumn,
                               std::string_view text, std::int32_t record, std::int32_t first) {
    const bool valid = CanInsert(row, column, text);
    USE_ASSERT(valid);
    if (!valid)
        return;
    const std::string_view line = BeforeLineEnd(text);
    const std::int32_t width = Touch(row).InsertString(column, line);
    if (line.size() != text.size())
        endColumn = column + width;
    if (record != 0 && endColumn > column)
        InsertNewUndo(kTextInserted, row, column, first, 0, line, endColumn, row);
    Recolour(row, 1);
}

void CSimEditDoc::SplitLine(std::int32_t row, std::int32_t column, std::int32_t first,
                            std::int32_t indent, std::int32_t record) {
    USE_ASSERT(HasPlace(row, column));
    if (!HasPlace(row, column))
        return;
    if (record != 0)
        InsertNewUndo(kInserted, row, column, first, kLineBreak, "SplitLine", -1, -1);
    CSimEditLine& line = Touch(row);
    auto rest = std::make_unique<CSimEditLine>(line);
    line.DelRange(column, line.Length());
    rest->DelRange(0, column);
    PutLine(row + 1, std::move(rest));
    if (m_replaying == 0 && indent >= 1 && Line(row + 1).Length() == 0)
        AppendBlanksWithRecords(row + 1, indent);
    Recolour(row, 1);
    Recolour(row + 1, 1);
}

void CSimEditDoc::AppendBlanksWithRecords(std::int32_t row, std::int32_t count) {
    for (std::int32_t column = 0; column < count; ++column) {
        At(row).InsertChar(column, ' ');
        InsertNewUndo(kInserted, row, column, 0, ' ', "leerz", -1, -1);
    }
}

std::int32_t CSimEditDoc::CatLine(std::int32_t row, std::int32_t first, std::int32_t record) {
    const bool valid = HasRow(row) && HasRow(row + 1) && HasRoomFor(row, Line(row + 1).Text());
    USE_ASSERT(valid);
    if (!valid)
        return 0;
    const std::int32_t length = Line(row).Length();
    if (record != 0)
        InsertNewUndo(kDeleted, row, length, first, kLineBreak, {}, -1, -1);
    Touch(row).Append(Touch(row + 1));
    DeleteLine(row + 1, 0, 0);
    Recolour(row, 1);
    return length;
}

void CSimEditDoc::DelChar(std::int32_t row, std::int32_t column, std::int32_t record,
                          std::int32_t& width) {
    width = 0;
    const bool valid = HasPlace(row, column) && column < Line(row).Length();
    USE_ASSERT(valid);
    if (!valid)
        return;
    if (record != 0 && Line(row).TabAt(column) != nullptr)
        InsertNewUndo(kTabDeleted, row, column, 1, kTab, "DelTab", -1, -1);
    else if (record != 0)
        InsertNewUndo(kDeleted, row, column, 1, CharAt(Line(row), column), "DelChar", -1, -1);
    width = Touch(row).DelChar(column);
    Recolour(row, 1);
}

void CSimEditDoc::DelRange(std::int32_t row, std::int32_t column, std::int32_t endColumn,
                           std::int32_t first, std::int32_t record) {
    const bool valid = HasPlace(row, column) && HasPlace(row, endColumn) && column <= endColumn;
    USE_ASSERT(valid);
    if (!valid)
        return;
    if (record != 0 && endColumn != column)
        InsertNewUndo(kRangeDeleted, row, column, first, 0, Line(row).Text(), endColumn, row);
    Touch(row).DelRange(column, endColumn);
    Recolour(row, 1);
}

std::int32_t CSimEditDoc::TabAt(std::int32_t row, std::int32_t column, std::int32_t& start,
                                std::int32_t& width) const {
    const TabEntry* tab = HasRow(row) ? Line(row).TabAt(column) : nullptr;
    start = tab != nullptr ? tab->Position : -1;
    width = tab != nullptr ? tab->Width : 0;
    return tab != nullptr;
}

void CSimEditDoc::InsertNewUndo(std::int32_t type, std::int32_t row, std::int32_t column,
                                std::int32_t first, unsigned char character, std::string_view text,
                                std::int32_t endColumn, std::int32_t endRow) {
    if (UndoLimit() == 0)
        return;
    const JournalFields fields{.Type = type,
                               .Column = column,
                               .Row = row,
                               .EndColumn = endColumn,
                               .EndRow = endRow,
                               .First = first,
                               .Char = character};
    InsertNewUndo(std::make_unique<CSimEditLine>(fields, text));
}

void CSimEditDoc::InsertNewUndo(std::unique_ptr<CSimEditLine> record) {
    if (UndoLimit() == 0)
        return;
    m_redo.Clear();
    m_undo.Append(std::move(record), UndoLimit());
}

void CSimEditDoc::InsertNewUndoFromRedo(const CSimEditLine& record) {
    m_undo.Append(std::make_unique<CSimEditLine>(record), UndoLimit());
}

void CSimEditDoc::InsertNewRedo(const CSimEditLine& record) {
    m_redo.Append(std::make_unique<CSimEditLine>(record), UndoLimit());
}

void CSimEditDoc::DelUndoNewest(std::int32_t count) {
    if (count > 0)
        m_undo.DropNewest(Index(count));
}

void CSimEditDoc::DelRedoNewest(std::int32_t count) {
    if (count > 0)
        m_redo.DropNewest(Index(count));
}

void CSimEditDoc::ClearJournal() {
    m_undo.Clear();
    m_redo.Clear();
}

namespace {

/// Checks the rules of one journal list. @return empty, or the broken rule in words
std::string CheckRecords(const RecordList& records) {
    for (std::size_t i = 0; i < records.Size(); ++i) {
        const CSimEditLine& record = records[i];
        const JournalFields& fields = record.Record();
        const bool isRange = fields.EndRow == fields.Row && fields.EndColumn >= fields.Column;
        const bool isPlace = fields.EndRow == -1 && fields.EndColumn == -1;
        if (fields.Type < kDeleted || fields.Type > kOverwrittenByTab)
            return "a record is of no kind";
        if (fields.Row < 0 || fields.Column < 0 || !(isPlace || isRange))
            return "a record has no place";
        if (record.Bookmark() != 0)
            return "a record has a bookmark";
        if (std::string broken = record.Check(); !broken.empty())
            return "record " + std::to_string(i) + ": " + broken;
    }
    return {};
}

} // namespace

std::string CSimEditDoc::Check() const {
    std::int32_t bookmarks = 0;
    for (std::int32_t row = 0; row < LineCount(); ++row) {
        bookmarks += Line(row).Bookmark() != 0;
        if (std::string broken = Line(row).Check(); !broken.empty())
            return "row " + std::to_string(row) + ": " + broken;
    }
    if (LineCount() == 0)
        return "there is no line";
    if (bookmarks != m_bookmarkCount)
        return "the bookmark count is wrong";
    std::string broken = CheckRecords(m_undo);
    return broken.empty() ? CheckRecords(m_redo) : broken;
}
