/// The module's dialogs, as constant tables.
#pragma once

#include <cstddef>

#include "resources.h"

inline constexpr std::size_t kModuleDialogCount = 5;
extern const DialogResource kModuleDialogs[kModuleDialogCount];
