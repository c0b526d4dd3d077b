#include "token_streambuf.h"

#include <algorithm>

#include "assertion.h"
#include "char_class.h"
#include "raw_area.h"

namespace io {

namespace {

/// A raw stream in the place of one that is missing: always at its end, takes nothing.
CRawStreambuf& EmptyStream() {
    struct CEmpty_streambuf : CRawStreambuf {};
    static CEmpty_streambuf stream;
    return stream;
}

} // namespace

CToken_streambuf::CToken_streambuf(CRawStreambuf* a_streambuf, StreamEncoding encoding)
    : mEncoding(encoding), mTokenStreamBuf(a_streambuf) {
    USE_ASSERT(a_streambuf);
    if (!a_streambuf)
        mTokenStreamBuf = &EmptyStream();
}

CToken_streambuf::~CToken_streambuf() = default;

// --- The current token ---

const CToken& CToken_streambuf::PopToken() {
    mAtLineStart = mTokenPushBack.Top().GetKind() == TokenKind::Eol;
    mTokenPushBack.Pop();
    return PeekToken();
}

void CToken_streambuf::PushBackToken(const CToken& token) {
    USE_ASSERT_TEXT(mTokenPushBack.mCount < kMaxTokenPushBack,
                    "mTokenPushBackCount < kMaxTokenPushBack");
    mTokenPushBack.Push(token);
}

void CToken_streambuf::PushBackChar(std::uint32_t ch) {
    USE_ASSERT_TEXT(mPushBack.mCount < kMaxPushBack, "mPushBackCount < kMaxPushBack");
    mPushBack.Push(ch);
}

int CToken_streambuf::GetTokenLine() const noexcept {
    const auto isEol = [](const CToken& token) { return token.GetKind() == TokenKind::Eol; };
    const CToken* const tokens = mTokenPushBack.mItems.data();
    const auto ends = std::count_if(tokens, tokens + mTokenPushBack.mCount, isEol);
    return mLine - static_cast<int>(ends) - (isEol(mToken) ? 1 : 0);
}

std::streamoff CToken_streambuf::GetTokenDistance() const noexcept {
    const auto ahead = static_cast<std::size_t>(mTokenPushBack.mCount);
    if (mTokenCount <= ahead)
        return 0;
    return mConsumed + GetAhead() - mTokenStart[(mTokenCount - 1 - ahead) % mTokenStart.size()];
}

std::streamoff CToken_streambuf::TellRaw() {
    const std::streamoff pos =
        mTokenStreamBuf->pubseekoff(0, std::ios_base::cur, std::ios_base::in);
    return pos < 0 ? pos : pos + GetAhead();
}

void CToken_streambuf::DropAhead(bool movesRaw) {
    if (movesRaw) {
        RawArea::Skip(*mTokenStreamBuf, GetAhead());
        mConsumed += GetAhead();
    }
    while (mAhead.next < mAhead.count)
        mAhead.entries[mAhead.next++].token = CToken();
    mAhead.next = 0;
    mAhead.count = 0;
}

bool CToken_streambuf::DropPushedBackLine(AString* line) {
    if (mTokenPushBack.IsEmpty())
        return true;
    for (bool isFirst = true; !mTokenPushBack.IsEmpty(); isFirst = false) {
        const CToken token = mTokenPushBack.Top();
        mTokenPushBack.Pop();
        if (token.GetKind() == TokenKind::Eol) {
            mAtLineStart = true;
            return false;
        }
        if (line && !isFirst)
            token.AppendTextTo(*line);
    }
    if (mToken.GetKind() == TokenKind::Eol) {
        NextToken();
        return false;
    }
    if (line)
        mToken.AppendTextTo(*line);
    return true;
}

void CToken_streambuf::PutUnits(std::u16string_view units) {
    if (units.size() <= RawArea::RoomSize(*mTokenStreamBuf)) {
        std::copy(units.begin(), units.end(), RawArea::Room(*mTokenStreamBuf));
        RawArea::Commit(*mTokenStreamBuf, units.size());
    } else {
        const auto size = static_cast<std::streamsize>(units.size());
        mHasFailed |= mTokenStreamBuf->sputn(units.data(), size) != size;
    }
}

// --- States ---

void CToken_streambuf::NewState(CAbstract_stream_pos& pos) const {
    pos.SetState(new CToken_stream_state);
}

void CToken_streambuf::SaveState(CAbstract_stream_pos& pos) const {
    NewState(pos);
    auto& state = static_cast<CToken_stream_state&>(*pos.GetState());
    state.mAtLineStart = mAtLineStart;
    state.mToken = mToken;
    state.mLastChar = mLastChar;
    state.mLastKind = mLastKind;
    state.mLine = mLine;
    state.mPushBack = mPushBack;
    state.mTokenPushBack = mTokenPushBack;
    state.mTokenDistance = GetTokenDistance();
}

void CToken_streambuf::RestoreState(const CAbstract_stream_pos& pos) {
    static const CToken_stream_state start;
    const auto* const given = dynamic_cast<const CToken_stream_state*>(pos.GetState());
    const CToken_stream_state& state = given ? *given : start;
    DropAhead(false); // the raw stream stands where it is to be already
    mAtLineStart = state.mAtLineStart;
    mToken = state.mToken;
    mLastChar = state.mLastChar;
    mLastKind = state.mLastKind;
    mLine = state.mLine;
    mPushBack = state.mPushBack;
    mTokenPushBack = state.mTokenPushBack;
    mTokenCount = static_cast<std::size_t>(mTokenPushBack.mCount) + 1;
    mTokenStart.fill(mConsumed - state.mTokenDistance);
}

// --- Search ---

template <class Matches>
bool CToken_streambuf::Find(Matches matches) {
    for (const CToken* token = &PeekToken(); token->GetKind() != TokenKind::Eof;
         token = &NextToken()) {
        if (matches(*token))
            return true;
    }
    return false;
}

bool CToken_streambuf::FindToken(TokenKind kind, std::u16string_view text) {
    return Find([&](const CToken& token) {
        return token.GetKind() == kind && IsSameWord(token.GetTextView(), text);
    });
}

bool CToken_streambuf::FindTokenAtLineStart(TokenKind kind, std::u16string_view text) {
    return Find([&](const CToken& token) {
        return mAtLineStart && token.GetKind() == kind && IsSameWord(token.GetTextView(), text);
    });
}

bool CToken_streambuf::FindText(std::u16string_view text) {
    return Find([&](const CToken& token) { return IsSameText(token, text); });
}

bool CToken_streambuf::FindTextAtLineStart(std::u16string_view text) {
    return Find([&](const CToken& token) { return mAtLineStart && IsSameText(token, text); });
}

bool CToken_streambuf::IsSameText(const CToken& token, std::u16string_view text) const {
    return token.IsNumber() ? IsSameWord(token.GetText(), text)
                            : IsSameWord(token.GetTextView(), text);
}

bool CToken_streambuf::IsNoCaseUnits(std::u16string_view a, std::u16string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), [](char16_t x, char16_t y) {
        return x == y || chars::ToLower(x) == chars::ToLower(y);
    });
}

void CToken_streambuf::SetLocale(const std::locale& locale) {
    mLocale = locale;
    SetEncoding(StreamEncoding::Locale);
}

} // namespace io
