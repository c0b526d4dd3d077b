/// Numbers as a standard output stream formats them, in the classic locale whatever the process's.
#pragma once

#include <concepts>
#include <ios>
#include <string>

namespace io {

/// What the stream would be set to. Of the flags the float, base and adjust fields, showpos,
/// showbase, showpoint and uppercase count; both bits of the float field together count as none.
struct NumberFormat {
    std::ios_base::fmtflags flags{};
    int precision = -1; ///< negative: the stream's default of 6
    int width = -1;     ///< least width
    char16_t fill = u' ';
};

/// Replaces `out` by the number. An infinity is 1e999, which reads back as one, a NaN is nan.
void FormatNumber(double number, const NumberFormat& format, std::u16string& out);
/// The same for short, int, long and their unsigned forms.
template <std::integral Integer>
void FormatNumber(Integer number, const NumberFormat& format, std::u16string& out);

} // namespace io
