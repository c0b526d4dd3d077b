/// Finds the places of a line at which tokens may occur, all tokens at once.
#pragma once

#include "byte_set.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

/// What the filter knows of one token.
struct TokenTraits {
    ByteSet first;          ///< the bytes with which an occurrence can begin
    ByteSet second;         ///< the bytes that can follow the first
    bool canBeOne = false;  ///< an occurrence may be one character long
    ByteSet startSeparator; ///< the bytes before an occurrence; good if separable
    /// The start separator looks at one character, and no occurrence of the token holds such a
    /// one. Then an occurrence without it hides no other from the scan, so it needn't be seen.
    bool separable = false;
};

/// For each place: the set of tokens whose first byte, second byte and start separator fit the
/// bytes there, by three look-ups of a row of bits a token. Before them one look-up a byte tells
/// the places where no token can begin at all, which are most.
class TokenFilter {
public:
    explicit TokenFilter(const std::vector<TokenTraits>& tokens);

    std::size_t Words() const { return m_words; }

    /// Calls found(token, column) for each place of text, in order of columns, at which a token
    /// may begin; for separable tokens only at columns that aren't covered.
    template <class Covered, class Found>
    void ForEachCandidate(std::string_view text, Covered covered, Found found) const {
        const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
        const std::size_t size = text.size();
        for (std::size_t at = 0; at < size; ++at) {
            const std::size_t before = at != 0 ? bytes[at - 1] : kNothing;
            if ((m_groupsBehind[before] & m_groupsFrom[bytes[at]]) == 0)
                continue;
            const bool isCovered = covered(at);
            if (isCovered && m_allSeparable)
                continue;
            const std::uint64_t* begins = Row(m_first, bytes[at]);
            const std::uint64_t* goesOn = Row(m_second, at + 1 < size ? bytes[at + 1] : kNothing);
            const std::uint64_t* follows = Row(m_behind, before);
            for (std::size_t word = 0; word < m_words; ++word) {
                std::uint64_t tokens = begins[word] & goesOn[word] & follows[word];
                if (isCovered)
                    tokens &= m_inseparable[word];
                for (; tokens != 0; tokens &= tokens - 1)
                    found(word * 64 + static_cast<std::size_t>(std::countr_zero(tokens)), at);
            }
        }
    }

private:
    /// Stands for a byte before the line's begin and behind its end.
    static constexpr std::size_t kNothing = 256;
    static constexpr std::size_t kRows = 257;
    static constexpr std::size_t kGroups = 32;

    const std::uint64_t* Row(const std::vector<std::uint64_t>& table, std::size_t byte) const {
        return table.data() + byte * m_words;
    }
    void SetBit(std::vector<std::uint64_t>& table, std::size_t byte, std::size_t token) const {
        table[byte * m_words + token / 64] |= std::uint64_t{1} << (token % 64);
    }
    void AddToken(std::size_t index, const TokenTraits& token);
    void AddToGroup(std::vector<ByteSet>& groups, const TokenTraits& token);

    std::size_t m_words;
    bool m_allSeparable = true;
    std::vector<std::uint64_t> m_first;
    std::vector<std::uint64_t> m_second;
    std::vector<std::uint64_t> m_behind;
    std::vector<std::uint64_t> m_inseparable;
    /// Tokens in groups of one start separator each, the last group for all that are left over:
    /// the groups with a token that may stand behind a byte, and with one that may begin with it.
    std::array<std::uint32_t, kRows> m_groupsBehind{};
    std::array<std::uint32_t, kRows> m_groupsFrom{};
};
