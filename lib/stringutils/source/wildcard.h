/// Wildcard matching over views.
#pragma once

#include <string_view>
#include <vector>

class AString;

namespace wildcard {

/// Matches the whole text, as AString::Match says. `captures` may be null; it changes on a match
/// alone. Neither text nor pattern is cut at a zero.
bool Match(std::u16string_view text, std::u16string_view pattern, bool noCase, bool greedy,
           std::vector<AString>* captures);

} // namespace wildcard
