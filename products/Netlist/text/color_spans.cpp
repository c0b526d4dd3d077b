#include "color_spans.h"

#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <new>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace {

constexpr std::size_t kMostBytes = std::numeric_limits<std::uint32_t>::max();

struct Palette {
    std::vector<std::uint32_t> colors;
    std::unordered_map<std::uint32_t, std::uint32_t> indices;
};

/// Made when the library is loaded, so that it outlives the static objects of all who use it.
Palette sPalette;

/// Reads one number in groups of seven bits, the lowest first.
std::uint32_t Take(const std::uint8_t*& at) {
    std::uint32_t number = *at & 0x7fu;
    for (unsigned shift = 7; *at++ & 0x80u; shift += 7)
        number |= (*at & 0x7fu) << shift;
    return number;
}

} // namespace

std::uint32_t ColorPalette::IndexOf(std::uint32_t color) {
    const auto [at, isNew] =
        sPalette.indices.try_emplace(color, static_cast<std::uint32_t>(sPalette.colors.size()));
    if (isNew)
        sPalette.colors.push_back(color);
    return at->second;
}

std::uint32_t ColorPalette::ColorOf(std::uint32_t index) {
    return sPalette.colors[index];
}

ColorSpans::ColorSpans(ColorSpans&& other) noexcept
    : m_block(std::exchange(other.m_block, nullptr)) {}

ColorSpans& ColorSpans::operator=(ColorSpans&& other) noexcept {
    std::swap(m_block, other.m_block);
    return *this;
}

ColorSpans::const_iterator ColorSpans::begin() const {
    if (m_block == nullptr)
        return {};
    return const_iterator(m_block->Bytes(), m_block->Bytes() + m_block->size);
}

void ColorSpans::const_iterator::Read() {
    m_here = m_next == m_end ? nullptr : m_next;
    if (m_here == nullptr)
        return;
    const std::uint8_t first = *m_next++;
    std::uint32_t gap = first & kLongGap;
    if (gap == kLongGap)
        gap = Take(m_next);
    std::uint32_t color = first >> kGapBits;
    if (color == kHighColor)
        color = Take(m_next);
    const std::uint32_t start = static_cast<std::uint32_t>(m_span.End + 1) + gap;
    const std::uint32_t length = Take(m_next);
    m_span = {.Start = static_cast<std::int32_t>(start),
              .End = static_cast<std::int32_t>(start + length - 1),
              .Color = ColorPalette::ColorOf(color)};
}

void ColorSpans::Assign(std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) {
        Clear();
        return;
    }
    if (bytes.size() > kMostBytes)
        throw std::length_error("too many spans");
    if (m_block == nullptr || Block::RoomFor(m_block->size) != Block::RoomFor(bytes.size())) {
        Clear();
        m_block = static_cast<Block*>(std::malloc(Block::RoomFor(bytes.size())));
        if (m_block == nullptr)
            throw std::bad_alloc();
    }
    m_block->size = static_cast<std::uint32_t>(bytes.size());
    std::memcpy(m_block->Bytes(), bytes.data(), bytes.size());
}

void ColorSpans::Clear() {
    std::free(m_block);
    m_block = nullptr;
}
