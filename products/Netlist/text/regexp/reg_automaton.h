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
    bool AsksBehind() const { return m_asksBehind; }
    /// Number of 64-bit words of a set of eaters.
    std::size_t Words() const { return m_words; }

    /// The state with these eaters before a character of the kind `next`.
    State Find(const std::uint64_t* eaters, RegContext::Next next);
    /// The state of the position whose character is `byte`, from that of the one behind it.
    State Step(State state, unsigned char byte) {
        const State known = (m_steps.data() + m_classes[byte])[state];
        return known != kUnknown ? known : MakeStep(state, byte);
    }
    const std::uint64_t* Eaters(State state) const { return &m_sets[IndexOf(state) * m_words]; }
    std::uint8_t StartsOf(State state) const { return m_starts[IndexOf(state)]; }
    RegContext::Next NextOf(State state) const { return m_nexts[IndexOf(state)]; }

    std::size_t StateCount() const { return m_nexts.size(); }
    /// A state's number, below their count.
    std::size_t IndexOf(State state) const { return state >> m_shift; }
    /// Bytes that a state takes.
    std::size_t StateSize() const {
        return (sizeof(State) << m_shift) + m_words * sizeof(std::uint64_t) + 4 * sizeof(State);
    }

    /// Forgets all states if they take more than the cache. Returns whether it did.
    bool Trim();

    /// Nodes looked at to make states.
    std::uint64_t Work() const { return m_work; }

private:
    static constexpr State kUnknown = ~0U;

    void SortBytes();
    void NoteEaters();
    State MakeStep(State state, unsigned char byte);
    State Add(const std::uint64_t* eaters, RegContext::Next next);
    std::size_t Slot(const std::uint64_t* eaters, RegContext::Next next) const;
    void Evaluate(const std::uint64_t* eaters, const RegContext& context);
    bool Follows(std::size_t eater, const std::uint64_t* eaters) const;

    const RegPlaces& m_places;
    std::size_t m_words;
    std::size_t m_cacheBytes;
    bool m_asksAhead = false;                  ///< an assertion looks at the next character
    bool m_asksBehind = false;                 ///< one looks at the character before
    std::array<std::uint8_t, 256> m_classes{}; ///< bytes that no node tells apart share a number
    unsigned m_shift = 0;                ///< 2 to this power is at least the number of classes
    std::vector<std::uint64_t> m_takers; ///< the eaters that take a byte of a class, by class

    std::vector<State> m_steps;
    std::vector<std::uint64_t> m_sets;
    std::vector<RegContext::Next> m_nexts;
    std::vector<std::uint8_t> m_starts;
    std::vector<std::uint32_t> m_slots; ///< hash table of indices + 1
    std::vector<std::uint64_t> m_made;  ///< scratch of a step
    std::vector<std::uint8_t> m_viable; ///< scratch: nodes from which the end can be reached
    std::uint64_t m_work = 0;
};
