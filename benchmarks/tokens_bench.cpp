// Tokens of a text without a tree: read from bytes and from a string of 16-bit units, written, and
// both in the binary form. Figures are for a byte of the text form; 6.67 ns are 150 MB/s.
#include "block_text.h"
#include "delimiter_grammar.h"
#include "peer_bench.h"
#include "raw_streambufs.h"
#include "token_binarystreambuf.h"
#include "token_grammar.h"
#include "token_textstreambuf.h"

#include <sstream>

namespace {

using namespace io;

constexpr int kRounds = 9;
constexpr const char* kUnit = "ns/byte";

std::size_t CountTokens(CToken_streambuf& buffer) {
    std::size_t count = 0;
    while (buffer.NextToken().GetKind() != TokenKind::Eof)
        ++count;
    bench::Keep(count);
    return count;
}

std::vector<CToken> AllTokens(CToken_streambuf& buffer) {
    std::vector<CToken> tokens;
    while (buffer.NextToken().GetKind() != TokenKind::Eof)
        tokens.push_back(buffer.PeekToken());
    return tokens;
}

struct TextBuffer : CToken_textstreambuf {
    TextBuffer(CRawStreambuf& raw, StreamEncoding encoding,
               CBase_grammar& grammar = CToken_grammar_default::Get())
        : CToken_textstreambuf(&raw, grammar) {
        SetEncoding(encoding);
        SetKeepText(true);
    }
};

class Figures {
public:
    explicit Figures(const std::string& text) : mText(text) {}

    template <class Work>
    void Measure(const char* name, Work work) const {
        work(); // one round untimed
        const double time = bench::TimeOf(kRounds, work);
        bench::Row(name, "quorel", kUnit, time / static_cast<double>(mText.size()));
    }

    void ReadText() const {
        Measure("tokens of text, from bytes", [&] {
            std::stringbuf bytes(mText, std::ios_base::in);
            CByte_streambuf raw(bytes);
            TextBuffer buffer(raw, StreamEncoding::Utf8);
            CountTokens(buffer);
        });
        const std::u16string units(mText.begin(), mText.end());
        Measure("tokens of text, from 16-bit units", [&] {
            CString_streambuf raw(units);
            TextBuffer buffer(raw, StreamEncoding::Utf16);
            CountTokens(buffer);
        });
        Measure("tokens of text, by delimiters", [&] {
            CString_streambuf raw(units);
            TextBuffer buffer(raw, StreamEncoding::Utf16, CDelimiter_grammar_default::Get());
            CountTokens(buffer);
        });
    }

    void WriteAndReadBinary() const {
        CString_streambuf source(std::u16string(mText.begin(), mText.end()));
        TextBuffer reader(source, StreamEncoding::Utf16);
        const std::vector<CToken> tokens = AllTokens(reader);
        Measure("tokens written as text, to bytes", [&] {
            std::stringbuf bytes(std::ios_base::out);
            CByte_streambuf raw(bytes);
            TextBuffer buffer(raw, StreamEncoding::Utf8);
            for (const CToken& token : tokens)
                buffer.WriteToken(token, {});
            raw.pubsync();
        });
        std::string binary;
        Measure("tokens written in binary, to bytes", [&] {
            std::stringbuf bytes(std::ios_base::out);
            CByte_streambuf raw(bytes);
            CToken_binarystreambuf buffer(&raw);
            for (const CToken& token : tokens)
                buffer.WriteToken(token, {});
            raw.pubsync();
            binary = bytes.str();
        });
        Measure("tokens of binary, from bytes", [&] {
            std::stringbuf bytes(binary, std::ios_base::in);
            CByte_streambuf raw(bytes);
            CToken_binarystreambuf buffer(&raw);
            CountTokens(buffer);
        });
    }

private:
    const std::string& mText;
};

} // namespace

int main() {
    const std::string text = work::BlockText::Make();
    const Figures figures(text);
    figures.ReadText();
    figures.WriteAndReadBinary();
}
