#include "combo_box.h"

#include <algorithm>

CComboBox::CComboBox() = default;

CComboBox::~CComboBox() = default;

void CComboBox::SetWindowText(const AString& text) {
    CWnd::SetWindowText(text);
    Changed();
}

AString CComboBox::GetItemText(int index) const {
    return index >= 0 && index < GetCount() ? m_Items[static_cast<std::size_t>(index)] : AString();
}

int CComboBox::FindStringExact(int start, const AString& text) const {
    const int count = GetCount();
    const int begin = start < 0 || start >= count ? 0 : start + 1;
    for (int i = 0; i < count; ++i) {
        const int index = (begin + i) % count;
        if (m_Items[static_cast<std::size_t>(index)].CompareNoCase(text) == 0)
            return index;
    }
    return -1;
}

int CComboBox::InsertString(int index, const AString& text) {
    if (index == -1)
        index = GetCount();
    if (index < 0 || index > GetCount())
        return -1;
    m_Items.insert(m_Items.begin() + index, text);
    if (m_Selection >= index)
        ++m_Selection;
    Changed();
    return index;
}

int CComboBox::DeleteString(int index) {
    if (index < 0 || index >= GetCount())
        return -1;
    m_Items.erase(m_Items.begin() + index);
    if (m_Selection == index)
        m_Selection = -1;
    else if (m_Selection > index)
        --m_Selection;
    Changed();
    return GetCount();
}

void CComboBox::ResetContent() {
    m_Items.clear();
    m_Selection = -1;
    SetWindowText(AString());
}

int CComboBox::SetCurSel(int index) {
    m_Selection = index >= 0 && index < GetCount() ? index : -1;
    SetWindowText(GetItemText(m_Selection));
    return m_Selection;
}

const MessageMap& CComboBox::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {
        Message<&CComboBox::OnCut>(kMsgCut),
        Message<&CComboBox::OnCopy>(kMsgCopy),
        Message<&CComboBox::OnPaste>(kMsgPaste),
    };
    static const MessageMap kMap{kEntries, &CWnd::GetMessageMap()};
    return kMap;
}

std::intptr_t CComboBox::OnCut(std::uintptr_t, std::intptr_t) {
    TellPeer(kMsgCut);
    return 0;
}

std::intptr_t CComboBox::OnCopy(std::uintptr_t, std::intptr_t) {
    TellPeer(kMsgCopy);
    return 0;
}

std::intptr_t CComboBox::OnPaste(std::uintptr_t, std::intptr_t) {
    TellPeer(kMsgPaste);
    return 0;
}

void CComboBox::TellPeer(unsigned message) {
    if (m_Peer)
        m_Peer->EditCommand(message);
}

void CComboBox::Changed() {
    if (m_Peer)
        m_Peer->ComboBoxChanged();
}
