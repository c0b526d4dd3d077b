/// A look at what a raw stream has buffered, for reading tokens at one go.
#pragma once

#include "base_grammar.h"
#include "raw_area.h"
#include "token_textstreambuf.h"

namespace io {

/// The buffered units, of which those below `limit` are characters that the grammar's tables know;
/// in UTF-8 the others begin sequences.
template <bool isUtf8>
struct Text_run {
    Text_run(const CRawStreambuf& raw, const CBase_grammar& itsGrammar)
        : begin(RawArea::Begin(raw)), end(RawArea::End(raw)), grammar(itsGrammar),
          fast(itsGrammar.GetFast()) {}

    static constexpr char16_t limit = isUtf8 ? 0x80 : 0x100;

    const char16_t* begin; ///< where the raw stream stands
    const char16_t* end;
    const CBase_grammar& grammar;
    const CBase_grammar::FastTables& fast;

    bool Knows(const char16_t* p) const noexcept { return p < end && *p < limit; }
    unsigned Next(unsigned state, const char16_t* p) const noexcept { return fast.next[state][*p]; }
    /// Where a run of characters that keep a state ends, from `p` on.
    const char16_t* Skip(unsigned state, const char16_t* p) const {
        p = SkipKnown(state, p);
        return p < end && *p >= limit && !isUtf8 ? SkipOthers(*this, state, p) : p;
    }
    /// The same where a unit is sure to come that ends the run.
    const char16_t* SkipToStop(unsigned state, const char16_t* p) const {
        while (Keeps(state, *p))
            ++p;
        return *p >= limit && !isUtf8 ? SkipOthers(*this, state, p) : p;
    }

private:
    bool Keeps(unsigned state, char16_t ch) const noexcept {
        return ch < limit && (fast.stay[ch] & 1U << state) != 0;
    }

    const char16_t* SkipKnown(unsigned state, const char16_t* p) const noexcept {
        for (; end - p >= 4; p += 4) { // with one look at the end
            if (!Keeps(state, p[0]))
                return p;
            if (!Keeps(state, p[1]))
                return p + 1;
            if (!Keeps(state, p[2]))
                return p + 2;
            if (!Keeps(state, p[3]))
                return p + 3;
        }
        while (p < end && Keeps(state, *p))
            ++p;
        return p;
    }

    /// The same where characters stand that the tables don't hold. Takes a copy, so that the object
    /// itself may be kept in registers.
    [[gnu::noinline]] static const char16_t* SkipOthers(Text_run run, unsigned state,
                                                        const char16_t* p) {
        while (p < run.end && (run.Keeps(state, *p) ||
                               (*p >= run.limit && run.grammar.NextState(state, *p) == state)))
            ++p;
        return p;
    }
};

} // namespace io
