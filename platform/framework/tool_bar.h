/// CToolBar: a bar of buttons and controls, with its window on the screen or without.
#pragma once

#include <cstddef>
#include <optional>

#include "wnd.h"

/// Messages that only toolbars get, beside those of the pointer, whose modifiers have
/// kModLeftButton among them while the left button is down.
enum ToolBarWindowMessage : unsigned {
    kMsgWindowPosChanged = 0x0047,
    kMsgNotify = 0x004E, ///< the bar's own notice to itself, first value: a ToolBarNotice
};
inline constexpr unsigned kModLeftButton = 1;

enum ToolBarNotice : unsigned { kNoticeBeginDrag = 0xFFFFFD43 };
/// The notices that come as kMsgCommand from a control, whose window is the second value.
enum ToolBarControlNotice : unsigned { kNoticeGotFocus = 3 };

/// @name The first value of a kMsgCommand from a control
/// @{
constexpr std::uintptr_t MakeControlNotice(unsigned command, unsigned notice) {
    return std::uintptr_t{notice} << 16 | (command & 0xFFFF);
}
constexpr unsigned ControlNoticeOf(std::uintptr_t value) {
    return static_cast<unsigned>(value >> 16 & 0xFFFF);
}
/// @}

/// The bar's window on the screen; implemented by whatever puts it there.
class QUOREL_API IToolBarPeer {
public:
    /// The place of the button of that index, in client coordinates of the bar; empty when it
    /// isn't shown.
    virtual CRect GetItemRect(std::size_t index) = 0;
    virtual bool IsFloating() = 0;
    /// Whether the user has the bar on show, be it covered or not.
    virtual bool IsBarVisible() = 0;
    /// The number of the dock bar that holds a docked bar, the host's own.
    virtual unsigned GetDockBarId() = 0;
    /// The bar on the screen.
    virtual CRect GetWindowRect() = 0;
    /// The frame around a floating bar, on the screen; nothing when there is none.
    virtual std::optional<CRect> GetFrameRect() = 0;
    /// Does what the toolkit does with a message by itself. @return its result
    virtual std::intptr_t DefaultMessage(unsigned message, std::uintptr_t first,
                                         std::intptr_t second) = 0;
    /// The control takes no input any more, until the peer enables it again.
    virtual void DisableControl(CWnd& control) = 0;
    /// The bar ends and has let go of the peer, which takes the window off the screen.
    virtual void ToolBarEnds() = 0;

protected:
    ~IToolBarPeer() = default;
};

/// The bar as data: works without being shown. What it tells of its place comes from the peer;
/// without one it is docked, hidden and empty.
class QUOREL_API CToolBar : public CWnd {
public:
    CToolBar();
    /// A bar that still has its window lets go of it here. No handler of the derived class runs any
    /// more, so a class with one of kMsgDestroy calls EndWindow itself.
    ~CToolBar() override;

    /// The bar's window comes, or goes for null: then kMsgDestroy is sent first. Not owned.
    void SetPeer(IToolBarPeer* peer);
    bool HasWindow() const { return m_Peer != nullptr; }

    CRect GetItemRect(std::size_t index) const;
    bool IsFloating() const { return m_Peer && m_Peer->IsFloating(); }
    bool IsBarVisible() const { return m_Peer && m_Peer->IsBarVisible(); }
    unsigned GetDockBarId() const { return m_Peer ? m_Peer->GetDockBarId() : 0; }
    CRect GetWindowRect() const { return m_Peer ? m_Peer->GetWindowRect() : CRect(); }
    std::optional<CRect> GetFrameRect() const;

protected:
    const MessageMap& GetMessageMap() const override;
    /// A command, or a notice of a control, see MakeControlNotice. @return whether it was handled
    virtual bool OnCommand(std::uintptr_t first, std::intptr_t second);
    /// One of the bar's own notices. @return whether it was handled, with that result
    virtual bool OnChildNotify(unsigned notice, std::intptr_t& result);
    /// What the toolkit does with a message by itself.
    std::intptr_t Default(unsigned message, std::uintptr_t first, std::intptr_t second);
    void DisableControl(CWnd& control);
    /// Sends kMsgDestroy, lets go of the peer and tells it.
    void EndWindow();

private:
    std::intptr_t HandleCommand(std::uintptr_t first, std::intptr_t second);
    std::intptr_t HandleNotify(std::uintptr_t first, std::intptr_t second);

    IToolBarPeer* m_Peer = nullptr;
};
