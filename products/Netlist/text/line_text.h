/// The text of one line: a compact byte string that may borrow its bytes from a loaded block.
#pragma once

#include "quorel_export.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// 16 bytes. Either owns its bytes or borrows them from a TextBlocks that outlives it; the first
/// change of a borrowed text makes it an owned one. Any byte is text, NUL included. Positions given
/// must lie inside the text, and a text given to insert must not be this one's own.
/// A size above kMostSize throws std::length_error and changes nothing. Erasing gives memory back
/// when most of it has become needless.
class QUOREL_API LineText {
public:
    /// The sum of two sizes is still a column.
    static constexpr std::size_t kMostSize = 0x3fffffff;

    LineText() = default;
    explicit LineText(std::string_view text) { Assign(text); }
    LineText(const LineText& other) { Assign(other.View()); }
    LineText(LineText&& other) noexcept { Swap(other); }
    LineText& operator=(LineText other) noexcept {
        Swap(other);
        return *this;
    }
    ~LineText() { Release(); }

    /// A text that points into memory which stays as it is while this text is unchanged.
    static LineText Borrow(std::string_view text) {
        CheckSize(text.size());
        LineText result;
        result.m_data = const_cast<char*>(text.data()); // never written while m_capacity is 0
        result.m_size = static_cast<std::uint32_t>(text.size());
        return result;
    }

    std::string_view View() const { return {m_data, m_size}; }
    std::uint32_t Size() const { return m_size; }
    bool Empty() const { return m_size == 0; }

    void Assign(std::string_view text);
    void Insert(std::uint32_t at, std::uint32_t count, char character);
    void Insert(std::uint32_t at, std::string_view text);
    void Append(std::string_view text) { Insert(m_size, text); }
    void Erase(std::uint32_t at, std::uint32_t count);
    void Swap(LineText& other) noexcept;

    /// @throws std::length_error for a size above kMostSize
    static void CheckSize(std::size_t size) {
        if (size > kMostSize)
            ThrowTooLong();
    }

private:
    [[noreturn]] static void ThrowTooLong();
    char* MakeGap(std::uint32_t at, std::uint32_t count);
    void Reallocate(std::uint32_t capacity);
    void Release();

    char* m_data = nullptr;
    std::uint32_t m_size = 0;
    std::uint32_t m_capacity = 0; ///< 0: the bytes are borrowed
};
