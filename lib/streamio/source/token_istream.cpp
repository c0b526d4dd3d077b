#include "token_istream.h"

#include <array>

#include "abstract_ostream.h"
#include "assertion.h"
#include "block_index.h"
#include "names.h"
#include "token_buffer_factory.h"
#include "token_number.h"

namespace io {

CToken_istream::CToken_istream(CRawIstream& stream, CBase_grammar* grammar, unsigned flags,
                               Form form, const std::locale* locale)
    : CToken_istream(stream, nullptr, grammar, flags, form, locale, Raw::kBytes) {}

CToken_istream::CToken_istream(CRawIstream& stream, std::unique_ptr<CBase_grammar> owned,
                               CBase_grammar* grammar, unsigned flags, Form form,
                               const std::locale* locale, Raw raw)
    : CAbstract_istream(stream), mGrammar(owned ? owned.get() : grammar),
      mOwnedGrammar(std::move(owned)) {
    Buffer_request request;
    request.raw = stream.rdbuf() ? stream.rdbuf() : &GetNullRaw();
    request.grammar = mGrammar;
    request.flags = flags;
    request.isAutodetect = form == Form::kAutodetect;
    request.isString = raw == Raw::kString;
    request.locale = locale;
    mTokenStreamBuf = MakeTokenBuffer(request);
    if (!IsBinary() && !mGrammar)
        mGrammar = &CToken_grammar_default::Get();
    SetBeginWord(AString(mBeginWord));
    SetEndWord(AString(mEndWord));
    if ((flags & kCaseSensitive) != 0)
        mTokenStreamBuf->SetCaseMode(CaseMode::Sensitive);
    else if ((flags & kUpperCase) != 0)
        mTokenStreamBuf->SetCaseMode(CaseMode::Upper);
    mGood = stream.good();
    if (!mGood)
        return;
    Step();
    if ((flags & kReadIndex) == 0)
        return;
    const bool isRead = ReadStoredIndex();
    if ((flags & kCheckIndex) != 0)
        mGood = isRead ? CheckIndex((flags & kCheckBlocks) != 0) : !BeginsWithIndex();
}

CToken_istream::~CToken_istream() = default;

void CToken_istream::Close() {
    Buffer_request request;
    request.raw = &GetNullRaw();
    request.grammar = &CToken_grammar_default::Get();
    mTokenStreamBuf = MakeTokenBuffer(request);
    mGrammar = request.grammar;
    mOwnedGrammar.reset();
}

bool CToken_istream::IsBinary() const {
    return mTokenStreamBuf->GetEncoding() >= StreamEncoding::BinaryBytes;
}

bool CToken_istream::ReadFirst() {
    Step();
    return true;
}

bool CToken_istream::SkipEols() {
    while (Peek().GetKind() == TokenKind::Eol)
        Step();
    return true;
}

// --- Block words ---

/// Whether a grammar reads a word as one token that may stand around a block, and its kind.
static bool IsBlockWord(const CBase_grammar* grammar, std::u16string_view word, TokenKind& kind) {
    kind = TokenKind::Keyword;
    return !grammar ||
           (grammar->IsOneToken(word, kind) &&
            (kind == TokenKind::Keyword || kind == TokenKind::Symbol || kind == TokenKind::Eol));
}

bool CToken_istream::SetBeginWord(std::u16string_view word) {
    TokenKind kind;
    if (!IsBlockWord(IsBinary() ? nullptr : mGrammar, word, kind))
        return false;
    mBeginKind = kind;
    return CAbstract_istream::SetBeginWord(word);
}

bool CToken_istream::SetEndWord(std::u16string_view word) {
    TokenKind kind;
    if (!IsBlockWord(IsBinary() ? nullptr : mGrammar, word, kind))
        return false;
    mEndKind = kind;
    return CAbstract_istream::SetEndWord(word);
}

// --- Tests ---

bool CToken_istream::IsValueToken(const CToken& token) {
    const TokenKind kind = token.GetKind();
    if (kind == TokenKind::Null || kind >= TokenKind::Eol)
        return false;
    return !token.IsText() || IsQuotedKind(kind) || token.GetTextLength() != 0;
}

bool CToken_istream::IsWordHere(const AString& word) const {
    return IsSameWord(Peek().GetTextView(), word);
}

bool CToken_istream::IsThisText(std::u16string_view text) const {
    return IsSameWord(Name_text(Peek()), text);
}

bool CToken_istream::IsValueAhead() {
    const auto ahead = PeekAhead();
    return ahead.size() > 1 && ahead[1].token.GetKind() != TokenKind::Eol
               ? IsValueToken(ahead[1].token)
               : IsValueBehind();
}

bool CToken_istream::IsValueBehind(const std::u16string_view* text) {
    const CToken word = Peek();
    Step();
    const bool isValue = AtValue() && (!text || IsThisText(*text));
    mTokenStreamBuf->PushBackToken(word);
    return isValue;
}

bool CToken_istream::IsOfKind(TokenKind kind) {
    return Prepare() && Peek().GetKind() == kind;
}

bool CToken_istream::IsKeyword() {
    return IsOfKind(TokenKind::Keyword);
}
bool CToken_istream::IsKeyword(std::u16string_view text) {
    return IsKeyword() && IsThisText(text);
}
bool CToken_istream::IsBegin(std::u16string_view text) {
    if (mBeginWord.empty())
        return IsValue(text);
    return Prepare() && IsWord(mBeginKind, mBeginWord) && IsValueBehind(&text);
}
bool CToken_istream::IsEnd(std::u16string_view text) {
    if (mEndWord.empty())
        return IsValue(text);
    return AtEnd() && IsValueBehind(&text);
}
bool CToken_istream::IsValue(std::u16string_view text) {
    return AtValue() && IsThisText(text);
}
bool CToken_istream::IsComment() {
    return IsOfKind(TokenKind::Comment);
}
bool CToken_istream::IsComment(std::u16string_view text) {
    return IsComment() && IsThisText(text);
}
bool CToken_istream::IsSymbol() {
    return IsOfKind(TokenKind::Symbol);
}
bool CToken_istream::IsEol() {
    if (mStopOnFail && !mGood)
        return false;
    mGood = true;
    return Peek().GetKind() == TokenKind::Eol;
}
bool CToken_istream::IsNumber() {
    return Prepare() && Peek().IsNumber();
}
bool CToken_istream::IsNumber(double number) {
    return IsNumber() && Peek().GetNumber() == number;
}

// --- Reads ---

/// Ends a read whose test has had its result. A test of a stream that has failed changes nothing.
bool CToken_istream::Accept(bool isMatch) {
    if (!isMatch && mStopOnFail && !mGood)
        return false;
    mGood = isMatch;
    if (isMatch || mSkipOnFail)
        Step();
    return isMatch;
}

bool CToken_istream::AcceptText(bool isMatch, AString& text) {
    if (isMatch)
        text = Peek().GetText();
    return Accept(isMatch);
}

void CToken_istream::Next() {
    SkipEolsIfSet();
    Step();
}

void CToken_istream::SkipLine() {
    if (Peek().GetKind() == TokenKind::Eol)
        Step();
    else
        mTokenStreamBuf->NewLine();
}

bool CToken_istream::ReadLine(AString& line) {
    if (!PrepareRaw())
        return false;
    line = Peek().GetText();
    AString rest;
    mTokenStreamBuf->NewLine(rest);
    line += rest;
    return true;
}

bool CToken_istream::ReadEol() {
    return Accept(IsEol());
}

/// Behind AtBegin: steps over the begin word and takes the name.
void CToken_istream::TakeBegin(CToken& name) {
    PushLevel(mIndentWidth);
    if (!mBeginWord.empty())
        Step();
    name = Peek();
    Step();
}

bool CToken_istream::ReadBegin(CToken& name) {
    if (!AtBegin())
        return Accept(false);
    TakeBegin(name);
    return true;
}
bool CToken_istream::ReadBegin(AString& name) {
    CToken token;
    if (!ReadBegin(token))
        return false;
    name = token.GetText();
    return true;
}
bool CToken_istream::ReadBegin(std::u16string_view text) {
    if (!IsBegin(text))
        return Accept(false);
    CToken token;
    TakeBegin(token);
    return true;
}
bool CToken_istream::ReadBegin() {
    CToken token;
    return ReadBegin(token);
}

bool CToken_istream::ReadEnd() {
    if (!AtEnd())
        return Accept(false);
    PopLevel();
    if (!mEndWord.empty())
        Step();
    return mGood;
}
bool CToken_istream::ReadEnd(CToken& name) {
    return ReadEnd() && ReadValue(name);
}
bool CToken_istream::ReadEnd(AString& name) {
    return ReadEnd() && ReadValue(name);
}
bool CToken_istream::ReadEnd(std::u16string_view text) {
    return IsEnd(text) ? ReadEnd() && ReadValue(text) : Accept(false);
}

bool CToken_istream::ReadKeyword(AString& word) {
    return AcceptText(IsKeyword(), word);
}
bool CToken_istream::ReadKeyword(std::u16string_view text) {
    return Accept(IsKeyword(text));
}
bool CToken_istream::ReadValue(CToken& value) {
    const bool isValue = AtValue();
    if (isValue)
        value = Peek();
    return Accept(isValue);
}
bool CToken_istream::ReadValue(AString& text) {
    return AcceptText(AtValue(), text);
}
bool CToken_istream::ReadValue(std::u16string_view text) {
    return Accept(IsValue(text));
}
bool CToken_istream::ReadComment(AString& comment) {
    return AcceptText(IsComment(), comment);
}
bool CToken_istream::ReadComment(std::u16string_view text) {
    return Accept(IsComment(text));
}
bool CToken_istream::ReadSymbol(char16_t ch) {
    return Accept(AtSymbol(ch));
}

bool CToken_istream::Read(AString& text) {
    const bool isText = AtValue() && (IsQuotedKind(Peek().GetKind()) || Peek().HasText());
    return AcceptText(isText, text);
}

bool CToken_istream::Read(CToken& token) {
    if (Peek().GetKind() == TokenKind::Null)
        Step();
    token = Peek();
    Step();
    return true;
}

template <class T>
bool CToken_istream::ReadNumber(T& value) {
    return Accept(Prepare() && ConvertNumber(Peek(), value));
}
bool CToken_istream::Read(double& value) {
    return ReadNumber(value);
}
bool CToken_istream::Read(float& value) {
    return ReadNumber(value);
}
bool CToken_istream::Read(unsigned long& value) {
    return ReadNumber(value);
}
bool CToken_istream::Read(long& value) {
    return ReadNumber(value);
}
bool CToken_istream::Read(unsigned int& value) {
    return ReadNumber(value);
}
bool CToken_istream::Read(int& value) {
    return ReadNumber(value);
}
bool CToken_istream::Read(unsigned short& value) {
    return ReadNumber(value);
}
bool CToken_istream::Read(short& value) {
    return ReadNumber(value);
}
bool CToken_istream::Read(bool& value) {
    const bool isTrue = IsOfKind(TokenKind::True);
    const bool isBool = isTrue || IsOfKind(TokenKind::False);
    if (isBool)
        value = isTrue;
    return Accept(isBool);
}

// --- Levels, modes, positions ---

void CToken_istream::PopLevel() {
    if (mLevel == 0)
        mGood = false;
    else
        --mLevel;
}

void CToken_istream::PushLevel(int) {
    ++mLevel;
}

unsigned CToken_istream::SetFloatFlag(unsigned) {
    const std::ios_base::fmtflags flags = mStream->flags();
    return ((flags & std::ios_base::scientific) != 0 ? CAbstract_ostream::kScientific : 0) |
           ((flags & std::ios_base::fixed) != 0 ? CAbstract_ostream::kFixed : 0);
}

int CToken_istream::SetCaseMode(int mode) {
    const int old = static_cast<int>(mTokenStreamBuf->GetCaseMode());
    if (mode >= static_cast<int>(CaseMode::Upper) && mode <= static_cast<int>(CaseMode::Ignore))
        mTokenStreamBuf->SetCaseMode(static_cast<CaseMode>(mode));
    return old;
}

CAbstract_istream& CToken_istream::Apply(CAbstract_istream& (*manipulator)(CAbstract_istream&)) {
    return manipulator(*this);
}

bool CToken_istream::Eof() const {
    return Peek().GetKind() == TokenKind::Eof;
}

bool CToken_istream::Bad() const {
    return mStream->bad();
}

void CToken_istream::NewState(CAbstract_stream_pos& pos) const {
    mTokenStreamBuf->NewState(pos);
}

void CToken_istream::SaveState(CAbstract_stream_pos& pos) const {
    mTokenStreamBuf->SaveState(pos);
    pos.GetState()->mLevel = mLevel;
}

void CToken_istream::RestoreState(const CAbstract_stream_pos& pos) {
    mTokenStreamBuf->RestoreState(pos);
    mLevel = pos.GetState() ? pos.GetState()->mLevel : 0;
}

std::streamoff CToken_istream::TellRaw() const {
    return mTokenStreamBuf->TellRaw();
}

bool CToken_istream::SeekRaw(std::streamoff pos) {
    return mTokenStreamBuf->GetRaw().pubseekpos(pos, std::ios_base::in) == std::streampos(pos);
}

} // namespace io
