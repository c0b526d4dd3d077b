/// Conversion of whole spans between 8-bit text and 16-bit units.
///
/// Every function takes any input: zeros are characters like others, and what can't be converted is
/// replaced. Source and target must not overlap. Text in ASCII runs at about the speed of memory.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "quorel_export.h"

namespace codepage {

/// A set of 256 characters. Each byte of either stands for one character, and back for itself.
enum class Page : unsigned char {
    kWindows1252, ///< its unassigned bytes 81, 8D, 8F, 90 and 9D are U+0081, U+008D and so on
    kDos850
};

/// Written for a character that a page lacks.
inline constexpr char kLackingByte = '?';
/// Read for each ill-formed piece of UTF-8, and written for a lone surrogate.
inline constexpr char16_t kReplacement = 0xFFFD;
/// UTF-8 takes at most so many bytes for one 16-bit unit.
inline constexpr std::size_t kMaxUtf8PerUnit = 3;

/// The character of a byte.
QUOREL_API char16_t DecodeByte(Page page, char byte) noexcept;
/// The byte of a character, or kLackingByte.
QUOREL_API char EncodeUnit(Page page, char16_t ch) noexcept;
/// True when the page has every unit of the text, so that Encode loses nothing.
QUOREL_API bool CanEncode(Page page, std::u16string_view text) noexcept;

/// Writes one unit for each byte to `out`, which has room for bytes.size() units.
QUOREL_API void Decode(Page page, std::string_view bytes, char16_t* out) noexcept;
/// Writes one byte for each unit to `out`, which has room for text.size() bytes.
QUOREL_API void Encode(Page page, std::u16string_view text, char* out) noexcept;
/// The same at the end of a string.
QUOREL_API void AppendDecoded(Page page, std::string_view bytes, std::u16string& out);
QUOREL_API void AppendEncoded(Page page, std::u16string_view text, std::string& out);

/// True when the bytes are well-formed UTF-8, so that Utf8ToUtf16 loses nothing.
QUOREL_API bool IsValidUtf8(std::string_view bytes) noexcept;
/// True when every surrogate is half of a pair, so that Utf16ToUtf8 loses nothing.
QUOREL_API bool IsValidUtf16(std::u16string_view text) noexcept;
/// The number of bytes that Utf16ToUtf8 writes.
QUOREL_API std::size_t Utf16ToUtf8Length(std::u16string_view text) noexcept;

/// Writes the text to `out`, which has room for bytes.size() units, and returns the units written.
/// An ill-formed piece is the longest start of a character that breaks off, or else a single byte;
/// each becomes one kReplacement. A byte order mark is a character like others.
QUOREL_API std::size_t Utf8ToUtf16(std::string_view bytes, char16_t* out) noexcept;
/// Writes the text to `out`, which has room for Utf16ToUtf8Length (at most kMaxUtf8PerUnit a unit),
/// and returns the bytes written.
QUOREL_API std::size_t Utf16ToUtf8(std::u16string_view text, char* out) noexcept;
/// The same at the end of a string.
QUOREL_API void AppendUtf8ToUtf16(std::string_view bytes, std::u16string& out);
QUOREL_API void AppendUtf16ToUtf8(std::u16string_view text, std::string& out);

} // namespace codepage
