/// The nodes of which a program consists.
#pragma once

#include "byte_set.h"

#include <array>
#include <cstdint>

/// What a node does. The numbers are those of the compact encoding; a group's number is added to
/// the last two there.
enum class RegOp : std::uint8_t {
    End = 0,
    Bol = 1,
    Eol = 2,
    Any = 3,
    AnyOf = 4,
    AnyBut = 5,
    Branch = 6,
    Back = 7,
    Exactly = 8,
    Nothing = 9,
    Star = 10,
    Plus = 11,
    WordA = 12,
    WordZ = 13,
    Open = 20,
    Close = 30,
};

/// How a node's operand is shown and where it stands.
enum class RegOperand : std::uint8_t { None, Set, Text, Group };

struct RegOpRow {
    RegOp op;
    const char* name;
    RegOperand operand;
};

/// All operations, in the order of their numbers.
inline constexpr std::array kRegOps = {
    RegOpRow{RegOp::End, "END", RegOperand::None},
    RegOpRow{RegOp::Bol, "BOL", RegOperand::None},
    RegOpRow{RegOp::Eol, "EOL", RegOperand::None},
    RegOpRow{RegOp::Any, "ANY", RegOperand::None},
    RegOpRow{RegOp::AnyOf, "ANYOF", RegOperand::Set},
    RegOpRow{RegOp::AnyBut, "ANYBUT", RegOperand::Set},
    RegOpRow{RegOp::Branch, "BRANCH", RegOperand::None},
    RegOpRow{RegOp::Back, "BACK", RegOperand::None},
    RegOpRow{RegOp::Exactly, "EXACTLY", RegOperand::Text},
    RegOpRow{RegOp::Nothing, "NOTHING", RegOperand::None},
    RegOpRow{RegOp::Star, "STAR", RegOperand::None},
    RegOpRow{RegOp::Plus, "PLUS", RegOperand::None},
    RegOpRow{RegOp::WordA, "WORDA", RegOperand::None},
    RegOpRow{RegOp::WordZ, "WORDZ", RegOperand::None},
    RegOpRow{RegOp::Open, "OPEN", RegOperand::Group},
    RegOpRow{RegOp::Close, "CLOSE", RegOperand::Group},
};

/// The index of a node in its program.
using RegPlace = int;
inline constexpr RegPlace kNoPlace = -1;

/// A node's own ways on, once linked: 16 bits suffice, since a program has fewer than 11,000 nodes.
inline constexpr std::uint16_t kNoWay = 0xFFFF;

/// How a STAR or PLUS passes the characters of its operand.
enum class RegRun : std::uint8_t {
    ToEnd,  ///< `.`: up to the subject's end
    Until,  ///< a class that lacks one character: up to that
    Members ///< any other: while the character is in the set
};

/// One node. The compiler writes `next` alone; the linker adds the ways that the matcher takes,
/// which skip the nodes that only hold the program together.
struct RegNode {
    RegOp op = RegOp::End;
    std::uint8_t value = 0;       ///< EXACTLY: the first character; OPEN, CLOSE: the group
    std::int16_t next = 0;        ///< distance to the next node, 0 if there is none
    std::uint16_t go = kNoWay;    ///< where a match goes on; a BRANCH's first node
    std::uint16_t other = kNoWay; ///< BRANCH: the next alternative
    std::uint32_t operand = 0;    ///< EXACTLY: index of its text; one character or loop: of its set
    std::uint16_t length = 0;     ///< EXACTLY: number of characters
    RegRun run = RegRun::Members; ///< STAR, PLUS
    bool possessive = false;      ///< STAR, PLUS: nothing but the longest run can do
};
static_assert(sizeof(RegNode) == 16);

constexpr bool IsRegGroupBound(RegOp op) {
    return op == RegOp::Open || op == RegOp::Close;
}

/// The characters of words: letters, digits and `_`, in ASCII.
inline constexpr ByteSet kRegWordSet = [] {
    ByteSet set = ByteSet::Of('_');
    set.AddRange('0', '9');
    set.AddRange('A', 'Z');
    set.AddRange('a', 'z');
    return set;
}();

constexpr bool IsRegWordChar(unsigned char c) {
    return kRegWordSet.Has(c);
}
