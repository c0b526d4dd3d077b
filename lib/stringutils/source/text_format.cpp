// The parts of a conversion, in the order of the format, are one small step each: flags, width,
// precision, size modifier, letter. What is to be shown is then cut into the fields that padding
// knows: a sign or prefix, zeros, the body. Numbers in floating point stand in real_text.h.

#include "text_format.h"

#include <algorithm>
#include <charconv>
#include <climits>

#include "code_page.h"
#include "real_text.h"

namespace textformat {
namespace {

// ---------------------------------------------------------------- reading a conversion

char16_t Peek(std::u16string_view format) {
    return format.empty() ? u'\0' : format.front();
}

bool TakeIf(std::u16string_view& format, std::u16string_view word) {
    if (!format.starts_with(word))
        return false;
    format.remove_prefix(word.size());
    return true;
}

void TakeFlags(std::u16string_view& format, Conversion& conversion) {
    struct Row {
        char16_t flag;
        bool Conversion::*member;
    };
    static constexpr Row kFlags[] = {{u'-', &Conversion::isLeft},
                                     {u'+', &Conversion::hasPlus},
                                     {u' ', &Conversion::hasBlank},
                                     {u'#', &Conversion::isAlternate},
                                     {u'0', &Conversion::hasZeros}};
    for (; !format.empty(); format.remove_prefix(1)) {
        const auto row = std::ranges::find(kFlags, format.front(), &Row::flag);
        if (row == std::end(kFlags))
            return;
        conversion.*(row->member) = true;
    }
}

int NumberOf(const FormatArg& arg) {
    const bool isNumber =
        arg.kind == FormatArg::Kind::kInteger || arg.kind == FormatArg::Kind::kNarrowChar;
    const auto value = isNumber ? static_cast<std::int64_t>(arg.bits) : 0;
    return static_cast<int>(std::clamp<std::int64_t>(value, -INT_MAX, INT_MAX));
}

/// A number in digits or from an argument; 0 when there is neither.
int TakeNumber(std::u16string_view& format, Arguments& args) {
    if (TakeIf(format, u"*"))
        return NumberOf(args.Next());
    std::int64_t number = 0;
    for (; Peek(format) >= u'0' && Peek(format) <= u'9'; format.remove_prefix(1))
        number = std::min<std::int64_t>(number * 10 + (Peek(format) - u'0'), INT_MAX);
    return static_cast<int>(number);
}

void TakeSize(std::u16string_view& format, Conversion& conversion) {
    struct Row {
        std::u16string_view modifier;
        int integerSize;
        bool isNarrow;
    };
    // Those that begin with another stand ahead of it.
    static constexpr Row kSizes[] = {{u"hh", 1, true}, {u"h", 2, true},    {u"ll", 0, false},
                                     {u"l", 0, false}, {u"I64", 0, false}, {u"I32", 4, false},
                                     {u"I", 0, false}, {u"L", 0, false},   {u"j", 0, false},
                                     {u"z", 0, false}, {u"t", 0, false},   {u"w", 0, false}};
    for (const Row& row : kSizes) {
        if (TakeIf(format, row.modifier)) {
            conversion.integerSize = row.integerSize;
            conversion.isNarrow = row.isNarrow;
            return;
        }
    }
}

// ---------------------------------------------------------------- showing an argument

/// What is shown, in the order in which it stands; the padding is still to come.
template <class Body>
struct Fields {
    std::string_view prefix; ///< sign, 0x
    std::size_t zeros = 0;   ///< between prefix and body
    Body body;
};

void AppendBody(std::u16string_view body, std::u16string& out) {
    out.append(body);
}
void AppendBody(std::string_view body, std::u16string& out) {
    codepage::AppendDecoded(codepage::Page::kWindows1252, body, out);
}

template <class Body>
void Pad(const Conversion& conversion, Fields<Body> fields, bool zerosFill, std::u16string& out) {
    const std::size_t length = fields.prefix.size() + fields.zeros + fields.body.size();
    const auto width = static_cast<std::size_t>(conversion.width);
    const std::size_t fill = width > length ? width - length : 0;
    const bool isZeroFilled = zerosFill && conversion.hasZeros && !conversion.isLeft;
    if (!conversion.isLeft && !isZeroFilled)
        out.append(fill, u' ');
    out.append(fields.prefix.begin(), fields.prefix.end());
    out.append(fields.zeros + (isZeroFilled ? fill : 0), u'0');
    AppendBody(fields.body, out);
    if (conversion.isLeft)
        out.append(fill, u' ');
}

std::string_view SignOf(const Conversion& conversion, bool isNegative) {
    return isNegative ? "-" : conversion.hasPlus ? "+" : conversion.hasBlank ? " " : "";
}

/// The number in the width that it has, or that the modifier cuts it to, as the letter means it.
std::uint64_t IntegerBits(const FormatArg& arg, int cutTo, bool isSigned) {
    // As arguments are, a number is at least an int, unless it is cut.
    const int own = std::max<int>(arg.size, sizeof(int));
    const int unused = 64 - 8 * (cutTo > 0 ? std::min(cutTo, own) : own);
    const std::uint64_t bits = arg.bits << unused;
    return isSigned ? static_cast<std::uint64_t>(static_cast<std::int64_t>(bits) >> unused)
                    : bits >> unused;
}

void AppendInteger(const Conversion& conversion, const FormatArg& arg, std::u16string& out) {
    const char16_t letter = conversion.letter;
    const bool isSigned = letter == u'd' || letter == u'i';
    const int base = letter == u'o' ? 8 : (letter | 0x20) == u'x' ? 16 : 10;
    std::uint64_t value = IntegerBits(arg, conversion.integerSize, isSigned);
    const bool isNegative = isSigned && static_cast<std::int64_t>(value) < 0;
    if (isNegative)
        value = 0 - value;

    char digits[64];
    char* end = std::to_chars(digits, std::end(digits), value, base).ptr;
    if (value == 0 && conversion.precision == 0)
        end = digits;
    if (letter == u'X')
        UpperCase(digits, end);
    Fields<std::string_view> fields{"", 0, {digits, static_cast<std::size_t>(end - digits)}};
    if (isSigned)
        fields.prefix = SignOf(conversion, isNegative);
    else if (conversion.isAlternate && base == 16 && value != 0)
        fields.prefix = letter == u'X' ? "0X" : "0x";
    const auto wanted = static_cast<std::size_t>(std::max(conversion.precision, 0));
    if (wanted > fields.body.size())
        fields.zeros = wanted - fields.body.size();
    if (conversion.isAlternate && base == 8 && fields.zeros == 0 && !fields.body.starts_with('0'))
        fields.zeros = 1;
    Pad(conversion, fields, conversion.precision < 0, out);
}

void AppendReal(const Conversion& conversion, const FormatArg& arg, std::u16string& out) {
    const double value = arg.kind == FormatArg::Kind::kReal ? arg.real
                         : arg.isSigned ? static_cast<double>(static_cast<std::int64_t>(arg.bits))
                                        : static_cast<double>(arg.bits);
    RealText text(value, static_cast<char>(conversion.letter), conversion.precision,
                  conversion.isAlternate);
    const std::string sign(SignOf(conversion, text.IsNegative()));
    const std::string prefix = sign + std::string(text.Prefix());
    Pad(conversion, Fields<std::string_view>{prefix, 0, text.Body()}, text.IsFinite(), out);
}

void AppendPointer(const Conversion& conversion, const FormatArg& arg, std::u16string& out) {
    Conversion hex = conversion;
    hex.letter = u'X';
    hex.precision = 2 * sizeof(void*);
    const bool isInteger = arg.kind == FormatArg::Kind::kInteger;
    AppendInteger(hex, isInteger ? arg : FormatArg(reinterpret_cast<std::uintptr_t>(arg.pointer)),
                  out);
}

void AppendChar(const Conversion& conversion, const FormatArg& arg, std::u16string& out) {
    auto ch = static_cast<char16_t>(arg.bits);
    if (arg.kind == FormatArg::Kind::kNarrowChar || (conversion.isNarrow && ch < 0x100))
        ch = codepage::DecodeByte(codepage::Page::kWindows1252, static_cast<char>(ch));
    Pad(conversion, Fields<std::u16string_view>{"", 0, {&ch, 1}}, false, out);
}

/// A text cut to the precision, without a look behind that.
template <class Ch>
std::basic_string_view<Ch> Cut(const Ch* text, std::size_t length, int precision) {
    const std::size_t limit =
        precision < 0 ? FormatArg::kToNull : static_cast<std::size_t>(precision);
    if (length != FormatArg::kToNull)
        return {text, std::min(length, limit)};
    std::size_t end = 0;
    while (end < limit && text[end] != Ch())
        ++end;
    return {text, end};
}

void AppendText(const Conversion& conversion, const FormatArg& arg, std::u16string& out) {
    if (arg.kind == FormatArg::Kind::kNarrowText && arg.pointer) {
        const std::string_view body = Cut(arg.narrow, arg.length, conversion.precision);
        return Pad(conversion, Fields<std::string_view>{"", 0, body}, false, out);
    }
    const bool isMissing = !arg.pointer && arg.length == FormatArg::kToNull;
    const char16_t* text = isMissing ? u"(null)" : arg.text;
    const std::u16string_view body = Cut(text, arg.length, conversion.precision);
    Pad(conversion, Fields<std::u16string_view>{"", 0, body}, false, out);
}

using Appender = void (*)(const Conversion&, const FormatArg&, std::u16string&);

/// What a kind of argument can be shown as: the letters that suit it, and how it is shown by any
/// other letter.
struct KindRow {
    FormatArg::Kind kind;
    std::u16string_view letters;
    char16_t otherwise;
};
constexpr KindRow kKinds[] = {
    {FormatArg::Kind::kInteger, u"diuoxXcCpeEfFgGaA", u'd'},
    {FormatArg::Kind::kNarrowChar, u"diuoxXcCeEfFgGaA", u'c'},
    {FormatArg::Kind::kReal, u"eEfFgGaA", u'g'},
    {FormatArg::Kind::kPointer, u"p", u'p'},
    {FormatArg::Kind::kText, u"sSp", u's'},
    {FormatArg::Kind::kNarrowText, u"sSp", u's'},
};

struct LetterRow {
    std::u16string_view letters;
    Appender append;
};
constexpr LetterRow kLetters[] = {
    {u"diuoxX", AppendInteger}, {u"eEfFgGaA", AppendReal}, {u"cC", AppendChar},
    {u"sS", AppendText},        {u"p", AppendPointer},
};

constexpr std::u16string_view kKnownLetters = u"diuoxXcCsSpeEfFgGaAn%";

} // namespace

FormatArg Arguments::Next() {
    if (mRest.empty()) {
        mHasMissed = true;
        return {};
    }
    const FormatArg arg = mRest.front();
    mRest = mRest.subspan(1);
    return arg;
}

Conversion TakeConversion(std::u16string_view& format, Arguments& args) {
    Conversion conversion;
    TakeFlags(format, conversion);
    conversion.width = TakeNumber(format, args);
    if (conversion.width < 0) {
        conversion.isLeft = true;
        conversion.width = -conversion.width;
    }
    if (TakeIf(format, u"."))
        conversion.precision = TakeNumber(format, args);
    TakeSize(format, conversion);
    if (!format.empty() && kKnownLetters.find(format.front()) != kKnownLetters.npos) {
        conversion.letter = format.front();
        conversion.isNarrow |= conversion.letter == u'C' || conversion.letter == u'S';
        format.remove_prefix(1);
    }
    return conversion;
}

void Append(const Conversion& conversion, const FormatArg& arg, std::u16string& out) {
    const auto kind = std::ranges::find(kKinds, arg.kind, &KindRow::kind);
    if (kind == std::end(kKinds) || conversion.letter == u'n')
        return;
    Conversion suited = conversion;
    if (kind->letters.find(conversion.letter) == kind->letters.npos)
        suited.letter =
            arg.kind == FormatArg::Kind::kInteger && !arg.isSigned ? u'u' : kind->otherwise;
    for (const LetterRow& row : kLetters) {
        if (row.letters.find(suited.letter) != row.letters.npos)
            return row.append(suited, arg, out);
    }
}

bool AppendAll(std::u16string_view format, std::span<const FormatArg> args, std::u16string& out) {
    Arguments arguments(args);
    while (!format.empty()) {
        const std::size_t literal = std::min(format.find(u'%'), format.size());
        out.append(format, 0, literal);
        format.remove_prefix(literal);
        if (format.empty())
            break;
        const std::u16string_view start = format;
        format.remove_prefix(1);
        const Conversion conversion = TakeConversion(format, arguments);
        if (conversion.letter == u'%')
            out += u'%';
        else if (conversion.letter == 0) // not a conversion: shown as it stands
            out.append(start, 0, start.size() - format.size());
        else
            Append(conversion, arguments.Next(), out);
    }
    return !arguments.HasMissed();
}

} // namespace textformat
