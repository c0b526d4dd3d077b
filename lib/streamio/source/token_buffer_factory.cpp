#include "token_buffer_factory.h"

#include "abstract_stream.h"
#include "token_binarystreambuf.h"
#include "token_grammar.h"
#include "token_textstreambuf.h"

namespace io {

namespace {

bool IsBinary(const Buffer_request& request) {
    const bool isBinary = !request.grammar || (request.flags & kBinary) != 0;
    if (!request.isAutodetect)
        return isBinary;
    using Traits = CRawStreambuf::traits_type;
    const auto first = request.raw->sgetc();
    return Traits::eq_int_type(first, Traits::eof()) ? isBinary : first == 0;
}

std::unique_ptr<CToken_streambuf> MakeText(const Buffer_request& request) {
    CBase_grammar& grammar = request.grammar ? *request.grammar : CToken_grammar_default::Get();
    auto text = std::make_unique<CToken_textstreambuf>(request.raw, grammar);
    text->SetKeepText((request.flags & kDropSource) == 0);
    text->SetCrLf((request.flags & kCrLf) != 0);
    if (request.isString)
        text->SetEncoding(StreamEncoding::Utf16);
    else if (request.locale)
        text->SetLocale(*request.locale);
    return text;
}

class Null_streambuf : public CRawStreambuf {};

} // namespace

std::unique_ptr<CToken_streambuf> MakeTokenBuffer(const Buffer_request& request) {
    if (!IsBinary(request))
        return MakeText(request);
    auto binary = std::make_unique<CToken_binarystreambuf>(request.raw);
    if (request.isString)
        binary->SetEncoding(StreamEncoding::BinaryString);
    return binary;
}

CRawStreambuf& GetNullRaw() {
    static Null_streambuf null;
    return null;
}

} // namespace io
