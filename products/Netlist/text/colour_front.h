/// Which rows of a document have their colours.
#pragma once

#include "quorel_export.h"

#include <cstddef>
#include <cstdint>

class CSyntaxDscr;
class LineStore;

/// Works out colours when they are first asked for, with the results of working them out at once.
///
/// The rows before the front have the colours that they would have had at once. The rows from the
/// front on are pending: what they would have had follows from their text, the description and the
/// range that was carried into the first of them. An edit while colouring is off leaves rows whose
/// colours don't follow from their text and the row before; they are kept before the front, and
/// remembered as stale until they are coloured again, since only without stale rows a long run may
/// be put off.
///
/// Rows are those of the LineStore at the time of the call. Colours change by nothing else.
class QUOREL_API ColourFront {
public:
    explicit ColourFront(const LineStore& lines) : m_lines(lines) {}

    /// All rows from row on are new: pending if colouring, else as they are.
    void Restart(bool colouring);
    /// Colours the pending rows up to and with row.
    void Ensure(std::size_t row, const CSyntaxDscr* syntax);
    /// Before row changes, or the row before it goes, and neither will be recoloured.
    void KeepStale(std::size_t row, const CSyntaxDscr* syntax);
    /// Before the description changes from syntax to another one: colours all rows by syntax, and
    /// makes them stale.
    void KeepAll(const CSyntaxDscr* syntax);
    /// After a line was inserted at row. Where colouring is off, Ensure was called for the row
    /// before it.
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
    std::int32_t RangeBefore(std::size_t row) const;
    void MakePending(std::size_t row);
    void ForgetStaleFrom(std::size_t row);

    const LineStore& m_lines;
    std::size_t m_front = 0;
    std::int32_t m_carried = -1; ///< the range with which the row at the front is coloured
    std::size_t m_staleBegin = 0;
    std::size_t m_staleEnd = 0;
};
