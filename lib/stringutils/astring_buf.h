/// The scratch array of text conversions.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>

#include "assertion.h"
#include "mrefcount.h"
#include "refptr.h"

/// An array of characters that its copies share and whose capacity only grows. A fresh one is null:
/// it has no array. For one thread at a time.
template <class Ch>
class BasicAStringBuf {
public:
    /// What copies share. The array's contents are undefined until written.
    struct Rep : MRefCount {
        explicit Rep(std::ptrdiff_t capacity)
            : m_Capacity(capacity),
              m_Array(std::make_unique_for_overwrite<Ch[]>(static_cast<std::size_t>(capacity))) {}
        std::ptrdiff_t m_Length = 0;
        std::ptrdiff_t m_Capacity; ///< in characters
        std::unique_ptr<Ch[]> m_Array;
        std::basic_string<Ch> m_Spare;
    };

    /// Makes room for `n` characters and returns the capacity. An array of at least `n` stays;
    /// otherwise an array of exactly `n` takes its place, and the old contents are gone.
    std::ptrdiff_t Reserve(std::ptrdiff_t n) {
        if (!m_pBuf || n > m_pBuf->m_Capacity)
            m_pBuf = new Rep(std::max<std::ptrdiff_t>(n, 0));
        return m_pBuf->m_Capacity;
    }

    bool IsNull() const noexcept { return !m_pBuf; }
    std::ptrdiff_t Capacity() const noexcept { return m_pBuf ? m_pBuf->m_Capacity : 0; }
    std::ptrdiff_t Length() const noexcept { return m_pBuf ? m_pBuf->m_Length : 0; }
    /// Notes how many characters are in use, at most the capacity.
    void SetLength(std::ptrdiff_t n) {
        if (m_pBuf)
            m_pBuf->m_Length = std::clamp<std::ptrdiff_t>(n, 0, m_pBuf->m_Capacity);
    }
    /// The array, or null.
    Ch* Data() noexcept { return m_pBuf ? m_pBuf->m_Array.get() : nullptr; }
    const Ch* Data() const noexcept { return m_pBuf ? m_pBuf->m_Array.get() : nullptr; }
    /// An element below the capacity, asserted; any other position gives a spare zero.
    Ch& operator[](std::ptrdiff_t pos) {
        const bool isInside = m_pBuf && pos >= 0 && pos < m_pBuf->m_Capacity;
        USE_ASSERT_TEXT(isInside, "m_pBuf != 0 && pos >= 0 && pos < m_pBuf->m_Capacity");
        return isInside ? m_pBuf->m_Array[static_cast<std::size_t>(pos)] : Spare();
    }

private:
    static Ch& Spare() {
        static Ch spare;
        return spare = Ch();
    }

    RefPtr<Rep> m_pBuf;
};

using AStringBuf = BasicAStringBuf<char16_t>; ///< of 16-bit units
using AStringBuf8 = BasicAStringBuf<char>;    ///< of bytes
