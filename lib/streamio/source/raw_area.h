/// Access to what a raw stream has buffered, so that runs of units cost no call a unit.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>

#include "token_streambuf.h"

namespace io {

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
