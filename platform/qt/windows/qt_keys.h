/// Keys and modifiers of Qt as the framework's.
#pragma once

#include <Qt>

/// The KeyCode of a key, 0 for one that has none.
unsigned KeyCodeOf(int key);
/// The KeyModifiers that are down.
unsigned ModifiersOf(Qt::KeyboardModifiers modifiers);
