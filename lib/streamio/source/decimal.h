/// Numbers between text and double, independent of every locale.
#pragma once

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

/// Collects a decimal number digit by digit and gives its value when that is exact in one
/// multiplication or division: an integer below 2^53 times or over a power of ten up to 10^22,
/// itself a double (Clinger, How to read floating point numbers accurately, 1990).
class DecimalSum {
public:
    void AddDigit(unsigned digit) noexcept {
        mSum = mSum * 10 + digit;
        ++mDigits;
    }
    void AddFractionDigit(unsigned digit) noexcept {
        AddDigit(digit);
        ++mFractionDigits;
    }
    void AddExponentDigit(unsigned digit) noexcept {
        mExponent =
            mExponent < kMostExponent ? mExponent * 10 + static_cast<int>(digit) : kMostExponent;
    }
    void SetNegative(bool isNegative) noexcept { mIsNegative = isNegative; }
    void SetExponentNegative(bool isNegative) noexcept { mIsExponentNegative = isNegative; }

    /// False when the exact value takes more.
    bool GetExact(double& number) const noexcept {
        constexpr std::uint64_t kMostSum = std::uint64_t{1} << std::numeric_limits<double>::digits;
        const int exponent = (mIsExponentNegative ? -mExponent : mExponent) - mFractionDigits;
        if (mDigits > kMostDigits || mSum > kMostSum || exponent > kMostPower ||
            exponent < -kMostPower)
            return false;
        const auto sum = static_cast<double>(mSum);
        const double value = exponent < 0 ? sum / kPowers[-exponent] : sum * kPowers[exponent];
        number = mIsNegative ? -value : value;
        return true;
    }

private:
    static constexpr int kMostDigits = std::numeric_limits<std::uint64_t>::digits10;
    static constexpr int kMostExponent = 100000;
    static constexpr int kMostPower = 22;
    static constexpr double kPowers[kMostPower + 1] = {
        1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
        1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

    std::uint64_t mSum = 0; ///< wraps around beyond kMostDigits
    int mDigits = 0;
    int mFractionDigits = 0;
    int mExponent = 0;
    bool mIsNegative = false;
    bool mIsExponentNegative = false;
};

} // namespace io
