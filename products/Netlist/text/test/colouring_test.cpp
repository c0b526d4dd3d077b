#include "plain_colouring.h"
#include "sim_edit_line.h"

namespace {

TEST(Colouring, EqualsOneSearchAfterTheOther) {
    RandomLines random;
    for (const auto& description : kDescriptions) {
        CSyntaxDscr syntax;
        Fill(syntax, description.ranges, description.tokens);
        PlainColouring plain(description.ranges, description.tokens);
        for (int round = 0; round < 3000; ++round) {
            const std::string text = random.Line(round % 50 == 0 ? 150 : 12);
            const auto carried = std::int32_t(random.Below(6)) - 1;
            CSimEditLine line(text);
            line.ColourLine(carried, &syntax);
            plain.Colour(text, carried);
            ASSERT_EQ(line.Colors().ToVector(), plain.spans) << text << " after " << carried;
            ASSERT_EQ(line.RangeIn(), plain.rangeIn) << text;
            ASSERT_EQ(line.RangeOut(), plain.rangeOut) << text << " after " << carried;
        }
    }
}

TEST(Colouring, LinesThatTeachTheRules) {
    CSyntaxDscr syntax;
    Fill(syntax, kDescriptions[0].ranges, kDescriptions[0].tokens);
    using namespace std::string_literals;
    const struct {
        std::string text;
        std::int32_t carried;
        std::vector<CColorDscr> spans;
        std::int32_t rangeOut;
    } rows[] = {
        {"/* ab", -1, {{0, 4, 1}}, 0},
        {"", 0, {{0, 0, 1}}, 0},
        {"ab 1", 0, {{0, 3, 1}}, 0},
        {"x*/ ab", 0, {{0, 2, 1}, {4, 5, 102}}, -1},
        {"'1' ab", -1, {{0, 2, 2}, {4, 5, 102}}, -1},
        {"ab", 9, {{0, 1, 102}}, -1}, // no such range
        {"aba ab", -1, {{0, 2, 103}, {4, 5, 102}}, -1},
        {"1+1", -1, {{0, 0, 101}, {1, 1, 104}, {2, 2, 101}}, -1},
        {"ab\0ab"s, -1, {{0, 1, 102}}, -1}, // the second one has no character before it
    };
    for (const auto& row : rows) {
        CSimEditLine line(row.text);
        line.ColourLine(row.carried, &syntax);
        EXPECT_EQ(line.Colors().ToVector(), row.spans) << row.text;
        EXPECT_EQ(line.RangeOut(), row.rangeOut) << row.text;
    }
}

} // namespace
