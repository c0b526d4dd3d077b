#include "base_grammar.h"

#include <algorithm>
#include <mutex>

#include "assertion.h"
#include "grammar_tables.h"
#include "names.h"
#include "transition_tables.h"

namespace io {

namespace {

/// The classes that flags decide in every state, the first that applies.
constexpr ClassOfFlag kCommonClasses[] = {
    {kCharEndOfLine, CharClass::LineEnd},       {kCharCarriageReturn, CharClass::CarriageReturn},
    {kCharComment, CharClass::CommentStart},    {kCharBlank, CharClass::Blank},
    {kCharDoubleQuote, CharClass::DoubleQuote}, {kCharSingleQuote, CharClass::SingleQuote},
};

bool IsUsualHandler(unsigned state, StateHandler handler) {
    const auto isDelimiters = [=](const HandlerOfState& row) {
        return row.state == state && row.handler == handler;
    };
    return handler == kTokenHandlers[state] ||
           std::any_of(std::begin(kDelimiterHandlers), std::end(kDelimiterHandlers), isDelimiters);
}

/// The form of numbers: what leads from state to state whichever grammar it is. All but these
/// characters end a number or make it something else.
struct NumberStep {
    unsigned state;
    std::u16string_view characters;
    unsigned next;
};
constexpr std::u16string_view kDigits = u"0123456789";
constexpr NumberStep kNumberSteps[] = {
    {kStateStart, u"123456789", kStateInteger},
    {kStateStart, u"+-", kStateSign},
    {kStateStart, u".", kStateFirstPoint},
    {kStateFirstZero, kDigits, kStateInteger},
    {kStateFirstZero, u".", kStateFraction},
    {kStateFirstZero, u"eE", kStateExponentLetter},
    {kStateSign, kDigits, kStateInteger},
    {kStateSign, u".", kStateSignAndPoint},
    {kStateFirstPoint, kDigits, kStateFraction},
    {kStateInteger, kDigits, kStateInteger},
    {kStateInteger, u".", kStateFraction},
    {kStateInteger, u"eE", kStateExponentLetter},
    {kStateSignAndPoint, kDigits, kStateFraction},
    {kStateFraction, kDigits, kStateFraction},
    {kStateFraction, u"eE", kStateExponentLetter},
    {kStateExponentLetter, kDigits, kStateExponent},
    {kStateExponentLetter, u"+-", kStateExponentSign},
    {kStateExponent, kDigits, kStateExponent},
    {kStateExponentSign, kDigits, kStateExponent},
};

bool HasUsualNumbers(const CBase_grammar::FastTables& fast) {
    // A grammar without the state of a first 0 takes it as a digit.
    const bool hasFirstZero = fast.next[kStateStart][u'0'] == kStateFirstZero;
    return std::all_of(std::begin(kNumberSteps), std::end(kNumberSteps), [&](const auto& step) {
        return (step.state == kStateFirstZero && !hasFirstZero) ||
               std::all_of(step.characters.begin(), step.characters.end(),
                           [&](char16_t ch) { return fast.next[step.state][ch] == step.next; });
    });
}

} // namespace

CBase_grammar::CBase_grammar() : mTrueWord(u"true"), mFalseWord(u"false"), mHexPrefix(u"0x") {
    CBase_grammar::InitCharClasses();
    CBase_grammar::InitTransitions();
}

CBase_grammar::~CBase_grammar() = default;

void CBase_grammar::InitCharClasses() {
    for (std::unique_ptr<CharPage>& page : mCharPage)
        page.reset();
    mCharPage[0] = std::make_unique<CharPage>();
    mIsFastValid = false;
}

void CBase_grammar::InitTransitions() {
    mStateHandler.fill(StateHandler::Invalid);
    for (auto& row : mTransition)
        row.fill(kFirstFinalState);
    mFinalToken.fill(TokenKind::Null);
    std::copy(kFinalTokens.begin(), kFinalTokens.end(), mFinalToken.begin() + kFirstFinalState);
    mStateKind = kStateKinds;
    mIsFastValid = false;
}

void CBase_grammar::SetRows(std::span<const TransitionRow> rows) {
    for (const TransitionRow& row : rows)
        std::copy(row.next.begin(), row.next.end(), mTransition[row.state].begin());
    mIsFastValid = false;
}

void CBase_grammar::AddFlags(unsigned the_char, std::uint32_t flags) {
    USE_ASSERT(the_char < kCharMax);
    if (the_char >= kCharMax)
        return;
    std::unique_ptr<CharPage>& page = mCharPage[the_char >> 8];
    if (!page)
        page = std::make_unique<CharPage>();
    (*page)[the_char & 0xFF] |= flags;
    mIsFastValid = false;
}

void CBase_grammar::AddFlags(const char16_t* text, std::uint32_t flags) {
    for (; text && *text; ++text)
        AddFlags(*text, flags);
}

void CBase_grammar::AddFlags(std::span<const FlagsOfClass> byClass,
                             std::span<const FlagsOfChars> byChar) {
    for (unsigned ch = 0; ch < 0x100; ++ch) {
        const std::uint8_t classes = chars::ClassesOf(static_cast<char16_t>(ch));
        for (const FlagsOfClass& row : byClass)
            AddFlags(ch, classes & row.charClass ? row.flags : 0);
    }
    for (const FlagsOfChars& row : byChar) {
        for (const char16_t ch : row.characters)
            AddFlags(ch, row.flags);
    }
}

void CBase_grammar::RemoveFlags(const char16_t* text, std::uint32_t flags) {
    for (; text && *text; ++text) {
        if (CharPage* const page = mCharPage[*text >> 8].get())
            (*page)[*text & 0xFF] &= ~flags;
    }
    mIsFastValid = false;
}

void CBase_grammar::FindCommentChar() {
    mCommentChar = 0;
    for (unsigned ch = 0; ch < kCharMax && mCommentChar == 0; ++ch) {
        if (GetFlags(static_cast<char16_t>(ch)) & kCharComment)
            mCommentChar = static_cast<char16_t>(ch);
    }
}

void CBase_grammar::AddCommentChars(const char16_t* text) {
    AddFlags(text, kCharComment);
    if (mCommentChar == 0)
        FindCommentChar();
}

void CBase_grammar::RemoveCommentChars(const char16_t* text) {
    RemoveFlags(text, kCharComment);
    if (!(GetFlags(mCommentChar) & kCharComment))
        FindCommentChar();
}

bool CBase_grammar::ClassifyCommon(int ch, CharClass& charClass,
                                   std::uint32_t& flags) const noexcept {
    charClass = CharClass::Other;
    if (ch == kEndOfInput || ch < 0 || ch > kEndOfInput) {
        charClass = ch == kEndOfInput ? CharClass::EndOfInput : CharClass::Invalid;
        return true;
    }
    flags = GetFlags(static_cast<char16_t>(ch));
    if (flags == 0)
        return true;
    return FindClass(flags, kCommonClasses, charClass);
}

void CBase_grammar::MakeFast() const {
    static std::mutex mutex; // of all grammars, since none is made often
    const std::lock_guard lock(mutex);
    if (mIsFastValid)
        return;
    if (!mFast)
        mFast = std::make_unique<FastTables>();
    for (int ch = 0; ch < 0x100; ++ch) {
        mFast->stay[ch] = 0;
        for (unsigned state = 0; state < kFirstFinalState; ++state) {
            const unsigned next = GetTransition(state, Classify(ch, state));
            mFast->next[state][ch] = static_cast<std::uint8_t>(next);
            mFast->stay[ch] |= static_cast<std::uint32_t>(next == state) << state;
        }
    }
    for (char16_t ch = 0; ch < 0x100; ++ch)
        mFast->first[ch] = FindFirst(ch);
    mFast->isUsual = HasUsualNumbers(*mFast);
    for (unsigned state = 0; state < kStateCount; ++state)
        mFast->isUsual = mFast->isUsual && IsUsualHandler(state, mStateHandler[state]);
    for (char16_t ch = 0; ch < 0x100; ++ch) {
        std::size_t stop = 0;
        const TokenKind kind = Scan(*mFast, {&ch, 1}, stop);
        mFast->alone[ch] = stop == 1 ? kind : TokenKind::Null;
    }
    mIsFastValid.store(true, std::memory_order_release);
}

CBase_grammar::FastTables::First CBase_grammar::FindFirst(char16_t ch) const {
    using First = FastTables::First;
    constexpr std::pair<unsigned, First> kFirsts[] = {
        {kStateWhiteSpace, First::kBlank},
        {kStateComment, First::kComment},
        {kStateSymbol, First::kSymbol},
        {kStateLineEnd, First::kLineEnd},
        {kStateCarriageReturn, First::kCarriageReturn},
        {kStateWord, First::kWord},
        {kStateOpenSingle, First::kSingleQuoted},
        {kStateOpenDouble, First::kDoubleQuoted},
        {kStateFirstZero, First::kNumber},
        {kStateSign, First::kNumber},
        {kStateFirstPoint, First::kNumber},
        {kStateInteger, First::kNumber}};
    const unsigned state = mFast->next[kStateStart][ch];
    const auto row = std::find_if(std::begin(kFirsts), std::end(kFirsts),
                                  [=](const auto& candidate) { return candidate.first == state; });
    const First first = row == std::end(kFirsts) ? First::kOther : row->second;
    const char16_t lower = chars::ToLower(ch);
    const bool isLiteral = mTrueWord.starts_with(lower) || mFalseWord.starts_with(lower) ||
                           mBeginCData.starts_with(lower);
    // The delimiter grammar makes a symbol of a word that is no letter or digit.
    return first == First::kWord && (isLiteral || !chars::IsAlnum(ch)) ? First::kLiteral : first;
}

TokenKind CBase_grammar::Scan(std::u16string_view text, std::size_t& stop) const {
    return Scan(GetFast(), text, stop);
}

TokenKind CBase_grammar::Scan(const FastTables& fast, std::u16string_view text,
                              std::size_t& stop) const {
    const auto next = [&](unsigned state) {
        const char16_t ch = stop < text.size() ? text[stop] : u'\0';
        return ch < 0x100 ? fast.next[state][ch] : NextState(state, ch);
    };
    stop = 0;
    unsigned state = next(kStateStart);
    while (state < kFirstFinalState) {
        if (state != kStateLineEnd && stop++ == text.size()) { // the end is inside an escape
            stop = 0;
            return TokenKind::Error;
        }
        state = next(state);
    }
    return mFinalToken[state];
}

TokenKind CBase_grammar::Scan(const char16_t* text, const char16_t*& stop) const {
    std::size_t length = 0;
    const TokenKind kind = Scan(std::u16string_view(text), length);
    stop = text + length;
    return kind;
}

bool CBase_grammar::IsOneToken(std::u16string_view text, TokenKind& kind) const {
    std::size_t stop = 0;
    kind = Scan(text, stop);
    return stop == text.size();
}

bool CBase_grammar::IsKeyword(std::u16string_view text) const {
    TokenKind kind;
    return IsOneToken(text, kind) && kind == TokenKind::Keyword && !IsTrueOrFalse(text) &&
           !IsSameNoCase(text, mBeginCData);
}

bool CBase_grammar::IsTrueOrFalse(std::u16string_view text) const {
    return IsSameNoCase(text, mTrueWord) || IsSameNoCase(text, mFalseWord);
}

} // namespace io
