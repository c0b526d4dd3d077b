/// Blocks of ASCII characters, 16 at a step: what the conversions spend nearly all their time on.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace codepage {

/// Units in a block. The loops over it have a fixed length, so that they become vector code.
inline constexpr std::size_t kBlock = 16;

/// How many units at the start of the block are ASCII.
template <class Unit>
inline std::size_t AsciiPrefix(const Unit* in) noexcept {
    static_assert(std::endian::native == std::endian::little);
    constexpr std::size_t kWords = kBlock * sizeof(Unit) / 8;
    constexpr std::uint64_t kOther = sizeof(Unit) == 1 ? 0x8080808080808080 : 0xFF80FF80FF80FF80;
    std::uint64_t words[kWords];
    std::memcpy(words, in, sizeof words);
    for (std::size_t i = 0; i < kWords; ++i) {
        if (const std::uint64_t others = words[i] & kOther)
            return (i * 64 + static_cast<std::size_t>(std::countr_zero(others))) /
                   (8 * sizeof(Unit));
    }
    return kBlock;
}

template <class Unit>
inline bool IsAsciiBlock(const Unit* in) noexcept {
    constexpr std::size_t kWords = kBlock * sizeof(Unit) / 8;
    constexpr std::uint64_t kOther = sizeof(Unit) == 1 ? 0x8080808080808080 : 0xFF80FF80FF80FF80;
    std::uint64_t words[kWords];
    std::memcpy(words, in, sizeof words);
    std::uint64_t all = 0;
    for (const std::uint64_t word : words)
        all |= word;
    return (all & kOther) == 0;
}

/// Copies a block of units below 0x100 into units of the other size.
template <class In, class Out>
inline void CopyBlock(const In* __restrict in, Out* __restrict out) noexcept {
    for (std::size_t i = 0; i < kBlock; ++i)
        out[i] = static_cast<Out>(static_cast<std::make_unsigned_t<In>>(in[i]));
}

} // namespace codepage
