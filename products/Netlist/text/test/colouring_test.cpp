#include "plain_colouring.h"
#include "sim_edit_line.h"
#include "token_automaton.h"
#include "visit_marks.h"

#include <deque>

namespace {

/// The quick colouring of lines beside that by the rules.
class Compared {
public:
    Compared(const Ranges& ranges, const Tokens& tokens) : m_plain(ranges, tokens) {
        Fill(m_syntax, ranges, tokens);
    }
    void Check(const std::string& text, std::int32_t carried) {
        CSimEditLine line(text);
        line.ColourLine(carried, &m_syntax);
        m_plain.Colour(text, carried);
        ASSERT_EQ(line.Colors().ToVector(), m_plain.spans) << text << " after " << carried;
        ASSERT_EQ(line.RangeIn(), m_plain.rangeIn) << text << " after " << carried;
        ASSERT_EQ(line.RangeOut(), m_plain.rangeOut) << text << " after " << carried;
    }
    void CheckLines(int count, std::size_t longest) {
        for (int round = 0; round < count; ++round) {
            const std::string text = m_random.Line(round % 50 == 0 ? 150 : longest);
            const auto carried = std::int32_t(m_random.Below(6)) - 1;
            ASSERT_NO_FATAL_FAILURE(Check(text, carried));
        }
    }

private:
    CSyntaxDscr m_syntax;
    PlainColouring m_plain;
    RandomLines m_random;
};

TEST(Colouring, EqualsOneSearchAfterTheOther) {
    for (const auto& description : kDescriptions)
        ASSERT_NO_FATAL_FAILURE(
            Compared(description.ranges, description.tokens).CheckLines(3000, 12));
}

TEST(Colouring, KnowsWhetherARangeCanStayOpen) {
    const std::pair<const char*, bool> rows[] = {
        {"$", false},         {"'|$", false},     {"(a+|b*)$", false}, {"", false},
        {"a*", false},        {"(a|b$)?", false}, {"'", true},         {"a$", true},
        {"a+|.", true},       {"^$", true},       {"'|^", true},       {"\\>|\\<", true},
        {"(a|b|\\>)$", true}, {"(a|^|b$)", true}};
    for (const auto& [close, canCarry] : rows) {
        CSyntaxDscr syntax;
        Fill(syntax, {{"'", close}, {"#", "$"}}, {});
        EXPECT_EQ(syntax.CanCarry(), canCarry) << close;
    }
}

/// With less memory than a line's states take, whatever was found so far is of no use; with a
/// little more, states are forgotten from run to run.
TEST(Colouring, IsTheSameInLittleMemory) {
    const std::size_t cache = TokenAutomaton::s_cache;
    for (const std::size_t bytes : {0u, 300u, 2000u, 10000u}) {
        TokenAutomaton::s_cache = bytes;
        for (const auto& description : kDescriptions)
            EXPECT_NO_FATAL_FAILURE(
                Compared(description.ranges, description.tokens).CheckLines(300, 12));
    }
    TokenAutomaton::s_cache = cache;
}

/// More ranges and groups of separators than there are bits.
TEST(Colouring, ManyRangesAndSeparators) {
    const std::string letters = "ab1 #'/*.";
    std::deque<std::string> texts;
    const auto set = [&](std::size_t a, std::size_t b) {
        return texts.emplace_back(std::string("[") + letters[a] + letters[b] + "]").c_str();
    };
    Ranges ranges;
    Tokens tokens;
    for (std::size_t a = 0; a < letters.size(); ++a)
        for (std::size_t b = 0; b < a; ++b) {
            const std::string open = std::string(set(a, b)) + set(b, b) + set(a, a);
            ranges.push_back({texts.emplace_back(open).c_str(), set(b, b)});
            tokens.push_back({set((a + 1) % 9, (b + 5) % 9), set(a, b), ".|$"});
        }
    ASSERT_EQ(ranges.size(), 36u);
    ASSERT_NO_FATAL_FAILURE(Compared(ranges, {}).CheckLines(1000, 20));
    ASSERT_NO_FATAL_FAILURE(Compared({}, tokens).CheckLines(1000, 20));
    ASSERT_NO_FATAL_FAILURE(Compared(ranges, tokens).CheckLines(1000, 40));
}

/// Lines on which too many steps or matches are needed to find all tokens together, and ordinary
/// ones between them.
TEST(Colouring, CrowdedLines) {
    Tokens lengths;
    std::deque<std::string> texts;
    for (std::size_t i = 15; i > 0; --i)
        lengths.push_back({texts.emplace_back(i, '.').c_str(), i == 9 ? "b" : ".", ".|$"});
    Compared manySteps({}, {{"[ab].*#", ".", ".|$"}, {"b.*", "a", "$"}, {"ab?", ".", "."}});
    Compared manyMatches({{"#", "#"}}, lengths);
    for (const std::size_t length : {2000u, 40u, 1500u, 3u}) {
        std::string text(length, 'a');
        text[length / 2] = 'b';
        text[length / 3] = '#';
        ASSERT_NO_FATAL_FAILURE(manySteps.Check(text, -1));
        ASSERT_NO_FATAL_FAILURE(manyMatches.Check(text, 0));
        text[length / 3] = ' ';
        ASSERT_NO_FATAL_FAILURE(manyMatches.Check(text, -1));
    }
    Compared longLine({{"#", "#"}}, {{"a+", ".", ".|$"}});
    for (const std::size_t length : {70000u, 3u, 80000u})
        ASSERT_NO_FATAL_FAILURE(longLine.Check(std::string(length, 'a'), -1));
}

/// Ranges and separators whose matches reach to the line's end from each column aren't passed over
/// from each.
TEST(Colouring, CostsNoMoreForMatchesThatReachFar) {
    CSyntaxDscr syntax;
    Fill(syntax, {{"[a-z]*;", "$"}, {"\\<[a-z]*;", "$"}, {"a", "c*"}}, {{"#", ".", "[#a]*;"}});
    for (const char c : {'a', '#'}) {
        CSimEditLine line(std::string(50000, c) + ';');
        line.ColourLine(-1, &syntax);
        EXPECT_EQ(line.Colors().ToVector().size(), c == 'a' ? 50001u : 25001u);
    }
    for (const auto& range : syntax.Ranges())
        EXPECT_LE(range->Open.Steps(), 50000u * 100);
    EXPECT_LE(syntax.Tokens()[0]->StopSep->Steps(), 50000u * 100);
}

/// What was learnt of the part before a NUL says nothing of the part behind it.
TEST(Colouring, PartsBetweenNulsAreSubjectsOfTheirOwn) {
    using namespace std::string_literals;
    Compared ends({{"$", "$"}, {"#", "#"}}, {{"x", ".", ".|$"}, {"^#?", "x", "$"}});
    for (const std::string& text :
         {"a\0#x#"s, "#a\0#x#"s, "\0\0#x"s, "#x\0"s, "\0"s, "x#\0#x#\0x#"s})
        for (const std::int32_t carried : {-1, 0, 1})
            ASSERT_NO_FATAL_FAILURE(ends.Check(text, carried));
}

TEST(Colouring, MarksOutliveTheirCounter) {
    VisitMarks<std::uint8_t> marks(2);
    for (int round = 0; round < 600; ++round, marks.Clear()) {
        ASSERT_TRUE(marks.Mark(0)) << round;
        ASSERT_FALSE(marks.Mark(0)) << round;
        if (round % 255 == 7) { // the other one's last mark is of the same number each time
            ASSERT_TRUE(marks.Mark(1)) << round;
        }
    }
}

TEST(Colouring, LinesThatTeachTheRules) {
    CSyntaxDscr syntax;
    Fill(syntax, kDescriptions[0].ranges, kDescriptions[0].tokens);
    using namespace std::string_literals;
    const std::tuple<std::string, std::int32_t, std::vector<CColorDscr>, std::int32_t> rows[] = {
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
    for (const auto& [text, carried, spans, rangeOut] : rows) {
        CSimEditLine line(text);
        line.ColourLine(carried, &syntax);
        EXPECT_EQ(line.Colors().ToVector(), spans) << text;
        EXPECT_EQ(line.RangeOut(), rangeOut) << text;
    }
}

} // namespace
