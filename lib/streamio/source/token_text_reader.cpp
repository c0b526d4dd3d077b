// Reading by the automaton, a character and a handler at a time.

#include <array>

#include "assertion.h"
#include "char_class.h"
#include "code_page.h"
#include "decimal.h"
#include "text_run.h"

namespace io {

namespace {

constexpr std::uint32_t kEnd = kEndOfInput;

/// Lower case forms beside those that the capitals have.
constexpr char16_t kFurtherForms[][2] = {
    {0x01C5, 0x01C4}, {0x01C8, 0x01C7}, {0x01CB, 0x01CA}, {0x01F2, 0x01F1}, {0x0345, 0x0399},
    {0x03C2, 0x03A3}, {0x03D0, 0x0392}, {0x03D1, 0x0398}, {0x03D5, 0x03A6}, {0x03D6, 0x03A0},
    {0x03F0, 0x039A}, {0x03F1, 0x03A1}, {0x03F5, 0x0395}, {0x1C80, 0x0412}, {0x1C81, 0x0414},
    {0x1C82, 0x041E}, {0x1C83, 0x0421}, {0x1C84, 0x0422}, {0x1C85, 0x0422}, {0x1C86, 0x042A},
    {0x1C87, 0x0462}, {0x1C88, 0xA64A}, {0x1E9B, 0x1E60}, {0x1FBE, 0x0399}};

/// The upper case of each character. One below 256 whose upper case lies beyond stays, and the
/// other way round.
struct UpperCase {
    std::array<char16_t, 0x10000> of{};
    UpperCase() {
        for (std::uint32_t ch = 0; ch < of.size(); ++ch)
            of[ch] = static_cast<char16_t>(ch);
        // Backwards: of several forms with one lower case the first counts.
        for (std::uint32_t ch = 0xFFFF; ch > 0; --ch) {
            const char16_t lower = chars::ToLower(static_cast<char16_t>(ch));
            if (lower != ch && (lower < 0x100) == (ch < 0x100))
                of[lower] = static_cast<char16_t>(ch);
        }
        for (const auto& [lower, upper] : kFurtherForms)
            of[lower] = upper;
    }
};

/// What the character behind a backslash stands for, unless for itself.
struct EscapeOf {
    char16_t letter;
    char16_t ch;
};
constexpr EscapeOf kEscapes[] = {{u'a', 7},  {u'b', 8}, {u'f', 12}, {u'n', 10},
                                 {u'r', 13}, {u't', 9}, {u'v', 11}, {u'0', 0}};

std::uint32_t Unescape(std::uint32_t ch) {
    for (const EscapeOf& escape : kEscapes) {
        if (escape.letter == ch)
            return escape.ch;
    }
    return ch;
}

/// Makes a locale the process's own for a while.
class LocaleScope {
public:
    LocaleScope(const std::locale& locale, std::locale& saved) : mSaved(saved) {
        mSaved = std::locale::global(locale);
    }
    ~LocaleScope() { std::locale::global(mSaved); }
    LocaleScope(const LocaleScope&) = delete;
    LocaleScope& operator=(const LocaleScope&) = delete;

private:
    std::locale& mSaved;
};

} // namespace

#define IO_STATE_HANDLER_ADDRESS(name) &CToken_textstreambuf::Handle##name,
bool (CToken_textstreambuf::*const CToken_textstreambuf::kHandlers[])() = {
    IO_STATE_HANDLERS(IO_STATE_HANDLER_ADDRESS)};
#undef IO_STATE_HANDLER_ADDRESS

// --- Characters ---

std::uint32_t CToken_textstreambuf::Peek() {
    if (!mPushBack.IsEmpty())
        return mPushBack.Top() & 0xFFFF;
    const std::uint32_t unit = mTokenStreamBuf->sgetc();
    const bool isLead = (unit & 0xC0) == 0xC0 && unit < 0xFF;
    return isLead && mEncoding == StreamEncoding::Utf8 ? PeekSequence() : unit;
}

/// Moves a UTF-8 sequence, the lead and all that may continue one, from the raw stream to the
/// pushback as what it stands for.
std::uint32_t CToken_textstreambuf::PeekSequence() {
    std::array<char, 4> bytes;
    std::array<char16_t, 4> units;
    std::size_t count = 0;
    std::uint32_t unit = mTokenStreamBuf->sgetc();
    do {
        if (count < bytes.size())
            bytes[count] = static_cast<char>(unit);
        ++count;
        ConsumeUnit();
        unit = mTokenStreamBuf->sgetc();
    } while ((unit & ~0x3FU) == 0x80);
    const std::string_view sequence(bytes.data(), std::min(count, bytes.size()));
    if (count > bytes.size() || !codepage::IsValidUtf8(sequence)) {
        PushBackChar(0, count);
        return 0;
    }
    // Reading anew at the second unit of a pair begins with the first.
    for (std::size_t i = codepage::Utf8ToUtf16(sequence, units.data()); i > 0; --i, count = 0)
        PushBackChar(units[i - 1] == kEndOfInput ? codepage::kReplacement : units[i - 1], count);
    return mPushBack.Top() & 0xFFFF;
}

void CToken_textstreambuf::ConsumeUnit() {
    if (mTokenStreamBuf->sbumpc() != CRawStreambuf::traits_type::eof())
        ++mConsumed;
}

void CToken_textstreambuf::Advance() {
    if (mPushBack.IsEmpty())
        ConsumeUnit();
    else
        mPushBack.Pop();
}

/// Raw units that the characters pushed back took.
std::streamoff CToken_textstreambuf::CountPushedBack() const noexcept {
    std::streamoff count = 0;
    for (int i = 0; i < mPushBack.mCount; ++i)
        count += mPushBack.mItems[static_cast<std::size_t>(i)] >> 16;
    return count;
}

void CToken_textstreambuf::NewLine() {
    SkipLine(nullptr);
}

void CToken_textstreambuf::NewLine(AString& line) {
    SkipLine(&line);
}

void CToken_textstreambuf::SkipLine(AString* line) {
    if (!DropPushedBackLine(line))
        return;
    Settle();
    for (mChar = Peek(); mChar != kEnd; mChar = Peek()) {
        const auto ch = static_cast<char16_t>(mChar);
        Advance();
        if (mGrammar->GetFlags(ch) & kCharEndOfLine) {
            ++mLine;
            break;
        }
        if (line)
            *line += ch;
    }
    mToken = CToken(); // what follows is the first of its line, or the end
    NextToken();
}

// --- Tokens ---

const CToken* CToken_textstreambuf::ReadToken() {
    if (mBatch.next != mBatch.count || ReadAhead())
        return &TakeFromBatch();
    if (mEncoding == StreamEncoding::Locale) {
        const LocaleScope scope(mLocale, mSavedLocale);
        ReadByStates();
    } else {
        ReadByStates();
    }
    return &mToken;
}

void CToken_textstreambuf::ReadByStates() {
    mText.clear();
    mToken = CToken();
    mState = kStateStart;
    mCDataCursor = 0;
    MarkTokenStart(CountPushedBack());
    for (;;) {
        mChar = Peek();
        mNextState = mGrammar->NextState(mState, static_cast<char16_t>(mChar));
        const auto handler = static_cast<std::size_t>(mGrammar->GetStateHandler(mNextState));
        if ((this->*kHandlers[handler])())
            return;
        mState = mNextState;
        AppendRun();
    }
}

/// Takes at one go the buffered characters that keep the state and are appended as they are.
void CToken_textstreambuf::AppendRun() {
    const StateHandler handler = mGrammar->GetStateHandler(mState);
    if (!mPushBack.IsEmpty() ||
        (handler != StateHandler::Append && handler != StateHandler::KeepIf))
        return;
    mEncoding == StreamEncoding::Utf8 ? AppendRunOf<true>() : AppendRunOf<false>();
}

template <bool isUtf8>
void CToken_textstreambuf::AppendRunOf() {
    const Text_run<isUtf8> run(*mTokenStreamBuf, *mGrammar);
    const char16_t* const stop = run.Skip(mState, run.begin);
    if (!IsDropped(mState))
        mText.append(run.begin, stop);
    RawArea::Skip(*mTokenStreamBuf, stop - run.begin);
    mConsumed += stop - run.begin;
}

std::uint32_t CToken_textstreambuf::FoldCase(std::uint32_t ch) const {
    if (mCaseMode == CaseMode::Lower)
        return chars::ToLower(static_cast<char16_t>(ch));
    if (mCaseMode != CaseMode::Upper)
        return ch;
    static const UpperCase kUpper;
    return kUpper.of[ch & 0xFFFF];
}

TokenKind CToken_textstreambuf::GetWordKind(std::u16string_view word) const {
    if (IsNoCaseWord(word, mGrammar->GetTrueWord()))
        return TokenKind::True;
    return IsNoCaseWord(word, mGrammar->GetFalseWord()) ? TokenKind::False : TokenKind::Keyword;
}

bool CToken_textstreambuf::IsBeginCData(std::u16string_view word) const {
    const AString& opener = mGrammar->GetBeginCData();
    return !opener.empty() && IsNoCaseWord(word, opener);
}

bool CToken_textstreambuf::AppendAndAdvance(std::uint32_t ch) {
    mText += static_cast<char16_t>(ch);
    Advance();
    return false;
}

bool CToken_textstreambuf::Finish(TokenKind kind) {
    mToken = CToken(kind, mText, &mTexts);
    return true;
}

/// A decimal number of what stands in mText.
bool CToken_textstreambuf::FinishNumber(TokenKind kind) {
    mToken = MakeNumber(kind, mText);
    return true;
}

/// Begins anew with the next token.
bool CToken_textstreambuf::DropToken() {
    mText.clear();
    mNextState = kStateStart;
    RemarkTokenStart(CountPushedBack());
    return false;
}

/// Takes what looked like the CData end word as text.
bool CToken_textstreambuf::ReturnToCData() {
    mNextState = kStateCData;
    mCDataCursor = 0;
    return AppendAndAdvance(mChar);
}

void CToken_textstreambuf::PushBackLast(std::size_t count) {
    for (; count > 0; --count) {
        PushBackChar(mText.back(), 1);
        mText.pop_back();
    }
}

// --- Handlers of working states ---

bool CToken_textstreambuf::HandleNothing() {
    return false;
}

bool CToken_textstreambuf::HandleKeepIf() {
    return IsDropped(mNextState) ? HandleSkip() : AppendAndAdvance(mChar);
}

bool CToken_textstreambuf::HandleSkip() {
    Advance();
    return false;
}

bool CToken_textstreambuf::HandleWord() {
    return AppendAndAdvance(FoldCase(mChar));
}

bool CToken_textstreambuf::HandleAppend() {
    return AppendAndAdvance(mChar);
}

bool CToken_textstreambuf::HandleNewline() {
    return AppendAndAdvance(u'\n');
}

bool CToken_textstreambuf::HandleEscape() {
    return AppendAndAdvance(Unescape(mChar));
}

bool CToken_textstreambuf::HandleHexDigit() {
    return AppendAndAdvance(FoldCase(mChar));
}

bool CToken_textstreambuf::HandleEndMarker() {
    const AString& word = mGrammar->GetEndCData();
    if (mCDataCursor == word.size() ||
        chars::ToLower(static_cast<char16_t>(mChar)) != word[mCDataCursor])
        return ReturnToCData();
    ++mCDataCursor;
    return AppendAndAdvance(mChar);
}

// --- Handlers of final states ---

bool CToken_textstreambuf::HandleInvalid() {
    USE_ASSERT_TEXT(false, "Transition to an invalid state");
    if (mState == kStateStart)
        Advance(); // so that reading comes to an end
    return Finish(TokenKind::Error);
}

bool CToken_textstreambuf::HandleEol() {
    ++mLine;
    return Finish(TokenKind::Eol);
}

bool CToken_textstreambuf::HandleEof() {
    return Finish(TokenKind::Eof);
}

bool CToken_textstreambuf::HandleSymbol() {
    return Finish(TokenKind::Symbol);
}

bool CToken_textstreambuf::HandleKeyword() {
    if (IsBeginCData(mText)) {
        mText.clear();
        mNextState = kStateCData;
        mCDataCursor = 0;
        return false;
    }
    const TokenKind kind = GetWordKind(mText);
    if (kind != TokenKind::Keyword && !mKeepText)
        mText.clear();
    return Finish(kind);
}

bool CToken_textstreambuf::HandleWordOrDelimiter() {
    const bool isDelimiter = mText.size() == 1 && !chars::IsAlnum(mText[0]);
    return isDelimiter ? Finish(TokenKind::Symbol) : HandleKeyword();
}

bool CToken_textstreambuf::HandleReal() {
    return FinishNumber(TokenKind::Double);
}

bool CToken_textstreambuf::HandleInteger() {
    return FinishNumber(TokenKind::Int);
}

bool CToken_textstreambuf::HandleSingleQuoted() {
    return Finish(TokenKind::SingleQuotedText);
}

bool CToken_textstreambuf::HandleDoubleQuoted() {
    return Finish(TokenKind::DoubleQuotedText);
}

bool CToken_textstreambuf::HandleCDataEnd() {
    const AString& word = mGrammar->GetEndCData();
    const bool isComplete = mCDataCursor == word.size();
    if (!isComplete && mChar != kEnd)
        return ReturnToCData();
    if (isComplete)
        mText.resize(mText.size() - word.size());
    return Finish(TokenKind::CData);
}

bool CToken_textstreambuf::HandleComment() {
    return mKeepComments ? Finish(TokenKind::Comment) : DropToken();
}

bool CToken_textstreambuf::HandleWhiteSpace() {
    return mKeepWhiteSpace ? Finish(TokenKind::WhiteSpace) : DropToken();
}

bool CToken_textstreambuf::HandleSymbolLessOne() {
    PushBackLast(1);
    return Finish(TokenKind::Symbol);
}

bool CToken_textstreambuf::HandleRealLessOne() {
    PushBackLast(1);
    return FinishNumber(TokenKind::Double);
}

bool CToken_textstreambuf::HandleRealLessTwo() {
    PushBackLast(2);
    return FinishNumber(TokenKind::Double);
}

bool CToken_textstreambuf::HandleShortLessOne() {
    PushBackLast(1);
    return FinishNumber(TokenKind::Short);
}

bool CToken_textstreambuf::HandleHex() {
    double number = 0;
    mSource.assign(mText.begin(), mText.end());
    if (!ParseHex(std::string_view(mSource).substr(mGrammar->GetHexPrefix().size()), number))
        return Finish(TokenKind::SingleQuotedText);
    mToken = mKeepText ? CToken(TokenKind::Hex, number, mSource, &mTexts)
                       : CToken(TokenKind::Hex, number);
    return true;
}

} // namespace io
