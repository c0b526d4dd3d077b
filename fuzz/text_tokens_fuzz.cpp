/// Any bytes as text tokens: the same tokens whether the text is buffered or comes a unit at a
/// time, each inside the text and behind the one before; reading anew where one begins gives it
/// again; and what is written of them reads back.
///
/// The first byte chooses: 1 UTF-8, 2 the delimiter grammar, 12 the case mode, 16 comments kept,
/// 32 blanks kept.
#include "delimiter_grammar.h"
#include "raw_streambufs.h"
#include "token_grammar.h"
#include "token_textstreambuf.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace io;

void Require(bool law) {
    if (!law)
        std::abort();
}

/// Buffers one unit.
class Trickle : public CRawStreambuf {
public:
    explicit Trickle(std::u16string_view text) : mText(text) {}

protected:
    int_type underflow() override {
        if (mText.empty())
            return traits_type::eof();
        mUnit = mText.front();
        mText.remove_prefix(1);
        setg(&mUnit, &mUnit, &mUnit + 1);
        return traits_type::to_int_type(mUnit);
    }

private:
    std::u16string_view mText;
    char16_t mUnit = 0;
};

StreamEncoding EncodingOf(unsigned options) {
    return options & 1 ? StreamEncoding::Utf8 : StreamEncoding::Utf16;
}

CBase_grammar& GrammarOf(unsigned options) {
    if (options & 2)
        return CDelimiter_grammar_default::Get();
    return CToken_grammar_default::Get();
}

struct Reader : CToken_textstreambuf {
    Reader(CRawStreambuf& raw, unsigned options) : CToken_textstreambuf(&raw, GrammarOf(options)) {
        SetEncoding(EncodingOf(options));
        SetCaseMode(static_cast<CaseMode>(options >> 2 & 3));
        SetKeepComments(options & 16);
        SetKeepWhiteSpace(options & 32);
        SetKeepText(true);
    }
};

std::vector<CToken> ReadAll(CRawStreambuf& raw, std::size_t size, unsigned options) {
    Reader buffer(raw, options);
    std::vector<CToken> tokens;
    std::streamoff last = 0;
    while (buffer.NextToken().GetKind() != TokenKind::Eof) {
        tokens.push_back(buffer.PeekToken());
        Require(tokens.size() <= size);
        Require(tokens.back().GetKind() != TokenKind::Error);
        if (const std::streamoff pos = buffer.TellRaw(); pos >= 0) {
            Require(pos <= static_cast<std::streamoff>(size));
            Require(pos - buffer.GetTokenDistance() >= last);
            last = pos - buffer.GetTokenDistance();
        }
    }
    return tokens;
}

/// Reads some tokens once more, each from where it begins.
void CheckStarts(const std::u16string& units, unsigned options) {
    CString_streambuf raw(units), again(units);
    Reader buffer(raw, options);
    for (int i = 0; i < 16 && buffer.NextToken().GetKind() != TokenKind::Eof; ++i) {
        again.pubseekpos(buffer.TellRaw() - buffer.GetTokenDistance(), std::ios_base::in);
        const bool isSecondHalf = (buffer.PeekToken().GetSymbol() & 0xFC00) == 0xDC00;
        Require(isSecondHalf || Reader(again, options).NextToken() == buffer.PeekToken());
    }
}

/// What quoted text becomes on its way through a file.
std::u16string WithoutCr(std::u16string_view text) {
    std::u16string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r' && text.substr(i, 2) == u"\r\n")
            continue;
        out += text[i] == u'\r' ? u'\n' : text[i];
    }
    return out;
}

std::vector<CToken> WriteAndRead(const std::vector<CToken>& tokens, unsigned options) {
    CString_streambuf raw;
    CToken_textstreambuf writer(&raw, CToken_grammar_default::Get());
    writer.SetEncoding(EncodingOf(options));
    for (const CToken& token : tokens)
        writer.WriteToken(token, {});
    CString_streambuf written{std::u16string(raw.GetView())};
    return ReadAll(written, raw.GetView().size(), options);
}

/// CData may get a blank at each end.
bool IsSameCData(std::u16string_view before, std::u16string_view after) {
    after.remove_prefix(after.size() > before.size() && !after.starts_with(before) ? 1 : 0);
    after.remove_suffix(after.size() > before.size() && after.back() == u' ' ? 1 : 0);
    return after == before;
}

/// A number without the letter that went back to the input may be another kind.
bool IsSameValue(const CToken& before, const CToken& after) {
    if (before.IsNumber())
        return after.IsNumber() && after.GetNumber() == before.GetNumber() &&
               after.GetText() == before.GetText();
    if (before.GetKind() != after.GetKind())
        return false;
    if (before.GetKind() == TokenKind::CData)
        return IsSameCData(before.GetTextView(), after.GetTextView());
    if (IsQuotedKind(before.GetKind()))
        return after.GetTextView() == WithoutCr(before.GetTextView());
    return before == after || before.GetKind() <= TokenKind::False;
}

bool IsWhiteSpace(const CToken& token) {
    return token.GetKind() == TokenKind::WhiteSpace;
}

void CheckWriting(std::vector<CToken> tokens, unsigned options) {
    std::vector<CToken> once = WriteAndRead(tokens, options);
    Require(once == WriteAndRead(once, options));
    std::erase_if(tokens, IsWhiteSpace); // tokens that touched have got blanks between them
    std::erase_if(once, IsWhiteSpace);
    Require(std::equal(tokens.begin(), tokens.end(), once.begin(), once.end(), IsSameValue));
}

/// Half a character outside of all texts, which UTF-8 can't tell.
bool IsHalf(const CToken& token) {
    return (token.GetSymbol() & 0xF800) == 0xD800;
}

/// The writer keeps a symbol that may continue a word apart from Keywords alone.
bool IsJoined(const CToken& before, const CToken& symbol) {
    return (before.GetKind() == TokenKind::True || before.GetKind() == TokenKind::False) &&
           symbol.GetSymbol() == u'_';
}

bool CanBeWritten(const std::vector<CToken>& tokens, unsigned options) {
    return !(options & 2) &&
           (!(options & 1) || std::none_of(tokens.begin(), tokens.end(), IsHalf)) &&
           std::adjacent_find(tokens.begin(), tokens.end(), IsJoined) == tokens.end();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const unsigned options = data[0];
    std::u16string units(data + 1, data + size);
    if (!(options & 1)) { // pairs of bytes with a high bit make other characters
        for (std::size_t i = 0; i + 1 < units.size(); ++i) {
            if (units[i] >= 0xC0)
                units[i] = static_cast<char16_t>(units[i] << 8 | units[i + 1]);
        }
    }
    CString_streambuf whole(units);
    Trickle trickle(units);
    const std::vector<CToken> tokens = ReadAll(whole, units.size(), options);
    Require(tokens == ReadAll(trickle, units.size(), options));
    CheckStarts(units, options);
    if (CanBeWritten(tokens, options))
        CheckWriting(tokens, options);
    return 0;
}
