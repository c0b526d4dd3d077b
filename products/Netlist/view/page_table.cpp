#include "page_table.h"

#include <algorithm>
#include <new>

namespace {

/// Calls step for each piece of so many columns, for an empty run of columns once. @return false
/// when a step did, behind which no other came
template <class Step>
bool ForEachPiece(std::int32_t from, std::int32_t to, std::int32_t width, Step step) {
    for (; to - from > width; from += width)
        if (!step(from, from + width))
            return false;
    return step(from, to);
}

} // namespace

PageTable::PageTable(const PrintRange& range, const LengthOf& lengthOf, std::int32_t width,
                     std::int32_t rows, std::size_t mostPages)
    : m_Range(range), m_Width(std::max(width, 1)), m_End(range.m_Places.To) {
    const std::int32_t rowsOfPage = std::max(rows, 1);
    std::int32_t count = rowsOfPage; // a page is full, so that the first row begins one
    for (std::int32_t row = range.m_Places.From.Row; row <= m_End.Row && m_IsComplete; ++row) {
        const Columns columns = ColumnsOf(row, lengthOf(row));
        m_IsComplete =
            ForEachPiece(columns.From, columns.To, m_Width, [&](std::int32_t from, std::int32_t) {
                if (count == rowsOfPage) {
                    if (!AddPage({from, row}, mostPages))
                        return false;
                    count = 0;
                }
                ++count;
                return true;
            });
    }
}

bool PageTable::AddPage(TextPlace start, std::size_t mostPages) {
    try {
        if (m_Starts.size() < mostPages) {
            m_Starts.push_back(start);
            return true;
        }
    } catch (const std::bad_alloc&) {
        // The pages that are there are printed.
    }
    m_End = start;
    return false;
}

PageTable::Columns PageTable::ColumnsOf(std::int32_t row, std::int32_t length) const {
    const auto& [from, to] = m_Range.m_Places;
    if (m_Range.m_Block)
        return {from.Column, std::max(from.Column, std::min(to.Column, length))};
    const std::int32_t end = row == to.Row ? std::min(to.Column, length) : length;
    return {row == from.Row ? std::min(from.Column, end) : 0, end};
}

std::vector<TextPlace> PageTable::GetPlaces() const {
    std::vector<TextPlace> places = m_Starts;
    places.push_back(m_End);
    return places;
}

void PageTable::ForEachRow(std::int32_t page, const LengthOf& lengthOf,
                           const std::function<void(const PaperRow&)>& visit) const {
    if (page < 1 || page > PageCount())
        return;
    const auto next = static_cast<std::size_t>(page);
    const TextPlace start = m_Starts[next - 1];
    const bool isLast = page == PageCount();
    const TextPlace end = isLast ? m_End : m_Starts[next];
    for (std::int32_t row = start.Row; row <= end.Row; ++row) {
        const Columns columns = ColumnsOf(row, lengthOf(row));
        const std::int32_t from = row == start.Row ? start.Column : columns.From;
        std::int32_t to = std::max(from, columns.To);
        if (row == end.Row) {
            // Where the next page begins with the row, nothing of it is on this one.
            const bool isOnNext = end.Column == columns.From && !(isLast && m_IsComplete);
            if (end.Column == 0 || isOnNext)
                return;
            to = std::clamp(end.Column, from, to);
        }
        ForEachPiece(from, to, m_Width, [&](std::int32_t first, std::int32_t behind) {
            visit({row, first, behind, first != columns.From});
            return true;
        });
    }
}
