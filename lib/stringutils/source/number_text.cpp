#include "number_text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>

#include "char_class.h"

namespace numbertext {
namespace {

/// Steps through a text. Behind its end stands a zero.
class Cursor {
public:
    explicit Cursor(std::u16string_view text) : mText(text) {}

    char16_t Peek(std::size_t ahead = 0) const {
        return mPos + ahead < mText.size() ? mText[mPos + ahead] : u'\0';
    }
    void Skip(std::size_t count = 1) { mPos += count; }
    void SkipSpace() {
        while (mPos < mText.size() && chars::IsSpace(mText[mPos]))
            ++mPos;
    }
    bool AtEnd() const { return mPos == mText.size(); }

    /// Takes a sign, if there is one; true for a minus.
    bool TakeMinus() {
        const char16_t sign = Peek();
        if (sign == u'-' || sign == u'+')
            Skip();
        return sign == u'-';
    }

    /// Takes a word in lower case letters, in any case.
    bool TakeWord(std::u16string_view word) {
        for (std::size_t i = 0; i < word.size(); ++i) {
            if ((Peek(i) | 0x20) != word[i])
                return false;
        }
        Skip(word.size());
        return true;
    }

    std::size_t Position() const { return mPos; }
    std::u16string_view From(std::size_t start) const { return mText.substr(start, mPos - start); }

private:
    std::u16string_view mText;
    std::size_t mPos = 0;
};

constexpr int kNoDigit = 99;

/// The value of a digit or letter in bases up to 36.
int DigitOf(char16_t ch) {
    if (ch >= u'0' && ch <= u'9')
        return ch - u'0';
    const int letter = (ch | 0x20) - u'a';
    return ch < 0x80 && letter >= 0 && letter < 26 ? 10 + letter : kNoDigit;
}

/// The two forms of a real number.
struct Form {
    int base;
    char16_t marker; ///< of the exponent, in lower case
    int digitWeight; ///< of one digit in units of the exponent
    std::chars_format format;
};
constexpr Form kDecimal = {10, u'e', 1, std::chars_format::general};
constexpr Form kHexadecimal = {16, u'p', 4, std::chars_format::hex};

/// What was seen of a number while it was scanned.
struct Scanned {
    std::string digits;         ///< the text, for from_chars
    std::int64_t magnitude = 0; ///< the exponent of its first digit that isn't 0
};

/// Takes digits with one point among them. Nothing is taken when there is no digit.
bool TakeMantissa(Cursor& cursor, const Form& form, Scanned& scanned) {
    bool hasDigit = false, hasPoint = false, isSignificant = false;
    Cursor ahead = cursor;
    for (;; ahead.Skip()) {
        if (ahead.Peek() == u'.' && !hasPoint) {
            hasPoint = true;
            scanned.digits += '.';
            continue;
        }
        const int digit = DigitOf(ahead.Peek());
        if (digit >= form.base)
            break;
        hasDigit = true;
        isSignificant |= digit != 0;
        if (isSignificant != hasPoint) // counts digits before the point, or zeros behind it
            scanned.magnitude += hasPoint ? -form.digitWeight : form.digitWeight;
        scanned.digits += static_cast<char>(ahead.Peek());
    }
    if (hasDigit)
        cursor = ahead;
    return hasDigit;
}

/// Takes an exponent, if a whole one is there.
void TakeExponent(Cursor& cursor, const Form& form, Scanned& scanned) {
    constexpr std::int64_t kHuge = std::int64_t{1} << 40; // over the length of any text
    if ((cursor.Peek() | 0x20) != form.marker)
        return;
    Cursor ahead = cursor;
    ahead.Skip();
    const bool isMinus = ahead.TakeMinus();
    if (DigitOf(ahead.Peek()) >= 10)
        return;
    std::string digits;
    std::int64_t exponent = 0;
    for (; DigitOf(ahead.Peek()) < 10; ahead.Skip())
        exponent = std::min(exponent * 10 + DigitOf(ahead.Peek()), kHuge);
    scanned.digits += static_cast<char>(form.marker);
    scanned.digits += std::to_string(isMinus ? -exponent : exponent);
    scanned.magnitude += isMinus ? -exponent : exponent;
    cursor = ahead;
}

std::optional<double> TakeDigits(Cursor& cursor, const Form& form) {
    Scanned scanned;
    if (!TakeMantissa(cursor, form, scanned))
        return std::nullopt;
    TakeExponent(cursor, form, scanned);
    double value = 0;
    const char* start = scanned.digits.data();
    const auto result = std::from_chars(start, start + scanned.digits.size(), value, form.format);
    if (result.ec == std::errc::result_out_of_range)
        return scanned.magnitude > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    return value;
}

bool TakeHexPrefix(Cursor& cursor) {
    const bool hasPoint = cursor.Peek(2) == u'.';
    const bool isPrefix = cursor.Peek() == u'0' && (cursor.Peek(1) | 0x20) == u'x' &&
                          DigitOf(cursor.Peek(hasPoint ? 3 : 2)) < 16;
    if (isPrefix)
        cursor.Skip(2);
    return isPrefix;
}

/// Takes the parentheses that may follow "nan", if they are whole.
void TakeNanTail(Cursor& cursor) {
    Cursor ahead = cursor;
    if (ahead.Peek() != u'(')
        return;
    do {
        ahead.Skip();
    } while (DigitOf(ahead.Peek()) != kNoDigit || ahead.Peek() == u'_');
    if (ahead.Peek() != u')')
        return;
    ahead.Skip();
    cursor = ahead;
}

std::optional<double> TakeUnsignedReal(Cursor& cursor) {
    if (cursor.TakeWord(u"inf")) {
        cursor.TakeWord(u"inity");
        return std::numeric_limits<double>::infinity();
    }
    if (cursor.TakeWord(u"nan")) {
        TakeNanTail(cursor);
        return std::numeric_limits<double>::quiet_NaN();
    }
    return TakeDigits(cursor, TakeHexPrefix(cursor) ? kHexadecimal : kDecimal);
}

/// Steps over the prefix of a whole number, and says the base that it has.
int TakeBase(Cursor& cursor, int base) {
    const bool takesHex = base == 0 || base == 16;
    if (takesHex && cursor.Peek(2) != u'.' && TakeHexPrefix(cursor))
        return 16;
    if (base != 0)
        return base;
    return cursor.Peek() == u'0' ? 8 : 10;
}

} // namespace

std::optional<double> ParseReal(std::u16string_view text) {
    Cursor cursor(text);
    cursor.SkipSpace();
    const bool isMinus = cursor.TakeMinus();
    const std::optional<double> value = TakeUnsignedReal(cursor);
    cursor.SkipSpace();
    if (!value || !cursor.AtEnd())
        return std::nullopt;
    return isMinus ? -*value : *value;
}

std::optional<long> ParseInteger(std::u16string_view text, int base) {
    using Limits = std::numeric_limits<long>;
    if (base < 0 || base == 1 || base > 36)
        return std::nullopt;
    Cursor cursor(text);
    cursor.SkipSpace();
    const bool isMinus = cursor.TakeMinus();
    base = TakeBase(cursor, base);
    if (DigitOf(cursor.Peek()) >= base)
        return std::nullopt;
    long value = 0; // kept negative, the side with one more number
    for (; DigitOf(cursor.Peek()) < base; cursor.Skip()) {
        if (__builtin_mul_overflow(value, base, &value) ||
            __builtin_sub_overflow(value, DigitOf(cursor.Peek()), &value))
            value = Limits::min();
    }
    cursor.SkipSpace();
    if (!cursor.AtEnd())
        return std::nullopt;
    if (isMinus)
        return value;
    return value == Limits::min() ? Limits::max() : -value;
}

} // namespace numbertext
