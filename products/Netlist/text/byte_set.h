/// A set of byte values.
#pragma once

#include <array>
#include <bit>
#include <cstdint>

/// A set of the byte values 0 to 255 in 32 bytes. Plain value type; every operation is constant
/// time.
struct ByteSet {
    std::array<std::uint64_t, 4> words{};

    /// The set of all 256 values.
    static constexpr ByteSet All() { return ByteSet{{~0ULL, ~0ULL, ~0ULL, ~0ULL}}; }

    /// The set that holds `byte` alone.
    static constexpr ByteSet Of(unsigned char byte) {
        ByteSet set;
        set.Add(byte);
        return set;
    }

    constexpr bool Has(unsigned char byte) const { return words[byte >> 6] >> (byte & 63) & 1; }
    constexpr void Add(unsigned char byte) { words[byte >> 6] |= 1ULL << (byte & 63); }
    constexpr void Remove(unsigned char byte) { words[byte >> 6] &= ~(1ULL << (byte & 63)); }

    /// Adds `first` to `last`, both included; nothing if `first` is the greater.
    constexpr void AddRange(unsigned char first, unsigned char last) {
        for (unsigned i = 0; i < 4; ++i)
            words[i] |= Below(last + 1U, i) & ~Below(first, i);
    }

    constexpr ByteSet& operator|=(const ByteSet& set) {
        for (unsigned i = 0; i < 4; ++i)
            words[i] |= set.words[i];
        return *this;
    }
    constexpr ByteSet& operator&=(const ByteSet& set) {
        for (unsigned i = 0; i < 4; ++i)
            words[i] &= set.words[i];
        return *this;
    }
    friend constexpr ByteSet operator|(ByteSet a, const ByteSet& b) { return a |= b; }
    friend constexpr ByteSet operator&(ByteSet a, const ByteSet& b) { return a &= b; }
    friend constexpr ByteSet operator~(const ByteSet& a) {
        return ByteSet{{~a.words[0], ~a.words[1], ~a.words[2], ~a.words[3]}};
    }
    friend constexpr bool operator==(const ByteSet&, const ByteSet&) = default;

    constexpr bool Empty() const { return (words[0] | words[1] | words[2] | words[3]) == 0; }
    constexpr bool Intersects(const ByteSet& set) const { return !(*this & set).Empty(); }

    constexpr int Count() const {
        return std::popcount(words[0]) + std::popcount(words[1]) + std::popcount(words[2]) +
               std::popcount(words[3]);
    }

    /// The smallest member that is at least `from`, 256 if there is none.
    constexpr unsigned Next(unsigned from) const {
        for (unsigned i = from >> 6; i < 4; ++i)
            if (const std::uint64_t rest = words[i] & ~Below(from, i))
                return i * 64 + static_cast<unsigned>(std::countr_zero(rest));
        return 256;
    }

private:
    /// The values below `bound` in word `i`.
    static constexpr std::uint64_t Below(unsigned bound, unsigned i) {
        if (bound >= (i + 1) * 64)
            return ~0ULL;
        return bound <= i * 64 ? 0 : (1ULL << (bound & 63)) - 1;
    }
};
