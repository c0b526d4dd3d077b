#include "token_binarystreambuf.h"

#include <algorithm>
#include <array>
#include <bit>

#include "assertion.h"
#include "char_class.h"
#include "code_page.h"
#include "raw_area.h"

namespace io {

namespace {

constexpr unsigned kLongBit = 0x80;
constexpr unsigned kLongLength = 4;     ///< units of a long text's length
constexpr std::size_t kMostShort = 255; ///< bytes of a text with a length of one unit
constexpr unsigned kMostBytes = 8;      ///< of a number
constexpr unsigned kMostIntegerBytes = 4;
constexpr unsigned kByteBits = 8;
constexpr unsigned kMissing = 0xFF; ///< read for a unit that isn't there

/// The tags of numbers: tag base + count of bytes, and the kind that each count reads as.
struct NumberTags {
    unsigned base;
    std::array<TokenKind, kMostBytes> kinds;
};
using enum TokenKind;
constexpr NumberTags kUnsignedTags{60,
                                   {UnsignedShort, UnsignedShort, UnsignedInt, UnsignedInt,
                                    UnsignedLong, UnsignedLong, UnsignedLong, UnsignedLong}};
constexpr NumberTags kSignedTags{69, {Short, Short, Int, Int, Long, Long, Long, Long}};
constexpr NumberTags kRealTags{78, {Float, Float, Float, Float, Double, Double, Double, Double}};
constexpr const NumberTags* kNumberTags[] = {&kUnsignedTags, &kSignedTags, &kRealTags};

constexpr unsigned TagOf(TokenKind kind) {
    return static_cast<unsigned>(kind);
}

double ToReal(std::uint64_t bytes, unsigned count) {
    return std::bit_cast<double>(bytes << (kByteBits * (kMostBytes - count)));
}

/// The value of an integer's bytes; a signed one is negative only with all four bytes.
double ToInteger(std::uint64_t bytes, unsigned count, bool isSigned) {
    const std::size_t l = count;
    const std::uint32_t n = static_cast<std::uint32_t>(bytes);
    USE_ASSERT(l <= sizeof(n));
    if (l > sizeof(n))
        return 0;
    return isSigned ? static_cast<double>(static_cast<std::int32_t>(n)) : static_cast<double>(n);
}

/// Bytes of a real but for its low zero ones.
unsigned CountRealBytes(std::uint64_t bits, unsigned width) {
    const auto zeros = static_cast<unsigned>(std::countr_zero(bits)) / kByteBits;
    return zeros < width ? width - zeros : 1;
}

bool IsAscii(std::u16string_view text) {
    char16_t all = 0;
    for (const char16_t ch : text)
        all = static_cast<char16_t>(all | ch);
    return all < 0x80;
}

bool IsBlank(std::u16string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), chars::IsSpace);
}

} // namespace

CToken_binarystreambuf::CToken_binarystreambuf(CRawStreambuf* a_streambuf)
    : CToken_streambuf(a_streambuf, StreamEncoding::BinaryBytes) {}

// --- Input ---

/// Consumes a unit; false, with kMissing, at the end.
bool CToken_binarystreambuf::Take(std::uint32_t& unit) {
    unit = mTokenStreamBuf->sbumpc();
    if (unit == CRawStreambuf::traits_type::eof()) {
        unit = kMissing;
        return false;
    }
    ++mConsumed;
    return true;
}

/// Consumes bytes, the low one first.
std::uint64_t CToken_binarystreambuf::TakeBytes(unsigned count) {
    std::uint64_t bytes = 0;
    for (unsigned i = 0; i < count; ++i) {
        std::uint32_t unit;
        Take(unit);
        bytes |= std::uint64_t{unit & 0xFF} << (kByteBits * i);
    }
    return bytes;
}

const CToken* CToken_binarystreambuf::ReadToken() {
    MarkTokenStart();
    while (!ReadOne())
        RemarkTokenStart();
    return &mToken;
}

/// Reads a token; false when it is to be dropped.
bool CToken_binarystreambuf::ReadOne() {
    const std::uint32_t unit = mTokenStreamBuf->sgetc();
    const bool isLong = unit <= 0xFF && unit & kLongBit;
    const std::uint32_t tag = isLong ? unit & ~kLongBit : unit;
    if (unit == CRawStreambuf::traits_type::eof() || tag == TagOf(Eof)) {
        mToken = CToken(Eof); // the unit stays, so that the end does
        return true;
    }
    std::uint32_t taken;
    Take(taken);
    const auto kind = static_cast<TokenKind>(tag <= TagOf(Error) ? tag : TagOf(Error));
    if (IsTextKind(kind)) {
        ReadText(kind, isLong);
        return !(mToken.GetKind() == Comment && !mKeepComments) &&
               !(mToken.GetKind() == WhiteSpace && !mKeepWhiteSpace);
    }
    if (IsNumberKind(kind) || tag > TagOf(Error))
        ReadNumber(tag);
    else
        mToken = CToken(kind);
    mLine += kind == Eol ? 1 : 0;
    return true;
}

/// The number of a tag, or an Error token for a tag that is none.
void CToken_binarystreambuf::ReadNumber(std::uint32_t tag) {
    for (const NumberTags* tags : kNumberTags) {
        const std::uint32_t count = tag - tags->base;
        if (count < 1 || count > kMostBytes)
            continue;
        const std::uint64_t bytes = TakeBytes(count);
        mToken = CToken(tags->kinds[count - 1],
                        tags == &kRealTags ? ToReal(bytes, count)
                                           : ToInteger(bytes, count, tags == &kSignedTags));
        return;
    }
    mToken = CToken(Error);
}

void CToken_binarystreambuf::ReadText(TokenKind kind, bool isLong) {
    if (kind == Symbol && !isLong) {
        const auto ch = static_cast<char16_t>(TakeBytes(1));
        mToken = CToken(kind, std::u16string_view(&ch, 1));
        return;
    }
    const std::size_t length = TakeBytes(isLong ? kLongLength : 1);
    const std::u16string_view ahead(RawArea::Begin(*mTokenStreamBuf),
                                    RawArea::End(*mTokenStreamBuf));
    if (length <= ahead.size() && IsAscii(ahead.substr(0, length))) {
        mToken = CToken(kind, ahead.substr(0, length), &mTexts);
        Skip(length);
    } else {
        mToken = TakeUtf8(length) ? CToken(kind, mReadText, &mTexts) : CToken();
    }
}

void CToken_binarystreambuf::Skip(std::size_t count) {
    RawArea::Skip(*mTokenStreamBuf, static_cast<std::ptrdiff_t>(count));
    mConsumed += static_cast<std::streamoff>(count);
}

/// Converts so many bytes into mReadText; false when they aren't UTF-8 or the input ends in them.
bool CToken_binarystreambuf::TakeUtf8(std::size_t length) {
    mReadBytes.clear();
    while (length > 0 && mTokenStreamBuf->sgetc() != CRawStreambuf::traits_type::eof()) {
        const char16_t* const units = RawArea::Begin(*mTokenStreamBuf);
        const auto ahead = static_cast<std::size_t>(RawArea::End(*mTokenStreamBuf) - units);
        const std::size_t count = std::min(length, ahead);
        if (count == 0) { // a stream that buffers nothing
            mReadBytes += static_cast<char>(TakeBytes(1));
            --length;
            continue;
        }
        std::transform(units, units + count, std::back_inserter(mReadBytes),
                       [](char16_t unit) { return static_cast<char>(unit); });
        Skip(count);
        length -= count;
    }
    mReadText.clear();
    if (length > 0 || !codepage::IsValidUtf8(mReadBytes))
        return false;
    codepage::AppendUtf8ToUtf16(mReadBytes, mReadText);
    std::replace(mReadText.begin(), mReadText.end(), char16_t{kEndOfInput}, codepage::kReplacement);
    return true;
}

void CToken_binarystreambuf::NewLine() {
    const bool isFirst = PeekToken().GetKind() == Null;
    while (PeekToken().GetKind() != Eol && PeekToken().GetKind() != Eof)
        NextToken();
    if (isFirst || PeekToken().GetKind() == Eol)
        NextToken();
}

void CToken_binarystreambuf::NewLine(AString& line) {
    USE_ASSERT_TEXT(false, "CToken_binarystreambuf::NewLine(AString& line) not implemented");
    line.clear();
    NewLine();
}

// --- Output ---

/// Room for a token of so many units that is written there at one go, and then taken note of by
/// TakeRoom; null when the raw stream has no such room ready.
inline char16_t* CToken_binarystreambuf::GetRoom(std::size_t count) {
    return count <= RawArea::RoomSize(*mTokenStreamBuf) ? RawArea::Room(*mTokenStreamBuf) : nullptr;
}

inline void CToken_binarystreambuf::TakeRoom(TokenKind kind, std::size_t count) {
    RawArea::Commit(*mTokenStreamBuf, count);
    mWriteCount += count;
    mLastKind = kind;
}

/// Writes the units of a token.
void CToken_binarystreambuf::Put(TokenKind kind, std::u16string_view units) {
    PutUnits(units);
    mWriteCount += units.size();
    mLastKind = kind;
}

/// Writes a token of a tag alone.
void CToken_binarystreambuf::PutTag(TokenKind kind) {
    const auto tag = static_cast<char16_t>(kind);
    if (char16_t* const room = GetRoom(1)) {
        *room = tag;
        TakeRoom(kind, 1);
    } else {
        Put(kind, {&tag, 1});
    }
}

/// Writes a short text of ASCII at one go; false if it isn't that.
inline bool CToken_binarystreambuf::PutPlainText(TokenKind kind, std::u16string_view text) {
    constexpr std::size_t kHead = 2;
    if (text.size() > kMostShort || kind == Symbol)
        return false;
    char16_t* const room = GetRoom(kHead + text.size());
    if (!room || CopyUnits(text, room + kHead) >= 0x80)
        return false;
    room[0] = static_cast<char16_t>(TagOf(kind));
    room[1] = static_cast<char16_t>(text.size());
    TakeRoom(kind, kHead + text.size());
    return true;
}

void CToken_binarystreambuf::PutText(TokenKind kind, std::u16string_view text) {
    if (PutPlainText(kind, text))
        return;
    mWriteUnits.clear();
    if (!IsAscii(text)) {
        mWriteBytes.clear();
        codepage::AppendUtf16ToUtf8(text, mWriteBytes);
        for (const char byte : mWriteBytes)
            mWriteUnits += static_cast<unsigned char>(byte);
        text = mWriteUnits;
    }
    const bool isLong = text.size() > kMostShort || kind == Symbol;
    std::array<char16_t, 1 + kLongLength> head;
    head[0] = static_cast<char16_t>(TagOf(kind) | (isLong ? kLongBit : 0));
    const std::size_t count = isLong ? kLongLength : 1;
    for (std::size_t i = 0; i < count; ++i)
        head[1 + i] = static_cast<char16_t>(text.size() >> (kByteBits * i) & 0xFF);
    Put(kind, {head.data(), 1 + count});
    Put(kind, text);
}

/// Writes the low bytes of a number under the tag of their count.
void CToken_binarystreambuf::PutBytes(TokenKind kind, unsigned tagBase, std::uint64_t bytes,
                                      unsigned length) {
    USE_ASSERT(length > 0 && length <= 8);
    std::array<char16_t, 1 + kMostBytes> units;
    char16_t* const room = GetRoom(1 + length);
    char16_t* const out = room ? room : units.data();
    out[0] = static_cast<char16_t>(tagBase + length);
    for (unsigned i = 0; i < length; ++i) // no further: what stands behind may be kept
        out[1 + i] = static_cast<char16_t>(bytes >> (kByteBits * i) & 0xFF);
    if (room)
        TakeRoom(kind, 1 + length);
    else
        Put(kind, {units.data(), 1 + length});
}

template <class Integer>
void CToken_binarystreambuf::PutInteger(TokenKind kind, Integer number) {
    const bool isSigned = std::signed_integral<Integer>;
    const unsigned width = std::min<unsigned>(sizeof number, kMostIntegerBytes);
    const std::uint64_t bits = static_cast<std::make_unsigned_t<Integer>>(number);
    const unsigned used = std::max((static_cast<unsigned>(std::bit_width(bits)) + 7) / 8, 1U);
    const unsigned count = mKeepZeros ? width : std::min(used, width);
    PutBytes(kind, isSigned ? kSignedTags.base : kUnsignedTags.base, bits, count);
}

/// Writes the upper bytes of a real of `width` bytes.
void CToken_binarystreambuf::PutReal(TokenKind kind, std::uint64_t bits, unsigned width) {
    const unsigned count = mKeepZeros ? width : CountRealBytes(bits, width);
    PutBytes(kind, kRealTags.base, bits >> (kByteBits * (width - count)), count);
}

void CToken_binarystreambuf::WriteDouble(const double* number, std::ios_base::fmtflags) {
    PutReal(Double, std::bit_cast<std::uint64_t>(*number), sizeof *number);
}

void CToken_binarystreambuf::WriteFloat(const float* number, std::ios_base::fmtflags) {
    PutReal(Float, std::bit_cast<std::uint32_t>(*number), sizeof *number);
}

void CToken_binarystreambuf::WriteUnsignedLong(const unsigned long* number,
                                               std::ios_base::fmtflags flags) {
    PutLong(UnsignedLong, *number, flags);
}

void CToken_binarystreambuf::WriteLong(const long* number, std::ios_base::fmtflags flags) {
    PutLong(Long, *number, flags);
}

/// Writes a number of 8 bytes; one that 4 can't hold, as a double.
template <class Integer>
void CToken_binarystreambuf::PutLong(TokenKind kind, Integer number,
                                     std::ios_base::fmtflags flags) {
    const auto value = static_cast<double>(number);
    const IntegerRange range = GetIntegerRange(kind);
    if (value >= range.lowest && value <= range.highest)
        PutInteger(kind, number);
    else
        WriteDouble(&value, flags);
}

void CToken_binarystreambuf::WriteUnsignedInt(const unsigned* number, std::ios_base::fmtflags) {
    PutInteger(UnsignedInt, *number);
}

void CToken_binarystreambuf::WriteInt(const int* number, std::ios_base::fmtflags) {
    PutInteger(Int, *number);
}

void CToken_binarystreambuf::WriteShort(const short* number, std::ios_base::fmtflags) {
    PutInteger(Short, *number);
}

void CToken_binarystreambuf::WriteUnsignedShort(const unsigned short* number,
                                                std::ios_base::fmtflags) {
    PutInteger(UnsignedShort, *number);
}

void CToken_binarystreambuf::WriteComment(std::u16string_view text) {
    PutText(Comment, text);
}

void CToken_binarystreambuf::WriteQuoted(std::u16string_view text) {
    PutText(SingleQuotedText, text);
}

void CToken_binarystreambuf::WriteKeyword(std::u16string_view text) {
    PutText(Keyword, text);
}

void CToken_binarystreambuf::WriteSymbol(char16_t ch) {
    const std::array<char16_t, 2> units{TagOf(Symbol), ch};
    char16_t* const room = GetRoom(units.size());
    if (ch >= 0x80) {
        PutText(Symbol, {&ch, 1});
    } else if (room) {
        room[0] = units[0];
        room[1] = units[1];
        TakeRoom(Symbol, units.size());
    } else {
        Put(Symbol, {units.data(), units.size()});
    }
}

void CToken_binarystreambuf::WriteWord(std::u16string_view text) {
    if (!text.data())
        return;
    const bool isBlank = IsBlank(text);
    if (!isBlank || mKeepWhiteSpace)
        PutText(isBlank ? WhiteSpace : SingleQuotedText, text);
}

void CToken_binarystreambuf::WriteChar(char16_t ch) {
    WriteWord({&ch, 1});
}

void CToken_binarystreambuf::WriteBool(const bool* value) {
    PutTag(*value ? True : False);
}

void CToken_binarystreambuf::WriteToken(const CToken& token, std::ios_base::fmtflags flags) {
    const TokenKind kind = token.GetKind();
    const std::u16string_view text = token.GetTextView();
    if (token.IsNumber()) {
        const double number = token.GetNumber();
        WriteDouble(&number, flags);
    } else if (kind == Symbol && text.size() == 1) {
        WriteSymbol(text.front());
    } else if (token.IsText()) {
        PutText(kind, text);
    } else if (kind == Eol) {
        EndLine(true);
    } else if (kind == True || kind == False) {
        PutTag(kind);
    }
}

void CToken_binarystreambuf::EndLine(bool force) {
    if (!force && mLastKind == Eol)
        return;
    PutTag(Eol);
    ++mLine;
}

void CToken_binarystreambuf::WriteHeader() {
    mTokenStreamBuf->pubseekoff(0, std::ios_base::end, std::ios_base::out);
    PutUnits({u"\0", 1});
}

// --- Settings ---

void CToken_binarystreambuf::PushIndent(int, char16_t) {
    ++mIndentDepth;
}

void CToken_binarystreambuf::PopIndent() {
    mIndentDepth -= mIndentDepth > 0 ? 1 : 0;
}

int CToken_binarystreambuf::SetWidth(int width) {
    mKeepZeros = width > 0;
    return std::exchange(mWidth, width);
}

unsigned CToken_binarystreambuf::GetBinarySize(const CToken& token) {
    if (token.IsNumber())
        return 1 + CountRealBytes(std::bit_cast<std::uint64_t>(token.GetNumber()), kMostBytes);
    const std::u16string_view text = token.IsText() ? token.GetTextView() : std::u16string_view();
    if (text.empty())
        return 1;
    const std::size_t bytes = codepage::Utf16ToUtf8Length(text);
    return static_cast<unsigned>(bytes + (bytes <= kMostShort ? 2 : 1 + kLongLength));
}

} // namespace io
