#include "line_store.h"

#include "sim_edit_line.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace {
constexpr std::size_t kFirstRows = 64;
}

LineStore::~LineStore() {
    Clear();
    std::free(m_rows);
}

void LineStore::Insert(std::size_t row, std::unique_ptr<CSimEditLine> line) {
    if (m_gapLength == 0)
        Grow();
    MoveGap(row);
    m_rows[m_gapStart++] = line.release();
    --m_gapLength;
}

std::unique_ptr<CSimEditLine> LineStore::Take(std::size_t row) {
    MoveGap(row);
    std::unique_ptr<CSimEditLine> line(m_rows[m_gapStart + m_gapLength]);
    ++m_gapLength;
    return line;
}

void LineStore::Clear() {
    for (std::size_t row = Size(); row-- > 0;)
        delete &(*this)[row];
    m_gapStart = 0;
    m_gapLength = m_capacity;
}

void LineStore::MoveGap(std::size_t row) {
    if (row < m_gapStart)
        std::memmove(m_rows + row + m_gapLength, m_rows + row, (m_gapStart - row) * sizeof *m_rows);
    else if (row > m_gapStart)
        std::memmove(m_rows + m_gapStart, m_rows + m_gapStart + m_gapLength,
                     (row - m_gapStart) * sizeof *m_rows);
    m_gapStart = row;
}

void LineStore::Grow() {
    const std::size_t capacity = std::max(kFirstRows, m_capacity * 2);
    void* rows = std::realloc(m_rows, capacity * sizeof *m_rows);
    if (rows == nullptr)
        throw std::bad_alloc();
    m_rows = static_cast<CSimEditLine**>(rows);
    // The gap is empty here: what lies behind its place goes to the end of the larger array.
    const std::size_t behind = m_capacity - m_gapStart;
    std::memmove(m_rows + capacity - behind, m_rows + m_gapStart, behind * sizeof *m_rows);
    m_gapLength = capacity - m_capacity;
    m_capacity = capacity;
}
