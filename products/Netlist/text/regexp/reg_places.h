/// A program seen as an automaton.
#pragma once

#include "reg_program.h"

#include <cstddef>
#include <cstdint>
#include <vector>

inline bool HasRegBit(const std::uint64_t* bits, std::size_t bit) {
    return (bits[bit >> 6] >> (bit & 63) & 1) != 0;
}
inline void AddRegBit(std::uint64_t* bits, std::size_t bit) {
    bits[bit >> 6] |= 1ULL << (bit & 63);
}

/// The eating places of a program: one for each character of an EXACTLY, each other node that takes
/// one character, and each loop. All other nodes take none, and since no loop can pass without
/// taking a character, the ways through them form no circle.
class RegPlaces {
public:
    struct Eater {
        std::uint16_t node;
        std::uint16_t offset; ///< of the character in an EXACTLY's text
    };

    /// Linear in the program. The program must outlive the object.
    explicit RegPlaces(const RegCode& code);

    const RegCode& Code() const { return m_code; }
    std::size_t Count() const { return m_eaters.size(); }
    const Eater& At(std::size_t eater) const { return m_eaters[eater]; }
    const RegNode& NodeOf(std::size_t eater) const { return m_code.Node(m_eaters[eater].node); }

    /// The first eater of a node; valid for nodes that take characters.
    std::size_t Base(std::size_t node) const { return m_bases[node]; }

    /// The bytes that an eater takes.
    ByteSet BytesOf(std::size_t eater) const;
    /// Whether it isn't the last one of an EXACTLY, so that only the next eater can follow.
    bool HasSuccessor(std::size_t eater) const;

    /// The nodes that can be reached, each behind those to which it leads without taking a
    /// character.
    const std::vector<std::uint16_t>& Order() const { return m_order; }

    static bool IsLoop(const RegNode& node) {
        return node.op == RegOp::Star || node.op == RegOp::Plus;
    }
    /// Whether a node takes a character each time it is passed, or is the end.
    static bool IsBarrier(const RegNode& node);

private:
    void NumberEaters();
    void SortFrom(std::uint16_t root, std::vector<std::uint8_t>& seen);

    const RegCode& m_code;
    std::vector<Eater> m_eaters;
    std::vector<std::uint32_t> m_bases;
    std::vector<std::uint16_t> m_order;
};
