// Reading of the usual tokens at one go. A token is read here when all of it, and the character
// behind it, lies in what the raw stream has buffered, and its text is what stands there; nothing
// is consumed before that is known. Everything else is left to the automaton, which reads any token
// a character at a time: escapes, CData, hexadecimal numbers, folded case, kept comments, UTF-8
// beyond ASCII, and a token at the edge of the buffer. All decisions come from the grammar's
// tables, so that both ways read the same.

#include <algorithm>

#include "char_class.h"
#include "decimal.h"
#include "packed_source.h"
#include "text_run.h"

namespace io {

namespace {

/// Quoted text by the state behind its opening quote.
struct Quotes {
    unsigned inside;
    unsigned closed;
    unsigned final;
    TokenKind kind;
};
constexpr Quotes kQuotes[] = {
    {kStateInSingle, kStateClosedSingle, 39, TokenKind::SingleQuotedText},
    {kStateInDouble, kStateClosedDouble, 40, TokenKind::DoubleQuotedText}};

/// What the final states of a number, or of a symbol that looked like one, make of it.
struct NumberEnd {
    unsigned state;
    TokenKind kind;
    std::ptrdiff_t left; ///< characters at its end that belong to the next token
};
constexpr NumberEnd kNumberEnds[] = {
    {38, TokenKind::Int, 0},    {37, TokenKind::Double, 0}, {35, TokenKind::Symbol, 0},
    {44, TokenKind::Symbol, 1}, {45, TokenKind::Double, 1}, {46, TokenKind::Double, 2},
};

const NumberEnd* FindNumberEnd(unsigned state) {
    for (const NumberEnd& end : kNumberEnds) {
        if (end.state == state)
            return &end;
    }
    return nullptr;
}

} // namespace

// All of it is inlined into ReadRun, so that it works in registers.
#define ALWAYS_INLINE [[gnu::always_inline]]

/// One attempt on the next token.
class Text_runs : private Text_run {
public:
    explicit Text_runs(CToken_textstreambuf& buffer)
        : Text_run(buffer.GetRaw(), buffer.GetGrammar(), buffer.GetEncoding()), mBuffer(buffer),
          mStart(begin) {}

    /// Reads the next token that isn't dropped.
    ALWAYS_INLINE bool Read() {
        while (Knows(mStart)) {
            const unsigned state = Next(kStateStart, mStart);
            switch (state) {
            case kStateComment:
            case kStateWhiteSpace:
                if (!Drop(state))
                    return false;
                break;
            case kStateSymbol:
                return FinishText(TokenKind::Symbol, {mStart, 1}, mStart + 1);
            case kStateLineEnd:
            case kStateCarriageReturn:
                return ReadLineEnd(state);
            case kStateWord:
                return ReadWord();
            case kStateOpenSingle:
            case kStateOpenDouble:
                return ReadQuoted(kQuotes[state - kStateOpenSingle]);
            case kStateFirstZero:
            case kStateSign:
            case kStateFirstPoint:
            case kStateInteger:
                return ReadNumber(state);
            default:
                return false;
            }
        }
        return false;
    }

    /// Consumes what has been dropped, so that nobody looks at it again.
    void ConsumeDropped() const { Consume(mStart); }

private:
    void Consume(const char16_t* stop) const {
        RawArea::Skip(*mBuffer.mTokenStreamBuf, stop - begin);
        mBuffer.mConsumed += stop - begin;
    }

    /// The token ends at `stop`.
    ALWAYS_INLINE bool Finish(const char16_t* stop) const {
        mBuffer.MarkTokenStart(begin - mStart);
        Consume(stop);
        return true;
    }

    ALWAYS_INLINE bool FinishText(TokenKind kind, std::u16string_view text,
                                  const char16_t* stop) const {
        constexpr auto kUnits = static_cast<std::ptrdiff_t>(CToken::kInlineUnits);
        if (text.size() <= CToken::kInlineUnits && end - text.data() >= kUnits)
            mBuffer.mToken.SetUnits(kind, text.data(), text.size());
        else
            mBuffer.mToken = CToken(kind, text, &mBuffer.mTexts);
        return Finish(stop);
    }

    ALWAYS_INLINE bool Drop(unsigned state) {
        if (!mBuffer.IsDropped(state))
            return false;
        const char16_t* const stop = Skip(state, mStart);
        if (state == kStateComment && !Knows(stop))
            return false;
        mStart = stop;
        return true;
    }

    ALWAYS_INLINE bool ReadLineEnd(unsigned state) const {
        const char16_t* stop = mStart + 1;
        if (state == kStateCarriageReturn) {
            if (!Knows(stop))
                return false;
            if (Next(state, stop) == kStateLineEnd)
                ++stop;
        }
        mBuffer.mToken.SetKind(TokenKind::Eol);
        ++mBuffer.mLine;
        return Finish(stop);
    }

    ALWAYS_INLINE bool ReadWord() const {
        const char16_t* const stop = Skip(kStateWord, mStart + 1);
        if (!Knows(stop) || mBuffer.IsFolding())
            return false;
        const std::u16string_view text(mStart, static_cast<std::size_t>(stop - mStart));
        if (text.size() == 1 && !chars::IsAlnum(text[0]))
            return false; // the delimiter grammar makes it a symbol
        if (mBuffer.IsBeginCData(text))
            return false;
        const TokenKind kind = mBuffer.GetWordKind(text);
        const bool isTextKept = kind == TokenKind::Keyword || mBuffer.mKeepText;
        return FinishText(kind, isTextKept ? text : text.substr(0, 0), stop);
    }

    ALWAYS_INLINE bool ReadQuoted(const Quotes& quotes) const {
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

    ALWAYS_INLINE bool ReadNumber(unsigned state) const {
        if (mBuffer.IsFolding())
            return false;
        DecimalParts parts;
        std::uint64_t source = 0;
        const char16_t* stop = mStart;
        const NumberEnd* const last = FindNumberEnd(Scan(state, parts, source, stop));
        if (!last)
            return false;
        stop -= last->left;
        if (last->kind == TokenKind::Symbol)
            return FinishText(last->kind, {mStart, 1}, stop);

        const auto length = static_cast<std::size_t>(stop - mStart);
        double number = 0;
        if (length <= CToken::kInlineSource && parts.GetExact(number)) {
            source = mBuffer.mKeepText ? packed::DropLast(source, last->left) : 0;
            mBuffer.mToken.SetPacked(last->kind, number, source);
        } else if (!mBuffer.SetLongNumber(last->kind, {mStart, length})) {
            return false;
        }
        return Finish(stop);
    }

    /// Scans a number from `state`, which the character at `stop` leads to, and returns the state
    /// behind: a final one, or another if this is no plain number.
    ALWAYS_INLINE unsigned Scan(unsigned state, DecimalParts& parts, std::uint64_t& source,
                                const char16_t*& stop) const {
        const auto takeMark = [&] {
            source = packed::Append(source, packed::kCodes.of[*stop & 0x7F]);
            return *stop++;
        };
        const auto takeDigits = [&](auto add) {
            do {
                const unsigned digit = *stop - unsigned{u'0'};
                add(digit);
                source = packed::Append(source, packed::kZero + digit);
                ++stop;
            } while (Stays(state, stop));
        };
        for (;;) {
            switch (state) {
            case kStateSign:
                parts.isNegative = takeMark() == u'-';
                break;
            case kStateFirstPoint:
            case kStateSignAndPoint:
            case kStateExponentLetter:
                takeMark();
                break;
            case kStateExponentSign:
                parts.isExponentNegative = takeMark() == u'-';
                break;
            case kStateFirstZero:
            case kStateInteger:
                takeDigits([&](unsigned digit) { parts.AddDigit(digit); });
                break;
            case kStateFraction: {
                if (*stop == u'.')
                    takeMark();
                const char16_t* const first = stop;
                if (Stays(state, stop))
                    takeDigits([&](unsigned digit) { parts.AddDigit(digit); });
                parts.fraction = static_cast<int>(stop - first);
                break;
            }
            case kStateExponent:
                takeDigits([&](unsigned digit) { parts.AddExponentDigit(digit); });
                break;
            default:
                return state;
            }
            if (!Knows(stop))
                return kStateStart;
            state = Next(state, stop);
        }
    }

    CToken_textstreambuf& mBuffer;
    const char16_t* mStart;
};

bool CToken_textstreambuf::ReadRun() {
    if (!mPushBack.IsEmpty() || !mGrammar->GetFast().isUsual)
        return false;
    Text_runs runs(*this);
    if (runs.Read())
        return true;
    runs.ConsumeDropped();
    return false;
}

/// A number whose value or source text takes more than a run has room for.
bool CToken_textstreambuf::SetLongNumber(TokenKind kind, std::u16string_view text) {
    mSource.assign(text.begin(), text.end());
    double number = 0;
    if (!ParseDecimal(mSource, number))
        return false;
    mToken = mKeepText ? CToken(kind, number, mSource, &mTexts) : CToken(kind, number);
    return true;
}

} // namespace io
