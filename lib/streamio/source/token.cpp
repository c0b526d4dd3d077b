#include "token.h"

#include <algorithm>
#include <stdexcept>

#include "packed_source.h"

namespace io {

CToken::CToken(TokenKind kind, double number) noexcept : CToken(kind) {
    if (IsNumberKind(kind))
        Store(3, number);
}

char* CToken::MakeShared(std::size_t bytes, std::size_t length, CToken_text_store* store) {
    if (length > AString::kMaxLength)
        throw std::length_error("token text");
    char* const text = store ? store->Take(bytes) : CToken_text_store::TakeAlone(bytes);
    mRep.form = kSharedForm;
    Store(1, static_cast<std::uint32_t>(length));
    Store(3, static_cast<const char*>(text));
    return text;
}

CToken::CToken(TokenKind kind, std::u16string_view text, CToken_text_store* store) : CToken(kind) {
    if (text.empty() || !MayHaveText(kind))
        return;
    const std::size_t bytes = text.size() * sizeof(char16_t);
    if (text.size() <= kInlineUnits) {
        mRep.form = static_cast<std::uint8_t>(text.size());
        std::memcpy(mRep.units, text.data(), bytes);
    } else {
        std::memcpy(MakeShared(bytes, text.size(), store), text.data(), bytes);
    }
}

CToken::CToken(TokenKind kind, double number, std::string_view source, CToken_text_store* store)
    : CToken(kind, number) {
    if (source.empty() || !IsNumberKind(kind))
        return;
    if (source.size() <= kInlineSource) {
        if (std::uint64_t codes; packed::Pack(source, codes)) {
            SetPacked(kind, number, codes, source.size());
            return;
        }
    }
    char* const text = MakeShared(sizeof number + source.size(), source.size(), store);
    std::memcpy(text, &number, sizeof number);
    std::memcpy(text + sizeof number, source.data(), source.size());
}

std::size_t CToken::CopySource(char16_t* out) const noexcept {
    if (!IsNumber())
        return 0;
    const std::size_t length = GetTextLength();
    if (IsShared())
        std::copy_n(Shared() + sizeof(double), length, out);
    else
        packed::Unpack(LoadPacked(), length, out);
    return length;
}

void CToken::AppendTextTo(std::u16string& out) const {
    if (!IsNumber()) {
        out += GetTextView();
    } else if (!IsShared()) {
        char16_t units[kInlineSource];
        packed::Unpack(LoadPacked(), mRep.form, units);
        out.append(units, mRep.form);
    } else {
        const char* const source = Shared() + sizeof(double);
        out.append(source, source + SharedLength());
    }
}

AString CToken::GetText() const {
    AString text;
    AppendTextTo(text);
    return text;
}

std::size_t CToken::GetHeldBytes() const noexcept {
    if (!IsShared())
        return 0;
    return IsNumber() ? sizeof(double) + SharedLength() : SharedLength() * sizeof(char16_t);
}

bool operator==(const CToken& a, const CToken& b) noexcept {
    if (a.GetKind() != b.GetKind() || a.GetTextLength() != b.GetTextLength())
        return false;
    if (!a.IsNumber())
        return a.GetTextView() == b.GetTextView();
    if (std::bit_cast<std::uint64_t>(a.GetNumber()) != std::bit_cast<std::uint64_t>(b.GetNumber()))
        return false;
    if (!a.IsShared() || !b.IsShared())
        return a.IsShared() == b.IsShared() && a.LoadPacked() == b.LoadPacked();
    return std::memcmp(a.Shared() + sizeof(double), b.Shared() + sizeof(double),
                       a.SharedLength()) == 0;
}

} // namespace io
