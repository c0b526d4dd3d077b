#include "block_dump.h"

#include <charconv>
#include <cmath>

#include "block.h"
#include "block_value.h"
#include "block_vec.h"
#include "code_page.h"
#include "item_walk.h"

namespace io {

namespace {

/// What stands around a text or behind a number, by kind; kinds that aren't here go by their names.
struct Look {
    TokenKind kind;
    const char* before;
    const char* behind;
};
constexpr Look kLooks[] = {
    {TokenKind::Null, "~", ""},
    {TokenKind::Short, "", "s"},
    {TokenKind::Int, "", "i"},
    {TokenKind::Long, "", "l"},
    {TokenKind::UnsignedShort, "", "us"},
    {TokenKind::UnsignedInt, "", "ui"},
    {TokenKind::UnsignedLong, "", "ul"},
    {TokenKind::Double, "", "d"},
    {TokenKind::Float, "", "f"},
    {TokenKind::Hex, "", "x"},
    {TokenKind::Keyword, "", ""},
    {TokenKind::SingleQuotedText, "'", "'"},
    {TokenKind::DoubleQuotedText, "\"", "\""},
    {TokenKind::CData, "<", ">"},
};

std::string DumpContents(const CToken& token) {
    std::string text;
    if (token.IsText()) {
        codepage::AppendUtf16ToUtf8(token.GetTextView(), text);
    } else if (token.IsNumber()) {
        char digits[32];
        const double number = token.GetNumber();
        const auto format = std::floor(number) == number && std::abs(number) < 1e15
                                ? std::chars_format::fixed
                                : std::chars_format::general;
        const auto end = std::to_chars(std::begin(digits), std::end(digits), number, format);
        text.assign(digits, end.ptr);
    }
    return text;
}

std::string DumpErrors(const CBlock& block) {
    std::string text;
    for (const XStreamioError& error : block.GetErrorList())
        text += "!" + std::to_string(static_cast<int>(error.GetCode())) + "@" +
                std::to_string(error.GetLine());
    return text;
}

std::string DumpLeaf(const CBlock_item& item) {
    if (!item.IsVec())
        return DumpToken(static_cast<const CBlock_value&>(item).GetValue());
    std::string text = "[";
    for (const CToken& element : static_cast<const CBlock_vec&>(item))
        text += (text.size() == 1 ? "" : " ") + DumpToken(element);
    return text + "]";
}

} // namespace

std::string DumpToken(const CToken& token) {
    for (const Look& look : kLooks)
        if (look.kind == token.GetKind())
            return look.before + DumpContents(token) + look.behind;
    if (token.GetKind() == TokenKind::True || token.GetKind() == TokenKind::False)
        return token.GetKind() == TokenKind::True ? "true" : "false";
    return std::string(GetTokenKindName(token.GetKind())) + " " + DumpContents(token);
}

std::string DumpItem(const CBlock_item& root) {
    std::string text;
    for (Item_walk walk(root); walk.Next();) {
        const CBlock_item& item = walk.GetItem();
        if (walk.GetMeeting() == Item_walk::Meeting::kClose) {
            text += item.IsBlock() ? "}" + DumpErrors(static_cast<const CBlock&>(item)) : ")";
            continue;
        }
        if (!walk.IsFirst())
            text += walk.GetParent()->IsFunc() ? ", " : "; ";
        if (item.IsNamed())
            text += DumpToken(item.GetNameToken());
        if (item.IsNamedValue())
            text += "=";
        if (walk.GetMeeting() == Item_walk::Meeting::kOpen)
            text += item.IsBlock() ? "{" : "(";
        else
            text += DumpLeaf(item);
    }
    return text;
}

} // namespace io
