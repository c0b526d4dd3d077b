/// Input of tokens and blocks from a string.
#pragma once

#include "raw_streambufs.h"
#include "token_istream.h"

namespace io {

/// What CToken_istring reads from; stands in front of it among its bases.
struct QUOREL_API Istring_storage {
    explicit Istring_storage(std::u16string text) : mString(std::move(text)), mRaw(&mString) {}
    CString_streambuf mString;
    CRawIstream mRaw;
};

/// Reads a copy of a text, a character a unit; or the binary form, a byte a unit, which its first
/// unit 0 tells.
class QUOREL_API CToken_istring : private Istring_storage, public CToken_istream {
public:
    explicit CToken_istring(AString text, CBase_grammar* grammar = &CToken_grammar_default::Get(),
                            unsigned flags = 0);
    /// Reads text with a delimiter grammar of these delimiters and no comments.
    CToken_istring(AString text, const AString& delimiters);
    ~CToken_istring() override;
};

} // namespace io
