/// The colouring of one line by a description.
#pragma once

#include "color_spans.h"
#include "reg_subject.h"
#include "separator.h"
#include "span_canvas.h"
#include "syntax_dscr.h"
#include "token_automaton.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

/// A description made ready to colour line after line, with the buffers that this takes. Borrows
/// the description's ranges and tokens, which must stay as they are.
///
/// A text that holds a NUL is, for an expression, several: each ends at the next NUL. Such lines,
/// and tokens whose occurrences depend on where a scan begins, take the slow way: each token is
/// searched from column to column. All others are found together by an automaton.
class LineScanner {
public:
    explicit LineScanner(const CSyntaxDscr& syntax);

    LineColours Colour(std::string_view text, std::int32_t carried);

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// A match in columns of the line.
    struct Match {
        std::size_t start;
        std::size_t behind;
        friend bool operator==(const Match&, const Match&) = default;
    };

    struct Range {
        const CRegExp* open;
        const CRegExp* close;
        std::uint32_t paletteIndex;
        bool dependsOnStart; ///< the open expression looks at where its subject begins
        /// The first column of a match at or behind one that scans have reached, while they haven't
        /// passed it; kNone if there is none.
        std::size_t next = 0;
        std::uint64_t subject = 0; ///< the serial number of the one for which next is good
    };

    struct Token {
        const CRegExp* expression;
        const Separator* startSeparator;
        const Separator* stopSeparator;
        std::uint32_t paletteIndex;
        bool separable = false;
        std::size_t number = kNone; ///< in the automaton; kNone: takes the slow way
    };

    /// A match of a token that its separators let pass; those of a token are chained in order.
    struct Candidate {
        std::uint32_t start;
        std::uint32_t behind;
        std::uint32_t next;
    };
    static constexpr std::uint32_t kNoCandidate = ~std::uint32_t{0};
    struct Chain {
        std::uint32_t first = kNoCandidate;
        std::uint32_t last = kNoCandidate;
        std::size_t column = 0; ///< where the search for the token goes on; not if separable
    };

    void AddRange(const CColorRange& range);
    void AddToken(const CColorToken& token, std::vector<TokenTraits>& traits);
    const Separator* SeparatorOf(const CRegExp& expression);
    void ShareMemory();

    void BeginLine(std::string_view text);
    void ReleaseExpressions();
    void EnterSubject(std::size_t column);
    Match FindFrom(const CRegExp& expression, std::size_t column);

    /// Lays down what was carried in. @return the column behind it, kNone if it stays open
    std::size_t CloseCarried(std::size_t range);
    /// @return the index of the range left open at the line's end, -1 if none
    std::int32_t ScanRanges(std::size_t column);
    bool CanOpenBehind(std::size_t column) const;
    std::size_t FirstOpen(std::size_t column, Match& match);
    std::size_t NextOpen(Range& range, std::size_t column);

    void ScanTokens();
    bool GatherCandidates();
    void AddCandidate(std::size_t number, Match match);
    bool IsOccurrence(const Token& token, Match match);
    bool IsTouched(std::size_t number) const {
        return (m_touched[number / 64] >> (number % 64) & 1) != 0;
    }
    Chain& ChainOf(std::size_t number) {
        if (!IsTouched(number)) {
            m_touched[number / 64] |= std::uint64_t{1} << (number % 64);
            m_chains[number] = {};
        }
        return m_chains[number];
    }
    void ScanCandidates(const Token& token);
    void SearchToken(const Token& token);
    bool HasSeparators(const Token& token, std::size_t start, std::size_t behind);
    bool HoldsAt(const Separator& separator, std::size_t column);

    std::vector<Range> m_ranges;
    // Ranges as bits: those that can open with a byte, those that can go on with it, and those
    // that can open elsewhere than where a scan begins. Ranges beyond the bits share them.
    static constexpr std::size_t kLineEnd = 256;
    std::array<std::uint32_t, 257> m_opensFrom{};
    std::array<std::uint32_t, 257> m_opensOn{};
    std::uint32_t m_opensAnywhere = 0;
    std::unordered_map<const CRegExp*, Separator> m_separators;
    std::vector<Token> m_tokens;
    std::vector<std::size_t> m_together; ///< the tokens by their number in the automaton
    std::unique_ptr<TokenAutomaton> m_automaton;

    // The line at hand.
    std::string_view m_text;
    RegSubject m_subject;           ///< the part of the line that scans are in
    std::size_t m_subjectBegin = 0; ///< its first column
    bool m_hasNul = false;
    SpanCanvas m_canvas;
    ColorSpans::Encoder m_encoder;
    std::vector<Candidate> m_candidates;
    std::size_t m_mostCandidates = 0; ///< with as many the line takes the slow way
    Match m_lastCandidate{0, 0};
    std::vector<Chain> m_chains;          ///< by number in the automaton; good where m_touched
    std::vector<std::uint64_t> m_touched; ///< by number: a bit for each token that occurs
};
