// Strings: the laws of conversion, wildcards against a table of who matches what, numbers against
// the C library, and messages.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "astring.h"
#include "code_page.h"

namespace {

void Require(bool holds, const char* law) {
    if (!holds) {
        std::fprintf(stderr, "broken: %s\n", law);
        std::abort();
    }
}

void CheckBytes(std::string_view bytes) {
    for (const AString::Encoding encoding : {AString::kAnsi, AString::kUtf8, AString::kOem}) {
        const AString text = AString::FromMultiByte(encoding, bytes);
        const bool isBack = text.ToCString(encoding) == bytes;
        Require(isBack == AString::CanDecode(encoding, bytes), "CanDecode tells what comes back");
        Require(text.CanEncode(encoding), "what came in can go out");
        Require(text.size() <= bytes.size(), "no byte gives more than a unit");
    }
}

void CheckUnits(std::u16string_view units) {
    const AString text(units);
    for (const AString::Encoding encoding : {AString::kAnsi, AString::kUtf8, AString::kOem}) {
        const std::string bytes = text.ToCString(encoding);
        const bool isBack = AString::FromMultiByte(encoding, bytes) == text;
        Require(isBack == text.CanEncode(encoding), "CanEncode tells what comes back");
        const AStringBuf8 buffer = text.ToMultiByte(encoding);
        Require(buffer.IsNull() ? text.empty()
                                : bytes == std::string_view(buffer.Data(), static_cast<std::size_t>(
                                                                               buffer.Length())),
                "both outputs agree");
    }
    const std::string utf8 = text.ToCString(AString::kUtf8);
    Require(codepage::IsValidUtf8(utf8), "output is well-formed");
    Require(codepage::Utf16ToUtf8Length(text) == utf8.size(), "the length is told beforehand");
    AString trimmed = text;
    trimmed.Trim();
    Require(text.find(trimmed) != text.npos, "trimming leaves a part");
    Require(text.CompareNoCase(text.ToLower()) == 0, "lower case is no difference");
}

/// A pattern's elements, one a star or what matches one unit.
struct Element {
    char16_t ch;
    bool isWild;
};

std::vector<Element> ElementsOf(std::u16string_view pattern) {
    std::vector<Element> elements;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const bool isWild = pattern[i] == u'*' || pattern[i] == u'?';
        if (pattern[i] == u'\\' && i + 1 < pattern.size())
            ++i;
        elements.push_back({pattern[i], isWild});
    }
    return elements;
}

/// Fills, element by element, which starts of the text the elements so far match.
bool MatchesByTable(std::u16string_view text, const std::vector<Element>& elements) {
    std::vector<char> matches(text.size() + 1, 0);
    matches[0] = 1;
    for (const Element& element : elements) {
        std::vector<char> next(matches.size(), 0);
        const bool isStar = element.isWild && element.ch == u'*';
        for (std::size_t i = 0; i < next.size(); ++i) {
            if (isStar)
                next[i] = matches[i] || (i > 0 && next[i - 1]);
            else if (i > 0)
                next[i] = matches[i - 1] && (element.isWild || element.ch == text[i - 1]);
        }
        matches = next;
    }
    return matches.back() != 0;
}

/// The text that the pattern is when its wildcards are what was captured.
AString Rebuilt(const std::vector<Element>& elements, const std::vector<AString>& captures) {
    AString text;
    std::size_t index = 0;
    for (const Element& element : elements) {
        if (element.isWild)
            text += captures.at(index++);
        else
            text += element.ch;
    }
    return text;
}

void CheckMatch(const AString& text, const AString& pattern) {
    const std::vector<Element> elements = ElementsOf(pattern);
    const bool isSmall = text.size() * elements.size() < 100000;
    for (const bool greedy : {false, true}) {
        std::vector<AString> captures;
        const bool matches = text.Match(pattern, captures, greedy);
        if (isSmall)
            Require(matches == MatchesByTable(text, elements), "a match is one by the table");
        Require(!matches || Rebuilt(elements, captures) == text, "captures give the text back");
    }
}

void CheckNumber(const std::string& text) {
    char* end = nullptr;
    const double expected = std::strtod(text.c_str(), &end);
    const bool isNumber =
        end != text.c_str() && std::strspn(end, " \t\n\v\f\r") == std::strlen(end);
    double value = 0;
    Require(AString(text).ToDouble(value) == isNumber, "reals are those of the C library");
    Require(!isNumber || value == expected || std::isnan(expected), "with the same value");
    for (const int base : {0, 10, 16}) {
        const long whole = std::strtol(text.c_str(), &end, base);
        const bool isWhole =
            end != text.c_str() && std::strspn(end, " \t\n\v\f\r") == std::strlen(end);
        long parsed = 0;
        Require(AString(text).ToLong(parsed, base) == isWhole, "so are whole numbers");
        Require(!isWhole || parsed == whole, "with the same value");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    CheckBytes(bytes);
    std::u16string units(size / 2, u'\0');
    std::memcpy(units.data(), bytes.data(), units.size() * 2);
    CheckUnits(units);

    // Up to the first line end a pattern, a number and a message; behind it a text.
    const std::size_t line = std::min(bytes.find('\n'), size);
    std::string first = bytes.substr(0, line);
    first.resize(std::strlen(first.c_str()));
    std::string second = bytes.substr(std::min(line + 1, size));
    second.resize(std::strlen(second.c_str()));
    CheckMatch(second, first);
    bool isAscii = true;
    for (const char ch : first)
        isAscii = isAscii && static_cast<unsigned char>(ch) < 0x80;
    if (isAscii)
        CheckNumber(first);
    const FormatArg args[] = {second, 7, 2.5};
    AString message;
    for (const unsigned flags : {0x400u, 0x6FFu, 0x40Au}) {
        const auto error = message.FormatMessageText(flags, AString(first).c_str(), 0, 0, args);
        Require(message.size() < 4096 && (error == 0 || message.empty()), "messages are bounded");
    }
    return 0;
}
