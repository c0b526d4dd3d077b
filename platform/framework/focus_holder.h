/// FocusHolder: which of a backend's windows has the keyboard.
#pragma once

#include "messages.h"

/// @tparam Window what a backend's windows are; has Send(message)
template <class Window>
class FocusHolder {
public:
    Window* Get() const { return m_Window; }

    /// Tells the windows concerned, first the one that loses the focus; null: nobody gets it.
    void Move(Window* to) {
        Window* const from = m_Window;
        if (from == to)
            return;
        m_Window = to;
        if (from)
            from->Send(kMsgKillFocus);
        if (to && m_Window == to)
            to->Send(kMsgSetFocus);
    }

    /// A window that ends loses the focus without being told.
    void Forget(const Window& window) {
        if (m_Window == &window)
            m_Window = nullptr;
    }

private:
    Window* m_Window = nullptr;
};
