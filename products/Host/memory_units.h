/// MemoryUnits: bytes in memory as a raw stream of units.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "token_streambuf.h"

/// Reads bytes, which outlive it, a byte a unit. It takes memory for a part of them only.
class MemoryUnits : public io::CRawStreambuf {
public:
    explicit MemoryUnits(std::string_view bytes)
        : m_Rest(bytes), m_Units(std::min(bytes.size(), kMost), u'\0') {}
    MemoryUnits(const MemoryUnits&) = delete;
    MemoryUnits& operator=(const MemoryUnits&) = delete;

protected:
    int_type underflow() override {
        const std::size_t count = std::min(m_Rest.size(), m_Units.size());
        if (gptr() == egptr()) {
            std::transform(m_Rest.begin(), m_Rest.begin() + static_cast<std::ptrdiff_t>(count),
                           m_Units.begin(),
                           [](char byte) { return static_cast<unsigned char>(byte); });
            m_Rest.remove_prefix(count);
            m_Read += static_cast<off_type>(count);
            setg(m_Units.data(), m_Units.data(), m_Units.data() + count);
        }
        return gptr() == egptr() ? traits_type::eof() : traits_type::to_int_type(*gptr());
    }
    /// Tells where it stands; it goes nowhere.
    pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                     std::ios_base::openmode) override {
        const bool isTelling = offset == 0 && from == std::ios_base::cur;
        return isTelling ? pos_type(m_Read - (egptr() - gptr())) : pos_type(off_type(-1));
    }

private:
    static constexpr std::size_t kMost = 1 << 15;

    std::string_view m_Rest;
    std::u16string m_Units;
    off_type m_Read = 0; ///< bytes in front of the rest
};
