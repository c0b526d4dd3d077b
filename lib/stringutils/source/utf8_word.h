/// Several characters of UTF-8 at a step, in the lanes of a 64-bit word.
///
/// Each function reads and writes as if the whole word were characters of its kind, and returns the
/// word's faults: a lane is 0 in it if its character is one and well-formed, so that the characters
/// in front of the first bit count and the others don't. Lanes never carry into each other.
#pragma once

#include <cstdint>
#include <cstring>

#include "ascii_block.h"

namespace codepage {

/// A value in each lane of 16, of 24 (of which there are two) or of 32 bits.
constexpr Word In16(Word value) {
    return value * 0x0001000100010001;
}
constexpr Word In24(Word value) {
    return value * 0x000001000001;
}
constexpr Word In32(Word value) {
    return value * 0x0000000100000001;
}

template <class Unit>
inline void StoreWord(Word word, Unit* out) noexcept {
    std::memcpy(out, &word, sizeof word);
}

// ---------------------------------------------------------------- bytes to units
//
// Faults are the bits in which bytes differ from the marks that they must have, and a bit for each
// character out of its range: one that has a shorter form, a surrogate, or none at all. A range is
// told by a sum that reaches a bit above the value.

/// Four characters of two bytes; writes 4 units. Lanes of 16 bits.
[[gnu::always_inline]] inline Word DecodeTwos(const char* in, char16_t* out) noexcept {
    const Word word = LoadWord(in);
    const Word tooSmall = ~((word & In16(0x1E)) + In16(0x7FFE)) & In16(0x8000);
    const Word faults = ((word & In16(0xC0E0)) ^ In16(0x80C0)) | tooSmall;
    StoreWord((word & In16(0x1F)) << 6 | (word >> 8 & In16(0x3F)), out);
    return faults;
}

/// Two characters of three bytes, in front of two bytes more; writes 2 units. Lanes of 24 bits.
[[gnu::always_inline]] inline Word DecodeThrees(const char* in, char16_t* out) noexcept {
    const Word word = LoadWord(in);
    const Word units =
        (word & In24(0x0F)) << 12 | (word >> 2 & In24(0xFC0)) | (word >> 16 & In24(0x3F));
    const Word top = units & In24(0xF800); // 0 where too small, D800 in surrogates
    const Word isRight = (top + In24(0xF800)) & ((top ^ In24(0xD800)) + In24(0xF800));
    const Word faults = ((word & In24(0xC0C0F0)) ^ In24(0x8080E0)) | (~isRight & In24(0x10000));
    const auto pair = static_cast<std::uint32_t>((units & 0xFFFF) | (units >> 8 & 0xFFFF0000));
    std::memcpy(out, &pair, sizeof pair);
    return faults;
}

/// Two characters of four bytes; writes 4 units. Lanes of 32 bits.
[[gnu::always_inline]] inline Word DecodeFours(const char* in, char16_t* out) noexcept {
    const Word word = LoadWord(in);
    const Word high =
        (word & In32(0x07)) << 8 | (word >> 6 & In32(0xFC)) | (word >> 20 & In32(0x03));
    const Word low = (word & In32(0x0F0000)) << 6 | (word >> 8 & In32(0x3F0000));
    const Word units = (high | low) + In32(0xDC00D7C0); // D800 less 10000 >> 10
    StoreWord(units, out);
    // Outside the range the first one is no high surrogate.
    return ((word & In32(0xC0C0C0F8)) ^ In32(0x808080F0)) | ((units ^ In32(0xD800)) & In32(0xFC00));
}

// ---------------------------------------------------------------- units to bytes

/// Four units that become two bytes each; writes 8 bytes. Lanes of 16 bits.
[[gnu::always_inline]] inline Word EncodeTwos(const char16_t* in, char* out) noexcept {
    const Word word = LoadWord(in);
    const Word tooSmall = ~((word & In16(0x0780)) + In16(0x7F80)) & In16(0x8000);
    StoreWord((word >> 6 & In16(0x1F)) | (word & In16(0x3F)) << 8 | In16(0x80C0), out);
    return (word & In16(0xF800)) | tooSmall;
}

/// Four units that become three bytes each; writes 14 bytes, of which 12 count. Lanes of 16 bits.
[[gnu::always_inline]] inline Word EncodeThrees(const char16_t* in, char* out) noexcept {
    const auto pair = [](Word two) {
        const Word units = (two & 0xFFFF) | (two & 0xFFFF0000) << 8;
        return (units >> 12 & In24(0x0F)) | (units << 2 & In24(0x3F00)) |
               (units << 16 & In24(0x3F0000)) | In24(0x8080E0);
    };
    const Word word = LoadWord(in);
    const Word top = word >> 1 & In16(0x7C00); // 0 where too small, 6C00 in surrogates
    const Word isRight = (top + In16(0x7C00)) & ((top ^ In16(0x6C00)) + In16(0x7C00));
    const Word faults = ~isRight & In16(0x8000);
    StoreWord(pair(word), out);
    StoreWord(pair(word >> 32), out + 6);
    return faults;
}

/// Two pairs of surrogates; writes 8 bytes. Lanes of 32 bits.
[[gnu::always_inline]] inline Word EncodePairs(const char16_t* in, char* out) noexcept {
    const Word word = LoadWord(in);
    const Word high = (word & In32(0x3FF)) + In32(0x40); // of the character, less its low 10 bits
    StoreWord((high >> 8 & In32(0x07)) | (high & In32(0xFC)) << 6 | (high & In32(0x03)) << 20 |
                  (word >> 6 & In32(0xF0000)) | (word & In32(0x3F0000)) << 8 | In32(0x808080F0),
              out);
    return (word & In16(0xFC00)) ^ In32(0xDC00D800);
}

} // namespace codepage
