/// The thorough way to match: linear for any expression.
#pragma once

#include "reg_automaton.h"
#include "reg_backtracker.h"
#include "reg_exp.h"

#include <memory>

/// Finds matches in one subject without ever trying a way that fails.
///
/// The automaton reads the subject backward once, down to where it is needed. Its states tell for
/// each position from which places the program's end can be reached. A match then walks forward,
/// and at each fork takes the first way that is viable: exactly the way on which backtracking would
/// have ended. States are noted at every block's end only, and worked out again for the block at
/// hand; so the memory is a small part of the subject's length.
class RegViability {
public:
    /// `code` must outlive the object.
    RegViability(const RegCode& code, const RegLimits& limits);

    /// Sets the subject. What is known stays if it is the present one.
    void Begin(const RegSubject& subject);

    /// The leftmost start of a match in the tail, null if there is none.
    const char* FindStart(const RegTail& tail);
    /// The end of the match that starts at `at`, null if there is none. Stores the groups if asked
    /// to.
    const char* MatchEnd(const RegTail& tail, const char* at, const RegGroups& groups);

    std::uint64_t Steps() const { return steps_ + automaton_.Work(); }

private:
    using State = RegAutomaton::State;
    /// Where a way leads: to an eater, to the program's end, or nowhere.
    using Target = std::uint32_t;
    static constexpr Target kEnd = ~0U;
    static constexpr Target kNowhere = kEnd - 1;

    /// What `Follow` gave for an eater, by the state that it depended on.
    struct KnownStep {
        std::uint64_t key = ~0ULL;
        Target target = kNowhere;
    };
    /// A way to look at, and the number of bounds passed before it.
    struct Fork {
        std::uint16_t place;
        std::size_t bounds;
    };

    std::size_t BlockOf(const char* at) const {
        return static_cast<std::size_t>(at - subject_.Begin()) / block_;
    }
    const char* BlockBegin(std::size_t block) const { return subject_.Begin() + block * block_; }
    const char* BlockEnd(std::size_t block) const;
    State StateBehind(std::size_t block);
    void Cover(std::size_t block);
    void Load(std::size_t block);
    const char* FirstStartIn(std::size_t block, const char* from);

    State StateAt(const char* at);
    RegContext ContextAt(const char* at, const RegTail& tail, State state) const;
    Target Enter(const char* at, const RegTail& tail);
    Target Follow(Target eater, State state, const RegContext& context);
    Target KnownFollow(Target eater, State state, const RegContext& context);
    Target Descend(std::uint16_t root, State state, const RegContext& context);
    void StoreBounds(const char* at, const RegGroups& groups);

    const RegCode& code_;
    RegPlaces places_;
    RegAutomaton automaton_;
    std::size_t leastBlock_;
    RegSubject subject_{std::string_view()};

    std::size_t block_ = 1;   ///< characters of a block
    std::size_t blocks_ = 0;  ///< number of blocks
    std::size_t covered_ = 0; ///< the blocks from this one on have been read
    std::size_t capacity_ = 0;
    std::unique_ptr<std::uint64_t[]> notes_; ///< the eaters behind each block
    std::vector<std::uint8_t> hasStart_;     ///< whether a match may start in a block, by block

    std::size_t loaded_ = ~std::size_t{0}; ///< the block whose states stand in `states_`
    std::vector<State> states_;
    std::vector<KnownStep> known_;

    std::vector<std::uint32_t> visited_; ///< by node: the last descent that came by
    std::uint32_t descent_ = 0;
    std::vector<Fork> forks_;
    std::vector<std::uint16_t> bounds_; ///< OPEN and CLOSE nodes on the way
    std::uint64_t steps_ = 0;
};
