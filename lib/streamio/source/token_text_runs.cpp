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
template <bool kIsStopped>
struct NumberScan {
    const char16_t* stop;
    const char16_t* bound; ///< no unit from here on is looked at, unless one that ends it must come
    unsigned state = kStateStart;
    std::uint64_t source = 0; ///< packed; only if the number is short enough
    DecimalParts parts{};

    ALWAYS_INLINE void Scan() {
        const char16_t* const start = stop;
        if (IsOneOf(u'+', u'-')) {
            parts.isNegative = TakeMark() == u'-';
            state = kStateSign;
        }
        if (TakeDigits(parts.digits))
            state = *start == u'0' && stop == start + 1 ? kStateFirstZero : kStateInteger;
        if (IsOneOf(u'.', u'.'))
            ScanFraction();
        if (IsOneOf(u'e', u'E') &&
            (state == kStateInteger || state == kStateFirstZero || state == kStateFraction))
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

    ALWAYS_INLINE bool IsInside() const { return kIsStopped || stop < bound; }

    ALWAYS_INLINE bool IsOneOf(char16_t a, char16_t b) const {
        return IsInside() && (*stop == a || *stop == b);
    }

    ALWAYS_INLINE char16_t TakeMark() {
        source = packed::Append(source, packed::kCodes.of[*stop]);
        return *stop++;
    }

    /// Takes digits into an integer; false when there are none.
    ALWAYS_INLINE bool TakeDigits(std::uint64_t& sum) {
        const char16_t* const first = stop;
        for (; IsInside(); ++stop) {
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
class Text_runs {
public:
    /// Reads into an empty batch, and returns how much has been dropped in front of the first
    /// token.
    static std::ptrdiff_t Read(CToken_textstreambuf& buffer);

private:
    template <bool kIsUtf8, bool kIsStopped>
    class Reader;
    template <bool kIsUtf8>
    static std::ptrdiff_t ReadOf(CToken_textstreambuf& buffer);

    /// Behind a line end near the end of what is buffered, which ends every token in front of it
    /// but quoted text; the beginning if there is none.
    template <bool kIsUtf8>
    static const char16_t* FindStop(const Text_run<kIsUtf8>& run) {
        constexpr std::ptrdiff_t kFar = 256;
        constexpr std::uint32_t kRuns =
            1U << kStateComment | 1U << kStateWhiteSpace | 1U << kStateWord;
        const char16_t* stop = run.end;
        if ((run.fast.stay[u'\n'] & kRuns) != 0)
            return run.begin;
        const char16_t* const last = run.end - std::min(run.end - run.begin, kFar);
        while (stop != last && stop[-1] != u'\n')
            --stop;
        return stop == last ? run.begin : stop;
    }
};

/// With kIsStopped the unit in front of `stop` is a line end, so that a run needs no look at where
/// the buffer ends; only tokens in front of `stop` are read then.
template <bool kIsUtf8, bool kIsStopped>
class Text_runs::Reader : private Text_run<kIsUtf8> {
public:
    using Run = Text_run<kIsUtf8>;
    ALWAYS_INLINE Reader(CToken_textstreambuf& buffer, const Run& run, const char16_t* stop)
        : Run(run), mBuffer(buffer), mStop(stop), mStart(begin), mEntry(buffer.mBatch.entries),
          mLast(mEntry + buffer.mBatch.most) {}

    /// Reads until the batch is full, or a token comes that is none of the usual ones.
    ALWAYS_INLINE std::ptrdiff_t Read() {
        CToken_batch& batch = mBuffer.mBatch;
        while (HasNext() && ReadOne()) {
        }
        batch.begin = begin;
        batch.count = static_cast<unsigned>(mEntry - batch.entries);
        return mStart - begin;
    }

private:
    using First = CBase_grammar::FastTables::First;
    using Run::begin;
    using Run::end;
    using Run::fast;
    using Run::grammar;
    using Run::limit;
    using Run::Next;

    /// True when there is room for a token, and one begins that may be usual.
    ALWAYS_INLINE bool HasNext() const noexcept {
        return mEntry != mLast && mStart < mStop && *mStart < limit;
    }
    ALWAYS_INLINE bool Knows(const char16_t* p) const noexcept {
        return kIsStopped ? *p < limit : Run::Knows(p);
    }
    ALWAYS_INLINE const char16_t* Skip(unsigned state, const char16_t* p) const {
        return kIsStopped ? Run::SkipToStop(state, p) : Run::Skip(state, p);
    }

    /// Reads one token, or drops what is none; false when it is none of the usual.
    ALWAYS_INLINE bool ReadOne() {
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
        case First::kOther:
        case First::kBlank:
            return false;
        }
        __builtin_unreachable();
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
        mBuffer.mBatch.texts |= std::uint64_t{1} << (mEntry - mBuffer.mBatch.entries);
    }

    /// The same, and reads the symbol that often stands right behind words and values.
    ALWAYS_INLINE bool FinishValue(const char16_t* stop) {
        Finish(stop);
        return !HasNext() || fast.first[*mStart] != First::kSymbol || ReadSymbol();
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
        return FinishValue(stop);
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
        ++mBuffer.mBatch.lines;
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
        if (text.size() == 1 && !chars::IsAlnum(text[0]))
            return false;
        if (!IsLiteralLength(text.size()))
            return FinishText(TokenKind::Keyword, text, stop);
        if (mBuffer.IsBeginCData(text))
            return false;
        const TokenKind kind = mBuffer.GetWordKind(text);
        const bool isTextKept = kind == TokenKind::Keyword || mBuffer.mKeepText;
        return FinishText(kind, isTextKept ? text : text.substr(0, 0), stop);
    }

    /// Whether a word that stands for something else has that length.
    ALWAYS_INLINE bool IsLiteralLength(std::size_t length) const noexcept {
        return length == grammar.GetTrueWord().size() || length == grammar.GetFalseWord().size() ||
               length == grammar.GetBeginCData().size();
    }

    ALWAYS_INLINE bool ReadQuoted(Quotes quotes) {
        const char16_t* const start = mStart + 1;
        const char16_t* const stop = Run::Skip(quotes.inside, start);
        if (!Run::Knows(stop))
            return false;
        const unsigned next = Next(quotes.inside, stop);
        if (next != quotes.closed && next != quotes.final)
            return false;
        const std::u16string_view text(start, static_cast<std::size_t>(stop - start));
        return FinishText(quotes.kind, text, next == quotes.closed ? stop + 1 : stop);
    }

    ALWAYS_INLINE bool ReadNumber() {
        NumberScan<kIsStopped> scan{mStart, mStart + std::min(end - mStart, kMostNumber)};
        scan.Scan();
        if (scan.stop >= scan.bound || !Knows(scan.stop) || mBuffer.IsFolding())
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
        return FinishValue(scan.stop);
    }

    CToken_textstreambuf& mBuffer;
    const char16_t* mStop;            ///< no token begins from here on
    const char16_t* mStart;           ///< of the token that is being read
    CToken_batch::Entry* mEntry;      ///< where it goes
    const CToken_batch::Entry* mLast; ///< behind the last one
};

template <bool kIsUtf8>
std::ptrdiff_t Text_runs::ReadOf(CToken_textstreambuf& buffer) {
    const Text_run<kIsUtf8> run(*buffer.mTokenStreamBuf, *buffer.mGrammar);
    const char16_t* const stop = FindStop(run);
    return stop == run.begin ? Reader<kIsUtf8, false>(buffer, run, run.end).Read()
                             : Reader<kIsUtf8, true>(buffer, run, stop).Read();
}

std::ptrdiff_t Text_runs::Read(CToken_textstreambuf& buffer) {
    return buffer.mEncoding == StreamEncoding::Utf8 ? ReadOf<true>(buffer) : ReadOf<false>(buffer);
}

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
    const std::ptrdiff_t dropped = Text_runs::Read(*this);
    if (mBatch.count != 0)
        return true;
    RawArea::Skip(*mTokenStreamBuf, dropped); // nobody needs to look at it again
    mConsumed += dropped;
    return false;
}

} // namespace io
