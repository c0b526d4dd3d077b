/// Which rows of a document have their colours.
#pragma once

#include "quorel_export.h"

#include <cstddef>
#include <cstdint>

class CSyntaxDscr;
class LineStore;

/// Works out colours when they are first asked for, with the results of working them out at once.
///
/// Where no range is open at the end of any row and the description can't carry one, the rows are
/// apart: the colours of a row follow from its text alone. A row that is to be coloured is marked
/// as pending, and nothing else is known of it.
///
/// Else there is a front. The rows before the front have the colours that they would have had at
/// once. The rows from the front on are pending: what they would have had follows from their text,
/// the description and the range that was carried into the first of them. An edit while colouring
/// is off leaves rows whose colours don't follow from their text and the row before; they are kept
/// before the front, and remembered as stale until they are coloured again, since only without
/// stale rows a long run may be put off.
///
/// Rows are those of the LineStore at the time of the call. Colours change by nothing else, and the
/// description given is the one of the last Restart or KeepAll, at first null.
class QUOREL_API ColourFront {
public:
    explicit ColourFront(const LineStore& lines) : m_lines(lines) {}

    /// All rows are new: pending if colouring, else as they are.
    void Restart(bool colouring, const CSyntaxDscr* syntax);
    /// Colours the row, and what it takes to know its colours.
    void Ensure(std::size_t row, const CSyntaxDscr* syntax);
    /// The range open at a row's end, -1 if none. Colours only what it takes to know that.
    std::int32_t RangeOut(std::size_t row, const CSyntaxDscr* syntax);
    /// Before row changes, or the row before it goes, and neither will be recoloured.
    void KeepStale(std::size_t row, const CSyntaxDscr* syntax);
    /// Before the description changes from syntax to another one: colours all rows by syntax, and
    /// makes them stale.
    void KeepAll(const CSyntaxDscr* syntax, const CSyntaxDscr* next);
    /// Before a line is inserted at row.
    void Inserting(std::size_t row, bool colouring, const CSyntaxDscr* syntax);
    /// After that.
    void Inserted(std::size_t row, bool colouring);
    /// After the line at row was taken. Where colouring is off, KeepStale was called for the row
    /// behind it, which keeps the range of the line that went.
    void Removed(std::size_t row);
    /// Colours from row on, with stopEarly up to the row whose end agrees with what the next row
    /// was coloured with. A row behind the last does nothing.
    void Recolour(std::size_t row, bool stopEarly, const CSyntaxDscr* syntax);

    /// Makes the rows from row on pending where that changes no result: while rows are stale,
    /// nothing is done.
    void PutOff(std::size_t row);

    /// Rows of one run that are coloured at once before the rest is put off.
    static std::size_t s_rowsAtOnce;

private:
    bool HasNoRanges() const;
    void EnsureAll(const CSyntaxDscr* syntax);
    std::int32_t RangeBefore(std::size_t row) const;
    void MakePending(std::size_t row);
    void ForgetStaleFrom(std::size_t row);

    const LineStore& m_lines;
    bool m_apart = true;
    // Of rows that aren't apart.
    std::size_t m_front = 0;
    std::int32_t m_carried = -1; ///< the range with which the row at the front is coloured
    std::size_t m_staleBegin = 0;
    std::size_t m_staleEnd = 0;
};
