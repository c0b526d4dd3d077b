#include "colour_front.h"

#include "line_store.h"
#include "sim_edit_line.h"

#include <algorithm>

std::size_t ColourFront::s_rowsAtOnce = 500;

std::int32_t ColourFront::RangeBefore(std::size_t row) const {
    return row == 0 ? -1 : m_lines[row - 1].RangeOut();
}

void ColourFront::Restart(bool colouring) {
    m_front = colouring ? 0 : m_lines.Size();
    m_carried = -1;
    m_staleBegin = 0;
    m_staleEnd = m_front;
}

void ColourFront::Ensure(std::size_t row, const CSyntaxDscr* syntax) {
    const std::size_t end = std::min(row + 1, m_lines.Size());
    for (; m_front < end; ++m_front) {
        m_lines[m_front].ColourLine(m_carried, syntax);
        m_carried = m_lines[m_front].RangeOut();
    }
}

void ColourFront::KeepStale(std::size_t row, const CSyntaxDscr* syntax) {
    Ensure(row, syntax);
    if (m_staleBegin == m_staleEnd)
        m_staleBegin = m_staleEnd = row;
    m_staleBegin = std::min(m_staleBegin, row);
    m_staleEnd = std::max(m_staleEnd, row + 1);
}

void ColourFront::KeepAll(const CSyntaxDscr* syntax) {
    Ensure(m_lines.Size(), syntax);
    m_staleBegin = 0;
    m_staleEnd = m_lines.Size();
}

void ColourFront::Inserted(std::size_t row, bool colouring) {
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
    if (m_staleBegin == m_staleEnd && row < m_front)
        MakePending(row);
}

void ColourFront::ForgetStaleFrom(std::size_t row) {
    m_staleEnd = std::min(m_staleEnd, row);
    m_staleBegin = std::min(m_staleBegin, m_staleEnd);
}

void ColourFront::Recolour(std::size_t row, bool stopEarly, const CSyntaxDscr* syntax) {
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
