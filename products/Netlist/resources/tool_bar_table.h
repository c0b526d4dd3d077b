/// The buttons of the module's toolbar.
#pragma once

#include <span>

#include "ifactory_tools.h"

inline constexpr const char16_t* kToolBarName = u"Netlist Edit";
/// The command whose place the find box fills.
inline constexpr std::uint32_t kFindBoxCommand = 42014;

extern const std::span<const ToolBarEntry> kToolBarTable;
