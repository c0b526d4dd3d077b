/// CWnd: a window: a place in a tree of windows, numbered messages, and its side on the screen.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "backend.h"
#include "cmd_target.h"

class CWnd;

/// One row of a message map. Rows are made by `Message`.
struct MessageEntry {
    using Handler = std::intptr_t (*)(CWnd&, std::uintptr_t, std::intptr_t);

    unsigned m_Message;
    Handler m_Handler;
};

/// A class's message map: its own rows, and the map of its base class or null. Constant data.
struct MessageMap {
    std::span<const MessageEntry> m_Entries;
    const MessageMap* m_Base = nullptr;

    /// The first row of a message, the class's own before its base's; null when there is none.
    QUOREL_API const MessageEntry* Find(unsigned message) const;
};

/// A window. It may exist without a screen side (no backend, not yet created): messages, tree and
/// text work all the same. Windows are made by `new` and end by DestroyWindow.
class QUOREL_API CWnd : public CCmdTarget, public IWindowSink {
public:
    CWnd();
    /// Takes the window out of the tree. Only DestroyWindow destroys children.
    ~CWnd() override;

    /// Makes the window a child of parent (null: at the top), gives it a screen side when there is
    /// a backend, and sends it kMsgCreate. @return false, and nothing else happens, when it is
    /// created already or its handler of kMsgCreate gave -1
    bool Create(WindowKind kind, CWnd* parent);
    /// Ends the window: kMsgDestroy, its children, its screen side, PostNcDestroy. Nothing when it
    /// isn't created.
    void DestroyWindow();
    bool IsCreated() const { return m_Created; }

    /// Handles a message at once, by the message map. @return its result, 0 when nobody handles it
    std::intptr_t SendMessage(unsigned message, std::uintptr_t first = 0, std::intptr_t second = 0);
    /// Sends a message later, in its turn; nothing without a screen side.
    void PostMessage(unsigned message, std::uintptr_t first = 0, std::intptr_t second = 0);

    CWnd* GetParent() const { return m_Parent; }
    const std::vector<CWnd*>& GetChildren() const { return m_Children; }
    const AString& GetWindowText() const { return m_Text; }
    virtual void SetWindowText(const AString& text);

    /// The screen side; null without a backend, and before Create.
    IBackendWindow* GetBackendWindow() const { return m_Window.get(); }
    /// An empty size without a screen side.
    CSize GetClientSize() const;
    void Invalidate(bool erase = true);

    /// Makes this the window with the focus; without a backend it is noted all the same.
    void SetFocus();
    /// The window with the focus, null when none of the framework's has it.
    static CWnd* GetFocus();

    std::intptr_t HandleMessage(unsigned message, std::uintptr_t first,
                                std::intptr_t second) override;
    void HandlePaint(IBackendSurface& surface, bool erase) override;
    /// The base asks the parent; a window at the top takes no key.
    bool PreTranslateKey(unsigned key, unsigned modifiers) override;

protected:
    /// The class's map; static data.
    virtual const MessageMap& GetMessageMap() const;
    /// The last that a window does in DestroyWindow; frames and views delete themselves.
    virtual void PostNcDestroy() {}

private:
    void LeaveTree();
    std::intptr_t Dispatch(unsigned message, std::uintptr_t first, std::intptr_t second);
    static void ChangeFocus(CWnd* to);

    CWnd* m_Parent = nullptr;
    std::vector<CWnd*> m_Children;
    std::unique_ptr<IBackendWindow> m_Window;
    AString m_Text;
    bool m_Created = false;
};

namespace message_map {

template <class T>
struct MemberOf;
template <class C>
struct MemberOf<std::intptr_t (C::*)(std::uintptr_t, std::intptr_t)> {
    using Class = C;
};

template <auto Member>
std::intptr_t Call(CWnd& window, std::uintptr_t first, std::intptr_t second) {
    return (static_cast<typename MemberOf<decltype(Member)>::Class&>(window).*Member)(first,
                                                                                      second);
}

} // namespace message_map

/// A row whose handler is the member `std::intptr_t Handler(std::uintptr_t, std::intptr_t)`.
template <auto Handler>
constexpr MessageEntry Message(unsigned message) {
    return {message, &message_map::Call<Handler>};
}
