/// The search for the bytes that matter when a text is cut into lines.
#pragma once

#include "assertion.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// The first place in [from, end) whose byte is at most CR (13), end if there is none: tabs and
/// line ends, and other control characters, which are rare. Reads sixteen bytes a step.
inline const char* FindControl(const char* from, const char* end) {
    constexpr char kMost = '\r';
#if defined(__SSE2__)
    const __m128i most = _mm_set1_epi8(kMost);
    for (; end - from >= 16; from += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
        const __m128i small = _mm_cmpeq_epi8(_mm_min_epu8(bytes, most), bytes);
        const auto mask = static_cast<std::uint32_t>(_mm_movemask_epi8(small));
        if (mask != 0)
            return from + std::countr_zero(mask);
    }
#endif
    while (from<end&& static_cast<unsigned char>(*from)> static_cast<unsigned char>(kMost))
        ++from;
    return from;
}

inline bool IsLineEnd(char character) {
    return character == '\r' || character == '\n';
}

/// The text before the first CR or LF, for texts that go into a line: they have none, or it is an
/// assertion.
inline std::string_view BeforeLineEnd(std::string_view text) {
    const char* const end = text.data() + text.size();
    const char* at = FindControl(text.data(), end);
    while (at != end && !IsLineEnd(*at))
        at = FindControl(at + 1, end);
    USE_ASSERT(at == end);
    return text.substr(0, static_cast<std::size_t>(at - text.data()));
}
