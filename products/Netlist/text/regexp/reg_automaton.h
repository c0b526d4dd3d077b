/// The automaton that reads a subject backward.
#pragma once

#include "reg_places.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// What an assertion can ask about its position.
struct RegContext {
    enum Next : std::uint8_t { AtEnd, BeforeWord, BeforeOther };

    bool atBegin = false;
    bool afterWord = false; ///< a word character stands before it, in the same tail
    Next next = AtEnd;

    static Next NextFor(unsigned char byte) {
        return IsRegWordChar(byte) ? BeforeWord : BeforeOther;
    }
    bool Holds(RegOp op) const;
};

/// For a position of a subject, a state tells which eaters can take the character that stands there
/// and get to the program's end from there. The state of a position follows from its character and
/// the state of the position behind it. States are made when first met; the table of steps between
/// them then gives one look-up a character.
class RegAutomaton {
public:
    using State = std::uint32_t;

    /// Whether a match can begin at the position of a state, by the kind of character before it. At
    /// a tail's first character this doesn't count.
    static constexpr std::uint8_t kStartsAfterOther = 1;
    static constexpr std::uint8_t kStartsAfterWord = 2;

    /// `cacheBytes` bounds the states, see `Trim`. `places` must outlive the object.
    RegAutomaton(const RegPlaces& places, std::size_t cacheBytes);

    /// Whether an assertion looks at the character before.
    bool AsksBehind() const { return asksBehind_; }
    /// Number of 64-bit words of a set of eaters.
    std::size_t Words() const { return words_; }

    /// The state with these eaters before a character of the kind `next`.
    State Find(const std::uint64_t* eaters, RegContext::Next next);
    /// The state of the position whose character is `byte`, from that of the one behind it.
    State Step(State state, unsigned char byte) {
        const State known = (steps_.data() + classes_[byte])[state];
        return known != kUnknown ? known : MakeStep(state, byte);
    }
    const std::uint64_t* Eaters(State state) const { return &sets_[IndexOf(state) * words_]; }
    std::uint8_t StartsOf(State state) const { return starts_[IndexOf(state)]; }
    RegContext::Next NextOf(State state) const { return nexts_[IndexOf(state)]; }

    std::size_t StateCount() const { return nexts_.size(); }
    /// A state's number, below their count.
    std::size_t IndexOf(State state) const { return state >> shift_; }
    /// Bytes that a state takes.
    std::size_t StateSize() const {
        return (sizeof(State) << shift_) + words_ * sizeof(std::uint64_t) + 4 * sizeof(State);
    }

    /// Forgets all states if they take more than the cache. Returns whether it did.
    bool Trim();

    /// Nodes looked at to make states.
    std::uint64_t Work() const { return work_; }

private:
    static constexpr State kUnknown = ~0U;

    void SortBytes();
    void NoteEaters();
    State MakeStep(State state, unsigned char byte);
    State Add(const std::uint64_t* eaters, RegContext::Next next);
    std::size_t Slot(const std::uint64_t* eaters, RegContext::Next next) const;
    void Evaluate(const std::uint64_t* eaters, const RegContext& context);
    bool Follows(std::size_t eater, const std::uint64_t* eaters) const;

    const RegPlaces& places_;
    std::size_t words_;
    std::size_t cacheBytes_;
    bool asksAhead_ = false;                  ///< an assertion looks at the next character
    bool asksBehind_ = false;                 ///< one looks at the character before
    std::array<std::uint8_t, 256> classes_{}; ///< bytes that no node tells apart share a number
    unsigned shift_ = 0;                      ///< 2 to this power is at least the number of classes
    std::vector<std::uint64_t> takers_;       ///< the eaters that take a byte of a class, by class

    std::vector<State> steps_;
    std::vector<std::uint64_t> sets_;
    std::vector<RegContext::Next> nexts_;
    std::vector<std::uint8_t> starts_;
    std::vector<std::uint32_t> slots_; ///< hash table of indices + 1
    std::vector<std::uint64_t> made_;  ///< scratch of a step
    std::vector<std::uint8_t> viable_; ///< scratch: nodes from which the end can be reached
    std::uint64_t work_ = 0;
};
