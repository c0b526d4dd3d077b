#include "json_text.h"

#include <algorithm>

namespace {

/// The lead bytes of U+0080 to U+00BF and U+00C0 to U+00FF in UTF-8.
constexpr unsigned char kFirstLead = 0xC2, kSecondLead = 0xC3;

unsigned char Byte(char c) {
    return static_cast<unsigned char>(c);
}

} // namespace

std::string JsonFromBytes(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        if (Byte(c) >= 0x80) {
            text.push_back(static_cast<char>(Byte(c) < 0xC0 ? kFirstLead : kSecondLead));
            text.push_back(static_cast<char>(0x80 | (Byte(c) & 0x3F)));
        } else {
            text.push_back(c);
        }
    }
    return text;
}

std::optional<std::string> BytesFromJson(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const unsigned char lead = Byte(text[i]);
        if (lead < 0x80) {
            bytes.push_back(text[i]);
            continue;
        }
        if (lead > kSecondLead || ++i == text.size())
            return std::nullopt;
        bytes.push_back(
            static_cast<char>((lead == kSecondLead ? 0xC0 : 0x80) | (Byte(text[i]) & 0x3F)));
    }
    return bytes;
}

std::string JsonFromText(const AString& text) {
    return text.ToCString(AString::kUtf8);
}

std::string DumpJson(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

JsonShape MeasureJson(std::string_view text) {
    JsonShape shape;
    int open = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"')
            inString = !inString;
        else if (inString)
            i += c == '\\'; // what is escaped
        else if (c == ']' || c == '}')
            --open;
        else if (c == '[' || c == '{')
            shape.m_Depth = std::max(shape.m_Depth, ++open);
        shape.m_Keys += !inString && c == ':';
        shape.m_Values += !inString && (c == ',' || c == '[' || c == '{');
    }
    return shape;
}
