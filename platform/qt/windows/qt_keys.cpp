#include "qt_keys.h"

#include <algorithm>
#include <iterator>

#include "messages.h"

unsigned KeyCodeOf(int key) {
    struct Row {
        int m_Key;
        unsigned m_Code;
    };
    static constexpr Row kRows[] = {
        {Qt::Key_Backspace, kKeyBack},
        {Qt::Key_Tab, kKeyTab},
        {Qt::Key_Backtab, kKeyTab},
        {Qt::Key_Return, kKeyReturn},
        {Qt::Key_Enter, kKeyReturn},
        {Qt::Key_Shift, kKeyShift},
        {Qt::Key_Control, kKeyControl},
        {Qt::Key_Alt, kKeyAlt},
        {Qt::Key_Escape, kKeyEscape},
        {Qt::Key_PageUp, kKeyPageUp},
        {Qt::Key_PageDown, kKeyPageDown},
        {Qt::Key_End, kKeyEnd},
        {Qt::Key_Home, kKeyHome},
        {Qt::Key_Left, kKeyLeft},
        {Qt::Key_Up, kKeyUp},
        {Qt::Key_Right, kKeyRight},
        {Qt::Key_Down, kKeyDown},
        {Qt::Key_Insert, kKeyInsert},
        {Qt::Key_Delete, kKeyDelete},
    };
    const auto row = std::ranges::find(kRows, key, &Row::m_Key);
    if (row != std::end(kRows))
        return row->m_Code;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return kKeyF2 - 1 + static_cast<unsigned>(key - Qt::Key_F1);
    const bool own = (key >= Qt::Key_A && key <= Qt::Key_Z) ||
                     (key >= Qt::Key_0 && key <= Qt::Key_9) || key == Qt::Key_Space;
    return own ? static_cast<unsigned>(key) : 0;
}

unsigned ModifiersOf(Qt::KeyboardModifiers modifiers) {
    return (modifiers.testFlag(Qt::ShiftModifier) ? kModShift : 0u) |
           (modifiers.testFlag(Qt::ControlModifier) ? kModControl : 0u) |
           (modifiers.testFlag(Qt::AltModifier) ? kModAlt : 0u);
}
