#include "cell_grid.h"

#include <algorithm>

namespace {

/// The number of the first cell whose middle isn't before a pixel.
int FirstFrom(int pixel, int size) {
    const int shifted = pixel - size / 2 + size - 1;
    return shifted >= 0 ? shifted / size : -((-shifted + size - 1) / size);
}

/// A distance in cells, rounded to the nearest number.
int NearestCells(int pixels, int size) {
    return (pixels + (pixels < 0 ? -size : size) / 2) / size;
}

} // namespace

void CellGrid::Resize(CSize pixels) {
    const int columns = std::max(0, (pixels.cx + kCellSize.cx - 1) / kCellSize.cx);
    const int rows = std::max(0, (pixels.cy + kCellSize.cy - 1) / kCellSize.cy);
    std::vector<Cell> cells(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
    for (int row = 0; row < std::min(rows, m_Rows); ++row)
        for (int column = 0; column < std::min(columns, m_Columns); ++column)
            cells[static_cast<std::size_t>(row * columns + column)] = At(row, column);
    m_Cells = std::move(cells);
    m_Rows = rows;
    m_Columns = columns;
}

Cell& CellGrid::At(int row, int column) {
    return m_Cells[static_cast<std::size_t>(row * m_Columns + column)];
}

Cell CellGrid::GetCell(int row, int column) const {
    if (row < 0 || row >= m_Rows || column < 0 || column >= m_Columns)
        return {};
    return m_Cells[static_cast<std::size_t>(row * m_Columns + column)];
}

std::u16string CellGrid::GetRowText(int row) const {
    std::u16string text;
    for (int column = 0; column < m_Columns; ++column)
        text += GetCell(row, column).m_Character;
    text.resize(text.find_last_not_of(u' ') + 1);
    return text;
}

CRect CellGrid::CellsOf(const CRect& rect) const {
    return CRect{FirstFrom(rect.left, kCellSize.cx), FirstFrom(rect.top, kCellSize.cy),
                 FirstFrom(rect.right, kCellSize.cx), FirstFrom(rect.bottom, kCellSize.cy)}
        .Intersect({0, 0, m_Columns, m_Rows});
}

void CellGrid::Fill(const CRect& rect, ColorRef color) {
    const CRect cells = CellsOf(rect);
    for (int row = cells.top; row < cells.bottom; ++row)
        for (int column = cells.left; column < cells.right; ++column)
            At(row, column) = {.m_Background = color};
}

void CellGrid::Invert(const CRect& rect) {
    const CRect cells = CellsOf(rect);
    for (int row = cells.top; row < cells.bottom; ++row)
        for (int column = cells.left; column < cells.right; ++column)
            At(row, column).m_Inverted ^= true;
}

Cell* CellGrid::Find(CPoint at, const CRect& clip) {
    const CPoint middle{at.x + kCellSize.cx / 2, at.y + kCellSize.cy / 2};
    if (middle.x < 0 || middle.y < 0 || !clip.Contains(middle))
        return nullptr;
    const int row = middle.y / kCellSize.cy;
    const int column = middle.x / kCellSize.cx;
    return row < m_Rows && column < m_Columns ? &At(row, column) : nullptr;
}

void CellGrid::Scroll(CSize distance, const CRect& area) {
    const CRect cells = CellsOf(area);
    const int down = NearestCells(distance.cy, kCellSize.cy);
    const int right = NearestCells(distance.cx, kCellSize.cx);
    const std::vector<Cell> before = m_Cells;
    for (int row = cells.top; row < cells.bottom; ++row)
        for (int column = cells.left; column < cells.right; ++column)
            if (cells.Contains({column - right, row - down}))
                At(row, column) =
                    before[static_cast<std::size_t>((row - down) * m_Columns + column - right)];
}
