#include "wnd.h"

#include <algorithm>

namespace {

CWnd* sFocus = nullptr;

std::uintptr_t AsValue(CWnd* window) {
    return reinterpret_cast<std::uintptr_t>(window);
}

} // namespace

const MessageEntry* MessageMap::Find(unsigned message) const {
    for (const MessageMap* map = this; map; map = map->m_Base) {
        const auto entry = std::ranges::find(map->m_Entries, message, &MessageEntry::m_Message);
        if (entry != map->m_Entries.end())
            return &*entry;
    }
    return nullptr;
}

CWnd::CWnd() = default;

CWnd::~CWnd() {
    if (sFocus == this)
        sFocus = nullptr;
    LeaveTree();
    for (CWnd* child : m_Children)
        child->m_Parent = nullptr;
}

void CWnd::LeaveTree() {
    if (m_Parent)
        std::erase(m_Parent->m_Children, this);
    m_Parent = nullptr;
}

bool CWnd::Create(WindowKind kind, CWnd* parent) {
    if (m_Created)
        return false;
    m_Parent = parent;
    if (parent)
        parent->m_Children.push_back(this);
    if (IBackendDesk* desk = GetBackend())
        m_Window = desk->CreateWindow(kind, parent ? parent->GetBackendWindow() : nullptr, *this);
    m_Created = true;
    if (SendMessage(kMsgCreate) != -1)
        return true;
    m_Created = false;
    m_Window.reset();
    LeaveTree();
    return false;
}

void CWnd::DestroyWindow() {
    if (!m_Created)
        return;
    m_Created = false;
    SendMessage(kMsgDestroy);
    while (!m_Children.empty()) {
        CWnd* const child = m_Children.back();
        child->DestroyWindow();
        if (!m_Children.empty() && m_Children.back() == child)
            child->LeaveTree();
    }
    if (sFocus == this)
        ChangeFocus(nullptr);
    m_Window.reset();
    LeaveTree();
    PostNcDestroy();
}

const MessageMap& CWnd::GetMessageMap() const {
    static constexpr MessageMap kMap{};
    return kMap;
}

std::intptr_t CWnd::Dispatch(unsigned message, std::uintptr_t first, std::intptr_t second) {
    const MessageEntry* entry = GetMessageMap().Find(message);
    return entry ? entry->m_Handler(*this, first, second) : 0;
}

std::intptr_t CWnd::SendMessage(unsigned message, std::uintptr_t first, std::intptr_t second) {
    return Dispatch(message, first, second);
}

void CWnd::PostMessage(unsigned message, std::uintptr_t first, std::intptr_t second) {
    if (m_Window)
        m_Window->Post(message, first, second);
}

std::intptr_t CWnd::HandleMessage(unsigned message, std::uintptr_t first, std::intptr_t second) {
    if (message == kMsgSetFocus) {
        ChangeFocus(this);
        return 0;
    }
    if (message == kMsgKillFocus) {
        if (sFocus == this)
            ChangeFocus(nullptr);
        return 0;
    }
    return Dispatch(message, first, second);
}

void CWnd::HandlePaint(IBackendSurface& surface, bool erase) {
    if (erase)
        surface.FillRect(surface.GetClipBox(), kWhite);
}

bool CWnd::PreTranslateKey(unsigned key, unsigned modifiers) {
    return m_Parent && m_Parent->PreTranslateKey(key, modifiers);
}

void CWnd::SetWindowText(const AString& text) {
    m_Text = text;
    if (m_Window)
        m_Window->SetTitle(text);
}

CSize CWnd::GetClientSize() const {
    return m_Window ? m_Window->GetClientSize() : CSize{};
}

void CWnd::Invalidate(bool erase) {
    if (!m_Window)
        return;
    const CSize size = m_Window->GetClientSize();
    m_Window->Invalidate({0, 0, size.cx, size.cy}, erase);
}

void CWnd::ChangeFocus(CWnd* to) {
    CWnd* const from = sFocus;
    if (from == to)
        return;
    sFocus = to;
    if (from)
        from->Dispatch(kMsgKillFocus, AsValue(to), 0);
    // The handler may have moved the focus on.
    if (to && sFocus == to)
        to->Dispatch(kMsgSetFocus, AsValue(from), 0);
}

void CWnd::SetFocus() {
    ChangeFocus(this);
    if (m_Window && sFocus == this)
        m_Window->SetFocus();
}

CWnd* CWnd::GetFocus() {
    return sFocus;
}
