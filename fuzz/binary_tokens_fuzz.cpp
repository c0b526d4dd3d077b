/// Any bytes as binary tokens: the same tokens whether they are buffered or come a unit at a time,
/// a cut changes only what stands at it, and what is written of them reads back with their values.
///
/// The first byte tells where the cut is, in 256ths.
#include "raw_streambufs.h"
#include "token_binarystreambuf.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace io;

void Require(bool law) {
    if (!law)
        std::abort();
}

std::vector<CToken> ReadAll(CRawStreambuf& raw, std::size_t size) {
    CToken_binarystreambuf buffer(&raw);
    buffer.SetKeepComments(true);
    buffer.SetKeepWhiteSpace(true);
    std::vector<CToken> tokens;
    std::size_t units = 0;
    while (buffer.NextToken().GetKind() != TokenKind::Eof) {
        tokens.push_back(buffer.PeekToken());
        Require(tokens.size() <= size);
        units += buffer.PeekToken().GetTextLength();
        Require(units <= size);
    }
    return tokens;
}

std::vector<CToken> ReadUnits(const std::u16string& units) {
    CString_streambuf raw(units);
    return ReadAll(raw, units.size());
}

/// What the binary form keeps of a token.
bool IsKept(const CToken& written, const CToken& read) {
    if (written.IsNumber())
        return read.IsNumber() && std::bit_cast<std::uint64_t>(written.GetNumber()) ==
                                      std::bit_cast<std::uint64_t>(read.GetNumber());
    return written == read;
}

std::u16string Write(const std::vector<CToken>& tokens) {
    CString_streambuf raw;
    CToken_binarystreambuf writer(&raw);
    for (const CToken& token : tokens)
        writer.WriteToken(token, {});
    return std::u16string(raw.GetView());
}

void CheckWriting(std::vector<CToken> tokens) {
    const std::u16string units = Write(tokens);
    const std::vector<CToken> read = ReadUnits(units);
    std::erase_if(tokens, [](const CToken& token) {
        return token.GetKind() == TokenKind::Null || token.GetKind() == TokenKind::Error;
    });
    Require(std::equal(tokens.begin(), tokens.end(), read.begin(), read.end(), IsKept));
    Require(Write(read) == units);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::u16string units(data + 1, data + size);
    const std::vector<CToken> tokens = ReadUnits(units);

    std::stringbuf bytes(std::string(data + 1, data + size), std::ios_base::in);
    CByte_streambuf fromBytes(bytes);
    Require(tokens == ReadAll(fromBytes, units.size()));

    const std::size_t cut = units.size() * data[0] / 256;
    const std::vector<CToken> start = ReadUnits(units.substr(0, cut));
    Require(start.size() <= tokens.size() + 1);
    if (!start.empty())
        Require(std::equal(start.begin(), start.end() - 1, tokens.begin()));

    CheckWriting(tokens);
    return 0;
}
