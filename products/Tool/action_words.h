/// The words of an action, by their kinds.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "edit_actions.h"

/// Reads the words behind an action's name.
/// @param usage of the action @param words with the name in front @param keys as for ReadScript
/// Words that don't fit it are ExitCode::no.
ActionArguments ReadArguments(std::string_view usage, std::span<const std::string> words,
                              std::span<const Accelerator> keys);
