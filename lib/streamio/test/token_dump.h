// Tokens as text, for tables of (input, tokens).
#pragma once

#include <charconv>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "raw_streambufs.h"
#include "token_grammar.h"
#include "token_textstreambuf.h"

namespace io::test {

/// Printable ASCII as it is, anything else as {hex}.
inline std::string Show(std::u16string_view text) {
    std::string out;
    for (const char16_t ch : text) {
        char code[8];
        std::snprintf(code, sizeof code, "{%x}", static_cast<unsigned>(ch));
        ch >= 0x20 && ch < 0x7F ? out += static_cast<char>(ch) : out += code;
    }
    return out;
}

inline std::string Show(double number) {
    char digits[32];
    return std::string(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

/// Kind(text), for a number Kind(source|value), or the kind alone.
inline std::string Show(const CToken& token) {
    std::string out(GetTokenKindName(token.GetKind()));
    if (token.IsNumber())
        out += "(" + Show(token.GetText()) + "|" + Show(token.GetNumber()) + ")";
    else if (token.IsText() || token.HasText())
        out += "(" + Show(token.GetTextView()) + ")";
    return out;
}

/// All tokens up to the end, with a blank between them; kinds that recur have short names.
inline std::string ShowAll(CToken_streambuf& buffer) {
    std::string out;
    while (buffer.NextToken().GetKind() != TokenKind::Eof)
        out += (out.empty() ? "" : " ") + Show(buffer.PeekToken());
    return out;
}

/// Gives each unit of a text on its own, so that nothing is ever buffered ahead.
class Trickle : public CRawStreambuf {
public:
    explicit Trickle(std::u16string_view text) : mText(text) {}

protected:
    int_type underflow() override {
        if (mPos == mText.size())
            return traits_type::eof();
        mUnit = mText[mPos++];
        setg(&mUnit, &mUnit, &mUnit + 1);
        return traits_type::to_int_type(mUnit);
    }

private:
    std::u16string_view mText;
    std::size_t mPos = 0;
    char16_t mUnit = 0;
};

/// How a text is to be read; the default is that of a string stream.
struct Reading {
    CBase_grammar* grammar = &CToken_grammar_default::Get();
    StreamEncoding encoding = StreamEncoding::Utf16;
    CaseMode caseMode = CaseMode::Ignore;
    bool keepComments = false;
    bool keepWhiteSpace = false;
    bool keepText = true;

    CToken_textstreambuf& Apply(CToken_textstreambuf& buffer) const {
        buffer.SetEncoding(encoding);
        buffer.SetCaseMode(caseMode);
        buffer.SetKeepComments(keepComments);
        buffer.SetKeepWhiteSpace(keepWhiteSpace);
        buffer.SetKeepText(keepText);
        return buffer;
    }
};

/// The tokens of a text that is buffered as a whole, or a unit at a time.
inline std::string ShowTokens(std::u16string_view text, const Reading& reading = {},
                              bool isTrickled = false) {
    const std::unique_ptr<CRawStreambuf> raw =
        isTrickled ? std::unique_ptr<CRawStreambuf>(new Trickle(text))
                   : std::make_unique<CString_streambuf>(std::u16string(text));
    CToken_textstreambuf buffer(raw.get(), *reading.grammar);
    return ShowAll(reading.Apply(buffer));
}

} // namespace io::test
