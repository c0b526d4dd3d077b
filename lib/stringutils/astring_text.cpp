// AString: comparison, substrings, trimming, parsing, matching, splitting.

#include <algorithm>
#include <iterator>

#include "assertion.h"
#include "astring.h"
#include "char_class.h"
#include "number_text.h"
#include "wildcard.h"

namespace {

constexpr std::size_t kNoLimit = std::u16string_view::npos;

/// The text up to its first zero.
std::u16string_view UpToZero(std::u16string_view text) {
    return text.substr(0, text.find(u'\0'));
}

/// The unit at a position in its lower case form, and the terminator behind the end.
char16_t LoweredAt(std::u16string_view text, std::size_t pos) {
    return pos < text.size() ? chars::ToLower(text[pos]) : u'\0';
}

/// Compares up to the terminator of either, and no more than `count` units.
int CompareLowered(std::u16string_view a, std::u16string_view b, std::size_t count = kNoLimit) {
    for (std::size_t i = 0; i < count; ++i) {
        const char16_t left = LoweredAt(a, i);
        const char16_t right = LoweredAt(b, i);
        if (left != right)
            return left < right ? -1 : 1;
        if (left == u'\0')
            break;
    }
    return 0;
}

bool IsSame(std::u16string_view a, std::u16string_view b) {
    return a.data() == b.data() && a.size() == b.size();
}

bool StartsName(char16_t ch) {
    return ch == u'_' || chars::IsAlpha(ch);
}

} // namespace

// ---------------------------------------------------------------- comparison

int AString::Compare(std::u16string_view other) const noexcept {
    if (IsSame(*this, other))
        return 0;
    const int order = std::u16string_view(*this).compare(other);
    return (order > 0) - (order < 0);
}

int AString::CompareNoCase(std::u16string_view other) const noexcept {
    return IsSame(*this, other) ? 0 : CompareLowered(*this, other);
}

int AString::CompareNoCase(size_type pos, size_type count,
                           std::u16string_view other) const noexcept {
    if (count == 0 || pos >= size())
        return other.empty() ? 0 : -1;
    return CompareLowered(std::u16string_view(*this).substr(pos), other, count);
}

int AString::CompareNoCase(const char16_t* a, const char16_t* b) noexcept {
    return a == b ? 0 : CompareLowered(a ? a : u"", b ? b : u"");
}

bool AStringNoCaseLess::operator()(std::u16string_view a, std::u16string_view b) const noexcept {
    return CompareLowered(a, b) < 0;
}

// ---------------------------------------------------------------- substrings

AString AString::Mid(std::ptrdiff_t pos, std::ptrdiff_t count) const {
    const auto start = static_cast<size_type>(std::max<std::ptrdiff_t>(pos, 0));
    if (start >= size() || count < 1)
        return {};
    return std::u16string_view(*this).substr(start, static_cast<size_type>(count));
}

AString AString::Mid(std::ptrdiff_t pos) const {
    return Mid(pos, static_cast<std::ptrdiff_t>(size()));
}

AString AString::Left(std::ptrdiff_t n) const {
    return Mid(0, n);
}

AString AString::Right(std::ptrdiff_t n) const {
    return n < 1 ? AString() : Mid(static_cast<std::ptrdiff_t>(size()) - n);
}

AString AString::ToLower() const {
    AString lowered = *this;
    for (char16_t& ch : lowered)
        ch = chars::ToLower(ch);
    return lowered;
}

// ---------------------------------------------------------------- trimming

void AString::TrimLeft() {
    erase(begin(), std::find_if_not(begin(), end(), chars::IsSpace));
}

void AString::TrimRight() {
    erase(std::find_if_not(rbegin(), rend(), chars::IsSpace).base(), end());
}

void AString::Trim() {
    TrimLeft();
    TrimRight();
}

// ---------------------------------------------------------------- parsing

bool AString::ToDouble(double& out) const {
    const auto value = numbertext::ParseReal(*this);
    out = value.value_or(out);
    return value.has_value();
}

bool AString::ToLong(long& out, int base) const {
    const auto value = numbertext::ParseInteger(*this, base);
    out = value.value_or(out);
    return value.has_value();
}

bool AString::IsIdentifier() const noexcept {
    const auto continuesName = [](char16_t ch) { return StartsName(ch) || chars::IsDigit(ch); };
    return !empty() && StartsName(front()) && std::all_of(begin(), end(), continuesName);
}

// ---------------------------------------------------------------- matching and splitting

bool AString::Match(std::u16string_view pattern) const {
    return wildcard::Match(UpToZero(*this), UpToZero(pattern), false, false, nullptr);
}

bool AString::MatchNoCase(std::u16string_view pattern) const {
    return wildcard::Match(UpToZero(*this), UpToZero(pattern), true, false, nullptr);
}

bool AString::Match(std::u16string_view pattern, std::vector<AString>& captures,
                    bool greedy) const {
    return wildcard::Match(UpToZero(*this), UpToZero(pattern), false, greedy, &captures);
}

bool AString::Scan(std::u16string_view pattern, AString* out1, AString* out2, AString* out3,
                   AString* out4, AString* out5, AString* out6, AString* out7, AString* out8,
                   AString* out9, AString* out10) const {
    std::vector<AString> captures;
    if (!Match(pattern, captures, true))
        return false;
    AString* const outs[] = {out1, out2, out3, out4, out5, out6, out7, out8, out9, out10};
    for (std::size_t i = 0; i < std::min(captures.size(), std::size(outs)); ++i) {
        if (outs[i])
            *outs[i] = captures[i];
    }
    return true;
}

AString::size_type AString::Split(std::u16string_view delimiters,
                                  std::vector<AString>& pieces) const {
    return Split(c_str(), delimiters, pieces);
}

AString::size_type AString::Split(const char16_t* string, std::u16string_view delimiters,
                                  std::vector<AString>& pieces) {
    USE_ASSERT(string != 0);
    if (!string || *string == u'\0')
        return 0;
    std::u16string_view rest = string;
    const std::size_t before = pieces.size();
    for (;;) {
        const std::size_t end = rest.find_first_of(delimiters);
        pieces.emplace_back(rest.substr(0, end));
        if (end == rest.npos)
            return pieces.size() - before;
        rest.remove_prefix(end + 1);
    }
}

char16_t GetListSeparator() noexcept {
    return u',';
}
