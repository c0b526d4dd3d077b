/// The names of a project file's items, and the writing of its texts.
#pragma once

#include <string>
#include <string_view>

#include "project.h"

/// The block in which an item stands that can't stand by itself: its bytes as the lines of a text
/// of characters U+0000 to U+00FF.
inline constexpr std::u16string_view kKeptName = u"Kept";

/// Whether a text reads back from quotes; else it is written as the vector of its units.
bool IsQuotable(std::u16string_view text);

/// Appends a project as the bytes of its file.
void AppendProject(const Project& project, std::string& out);
