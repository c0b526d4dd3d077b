/// JSON as the command line writes and reads it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "astring.h"

/// Members stand in the order in which they were added.
using Json = nlohmann::ordered_json;

/// 8-bit text: a character U+0000 to U+00FF for each byte.
std::string JsonFromBytes(std::string_view bytes);
/// The bytes of such a text, which is well-formed UTF-8; nothing when a character is above U+00FF.
std::optional<std::string> BytesFromJson(std::string_view text);
/// 16-bit text as itself; a lone surrogate becomes U+FFFD.
std::string JsonFromText(const AString& text);

/// One line without its end. Strings that aren't UTF-8, such as paths, are replaced where they
/// break it.
std::string DumpJson(const Json& json);

/// How large a JSON text is, without reading it: no less than what a reader of it would make.
struct JsonShape {
    int m_Depth = 0;          ///< of nested arrays and objects
    std::size_t m_Keys = 0;   ///< of all objects
    std::size_t m_Values = 0; ///< in all arrays and objects
};
/// Cost: the text once, no stack.
JsonShape MeasureJson(std::string_view text);
