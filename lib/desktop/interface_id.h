/// InterfaceId: the 16 bytes that name an interface or a class, and those of the module.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "quorel_export.h"

/// A name of 128 bits: three numbers and eight bytes. Compared member by member.
struct InterfaceId {
    std::uint32_t m_Data1 = 0;
    std::uint16_t m_Data2 = 0;
    std::uint16_t m_Data3 = 0;
    std::array<std::uint8_t, 8> m_Data4{};

    auto operator<=>(const InterfaceId&) const = default;

    /// The text form {XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX} in capital hexadecimal digits.
    QUOREL_API std::string ToText() const;

    /// The id of a text form, digits in either case; nothing when the text isn't exactly that.
    static constexpr std::optional<InterfaceId> FromText(std::string_view text);
};
static_assert(sizeof(InterfaceId) == 16);

namespace interface_id {

constexpr int DigitValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

/// Reads the digits of text[pos, pos + count) into value; false when one isn't a digit.
constexpr bool ReadDigits(std::string_view text, std::size_t pos, std::size_t count,
                          std::uint64_t& value) {
    value = 0;
    for (const char c : text.substr(pos, count)) {
        const int digit = DigitValue(c);
        if (digit < 0)
            return false;
        value = value << 4 | static_cast<std::uint64_t>(digit);
    }
    return true;
}

/// The id of a literal; a literal in another form doesn't compile.
consteval InterfaceId Literal(std::string_view text) {
    return InterfaceId::FromText(text).value();
}

} // namespace interface_id

constexpr std::optional<InterfaceId> InterfaceId::FromText(std::string_view text) {
    constexpr std::string_view kForm = "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}";
    if (text.size() != kForm.size())
        return std::nullopt;
    for (std::size_t i = 0; i < kForm.size(); ++i)
        if (kForm[i] != 'X' && kForm[i] != text[i])
            return std::nullopt;
    std::uint64_t first = 0, second = 0, third = 0, fourth = 0, node = 0;
    using interface_id::ReadDigits;
    if (!ReadDigits(text, 1, 8, first) || !ReadDigits(text, 10, 4, second) ||
        !ReadDigits(text, 15, 4, third) || !ReadDigits(text, 20, 4, fourth) ||
        !ReadDigits(text, 25, 12, node))
        return std::nullopt;
    InterfaceId id{static_cast<std::uint32_t>(first),
                   static_cast<std::uint16_t>(second),
                   static_cast<std::uint16_t>(third),
                   {}};
    const std::uint64_t tail = fourth << 48 | node;
    for (std::size_t i = 0; i < 8; ++i)
        id.m_Data4[i] = static_cast<std::uint8_t>(tail >> (56 - 8 * i));
    return id;
}

/// @name The ids of the module.
/// The factory answers the three interface ids, and that of IUnknown, with one and the same object.
/// @{
inline constexpr InterfaceId kUnknownId =
    interface_id::Literal("{00000000-0000-0000-C000-000000000046}");
inline constexpr InterfaceId kClassFactoryId =
    interface_id::Literal("{00000001-0000-0000-C000-000000000046}");
inline constexpr InterfaceId kNetlistFactoryClassId =
    interface_id::Literal("{4C958AF9-36BE-4B70-A715-DA9F9B1D24E7}");
inline constexpr InterfaceId kNetlistFactoryId =
    interface_id::Literal("{BCE7B94E-CEB8-4B55-A72A-03775783EAD6}");
inline constexpr InterfaceId kFactoryId =
    interface_id::Literal("{8BC9E5C1-17F4-11D3-9591-0000C0DB3E0F}");
inline constexpr InterfaceId kEditorFactoryId =
    interface_id::Literal("{6E95B8F0-BCBF-11D4-A3C0-00010235134F}");
inline constexpr InterfaceId kNetlistApplicationId =
    interface_id::Literal("{349C1E8C-81EE-4B36-9697-8384E1CE2FDF}");
inline constexpr InterfaceId kNetlistTypeLibraryId =
    interface_id::Literal("{6930EA0B-FE84-4D4F-9D8A-ED71BA25C229}");
/// @}
