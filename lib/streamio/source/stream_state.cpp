#include "stream_state.h"

#include "assertion.h"
#include "block_func.h"
#include "block_named_value.h"

namespace io {

namespace {

/// Names of the arguments that an index entry has of a state.
constexpr char16_t kLineName[] = u"lin";
constexpr char16_t kLevelName[] = u"lvl";
/// A greater line in an index entry is none: counting on from it must not overflow.
constexpr int kMaxLine = 1 << 30;

} // namespace

// --- CAbstract_stream_pos ---

CAbstract_stream_pos::CAbstract_stream_pos(const CAbstract_stream_pos& other) : mPos(other.mPos) {
    SetState(other.mState);
}

CAbstract_stream_pos& CAbstract_stream_pos::operator=(const CAbstract_stream_pos& other) {
    mPos = other.mPos;
    SetState(other.mState);
    return *this;
}

void CAbstract_stream_pos::SetState(CAbstract_stream_state* state) {
    if (state)
        ++state->mRefCount;
    if (mState && --mState->mRefCount == 0)
        delete mState;
    mState = state;
}

// --- CAbstract_stream_state ---

CAbstract_stream_state::~CAbstract_stream_state() {
    USE_ASSERT(mRefCount == 0);
}

void CAbstract_stream_state::WriteTo(CBlock_func& func) const {
    func << CBlock_named_value(AString(kLevelName), mLevel);
}

void CAbstract_stream_state::ReadFrom(CBlock_func& func) {
    CBlock_named_value level{AString(kLevelName)};
    if (func.Get(level))
        level.Get(mLevel);
}

void CAbstract_stream_state::Rebase(const CAbstract_stream_pos&, const CAbstract_stream_pos&) {}

// --- CToken_stream_state ---

bool CToken_stream_state::IsCleanPosition() const {
    const TokenKind kind = mToken.GetKind();
    const bool isMidLine = kind != TokenKind::Null && kind != TokenKind::Eol && !mAtLineStart;
    return !isMidLine && mPushBack.IsEmpty() && mTokenPushBack.IsEmpty();
}

bool CToken_stream_state::IsTopLevel() const {
    return IsCleanPosition() && mLevel == 0;
}

void CToken_stream_state::Rebase(const CAbstract_stream_pos& from, const CAbstract_stream_pos& to) {
    if (from.GetState() && to.GetState())
        mLine += to.GetState()->GetLine() - from.GetState()->GetLine();
}

// --- CToken_textstream_state ---

bool CToken_textstream_state::IsTopLevel() const {
    return CToken_stream_state::IsTopLevel() && mIndentStack.empty();
}

void CToken_textstream_state::WriteTo(CBlock_func& func) const {
    func << CBlock_named_value(AString(kLineName), mLine);
    CToken_stream_state::WriteTo(func);
}

void CToken_textstream_state::ReadFrom(CBlock_func& func) {
    CBlock_named_value line{AString(kLineName)};
    int number = 0;
    if (func.Get(line) && line.Get(number) && number >= 1 && number <= kMaxLine)
        mLine = number;
    CToken_stream_state::ReadFrom(func);
}

} // namespace io
