/// Finds the occurrences of many tokens at once.
#pragma once

#include "byte_set.h"
#include "quorel_export.h"
#include "reg_automaton.h"
#include "reg_exp.h"
#include "visit_marks.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// What the automaton needs to know of one token. Valid: no match is empty, and whether one begins
/// at a place doesn't depend on where the text's tail begins, but in the text's first column.
struct TokenTraits {
    const CRegExp* expression = nullptr;
    ByteSet first;          ///< the bytes with which an occurrence can begin
    ByteSet startSeparator; ///< the bytes before an occurrence; good if separable
    /// The start separator looks at one character, and no occurrence of the token holds such a
    /// one. Then an occurrence without it hides no other from the scan, so it needn't be seen.
    bool separable = false;
};

/// All expressions as one automaton. From a place where tokens may begin it reads on once for all
/// of them, and tells each token that matches there with its length.
///
/// A state is the list of points that matches have reached, those of one token in the order in
/// which a search prefers them; a match ends where the search would end it. States and the steps
/// between them are made when first met, and forgotten together when they have grown too many. What
/// making them costs is counted, so that it stays in proportion to the texts whatever the tokens.
class TokenAutomaton {
public:
    /// @param cacheShare what part of s_cache the states may take: one part of so many
    explicit TokenAutomaton(const std::vector<TokenTraits>& tokens, std::size_t cacheShare = 1);

    /// Calls found(token, column, length) for the match of each token at each column of text where
    /// it has one, columns ascending; for separable tokens only where their start separator stands
    /// before and covered(column) is false. The text holds no NUL.
    /// @return false when the work or the states grew out of proportion to the text, with what was
    ///         found of no use: matches overlap too much, or each character makes a new state
    template <class Covered, class Found>
    bool ForEachMatch(std::string_view text, Covered covered, Found found);

    /// Whether the first token matches at the begin of the tail from a column of text, empty
    /// matches included; no answer where that takes more than a few characters or too much work to
    /// tell.
    std::optional<bool> MatchesAt(std::string_view text, std::size_t column);

    /// Bytes of states above which those made from now on forget them. One run may take as many
    /// once more.
    QUOREL_API static std::size_t s_cache;

private:
    using State = std::uint32_t;
    using Point = std::uint32_t;

    static constexpr State kDead = 0;
    static constexpr State kUnknown = ~State{0};
    /// Stands for a byte before the text's begin and behind its end.
    static constexpr std::size_t kNothing = 256;
    static constexpr std::size_t kGroups = 32;
    /// Work for making states, in points looked at: what a character of a text allows, and the most
    /// that may be saved up.
    static constexpr std::ptrdiff_t kWorkPerByte = 64;
    static constexpr std::ptrdiff_t kMostWork = 1 << 24;
    /// Ends of a run whose memory is kept for the next text.
    static constexpr std::size_t kKeptEnds = 4096;

    /// Where the match of a token may stand: before a node, or inside its characters. The second
    /// point of a PLUS is behind its first character.
    struct PointOf {
        std::uint32_t token;
        std::uint16_t node;
        std::uint16_t offset;
    };
    struct Step {
        State next = kUnknown;
        std::uint32_t ends = 0; ///< number of the list of tokens whose match ends before the byte
    };
    /// Tokens whose match ends at a column unless a later one goes further.
    struct End {
        std::uint32_t list;
        std::size_t column;
    };

    void AddPoints(const std::vector<TokenTraits>& tokens);
    void SortBytes();
    void AddToGroup(std::vector<ByteSet>& groups, const TokenTraits& token);
    void Forget();
    void AllowWork(std::size_t bytes) {
        m_workLeft =
            std::min(m_workLeft + kWorkPerByte * static_cast<std::ptrdiff_t>(bytes), kMostWork);
    }
    bool MayMakeSteps() const { return m_workLeft > 0 && m_cached <= 2 * m_cache; }

    State StartAt(std::size_t before, bool covered) {
        const State known = m_starts[covered][before];
        return known != kUnknown ? known : MakeStart(before, covered);
    }
    State MakeStart(std::size_t before, bool covered);
    State MakeState(const std::u32string& key);
    Step MakeStep(State state, std::size_t byteClass);
    bool Advance(Point from, const RegContext& context, std::size_t byteClass);
    void Behind(Point eater);
    std::uint32_t ListOf(const std::vector<std::uint32_t>& tokens);
    Point PointAt(std::uint32_t token, std::uint16_t node) const {
        return m_pointOfNode[m_firstNode[token] + node];
    }
    /// Notes the ends of a run that began at a column, each token's last one; the longest first,
    /// and of equal length in the order of the tokens.
    template <class Found>
    void Report(std::size_t begin, Found found);

    std::vector<TokenTraits> m_tokens;
    std::vector<const RegCode*> m_codes;
    std::vector<PointOf> m_points;
    std::vector<std::size_t> m_firstNode; ///< by token, in m_pointOfNode
    std::vector<Point> m_pointOfNode;
    bool m_asksBehind = false;

    std::array<std::uint16_t, 257>
        m_classes{};                        ///< bytes that no point tells apart; kNothing's last
    std::vector<std::size_t> m_byteOfClass; ///< one for each class
    /// Tokens in groups of one start separator each, the last group for all that are left over:
    /// the groups with a token that may stand behind a byte, and with one that may begin with it.
    std::array<std::uint32_t, 257> m_groupsBehind{};
    std::array<std::uint32_t, 257> m_groupsFrom{};

    // States: known by their key, the points and behind them a number for the context.
    std::unordered_map<std::u32string, State> m_stateOf;
    std::vector<const std::u32string*> m_keys;
    std::vector<Step> m_steps; ///< a row of classes for each state
    std::array<std::array<State, 257>, 2> m_starts{};
    std::map<std::vector<std::uint32_t>, std::uint32_t> m_listOf;
    std::vector<const std::vector<std::uint32_t>*> m_lists;
    std::size_t m_cached = 0;
    const std::size_t m_cache; ///< bytes that may be cached
    std::ptrdiff_t m_workLeft = kMostWork;

    // Scratch of a step and of a run.
    VisitMarks<> m_seen; ///< the points that a step has come by
    VisitMarks<> m_made; ///< the points that it leads to
    std::u32string m_key;
    std::vector<Point> m_stack;
    std::vector<End> m_ends;
    VisitMarks<> m_reported; ///< the tokens whose end in a run is known
};

template <class Covered, class Found>
bool TokenAutomaton::ForEachMatch(std::string_view text, Covered covered, Found found) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    const std::size_t size = text.size();
    const std::size_t classes = m_byteOfClass.size();
    std::size_t left = 16 * size + 1024;
    AllowWork(size);
    if (m_ends.capacity() > kKeptEnds)
        m_ends = {};
    for (std::size_t begin = 0; begin < size; ++begin) {
        const std::size_t before = begin != 0 ? bytes[begin - 1] : kNothing;
        if ((m_groupsBehind[before] & m_groupsFrom[bytes[begin]]) == 0)
            continue;
        if (m_cached > m_cache)
            Forget();
        State state = StartAt(before, covered(begin));
        m_ends.clear();
        for (std::size_t at = begin; state != kDead; ++at) {
            const std::size_t byteClass = m_classes[at < size ? bytes[at] : kNothing];
            Step step = m_steps[state * classes + byteClass];
            if (step.next == kUnknown) {
                if (!MayMakeSteps())
                    return false;
                step = MakeStep(state, byteClass);
            }
            if (step.ends != 0) {
                if (m_ends.empty() || m_ends.back().list != step.ends)
                    m_ends.push_back({step.ends, at});
                else
                    m_ends.back().column = at;
            }
            state = step.next;
            if (--left == 0)
                return false;
        }
        if (!m_ends.empty())
            Report(begin, found);
    }
    return true;
}

template <class Found>
void TokenAutomaton::Report(std::size_t begin, Found found) {
    m_reported.Clear();
    for (std::size_t i = m_ends.size(); i-- > 0;)
        for (const std::uint32_t token : *m_lists[m_ends[i].list])
            if (m_reported.Mark(token))
                found(token, begin, m_ends[i].column - begin);
}
