/// The thorough way to match: linear for any expression.
#pragma once

#include "reg_automaton.h"
#include "reg_backtracker.h"
#include "reg_exp.h"
#include "visit_marks.h"

#include <memory>

/// Finds matches in one subject without ever trying a way that fails.
///
/// The automaton reads the subject backward once, down to where it is needed. Its states tell for
/// each position from which places the program's end can be reached. A match then walks forward,
/// and at each fork takes the first way that is viable: exactly the way on which backtracking would
/// have ended. States are kept for the block at hand, and of the others in its stretch of blocks
/// the one at the block's end, and of the other stretches the one at the stretch's end; the rest is
/// worked out again. So each character is read three times at most, and the memory for each of the
/// three is bounded, up to the square of the notes that a stretch may have.
class RegViability {
public:
    /// `code` must outlive the object.
    RegViability(const RegCode& code, const RegLimits& limits);
    RegViability(const RegViability&) = delete;
    RegViability& operator=(const RegViability&) = delete;
    ~RegViability();

    /// How many of them there are in the process.
    static std::size_t Count();

    /// Sets the subject. What is known stays if it is the present one.
    void Begin(const RegSubject& subject);

    /// The leftmost start of a match in the tail, null if there is none.
    const char* FindStart(const RegTail& tail);
    /// Whether a match starts at `at`.
    bool IsStart(const RegTail& tail, const char* at) { return Enter(at, tail) != kNowhere; }
    /// The end of the match that starts at `at`, null if there is none. Stores the groups if asked
    /// to.
    const char* MatchEnd(const RegTail& tail, const char* at, const RegGroups& groups);

    std::uint64_t Steps() const { return m_steps + m_automaton.Work(); }

private:
    using State = RegAutomaton::State;
    /// Where a way leads: to an eater, to the program's end, or nowhere.
    using Target = std::uint16_t;
    static constexpr Target kEnd = 0xFFFF;
    static constexpr Target kNowhere = 0xFFFE;
    static constexpr Target kUnknown = 0xFFFD;
    static constexpr std::size_t kNoBlock = ~std::size_t{0};

    /// A way to look at, and the number of bounds passed before it.
    struct Fork {
        std::uint16_t place;
        std::size_t bounds;
    };

    std::size_t BlockOf(const char* at) const {
        return static_cast<std::size_t>(at - m_subject.Begin()) / m_block;
    }
    const char* BlockBegin(std::size_t block) const { return m_subject.Begin() + block * m_block; }
    const char* BlockEnd(std::size_t block) const;
    State StateBehind(std::size_t block);
    std::size_t NoteSize() const { return m_automaton.Words() * sizeof(std::uint64_t); }
    std::uint64_t* NoteOf(std::size_t block) {
        return &m_notes[block % m_stretch * m_automaton.Words()];
    }
    void EnterStretch(std::size_t stretch);
    void Cover(std::size_t block);
    void Load(std::size_t block);
    State Read(std::size_t block);
    void Forget();
    void GrowKnown();
    std::uint8_t StartsAt(const char* at, State state) const;
    const char* FirstStartIn(std::size_t block, const char* from);

    State StateAt(const char* at) {
        const auto offset = static_cast<std::size_t>(at - m_loadedBegin);
        return offset < m_states.size() ? m_states[offset] : LoadStateAt(at);
    }
    State LoadStateAt(const char* at);
    bool IsAfterWord(const char* at, const RegTail& tail) const {
        return m_automaton.AsksBehind() && at != tail.begin &&
               IsRegWordChar(static_cast<unsigned char>(at[-1]));
    }
    RegContext ContextAt(const char* at, const RegTail& tail, State state) const;
    Target Enter(const char* at, const RegTail& tail);
    Target Follow(Target eater, State state, const RegContext& context);
    Target& Known(Target eater, State state, bool afterWord) {
        const std::size_t row = m_automaton.IndexOf(state) * 2 + (afterWord ? 1 : 0);
        return m_known[row * m_places.Count() + eater];
    }
    const char* Walk(Target target, const char* at, const RegTail& tail);
    const char* WalkGroups(Target target, const char* at, const RegTail& tail,
                           const RegGroups& groups);
    Target Descend(std::uint16_t root, State state, const RegContext& context);
    void StoreBounds(const char* at, const RegGroups& groups);

    const RegCode& m_code;
    RegPlaces m_places;
    RegAutomaton m_automaton;
    const std::size_t m_block;   ///< characters of a block
    const std::size_t m_stretch; ///< blocks of a stretch
    RegSubject m_subject{std::string_view()};

    std::size_t m_blocks = 0;                 ///< number of blocks
    std::size_t m_atStretch = 0;              ///< the stretch at hand
    std::size_t m_lowest = 0;                 ///< the first of its blocks that has its note
    std::size_t m_lowestStretch = 0;          ///< the stretches from this one on have theirs
    std::vector<std::uint64_t> m_farNotes;    ///< the eaters behind each stretch
    std::unique_ptr<std::uint64_t[]> m_notes; ///< the eaters behind each block of the stretch
    std::size_t m_capacity = 0;               ///< blocks that have room in m_notes
    std::vector<std::uint8_t> m_hasStart;     ///< whether a match may start in a block, by block

    std::size_t m_loaded = kNoBlock; ///< the block whose states stand in `m_states`
    const char* m_loadedBegin = nullptr;
    std::vector<State> m_states;
    const bool m_mayKeepKnown;   ///< there are few enough eaters to keep what `Follow` gave
    bool m_keepsKnown = false;   ///< that, and an end was asked for
    std::vector<Target> m_known; ///< by state, kind of the character before, and eater

    VisitMarks<> m_visited;              ///< the nodes that a descent has come by
    std::vector<Fork> m_forks;           ///< scratch of a descent
    std::vector<std::uint16_t> m_bounds; ///< OPEN and CLOSE nodes on the way
    const std::vector<std::uint64_t> m_noEaters;
    std::uint64_t m_steps = 0;
};
