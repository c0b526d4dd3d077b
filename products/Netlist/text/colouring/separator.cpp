#include "separator.h"

#include <array>
#include <string>

namespace {

/// What may follow a character, as far as an expression that takes one character at most can tell:
/// nothing, a word character, another one.
constexpr std::array<std::string_view, 3> kFollowers{"", "a", " "};

} // namespace

Separator::Separator(const CRegExp& expression, bool mayHoldStates) : m_expression(&expression) {
    m_isSet = expression.Facts().secondBytes.Empty() && FindSet();
    if (m_isSet || !mayHoldStates)
        return;
    constexpr std::size_t kCacheShare = 128;
    TokenTraits traits;
    traits.expression = &expression;
    m_automaton = std::make_unique<TokenAutomaton>(std::vector{traits}, kCacheShare);
}

/// Tries each byte. @return whether the bytes behind it make no difference
bool Separator::FindSet() {
    m_holdsAtEnd = HoldsFor("");
    for (unsigned byte = 1; byte < 256; ++byte) {
        std::array<bool, kFollowers.size()> holds{};
        for (std::size_t i = 0; i < kFollowers.size(); ++i) {
            std::string tail(1, static_cast<char>(byte));
            holds[i] = HoldsFor(tail += kFollowers[i]);
        }
        if (holds[0] != holds[1] || holds[0] != holds[2])
            return false;
        if (holds[0])
            m_bytes.Add(static_cast<unsigned char>(byte));
    }
    return true;
}

bool Separator::Matches(const RegSubject& text, std::size_t at) const {
    if (m_automaton) {
        const auto known = m_automaton->MatchesAt(text.Text(), at);
        if (known)
            return *known;
    }
    return m_expression->MatchesAt(text, at, at);
}
