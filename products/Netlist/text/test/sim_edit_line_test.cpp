#include "sim_edit_line.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <stdexcept>

namespace {

/// A line as its characters, tabs included: the twin that counts columns anew each time.
class CountedLine {
public:
    explicit CountedLine(std::string raw) : m_raw(std::move(raw)) {}
    const std::string& Raw() const { return m_raw; }

    std::string Expanded() const {
        std::string text;
        for (const char c : m_raw)
            text.append(c == '\t' ? 4 - text.size() % 4 : 1, c == '\t' ? ' ' : c);
        return text;
    }
    /// Index of the character at a column; a tab that the column cuts becomes blanks first.
    std::size_t IndexAt(std::size_t column) {
        std::size_t at = 0;
        for (std::size_t i = 0; i < m_raw.size(); ++i) {
            if (at == column)
                return i;
            const std::size_t width = m_raw[i] == '\t' ? 4 - at % 4 : 1;
            if (at + width > column) {
                m_raw.replace(i, 1, width, ' ');
                return i + column - at;
            }
            at += width;
        }
        return m_raw.size();
    }
    void Insert(std::size_t column, const std::string& text) {
        m_raw.insert(IndexAt(column), text);
    }
    void Erase(std::size_t column, std::size_t end) {
        if (column == end)
            return;
        const std::size_t last = IndexAt(end);
        const std::size_t first = IndexAt(column);
        m_raw.erase(first, IndexAt(end) == last ? last - first : IndexAt(end) - first);
    }
    std::string m_raw;
};

TEST(SimEditLine, BehavesAsCountingColumnsDoesOverRandomEdits) {
    std::mt19937 random(7);
    const auto below = [&](std::size_t n) { return static_cast<std::int32_t>(random() % n); };
    for (int round = 0; round < 300; ++round) {
        std::string start;
        for (int i = below(12); i > 0; --i)
            start += "ab \t\t"[below(5)];
        CSimEditLine line(start);
        CountedLine twin(start);
        for (int step = 0; step < 30; ++step) {
            const std::int32_t column = below(line.Text().size() + 1);
            const std::int32_t end = column + below(line.Text().size() - std::size_t(column) + 1);
            const char c = "xy \t"[below(4)];
            const char* const text =
                std::array{"p\tq", "\t\t", "pqrst", "p", "\tp"}[std::size_t(below(5))];
            switch (below(4)) {
            case 0:
                line.InsertChar(column, c);
                twin.Insert(std::size_t(column), std::string(1, c));
                break;
            case 1:
                line.DelRange(column, end);
                twin.Erase(std::size_t(column), std::size_t(end));
                break;
            case 2:
                if (column < line.Length()) {
                    const std::int32_t width = line.DelChar(column);
                    twin.Erase(std::size_t(column), std::size_t(column + width));
                }
                break;
            default:
                line.InsertString(column, text);
                twin.Insert(std::size_t(column), text);
            }
            ASSERT_EQ(line.Text(), twin.Expanded()) << "round " << round << " step " << step;
            ASSERT_EQ(line.GetText(), twin.Raw()) << "round " << round << " step " << step;
            ASSERT_EQ(line.Check(), "");
        }
    }
}

TEST(SimEditLine, GivesPartsOfItsTextWithTabsRestored) {
    const CSimEditLine line("ab\tc\td"); // tabs at 2 (2 wide) and 5 (3 wide)
    const std::tuple<int, int, const char*> rows[] = {
        {0, -1, "ab\tc\td"}, {0, 1, "ab"},  {0, 2, "ab\t"}, {3, -1, " c\td"}, {6, -1, "  d"},
        {4, 4, "c"},         {4, 5, "c\t"}, {5, 4, ""},     {9, -1, ""},      {8, 99, "d"}};
    for (const auto& [from, to, text] : rows)
        EXPECT_EQ(line.GetText(from, to), text) << from << ".." << to;
}

TEST(SimEditLine, RefusesWhatColumnsCannotCount) {
    constexpr std::size_t kMost = LineText::kMostSize;
    const std::tuple<std::size_t, std::string_view, bool> rows[] = {
        {0, "x", true},
        {kMost - 40, "12345678901234567890", true},
        {kMost - 40, "1\t3\t5\t7\t9\t1\t3\t5\t7\t9\t", false},
        {kMost, "x", false},
        {0, {"", kMost + 1}, false}, // as the size alone says
    };
    for (const auto& [columns, text, hasRoom] : rows)
        EXPECT_EQ(CSimEditLine::HasRoomFor(text, columns), hasRoom) << columns;
    EXPECT_THROW(LineText::Borrow({"", kMost + 1}), std::length_error);
}

TEST(SimEditLine, CopyKeepsTextTabsAndRecordButNotBookmarkAndColours) {
    CSimEditLine line({.Type = 5, .Column = 3, .Row = 9, .EndColumn = 4, .EndRow = 9, .First = 1},
                      "\tx");
    line.SetBookmark(1);
    const CSimEditLine copy(line);
    EXPECT_EQ(copy.Text(), "    x");
    EXPECT_EQ(copy.GetText(), "\tx");
    EXPECT_EQ(copy.Record().Row, 9);
    EXPECT_EQ(copy.Bookmark(), 0);
    EXPECT_TRUE(copy.Colors().empty());
}

} // namespace
