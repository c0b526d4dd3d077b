/// The lines of a document in order: an array with a gap where the last change was.
#pragma once

#include "quorel_export.h"

#include <cstddef>
#include <cstdlib>
#include <memory>

class CSimEditLine;

/// Owns its lines. Reading a row is constant; inserting or removing next to the last change is
/// constant, elsewhere it moves one pointer for each row between the two places.
class QUOREL_API LineStore {
public:
    LineStore() = default;
    LineStore(const LineStore&) = delete;
    LineStore& operator=(const LineStore&) = delete;
    ~LineStore();

    std::size_t Size() const { return m_capacity - m_gapLength; }
    CSimEditLine& operator[](std::size_t row) const {
        return *m_rows[row < m_gapStart ? row : row + m_gapLength];
    }

    /// Puts a line before row; row equal to Size appends. Beyond a billion lines: length_error.
    void Insert(std::size_t row, std::unique_ptr<CSimEditLine> line);
    /// Takes the line out and gives it to the caller.
    std::unique_ptr<CSimEditLine> Take(std::size_t row);
    /// Destroys all lines, the last one first, and keeps room for a few.
    void Clear();

private:
    void MoveGap(std::size_t row);
    void Grow();
    bool Resize(std::size_t capacity);

    CSimEditLine** m_rows = nullptr;
    std::size_t m_capacity = 0;
    std::size_t m_gapStart = 0;
    std::size_t m_gapLength = 0;
};
