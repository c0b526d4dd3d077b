// Reading ahead of the usual tokens. A token is read here when all of it, and the character behind
// it, lies in what the raw stream has buffered, and its text is what stands there; nothing is
// consumed by that. Everything else is left to the automaton, which reads any token a character at
// a time: escapes, CData, hexadecimal numbers, folded case, kept comments, UTF-8 beyond ASCII, very
// long numbers, and a token at the edge of the buffer. What a character is and where a token ends
// comes from the grammar's tables, so that both ways read the same.
//
// Many tokens are read at a time, so that what a call costs is shared by them.

#include <algorithm>

#include "char_class.h"
#include "decimal.h"
#include "packed_source.h"
#include "text_run.h"

// All of it is inlined into ReadAhead, so that it works in registers.
#define ALWAYS_INLINE [[gnu::always_inline]]

namespace io {

namespace {

/// Numbers longer than this are left to the automaton; any double written with 17 digits is
/// shorter.
constexpr std::ptrdiff_t kMostNumber = 26;
/// Quoted text by its kind.
struct Quotes {
    unsigned inside;
    unsigned closed;
    unsigned final;
    TokenKind kind;
};
constexpr Quotes kSingle{kStateInSingle, kStateClosedSingle, 39, TokenKind::SingleQuotedText};
constexpr Quotes kDouble{kStateInDouble, kStateClosedDouble, 40, TokenKind::DoubleQuotedText};

/// The final states of numbers.
constexpr unsigned kRealEnd = 37;
constexpr unsigned kIntegerEnd = 38;

/// A number as it stands in the input, with the state behind its last character.
struct NumberScan {
    const char16_t* stop;
    const char16_t* bound; ///< no character from here on is looked at
    unsigned state = kStateStart;
    std::uint64_t source = 0; ///< packed; only if the number is short enough
    DecimalParts parts{};

    ALWAYS_INLINE void Scan() {
        const char16_t* const start = stop;
        if (IsOneOf(u'+', u'-')) {
            parts.isNegative = TakeMark() == u'-';
            state = kStateSign;
        }
        const bool isZero = stop == start && *stop == u'0';
        if (TakeDigits(parts.digits))
            state = isZero && stop == start + 1 ? kStateFirstZero : kStateInteger;
        if (IsOneOf(u'.', u'.'))
            ScanFraction();
        const bool hasDigits =
            state == kStateInteger || state == kStateFirstZero || state == kStateFraction;
        if (hasDigits && IsOneOf(u'e', u'E'))
            ScanExponent();
    }

private:
    ALWAYS_INLINE void ScanFraction() {
        TakeMark();
        const char16_t* const first = stop;
        const bool hasFraction = TakeDigits(parts.digits);
        parts.fraction = stop - first;
        if (hasFraction || state == kStateInteger || state == kStateFirstZero)
            state = kStateFraction;
        else
            state = state == kStateSign ? kStateSignAndPoint : kStateFirstPoint;
    }

    ALWAYS_INLINE void ScanExponent() {
        TakeMark();
        state = kStateExponentLetter;
        if (IsOneOf(u'+', u'-')) {
            parts.isExponentNegative = TakeMark() == u'-';
            state = kStateExponentSign;
        }
        if (TakeDigits(parts.exponent))
            state = kStateExponent;
    }

    ALWAYS_INLINE bool IsOneOf(char16_t a, char16_t b) const {
        return stop < bound && (*stop == a || *stop == b);
    }

    ALWAYS_INLINE char16_t TakeMark() {
        source = packed::Append(source, packed::kCodes.of[*stop]);
        return *stop++;
    }

    /// Takes digits into an integer; false when there are none.
    ALWAYS_INLINE bool TakeDigits(std::uint64_t& sum) {
        const char16_t* const first = stop;
        for (; stop < bound; ++stop) {
            const unsigned digit = *stop - unsigned{u'0'};
            if (digit > 9)
                break;
            sum = sum * 10 + digit;
            source = packed::Append(source, digit);
        }
        return stop != first;
    }
};

} // namespace

/// Reads one batch of tokens.
class Text_runs : private Text_run {
public:
    explicit Text_runs(CToken_textstreambuf& buffer)
        : Text_run(*buffer.mTokenStreamBuf, *buffer.mGrammar, buffer.mEncoding), mBuffer(buffer),
          mStart(begin), mEntry(buffer.mBatch.entries) {}

    /// Reads until the batch is full, or a token comes that is none of the usual ones.
    ALWAYS_INLINE void Read() {
        CToken_batch& batch = mBuffer.mBatch;
        while (mEntry != batch.entries + batch.most && Knows(mStart) && ReadOne()) {
        }
        batch.begin = begin;
        batch.count = static_cast<unsigned>(mEntry - batch.entries);
        batch.lines = mLines;
        batch.texts = mTexts;
    }

    /// How much has been dropped in front of the first token.
    std::ptrdiff_t GetDropped() const { return mStart - begin; }

private:
    /// Reads one token, or drops what is none; false when it is none of the usual.
    ALWAYS_INLINE bool ReadOne() {
        using First = CBase_grammar::FastTables::First;
        First first = fast.first[*mStart];
        if (first == First::kBlank) { // most tokens have some in front
            if (mBuffer.mKeepWhiteSpace)
                return false;
            mStart = Skip(kStateWhiteSpace, mStart + 1);
            if (!Knows(mStart))
                return false;
            first = fast.first[*mStart];
        }
        switch (first) {
        case First::kComment:
            return !mBuffer.mKeepComments && DropComment();
        case First::kSymbol:
            return ReadSymbol();
        case First::kLineEnd:
            return ReadLineEnd(mStart + 1);
        case First::kCarriageReturn:
            return ReadCarriageReturn();
        case First::kWord:
            return ReadWord(false);
        case First::kLiteral:
            return ReadWord(true);
        case First::kSingleQuoted:
            return ReadQuoted(kSingle);
        case First::kDoubleQuoted:
            return ReadQuoted(kDouble);
        case First::kNumber:
            return ReadNumber();
        default:
            return false;
        }
    }

    /// The token ends at `stop`.
    ALWAYS_INLINE bool Finish(const char16_t* stop) {
        mEntry->start = mStart;
        mEntry->stop = stop;
        ++mEntry;
        mStart = stop;
        return true;
    }

    /// The token may hold a text outside of it.
    ALWAYS_INLINE void SetOutside(CToken&& token) {
        mEntry->token = std::move(token);
        mTexts |= std::uint64_t{1} << (mEntry - mBuffer.mBatch.entries);
    }

    ALWAYS_INLINE bool ReadSymbol() {
        mEntry->token.SetUnit(TokenKind::Symbol, *mStart);
        return Finish(mStart + 1);
    }

    ALWAYS_INLINE bool FinishText(TokenKind kind, std::u16string_view text, const char16_t* stop) {
        constexpr auto kUnits = static_cast<std::ptrdiff_t>(CToken::kInlineUnits);
        if (text.size() <= CToken::kInlineUnits && end - text.data() >= kUnits)
            mEntry->token.SetUnits(kind, text.data(), text.size());
        else
            SetOutside(CToken(kind, text, &mBuffer.mTexts));
        return Finish(stop);
    }

    ALWAYS_INLINE bool DropComment() {
        const char16_t* const stop = Skip(kStateComment, mStart + 1);
        if (!Knows(stop))
            return false;
        mStart = stop;
        return true;
    }

    ALWAYS_INLINE bool ReadLineEnd(const char16_t* stop) {
        mEntry->token.SetKind(TokenKind::Eol);
        ++mLines;
        return Finish(stop);
    }

    ALWAYS_INLINE bool ReadCarriageReturn() {
        const char16_t* const stop = mStart + 1;
        if (!Knows(stop))
            return false;
        return ReadLineEnd(Next(kStateCarriageReturn, stop) == kStateLineEnd ? stop + 1 : stop);
    }

    ALWAYS_INLINE bool ReadWord(bool mayBeLiteral) {
        const char16_t* const stop = Skip(kStateWord, mStart + 1);
        if (!Knows(stop) || mBuffer.IsFolding())
            return false;
        const std::u16string_view text(mStart, static_cast<std::size_t>(stop - mStart));
        if (!mayBeLiteral)
            return FinishText(TokenKind::Keyword, text, stop);
        if ((text.size() == 1 && !chars::IsAlnum(text[0])) || mBuffer.IsBeginCData(text))
            return false;
        const TokenKind kind = mBuffer.GetWordKind(text);
        const bool isTextKept = kind == TokenKind::Keyword || mBuffer.mKeepText;
        return FinishText(kind, isTextKept ? text : text.substr(0, 0), stop);
    }

    ALWAYS_INLINE bool ReadQuoted(Quotes quotes) {
        const char16_t* const start = mStart + 1;
        const char16_t* const stop = Skip(quotes.inside, start);
        if (!Knows(stop))
            return false;
        const unsigned next = Next(quotes.inside, stop);
        if (next != quotes.closed && next != quotes.final)
            return false;
        const std::u16string_view text(start, static_cast<std::size_t>(stop - start));
        return FinishText(quotes.kind, text, next == quotes.closed ? stop + 1 : stop);
    }

    ALWAYS_INLINE bool ReadNumber() {
        NumberScan scan{mStart, mStart + std::min(end - mStart, kMostNumber)};
        scan.Scan();
        if (scan.stop == scan.bound || !Knows(scan.stop) || mBuffer.IsFolding())
            return false;
        const unsigned next = Next(scan.state, scan.stop);
        if (next != kIntegerEnd && next != kRealEnd)
            return false;
        const TokenKind kind = next == kIntegerEnd ? TokenKind::Int : TokenKind::Double;
        const auto length = static_cast<std::size_t>(scan.stop - mStart);
        double number = 0;
        if (length > CToken::kInlineSource ||
            !(next == kIntegerEnd ? scan.parts.GetInteger(number) : scan.parts.GetExact(number)))
            SetOutside(mBuffer.MakeNumber(kind, {mStart, length}));
        else if (mBuffer.mKeepText)
            mEntry->token.SetPacked(kind, number, scan.source, length);
        else
            mEntry->token.SetPacked(kind, number, 0, 0);
        return Finish(scan.stop);
    }

    CToken_textstreambuf& mBuffer;
    const char16_t* mStart;      ///< of the token that is being read
    CToken_batch::Entry* mEntry; ///< where it goes
    int mLines = 0;              ///< as the batch notes it
    std::uint64_t mTexts = 0;
};

/// A number whose value or source text takes more than is done at one go.
CToken CToken_textstreambuf::MakeNumber(TokenKind kind, std::u16string_view text) {
    double number = 0;
    mSource.assign(text.begin(), text.end());
    if (!ParseDecimal(mSource, number))
        return CToken(TokenKind::SingleQuotedText, text, &mTexts);
    return mKeepText ? CToken(kind, number, mSource, &mTexts) : CToken(kind, number);
}

/// Reads tokens ahead; false when the next one is none of the usual.
bool CToken_textstreambuf::ReadAhead() {
    Settle();
    if (!mPushBack.IsEmpty() || !mGrammar->GetFast().isUsual || mEncoding == StreamEncoding::Locale)
        return false;
    Text_runs runs(*this);
    runs.Read();
    if (mBatch.count != 0)
        return true;
    RawArea::Skip(*mTokenStreamBuf, runs.GetDropped()); // nobody needs to look at it again
    mConsumed += runs.GetDropped();
    return false;
}

} // namespace io
