#include "blocks_json.h"

#include <array>
#include <charconv>
#include <cmath>

#include "block_func.h"
#include "block_named_value.h"
#include "block_vec.h"

namespace {

std::string NumberText(double number) {
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return {digits.data(), end.ptr};
}

/// The text of a name; a number, true or false that has kept none gives what it is.
AString NameText(const io::CToken& name) {
    if (name.HasText())
        return name.GetText();
    if (name.IsNumber())
        return AString(NumberText(name.GetNumber()));
    if (name.GetKind() == io::TokenKind::True)
        return u"true";
    return name.GetKind() == io::TokenKind::False ? AString(u"false") : AString();
}

} // namespace

// --- Pieces ---

void BlocksJson::AppendNumber(double number) {
    if (!std::isfinite(number))
        *this << "null";
    else if (number == 0 && std::signbit(number))
        *this << "-0.0"; // a -0 would be read as an integer, which has no sign
    else
        *this << NumberText(number);
}

void BlocksJson::AppendStrings(const std::vector<AString>& texts) {
    *this << "[";
    for (const AString& text : texts) {
        NextElement(&text == texts.data());
        AppendString(std::u16string_view(text));
    }
    *this << "]";
}

// --- Tokens ---

void BlocksJson::AppendTokenMembers(const io::CToken& token) {
    *this << "\"kind\":\"" << io::GetTokenKindName(token.GetKind()) << "\"";
    if (token.IsNumber()) {
        *this << ",\"number\":";
        AppendNumber(token.GetNumber());
    }
    if (!token.IsText() && !token.HasText())
        return;
    *this << ",\"text\":";
    if (token.IsNumber())
        AppendString(std::u16string_view(token.GetText()));
    else
        AppendString(token.GetTextView());
}

void BlocksJson::AppendToken(const io::CToken& token) {
    *this << "{";
    AppendTokenMembers(token);
    *this << "}";
}

// --- Blocks ---

void BlocksJson::AppendItemHead(const char* member, const io::CToken& name,
                                std::u16string_view text) {
    *this << "{\"" << member << "\":";
    AppendString(text);
    *this << ",\"nameKind\":\"" << io::GetTokenKindName(name.GetKind()) << "\",";
}

void BlocksJson::AppendNamed(const char* member, const io::CToken& name) {
    AppendItemHead(member, name, NameText(name));
}

void BlocksJson::AppendErrors(const io::CBlock& block) {
    *this << "\"errors\":[";
    bool isFirst = true;
    for (const io::XStreamioError& error : block.GetErrorList()) {
        *this << (isFirst ? "" : ",")
              << "{\"code\":" << std::to_string(static_cast<int>(error.GetCode()))
              << ",\"line\":" << std::to_string(error.GetLine()) << "}";
        isFirst = false;
    }
    *this << "]";
}

void BlocksJson::AppendElements(const io::CBlock_item& item) {
    const auto& vec = static_cast<const io::CBlock_vec&>(item);
    *this << "\"elements\":[";
    for (const io::CToken& element : vec) {
        if (&element != vec.begin())
            *this << ",";
        AppendToken(element);
    }
    *this << "]}";
}

/// The blocks and functions that are open around the item at hand.
class BlocksJson::Walk {
public:
    Walk(BlocksJson& json, const io::CBlock& root) : m_Json(json) { Open(root); }

    /// One item, or the end of the innermost open one; false when none is open.
    bool Step() {
        if (m_Open.empty())
            return false;
        const io::CBlock_item* const item = NextChild(m_Open.back());
        if (item)
            Meet(*item);
        else
            Close();
        return true;
    }

private:
    struct Parent {
        const io::CBlock_item* item;
        io::CBlock::Position next; ///< of a block
        unsigned count = 0;        ///< of the children met
    };

    static const io::CBlock_item* NextChild(Parent& parent) {
        if (parent.item->IsFunc()) {
            const auto& func = static_cast<const io::CBlock_func&>(*parent.item);
            return parent.count < func.GetSize() ? func.GetArg(parent.count++).get() : nullptr;
        }
        if (parent.next == static_cast<const io::CBlock&>(*parent.item).end())
            return nullptr;
        ++parent.count;
        const io::CBlock_item* const item = parent.next.operator->();
        ++parent.next;
        return item;
    }

    void Meet(const io::CBlock_item& item) {
        const bool isFirst = m_Open.back().count == 1;
        if (m_Open.size() == 1)
            m_Json.NextElement(isFirst);
        else if (!isFirst)
            m_Json << ",";
        if (item.IsBlock() || item.IsFunc())
            Open(item);
        else if (item.IsVec())
            AppendVec(item);
        else
            AppendValue(static_cast<const io::CBlock_value&>(item));
    }

    void Open(const io::CBlock_item& item) {
        Parent parent{&item, {}};
        if (item.IsBlock()) {
            parent.next = static_cast<const io::CBlock&>(item).begin();
            AString name;
            item.GetName(name);
            m_Json.AppendItemHead("block", item.GetNameToken(), name);
            m_Json << "\"items\":[";
        } else {
            m_Json.AppendNamed("function", item.GetNameToken());
            m_Json << "\"args\":[";
        }
        m_Open.push_back(parent);
    }

    void Close() {
        const io::CBlock_item& item = *m_Open.back().item;
        m_Open.pop_back();
        m_Json << "]";
        if (item.IsBlock()) {
            m_Json << ",";
            m_Json.AppendErrors(static_cast<const io::CBlock&>(item));
        }
        m_Json << "}";
    }

    void AppendVec(const io::CBlock_item& vec) {
        m_Json.AppendNamed("vector", vec.GetNameToken());
        m_Json.AppendElements(vec);
    }

    void AppendValue(const io::CBlock_value& value) {
        if (value.IsNamed())
            m_Json.AppendNamed("name", value.GetNameToken());
        else
            m_Json << "{";
        m_Json << "\"value\":";
        m_Json.AppendToken(value.GetValue());
        m_Json << "}";
    }

    BlocksJson& m_Json;
    std::vector<Parent> m_Open;
};

void BlocksJson::AppendBlock(const io::CBlock& block) {
    Walk walk(*this, block);
    while (walk.Step()) {
    }
}
