/// What must stand directly before or behind a token, made quick to test.
#pragma once

#include "byte_set.h"
#include "reg_exp.h"
#include "reg_subject.h"
#include "token_automaton.h"

#include <cstddef>
#include <memory>
#include <string_view>

/// A separator expression, tested on the tail of a text from some column on: it holds when it
/// matches at that tail's start. Most separators look at one character at most; those are a set.
class Separator {
public:
    /// Borrows the expression. May hold states of an automaton, up to 128 KB, if that is allowed.
    Separator(const CRegExp& expression, bool mayHoldStates);

    bool Holds(const RegSubject& text, std::size_t at) const {
        if (!m_isSet)
            return Matches(text, at);
        return at < text.Length() ? m_bytes.Has(static_cast<unsigned char>(text.Begin()[at]))
                                  : m_holdsAtEnd;
    }

    /// Whether the next character alone, or the text's end, decides.
    bool IsSet() const { return m_isSet; }
    /// The characters that decide for it; good where IsSet.
    const ByteSet& Bytes() const { return m_bytes; }

private:
    bool FindSet();
    bool Matches(const RegSubject& text, std::size_t at) const;
    bool HoldsFor(std::string_view tail) const { return Matches(RegSubject(tail), 0); }

    const CRegExp* m_expression;
    std::unique_ptr<TokenAutomaton> m_automaton; ///< of the one expression, where it isn't a set
    ByteSet m_bytes;
    bool m_holdsAtEnd = false;
    bool m_isSet = false;
};
