// Writing of tokens as text.

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

#include "char_class.h"
#include "code_page.h"
#include "number_format.h"
#include "raw_area.h"
#include "token_textstreambuf.h"

namespace io {

namespace {

constexpr char16_t kSingleQuote = u'\'';
constexpr char16_t kDoubleQuote = u'"';
constexpr char16_t kBackslash = u'\\';
constexpr std::size_t kPiece = 256;    ///< units that are converted at a time
constexpr std::size_t kMostPlain = 64; ///< units of quoted text that are tried at one go

bool NeedsEscape(char16_t ch, char16_t quote) noexcept {
    return ch == quote || ch == kBackslash || chars::IsCntrl(ch);
}

bool IsHighSurrogate(char16_t ch) noexcept {
    return (ch & 0xFC00) == 0xD800;
}

char16_t FirstOf(std::u16string_view text) noexcept {
    return text.empty() ? u'\0' : text.front();
}

} // namespace

// --- Characters ---

/// Writes units as UTF-8.
void CToken_textstreambuf::PutUtf8(std::u16string_view text) {
    std::array<char, kPiece * codepage::kMaxUtf8PerUnit> bytes;
    std::array<char16_t, kPiece * codepage::kMaxUtf8PerUnit> units;
    while (!text.empty()) {
        std::size_t size = std::min(text.size(), kPiece);
        if (size < text.size() && IsHighSurrogate(text[size - 1]))
            --size; // keeps a pair together
        const std::size_t count = codepage::Utf16ToUtf8(text.substr(0, size), bytes.data());
        std::transform(bytes.begin(), bytes.begin() + count, units.begin(),
                       [](char byte) { return static_cast<unsigned char>(byte); });
        PutUnits({units.data(), count});
        text.remove_prefix(size);
    }
}

[[gnu::noinline]] void CToken_textstreambuf::PutSlowly(std::u16string_view text) {
    mLastChar = text.back();
    mWriteCount += text.size();
    mEncoding == StreamEncoding::Utf8 ? PutUtf8(text) : PutUnits(text);
}

/// Makes units that have been put into the raw stream's room part of what is written, if they may
/// go out as they stand.
inline bool CToken_textstreambuf::TakeRoom(std::size_t count, char16_t allBits, char16_t last) {
    if (allBits >= 0x80 && mEncoding == StreamEncoding::Utf8)
        return false;
    RawArea::Commit(*mTokenStreamBuf, count);
    mWriteCount += count;
    mLastChar = last;
    return true;
}

inline void CToken_textstreambuf::Put(std::u16string_view text) {
    if (text.empty() ||
        (text.size() <= RawArea::RoomSize(*mTokenStreamBuf) &&
         TakeRoom(text.size(), CopyUnits(text, RawArea::Room(*mTokenStreamBuf)), text.back())))
        return;
    PutSlowly(text);
}

inline void CToken_textstreambuf::Put(char16_t ch) {
    if (ch < 0x80 && RawArea::RoomSize(*mTokenStreamBuf) != 0) {
        *RawArea::Room(*mTokenStreamBuf) = ch;
        TakeRoom(1, ch, ch);
    } else {
        PutSlowly({&ch, 1});
    }
}

// --- Tokens ---

/// Whether a blank must keep two tokens of a line apart.
inline bool CToken_textstreambuf::NeedsBlank(TokenKind previousKind, char16_t lastChar,
                                             TokenKind newKind, char16_t firstChar) const {
    const auto has = [&](char16_t ch, std::uint32_t flag) {
        return (mGrammar->GetFlags(ch) & flag) != 0;
    };
    if (newKind == TokenKind::Symbol)
        return (IsNumberKind(previousKind) && has(firstChar, kCharPoint)) ||
               (previousKind == TokenKind::Keyword && has(firstChar, kCharIdentPart));
    if (newKind == TokenKind::Comment || previousKind != TokenKind::Symbol)
        return true;
    if (!IsNumberKind(newKind))
        return false;
    if (has(lastChar, kCharPoint))
        return !has(firstChar, kCharPoint);
    return has(lastChar, kCharSign) && !has(firstChar, kCharSign);
}

inline void CToken_textstreambuf::Separate(TokenKind previousKind, char16_t lastChar,
                                           TokenKind newKind, char16_t firstChar) {
    if (newKind == TokenKind::Eol)
        return;
    if (previousKind == TokenKind::Eol) {
        Put(mIndent);
        return;
    }
    if (previousKind == TokenKind::WhiteSpace || newKind == TokenKind::WhiteSpace || !mAutoBlank)
        return;
    if (NeedsBlank(previousKind, lastChar, newKind, firstChar))
        Put(u' ');
}

/// Writes a token's text as it stands.
void CToken_textstreambuf::PutToken(std::u16string_view text, TokenKind kind) {
    Separate(mLastKind, mLastChar, kind, FirstOf(text));
    Put(text);
    mLastKind = kind;
}

/// Writes a short text in quotes, if it needs no escape; all at one go.
bool CToken_textstreambuf::PutPlainQuoted(std::u16string_view text, char16_t quote) {
    if (text.size() > kMostPlain || text.size() + 2 > RawArea::RoomSize(*mTokenStreamBuf))
        return false;
    char16_t* out = RawArea::Room(*mTokenStreamBuf);
    char16_t all = 0;
    *out++ = quote;
    for (const char16_t ch : text) {
        if (NeedsEscape(ch, quote))
            return false;
        all = static_cast<char16_t>(all | ch);
        *out++ = ch;
    }
    *out = quote;
    return TakeRoom(text.size() + 2, all, quote);
}

void CToken_textstreambuf::PutQuoted(std::u16string_view text, char16_t quote, TokenKind kind) {
    if (!mAutoBlank) {
        PutToken(text, kind);
        return;
    }
    Separate(mLastKind, mLastChar, kind, quote);
    mLastKind = kind;
    if (PutPlainQuoted(text, quote))
        return;
    Put(quote);
    while (!text.empty()) {
        const auto special = std::find_if(text.begin(), text.end(),
                                          [=](char16_t ch) { return NeedsEscape(ch, quote); });
        const auto plain = static_cast<std::size_t>(special - text.begin());
        Put(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty())
            break;
        if (!text.starts_with(u"\r\n")) { // the CR of a pair is left out
            Put(kBackslash);
            Put(text.front());
        }
        text.remove_prefix(1);
    }
    Put(quote);
}

/// Whether a text reads back when it stands between the CData words: it must not end CData by
/// itself, which the end word does only where no identifier goes on behind it.
bool CToken_textstreambuf::CanBeCData(std::u16string_view text) const {
    const AString& word = mGrammar->GetEndCData();
    if (word.empty() || mGrammar->GetBeginCData().empty())
        return false;
    unsigned state = kStateCData;
    std::size_t cursor = 0;
    for (const char16_t ch : text) {
        state = mGrammar->NextState(state, ch);
        if (state == kStateCDataEnd && cursor < word.size() && chars::ToLower(ch) == word[cursor]) {
            ++cursor;
        } else if (cursor == word.size() && state != kStateCDataEnd) {
            return false;
        } else {
            state = kStateCData;
            cursor = 0;
        }
    }
    return cursor < word.size();
}

void CToken_textstreambuf::PutCData(std::u16string_view text) {
    if (!CanBeCData(text)) {
        PutQuoted(text, kSingleQuote, TokenKind::SingleQuotedText);
        return;
    }
    const AString& opener = mGrammar->GetBeginCData();
    PutToken(opener, TokenKind::Keyword);
    const std::uint64_t count = mWriteCount;
    std::size_t stop = 0;
    const TokenKind first = mGrammar->Scan(text, stop);
    Separate(first, stop > 0 ? text[stop - 1] : u'\0', TokenKind::Keyword, opener.front());
    if (mAutoBlank && count == mWriteCount && mGrammar->GetFlags(FirstOf(text)) & kCharIdentPart)
        Put(u' '); // a symbol that would continue the opening word

    Put(text);
    mLine += static_cast<int>(std::count_if(text.begin(), text.end(), [&](char16_t ch) {
        return (mGrammar->GetFlags(ch) & kCharEndOfLine) != 0;
    }));
    const std::uint32_t last = mGrammar->GetFlags(mLastChar);
    mLastKind = last & kCharEndOfLine ? TokenKind::Eol
                : last & kCharBlank   ? TokenKind::WhiteSpace
                                      : TokenKind::Keyword;
    PutToken(mGrammar->GetEndCData(), TokenKind::Keyword);
}

void CToken_textstreambuf::WriteComment(std::u16string_view text) {
    if (const char16_t opener = mGrammar->GetCommentChar()) {
        PutToken({&opener, 1}, TokenKind::Comment);
        Put(u' ');
        Put(text);
    }
    EndLine(false);
}

void CToken_textstreambuf::WriteQuoted(std::u16string_view text) {
    TokenKind kind{};
    if (mGrammar->IsOneToken(text, kind) && IsQuotedKind(kind))
        PutToken(text, kind);
    else
        PutQuoted(text, kSingleQuote, TokenKind::SingleQuotedText);
}

void CToken_textstreambuf::WriteWord(std::u16string_view text) {
    TokenKind kind{};
    if (mGrammar->IsOneToken(text, kind))
        PutToken(text, kind);
    else
        PutQuoted(text, kSingleQuote, TokenKind::SingleQuotedText);
}

void CToken_textstreambuf::WriteKeyword(std::u16string_view text) {
    WriteWord(text);
}

void CToken_textstreambuf::WriteChar(char16_t ch) {
    const TokenKind kind = ch < 0x100 ? mGrammar->GetFast().alone[ch] : TokenKind::Null;
    if (kind == TokenKind::Null) {
        WriteWord({&ch, 1});
        return;
    }
    Separate(mLastKind, mLastChar, kind, ch);
    Put(ch);
    mLastKind = kind;
}

void CToken_textstreambuf::WriteSymbol(char16_t ch) {
    WriteChar(ch);
}

void CToken_textstreambuf::WriteBool(const bool* value) {
    if (*value)
        PutToken(mGrammar->GetTrueWord(), TokenKind::True);
    else
        PutToken(mGrammar->GetFalseWord(), TokenKind::False);
}

void CToken_textstreambuf::EndLine(bool force) {
    if (!force && mLastKind == TokenKind::Eol)
        return;
    Put(mCrLf ? std::u16string_view(u"\r\n") : std::u16string_view(u"\n"));
    ++mLine;
    mLastKind = TokenKind::Eol;
}

void CToken_textstreambuf::PushIndent(int count, char16_t fill) {
    mIndentStack.push_back(std::max(count, 0));
    mIndent.append(static_cast<std::size_t>(mIndentStack.back()), fill);
}

void CToken_textstreambuf::PopIndent() {
    if (mIndentStack.empty())
        return;
    mIndent.resize(mIndent.size() - static_cast<std::size_t>(mIndentStack.back()));
    mIndentStack.pop_back();
}

// --- Numbers ---

template <class Number>
void CToken_textstreambuf::PutNumber(Number number, TokenKind kind, std::ios_base::fmtflags flags) {
    NumberFormat format{flags, mPrecision, mWidth, mFill};
    const bool isHex = mHex && std::integral<Number>;
    if (isHex)
        format.flags =
            (flags & ~(std::ios_base::basefield | std::ios_base::showbase)) | std::ios_base::hex;
    FormatNumber(number, format, mNumberText);
    if (isHex) // fill characters that are no digits stay in front of it
        mNumberText.insert(mNumberText.find_first_of(u"0123456789abcdefABCDEF"),
                           mGrammar->GetHexPrefix());
    PutToken(mNumberText, kind);
}

void CToken_textstreambuf::WriteDouble(const double* number, std::ios_base::fmtflags flags) {
    PutNumber(*number, TokenKind::Double, flags);
}

void CToken_textstreambuf::WriteFloat(const float* number, std::ios_base::fmtflags flags) {
    PutNumber(static_cast<double>(*number), TokenKind::Float, flags);
}

void CToken_textstreambuf::WriteUnsignedLong(const unsigned long* number,
                                             std::ios_base::fmtflags flags) {
    PutNumber(*number, TokenKind::UnsignedLong, flags);
}

void CToken_textstreambuf::WriteLong(const long* number, std::ios_base::fmtflags flags) {
    PutNumber(*number, TokenKind::Long, flags);
}

void CToken_textstreambuf::WriteUnsignedInt(const unsigned* number, std::ios_base::fmtflags flags) {
    PutNumber(*number, TokenKind::UnsignedInt, flags);
}

void CToken_textstreambuf::WriteInt(const int* number, std::ios_base::fmtflags flags) {
    PutNumber(*number, TokenKind::Int, flags);
}

void CToken_textstreambuf::WriteShort(const short* number, std::ios_base::fmtflags flags) {
    PutNumber(*number, TokenKind::Short, flags);
}

void CToken_textstreambuf::WriteUnsignedShort(const unsigned short* number,
                                              std::ios_base::fmtflags flags) {
    PutNumber(*number, TokenKind::UnsignedShort, flags);
}

/// A number without source text.
void CToken_textstreambuf::PutNumberToken(const CToken& token, std::ios_base::fmtflags flags) {
    const double number = token.GetNumber();
    const TokenKind kind = token.GetKind();
    const bool isHex = kind == TokenKind::Hex;
    const IntegerRange range = GetIntegerRange(isHex ? TokenKind::UnsignedLong : kind);
    const bool readsAsHex = number <= GetIntegerRange(TokenKind::Int).highest;
    if (!(number >= range.lowest && number <= range.highest)) {
        PutNumber(number, kind == TokenKind::Float ? kind : TokenKind::Double, flags);
        return;
    }
    const bool wasHex = std::exchange(mHex, isHex ? readsAsHex : mHex);
    if (kind == TokenKind::Short)
        PutNumber(static_cast<short>(number), kind, flags);
    else if (kind <= TokenKind::Long)
        PutNumber(static_cast<int>(number), kind, flags);
    else
        PutNumber(static_cast<unsigned>(number), kind, flags);
    mHex = wasHex;
}

void CToken_textstreambuf::PutSource(const CToken& token) {
    const TokenKind kind = token.GetKind();
    char16_t units[CToken::kInlineSource];
    if (token.GetTextLength() <= std::size(units) && kind != TokenKind::Hex) {
        PutToken({units, token.CopySource(units)}, kind);
        return;
    }
    mNumberText.clear();
    token.AppendTextTo(mNumberText);
    if (kind == TokenKind::Hex) // a reader that folds to upper case has made it none
        std::transform(mNumberText.begin(), mNumberText.end(), mNumberText.begin(), chars::ToLower);
    PutToken(mNumberText, kind);
}

void CToken_textstreambuf::WriteToken(const CToken& token, std::ios_base::fmtflags flags) {
    const TokenKind kind = token.GetKind();
    const std::u16string_view text = token.GetTextView();
    if (token.IsNumber()) {
        token.HasText() ? PutSource(token) : PutNumberToken(token, flags);
    } else if (kind == TokenKind::SingleQuotedText) {
        PutQuoted(text, kSingleQuote, kind);
    } else if (kind == TokenKind::DoubleQuotedText) {
        PutQuoted(text, kDoubleQuote, kind);
    } else if (kind == TokenKind::CData) {
        PutCData(text);
    } else if (kind == TokenKind::True || kind == TokenKind::False) {
        const bool value = kind == TokenKind::True;
        WriteBool(&value);
    } else if (kind == TokenKind::Eol) {
        EndLine(true);
    } else if (!text.empty()) {
        PutToken(text, kind);
    } else if (kind == TokenKind::WhiteSpace) {
        PutToken(u" ", kind);
    } else {
        mLastKind = TokenKind::Null;
        mLastChar = u'\0';
    }
}

} // namespace io
