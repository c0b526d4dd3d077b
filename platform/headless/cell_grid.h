/// CellGrid: a window's picture as cells of characters.
#pragma once

#include <string>
#include <vector>

#include "geometry.h"
#include "quorel_export.h"

/// The size of a cell in pixels, the same for every font.
inline constexpr CSize kCellSize{8, 16};

/// What one cell shows.
struct Cell {
    char16_t m_Character = u' ';
    ColorRef m_Color = kBlack;
    ColorRef m_Background = kWhite;
    bool m_Inverted = false;
    bool operator==(const Cell&) const = default;
};

/// Rows and columns of cells. Rectangles are in pixels and touch the cells whose middle they hold.
class QUOREL_API CellGrid {
public:
    explicit CellGrid(CSize pixels) { Resize(pixels); }

    /// Makes room for a client area; what stood in cells that stay is kept.
    void Resize(CSize pixels);
    int GetRowCount() const { return m_Rows; }
    int GetColumnCount() const { return m_Columns; }
    /// A cell outside the grid is an empty one.
    Cell GetCell(int row, int column) const;
    /// The characters of a row, blanks at its end left out.
    std::u16string GetRowText(int row) const;

    void Fill(const CRect& rect, ColorRef color);
    void Invert(const CRect& rect);
    /// The cell for a character whose upper left corner is at that place; null when its middle lies
    /// outside of clip or grid.
    Cell* Find(CPoint at, const CRect& clip);
    /// Moves the cells of an area. Where none comes from inside the area, the old ones stay.
    void Scroll(CSize distance, const CRect& area);

private:
    /// The rows and columns (in left to bottom) whose middles lie in the rectangle.
    CRect CellsOf(const CRect& rect) const;
    Cell& At(int row, int column);

    int m_Rows = 0;
    int m_Columns = 0;
    std::vector<Cell> m_Cells;
};
