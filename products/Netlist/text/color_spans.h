/// The coloured spans of one line, kept small, and the process's table of their colours.
#pragma once

#include "quorel_export.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// One coloured span. Columns are indices of the expanded text; the end column is inclusive.
/// The colour's lowest byte is red, the next green, the next blue.
struct CColorDscr {
    std::int32_t Start = 0;
    std::int32_t End = 0;
    std::uint32_t Color = 0;

    friend bool operator==(const CColorDscr&, const CColorDscr&) = default;
};

/// The distinct colours of all descriptions by number. Grows only; belongs to the user interface
/// thread like all of the text engine.
class QUOREL_API ColorPalette {
public:
    /// The number of a colour, a new one if the colour is new.
    static std::uint32_t IndexOf(std::uint32_t color);
    static std::uint32_t ColorOf(std::uint32_t index);
};

/// An immutable list of spans sorted by start, without overlaps, in one small allocation. A span is
/// a byte with the gap before it (three bits) and its colour's number (five bits), and its length;
/// the greatest value of either part of the byte says that the number follows by itself. Numbers
/// are in groups of seven bits, the lowest first. Most spans take two bytes.
class QUOREL_API ColorSpans {
public:
    ColorSpans() = default;
    ColorSpans(ColorSpans&& other) noexcept;
    ColorSpans& operator=(ColorSpans&& other) noexcept;
    ColorSpans(const ColorSpans&) = delete;
    ColorSpans& operator=(const ColorSpans&) = delete;
    ~ColorSpans() { Clear(); }

    class const_iterator {
    public:
        using value_type = CColorDscr;
        using difference_type = std::ptrdiff_t;
        using reference = const CColorDscr&;
        using pointer = const CColorDscr*;
        using iterator_category = std::input_iterator_tag;

        const_iterator() = default;
        explicit const_iterator(const std::uint8_t* next, const std::uint8_t* end)
            : m_next(next), m_end(end) {
            Read();
        }
        reference operator*() const { return m_span; }
        pointer operator->() const { return &m_span; }
        const_iterator& operator++() {
            Read();
            return *this;
        }
        bool operator==(const const_iterator& other) const { return m_here == other.m_here; }

    private:
        QUOREL_API void Read();
        const std::uint8_t* m_here = nullptr; ///< null behind the last span
        const std::uint8_t* m_next = nullptr;
        const std::uint8_t* m_end = nullptr;
        CColorDscr m_span{.Start = 0, .End = -1, .Color = 0};
    };

    const_iterator begin() const;
    const_iterator end() const { return {}; }
    bool empty() const { return m_block == nullptr; }
    std::vector<CColorDscr> ToVector() const { return {begin(), end()}; }

    /// Takes over bytes written by Encoder. No allocation where they need the room that is there.
    void Assign(std::span<const std::uint8_t> bytes);
    void Clear();

    /// Writes spans, given in ascending order without overlaps, into a reusable buffer.
    class Encoder {
    public:
        /// What a very long line took is given back first.
        void Start() {
            if (m_bytes.size() > kKept)
                m_bytes = {};
            m_size = 0;
            m_column = 0;
        }
        /// Columns start up to but not including behind; the colour by its palette number.
        void Add(std::uint32_t start, std::uint32_t behind, std::uint32_t paletteIndex) {
            if (m_bytes.size() < m_size + kMostBytes)
                m_bytes.resize(m_size * 2 + kMostBytes);
            std::uint8_t* at = m_bytes.data() + m_size;
            const std::uint32_t gap = std::min(start - m_column, kLongGap);
            const std::uint32_t color = std::min(paletteIndex, kHighColor);
            *at++ = static_cast<std::uint8_t>(gap | color << kGapBits);
            if (gap == kLongGap)
                at = Put(at, start - m_column);
            if (color == kHighColor)
                at = Put(at, paletteIndex);
            at = Put(at, behind - start);
            m_size = static_cast<std::size_t>(at - m_bytes.data());
            m_column = behind;
        }
        std::span<const std::uint8_t> Bytes() const { return {m_bytes.data(), m_size}; }

    private:
        static constexpr std::size_t kKept = 65536;
        static constexpr std::size_t kMostBytes = 16; ///< a byte and three numbers of five groups

        static std::uint8_t* Put(std::uint8_t* at, std::uint32_t number) {
            for (; number >= 0x80; number >>= 7)
                *at++ = static_cast<std::uint8_t>(number | 0x80);
            *at++ = static_cast<std::uint8_t>(number);
            return at;
        }
        std::vector<std::uint8_t> m_bytes;
        std::size_t m_size = 0;
        std::uint32_t m_column = 0;
    };

private:
    static constexpr unsigned kGapBits = 3;
    static constexpr std::uint32_t kLongGap = (1u << kGapBits) - 1;
    static constexpr std::uint32_t kHighColor = (0x100u >> kGapBits) - 1;

    /// A size with that many bytes behind it; the heap's blocks are full up to a multiple of 16.
    struct Block {
        std::uint32_t size;
        static std::size_t RoomFor(std::size_t size) {
            return (sizeof(Block) + size + 7) / 16 * 16 + 8;
        }
        std::uint8_t* Bytes() { return reinterpret_cast<std::uint8_t*>(this + 1); }
        const std::uint8_t* Bytes() const {
            return reinterpret_cast<const std::uint8_t*>(this + 1);
        }
    };
    Block* m_block = nullptr;
};
