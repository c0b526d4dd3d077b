/// The colouring of a line by its rules alone, for the tests of the quick one.
#pragma once

#include "syntax_dscr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>
#include <string>
#include <vector>

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
inline void Fill(CSyntaxDscr& syntax, const Ranges& ranges, const Tokens& tokens) {
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
inline const struct {
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
    {{{"'", "'|$"}, {"#", "$"}, {"/\\*", "(\\*/|a$)?"}, {"b", "1+()|(#|b*)$"}},
     {{"[ab1]+", "[^ab1]", "[^ab1]|$"}, {"\\.", ".", "$"}}}};

/// Lines of the characters that the descriptions look for, with a NUL now and then.
class RandomLines {
public:
    std::size_t Below(std::size_t count) { return m_random() % count; }
    std::string Line(std::size_t longest) {
        std::string line;
        for (std::size_t n = Below(longest + 1); n > 0; --n)
            line += Below(40) == 0 ? '\0' : "aab1 #'/*b."[Below(11)];
        return line;
    }

private:
    std::mt19937 m_random{5};
};
