/// One argument of a formatted text.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

/// Carries an argument with its kind, so that no format can read it as what it isn't. Texts are not
/// copied: what it was made from must outlive it. A null pointer to text reads as "(null)".
class FormatArg {
public:
    enum class Kind : unsigned char {
        kNone,
        kInteger,    ///< `bits`, sign-extended from `size` bytes when `isSigned`
        kNarrowChar, ///< an integer that came as `char`, in code page 1252 where a character is due
        kReal,       ///< `real`
        kPointer,    ///< `pointer`
        kText,       ///< `text` with `length` units, or up to its terminator when that is kToNull
        kNarrowText  ///< `narrow` likewise, in code page 1252
    };
    static constexpr std::size_t kToNull = static_cast<std::size_t>(-1);

    FormatArg() = default;
    template <class T>
    requires std::integral<T> FormatArg(T value)
        : kind(std::same_as<T, char> ? Kind::kNarrowChar : Kind::kInteger),
          isSigned(std::is_signed_v<T>), size(sizeof(T)), bits(static_cast<std::uint64_t>(value)) {}
    template <class T>
    requires std::is_enum_v<T> FormatArg(T value)
        : FormatArg(static_cast<std::underlying_type_t<T>>(value)) {}
    template <class T>
    requires std::floating_point<T> FormatArg(T value)
        : kind(Kind::kReal), real(static_cast<double>(value)) {}
    FormatArg(const void* value) : kind(Kind::kPointer), pointer(value) {}
    FormatArg(std::nullptr_t) : FormatArg(static_cast<const void*>(nullptr)) {}
    FormatArg(const char16_t* value) : kind(Kind::kText), length(kToNull), text(value) {}
    FormatArg(const char* value) : kind(Kind::kNarrowText), length(kToNull), narrow(value) {}
    FormatArg(std::u16string_view value)
        : kind(Kind::kText), length(value.size()), text(value.data()) {}
    FormatArg(std::string_view value)
        : kind(Kind::kNarrowText), length(value.size()), narrow(value.data()) {}
    FormatArg(const std::u16string& value) : FormatArg(std::u16string_view(value)) {}
    FormatArg(const std::string& value) : FormatArg(std::string_view(value)) {}

    Kind kind = Kind::kNone;
    bool isSigned = false;
    std::uint8_t size = 0;
    std::size_t length = 0;
    union {
        std::uint64_t bits = 0;
        double real;
        const void* pointer;
        const char16_t* text;
        const char* narrow;
    };
};
