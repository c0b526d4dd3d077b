#include "astring.h"

#include <iterator>
#include <optional>
#include <stdexcept>

#include "assertion.h"
#include "code_page.h"
#include "message_text.h"
#include "text_format.h"

namespace {

// ---------------------------------------------------------------- encodings

/// What an encoding stands for: UTF-8, or a code page.
struct EncodingRow {
    bool isUtf8;
    codepage::Page page; ///< not looked at for UTF-8
};
constexpr EncodingRow kEncodings[] = {
    {false, codepage::Page::kWindows1252}, // kAnsi
    {true, codepage::Page::kWindows1252},  // kUtf8
    {false, codepage::Page::kDos850},      // kOem
    {false, codepage::Page::kWindows1252}, // kWestern
};

const EncodingRow& RowOf(AString::Encoding encoding) {
    const auto index = static_cast<std::size_t>(encoding);
    const bool isKnown = index < std::size(kEncodings);
    USE_ASSERT_TEXT(isKnown, "encoding < kEncodings");
    return kEncodings[isKnown ? index : 0];
}

void AppendFrom(AString::Encoding encoding, std::string_view bytes, std::u16string& out) {
    const EncodingRow& row = RowOf(encoding);
    if (row.isUtf8)
        codepage::AppendUtf8ToUtf16(bytes, out);
    else
        codepage::AppendDecoded(row.page, bytes, out);
}

std::size_t LengthIn(const EncodingRow& row, std::u16string_view text) {
    return row.isUtf8 ? codepage::Utf16ToUtf8Length(text) : text.size();
}

/// A text with a length, or up to its terminator when that is negative.
template <class Ch>
std::basic_string_view<Ch> ViewOf(const Ch* text, std::ptrdiff_t length) {
    if (length < 0)
        return text;
    return {text, static_cast<std::size_t>(length)};
}

/// The message that the flags ask for, or why there is none.
struct FoundMessage {
    std::optional<std::u16string_view> text;
    AString::MessageError error = AString::kMessageInvalid;
};

FoundMessage FindMessage(unsigned flags, AString::MessageSource source, unsigned id) {
    if ((flags & AString::kFromString) != 0)
        return source.text ? FoundMessage{source.text} : FoundMessage{};
    if ((flags & AString::kFromResource) == 0)
        return {};
    const ResourceId number{id};
    return {source.strings ? source.strings->Find(number) : FindResourceString(number),
            AString::kMessageUnknown};
}

} // namespace

// ---------------------------------------------------------------- construction and assignment

AString::AString(const char16_t* a_string, size_type length) {
    USE_ASSERT(a_string != 0);
    if (a_string)
        assign(Checked(std::u16string_view(a_string, length)));
}

AString::AString(ResourceId id) {
    if (const auto text = FindResourceString(id))
        assign(*text);
}

AString& AString::operator=(const char* a_string) {
    Assign(kAnsi, a_string);
    return *this;
}

AString& AString::operator=(const char16_t* a_string) {
    USE_ASSERT(a_string != 0);
    Assign(kAnsi, a_string);
    return *this;
}

AString& AString::operator=(const std::u16string& text) {
    assign(Checked(text));
    return *this;
}

AString& AString::operator=(std::u16string&& text) noexcept {
    assign(std::move(text));
    return *this;
}

AString& AString::operator=(std::u16string_view text) {
    assign(Checked(text));
    return *this;
}

AString& AString::operator=(const std::string& text) {
    Assign(kAnsi, text.data(), static_cast<std::ptrdiff_t>(text.size()));
    return *this;
}

AString& AString::operator=(std::initializer_list<char16_t> text) {
    assign(Checked(text));
    return *this;
}

AString& AString::operator=(char16_t ch) {
    assign(1, ch);
    return *this;
}

void AString::ThrowTooLong() {
    throw std::length_error("AString: more than 7FFFFFFD characters");
}

void AString::Assign(size_type count, char16_t ch) {
    if (count > kMaxLength)
        ThrowTooLong();
    assign(count, ch);
}

void AString::Assign(Encoding encoding, const char* a_string, std::ptrdiff_t length) {
    USE_ASSERT(a_string != 0);
    clear();
    if (!a_string)
        return;
    AppendFrom(encoding, Checked(ViewOf(a_string, length)), *this);
    if (!empty() && back() == u'\0')
        pop_back();
}

void AString::Assign(Encoding, const char16_t* text, std::ptrdiff_t length) {
    if (text)
        assign(Checked(ViewOf(text, length)));
    else
        clear();
}

AString AString::FromMultiByte(Encoding encoding, std::string_view bytes) {
    AString text;
    AppendFrom(encoding, Checked(bytes), text);
    return text;
}

// ---------------------------------------------------------------- output as 8-bit text

AStringBuf8 AString::ToMultiByte(Encoding encoding) const {
    AStringBuf8 buffer;
    if (empty())
        return buffer;
    const EncodingRow& row = RowOf(encoding);
    // Four bytes a unit are room for any encoding and the terminator.
    buffer.Reserve(static_cast<std::ptrdiff_t>(size() * 4));
    std::size_t length = size();
    if (row.isUtf8)
        length = codepage::Utf16ToUtf8(*this, buffer.Data());
    else
        codepage::Encode(row.page, *this, buffer.Data());
    buffer.Data()[length] = '\0';
    buffer.SetLength(static_cast<std::ptrdiff_t>(length));
    return buffer;
}

std::string AString::ToCString(Encoding encoding) const {
    const EncodingRow& row = RowOf(encoding);
    std::string bytes;
    if (row.isUtf8)
        codepage::AppendUtf16ToUtf8(*this, bytes);
    else
        codepage::AppendEncoded(row.page, *this, bytes);
    return bytes;
}

std::ptrdiff_t AString::MultiByteLength(Encoding encoding, const char16_t* text,
                                        std::ptrdiff_t length) {
    if (!text || length == 0)
        return 0;
    return static_cast<std::ptrdiff_t>(LengthIn(RowOf(encoding), Checked(ViewOf(text, length))));
}

bool AString::CanDecode(Encoding encoding, std::string_view bytes) {
    return !RowOf(encoding).isUtf8 || codepage::IsValidUtf8(bytes);
}

bool AString::CanEncode(Encoding encoding) const {
    const EncodingRow& row = RowOf(encoding);
    return row.isUtf8 ? codepage::IsValidUtf16(*this) : codepage::CanEncode(row.page, *this);
}

// ---------------------------------------------------------------- formatting

AString& AString::FormatArgs(const char16_t* format, std::span<const FormatArg> args) {
    USE_ASSERT(format != 0);
    // A work area of its own, since arguments may be parts of this string; it keeps its size.
    thread_local std::u16string work;
    work.clear();
    const bool hadAllArguments = textformat::AppendAll(format ? format : u"", args, work);
    assign(Checked(work));
    USE_ASSERT(hadAllArguments); // last, since whoever answers it may format
    return *this;
}

AString::MessageError AString::FormatMessageText(unsigned flags, MessageSource source, unsigned id,
                                                 unsigned, std::span<const FormatArg> arguments) {
    const FoundMessage message = FindMessage(flags, source, id);
    std::u16string text;
    MessageError error = message.error;
    if (message.text)
        error = messagetext::Form(*message.text, arguments,
                                  {(flags & kIgnoreInserts) != 0, flags & 0xFF}, text);
    if (error != kMessageDone)
        text.clear();
    const std::size_t count = text.size(), capacity = messagetext::kCapacity;
    USE_ASSERT(count < capacity);
    assign(text);
    return error;
}
