/// A number's short source text in one integer, so that it needs no memory of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace io::packed {

/// The character of each four-bit code; the last character of a text is the lowest code of its
/// integer. The length stands elsewhere.
inline constexpr std::string_view kChars = "0123456789+-.eE";
inline constexpr unsigned kBits = 4;
static_assert(kChars.size() <= 1U << kBits);
inline constexpr std::uint8_t kNone = 0xFF; ///< stands for no code

/// Codes of all characters below 128; those of digits are their values.
struct Codes {
    std::uint8_t of[0x80] = {};
    constexpr Codes() {
        for (std::uint8_t& code : of)
            code = kNone;
        for (std::size_t code = 0; code < kChars.size(); ++code)
            of[static_cast<unsigned char>(kChars[code])] = static_cast<std::uint8_t>(code);
    }
};
inline constexpr Codes kCodes;

constexpr std::uint64_t Append(std::uint64_t source, unsigned code) noexcept {
    return source << kBits | code;
}

/// Packs a text of at most 16 characters; false when it can't be packed.
constexpr bool Pack(std::string_view text, std::uint64_t& source) noexcept {
    source = 0;
    for (const char ch : text) {
        const auto byte = static_cast<unsigned char>(ch);
        const std::uint8_t code = byte < 0x80 ? kCodes.of[byte] : kNone;
        if (code == kNone)
            return false;
        source = Append(source, code);
    }
    return true;
}

/// Writes a text of `length` characters to `out`.
template <class Char>
void Unpack(std::uint64_t source, std::size_t length, Char* out) noexcept {
    for (std::size_t i = length; i > 0; source >>= kBits)
        out[--i] = static_cast<Char>(kChars[source & ((1U << kBits) - 1)]);
}

} // namespace io::packed
