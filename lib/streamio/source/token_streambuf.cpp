#include "token_streambuf.h"

#include <algorithm>
#include <bit>

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

namespace {

bool IsEol(const CToken& token) {
    return token.GetKind() == TokenKind::Eol;
}

/// True when the token behind it is the first of a line.
bool EndsLine(const CToken& token) {
    return IsEol(token) || token.GetKind() == TokenKind::Null;
}

} // namespace

const CToken& CToken_streambuf::PopToken() {
    mLineStart = IsEol(mTokenPushBack.Top()) ? LineStart::kYes : LineStart::kNo;
    mTokenPushBack.Pop();
    return PeekToken();
}

/// Reads on behind the batch, and what comes may be the first of a new one.
const CToken& CToken_streambuf::ReadNext() {
    mBatch.startsLine = EndsLine(*mCurrent);
    mLineStart = mBatch.startsLine ? LineStart::kYes : LineStart::kNo;
    return *ReadToken();
}

bool CToken_streambuf::IsAtLineStart() const noexcept {
    if (mLineStart != LineStart::kAsInBatch)
        return mLineStart == LineStart::kYes;
    return mBatch.next > 1 ? EndsLine(mBatch.entries[mBatch.next - 2].token) : mBatch.startsLine;
}

void CToken_streambuf::PushBackToken(const CToken& token) {
    USE_ASSERT_TEXT(mTokenPushBack.mCount < kMaxTokenPushBack,
                    "mTokenPushBackCount < kMaxTokenPushBack");
    mTokenPushBack.Push(token);
}

void CToken_streambuf::PushBackChar(char16_t ch, std::size_t rawUnits) {
    USE_ASSERT_TEXT(mPushBack.mCount < kMaxPushBack, "mPushBackCount < kMaxPushBack");
    mPushBack.Push(ch | static_cast<std::uint32_t>(std::min<std::size_t>(rawUnits, 0xFFFF)) << 16);
}

int CToken_streambuf::GetTokenLine() const noexcept {
    const CToken* const tokens = mTokenPushBack.mItems.data();
    const auto ends = std::count_if(tokens, tokens + mTokenPushBack.mCount, IsEol);
    return GetLine() - static_cast<int>(ends) - (IsEol(*mCurrent) ? 1 : 0);
}

std::streamoff CToken_streambuf::GetTokenDistance() const noexcept {
    std::size_t behind = static_cast<std::size_t>(mTokenPushBack.mCount); // tokens read since
    if (behind < mBatch.next)
        return GetAhead() - (mBatch.entries[mBatch.next - 1 - behind].start - mBatch.begin);
    behind -= mBatch.next;
    if (mTokenCount <= behind)
        return 0;
    return mConsumed + GetAhead() - mTokenStart[(mTokenCount - 1 - behind) % mTokenStart.size()];
}

std::streamoff CToken_streambuf::TellRaw() {
    const std::streamoff pos =
        mTokenStreamBuf->pubseekoff(0, std::ios_base::cur, std::ios_base::in);
    return pos < 0 ? pos : pos + GetAhead();
}

int CToken_streambuf::CountBatchLines() const noexcept {
    if (mBatch.next == mBatch.count)
        return mBatch.lines;
    return static_cast<int>(
        std::count_if(mBatch.entries, mBatch.entries + mBatch.next,
                      [](const CToken_batch::Entry& entry) { return IsEol(entry.token); }));
}

/// Marks the starts of the tokens taken from the batch; if they are enough, anew.
void CToken_streambuf::MarkBatchStarts() noexcept {
    constexpr unsigned kMarks = std::tuple_size_v<decltype(mTokenStart)>;
    const CToken_batch::Entry* const last = mBatch.entries + mBatch.next;
    if (mBatch.next < kMarks) {
        for (const auto* entry = mBatch.entries; entry != last; ++entry)
            MarkTokenStart(mBatch.begin - entry->start);
        return;
    }
    std::transform(last - kMarks, last, mTokenStart.begin(),
                   [begin = mBatch.begin, consumed = mConsumed](const auto& entry) {
                       return consumed + (entry.start - begin);
                   });
    mTokenCount = kMarks;
}

void CToken_streambuf::LeaveBatch() {
    MarkBatchStarts();
    const std::streamoff ahead = GetAhead();
    RawArea::Skip(*mTokenStreamBuf, ahead);
    mConsumed += ahead;
    mLine += CountBatchLines();
    ClearBatch();
}

/// Empties the batch but for the current token, which it keeps.
void CToken_streambuf::ClearBatch() {
    mLineStart = IsAtLineStart() ? LineStart::kYes : LineStart::kNo;
    if (mCurrent != &mToken) {
        mToken.Take(*mCurrent);
        mCurrent = &mToken;
    }
    for (; mBatch.texts != 0; mBatch.texts &= mBatch.texts - 1)
        mBatch.entries[std::countr_zero(mBatch.texts)].token.DropText();
    const bool isUsedUp = mBatch.next == mBatch.count;
    mBatch.most = isUsedUp ? std::min(mBatch.most * 2, CToken_batch::kMost) : CToken_batch::kFirst;
    mBatch.next = 0;
    mBatch.count = 0;
    mBatch.lines = 0;
}

bool CToken_streambuf::DropPushedBackLine(AString* line) {
    if (mTokenPushBack.IsEmpty())
        return true;
    for (bool isFirst = true; !mTokenPushBack.IsEmpty(); isFirst = false) {
        const CToken token = mTokenPushBack.Top();
        mTokenPushBack.Pop();
        if (token.GetKind() == TokenKind::Eol) {
            mLineStart = LineStart::kYes;
            return false;
        }
        if (line && !isFirst)
            token.AppendTextTo(*line);
    }
    if (IsEol(*mCurrent)) {
        NextToken();
        return false;
    }
    if (line)
        mCurrent->AppendTextTo(*line);
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
    state.mAtLineStart = IsAtLineStart();
    state.mToken = *mCurrent;
    state.mLastChar = mLastChar;
    state.mLastKind = mLastKind;
    state.mLine = GetLine();
    state.mPushBack = mPushBack;
    state.mTokenPushBack = mTokenPushBack;
    state.mTokenDistance = GetTokenDistance();
}

void CToken_streambuf::RestoreState(const CAbstract_stream_pos& pos) {
    static const CToken_stream_state start;
    const auto* const given = dynamic_cast<const CToken_stream_state*>(pos.GetState());
    const CToken_stream_state& state = given ? *given : start;
    ClearBatch(); // the raw stream stands where it is to be already
    mLineStart = state.mAtLineStart ? LineStart::kYes : LineStart::kNo;
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
    return Find(
        [&](const CToken& token) { return token.GetKind() == kind && IsSameText(token, text); });
}

bool CToken_streambuf::FindTokenAtLineStart(TokenKind kind, std::u16string_view text) {
    return Find([&](const CToken& token) {
        return IsAtLineStart() && token.GetKind() == kind && IsSameText(token, text);
    });
}

bool CToken_streambuf::FindText(std::u16string_view text) {
    return Find([&](const CToken& token) { return IsSameText(token, text); });
}

bool CToken_streambuf::FindTextAtLineStart(std::u16string_view text) {
    return Find([&](const CToken& token) { return IsAtLineStart() && IsSameText(token, text); });
}

bool CToken_streambuf::IsSameText(const CToken& token, std::u16string_view text) const {
    return token.IsNumber() ? IsSameWord(token.GetText(), text)
                            : IsSameWord(token.GetTextView(), text);
}

bool CToken_streambuf::IsNoCaseUnits(std::u16string_view a, std::u16string_view b) noexcept {
    if (std::equal(a.begin(), a.end(), b.begin())) // most often
        return true;
    return std::equal(a.begin(), a.end(), b.begin(), [](char16_t x, char16_t y) {
        return x == y || chars::ToLower(x) == chars::ToLower(y);
    });
}

void CToken_streambuf::SetLocale(const std::locale& locale) {
    mLocale = locale;
    SetEncoding(StreamEncoding::Locale);
}

} // namespace io
