// Construction and states; reading and writing have sources of their own.

#include "token_textstreambuf.h"

namespace io {

CToken_textstreambuf::CToken_textstreambuf(CRawStreambuf* a_streambuf, CBase_grammar& grammar)
    : CToken_streambuf(a_streambuf, StreamEncoding::Utf8), mGrammar(&grammar) {}

void CToken_textstreambuf::AddCommentChars(const char16_t* text) {
    Settle();
    mGrammar->AddCommentChars(text);
}

void CToken_textstreambuf::RemoveCommentChars(const char16_t* text) {
    Settle();
    mGrammar->RemoveCommentChars(text);
}

void CToken_textstreambuf::NewState(CAbstract_stream_pos& pos) const {
    pos.SetState(new CToken_textstream_state);
}

void CToken_textstreambuf::SaveState(CAbstract_stream_pos& pos) const {
    CToken_streambuf::SaveState(pos);
    auto& state = static_cast<CToken_textstream_state&>(*pos.GetState());
    state.mIndentStack = mIndentStack;
    state.mIndent = mIndent;
}

void CToken_textstreambuf::RestoreState(const CAbstract_stream_pos& pos) {
    CToken_streambuf::RestoreState(pos);
    if (const auto* state = dynamic_cast<const CToken_textstream_state*>(pos.GetState())) {
        mIndentStack = state->mIndentStack;
        mIndent = state->mIndent;
    }
}

} // namespace io
