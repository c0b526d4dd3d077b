/// Output of tokens and blocks into a string.
#pragma once

#include "raw_streambufs.h"
#include "token_ostream.h"

namespace io {

/// What CToken_ostring writes into; stands in front of it among its bases.
struct QUOREL_API Ostring_storage {
    explicit Ostring_storage(std::size_t size) : mString(size), mRaw(&mString) {}
    CString_streambuf mString;
    CRawOstream mRaw;
};

/// Writes into a string of its own: text a character a unit, or the binary form a byte a unit.
class QUOREL_API CToken_ostring : private Ostring_storage, public CToken_ostream {
public:
    /// A string with room for `size` units. Block names are quoted if the grammar is a
    /// CToken_grammar.
    explicit CToken_ostring(unsigned size = 0, bool binary = false,
                            CBase_grammar* grammar = &CToken_grammar_default::Get());
    explicit CToken_ostring(CBase_grammar* grammar, unsigned size = 0)
        : CToken_ostring(size, false, grammar) {}
    ~CToken_ostring() override;

    /// Replaces `text` by all that has been written.
    void GetString(AString& text) const;
    /// The same without a copy; valid until the next write.
    std::u16string_view GetView() const noexcept { return mString.GetView(); }
};

} // namespace io
