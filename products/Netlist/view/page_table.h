/// PageTable: how the lines of a print job fall on pages.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "quorel_export.h"
#include "text_place.h"

/// The text that is printed, its two places in order. A stream goes from the first to the second, a
/// block has them as corners. Columns behind a line's end aren't printed.
struct PrintRange {
    TextRange m_Places;
    bool m_Block = false;
};

/// One row of paper: columns From up to but not including To of a row of the text.
struct PaperRow {
    std::int32_t Row = 0;
    std::int32_t From = 0;
    std::int32_t To = 0;
    bool Continues = false; ///< the text's row has begun on a paper row before
    bool operator==(const PaperRow&) const = default;
};

/// Where each page begins, worked out once: a line takes as many paper rows as it needs, an empty
/// one too. A function of the lengths of the lines, the range and the paper's size.
///
/// Cost: a step for each paper row, eight bytes for each page.
class QUOREL_API PageTable {
public:
    /// The length of a row in columns, 0 for one that isn't there.
    using LengthOf = std::function<std::int32_t(std::int32_t row)>;

    static constexpr std::size_t kMostPages = std::size_t{1} << 24;

    /// A table without pages.
    PageTable() = default;
    /// @param width columns, and @param rows paper rows of a page; below 1 they count as 1
    /// @param mostPages those behind are left out, as they are when memory runs out
    PageTable(const PrintRange& range, const LengthOf& lengthOf, std::int32_t width,
              std::int32_t rows, std::size_t mostPages = kMostPages);

    std::int32_t PageCount() const { return static_cast<std::int32_t>(m_Starts.size()); }
    /// The first place of each page, and the end.
    std::vector<TextPlace> GetPlaces() const;
    /// Calls visit for each paper row of a page, counted from 1, in order; for none when there is
    /// no such page. An empty last row of the range is no paper row.
    void ForEachRow(std::int32_t page, const LengthOf& lengthOf,
                    const std::function<void(const PaperRow&)>& visit) const;

private:
    struct Columns {
        std::int32_t From;
        std::int32_t To;
    };
    Columns ColumnsOf(std::int32_t row, std::int32_t length) const;
    bool AddPage(TextPlace start, std::size_t mostPages);

    PrintRange m_Range;
    std::int32_t m_Width = 1;
    std::vector<TextPlace> m_Starts;
    TextPlace m_End;          ///< of the range, or of what the pages hold of it
    bool m_IsComplete = true; ///< the pages hold the whole range
};
