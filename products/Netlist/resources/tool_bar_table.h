/// The buttons of the module's toolbar.
#pragma once

#include "tool_bar_entry.h"

inline constexpr const char16_t* kToolBarName = u"Netlist Edit";
/// The command whose place the find box fills.
inline constexpr std::uint32_t kFindBoxCommand = 42014;
/// Visible, with a vertical scroll bar, a drop-down list that holds strings.
inline constexpr std::uint32_t kFindBoxStyle = 0x10200202;
/// In pixels, the height with the list open.
inline constexpr int kFindBoxWidth = 120;
inline constexpr int kFindBoxHeight = 100;

extern const ToolBarTable kToolBarTable;
