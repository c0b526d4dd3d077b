#include "separator.h"

#include <array>
#include <string>

namespace {

/// What may follow a character, as far as an expression that takes one character at most can tell:
/// nothing, a word character, another one.
constexpr std::array<std::string_view, 3> kFollowers{"", "a", " "};

} // namespace

Separator::Separator(const CRegExp& expression) : m_expression(&expression) {
    if (!expression.Facts().secondBytes.Empty())
        return; // it may take more than one character
    m_holdsAtEnd = HoldsFor("");
    for (unsigned byte = 1; byte < 256; ++byte) {
        std::array<bool, kFollowers.size()> holds{};
        for (std::size_t i = 0; i < kFollowers.size(); ++i) {
            std::string tail(1, static_cast<char>(byte));
            holds[i] = HoldsFor(tail += kFollowers[i]);
        }
        if (holds[0] != holds[1] || holds[0] != holds[2])
            return;
        if (holds[0])
            m_bytes.Add(static_cast<unsigned char>(byte));
    }
    m_isSet = true;
}
