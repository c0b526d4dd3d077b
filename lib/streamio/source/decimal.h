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
    std::uint64_t digits = 0;    ///< all of them in front of the exponent, as one integer
    std::uint64_t exponent = 0;  ///< without its sign
    std::ptrdiff_t fraction = 0; ///< how many of the digits stand behind the point
    bool isNegative = false;
    bool isExponentNegative = false;

    /// The integers of a number of so many characters can't have wrapped around.
    static constexpr std::size_t kMostLength = std::numeric_limits<std::uint64_t>::digits10;

    /// The value of an integer, which is exact.
    bool GetInteger(double& number) const noexcept {
        const auto value = static_cast<double>(static_cast<std::int64_t>(digits));
        number = isNegative ? -value : value;
        return digits <= kMost;
    }

    /// The value, when one exact multiplication or division gives it: an integer of up to 2^53
    /// times or over a power of ten up to 10^22, which is a double too (Clinger, How to read
    /// floating point numbers accurately, 1990).
    bool GetExact(double& number) const noexcept {
        if (digits > kMost || exponent > kMostPower)
            return false;
        const auto given = static_cast<std::ptrdiff_t>(exponent);
        const std::ptrdiff_t power = (isExponentNegative ? -given : given) - fraction;
        if (power > kMostPower || power < -kMostPower)
            return false;
        const auto sum = static_cast<double>(static_cast<std::int64_t>(digits));
        const double value = power < 0 ? sum / kPowers[-power] : sum * kPowers[power];
        number = isNegative ? -value : value;
        return true;
    }

private:
    static constexpr std::uint64_t kMost = std::uint64_t{1} << std::numeric_limits<double>::digits;
    static constexpr int kMostPower = 22;
    static constexpr double kPowers[kMostPower + 1] = {
        1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
        1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
};

} // namespace io
