#include "decimal.h"

#include <algorithm>
#include <charconv>

namespace io {

namespace {

constexpr double kMostHex = 2147483647;

std::string_view WithoutPlus(std::string_view text) {
    return text.starts_with('+') ? text.substr(1) : text;
}

/// Whether a number beyond the range of a double is too large, and not too small: its first digit
/// other than 0 stands in front of the point once the exponent has moved it.
bool IsLarge(std::string_view text) {
    const std::size_t mark = std::min(text.find_first_of("eE"), text.size());
    const std::string_view mantissa = text.substr(0, mark);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = std::min(mantissa.find_first_of("123456789"), mantissa.size());
    long exponent = 0;
    if (mark < text.size()) {
        const std::string_view digits = WithoutPlus(text.substr(mark + 1));
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
        if (result.ec == std::errc::result_out_of_range)
            return !digits.starts_with('-');
    }
    return exponent > static_cast<long>(first) - static_cast<long>(point);
}

} // namespace

bool ParseDecimal(std::string_view text, double& number) {
    const std::string_view digits = WithoutPlus(text);
    const char* const end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, number);
    if (result.ptr != end || result.ec == std::errc::invalid_argument)
        return false;
    if (result.ec == std::errc::result_out_of_range) {
        number = IsLarge(digits) ? std::numeric_limits<double>::infinity() : 0;
        number = digits.starts_with('-') ? -number : number;
    }
    return true;
}

bool ParseHex(std::string_view digits, double& number) {
    constexpr std::string_view kDigits = "0123456789abcdef0123456789ABCDEF";
    number = 0;
    for (const char ch : digits) {
        const std::size_t value = kDigits.find(ch);
        if (value == std::string_view::npos)
            return false;
        number = std::min(number * 16 + static_cast<double>(value % 16), kMostHex);
    }
    return !digits.empty();
}

} // namespace io
