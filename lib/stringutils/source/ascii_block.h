/// Runs of ASCII characters, a block of them at a step: what conversions mostly meet.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace codepage {

/// Units in a block. The loops over it have a fixed length, so that they become vector code.
inline constexpr std::size_t kBlock = 16;

template <class Unit>
constexpr bool IsAscii(Unit unit) {
    return static_cast<std::make_unsigned_t<Unit>>(unit) < 0x80;
}

/// Units as lanes of a word; the first one stands in the lowest bits.
using Word = std::uint64_t;

template <class Unit>
inline Word LoadWord(const Unit* in) noexcept {
    static_assert(std::endian::native == std::endian::little);
    Word word;
    std::memcpy(&word, in, sizeof word);
    return word;
}
template <class Unit>
inline constexpr std::size_t kUnitsPerWord = sizeof(Word) / sizeof(Unit);

/// The bits of a word that no unit of ASCII has.
template <class Unit>
inline constexpr Word kOtherThanAscii = sizeof(Unit) == 1 ? 0x8080808080808080 : 0xFF80FF80FF80FF80;

/// How many units at the start of the block are ASCII.
template <class Unit>
inline std::size_t AsciiPrefix(const Unit* in) noexcept {
    for (std::size_t i = 0; i < kBlock; i += kUnitsPerWord<Unit>) {
        if (const Word others = LoadWord(in + i) & kOtherThanAscii<Unit>)
            return i + static_cast<std::size_t>(std::countr_zero(others)) / (8 * sizeof(Unit));
    }
    return kBlock;
}

/// All units of a block, one over the other.
inline Word UnionOf(const char* in) noexcept {
    return LoadWord(in) | LoadWord(in + 8);
}
inline Word UnionOf(const char16_t* in) noexcept {
    return LoadWord(in) | LoadWord(in + 4) | LoadWord(in + 8) | LoadWord(in + 12);
}

template <class Unit>
inline bool IsAsciiBlock(const Unit* in) noexcept {
    return (UnionOf(in) & kOtherThanAscii<Unit>) == 0;
}
/// True when each unit of the block is below 0x100.
inline bool IsLatin1Block(const char16_t* in) noexcept {
    return (UnionOf(in) & 0xFF00FF00FF00FF00) == 0;
}

/// Steps over the ASCII at the start of `in`.
template <class Unit>
inline void SkipAscii(const Unit*& in, const Unit* end) noexcept {
    std::size_t prefix = kBlock;
    while (prefix == kBlock && static_cast<std::size_t>(end - in) >= kBlock) {
        prefix = AsciiPrefix(in);
        in += prefix;
    }
    while (in != end && IsAscii(*in))
        ++in;
}

/// Copies a block of units below 0x100 into units of the other size.
template <class In, class Out>
inline void CopyBlock(const In* __restrict in, Out* __restrict out) noexcept {
    for (std::size_t i = 0; i < kBlock; ++i)
        out[i] = static_cast<Out>(static_cast<std::make_unsigned_t<In>>(in[i]));
}

} // namespace codepage
