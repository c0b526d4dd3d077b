/// Classes of 16-bit characters, the same on every machine and in every locale.
#pragma once

#include <cstdint>

#include "quorel_export.h"

/// Classification of single 16-bit units after the Unicode character database 14.0: general
/// categories and simple lower case mappings. A surrogate has no class and maps to itself. A unit
/// below 0x100 costs a table look-up, any other a binary search.
namespace chars {

enum Class : std::uint8_t {
    kSpace = 1,   ///< property White_Space, no-break blanks and U+0085 included
    kUpper = 2,   ///< category Lu
    kLower = 4,   ///< category Ll
    kAlpha = 8,   ///< categories Lu, Ll, Lt, Lm, Lo
    kDigit = 16,  ///< `0` to `9` alone
    kControl = 32 ///< category Cc
};

namespace detail {
struct Latin1Tables {
    std::uint8_t classes[0x100];
    char16_t lower[0x100];
};
extern QUOREL_API const Latin1Tables kLatin1;
QUOREL_API std::uint8_t FindClasses(char16_t ch) noexcept;
QUOREL_API char16_t FindLower(char16_t ch) noexcept;
} // namespace detail

/// All classes of a character, as a sum of `Class`.
inline std::uint8_t ClassesOf(char16_t ch) noexcept {
    return ch < 0x100 ? detail::kLatin1.classes[ch] : detail::FindClasses(ch);
}

inline bool IsSpace(char16_t ch) noexcept {
    return (ClassesOf(ch) & kSpace) != 0;
}
inline bool IsUpper(char16_t ch) noexcept {
    return (ClassesOf(ch) & kUpper) != 0;
}
inline bool IsLower(char16_t ch) noexcept {
    return (ClassesOf(ch) & kLower) != 0;
}
inline bool IsAlpha(char16_t ch) noexcept {
    return (ClassesOf(ch) & kAlpha) != 0;
}
inline bool IsDigit(char16_t ch) noexcept {
    return (ClassesOf(ch) & kDigit) != 0;
}
inline bool IsCntrl(char16_t ch) noexcept {
    return (ClassesOf(ch) & kControl) != 0;
}
inline bool IsAlnum(char16_t ch) noexcept {
    return (ClassesOf(ch) & (kAlpha | kDigit)) != 0;
}

/// The lower case form of a character, or the character itself.
inline char16_t ToLower(char16_t ch) noexcept {
    return ch < 0x100 ? detail::kLatin1.lower[ch] : detail::FindLower(ch);
}

} // namespace chars
