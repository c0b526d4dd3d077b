/// The numbers of window messages, keys and commands that framework, backends and module share.
#pragma once

#include <cstdint>

/// @name A place or a size as the second value of a message
/// @{
constexpr std::intptr_t MakePointValue(int x, int y) {
    static_assert(sizeof(std::intptr_t) == 8);
    return static_cast<std::intptr_t>(static_cast<std::uint64_t>(static_cast<std::uint32_t>(y))
                                          << 32 |
                                      static_cast<std::uint32_t>(x));
}
constexpr int PointValueX(std::intptr_t value) {
    return static_cast<int>(static_cast<std::uint32_t>(value));
}
constexpr int PointValueY(std::intptr_t value) {
    return static_cast<int>(static_cast<std::uint32_t>(static_cast<std::uint64_t>(value) >> 32));
}
/// @}

/// Messages to a window. Keys and characters carry the key or character in the first value and
/// its flags in the second; the pointer carries the modifiers first and the place, as
/// MakePointValue packs it, second.
enum WindowMessage : unsigned {
    kMsgCreate = 0x0001,
    kMsgDestroy = 0x0002,
    kMsgSize = 0x0005,      ///< second value: the client size, by MakePointValue
    kMsgSetFocus = 0x0007,  ///< first value: the CWnd that loses it, or 0
    kMsgKillFocus = 0x0008, ///< first value: the CWnd that gains it, or 0
    kMsgClose = 0x0010,
    kMsgSetCursor = 0x0020, ///< a result other than 0: the window has set the shape itself
    kMsgContextMenu = 0x007B,
    kMsgNcMouseMove = 0x00A0,
    kMsgKeyDown = 0x0100,
    kMsgKeyUp = 0x0101,
    kMsgChar = 0x0102,
    kMsgCommand = 0x0111, ///< first value: the command
    kMsgHScroll = 0x0114, ///< first value: a ScrollCode, second value: the position
    kMsgVScroll = 0x0115,
    kMsgMouseMove = 0x0200,
    kMsgLButtonDown = 0x0201,
    kMsgLButtonUp = 0x0202,
    kMsgLButtonDblClk = 0x0203,
    kMsgMouseWheel = 0x020A,  ///< first value: the delta
    kMsgMdiActivate = 0x0222, ///< the user has chosen this frame
    kMsgDpiChanged = 0x02E0,  ///< fonts have new measures; a kMsgSize follows
    kMsgCut = 0x0300,
    kMsgCopy = 0x0301,
    kMsgPaste = 0x0302,
};

/// What a scroll bar asks for.
enum ScrollCode : unsigned {
    kScrollLineUp,
    kScrollLineDown,
    kScrollPageUp,
    kScrollPageDown,
    kScrollThumbPosition,
    kScrollThumbTrack,
    kScrollTop,
    kScrollBottom,
    kScrollEnd,
};

/// Keys by number; letters and digits are their own capital ASCII codes.
enum KeyCode : unsigned {
    kKeyLeftButton = 0x01,
    kKeyBack = 0x08,
    kKeyTab = 0x09,
    kKeyReturn = 0x0D,
    kKeyShift = 0x10,
    kKeyControl = 0x11,
    kKeyAlt = 0x12,
    kKeyEscape = 0x1B,
    kKeyPageUp = 0x21,
    kKeyPageDown = 0x22,
    kKeyEnd = 0x23,
    kKeyHome = 0x24,
    kKeyLeft = 0x25,
    kKeyUp = 0x26,
    kKeyRight = 0x27,
    kKeyDown = 0x28,
    kKeyInsert = 0x2D,
    kKeyDelete = 0x2E,
    kKeyF2 = 0x71,
    kKeyF3 = 0x72,
};

/// The modifiers of an accelerator, to be joined.
enum KeyModifier : unsigned { kModShift = 4, kModControl = 8, kModAlt = 16 };

/// The commands that a view answers by printing.
enum PrintCommand : unsigned {
    kCommandPrint = 57607,
    kCommandPrintDirect = 57608, ///< without asking
    kCommandPrintPreview = 57609,
};

/// How a frame is shown; the default leaves the choice to the backend.
enum ShowCommand : int {
    kShowDefault = -1,
    kShowHide = 0,
    kShowNormal = 1,
    kShowMinimized = 2,
    kShowMaximized = 3,
    kShowNoActivate = 4,
    kShow = 5,
    kShowRestore = 9,
};

/// The style of a message box that warns: one button, the exclamation mark.
inline constexpr int kWarningStyle = 0x30;

/// How a dialog or a message box ends.
enum DialogResult : int {
    kIdOk = 1,
    kIdCancel = 2,
    kIdAbort = 3,
    kIdRetry = 4,
    kIdIgnore = 5,
    kIdYes = 6,
    kIdNo = 7
};
