#include "number_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace io {

namespace {

using std::ios_base;

constexpr int kDefaultPrecision = 6;
constexpr std::size_t kUsualRoom = 64;

/// The notation that each setting of the float field selects; any other is general.
struct Notation {
    ios_base::fmtflags field;
    std::chars_format format;
};
constexpr Notation kNotations[] = {{ios_base::fixed, std::chars_format::fixed},
                                   {ios_base::scientific, std::chars_format::scientific},
                                   {ios_base::fmtflags{}, std::chars_format::general}};

/// The base and prefix that each setting of the base field selects; any other is decimal.
struct Base {
    ios_base::fmtflags field;
    int base;
    std::u16string_view prefix;
};
constexpr Base kBases[] = {
    {ios_base::oct, 8, u"0"}, {ios_base::hex, 16, u"0x"}, {ios_base::dec, 10, u""}};

/// The row of a setting, or the last one.
template <class Row, std::size_t Count>
const Row& FindRow(const Row (&rows)[Count], ios_base::fmtflags field) {
    return *std::find_if(rows, rows + Count - 1,
                         [=](const Row& row) { return row.field == field; });
}

/// Appends what std::to_chars makes of the arguments.
template <class... Args>
void AppendChars(std::u16string& out, Args... args) {
    std::array<char, kUsualRoom> usual;
    auto result = std::to_chars(usual.data(), usual.data() + usual.size(), args...);
    if (result.ec == std::errc()) {
        out.append(usual.data(), result.ptr);
        return;
    }
    std::string chars;
    do {
        chars.resize(std::max(chars.size() * 2, usual.size() * 2));
        result = std::to_chars(chars.data(), chars.data() + chars.size(), args...);
    } while (result.ec != std::errc());
    out.append(chars.data(), result.ptr);
}

/// Gives a real number its point, and in general notation the zeros up to so many significant
/// digits. The digits begin at `start`.
void ShowPoint(std::size_t start, bool isGeneral, int precision, std::u16string& out) {
    const std::size_t end = std::min(out.find(u'e'), out.size());
    const std::size_t point = std::min(out.find(u'.'), end);
    std::u16string added = point == end ? u"." : u"";
    if (isGeneral) {
        std::size_t first = out.find_first_of(u"123456789");
        first = first < end ? first : start;
        const std::size_t digits = end - first - (first < point && point < end ? 1 : 0);
        const auto wanted = static_cast<std::size_t>(std::max(precision, 1));
        added.append(wanted - std::min(digits, wanted), u'0');
    }
    out.insert(end, added);
}

/// True when an integer goes out in its decimal digits, with a sign if it is negative.
bool IsPlain(const NumberFormat& format) {
    const ios_base::fmtflags base = format.flags & ios_base::basefield;
    return base != ios_base::oct && base != ios_base::hex && !(format.flags & ios_base::showpos) &&
           format.width <= 1;
}

/// Widens `out`, of which `prefix` characters are sign and prefix, and sets its case.
void Finish(const NumberFormat& format, std::size_t prefix, std::u16string& out) {
    if (format.flags & ios_base::uppercase)
        std::transform(out.begin(), out.end(), out.begin(), [](char16_t ch) {
            return static_cast<char16_t>(ch >= u'a' && ch <= u'z' ? ch - u'a' + u'A' : ch);
        });
    if (format.width <= static_cast<int>(out.size()))
        return;
    const ios_base::fmtflags adjust = format.flags & ios_base::adjustfield;
    const std::size_t place = adjust == ios_base::left       ? out.size()
                              : adjust == ios_base::internal ? prefix
                                                             : 0;
    out.insert(place, static_cast<std::size_t>(format.width) - out.size(), format.fill);
}

} // namespace

void FormatNumber(double number, const NumberFormat& format, std::u16string& out) {
    const bool isNegative = std::signbit(number) && !std::isnan(number);
    const int precision = format.precision < 0 ? kDefaultPrecision : format.precision;
    out = isNegative ? u"-" : format.flags & ios_base::showpos ? u"+" : u"";
    const std::size_t prefix = out.size();
    if (std::isfinite(number)) {
        const Notation& notation = FindRow(kNotations, format.flags & ios_base::floatfield);
        AppendChars(out, std::abs(number), notation.format, precision);
        if (format.flags & ios_base::showpoint)
            ShowPoint(prefix, notation.format == std::chars_format::general, precision, out);
    } else {
        out += std::isnan(number) ? u"nan" : u"1e999";
    }
    Finish(format, prefix, out);
}

template <std::integral Integer>
void FormatNumber(Integer number, const NumberFormat& format, std::u16string& out) {
    if (IsPlain(format)) {
        std::array<char, kUsualRoom> chars;
        const char* const end = std::to_chars(chars.begin(), chars.end(), number).ptr;
        out.resize(static_cast<std::size_t>(end - chars.data()));
        std::copy<const char*>(chars.data(), end, out.begin());
        return;
    }
    const Base& base = FindRow(kBases, format.flags & ios_base::basefield);
    const bool isDecimal = base.base == 10;
    out = std::signed_integral<Integer> && isDecimal && number >= 0 &&
                  format.flags & ios_base::showpos
              ? u"+"
              : u"";
    if (format.flags & ios_base::showbase && number != 0)
        out += base.prefix;
    const std::size_t prefix = out.size() + (isDecimal && number < 0 ? 1 : 0);
    if (isDecimal)
        AppendChars(out, number);
    else // a negative number shows its bits
        AppendChars(out, static_cast<std::make_unsigned_t<Integer>>(number), base.base);
    Finish(format, prefix, out);
}

template void FormatNumber(short, const NumberFormat&, std::u16string&);
template void FormatNumber(int, const NumberFormat&, std::u16string&);
template void FormatNumber(long, const NumberFormat&, std::u16string&);
template void FormatNumber(unsigned short, const NumberFormat&, std::u16string&);
template void FormatNumber(unsigned, const NumberFormat&, std::u16string&);
template void FormatNumber(unsigned long, const NumberFormat&, std::u16string&);

} // namespace io
