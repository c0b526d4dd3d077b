/// How lines fall on pages.
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "page_table.h"

namespace {

using Lengths = std::vector<std::int32_t>;

PageTable::LengthOf Ask(const Lengths& lengths) {
    return [&lengths](std::int32_t row) { return lengths[static_cast<std::size_t>(row)]; };
}

PrintRange Everything(const Lengths& lengths) {
    const auto last = static_cast<std::int32_t>(lengths.size()) - 1;
    return {{{}, {lengths.back(), last}}, false};
}

std::string Dump(const std::vector<TextPlace>& places) {
    std::string text;
    for (const TextPlace& place : places)
        text += (text.empty() ? "" : " ") + std::to_string(place.Column) + ',' +
                std::to_string(place.Row);
    return text;
}

/// "row:from-to", with '+' for ':' on a row that continues; pages are parted by " | ".
std::string DumpPages(const PageTable& table, const Lengths& lengths) {
    std::string text;
    for (std::int32_t page = 1; page <= table.PageCount(); ++page) {
        text += page > 1 ? " |" : "";
        table.ForEachRow(page, Ask(lengths), [&](const PaperRow& row) {
            text += (text.empty() ? "" : " ") + std::to_string(row.Row) +
                    (row.Continues ? '+' : ':') + std::to_string(row.From) + '-' +
                    std::to_string(row.To);
        });
    }
    return text;
}

} // namespace

TEST(PageTableTest, LinesFallOnPagesAsTheyNeedRows) {
    const PrintRange kAll;
    const auto stream = [](TextPlace from, TextPlace to) { return PrintRange{{from, to}, false}; };
    const auto block = [](TextPlace from, TextPlace to) { return PrintRange{{from, to}, true}; };
    constexpr std::size_t kAny = PageTable::kMostPages;
    const struct {
        Lengths m_Lengths;
        PrintRange m_Range; ///< without extent: everything
        std::int32_t m_Width, m_Rows;
        std::size_t m_Most;
        const char* m_Places;
        const char* m_Pages;
    } kRows[] = {
        {{0}, kAll, 10, 5, kAny, "0,0 0,0", ""},
        {{3, 4, 0}, kAll, 10, 2, kAny, "0,0 0,2 0,2", "0:0-3 1:0-4 |"},
        {{20, 1}, kAll, 10, 5, kAny, "0,0 1,1", "0:0-10 0+10-20 1:0-1"},
        {{5, 25}, kAll, 10, 2, kAny, "0,0 10,1 25,1", "0:0-5 1:0-10 | 1+10-20 1+20-25"},
        {{2}, kAll, -3, 0, kAny, "0,0 1,0 2,0", "0:0-1 | 0+1-2"},
        {{9, 5, 9}, stream({4, 0}, {3, 2}), 4, 9, kAny, "4,0 3,2", "0:4-8 0+8-9 1:0-4 1+4-5 2:0-3"},
        {{9, 30}, stream({4, 1}, {17, 1}), 10, 1, kAny, "4,1 14,1 17,1", "1:4-14 | 1+14-17"},
        {{9, 5}, stream({4, 0}, {0, 1}), 10, 9, kAny, "4,0 0,1", "0:4-9"},
        {{9, 5}, stream({9, 0}, {2, 1}), 10, 9, kAny, "9,0 2,1", "0:9-9 1:0-2"},
        {{9}, stream({4, 0}, {4, 0}), 10, 9, kAny, "4,0 4,0", "0:4-4"},
        {{9, 1, 3, 0}, block({2, 0}, {5, 3}), 10, 9, kAny, "2,0 5,3", "0:2-5 1:2-2 2:2-3 3:2-2"},
        {{20, 12}, block({2, 0}, {16, 1}), 10, 2, kAny, "2,0 2,1 16,1", "0:2-12 0+12-16 | 1:2-12"},
        {{4, 4, 4}, block({0, 0}, {2, 2}), 10, 1, kAny, "0,0 0,1 0,2 2,2", "0:0-2 | 1:0-2 | 2:0-2"},
        // Pages that find no room are left out.
        {{9, 9, 9, 25}, kAll, 10, 2, 0, "0,0", ""},
        {{9, 9, 9, 25}, kAll, 10, 2, 1, "0,0 0,2", "0:0-9 1:0-9"},
        {{9, 9, 9, 25}, kAll, 10, 2, 2, "0,0 0,2 10,3", "0:0-9 1:0-9 | 2:0-9 3:0-10"},
        {{9, 9, 9, 25}, block({3, 0}, {5, 3}), 10, 2, 1, "3,0 3,2", "0:3-5 1:3-5"}};
    for (const auto& row : kRows) {
        const bool all = row.m_Range.m_Places.To == TextPlace{};
        const PageTable table(all ? Everything(row.m_Lengths) : row.m_Range, Ask(row.m_Lengths),
                              row.m_Width, row.m_Rows, row.m_Most);
        EXPECT_EQ(Dump(table.GetPlaces()), row.m_Places) << row.m_Pages;
        EXPECT_EQ(DumpPages(table, row.m_Lengths), row.m_Pages) << row.m_Places;
    }
}

/// The law: all pages one behind the other hold each column of the range once, in order, and none
/// but the last has room left.
TEST(PageTableTest, PagesHoldEveryColumnOnce) {
    std::minstd_rand random(7);
    const auto upTo = [&random](std::int32_t most) {
        return static_cast<std::int32_t>(random() % static_cast<unsigned>(most + 1));
    };
    for (int round = 0; round < 300; ++round) {
        Lengths lengths(1 + random() % 8);
        for (std::int32_t& length : lengths)
            length = upTo(12);
        const auto last = static_cast<std::int32_t>(lengths.size()) - 1;
        const std::int32_t left = upTo(4), right = left + 1 + upTo(8);
        const bool block = round % 2 == 0;
        const PrintRange range =
            block ? PrintRange{{{left, 0}, {right, last}}, true} : Everything(lengths);
        const std::int32_t width = 1 + upTo(5), rows = 1 + upTo(4);
        const PageTable table(range, Ask(lengths), width, rows);

        std::string expected, printed;
        for (std::int32_t row = 0; row <= last; ++row) {
            const std::int32_t length = lengths[static_cast<std::size_t>(row)];
            const std::int32_t from = block ? left : 0;
            const std::int32_t to = block ? std::max(left, std::min(right, length)) : length;
            if (block || row < last || length > 0)
                expected += std::to_string(row) + '(';
            for (std::int32_t column = from; column < to; ++column)
                expected += std::to_string(column) + ' ';
        }
        for (std::int32_t page = 1; page <= table.PageCount(); ++page) {
            std::int32_t count = 0;
            table.ForEachRow(page, Ask(lengths), [&](const PaperRow& row) {
                ++count;
                EXPECT_LE(row.To - row.From, width);
                if (!row.Continues)
                    printed += std::to_string(row.Row) + '(';
                for (std::int32_t column = row.From; column < row.To; ++column)
                    printed += std::to_string(column) + ' ';
            });
            EXPECT_TRUE(count == rows || (page == table.PageCount() && count < rows)) << count;
        }
        EXPECT_EQ(printed, expected) << "round " << round;
    }
}
