/// The spans of the line at hand while they are being laid down.
#pragma once

#include "color_spans.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

/// A bit for each column that a span covers, and for each start of a span its end and colour.
/// Laying down and asking cost a word of 64 columns each. Memory for lines of up to kKept columns
/// stays; what a longer line took goes with the next line.
class SpanCanvas {
public:
    void Start(std::size_t columns) {
        if (m_spans.size() > kKept)
            *this = {};
        m_words = columns / 64 + 1;
        m_covered.assign(m_words, 0);
        m_starts.assign(m_words, 0);
        if (m_spans.size() < columns + 1)
            m_spans.resize(columns + 1);
    }

    bool IsCovered(std::size_t column) const {
        return (m_covered[column / 64] >> (column % 64) & 1) != 0;
    }

    /// Whether no column from start up to but not including behind is covered; start < behind.
    bool IsFree(std::size_t start, std::size_t behind) const {
        const std::size_t first = start / 64;
        const std::size_t last = (behind - 1) / 64;
        for (std::size_t word = first; word <= last; ++word)
            if ((m_covered[word] & MaskOf(word, start, behind)) != 0)
                return false;
        return true;
    }

    /// Lays a span over free columns; start < behind.
    void Lay(std::size_t start, std::size_t behind, std::uint32_t paletteIndex) {
        const std::size_t last = (behind - 1) / 64;
        for (std::size_t word = start / 64; word <= last; ++word)
            m_covered[word] |= MaskOf(word, start, behind);
        m_starts[start / 64] |= std::uint64_t{1} << (start % 64);
        m_spans[start] = {static_cast<std::uint32_t>(behind), paletteIndex};
    }

    /// Writes the spans in ascending order.
    void Encode(ColorSpans::Encoder& encoder) const {
        for (std::size_t word = 0; word < m_words; ++word)
            for (std::uint64_t bits = m_starts[word]; bits != 0; bits &= bits - 1) {
                const std::size_t start =
                    word * 64 + static_cast<std::size_t>(std::countr_zero(bits));
                encoder.Add(static_cast<std::uint32_t>(start), m_spans[start].behind,
                            m_spans[start].paletteIndex);
            }
    }

private:
    static constexpr std::size_t kKept = 65536;

    struct Span {
        std::uint32_t behind;
        std::uint32_t paletteIndex;
    };

    /// The columns of one word that lie from start up to behind.
    static std::uint64_t MaskOf(std::size_t word, std::size_t start, std::size_t behind) {
        const std::size_t begin = word * 64;
        std::uint64_t mask = ~std::uint64_t{0};
        if (start > begin)
            mask <<= start - begin;
        if (behind < begin + 64)
            mask &= ~(~std::uint64_t{0} << (behind - begin));
        return mask;
    }

    std::size_t m_words = 0;
    std::vector<std::uint64_t> m_covered;
    std::vector<std::uint64_t> m_starts;
    std::vector<Span> m_spans; ///< by start column; good where m_starts has the bit
};
