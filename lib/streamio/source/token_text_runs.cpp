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

/// A number as it is scanned: its value and its packed source text.
struct NumberScan {
    DecimalSum sum;
    std::uint64_t source = 0;
    const char16_t* stop;

    /// Scans from `state`, which the character at `stop` leads to, and returns the state behind:
    /// a final one, or the last one if the number ends otherwise.
    unsigned Scan(const Text_run& run, unsigned state) {
        while (Take(run, state) && run.Knows(stop)) {
            state = run.Next(state, stop);
            if (state >= kFirstFinalState)
                break;
        }
        return state;
    }

private:
    /// Takes all characters of a state; false for a state that is none of a plain number.
    bool Take(const Text_run& run, unsigned state) {
        switch (state) {
        case kStateSign:
            sum.SetNegative(TakeMark() == u'-');
            return true;
        case kStateExponentSign:
            sum.SetExponentNegative(TakeMark() == u'-');
            return true;
        case kStateFirstPoint:
        case kStateSignAndPoint:
        case kStateExponentLetter:
            TakeMark();
            return true;
        case kStateFirstZero:
        case kStateInteger:
            TakeDigits(run, state, &DecimalSum::AddDigit);
            return true;
        case kStateFraction:
            if (*stop == u'.')
                TakeMark();
            else
                TakeDigits(run, state, &DecimalSum::AddFractionDigit);
            return true;
        case kStateExponent:
            TakeDigits(run, state, &DecimalSum::AddExponentDigit);
            return true;
        default:
            return false;
        }
    }

    char16_t TakeMark() noexcept {
        source = packed::Append(source, packed::kCodes.of[*stop & 0x7F]);
        return *stop++;
    }

    template <class Add>
    void TakeDigits(const Text_run& run, unsigned state, Add add) {
        do {
            const unsigned digit = *stop - unsigned{u'0'};
            (sum.*add)(digit);
            source = packed::Append(source, packed::kZero + digit);
            ++stop;
        } while (run.Stays(state, stop));
    }
};

} // namespace

bool CToken_textstreambuf::ReadRun() {
    if (!mPushBack.IsEmpty())
        return false;
    Text_run run(*mTokenStreamBuf, *mGrammar, mEncoding);
    if (!run.fast.isUsual)
        return false;
    const bool isRead = ReadRun(run);
    if (!isRead && run.start != run.begin) { // what was dropped needn't be read again
        RawArea::Skip(*mTokenStreamBuf, run.start - run.begin);
        mConsumed += run.start - run.begin;
    }
    return isRead;
}

/// Reads the next token that isn't dropped; `run.start` moves behind what is.
bool CToken_textstreambuf::ReadRun(Text_run& run) {
    while (run.Knows(run.start)) {
        const unsigned state = run.Next(kStateStart, run.start);
        switch (state) {
        case kStateComment:
        case kStateWhiteSpace:
            if (!DropRun(run, state))
                return false;
            break;
        case kStateSymbol:
            return FinishTextRun(run, TokenKind::Symbol, {run.start, 1}, run.start + 1);
        case kStateLineEnd:
        case kStateCarriageReturn:
            return ReadLineEndRun(run, state);
        case kStateWord:
            return ReadWordRun(run);
        case kStateOpenSingle:
        case kStateOpenDouble:
            return ReadQuotedRun(run, state);
        case kStateFirstZero:
        case kStateSign:
        case kStateFirstPoint:
        case kStateInteger:
            return ReadNumberRun(run, state);
        default:
            return false;
        }
    }
    return false;
}

/// Consumes the token, and all in front of it, up to `stop`.
void CToken_textstreambuf::ConsumeRun(const Text_run& run, const char16_t* stop) {
    MarkTokenStart(run.begin - run.start);
    RawArea::Skip(*mTokenStreamBuf, stop - run.begin);
    mConsumed += stop - run.begin;
}

bool CToken_textstreambuf::FinishTextRun(const Text_run& run, TokenKind kind,
                                         std::u16string_view text, const char16_t* stop) {
    constexpr auto kUnits = static_cast<std::ptrdiff_t>(CToken::kInlineUnits);
    if (text.size() <= CToken::kInlineUnits && run.end - text.data() >= kUnits)
        mToken = CToken::FromUnits(kind, text.data(), text.size());
    else
        mToken = CToken(kind, text, &mTexts);
    ConsumeRun(run, stop);
    return true;
}

bool CToken_textstreambuf::DropRun(Text_run& run, unsigned state) const {
    if (!IsDropped(state))
        return false;
    const char16_t* const stop = run.Skip(state, run.start);
    if (state == kStateComment && !run.Knows(stop))
        return false;
    run.start = stop;
    return true;
}

bool CToken_textstreambuf::ReadLineEndRun(const Text_run& run, unsigned state) {
    const char16_t* stop = run.start + 1;
    if (state == kStateCarriageReturn) {
        if (!run.Knows(stop))
            return false;
        if (run.Next(state, stop) == kStateLineEnd)
            ++stop;
    }
    mToken = CToken(TokenKind::Eol);
    ++mLine;
    ConsumeRun(run, stop);
    return true;
}

bool CToken_textstreambuf::ReadWordRun(const Text_run& run) {
    const char16_t* const stop = run.Skip(kStateWord, run.start + 1);
    if (!run.Knows(stop) || IsFolding())
        return false;
    const std::u16string_view text(run.start, static_cast<std::size_t>(stop - run.start));
    if (text.size() == 1 && !chars::IsAlnum(text[0]))
        return false; // the delimiter grammar makes it a symbol
    if (IsBeginCData(text))
        return false;
    const TokenKind kind = GetWordKind(text);
    const bool isTextKept = kind == TokenKind::Keyword || mKeepText;
    return FinishTextRun(run, kind, isTextKept ? text : text.substr(0, 0), stop);
}

bool CToken_textstreambuf::ReadQuotedRun(const Text_run& run, unsigned state) {
    const Quotes& quotes = kQuotes[state - kStateOpenSingle];
    const char16_t* const start = run.start + 1;
    const char16_t* const stop = run.Skip(quotes.inside, start);
    if (!run.Knows(stop))
        return false;
    const unsigned next = run.Next(quotes.inside, stop);
    if (next != quotes.closed && next != quotes.final)
        return false;
    const std::u16string_view text(start, static_cast<std::size_t>(stop - start));
    return FinishTextRun(run, quotes.kind, text, next == quotes.closed ? stop + 1 : stop);
}

bool CToken_textstreambuf::ReadNumberRun(const Text_run& run, unsigned state) {
    if (IsFolding())
        return false;
    NumberScan scan{{}, 0, run.start};
    const NumberEnd* const end = FindNumberEnd(scan.Scan(run, state));
    if (!end)
        return false;
    const char16_t* const stop = scan.stop - end->left;
    if (end->kind == TokenKind::Symbol)
        return FinishTextRun(run, end->kind, {run.start, 1}, stop);

    const auto length = static_cast<std::size_t>(stop - run.start);
    double number = 0;
    const bool isExact = scan.sum.GetExact(number);
    if (isExact && (length <= CToken::kInlineSource || !mKeepText)) {
        const std::uint64_t source = packed::DropLast(scan.source, end->left);
        mToken = CToken::FromPacked(end->kind, number, mKeepText ? source : 0);
    } else {
        mSource.assign(run.start, stop);
        if (!isExact && !ParseDecimal(mSource, number))
            return false;
        mToken =
            mKeepText ? CToken(end->kind, number, mSource, &mTexts) : CToken(end->kind, number);
    }
    ConsumeRun(run, stop);
    return true;
}

} // namespace io
