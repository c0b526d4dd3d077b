/// A number's short source text in one integer, so that it needs no memory of its own.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace io::packed {

/// The character of each four-bit code. Code 0 is none, so the first character's code is the
/// highest of the integer that isn't 0.
inline constexpr char kChars[] = "\0"
                                 "0123456789.+-eE";
inline constexpr unsigned kBits = 4;
static_assert(sizeof kChars - 1 == 1U << kBits);
inline constexpr std::uint64_t kZero = 1; ///< code of the digit 0; the others follow

/// Codes of all characters, 0 for those that can't be packed.
struct Codes {
    std::uint8_t of[0x80] = {};
    constexpr Codes() {
        for (std::uint8_t code = 1; code < 1U << kBits; ++code)
            of[static_cast<unsigned char>(kChars[code])] = code;
    }
};
inline constexpr Codes kCodes;

constexpr std::uint64_t Append(std::uint64_t source, std::uint64_t code) noexcept {
    return source << kBits | code;
}

constexpr std::uint64_t DropLast(std::uint64_t source, std::ptrdiff_t count) noexcept {
    return source >> (kBits * static_cast<unsigned>(count));
}

constexpr std::size_t Length(std::uint64_t source) noexcept {
    return (static_cast<std::size_t>(std::bit_width(source)) + kBits - 1) / kBits;
}

/// Packs a text of at most 16 characters; 0 when it can't be packed.
constexpr std::uint64_t Pack(std::string_view text) noexcept {
    std::uint64_t source = 0;
    for (const char ch : text) {
        const auto byte = static_cast<unsigned char>(ch);
        const std::uint64_t code = byte < 0x80 ? kCodes.of[byte] : 0;
        if (code == 0)
            return 0;
        source = Append(source, code);
    }
    return source;
}

/// Writes the text to `out` and returns its length.
template <class Char>
std::size_t Unpack(std::uint64_t source, Char* out) noexcept {
    const std::size_t length = Length(source);
    for (std::size_t i = length; i > 0; source >>= kBits)
        out[--i] = static_cast<Char>(kChars[source & ((1U << kBits) - 1)]);
    return length;
}

} // namespace io::packed
