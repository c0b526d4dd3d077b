// The searches of CToken_istream.

#include "token_istream.h"

namespace io {

/// Runs a search from the current token on. At the end of the input the stream fails and goes back.
template <class Search>
bool CToken_istream::Find(Search search) {
    if (!PrepareRaw())
        return false;
    const CAbstract_stream_pos start = mSkipOnFail ? CAbstract_stream_pos() : Tell();
    if (search())
        return true;
    if (!mSkipOnFail)
        Seek(start);
    mGood = false;
    return false;
}

bool CToken_istream::FindKeyword(std::u16string_view text) {
    return Find([&] { return mTokenStreamBuf->FindToken(TokenKind::Keyword, text); });
}

bool CToken_istream::FindSymbol(char16_t ch) {
    const std::u16string_view text(&ch, 1);
    return Find([&] { return mTokenStreamBuf->FindToken(TokenKind::Symbol, text); });
}

bool CToken_istream::FindValue(std::u16string_view text) {
    return Find([&] { return mTokenStreamBuf->FindText(text); });
}

bool CToken_istream::FindKeywordAtLineStart(std::u16string_view text) {
    return Find([&] { return mTokenStreamBuf->FindTokenAtLineStart(TokenKind::Keyword, text); });
}

bool CToken_istream::FindSymbolAtLineStart(char16_t ch) {
    const std::u16string_view text(&ch, 1);
    return Find([&] { return mTokenStreamBuf->FindTokenAtLineStart(TokenKind::Symbol, text); });
}

bool CToken_istream::FindValueAtLineStart(std::u16string_view text) {
    return Find([&] { return mTokenStreamBuf->FindTextAtLineStart(text); });
}

bool CToken_istream::FindBegin(std::u16string_view text) {
    return Find([&] { return FindInBlock(text, true); });
}

bool CToken_istream::FindEnd(std::u16string_view text) {
    return Find([&] { return FindInBlock(text, false); });
}

/// Goes on to the begin of a block, or to the end of this one, of that name, past nested blocks.
bool CToken_istream::FindInBlock(std::u16string_view text, bool isBegin) {
    while (!AtEof()) {
        if (isBegin ? IsBegin(text) : IsEnd(text))
            return true;
        if (!mEndWord.empty() && AtEnd())
            return false;
        if (!mBeginWord.empty() && AtBegin())
            SkipBlock();
        else
            Step();
    }
    return false;
}

/// From a begin word to behind its end word.
void CToken_istream::SkipBlock() {
    std::size_t depth = 0;
    do {
        if (AtBegin()) {
            ++depth;
            Step(); // and the name below, whatever it is
        } else if (AtEnd()) {
            --depth;
        }
        Step();
    } while (depth != 0 && !AtEof());
}

} // namespace io
