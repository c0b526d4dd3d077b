/// Names of items as texts.
#pragma once

#include <string>
#include <string_view>

#include "block_item.h"
#include "char_class.h"

namespace io {

/// True when two texts are equal without regard to case.
inline bool IsSameNoCase(std::u16string_view a, std::u16string_view b) noexcept {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i] != b[i] && chars::ToLower(a[i]) != chars::ToLower(b[i]))
            return false;
    return true;
}

/// The text of a name token, which for a number is its source text. Refers to the token.
class Name_text {
public:
    explicit Name_text(const CToken& name) : mView(name.GetTextView()) {
        if (name.IsNumber() && name.HasText()) {
            name.AppendTextTo(mSource);
            mView = mSource;
        }
    }
    Name_text(const Name_text&) = delete;
    Name_text& operator=(const Name_text&) = delete;
    operator std::u16string_view() const noexcept { return mView; }

private:
    std::u16string mSource;
    std::u16string_view mView;
};

/// The word of the kinds True and False, which their tokens may come without; empty for others.
inline std::u16string_view WordOf(TokenKind kind) noexcept {
    if (kind == TokenKind::True)
        return u"true";
    return kind == TokenKind::False ? u"false" : std::u16string_view();
}

/// The token whose text is an item's name.
inline const CToken& NameTextToken(const CBlock_item& item) {
    static const CToken kNone;
    const CToken& name = item.GetNameToken();
    return item.IsBlock() && !name.IsText() ? kNone : name;
}

/// True when a name has that text, without regard to case.
inline bool IsNamed(const CToken& name, std::u16string_view text) {
    return name.GetTextLength() == text.size() && IsSameNoCase(Name_text(name), text);
}

/// The name of a block, which only text kinds have.
inline std::u16string_view BlockName(const CToken& name) noexcept {
    return name.IsText() ? name.GetTextView() : std::u16string_view();
}

/// True when an item that has a name has that one, without regard to case.
inline bool IsItemNamed(const CBlock_item& item, std::u16string_view text) {
    const CToken& name = item.GetNameToken();
    return item.IsBlock() ? IsSameNoCase(BlockName(name), text) : IsNamed(name, text);
}

} // namespace io
