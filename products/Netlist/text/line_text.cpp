#include "line_text.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

namespace {
constexpr std::uint32_t kLeastRoom = 24;
/// Up to this room a text keeps what it had.
constexpr std::uint32_t kKeptRoom = 4096;
} // namespace

void LineText::Assign(std::string_view text) {
    CheckSize(text.size());
    const auto size = static_cast<std::uint32_t>(text.size());
    if (m_capacity < size) {
        Release();
        m_size = 0;
        Reallocate(size);
    }
    if (size != 0)
        std::memmove(m_data, text.data(), size);
    m_size = size;
}

void LineText::Insert(std::uint32_t at, std::uint32_t count, char character) {
    if (count != 0)
        std::memset(MakeGap(at, count), character, count);
}

void LineText::Insert(std::uint32_t at, std::string_view text) {
    CheckSize(text.size());
    if (!text.empty())
        std::memcpy(MakeGap(at, static_cast<std::uint32_t>(text.size())), text.data(), text.size());
}

void LineText::Erase(std::uint32_t at, std::uint32_t count) {
    if (count == 0)
        return;
    if (at + count < m_size) { // at its end a borrowed text can be cut as it is
        if (m_capacity == 0)
            Reallocate(m_size);
        std::memmove(m_data + at, m_data + at + count, m_size - at - count);
    }
    m_size -= count;
    if (m_capacity > kKeptRoom && m_size < m_capacity / 4)
        Reallocate(m_capacity / 2);
}

void LineText::Swap(LineText& other) noexcept {
    std::swap(m_data, other.m_data);
    std::swap(m_size, other.m_size);
    std::swap(m_capacity, other.m_capacity);
}

/// Opens a gap of count bytes and returns its start. Grows by half, so that typing stays linear.
char* LineText::MakeGap(std::uint32_t at, std::uint32_t count) {
    const std::size_t need = std::size_t{m_size} + count;
    CheckSize(need);
    if (need > m_capacity)
        Reallocate(std::max(static_cast<std::uint32_t>(need + need / 2), kLeastRoom));
    std::memmove(m_data + at + count, m_data + at, m_size - at);
    m_size += count;
    return m_data + at;
}

void LineText::Reallocate(std::uint32_t capacity) {
    capacity = std::max<std::uint32_t>(capacity, 1);
    char* data = static_cast<char*>(std::realloc(m_capacity != 0 ? m_data : nullptr, capacity));
    if (data == nullptr)
        throw std::bad_alloc();
    if (m_capacity == 0 && m_size != 0)
        std::memcpy(data, m_data, m_size);
    m_data = data;
    m_capacity = capacity;
}

void LineText::ThrowTooLong() {
    throw std::length_error("a line would be too long");
}

void LineText::Release() {
    if (m_capacity != 0)
        std::free(m_data);
    m_data = nullptr;
    m_capacity = 0;
}
