#include "token_kinds.h"

#include <array>

namespace io {

namespace {

#define IO_TOKEN_KIND_NAME(number, name) #name,
constexpr std::array<std::string_view, kTokenKindCount> kNames{IO_TOKEN_KINDS(IO_TOKEN_KIND_NAME)};
#undef IO_TOKEN_KIND_NAME

#define IO_TOKEN_KIND_CHECK(number, name) static_assert(kNames[number] == #name);
IO_TOKEN_KINDS(IO_TOKEN_KIND_CHECK)
#undef IO_TOKEN_KIND_CHECK

/// Ranges of the kinds from Short on.
constexpr IntegerRange kRanges[] = {
    {-32768, 32767},           // Short
    {-2147483648, 2147483647}, // Int
    {-2147483648, 2147483647}, // Long
    {0, 65535},                // UnsignedShort
    {0, 4294967295},           // UnsignedInt
    {0, 4294967295},           // UnsignedLong
};

} // namespace

std::string_view GetTokenKindName(TokenKind kind) noexcept {
    const auto number = static_cast<std::size_t>(kind);
    return number < kNames.size() ? kNames[number] : std::string_view();
}

IntegerRange GetIntegerRange(TokenKind kind) noexcept {
    if (!IsIntegerKind(kind))
        return {0, -1};
    return kRanges[static_cast<std::size_t>(kind) - static_cast<std::size_t>(TokenKind::Short)];
}

} // namespace io
