// UTF-8, both ways. Text is taken in turns: what is ASCII at its start goes over in blocks, then
// the characters up to the next run of ASCII one each by itself. A block is written whole before it
// is known how much of it is ASCII; there is room for it, since the target has room for at least as
// many units as are left in the source.

#include "code_page.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "ascii_block.h"

namespace codepage {
namespace {

using Byte = unsigned char;

constexpr bool Follows(char byte) {
    return (static_cast<Byte>(byte) & 0xC0) == 0x80;
}
constexpr bool IsSurrogate(char32_t ch) {
    return (ch & 0xFFFFF800) == 0xD800;
}
constexpr bool IsHigh(char16_t ch) {
    return (ch & 0xFC00) == 0xD800;
}
constexpr bool IsLow(char16_t ch) {
    return (ch & 0xFC00) == 0xDC00;
}

/// Stands for a piece that is no character.
constexpr char32_t kIllFormed = 0xFFFFFFFF;

/// A character or an ill-formed piece, with its length in bytes. Fits a register.
struct Taken {
    char32_t ch;
    std::uint32_t length;
};

/// A row for each range of lead bytes: how many bytes follow, and what the first of them may be;
/// the others are 80 to BF. From the Unicode standard, table 3-7.
struct LeadRow {
    Byte last; ///< of the range, which begins behind the row before
    Byte following;
    Byte low, high;
};
constexpr LeadRow kLeads[] = {
    {0x7F, 0, 0, 0},       {0xC1, 0, 1, 0},       {0xDF, 1, 0x80, 0xBF}, {0xE0, 2, 0xA0, 0xBF},
    {0xEC, 2, 0x80, 0xBF}, {0xED, 2, 0x80, 0x9F}, {0xEF, 2, 0x80, 0xBF}, {0xF0, 3, 0x90, 0xBF},
    {0xF3, 3, 0x80, 0xBF}, {0xF4, 3, 0x80, 0x8F}, {0xFF, 0, 1, 0},
};

/// Takes any piece, by the table. An ill-formed one is as long as it could have become a character.
[[gnu::noinline]] Taken TakeAny(const char* in, const char* end) noexcept {
    const Byte lead = static_cast<Byte>(*in);
    const LeadRow& row = *std::find_if(std::begin(kLeads), std::end(kLeads),
                                       [lead](const LeadRow& r) { return lead <= r.last; });
    if (row.following == 0)
        return {row.low == 0 ? lead : kIllFormed, 1};
    char32_t ch = lead & (0x3Fu >> row.following);
    Byte low = row.low, high = row.high;
    for (std::uint32_t length = 1; length <= row.following; ++length) {
        if (in + length == end)
            return {kIllFormed, length};
        const Byte next = static_cast<Byte>(in[length]);
        if (next < low || next > high)
            return {kIllFormed, length};
        ch = ch << 6 | (next & 0x3Fu);
        low = 0x80;
        high = 0xBF;
    }
    return {ch, row.following + 1u};
}

/// Takes the piece at `in`, well-formed ones by one look at four bytes.
[[gnu::always_inline]] inline Taken Take(const char* in, const char* end) noexcept {
    const Byte lead = static_cast<Byte>(*in);
    if (lead < 0x80)
        return {lead, 1};
    if (end - in < 4)
        return TakeAny(in, end);
    std::uint32_t word;
    std::memcpy(&word, in, sizeof word);
    const char32_t low[] = {word >> 8 & 0x3F, word >> 16 & 0x3F, word >> 24 & 0x3F};
    if ((word & 0xC0E0) == 0x80C0 && (word & 0x1E) != 0)
        return {(word & 0x1F) << 6 | low[0], 2};
    if ((word & 0xC0C0F0) == 0x8080E0) {
        const char32_t ch = (word & 0x0F) << 12 | low[0] << 6 | low[1];
        return ch >= 0x800 && !IsSurrogate(ch) ? Taken{ch, 3} : TakeAny(in, end);
    }
    if ((word & 0xC0C0C0F8) == 0x808080F0) {
        const char32_t ch = (word & 0x07) << 18 | low[0] << 12 | low[1] << 6 | low[2];
        return ch >= 0x10000 && ch <= 0x10FFFF ? Taken{ch, 4} : TakeAny(in, end);
    }
    return TakeAny(in, end);
}

/// Writes a character, or kReplacement for kIllFormed.
inline char16_t* PutUnits(char32_t ch, char16_t* out) noexcept {
    if (ch < 0x10000 || ch == kIllFormed) {
        *out = ch == kIllFormed ? kReplacement : static_cast<char16_t>(ch);
        return out + 1;
    }
    out[0] = static_cast<char16_t>(0xD7C0 + (ch >> 10)); // D800 less 10000 >> 10
    out[1] = static_cast<char16_t>(0xDC00 + (ch & 0x3FF));
    return out + 2;
}

/// True for a surrogate at `in` that the next unit completes.
inline bool IsPair(const char16_t* in, const char16_t* end) noexcept {
    return IsHigh(*in) && end - in >= 2 && IsLow(in[1]);
}

/// Takes the character at `in` and steps over it; kReplacement for a lone surrogate.
[[gnu::always_inline]] inline char32_t TakeUnits(const char16_t*& in,
                                                 const char16_t* end) noexcept {
    const char16_t ch = *in;
    if (!IsPair(in, end)) {
        ++in;
        return IsSurrogate(ch) ? kReplacement : ch;
    }
    const char32_t pair = 0x10000 + ((ch & 0x3FFu) << 10) + (in[1] & 0x3FFu);
    in += 2;
    return pair;
}

constexpr std::size_t BytesOf(char32_t ch) {
    return ch < 0x80 ? 1 : ch < 0x800 ? 2 : ch < 0x10000 ? 3 : 4;
}

[[gnu::always_inline]] inline char* PutBytes(char32_t ch, char* out) noexcept {
    const auto follow = [ch](unsigned shift) {
        return static_cast<char>(0x80 | (ch >> shift & 0x3F));
    };
    switch (BytesOf(ch)) {
    case 1:
        out[0] = static_cast<char>(ch);
        return out + 1;
    case 2:
        out[0] = static_cast<char>(0xC0 | ch >> 6);
        out[1] = follow(0);
        return out + 2;
    case 3:
        out[0] = static_cast<char>(0xE0 | ch >> 12);
        out[1] = follow(6);
        out[2] = follow(0);
        return out + 3;
    default:
        out[0] = static_cast<char>(0xF0 | ch >> 18);
        out[1] = follow(12);
        out[2] = follow(6);
        out[3] = follow(0);
        return out + 4;
    }
}

template <class Unit>
constexpr bool IsAscii(Unit unit) {
    return static_cast<std::make_unsigned_t<Unit>>(unit) < 0x80;
}

/// Copies the ASCII at the start of `in` to `out`, and steps over it on both sides.
template <class In, class Out>
inline void TakeAscii(const In*& in, const In* end, Out*& out) noexcept {
    std::size_t prefix = kBlock;
    while (prefix == kBlock && static_cast<std::size_t>(end - in) >= kBlock) {
        CopyBlock(in, out);
        prefix = AsciiPrefix(in);
        in += prefix;
        out += prefix;
    }
    for (; in != end && IsAscii(*in); ++in, ++out)
        *out = static_cast<Out>(*in);
}

/// True for ASCII of two units or more; a blank between words isn't worth a block.
template <class Unit>
inline bool StartsAsciiRun(const Unit* in, const Unit* end) noexcept {
    return IsAscii(in[0]) && (end - in < 2 || IsAscii(in[1]));
}

template <class Unit>
inline bool StartsAsciiBlock(const Unit* in, const Unit* end) noexcept {
    return static_cast<std::size_t>(end - in) >= kBlock && IsAsciiBlock(in);
}

/// Source units that the appending forms take at a time, by way of a buffer on the stack.
constexpr std::size_t kAppendStep = 1024;

/// The length of the next step, which divides no character and at most 3 over kAppendStep.
std::size_t StepOf(std::string_view bytes) noexcept {
    if (bytes.size() <= kAppendStep)
        return bytes.size();
    std::size_t lead = kAppendStep - 1;
    while (lead > kAppendStep - 3 && Follows(bytes[lead]))
        --lead;
    const std::size_t length = Take(bytes.data() + lead, bytes.data() + bytes.size()).length;
    return std::max(lead + length, kAppendStep);
}

std::size_t StepOf(std::u16string_view text) noexcept {
    if (text.size() <= kAppendStep)
        return text.size();
    return IsHigh(text[kAppendStep - 1]) ? kAppendStep - 1 : kAppendStep;
}

} // namespace

bool IsValidUtf8(std::string_view bytes) noexcept {
    const char* end = bytes.data() + bytes.size();
    for (const char* in = bytes.data(); in != end;) {
        if (StartsAsciiBlock(in, end)) {
            in += kBlock;
            continue;
        }
        const Taken taken = Take(in, end);
        if (taken.ch == kIllFormed)
            return false;
        in += taken.length;
    }
    return true;
}

bool IsValidUtf16(std::u16string_view text) noexcept {
    const char16_t* end = text.data() + text.size();
    for (const char16_t* in = text.data(); in != end;) {
        const bool isPair = IsPair(in, end);
        if (IsSurrogate(*in) && !isPair)
            return false;
        in += isPair ? 2 : 1;
    }
    return true;
}

std::size_t Utf16ToUtf8Length(std::u16string_view text) noexcept {
    const char16_t* end = text.data() + text.size();
    std::size_t length = 0;
    for (const char16_t* in = text.data(); in != end;) {
        if (StartsAsciiBlock(in, end)) {
            in += kBlock;
            length += kBlock;
        } else {
            length += BytesOf(TakeUnits(in, end));
        }
    }
    return length;
}

std::size_t Utf8ToUtf16(std::string_view bytes, char16_t* out) noexcept {
    char16_t* const start = out;
    const char* in = bytes.data();
    const char* const end = in + bytes.size();
    while (in != end) {
        TakeAscii(in, end, out);
        while (in != end && !StartsAsciiRun(in, end)) {
            const Taken taken = Take(in, end);
            out = PutUnits(taken.ch, out);
            in += taken.length;
        }
    }
    return static_cast<std::size_t>(out - start);
}

std::size_t Utf16ToUtf8(std::u16string_view text, char* out) noexcept {
    char* const start = out;
    const char16_t* in = text.data();
    const char16_t* const end = in + text.size();
    while (in != end) {
        TakeAscii(in, end, out);
        while (in != end && !StartsAsciiRun(in, end))
            out = PutBytes(TakeUnits(in, end), out);
    }
    return static_cast<std::size_t>(out - start);
}

void AppendUtf8ToUtf16(std::string_view bytes, std::u16string& out) {
    char16_t buffer[kAppendStep + 3];
    while (!bytes.empty()) {
        const std::size_t step = StepOf(bytes);
        out.append(buffer, Utf8ToUtf16(bytes.substr(0, step), buffer));
        bytes.remove_prefix(step);
    }
}

void AppendUtf16ToUtf8(std::u16string_view text, std::string& out) {
    char buffer[kAppendStep * kMaxUtf8PerUnit];
    while (!text.empty()) {
        const std::size_t step = StepOf(text);
        out.append(buffer, Utf16ToUtf8(text.substr(0, step), buffer));
        text.remove_prefix(step);
    }
}

} // namespace codepage
