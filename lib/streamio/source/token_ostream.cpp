#include "token_ostream.h"

#include "block_index.h"
#include "names.h"
#include "token_binarystreambuf.h"
#include "token_buffer_factory.h"

namespace io {

CToken_ostream::CToken_ostream(CRawOstream& stream, CBase_grammar* grammar, unsigned flags,
                               const std::locale* locale)
    : CToken_ostream(stream, grammar, flags, locale, Raw::kBytes) {}

CToken_ostream::CToken_ostream(CRawOstream& stream, CBase_grammar* grammar, unsigned flags,
                               const std::locale* locale, Raw raw)
    : CAbstract_ostream(stream), mGrammar(grammar) {
    Buffer_request request;
    request.raw = stream.rdbuf() ? stream.rdbuf() : &GetNullRaw();
    request.grammar = grammar;
    request.flags = flags;
    request.isString = raw == Raw::kString;
    request.locale = locale;
    mTokenStreamBuf = MakeTokenBuffer(request);
    if (auto* binary = dynamic_cast<CToken_binarystreambuf*>(mTokenStreamBuf.get())) {
        mGrammar = nullptr;
        binary->WriteHeader();
    }
}

CToken_ostream::~CToken_ostream() {
    CToken_ostream::Close();
}

void CToken_ostream::Close() {
    if (mBuildIndex)
        FinishIndex();
    const bool hasFailed = mTokenStreamBuf->GetRaw().pubsync() != 0 || Fail();
    Buffer_request request;
    request.raw = &GetNullRaw();
    request.grammar = mGrammar ? &CToken_grammar_default::Get() : nullptr;
    mTokenStreamBuf = MakeTokenBuffer(request);
    mGrammar = request.grammar;
    if (hasFailed)
        mStream->setstate(std::ios_base::badbit);
}

bool CToken_ostream::IsBinary() const {
    return mTokenStreamBuf->GetEncoding() >= StreamEncoding::BinaryBytes;
}

// --- Lines and levels ---

void CToken_ostream::WriteRawLine(std::u16string_view text) {
    const auto size = static_cast<std::streamsize>(text.size());
    if (mTokenStreamBuf->GetRaw().sputn(text.data(), size) != size)
        mStream->setstate(std::ios_base::badbit);
    NewLine();
}

void CToken_ostream::NewLine() {
    mTokenStreamBuf->EndLine(true);
}

void CToken_ostream::EndLine() {
    mTokenStreamBuf->EndLine(false);
}

void CToken_ostream::Next() {
    mTokenStreamBuf->WriteChar(u'*');
}

void CToken_ostream::PopLevel() {
    if (mLevel == 0)
        return;
    --mLevel;
    mTokenStreamBuf->PopIndent();
}

void CToken_ostream::PushLevel(int width) {
    ++mLevel;
    mTokenStreamBuf->PushIndent(width, mIndentChar);
}

AString CToken_ostream::GetIndent() const {
    return mTokenStreamBuf->GetIndent();
}

// --- Blocks ---

/// A block word and the block's name on a line of their own.
void CToken_ostream::WriteBlockWord(const AString& word, std::u16string_view name, bool isNamed) {
    if (!word.empty())
        mTokenStreamBuf->WriteKeyword(word);
    if (isNamed)
        WriteBlockName(name);
    EndLine();
}

/// A name with quotes of its own goes out as it stands; any other so that it reads back.
void CToken_ostream::WriteBlockName(std::u16string_view name) {
    if (IsBinary())
        mTokenStreamBuf->WriteQuoted(name);
    else if (HasOpenQuote(name))
        Write(CToken(TokenKind::SingleQuotedText, name));
    else if (!mQuoteBlockNames && mGrammar->IsKeyword(name) && !IsBlockWord(name))
        mTokenStreamBuf->WriteWord(name);
    else
        mTokenStreamBuf->WriteQuoted(name);
}

/// True when a text begins like quoted text that goes on behind its end.
bool CToken_ostream::HasOpenQuote(std::u16string_view text) const {
    TokenKind kind;
    if (!mGrammar->IsOneToken(text, kind) || !IsQuotedKind(kind))
        return false;
    return mGrammar->IsOneToken(AString(text) + u' ', kind);
}

bool CToken_ostream::IsBlockWord(std::u16string_view text) const noexcept {
    return IsSameNoCase(text, mBeginWord) || IsSameNoCase(text, mEndWord);
}

void CToken_ostream::EnterBlock(std::u16string_view name, bool isNamed) {
    EndLine();
    if (mBuildIndex)
        NoteBlockBegin(name);
    WriteBlockWord(mBeginWord, name, isNamed);
    PushLevel(mIndentWidth);
}

void CToken_ostream::LeaveBlock(std::u16string_view name, bool isNamed) {
    PopLevel();
    EndLine();
    WriteBlockWord(mEndWord, name, isNamed);
    if (mBuildIndex && !mOpenBlocks.empty())
        mOpenBlocks.pop_back();
}

void CToken_ostream::BeginBlock(const CToken& name) {
    EnterBlock(BlockName(name), true);
}
void CToken_ostream::BeginBlock(std::u16string_view name) {
    EnterBlock(name, true);
}
void CToken_ostream::BeginBlock() {
    EnterBlock(std::u16string_view(), false);
}
void CToken_ostream::EndBlock(const CToken& name) {
    LeaveBlock(BlockName(name), true);
}
void CToken_ostream::EndBlock(std::u16string_view name) {
    LeaveBlock(name, true);
}
void CToken_ostream::EndBlock() {
    LeaveBlock(std::u16string_view(), false);
}

// --- Format ---

namespace {

struct Float_flag {
    unsigned bit;
    std::ios_base::fmtflags flag;
};
constexpr Float_flag kFloatFlags[] = {{CAbstract_ostream::kScientific, std::ios_base::scientific},
                                      {CAbstract_ostream::kFixed, std::ios_base::fixed}};

} // namespace

unsigned CToken_ostream::SetFloatFlag(unsigned flags) {
    unsigned old = 0;
    std::ios_base::fmtflags notation{};
    for (const Float_flag& row : kFloatFlags) {
        if ((mStream->flags() & row.flag) != 0)
            old |= row.bit;
        if ((flags & row.bit) != 0)
            notation |= row.flag;
    }
    mStream->setf(notation, std::ios_base::floatfield);
    return old;
}

int CToken_ostream::SetPrecision(int precision) {
    return mTokenStreamBuf->SetPrecision(precision);
}
int CToken_ostream::SetWidth(int width) {
    return mTokenStreamBuf->SetWidth(width);
}
bool CToken_ostream::SetHex(bool isHex) {
    return mTokenStreamBuf->SetHex(isHex);
}
char16_t CToken_ostream::SetFill(char16_t fill) {
    return mTokenStreamBuf->SetFill(fill);
}

bool CToken_ostream::SetAutoBlank(const bool* isOn) {
    return isOn ? mTokenStreamBuf->SetAutoBlank(*isOn) : mTokenStreamBuf->GetAutoBlank();
}

// --- Values ---

void CToken_ostream::WriteKeyword(std::u16string_view text) {
    mTokenStreamBuf->WriteKeyword(text);
}
void CToken_ostream::WriteQuoted(const CToken& token) {
    mTokenStreamBuf->WriteQuoted(Name_text(token));
}
void CToken_ostream::WriteQuoted(std::u16string_view text) {
    mTokenStreamBuf->WriteQuoted(text);
}
void CToken_ostream::WriteComment(std::u16string_view text) {
    mTokenStreamBuf->WriteComment(text);
}
void CToken_ostream::WriteSymbol(char16_t ch) {
    mTokenStreamBuf->WriteSymbol(ch);
}

void CToken_ostream::WriteRaw(std::u16string_view text) {
    const bool old = mTokenStreamBuf->SetAutoBlank(false);
    mTokenStreamBuf->WriteWord(text);
    mTokenStreamBuf->SetAutoBlank(old);
}

CAbstract_ostream& CToken_ostream::Apply(CAbstract_ostream& (*manipulator)(CAbstract_ostream&)) {
    return manipulator(*this);
}

void CToken_ostream::Write(const CToken& token) {
    mTokenStreamBuf->WriteToken(token, mStream->flags());
}
void CToken_ostream::Write(std::u16string_view text) {
    mTokenStreamBuf->WriteWord(text);
}
void CToken_ostream::Write(double value) {
    mTokenStreamBuf->WriteDouble(&value, mStream->flags());
}
void CToken_ostream::Write(float value) {
    mTokenStreamBuf->WriteFloat(&value, mStream->flags());
}
void CToken_ostream::Write(unsigned long value) {
    mTokenStreamBuf->WriteUnsignedLong(&value, mStream->flags());
}
void CToken_ostream::Write(long value) {
    mTokenStreamBuf->WriteLong(&value, mStream->flags());
}
void CToken_ostream::Write(unsigned int value) {
    mTokenStreamBuf->WriteUnsignedInt(&value, mStream->flags());
}
void CToken_ostream::Write(int value) {
    mTokenStreamBuf->WriteInt(&value, mStream->flags());
}
void CToken_ostream::Write(short value) {
    mTokenStreamBuf->WriteShort(&value, mStream->flags());
}
void CToken_ostream::Write(char16_t value) {
    mTokenStreamBuf->WriteChar(value);
}
void CToken_ostream::Write(const char16_t* text) {
    if (text)
        mTokenStreamBuf->WriteWord(text);
}
void CToken_ostream::Write(bool value) {
    mTokenStreamBuf->WriteBool(&value);
}

// --- State and position ---

void CToken_ostream::NewState(CAbstract_stream_pos& pos) const {
    mTokenStreamBuf->NewState(pos);
}

void CToken_ostream::SaveState(CAbstract_stream_pos& pos) const {
    mTokenStreamBuf->SaveState(pos);
    pos.GetState()->mLevel = mLevel;
    pos.GetState()->mOpenBlocks = mOpenBlocks;
}

void CToken_ostream::RestoreState(const CAbstract_stream_pos& pos) {
    mTokenStreamBuf->RestoreState(pos);
    mLevel = pos.GetState() ? pos.GetState()->mLevel : 0;
    mOpenBlocks = pos.GetState() ? pos.GetState()->mOpenBlocks : std::vector<AString>();
}

bool CToken_ostream::Good() const {
    return mStream->good() && !mTokenStreamBuf->HasFailed();
}
bool CToken_ostream::Eof() const {
    return mStream->eof();
}
bool CToken_ostream::Fail() const {
    return mStream->fail() || mTokenStreamBuf->HasFailed();
}
bool CToken_ostream::Bad() const {
    return mStream->bad() || mTokenStreamBuf->HasFailed();
}
int CToken_ostream::GetLine() const {
    return mTokenStreamBuf->GetLine();
}

std::streamoff CToken_ostream::TellRaw() const {
    return mTokenStreamBuf->GetRaw().pubseekoff(0, std::ios_base::cur, std::ios_base::out);
}

bool CToken_ostream::SeekRaw(std::streamoff pos) {
    return mTokenStreamBuf->GetRaw().pubseekpos(pos, std::ios_base::out) == std::streampos(pos);
}

} // namespace io
