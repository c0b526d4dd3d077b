/// Numbers between text and double, independent of every locale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace io {

/// The value of a decimal number: an optional sign, digits with an optional point among them, an
/// optional exponent. Correctly rounded; beyond the range of a double it is an infinity or a zero.
/// False for anything else.
bool ParseDecimal(std::string_view text, double& number);

/// The value of hexadecimal digits in either case, at most 2147483647. False when there are none,
/// or something else.
bool ParseHex(std::string_view digits, double& number);

/// The parts of a decimal number, as a scanner finds them.
struct DecimalParts {
    std::uint64_t digits = 0; ///< all of them in front of the exponent; may have wrapped around
    int fraction = 0;         ///< how many of them stand behind the point
    int exponent = 0;         ///< without its sign, at most kMostExponent or so
    bool isNegative = false;
    bool isExponentNegative = false;

    static constexpr int kMostExponent = 100000;
    /// So many digits can't wrap around.
    static constexpr std::size_t kMostDigits = std::numeric_limits<std::uint64_t>::digits10;

    void AddDigit(unsigned digit) noexcept { digits = digits * 10 + digit; }
    void AddExponentDigit(unsigned digit) noexcept {
        if (exponent < kMostExponent)
            exponent = exponent * 10 + static_cast<int>(digit);
    }

    /// The value, when one exact multiplication or division gives it: an integer of up to 2^53
    /// times or over a power of ten up to 10^22, which is a double too (Clinger, How to read
    /// floating point numbers accurately, 1990). Takes `digits` as not wrapped around.
    bool GetExact(double& number) const noexcept {
        constexpr std::uint64_t kMost = std::uint64_t{1} << std::numeric_limits<double>::digits;
        const int power = (isExponentNegative ? -exponent : exponent) - fraction;
        if (digits > kMost || power > kMostPower || power < -kMostPower)
            return false;
        const auto sum = static_cast<double>(digits);
        const double value = power < 0 ? sum / kPowers[-power] : sum * kPowers[power];
        number = isNegative ? -value : value;
        return true;
    }

private:
    static constexpr int kMostPower = 22;
    static constexpr double kPowers[kMostPower + 1] = {
        1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
        1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
};

} // namespace io
