#include "real_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace textformat {
namespace {

/// A double has at most so many decimals that aren't 0 (those of its least value). Zeros of a
/// higher precision are appended, so that the work area stays small.
constexpr int kMaxDecimals = 1100;
/// Digits before the point of the largest double, point, kMaxDecimals, and an exponent.
constexpr std::size_t kRoom = 309 + 1 + kMaxDecimals + 8;

/// Makes `text` the number with this many decimals; below 0 with as many as it needs.
void Print(double value, std::chars_format format, int decimals, std::string& text) {
    char room[kRoom];
    const int printed = std::min(decimals, kMaxDecimals);
    const auto end = printed < 0 ? std::to_chars(room, std::end(room), value, format).ptr
                                 : std::to_chars(room, std::end(room), value, format, printed).ptr;
    text.assign(room, end);
    if (decimals > printed) {
        const char mark = format == std::chars_format::hex ? 'p' : 'e'; // e is a digit there
        const std::size_t mantissa = std::min(text.find(mark), text.size());
        text.insert(mantissa, static_cast<std::size_t>(decimals - printed), '0');
    }
}

/// The form `g`: fixed unless the exponent is below -4 or not below the precision.
void PrintGeneral(double value, int precision, bool keepsZeros, std::string& text) {
    precision = precision < 0 ? 6 : std::max(precision, 1);
    if (!keepsZeros)
        return Print(value, std::chars_format::general, std::min(precision, kMaxDecimals), text);
    Print(value, std::chars_format::scientific, precision - 1, text);
    const int exponent = std::atoi(text.c_str() + text.find('e') + 1);
    if (exponent >= -4 && exponent < precision)
        Print(value, std::chars_format::fixed, precision - 1 - exponent, text);
}

void PrintAs(double value, char letter, int precision, bool keepsPoint, std::string& text) {
    switch (letter) {
    case 'e':
        return Print(value, std::chars_format::scientific, precision < 0 ? 6 : precision, text);
    case 'f':
        return Print(value, std::chars_format::fixed, precision < 0 ? 6 : precision, text);
    case 'a':
        return Print(value, std::chars_format::hex, precision, text);
    default:
        return PrintGeneral(value, precision, keepsPoint, text);
    }
}

std::string& WorkArea() {
    thread_local std::string area;
    return area;
}

} // namespace

void UpperCase(char* first, char* last) {
    std::transform(first, last, first, [](char ch) {
        return ch >= 'a' && ch <= 'z' ? static_cast<char>(ch - 0x20) : ch;
    });
}

RealText::RealText(double value, char letter, int precision, bool keepsPoint)
    : mIsNegative(std::signbit(value)), mIsFinite(std::isfinite(value)), mBody(WorkArea()) {
    const bool isUpper = letter >= 'A' && letter <= 'Z';
    const char lower = static_cast<char>(letter | 0x20);
    if (mIsFinite) {
        PrintAs(std::fabs(value), lower, precision, keepsPoint, mBody);
        if (lower == 'a')
            mPrefix = isUpper ? "0X" : "0x";
        if (keepsPoint && mBody.find('.') == mBody.npos)
            mBody.insert(std::min(mBody.find_first_of(lower == 'a' ? "p" : "e"), mBody.size()),
                         ".");
    } else {
        mBody = std::isnan(value) ? "nan" : "inf";
    }
    if (isUpper)
        UpperCase(mBody.data(), mBody.data() + mBody.size());
}

} // namespace textformat
