#include "delimiter_grammar.h"

#include "assertion.h"
#include "grammar_tables.h"
#include "transition_tables.h"

namespace io {

namespace {

constexpr FlagsOfClass kFlagsOfClasses[] = {
    {chars::kSpace, kCharBlank},
    {chars::kControl, kCharBlank},
    {chars::kDigit, kCharDigit},
};
constexpr FlagsOfChars kFlagsOfChars[] = {
    {{u"\0\n", 2}, kCharEndOfLine}, {u"\r", kCharCarriageReturn},
    {u"\"", kCharDoubleQuote},      {u"'", kCharSingleQuote},
    {u"\\", kCharBackslash},        {u".", kCharPoint},
    {u"-", kCharSign | kCharMinus}, {u"+", kCharSign},
    {u"eE", kCharExponent},
};

constexpr ClassOfFlag kInQuotedText[] = {{kCharBackslash, CharClass::Backslash}};
constexpr ClassOfFlag kElsewhere[] = {
    {kCharDelimiter, CharClass::Delimiter}, {kCharExponent, CharClass::Exponent},
    {kCharDigit, CharClass::Digit},         {kCharSign, CharClass::Sign},
    {kCharPoint, CharClass::Point},
};

} // namespace

CDelimiter_grammar::CDelimiter_grammar() : CDelimiter_grammar(nullptr) {}

CDelimiter_grammar::CDelimiter_grammar(const char16_t* delimiters) {
    CDelimiter_grammar::InitCharClasses();
    CDelimiter_grammar::InitTransitions();
    FindCommentChar();
    CDelimiter_grammar::AddDelimiters(delimiters);
}

void CDelimiter_grammar::InitCharClasses() {
    AddFlags(kFlagsOfClasses, kFlagsOfChars);
}

void CDelimiter_grammar::InitTransitions() {
    mStateHandler = kTokenHandlers;
    for (const HandlerOfState& row : kDelimiterHandlers)
        mStateHandler[row.state] = row.handler;
    SetRows(kCommonRows);
    SetRows(kDelimiterRows);
}

CharClass CDelimiter_grammar::Classify(int ch, unsigned state) const {
    CharClass found{};
    std::uint32_t flags = 0;
    if (!ClassifyCommon(ch, found, flags)) {
        const bool isInQuotes = mStateKind[state] == kInQuotes;
        FindClass(flags,
                  isInQuotes ? std::span<const ClassOfFlag>(kInQuotedText)
                             : std::span<const ClassOfFlag>(kElsewhere),
                  found);
    }
    return found;
}

void CDelimiter_grammar::AddDelimiters(const char16_t* text) {
    AddFlags(text, kCharDelimiter);
}

CDelimiter_grammar_default::CDelimiter_grammar_default() : CDelimiter_grammar(u"(),=") {
    CDelimiter_grammar::AddCommentChars(u"!");
    GetFast(); // from now on it is only read
}

CDelimiter_grammar_default& CDelimiter_grammar_default::Get() {
    static CDelimiter_grammar_default* const grammar = new CDelimiter_grammar_default;
    return *grammar;
}

void CDelimiter_grammar_default::AddCommentChars(const char16_t*) {
    USE_ASSERT(0);
}

void CDelimiter_grammar_default::RemoveCommentChars(const char16_t*) {
    USE_ASSERT(0);
}

void CDelimiter_grammar_default::AddDelimiters(const char16_t*) {
    USE_ASSERT(0);
}

} // namespace io
