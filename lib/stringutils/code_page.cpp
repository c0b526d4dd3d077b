#include "code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <type_traits>

#include "ascii_block.h"

namespace codepage {
namespace {

// Characters of bytes 80 to 9F in Windows-1252; bytes from A0 on are Latin-1. From the mapping
// tables of the Unicode consortium, with its five unassigned bytes as in code_page.h.
constexpr char16_t kWindows1252Special[0x20] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

// Characters of bytes 80 to FF in code page 850, from the same source.
constexpr char16_t kDos850High[0x80] = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7, 0x00EA, 0x00EB, 0x00E8, 0x00EF,
    0x00EE, 0x00EC, 0x00C4, 0x00C5, 0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9,
    0x00FF, 0x00D6, 0x00DC, 0x00F8, 0x00A3, 0x00D8, 0x00D7, 0x0192, 0x00E1, 0x00ED, 0x00F3, 0x00FA,
    0x00F1, 0x00D1, 0x00AA, 0x00BA, 0x00BF, 0x00AE, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB,
    0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x00C1, 0x00C2, 0x00C0, 0x00A9, 0x2563, 0x2551, 0x2557,
    0x255D, 0x00A2, 0x00A5, 0x2510, 0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x00E3, 0x00C3,
    0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x00A4, 0x00F0, 0x00D0, 0x00CA, 0x00CB,
    0x00C8, 0x0131, 0x00CD, 0x00CE, 0x00CF, 0x2518, 0x250C, 0x2588, 0x2584, 0x00A6, 0x00CC, 0x2580,
    0x00D3, 0x00DF, 0x00D4, 0x00D2, 0x00F5, 0x00D5, 0x00B5, 0x00FE, 0x00DE, 0x00DA, 0x00DB, 0x00D9,
    0x00FD, 0x00DD, 0x00AF, 0x00B4, 0x00AD, 0x00B1, 0x2017, 0x00BE, 0x00B6, 0x00A7, 0x00F7, 0x00B8,
    0x00B0, 0x00A8, 0x00B7, 0x00B9, 0x00B3, 0x00B2, 0x25A0, 0x00A0,
};

/// Both directions of a page. A unit's byte is found by way of its high byte, most of which share
/// block 0, in which every unit is lacking.
struct PageTables {
    std::uint8_t special =
        0x80; ///< so many bytes from 80 on are not the characters of their numbers
    static constexpr std::size_t kBlocks = 6;
    static constexpr std::size_t kLatin1Block = 1; // since byte 0 is the first to be entered
    std::array<char16_t, 0x100> decode{};
    std::array<std::uint8_t, 0x100> blockOf{};
    std::array<std::array<char, 0x100>, kBlocks> encode{};

    char Encode(char16_t ch) const noexcept {
        const std::size_t block = ch < 0x100 ? kLatin1Block : blockOf[ch >> 8];
        return encode[block][ch & 0xFF];
    }
};

constexpr PageTables MakeTables(Page page) {
    PageTables tables;
    for (unsigned b = 0; b < 0x100; ++b)
        tables.decode[b] = static_cast<char16_t>(b);
    if (page == Page::kDos850)
        std::copy(std::begin(kDos850High), std::end(kDos850High), tables.decode.begin() + 0x80);
    else
        std::copy(std::begin(kWindows1252Special), std::end(kWindows1252Special),
                  tables.decode.begin() + 0x80);
    while (tables.decode[0x80 + tables.special - 1] == 0x80 + tables.special - 1)
        --tables.special;
    for (auto& block : tables.encode)
        block.fill(kLackingByte);
    std::uint8_t used = 0;
    for (unsigned b = 0; b < 0x100; ++b) {
        const char16_t ch = tables.decode[b];
        std::uint8_t& block = tables.blockOf[ch >> 8];
        if (block == 0)
            block = ++used;
        tables.encode[block][ch & 0xFF] = static_cast<char>(b);
    }
    return tables;
}

constexpr PageTables kTables[] = {MakeTables(Page::kWindows1252), MakeTables(Page::kDos850)};

const PageTables& TablesOf(Page page) {
    return kTables[static_cast<std::size_t>(page)];
}

/// True when every unit of the block is its own byte in the page: below 80, or from 80 + `special`
/// up to FF. Without a branch, so that it becomes vector code.
template <class Unit>
bool IsSameInPage(const Unit* in, std::make_unsigned_t<Unit> special) {
    using Unsigned = std::make_unsigned_t<Unit>;
    if (special == 0x80) // no more than ASCII
        return false;
    Unsigned other = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        const auto unit = static_cast<Unsigned>(in[i]);
        const auto above = static_cast<Unsigned>(unit - 0x80);
        other = static_cast<Unsigned>(other | (above < special) | (unit > 0xFF));
    }
    return other == 0;
}

/// One block from bytes to units, and back.
struct DecodeBlock {
    const PageTables& tables;
    void operator()(const char* in, char16_t* out) const {
        if (IsAsciiBlock(in) || IsSameInPage(in, tables.special))
            return CopyBlock(in, out);
        for (std::size_t i = 0; i < kBlock; ++i)
            out[i] = tables.decode[static_cast<unsigned char>(in[i])];
    }
};
struct EncodeBlock {
    const PageTables& tables;
    void operator()(const char16_t* in, char* out) const {
        if (IsAsciiBlock(in) || IsSameInPage(in, tables.special))
            return CopyBlock(in, out);
        if (IsLatin1Block(in)) {
            const auto& latin1 = tables.encode[PageTables::kLatin1Block];
            for (std::size_t i = 0; i < kBlock; ++i)
                out[i] = latin1[in[i]];
        } else {
            for (std::size_t i = 0; i < kBlock; ++i)
                out[i] = tables.Encode(in[i]);
        }
    }
};

/// Runs `block` over a text of at least one block; the last one may overlap the one before.
template <class In, class Out, class Block>
void OverBlocks(const In* in, std::size_t n, Out* out, Block block) {
    std::size_t i = 0;
    for (; n - i > kBlock; i += kBlock)
        block(in + i, out + i);
    block(in + n - kBlock, out + n - kBlock);
}

/// Units that the appending forms work on at a time, so that what `resize` has just filled with
/// zeros is still in the cache when it is overwritten.
constexpr std::size_t kAppendStep = 4096;

template <class In, class Out, class Convert>
void AppendInSteps(std::basic_string_view<In> in, std::basic_string<Out>& out, Convert convert) {
    out.reserve(out.size() + in.size());
    for (std::size_t i = 0; i < in.size(); i += kAppendStep) {
        const auto step = in.substr(i, kAppendStep);
        out.resize(out.size() + step.size());
        convert(step, out.data() + out.size() - step.size());
    }
}

} // namespace

char16_t DecodeByte(Page page, char byte) noexcept {
    return TablesOf(page).decode[static_cast<unsigned char>(byte)];
}

char EncodeUnit(Page page, char16_t ch) noexcept {
    return TablesOf(page).Encode(ch);
}

bool CanEncode(Page page, std::u16string_view text) noexcept {
    const PageTables& tables = TablesOf(page);
    const char16_t* in = text.data();
    const char16_t* const end = in + text.size();
    for (;;) {
        SkipAscii(in, end);
        if (in == end)
            return true;
        if (tables.Encode(*in++) == kLackingByte)
            return false;
    }
}

void Decode(Page page, std::string_view bytes, char16_t* out) noexcept {
    const PageTables& tables = TablesOf(page);
    if (bytes.size() >= kBlock)
        return OverBlocks(bytes.data(), bytes.size(), out, DecodeBlock{tables});
    for (const char byte : bytes)
        *out++ = tables.decode[static_cast<unsigned char>(byte)];
}

void Encode(Page page, std::u16string_view text, char* out) noexcept {
    const PageTables& tables = TablesOf(page);
    if (text.size() >= kBlock)
        return OverBlocks(text.data(), text.size(), out, EncodeBlock{tables});
    for (const char16_t ch : text)
        *out++ = tables.Encode(ch);
}

void AppendDecoded(Page page, std::string_view bytes, std::u16string& out) {
    AppendInSteps(bytes, out, [page](std::string_view in, char16_t* to) { Decode(page, in, to); });
}

void AppendEncoded(Page page, std::u16string_view text, std::string& out) {
    AppendInSteps(text, out, [page](std::u16string_view in, char* to) { Encode(page, in, to); });
}

} // namespace codepage
