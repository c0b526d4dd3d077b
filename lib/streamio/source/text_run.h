/// A look at what a raw stream has buffered, for reading tokens at one go.
#pragma once

#include "base_grammar.h"
#include "raw_area.h"
#include "token_textstreambuf.h"

namespace io {

/// The buffered units, of which those below `limit` are characters that the grammar's tables know;
/// in UTF-8 the others begin sequences.
struct Text_run {
    Text_run(const CRawStreambuf& raw, const CBase_grammar& itsGrammar, StreamEncoding encoding)
        : begin(RawArea::Begin(raw)), end(RawArea::End(raw)), grammar(itsGrammar),
          fast(itsGrammar.GetFast()), isUtf8(encoding == StreamEncoding::Utf8),
          limit(isUtf8 ? 0x80 : 0x100) {}

    const char16_t* begin; ///< where the raw stream stands
    const char16_t* end;
    const CBase_grammar& grammar;
    const CBase_grammar::FastTables& fast;
    bool isUtf8;
    char16_t limit;

    bool Knows(const char16_t* p) const noexcept { return p < end && *p < limit; }
    unsigned Next(unsigned state, const char16_t* p) const noexcept { return fast.next[state][*p]; }
    bool Stays(unsigned state, const char16_t* p) const noexcept {
        return Knows(p) && (fast.stay[*p] & 1U << state) != 0;
    }
    /// Where a run of characters that keep a state ends, from `p` on.
    const char16_t* Skip(unsigned state, const char16_t* p) const {
        do {
            while (Stays(state, p))
                ++p;
        } while (StaysBeyond(state, p) && ++p);
        return p;
    }

private:
    /// The same for characters that the tables don't hold.
    bool StaysBeyond(unsigned state, const char16_t* p) const {
        return p < end && *p >= limit && !isUtf8 && grammar.NextState(state, *p) == state;
    }
};

} // namespace io
