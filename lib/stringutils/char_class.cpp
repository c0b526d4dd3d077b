#include "char_class.h"

#include <algorithm>
#include <iterator>

#include "char_ranges.h"

namespace chars::detail {
namespace {

/// The range that holds a unit, or one without class and other form.
constexpr CharRange RangeOf(char16_t ch) {
    const auto row =
        std::lower_bound(std::begin(kCharRanges), std::end(kCharRanges), ch,
                         [](const CharRange& range, char16_t key) { return range.last < key; });
    const bool isFound = row != std::end(kCharRanges) && row->first <= ch;
    return isFound ? *row : CharRange{ch, ch, None, 0};
}

constexpr bool IsSecondOfPair(const CharRange& range, char16_t ch) {
    return range.kind == Pairs && (ch - range.first) % 2 == 1;
}

constexpr std::uint8_t Classes(char16_t ch) {
    const CharRange range = RangeOf(ch);
    switch (range.kind) {
    case None:
        return 0;
    case Space:
        return kSpace;
    case SpaceControl:
        return kSpace | kControl;
    case Control:
        return kControl;
    case Digit:
        return kDigit;
    case Alpha:
        return kAlpha;
    case Lower:
        return kAlpha | kLower;
    case Upper:
        return kAlpha | kUpper;
    case Pairs:
        return kAlpha | (IsSecondOfPair(range, ch) ? kLower : kUpper);
    }
    return 0;
}

constexpr char16_t Lowered(char16_t ch) {
    const CharRange range = RangeOf(ch);
    return IsSecondOfPair(range, ch) ? ch : static_cast<char16_t>(ch + range.delta);
}

constexpr Latin1Tables MakeLatin1() {
    Latin1Tables tables{};
    for (char16_t ch = 0; ch < 0x100; ++ch) {
        tables.classes[ch] = Classes(ch);
        tables.lower[ch] = Lowered(ch);
    }
    return tables;
}

} // namespace

constexpr Latin1Tables kLatin1 = MakeLatin1();

std::uint8_t FindClasses(char16_t ch) noexcept {
    return Classes(ch);
}

char16_t FindLower(char16_t ch) noexcept {
    return Lowered(ch);
}

} // namespace chars::detail
