/// Access to what a raw stream has buffered, so that runs of units cost no call a unit.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

#include "token_streambuf.h"

namespace io {

/// Copies units, several at a time, and returns all their bits.
inline char16_t CopyUnits(std::u16string_view text, char16_t* out) noexcept {
    using Lane = std::uint64_t;
    constexpr std::size_t kLane = sizeof(Lane) / sizeof(char16_t);
    const std::size_t size = text.size();
    Lane all = 0;
    const auto copyLane = [&](std::size_t i) {
        Lane lane;
        std::memcpy(&lane, text.data() + i, sizeof lane);
        std::memcpy(out + i, &lane, sizeof lane);
        all |= lane;
    };
    if (size >= kLane) {
        for (std::size_t i = 0; i < size - kLane; i += kLane)
            copyLane(i);
        copyLane(size - kLane); // again some that the lane in front of it has copied
    } else {
        for (std::size_t i = 0; i < size; ++i) {
            all |= text[i];
            out[i] = text[i];
        }
    }
    all |= all >> 32;
    return static_cast<char16_t>(all | all >> 16);
}

/// The get and put areas of any raw stream. The standard lets a derived class name the protected
/// members of its base, and a member pointer then serves every object.
class RawArea : CRawStreambuf {
public:
    /// The units that wait to be read.
    static const char16_t* Begin(const CRawStreambuf& raw) { return (raw.*&RawArea::gptr)(); }
    static const char16_t* End(const CRawStreambuf& raw) { return (raw.*&RawArea::egptr)(); }
    /// Consumes units of those.
    static void Skip(CRawStreambuf& raw, std::ptrdiff_t count) {
        Move(count, [&](int step) { (raw.*&RawArea::gbump)(step); });
    }
    /// Room for units to write.
    static char16_t* Room(CRawStreambuf& raw) { return (raw.*&RawArea::pptr)(); }
    static std::size_t RoomSize(const CRawStreambuf& raw) {
        return static_cast<std::size_t>((raw.*&RawArea::epptr)() - (raw.*&RawArea::pptr)());
    }
    /// Makes units in that room part of what is written.
    static void Commit(CRawStreambuf& raw, std::size_t count) {
        Move(static_cast<std::ptrdiff_t>(count), [&](int step) { (raw.*&RawArea::pbump)(step); });
    }

private:
    /// The standard's steps are of type int.
    template <class Step>
    static void Move(std::ptrdiff_t count, Step step) {
        constexpr std::ptrdiff_t kMost = std::numeric_limits<int>::max();
        for (; count > kMost; count -= kMost)
            step(static_cast<int>(kMost));
        step(static_cast<int>(count));
    }
};

} // namespace io
