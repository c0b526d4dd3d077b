#include "token_filter.h"

#include <algorithm>

TokenFilter::TokenFilter(const std::vector<TokenTraits>& tokens)
    : m_words((tokens.size() + 63) / 64), m_first(kRows * m_words), m_second(kRows * m_words),
      m_behind(kRows * m_words), m_inseparable(m_words) {
    std::vector<ByteSet> groups;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        AddToken(i, tokens[i]);
        AddToGroup(groups, tokens[i]);
    }
}

void TokenFilter::AddToken(std::size_t index, const TokenTraits& token) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        const auto at = static_cast<unsigned char>(byte);
        if (token.first.Has(at))
            SetBit(m_first, byte, index);
        if (token.canBeOne || token.second.Has(at))
            SetBit(m_second, byte, index);
        if (!token.separable || token.startSeparator.Has(at))
            SetBit(m_behind, byte, index);
    }
    if (token.canBeOne)
        SetBit(m_second, kNothing, index);
    SetBit(m_behind, kNothing, index);
    if (!token.separable) {
        SetBit(m_inseparable, 0, index);
        m_allSeparable = false;
    }
}

void TokenFilter::AddToGroup(std::vector<ByteSet>& groups, const TokenTraits& token) {
    const ByteSet separator = token.separable ? token.startSeparator : ByteSet::All();
    auto group = static_cast<std::size_t>(std::find(groups.begin(), groups.end(), separator) -
                                          groups.begin());
    if (group == groups.size() && group + 1 < kGroups)
        groups.push_back(separator);
    group = std::min(group, kGroups - 1);
    const std::uint32_t bit = std::uint32_t{1} << group;
    for (unsigned byte = 0; byte < 256; ++byte) {
        if (token.first.Has(static_cast<unsigned char>(byte)))
            m_groupsFrom[byte] |= bit;
        if (separator.Has(static_cast<unsigned char>(byte)))
            m_groupsBehind[byte] |= bit;
    }
    m_groupsBehind[kNothing] |= bit;
}
