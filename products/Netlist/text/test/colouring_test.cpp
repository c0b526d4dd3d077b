#include "sim_edit_doc.h"
#include "syntax_dscr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>

namespace {

/// One entry of a description in source form.
struct RangeRow {
    const char *open, *close;
};
struct TokenRow {
    const char *token, *start, *stop;
};
using Ranges = std::vector<RangeRow>;
using Tokens = std::vector<TokenRow>;

/// Ranges have the colours 1, 2, ..., tokens 101, 102, ...
void Fill(CSyntaxDscr& syntax, const Ranges& ranges, const Tokens& tokens) {
    std::uint32_t color = 0;
    for (const RangeRow& row : ranges)
        syntax.AddRange(std::make_unique<CColorRange>(
            CColorRange{CRegExp(row.open), CRegExp(row.close), ++color}));
    color = 100;
    for (const TokenRow& row : tokens)
        syntax.AddToken(std::make_unique<CColorToken>(
            CColorToken{CRegExp(row.token), std::make_shared<const CRegExp>(row.start),
                        std::make_shared<const CRegExp>(row.stop), ++color}));
    ASSERT_EQ(syntax.Ranges().size(), ranges.size());
    ASSERT_EQ(syntax.Tokens().size(), tokens.size());
}

/// The colouring by its rules, one search after the other: obviously right, and slow.
class PlainColouring {
public:
    PlainColouring(const Ranges& ranges, const Tokens& tokens) {
        for (const RangeRow& row : ranges)
            m_ranges.push_back({CRegExp(row.open), CRegExp(row.close)});
        for (const TokenRow& row : tokens)
            m_tokens.push_back({CRegExp(row.token), CRegExp(row.start), CRegExp(row.stop)});
    }

    std::int32_t rangeIn = -1, rangeOut = -1;
    std::vector<CColorDscr> spans;

    void Colour(const std::string& text, std::int32_t carried) {
        const int size = int(text.size());
        rangeIn = rangeOut = -1;
        spans.clear();
        int c = 0;
        if (carried >= 0 && carried < int(m_ranges.size())) {
            rangeIn = carried;
            const auto close = text.empty() ? std::nullopt : Find(Of(carried).close, text, 0);
            Add(0, close ? close->second : std::max(size, 1), carried + 1);
            if (!close) {
                rangeOut = carried;
                return;
            }
            c = close->second;
        }
        ScanRanges(text, c);
        for (std::size_t t = 0; t < m_tokens.size(); ++t)
            ScanToken(text, t);
    }

private:
    struct Range {
        CRegExp open, close;
    };
    struct Token {
        CRegExp token, start, stop;
    };
    using Found = std::optional<std::pair<int, int>>;

    Range& Of(int index) { return m_ranges[std::size_t(index)]; }

    /// Start and column behind of the first match in the tail from c.
    static Found Find(CRegExp& expression, const std::string& text, int c) {
        const std::string tail = text.substr(std::size_t(c));
        if (!expression.Match(tail.c_str()))
            return std::nullopt;
        const int start = c + int(expression.SubStart(0));
        return std::pair(start, start + int(expression.SubLength(0)));
    }
    static bool BeginsAt(CRegExp& expression, const std::string& text, int c) {
        const Found found = Find(expression, text, c);
        return found && found->first == c;
    }
    void Add(int start, int behind, int color) {
        if (behind <= start)
            return;
        const CColorDscr span{start, behind - 1, std::uint32_t(color)};
        for (const CColorDscr& other : spans)
            if (other.Start <= span.End && span.Start <= other.End)
                return;
        spans.insert(std::find_if(spans.begin(), spans.end(),
                                  [&](const CColorDscr& s) { return s.Start > start; }),
                     span);
    }
    void ScanRanges(const std::string& text, int c) {
        const int size = int(text.size());
        while (c < size) {
            int best = -1;
            Found open;
            for (int r = int(m_ranges.size()) - 1; r >= 0; --r) {
                const Found found = Find(Of(r).open, text, c);
                if (found && (!open || found->first < open->first)) {
                    open = found;
                    best = r;
                }
            }
            if (!open)
                return;
            const Found close = Find(Of(best).close, text, open->second);
            Add(open->first, close ? close->second : size, best + 1);
            if (!close) {
                rangeOut = best;
                return;
            }
            c = std::max(close->second, open->first + 1);
        }
    }
    void ScanToken(const std::string& text, std::size_t index) {
        Token& token = m_tokens[index];
        for (int c = 0; c < int(text.size());) {
            const Found found = Find(token.token, text, c);
            if (!found)
                return;
            c = found->second + 1;
            if ((found->first == 0 || BeginsAt(token.start, text, found->first - 1)) &&
                BeginsAt(token.stop, text, found->second))
                Add(found->first, found->second, int(index) + 101);
        }
    }

    std::vector<Range> m_ranges;
    std::vector<Token> m_tokens;
};

/// Descriptions that lean on every rule: anchors, ties, carried ranges, empty matches, separable
/// and inseparable tokens, separators of every kind.
const struct {
    Ranges ranges;
    Tokens tokens;
} kDescriptions[] = {
    {{{"/\\*", "\\*/"}, {"'", "'|$"}, {"#", "$"}},
     {{"[0-9]+(\\.[0-9]+)?", "[^a-z0-9_]", "[^a-z0-9_]|$"},
      {"ab", "[^a-z0-9_]", "[^a-z0-9_]|$"},
      {"[a-z_][a-z0-9_]*", "[^a-z0-9_]", "[^a-z0-9_]|$"},
      {"[-+*/=]", ".", ".|$"}}},
    {{{"^#", "$"}, {"\\<b", "b"}, {"(a|#)", "a*"}},
     {{"a+b?", "[ a]", "[^a]|$"}, {"b|ab", ".", "b*"}, {"\\<a", " ", ".*"}, {"^b", "x", "$"}}},
    {{{"a", "b"}, {"ab", "^b|#$"}, {"b*", "a"}},
     {{"a*", ".", "$|."}, {"1#?", "\\>", "\\>"}, {"#+", "[^#]", "#*$"}, {"(1|11)+a", "^", "$|b"}}},
    {{}, {{".", "a", "b"}, {"a.b", "[^b]", "."}, {"[ab]+", "[^ab]", "[^ab]|$"}}},
};

class ColouringTest : public testing::Test {
protected:
    std::string RandomLine(std::size_t longest) {
        std::string line;
        for (std::size_t n = m_random() % (longest + 1); n > 0; --n)
            line += "aab1 #'/*b."[m_random() % 11];
        return line;
    }
    std::mt19937 m_random{5};
};

TEST_F(ColouringTest, EqualsOneSearchAfterTheOther) {
    for (const auto& description : kDescriptions) {
        CSyntaxDscr syntax;
        Fill(syntax, description.ranges, description.tokens);
        PlainColouring plain(description.ranges, description.tokens);
        for (int round = 0; round < 3000; ++round) {
            const std::string text = RandomLine(round % 50 == 0 ? 150 : 12);
            const auto carried = std::int32_t(m_random() % 6) - 1;
            CSimEditLine line(text);
            line.ColourLine(carried, &syntax);
            plain.Colour(text, carried);
            ASSERT_EQ(line.Colors().ToVector(), plain.spans) << text << " after " << carried;
            ASSERT_EQ(line.RangeIn(), plain.rangeIn) << text;
            ASSERT_EQ(line.RangeOut(), plain.rangeOut) << text << " after " << carried;
        }
    }
}

TEST_F(ColouringTest, LinesThatTeachTheRules) {
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

/// The eager law: each primitive colours at once from its row on, until a row's end agrees with
/// what the next row was coloured with.
class EagerTwin {
public:
    explicit EagerTwin(PlainColouring& plain) : m_plain(plain) {}
    struct Row {
        explicit Row(std::string line) : text(std::move(line)) {}
        std::string text;
        std::int32_t rangeIn = -1, rangeOut = -1;
        std::vector<CColorDscr> spans;
    };
    std::vector<Row> rows;

    void Recolour(std::size_t row) {
        for (; row < rows.size(); ++row) {
            m_plain.Colour(rows[row].text, row == 0 ? -1 : rows[row - 1].rangeOut);
            rows[row].rangeIn = m_plain.rangeIn;
            rows[row].rangeOut = m_plain.rangeOut;
            rows[row].spans = m_plain.spans;
            if (row + 1 < rows.size() && rows[row + 1].rangeIn == rows[row].rangeOut)
                return;
        }
    }

private:
    PlainColouring& m_plain;
};

TEST_F(ColouringTest, PutOffColoursEqualThoseGivenAtOnce) {
    const std::size_t rowsAtOnce = ColourFront::s_rowsAtOnce;
    for (int round = 0; round < 60; ++round) {
        ColourFront::s_rowsAtOnce = std::size_t(round % 4);
        const auto& description = kDescriptions[std::size_t(round % 3)];
        CSyntaxDscr syntax;
        Fill(syntax, description.ranges, description.tokens);
        PlainColouring plain(description.ranges, description.tokens);
        CSimEditDoc doc;
        doc.SetSyntaxDscr(&syntax);
        EagerTwin twin(plain);
        AString text;
        for (int row = 0; row < 25; ++row) {
            twin.rows.emplace_back(RandomLine(8));
            if (row == 24)
                twin.rows.back().text += "a"; // an empty last line would be no line
            text += AString(twin.rows.back().text + (row < 24 ? "\n" : ""));
        }
        doc.SetText(text);
        ASSERT_EQ(std::size_t(doc.LineCount()), twin.rows.size());
        for (std::size_t row = 0; row < twin.rows.size(); ++row)
            twin.Recolour(row);
        bool colouring = true;
        for (int step = 0; step < 60; ++step) {
            if (m_random() % 6 == 0) {
                colouring = !colouring;
                doc.SetColouring(colouring);
            }
            const std::size_t at = m_random() % twin.rows.size();
            const auto row = static_cast<std::int32_t>(at);
            switch (m_random() % 4) {
            case 0:
                twin.rows.emplace(twin.rows.begin() + row, RandomLine(8));
                doc.InsertLine(row, 0, 0, twin.rows[at].text);
                break;
            case 1:
                if (twin.rows.size() > 1) {
                    twin.rows.erase(twin.rows.begin() + row);
                    doc.DeleteLine(row, 0, 0);
                }
                break;
            case 2:
                twin.rows[at].text.insert(0, "/*");
                doc.InsertString(row, 0, 2, "/*", 0, 0);
                break;
            default: // somebody looks at a row
                ASSERT_EQ(doc.ColouredLine(row).Colors().ToVector(), twin.rows[at].spans) << step;
                if (colouring)
                    doc.Recolour(row, 1);
            }
            if (colouring)
                twin.Recolour(at);
        }
        for (std::int32_t row = 0; row < doc.LineCount(); ++row) {
            const CSimEditLine& line = doc.ColouredLine(row);
            const EagerTwin::Row& expected = twin.rows[std::size_t(row)];
            ASSERT_EQ(line.Text(), expected.text);
            ASSERT_EQ(line.Colors().ToVector(), expected.spans) << round << " row " << row;
            ASSERT_EQ(line.RangeOut(), expected.rangeOut) << round << " row " << row;
        }
    }
    ColourFront::s_rowsAtOnce = rowsAtOnce;
}

TEST_F(ColouringTest, ANewDescriptionColoursNothingByItself) {
    CSyntaxDscr syntax;
    Fill(syntax, kDescriptions[0].ranges, kDescriptions[0].tokens);
    CSimEditDoc doc;
    doc.SetText(u"ab\nab");
    doc.SetSyntaxDscr(&syntax);
    EXPECT_TRUE(doc.ColouredLine(0).Colors().empty());
    std::int32_t width = 0;
    doc.InsertChar(0, 0, ' ', 0, width);
    EXPECT_FALSE(doc.ColouredLine(0).Colors().empty());
    EXPECT_TRUE(doc.ColouredLine(1).Colors().empty());
    doc.Recolour(0, 0);
    EXPECT_FALSE(doc.ColouredLine(1).Colors().empty());
}

} // namespace
