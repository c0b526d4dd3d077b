/// The messages between a module's toolbars and their host.
#pragma once

#include <cstdint>

/// Sent to the host's main window or, where it says so, to the window that holds the toolbar. Each
/// is sent at once, and an answer of 0 is the same as no window there.
enum ToolBarMessage : unsigned {
    /// Second value: the CToolBarsData, whose bars are built. The host sets window and buttons of
    /// each.
    kMsgTakeToolBars = 33903,
    /// To the holder. Second value: the CQrToolBar, which ends.
    kMsgForgetToolBar = 33905,
    /// To the holder. Second value: the CQrToolBar. Not 0: the user is customising toolbars.
    kMsgAskCustomizing = 33908,
    /// First value: a ToolBarButtonNotice, second value: a ToolBarButton.
    kMsgToolBarButton = 33916,
};

enum ToolBarButtonNotice : std::uintptr_t {
    kButtonAdded = 0,  ///< to a list. Not 0: the host has this button already
    kButtonShown = 1,  ///< on a bar that is ready; the answer means nothing
    kButtonLoaded = 2, ///< with picture and text, for the host to keep a copy
};

/// An object as the second value of a message, and back. The receiver gets the type that was sent.
template <class T>
std::intptr_t ToMessageValue(const T& object) {
    return reinterpret_cast<std::intptr_t>(&object);
}
template <class T>
T& FromMessageValue(std::intptr_t value) {
    return *reinterpret_cast<T*>(value);
}
