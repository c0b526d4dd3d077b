#include "line_store.h"

#include "sim_edit_line.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>

namespace {
constexpr std::size_t kFirstRows = 64;
constexpr std::size_t kMostRows = 0x40000000; // a row is a 32-bit number
} // namespace

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
    if (m_capacity > kFirstRows)
        Resize(kFirstRows);
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
    if (m_capacity > kMostRows / 2)
        throw std::length_error("a text would have too many lines");
    const std::size_t before = m_capacity;
    if (!Resize(std::max(kFirstRows, before * 2)))
        throw std::bad_alloc();
    // The gap is empty here: what lies behind its place goes to the end of the larger array.
    const std::size_t behind = before - m_gapStart;
    std::memmove(m_rows + m_capacity - behind, m_rows + m_gapStart, behind * sizeof *m_rows);
    m_gapLength = m_capacity - before;
}

bool LineStore::Resize(std::size_t capacity) {
    void* rows = std::realloc(m_rows, capacity * sizeof *m_rows);
    if (rows == nullptr)
        return false;
    m_rows = static_cast<CSimEditLine**>(rows);
    m_capacity = capacity;
    return true;
}
