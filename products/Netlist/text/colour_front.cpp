#include "colour_front.h"

#include "line_store.h"
#include "sim_edit_line.h"
#include "syntax_dscr.h"

#include <algorithm>

std::size_t ColourFront::s_rowsAtOnce = 500;

namespace {

bool CanCarry(const CSyntaxDscr* syntax) {
    return syntax != nullptr && syntax->CanCarry();
}

} // namespace

std::int32_t ColourFront::RangeBefore(std::size_t row) const {
    return row == 0 ? -1 : m_lines[row - 1].RangeOut();
}

bool ColourFront::HasNoRanges() const {
    for (std::size_t row = 0; row < m_lines.Size(); ++row)
        if (m_lines[row].RangeIn() != -1 || m_lines[row].RangeOut() != -1)
            return false;
    return true;
}

void ColourFront::Restart(bool colouring, const CSyntaxDscr* syntax) {
    m_apart = !CanCarry(syntax);
    for (std::size_t row = 0; m_apart && !colouring && row < m_lines.Size(); ++row)
        m_lines[row].KeepColours();
    m_front = colouring ? 0 : m_lines.Size();
    m_carried = -1;
    m_staleBegin = 0;
    m_staleEnd = m_front;
}

void ColourFront::Ensure(std::size_t row, const CSyntaxDscr* syntax) {
    if (m_apart) {
        if (m_lines[row].IsPending())
            m_lines[row].ColourLine(-1, syntax);
        return;
    }
    for (; m_front <= row; ++m_front) {
        m_lines[m_front].ColourLine(m_carried, syntax);
        m_carried = m_lines[m_front].RangeOut();
    }
}

void ColourFront::EnsureAll(const CSyntaxDscr* syntax) {
    for (std::size_t row = 0; row < m_lines.Size(); ++row)
        Ensure(row, syntax);
}

std::int32_t ColourFront::RangeOut(std::size_t row, const CSyntaxDscr* syntax) {
    if (m_apart)
        return -1;
    Ensure(row, syntax);
    return m_lines[row].RangeOut();
}

void ColourFront::KeepStale(std::size_t row, const CSyntaxDscr* syntax) {
    Ensure(row, syntax);
    if (m_apart)
        return;
    if (m_staleBegin == m_staleEnd)
        m_staleBegin = m_staleEnd = row;
    m_staleBegin = std::min(m_staleBegin, row);
    m_staleEnd = std::max(m_staleEnd, row + 1);
}

void ColourFront::KeepAll(const CSyntaxDscr* syntax, const CSyntaxDscr* next) {
    EnsureAll(syntax);
    m_apart = !CanCarry(next) && HasNoRanges();
    for (std::size_t row = 0; m_apart && row < m_lines.Size(); ++row)
        m_lines[row].KeepColours();
    m_front = m_lines.Size();
    m_carried = RangeBefore(m_front);
    m_staleBegin = 0;
    m_staleEnd = m_front;
}

void ColourFront::Inserting(std::size_t row, bool colouring, const CSyntaxDscr* syntax) {
    if (!m_apart && !colouring && row > 0)
        Ensure(row - 1, syntax);
}

void ColourFront::Inserted(std::size_t row, bool colouring) {
    if (m_apart) {
        if (!colouring)
            m_lines[row].KeepColours();
        return;
    }
    if (row < m_front || (row == m_front && !colouring))
        ++m_front;
    if (row < m_staleBegin)
        ++m_staleBegin;
    if (row < m_staleEnd)
        ++m_staleEnd;
    if (!colouring)
        KeepStale(row, nullptr); // the row is before the front: nothing is coloured here
}

void ColourFront::Removed(std::size_t row) {
    if (m_apart)
        return;
    if (row < m_front)
        --m_front;
    if (row < m_staleBegin)
        --m_staleBegin;
    if (row < m_staleEnd)
        --m_staleEnd;
}

void ColourFront::MakePending(std::size_t row) {
    m_front = row;
    m_carried = RangeBefore(row);
}

void ColourFront::PutOff(std::size_t row) {
    if (!m_apart && m_staleBegin == m_staleEnd && row < m_front)
        MakePending(row);
}

void ColourFront::ForgetStaleFrom(std::size_t row) {
    m_staleEnd = std::min(m_staleEnd, row);
    m_staleBegin = std::min(m_staleBegin, m_staleEnd);
}

void ColourFront::Recolour(std::size_t row, bool stopEarly, const CSyntaxDscr* syntax) {
    if (m_apart) {
        const std::size_t end = stopEarly ? std::min(row + 1, m_lines.Size()) : m_lines.Size();
        for (; row < end; ++row)
            m_lines[row].SetPending();
        return;
    }
    if (!stopEarly && row < m_front) {
        ForgetStaleFrom(row);
        MakePending(row);
        return;
    }
    const std::size_t first = row;
    for (std::size_t done = 0; row < m_front; ++row, ++done) {
        m_lines[row].ColourLine(RangeBefore(row), syntax);
        if (row == m_staleBegin && m_staleBegin < m_staleEnd)
            ++m_staleBegin;
        if (row + 1 < m_front && m_lines[row + 1].RangeIn() == m_lines[row].RangeOut())
            return;
        if (done >= s_rowsAtOnce && m_staleBegin == m_staleEnd) {
            MakePending(row + 1);
            return;
        }
    }
    ForgetStaleFrom(first);
    if (row == m_front)
        m_carried = RangeBefore(row);
}
