/// Short ways between AString and UTF-8, for rows of cases.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "astring.h"

inline AString S(std::string_view utf8) {
    return AString::FromMultiByte(AString::kUtf8, utf8);
}
inline std::string U8(const AString& text) {
    return text.ToCString(AString::kUtf8);
}
/// Pieces, one behind the other with a bar behind each.
inline std::string Joined(const std::vector<AString>& pieces) {
    std::string joined;
    for (const AString& piece : pieces)
        joined += U8(piece) + "|";
    return joined;
}
