/// Numbers of tokens as the number types of the language.
#pragma once

#include <limits>
#include <type_traits>

#include "token.h"

namespace io {

/// Converts a token's number. False, and `value` as it was, for a token without one and for a
/// number out of the type's range; `long` and `unsigned long` have that of `int`. The range is
/// compared before the fraction is cut off.
template <class T>
bool ConvertNumber(const CToken& token, T& value) noexcept {
    if (!token.IsNumber())
        return false;
    const double number = token.GetNumber();
    if constexpr (std::is_integral_v<T>) {
        using Narrow = std::conditional_t<sizeof(T) <= sizeof(int), T,
                                          std::conditional_t<std::is_signed_v<T>, int, unsigned>>;
        using Limits = std::numeric_limits<Narrow>;
        if (!(number >= Limits::min() && number <= Limits::max()))
            return false;
    }
    value = static_cast<T>(number);
    return true;
}

} // namespace io
