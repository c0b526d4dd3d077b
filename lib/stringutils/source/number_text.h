/// Numbers out of text, as the C library reads them in its own locale.
#pragma once

#include <optional>
#include <string_view>

namespace numbertext {

/// The whole text as a number, white space around it aside; see AString::ToDouble and ToLong.
std::optional<double> ParseReal(std::u16string_view text);
std::optional<long> ParseInteger(std::u16string_view text, int base);

} // namespace numbertext
