/// The text type of all libraries.
#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "astring_buf.h"
#include "format_arg.h"
#include "quorel_export.h"
#include "resource_strings.h"

/// A standard string of 16-bit units, with conversion, formatting, comparison without case,
/// clamping substrings, parsing, wildcards and splitting added. Value semantics, no further
/// members. All results are the same on every machine, whatever the process's locale. Lengths and
/// positions count 16-bit units.
///
/// A null pointer where a text is due is an assertion, and then reads as the empty text. Functions
/// that take a text up to its terminator, comparison without case, wildcards and `Split` stop at
/// the first zero; nothing else treats a zero specially.
class QUOREL_API AString : public std::u16string {
public:
    /// How 8-bit text is meant. A number outside the list is asserted and counts as kAnsi.
    enum Encoding : int {
        kAnsi = 0,   ///< Windows-1252, on every machine
        kUtf8 = 1,   ///< ill-formed pieces read, and lone surrogates written, as U+FFFD
        kOem = 2,    ///< code page 850
        kWestern = 3 ///< Windows-1252
    };

    /// Longest text. Every constructor and assignment of this class that copies, and every
    /// operation with a length, throws std::length_error beyond it; what is inherited has the
    /// standard string's own, longer limit.
    static constexpr size_type kMaxLength = 0x7FFFFFFD;

    // --- Construction and assignment. 8-bit text without an encoding is kAnsi. ---

    AString() = default;
    AString(const AString&) = default;
    AString(AString&&) = default;
    AString(const char* a_string) { *this = a_string; }
    AString(const char16_t* a_string) { *this = a_string; }
    /// Exactly `length` units.
    AString(const char16_t* a_string, size_type length);
    AString(size_type count, char16_t ch) { Assign(count, ch); }
    template <std::input_iterator It>
    requires std::same_as < std::iter_value_t<It>,
    char16_t > AString(It first, It last) : std::u16string(first, last) {}
    AString(std::initializer_list<char16_t> text) : std::u16string(Checked(text)) {}
    AString(const std::u16string& text) : std::u16string(Checked(text)) {}
    AString(std::u16string&& text) noexcept : std::u16string(std::move(text)) {}
    AString(std::u16string_view text) : std::u16string(Checked(text)) {}
    /// All bytes, but for one zero at the very end.
    AString(const std::string& text) { *this = text; }
    /// The text of the registered sources; empty for an unknown number.
    explicit AString(ResourceId id);

    AString& operator=(const AString&) = default;
    AString& operator=(AString&&) = default;
    AString& operator=(const char* a_string);
    AString& operator=(const char16_t* a_string);
    AString& operator=(const std::u16string& text);
    AString& operator=(std::u16string&& text) noexcept;
    AString& operator=(std::u16string_view text);
    AString& operator=(const std::string& text);
    AString& operator=(std::initializer_list<char16_t> text);
    AString& operator=(char16_t ch);

    void Assign(size_type count, char16_t ch);
    /// Converts `length` bytes, or up to the terminator for a negative length. One zero at the very
    /// end is left out.
    void Assign(Encoding encoding, const char* a_string, std::ptrdiff_t length = -1);
    /// Exactly `length` units, or up to the terminator for a negative length. A null `text` clears.
    void Assign(Encoding encoding, const char16_t* text, std::ptrdiff_t length = -1);
    /// All bytes, a zero at the end included.
    static AString FromMultiByte(Encoding encoding, std::string_view bytes);

    // --- Output as 8-bit text. What the encoding lacks is `?`, or U+FFFD in UTF-8. ---

    /// The converted text with a zero behind it, which the buffer's length doesn't count. Null for
    /// the empty string.
    AStringBuf8 ToMultiByte(Encoding encoding = kAnsi) const;
    std::string ToCString(Encoding encoding = kAnsi) const;
    /// The bytes that a text needs, without a terminator. `length` as for Assign; 0 for a null
    /// text.
    static std::ptrdiff_t MultiByteLength(Encoding encoding, const char16_t* text,
                                          std::ptrdiff_t length = -1);

    /// True when the bytes come in by `FromMultiByte` and go out again as they were.
    static bool CanDecode(Encoding encoding, std::string_view bytes);
    /// True when this text goes out in the encoding without a replacement.
    bool CanEncode(Encoding encoding) const;

    // --- Formatting ---

    /// Makes this string by a `printf` format: all flags, width, precision, `*`, the size modifiers
    /// hh h l ll L j z t w I I32 I64, the conversions d i u o x X c C s S p e E f F g G a A, and
    /// %%.
    /// `%n` takes its argument and does nothing. `%s` takes 16-bit text; an 8-bit text or character
    /// is read as kAnsi wherever it stands. An integer prints in its own width; only hh, h and I32
    /// narrow it. An argument of a kind that the conversion can't print is printed as its own kind;
    /// one that is missing is asserted, and prints as nothing. Arguments may be parts of this
    /// string.
    template <class... Args>
    AString& Format(const char16_t* format, const Args&... args) {
        const FormatArg list[] = {FormatArg(args)..., FormatArg()};
        return FormatArgs(format, std::span(list, sizeof...(Args)));
    }
    AString& FormatArgs(const char16_t* format, std::span<const FormatArg> args);

    /// Flags of FormatMessageText. The low byte is the width of a line: 0 keeps the message's line
    /// breaks; others make them blanks and break lines at that width, but 255 at no width.
    enum MessageFlags : unsigned {
        kIgnoreInserts = 0x200, ///< insert sequences stay as they are
        kFromString = 0x400,    ///< the message is the source's text
        kFromResource =
            0x800, ///< the message is text `id` of the source, or of the registered ones
        kArgumentArray = 0x2000 ///< understood; arguments always come as an array
    };
    /// Where a message comes from: a text, or a source of texts, null for the registered ones.
    struct MessageSource {
        MessageSource(const char16_t* message) : text(message) {}
        MessageSource(const StringSource* source) : strings(source) {}
        MessageSource(std::nullptr_t = nullptr) {}
        const char16_t* text = nullptr;
        const StringSource* strings = nullptr;
    };
    /// Results of FormatMessageText.
    enum MessageError : unsigned {
        kMessageDone = 0,
        kMessageInvalid = 87,  ///< no source, or an insert that is ill-formed or has no argument
        kMessageTooLong = 122, ///< 4,096 characters or more
        kMessageUnknown = 317  ///< no text with this number
    };
    /// Makes this string from a message with inserts: `%1` to `%99` with an optional `!format!` (by
    /// default `!s!`; a `*` in it takes an argument ahead), `%0` ends the message, `%n` breaks the
    /// line, `%r` `%t` `%b` are a CR, a tab and a blank, and any other character behind `%` stands
    /// for itself. Lines are broken by CR LF. There is one language. On an error the string is
    /// empty.
    MessageError FormatMessageText(unsigned flags, MessageSource source, unsigned id = 0,
                                   unsigned language = 0,
                                   std::span<const FormatArg> arguments = {});

    // --- Comparison; results are -1, 0 or 1 ---

    /// By the values of the units; of two texts where one begins the other, the shorter is the
    /// less.
    int Compare(std::u16string_view other) const noexcept;
    /// By the values of the units' lower case forms.
    int CompareNoCase(std::u16string_view other) const noexcept;
    /// Compares from `pos` on, and no more than `count` units of either. With a count of 0, or
    /// `pos` at the end or behind it: 0 if `other` is empty, else -1.
    int CompareNoCase(size_type pos, size_type count, std::u16string_view other) const noexcept;
    static int CompareNoCase(const char16_t* a, const char16_t* b) noexcept;

    // --- Substrings; none fails ---

    /// At most `count` units from `pos` on; a negative `pos` counts as 0.
    AString Mid(std::ptrdiff_t pos, std::ptrdiff_t count) const;
    AString Mid(std::ptrdiff_t pos) const;
    AString Left(std::ptrdiff_t n) const;
    AString Right(std::ptrdiff_t n) const;
    AString ToLower() const;

    // --- Trimming of white space, in place ---

    void TrimLeft();
    void TrimRight();
    void Trim();

    // --- Parsing. On false, `out` stays as it was. White space may stand around the number. ---

    /// As `wcstod` in the C locale: decimal or, after 0x, hexadecimal with optional exponent,
    /// "inf", "infinity", "nan" and "nan(...)" in any case. Too large gives an infinity, too small
    /// 0.
    bool ToDouble(double& out) const;
    /// As `wcstol`: base 2 to 36, or 0 for the prefixes 0x and 0; 0x may stand in base 16. Beyond
    /// the range of long gives its nearest end. False for any other base.
    bool ToLong(long& out, int base = 10) const;
    /// A letter or `_`, then letters, digits and `_`.
    bool IsIdentifier() const noexcept;

    // --- Matching and splitting ---

    /// True when the whole text fits the pattern, in which `*` stands for any run of units, `?` for
    /// any one, and `\` takes the next unit literally; at the very end it stands for itself. Time
    /// is at most the product of both lengths, however many stars there are.
    bool Match(std::u16string_view pattern) const;
    bool MatchNoCase(std::u16string_view pattern) const;
    /// The same with case, and on a match the text of each `*` and `?` in `captures`, which keeps
    /// entries that it had beyond those. Of all ways to match, earlier stars take as little as they
    /// can, or as much when `greedy`. Without a match `captures` stays as it was.
    bool Match(std::u16string_view pattern, std::vector<AString>& captures, bool greedy) const;
    /// A greedy match; puts the first ten captures where the pointers aren't null.
    bool Scan(std::u16string_view pattern, AString* out1 = nullptr, AString* out2 = nullptr,
              AString* out3 = nullptr, AString* out4 = nullptr, AString* out5 = nullptr,
              AString* out6 = nullptr, AString* out7 = nullptr, AString* out8 = nullptr,
              AString* out9 = nullptr, AString* out10 = nullptr) const;
    /// Appends the pieces between units that are in `delimiters`, empty ones included, and returns
    /// their number; an empty text has none.
    size_type Split(std::u16string_view delimiters, std::vector<AString>& pieces) const;
    static size_type Split(const char16_t* string, std::u16string_view delimiters,
                           std::vector<AString>& pieces);

private:
    [[noreturn]] static void ThrowTooLong();
    /// A text that isn't too long, as it is.
    template <class Text>
    static const Text& Checked(const Text& text) {
        if (text.size() > kMaxLength)
            ThrowTooLong();
        return text;
    }
};

/// The order of names that ignore case, for maps; takes AString and views alike.
struct AStringNoCaseLess {
    using is_transparent = void;
    QUOREL_API bool operator()(std::u16string_view a, std::u16string_view b) const noexcept;
};

/// Separates the numbers in the text of a point: `,`.
QUOREL_API char16_t GetListSeparator() noexcept;

template <>
struct std::hash<AString> : std::hash<std::u16string> {};
