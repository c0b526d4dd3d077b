/// Floating-point numbers in the forms of `printf`.
#pragma once

#include <string>
#include <string_view>

namespace textformat {

/// Makes the letters a to z in a text capitals.
void UpperCase(char* first, char* last);

/// The text of a number without its sign, in the C locale's form, exact to any precision. It stands
/// in a work area of the thread, which keeps its size: making a RealText ends the one before.
class RealText {
public:
    /// `letter` is one of eEfFgGaA; a precision below 0 is 6, or for a and A what the number needs.
    /// `keepsPoint` is the flag `#`: there is always a point, and `g` keeps its zeros.
    RealText(double value, char letter, int precision, bool keepsPoint);

    bool IsNegative() const { return mIsNegative; }
    bool IsFinite() const { return mIsFinite; }
    std::string_view Prefix() const { return mPrefix; } ///< "0x" or "0X" of a hexadecimal one
    std::string_view Body() const { return mBody; }

private:
    bool mIsNegative;
    bool mIsFinite;
    std::string_view mPrefix;
    std::string& mBody;
};

} // namespace textformat
