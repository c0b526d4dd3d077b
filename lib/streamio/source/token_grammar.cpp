#include "token_grammar.h"

#include <span>

#include "assertion.h"
#include "grammar_tables.h"
#include "transition_tables.h"

namespace io {

namespace {

constexpr FlagsOfClass kFlagsOfClasses[] = {
    {chars::kAlpha, kCharIdentStart | kCharIdentPart},
    {chars::kDigit, kCharIdentPart | kCharDigit},
    {chars::kSpace, kCharBlank},
    {chars::kControl, kCharBlank},
};

constexpr FlagsOfChars kFlagsOfChars[] = {
    {u"$", kCharDollar | kCharIdentPart | kCharIdentStart},
    {u"_", kCharIdentPart},
    {u"\"", kCharDoubleQuote},
    {u"'", kCharSingleQuote},
    {u"\\", kCharBackslash},
    {u"eE", kCharExponent},
    {u"x", kCharHexMark},
    {u"0", kCharZero},
    {u".", kCharPoint},
    {u"-", kCharSign | kCharMinus},
    {u"+", kCharSign},
    {{u"\0\n", 2}, kCharEndOfLine},
    {u"\r", kCharCarriageReturn},
    {u"abcdef", kCharHexLetter},
};

constexpr ClassOfFlag kDigitClass{kCharDigit, CharClass::Digit};
constexpr ClassOfFlag kSignClass{kCharSign, CharClass::Sign};
constexpr ClassOfFlag kPointClass{kCharPoint, CharClass::Point};
constexpr ClassOfFlag kExponentClass{kCharExponent, CharClass::Exponent};
constexpr ClassOfFlag kHexLetterClass{kCharHexLetter, CharClass::HexLetter};
constexpr ClassOfFlag kIdentPartClass{kCharIdentPart, CharClass::IdentPart};

// What each state tells apart, the first that applies, behind the classes common to all states.
constexpr ClassOfFlag kAtStart[] = {{kCharIdentStart, CharClass::IdentStart},
                                    {kCharZero, CharClass::Zero},
                                    kDigitClass,
                                    kSignClass,
                                    kPointClass};
constexpr ClassOfFlag kInWord[] = {kIdentPartClass, kDigitClass, kSignClass, kPointClass};
constexpr ClassOfFlag kInQuotedText[] = {{kCharBackslash, CharClass::Backslash}};
constexpr ClassOfFlag kInCData[] = {{kCharDollar, CharClass::Dollar}};
constexpr ClassOfFlag kInCDataEnd[] = {kIdentPartClass};
constexpr ClassOfFlag kAtFirstZero[] = {
    {kCharHexMark, CharClass::HexMark}, kExponentClass, kDigitClass, kSignClass, kPointClass};
constexpr ClassOfFlag kInHex[] = {kHexLetterClass, kExponentClass, kDigitClass, kSignClass,
                                  kPointClass};
constexpr ClassOfFlag kElsewhere[] = {kExponentClass, kDigitClass, kSignClass, kPointClass};

struct ClassesOfState {
    unsigned state;
    std::span<const ClassOfFlag> rows;
};
constexpr ClassesOfState kClassesOfStates[] = {
    {kStateStart, kAtStart},       {kStateWord, kInWord},           {kStateCData, kInCData},
    {kStateCDataEnd, kInCDataEnd}, {kStateFirstZero, kAtFirstZero}, {kStateHexMark, kInHex},
    {kStateHexDigits, kInHex},
};

std::span<const ClassOfFlag> FindRows(unsigned state, unsigned stateKind) {
    if (stateKind == kInQuotes)
        return kInQuotedText;
    for (const ClassesOfState& row : kClassesOfStates) {
        if (row.state == state)
            return row.rows;
    }
    return kElsewhere;
}

} // namespace

CToken_grammar::CToken_grammar() {
    mBeginCData = u"$begin_cdata$";
    mEndCData = u"$end_cdata$";
    CToken_grammar::InitCharClasses();
    CToken_grammar::InitTransitions();
    FindCommentChar();
}

void CToken_grammar::InitCharClasses() {
    AddFlags(kFlagsOfClasses, kFlagsOfChars);
}

void CToken_grammar::InitTransitions() {
    mStateHandler = kTokenHandlers;
    SetRows(kCommonRows);
    SetRows(kTokenRows);
}

CharClass CToken_grammar::Classify(int ch, unsigned state) const {
    CharClass found{};
    std::uint32_t flags = 0;
    if (!ClassifyCommon(ch, found, flags))
        FindClass(flags, FindRows(state, mStateKind[state]), found);
    return found;
}

void CToken_grammar::AddIdentStartChars(const char16_t* text) {
    AddFlags(text, kCharIdentStart);
}

void CToken_grammar::AddIdentChars(const char16_t* text) {
    AddFlags(text, kCharIdentPart);
}

void CToken_grammar::RemoveIdentStartChars(const char16_t* text) {
    RemoveFlags(text, kCharIdentStart);
}

void CToken_grammar::RemoveIdentChars(const char16_t* text) {
    RemoveFlags(text, kCharIdentPart);
}

CToken_grammar_default::CToken_grammar_default() {
    CToken_grammar::AddCommentChars(u"!");
    GetFast(); // from now on it is only read
}

CToken_grammar_default& CToken_grammar_default::Get() {
    static CToken_grammar_default* const grammar = new CToken_grammar_default;
    return *grammar;
}

void CToken_grammar_default::AddCommentChars(const char16_t*) {
    USE_ASSERT(0);
}

void CToken_grammar_default::RemoveCommentChars(const char16_t*) {
    USE_ASSERT(0);
}

void CToken_grammar_default::AddIdentStartChars(const char16_t*) {
    USE_ASSERT(0);
}

void CToken_grammar_default::AddIdentChars(const char16_t*) {
    USE_ASSERT(0);
}

void CToken_grammar_default::RemoveIdentStartChars(const char16_t*) {
    USE_ASSERT(0);
}

void CToken_grammar_default::RemoveIdentChars(const char16_t*) {
    USE_ASSERT(0);
}

} // namespace io
