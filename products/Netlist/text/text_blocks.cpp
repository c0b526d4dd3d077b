#include "text_blocks.h"

#include <algorithm>

namespace {
constexpr std::size_t kLeastBlock = 4096;
constexpr std::size_t kMostBlock = 1 << 20;
} // namespace

char* TextBlocks::Room(std::size_t size) {
    if (size > RoomSize()) {
        const std::size_t grown = kLeastBlock << std::min<std::size_t>(m_blocks.size(), 8);
        const std::size_t block = std::max(size, std::min(grown, kMostBlock));
        m_blocks.push_back(std::make_unique_for_overwrite<char[]>(block));
        m_next = m_blocks.back().get();
        m_end = m_next + block;
    }
    return m_next;
}

std::string_view TextBlocks::Commit(std::size_t size) {
    const std::string_view kept(m_next, size);
    m_next += size;
    return kept;
}

void TextBlocks::Clear() {
    m_blocks.clear();
    m_next = nullptr;
    m_end = nullptr;
}
