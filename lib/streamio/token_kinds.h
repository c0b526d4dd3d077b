/// The kinds of tokens, the same in both forms of a block stream.
#pragma once

#include <cstdint>
#include <string_view>

#include "quorel_export.h"

namespace io {

/// All kinds, in order: number, name. The numbers stand in binary streams, and ranges of them are
/// compared, so the order is fixed.
// clang-format off
#define IO_TOKEN_KINDS(row)                                                                        \
    row(0, Null)              /* nothing; also: no token has been read yet */                      \
    row(1, Short)             /* kinds 1 to 9 carry a number, held as a double */                  \
    row(2, Int)                                                                                    \
    row(3, Long)                                                                                   \
    row(4, UnsignedShort)                                                                          \
    row(5, UnsignedInt)                                                                            \
    row(6, UnsignedLong)                                                                           \
    row(7, Double)                                                                                 \
    row(8, Float)                                                                                  \
    row(9, Hex)                                                                                    \
    row(10, True)                                                                                  \
    row(11, False)                                                                                 \
    row(12, Keyword)          /* kinds 12 to 18 carry a text */                                    \
    row(13, SingleQuotedText)                                                                      \
    row(14, DoubleQuotedText)                                                                      \
    row(15, CData)                                                                                 \
    row(16, WhiteSpace)                                                                            \
    row(17, Comment)                                                                               \
    row(18, Symbol)                                                                                \
    row(19, Eol)                                                                                   \
    row(20, Eof)                                                                                   \
    row(21, Error)
// clang-format on

#define IO_TOKEN_KIND_ENUMERATOR(number, name) name = number,
enum class TokenKind : std::int8_t { IO_TOKEN_KINDS(IO_TOKEN_KIND_ENUMERATOR) };
#undef IO_TOKEN_KIND_ENUMERATOR

inline constexpr int kTokenKindCount = 22;

/// The kind's name as shown to people, such as "SingleQuotedText"; empty for a number out of range.
QUOREL_API std::string_view GetTokenKindName(TokenKind kind) noexcept;

/// True for the kinds that carry a number: Short to Hex.
constexpr bool IsNumberKind(TokenKind kind) noexcept {
    return kind >= TokenKind::Short && kind <= TokenKind::Hex;
}
/// True for the number kinds that the block writers put out as plain integers: Short to
/// UnsignedLong.
constexpr bool IsIntegerKind(TokenKind kind) noexcept {
    return kind >= TokenKind::Short && kind <= TokenKind::UnsignedLong;
}
/// True for the kinds that carry a text: Keyword to Symbol.
constexpr bool IsTextKind(TokenKind kind) noexcept {
    return kind >= TokenKind::Keyword && kind <= TokenKind::Symbol;
}
/// True for the text kinds whose text may be empty: single-quoted, double-quoted, CData.
constexpr bool IsQuotedKind(TokenKind kind) noexcept {
    return kind >= TokenKind::SingleQuotedText && kind <= TokenKind::CData;
}

/// The values that an integer kind can hold, both ends included. Long is as wide as Int.
struct IntegerRange {
    double lowest;
    double highest;
};
/// The range of an integer kind; for any other kind an empty one.
QUOREL_API IntegerRange GetIntegerRange(TokenKind kind) noexcept;

} // namespace io
