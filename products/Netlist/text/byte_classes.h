/// Bytes in classes that no set tells apart.
#pragma once

#include "byte_set.h"

#include <array>
#include <cstdint>

/// Starts with one class of all bytes; each Split divides the classes that a set cuts. Class
/// numbers are dense, from 0, and change with a Split. Costs 256 steps a Split.
class ByteClasses {
public:
    void Split(const ByteSet& set) {
        std::array<int, 512> parts;
        parts.fill(-1);
        m_count = 0;
        for (unsigned byte = 0; byte < 256; ++byte) {
            const bool inside = set.Has(static_cast<unsigned char>(byte));
            const unsigned part = m_classes[byte] * 2U + (inside ? 1 : 0);
            if (parts[part] < 0)
                parts[part] = static_cast<int>(m_count++);
            m_classes[byte] = static_cast<std::uint8_t>(parts[part]);
        }
    }
    unsigned Count() const { return m_count; }
    std::uint8_t Of(unsigned char byte) const { return m_classes[byte]; }
    /// The classes of all bytes.
    const std::array<std::uint8_t, 256>& All() const { return m_classes; }

private:
    std::array<std::uint8_t, 256> m_classes{};
    unsigned m_count = 1;
};
