#include "tool_bar.h"

CToolBar::CToolBar() = default;

CToolBar::~CToolBar() {
    EndWindow();
}

void CToolBar::SetPeer(IToolBarPeer* peer) {
    if (m_Peer && !peer)
        SendMessage(kMsgDestroy);
    m_Peer = peer;
}

void CToolBar::EndWindow() {
    IToolBarPeer* const peer = m_Peer;
    SetPeer(nullptr);
    if (peer)
        peer->ToolBarEnds();
}

CRect CToolBar::GetItemRect(std::size_t index) const {
    return m_Peer ? m_Peer->GetItemRect(index) : CRect();
}

std::optional<CRect> CToolBar::GetFrameRect() const {
    return m_Peer ? m_Peer->GetFrameRect() : std::nullopt;
}

const MessageMap& CToolBar::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {
        Message<&CToolBar::HandleCommand>(kMsgCommand),
        Message<&CToolBar::HandleNotify>(kMsgNotify),
    };
    static const MessageMap kMap{kEntries, &CWnd::GetMessageMap()};
    return kMap;
}

std::intptr_t CToolBar::HandleCommand(std::uintptr_t first, std::intptr_t second) {
    return OnCommand(first, second);
}

std::intptr_t CToolBar::HandleNotify(std::uintptr_t first, std::intptr_t second) {
    std::intptr_t result = 0;
    return OnChildNotify(static_cast<unsigned>(first), result) ? result
                                                               : Default(kMsgNotify, first, second);
}

bool CToolBar::OnCommand(std::uintptr_t first, std::intptr_t second) {
    return Default(kMsgCommand, first, second) != 0;
}

bool CToolBar::OnChildNotify(unsigned, std::intptr_t&) {
    return false;
}

std::intptr_t CToolBar::Default(unsigned message, std::uintptr_t first, std::intptr_t second) {
    return m_Peer ? m_Peer->DefaultMessage(message, first, second) : 0;
}

void CToolBar::DisableControl(CWnd& control) {
    if (m_Peer)
        m_Peer->DisableControl(control);
}
