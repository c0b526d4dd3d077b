// UTF-8, both ways. Runs of ASCII go over in blocks, other characters in words of several of one
// kind. Blocks and words are written whole before it is known how much of them counts; there is
// room for it, since the target has room for at least as many units as are left in the source, and
// the last few go one by one.

#include "code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <type_traits>

#include "ascii_block.h"
#include "utf8_word.h"

namespace codepage {
namespace {

using Byte = unsigned char;

/// Source units that a step over non-ASCII needs to be there: as many as it reads, or so many that
/// what it writes behind those that count has room, at a byte or more for each that is left.
template <class Unit>
constexpr std::ptrdiff_t kStep = sizeof(Unit) == 1 ? 8 : 12;

constexpr bool Follows(char byte) {
    return (static_cast<Byte>(byte) & 0xC0) == 0x80;
}
constexpr bool IsSurrogate(char16_t ch) {
    return (ch & 0xF800) == 0xD800;
}
constexpr bool IsHigh(char16_t ch) {
    return (ch & 0xFC00) == 0xD800;
}
constexpr bool IsLow(char16_t ch) {
    return (ch & 0xFC00) == 0xDC00;
}

/// True for a surrogate at `in` that the next unit completes.
inline bool IsPair(const char16_t* in, const char16_t* end) noexcept {
    return IsHigh(*in) && end - in >= 2 && IsLow(in[1]);
}

// ---------------------------------------------------------------- runs of ASCII

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

/// True for four units of ASCII; the end of a line or a blank between words isn't worth a block.
template <class Unit>
inline bool StartsAsciiRun(const Unit* in) noexcept {
    constexpr Word kFour = (Word{1} << 2 * sizeof(Unit) * 8 << 2 * sizeof(Unit) * 8) - 1;
    return (LoadWord(in) & kOtherThanAscii<Unit> & kFour) == 0;
}

// ---------------------------------------------------------------- bytes to units

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

/// The row of each byte.
constexpr std::array<LeadRow, 0x100> kLeadOf = [] {
    std::array<LeadRow, 0x100> rows{};
    for (unsigned byte = 0; byte < 0x100; ++byte)
        rows[byte] = *std::find_if(std::begin(kLeads), std::end(kLeads),
                                   [byte](const LeadRow& row) { return byte <= row.last; });
    return rows;
}();

/// Stands for a piece that is no character.
constexpr char32_t kIllFormed = 0xFFFFFFFF;

/// A character or an ill-formed piece, with its length in bytes. Fits a register.
struct Taken {
    char32_t ch;
    std::uint32_t length;
};

/// The one piece at `in`, by the table. An ill-formed one is as long as it could have become a
/// character.
[[gnu::noinline]] Taken LookAtPiece(const char* in, const char* end) noexcept {
    const Byte lead = static_cast<Byte>(*in);
    const LeadRow& row = kLeadOf[lead];
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

/// Takes the one piece at `in`, writes it and steps over it; false for an ill-formed one, which
/// becomes kReplacement.
inline bool TakePiece(const char*& in, const char* end, char16_t*& out) noexcept {
    const Taken taken = LookAtPiece(in, end);
    in += taken.length;
    if (taken.ch < 0x10000 || taken.ch == kIllFormed) {
        *out++ = taken.ch == kIllFormed ? kReplacement : static_cast<char16_t>(taken.ch);
        return taken.ch != kIllFormed;
    }
    *out++ = static_cast<char16_t>(0xD7C0 + (taken.ch >> 10)); // D800 less 10000 >> 10
    *out++ = static_cast<char16_t>(0xDC00 + (taken.ch & 0x3FF));
    return true;
}

/// Takes characters of `From` source units each at `in`, where kStep are: `Lanes` of them at a time
/// as `convert` finds them sound, and at last those in front of a fault. False when there is none.
///
/// All or one of them are told by branches, which are mostly foreseen, so that the next step begins
/// before this one is done; a number between is counted, since nobody foresees the length of words.
template <unsigned From, unsigned To, unsigned Lanes, class In, class Out, class Function,
          class IsKind>
[[gnu::always_inline]] inline bool TakeRun(const In*& in, const In* end, Out*& out,
                                           Function convert, IsKind isKind) noexcept {
    constexpr unsigned kLaneBits = From * sizeof(In) * 8;
    constexpr Word kFirstLane = (Word{1} << kLaneBits) - 1;
    do {
        const Word faults = convert(in, out);
        if (faults != 0) {
            if ((faults & kFirstLane) != 0)
                return false;
            std::size_t count = 1;
            if (Lanes > 2 && (faults & (kFirstLane << kLaneBits)) == 0)
                count = static_cast<std::size_t>(std::countr_zero(faults)) / kLaneBits;
            in += From * count;
            out += To * count;
            return true;
        }
        in += From * Lanes;
        out += To * Lanes;
    } while (end - in >= kStep<In> && isKind(*in));
    return true;
}

/// Takes the piece at `in`, where kStep bytes are and no ASCII, and further ones of its kind; false
/// for an ill-formed one.
[[gnu::always_inline]] inline bool TakeStep(const char*& in, const char* end,
                                            char16_t*& out) noexcept {
    const Byte lead = static_cast<Byte>(*in);
    const auto isTwo = [](char ch) { return (ch & 0xE0) == 0xC0; };
    const auto isThree = [](char ch) { return (ch & 0xF0) == 0xE0; };
    const auto isFour = [](char ch) { return (ch & 0xF8) == 0xF0; };
    const bool isTaken = lead < 0xE0   ? TakeRun<2, 1, 4>(in, end, out, DecodeTwos, isTwo)
                         : lead < 0xF0 ? TakeRun<3, 1, 2>(in, end, out, DecodeThrees, isThree)
                                       : TakeRun<4, 2, 2>(in, end, out, DecodeFours, isFour);
    return isTaken || TakePiece(in, end, out);
}

// ---------------------------------------------------------------- units to bytes

/// Writes a character of two bytes, and one of three.
inline void PutTwo(char16_t ch, char*& out) noexcept {
    *out++ = static_cast<char>(0xC0 | ch >> 6);
    *out++ = static_cast<char>(0x80 | (ch & 0x3F));
}
inline void PutThree(char16_t ch, char*& out) noexcept {
    *out++ = static_cast<char>(0xE0 | ch >> 12);
    *out++ = static_cast<char>(0x80 | (ch >> 6 & 0x3F));
    *out++ = static_cast<char>(0x80 | (ch & 0x3F));
}

/// Takes the one character at `in`, writes it and steps over it; kReplacement for a lone surrogate.
[[gnu::always_inline]] inline void TakeCharacter(const char16_t*& in, const char16_t* end,
                                                 char*& out) noexcept {
    const char16_t ch = *in;
    if (IsPair(in, end)) {
        const char32_t pair = 0x10000 + ((ch & 0x3FFu) << 10) + (in[1] & 0x3FFu);
        *out++ = static_cast<char>(0xF0 | pair >> 18);
        *out++ = static_cast<char>(0x80 | (pair >> 12 & 0x3F));
        *out++ = static_cast<char>(0x80 | (pair >> 6 & 0x3F));
        *out++ = static_cast<char>(0x80 | (pair & 0x3F));
        in += 2;
        return;
    }
    if (ch < 0x80) {
        *out++ = static_cast<char>(ch);
    } else if (ch < 0x800) {
        PutTwo(ch, out);
    } else {
        PutThree(IsSurrogate(ch) ? kReplacement : ch, out);
    }
    ++in;
}

/// Takes the character at `in`, where kStep units are and no ASCII, and further ones of its kind.
[[gnu::always_inline]] inline void TakeStep(const char16_t*& in, const char16_t* end,
                                            char*& out) noexcept {
    const auto isTwo = [](char16_t ch) { return ch >= 0x80 && ch < 0x800; };
    const auto isThree = [](char16_t ch) { return ch >= 0x800 && !IsSurrogate(ch); };
    if (*in < 0x800 && IsAscii(in[1])) // alone, as in German
        return PutTwo(*in++, out);
    const bool isTaken = *in < 0x800    ? TakeRun<1, 2, 4>(in, end, out, EncodeTwos, isTwo)
                         : isThree(*in) ? TakeRun<1, 3, 4>(in, end, out, EncodeThrees, isThree)
                                        : TakeRun<2, 4, 2>(in, end, out, EncodePairs, IsSurrogate);
    if (!isTaken) { // a lone surrogate
        PutThree(kReplacement, out);
        ++in;
    }
}

/// Takes a block of characters of one byte and of two, in front of one unit more. No branch asks
/// which, since nobody foresees the length of words.
inline void TakeOnesAndTwos(const char16_t*& in, char*& out) noexcept {
    for (std::size_t i = 0; i < kBlock; ++i) {
        const unsigned ch = in[i];
        const unsigned two = 0x80C0u | ch >> 6 | (ch & 0x3Fu) << 8;
        const auto bytes = static_cast<std::uint16_t>(ch < 0x80 ? ch : two);
        std::memcpy(out, &bytes, sizeof bytes);
        out += ch < 0x80 ? 1 : 2;
    }
    in += kBlock;
}

/// Takes the run of ASCII that begins at `in`, and of units blocks with characters of two bytes
/// too.
inline void TakeAsciiRun(const char*& in, const char* end, char16_t*& out) noexcept {
    TakeAscii(in, end, out);
}
inline void TakeAsciiRun(const char16_t*& in, const char16_t* end, char*& out) noexcept {
    while (static_cast<std::size_t>(end - in) > kBlock) {
        const Word all = UnionOf(in);
        if ((all & 0xF800F800F800F800) != 0)
            break;
        if ((all & kOtherThanAscii<char16_t>) == 0)
            TakeAscii(in, end, out);
        else
            TakeOnesAndTwos(in, out);
    }
    TakeAscii(in, end, out);
}

// ---------------------------------------------------------------- whole texts

/// Converts all of `in`; `takeOne` is for the last few.
template <class In, class Out, class TakeOne>
[[gnu::always_inline]] inline std::size_t Convert(std::basic_string_view<In> text, Out* out,
                                                  TakeOne takeOne) noexcept {
    Out* const start = out;
    const In* in = text.data();
    const In* const end = in + text.size();
    while (end - in >= kStep<In>) {
        if (!IsAscii(*in))
            TakeStep(in, end, out);
        else if (StartsAsciiRun(in))
            TakeAsciiRun(in, end, out);
        else
            *out++ = static_cast<Out>(*in++);
    }
    while (in != end) {
        TakeAscii(in, end, out);
        if (in != end)
            takeOne(in, end, out);
    }
    return static_cast<std::size_t>(out - start);
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
    const std::size_t length = LookAtPiece(bytes.data() + lead, bytes.data() + bytes.size()).length;
    return std::max(lead + length, kAppendStep);
}

std::size_t StepOf(std::u16string_view text) noexcept {
    if (text.size() <= kAppendStep)
        return text.size();
    return IsHigh(text[kAppendStep - 1]) ? kAppendStep - 1 : kAppendStep;
}

} // namespace

bool IsValidUtf8(std::string_view bytes) noexcept {
    const char* in = bytes.data();
    const char* const end = in + bytes.size();
    for (bool isValid = true; isValid;) {
        SkipAscii(in, end);
        if (in == end)
            return true;
        char16_t ignored[4];
        char16_t* out = ignored;
        isValid =
            end - in >= kStep<char> ? TakeStep(in, in + kStep<char>, out) : TakePiece(in, end, out);
    }
    return false;
}

bool IsValidUtf16(std::u16string_view text) noexcept {
    const char16_t* in = text.data();
    const char16_t* const end = in + text.size();
    for (;;) {
        SkipAscii(in, end);
        if (in == end)
            return true;
        const bool isPair = IsPair(in, end);
        if (IsSurrogate(*in) && !isPair)
            return false;
        in += isPair ? 2 : 1;
    }
}

std::size_t Utf16ToUtf8Length(std::u16string_view text) noexcept {
    const char16_t* in = text.data();
    const char16_t* const end = in + text.size();
    std::size_t length = text.size();
    for (;;) {
        SkipAscii(in, end);
        if (in == end)
            return length;
        const bool isPair = IsPair(in, end);
        length += *in < 0x800 ? 1 : 2; // a pair is four bytes for two units
        in += isPair ? 2 : 1;
    }
}

std::size_t Utf8ToUtf16(std::string_view bytes, char16_t* out) noexcept {
    return Convert(bytes, out, [](auto& in, auto end, auto& to) { TakePiece(in, end, to); });
}

std::size_t Utf16ToUtf8(std::u16string_view text, char* out) noexcept {
    return Convert(text, out, [](auto& in, auto end, auto& to) { TakeCharacter(in, end, to); });
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
