#include "block_getters.h"

#include <algorithm>

#include "token_number.h"

namespace io {

namespace {

template <class T>
bool GetNumberOf(const CToken* token, T& value) {
    return token && ConvertNumber(*token, value);
}

} // namespace

bool CBlock_getters::Get(char16_t* text) const {
    const CToken* token = GetLeadToken();
    if (!token || !token->IsText())
        return false;
    const std::u16string_view view = token->GetTextView();
    *std::copy(view.begin(), view.end(), text) = u'\0';
    return true;
}

bool CBlock_getters::Get(bool& value) const {
    const CToken* token = GetLeadToken();
    const TokenKind kind = token ? token->GetKind() : TokenKind::Null;
    if (kind != TokenKind::True && kind != TokenKind::False)
        return false;
    value = kind == TokenKind::True;
    return true;
}

bool CBlock_getters::Get(AString& text) const {
    const CToken* token = GetLeadToken();
    if (!token || !token->IsText())
        return false;
    text = token->GetTextView();
    return true;
}

bool CBlock_getters::Get(unsigned int& value) const {
    return GetNumberOf(GetLeadToken(), value);
}
bool CBlock_getters::Get(unsigned long& value) const {
    return GetNumberOf(GetLeadToken(), value);
}
bool CBlock_getters::Get(unsigned short& value) const {
    return GetNumberOf(GetLeadToken(), value);
}
bool CBlock_getters::Get(int& value) const {
    return GetNumberOf(GetLeadToken(), value);
}
bool CBlock_getters::Get(long& value) const {
    return GetNumberOf(GetLeadToken(), value);
}
bool CBlock_getters::Get(short& value) const {
    return GetNumberOf(GetLeadToken(), value);
}
bool CBlock_getters::Get(float& value) const {
    return GetNumberOf(GetLeadToken(), value);
}
bool CBlock_getters::Get(double& value) const {
    return GetNumberOf(GetLeadToken(), value);
}

} // namespace io
