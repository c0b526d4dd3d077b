/// The rules of a profile file's lines, shared by reading and writing.
#pragma once

#include <string_view>

namespace sys {

struct ProfileLine {
    enum class Kind {
        kOther,   ///< blank, a comment, or without a meaning
        kSection, ///< "[name]"
        kKey      ///< "name=value"
    };
    Kind kind = Kind::kOther;
    std::string_view name;
    std::string_view value; ///< without its pair of quotes, cut
};

/// The text without a UTF-8 byte order mark in front.
std::string_view SkipByteOrderMark(std::string_view text);

/// Takes the next line off `rest`, with its end, and gives it without; CR LF is one end.
std::string_view TakeLine(std::string_view& rest);

/// Reads a line. Its parts lie in `line`.
ProfileLine ReadProfileLine(std::string_view line);

/// Order of names by their bytes without the case of ASCII letters: below, equal to or above 0.
int CompareNames(std::string_view left, std::string_view right);

/// The lower case of an ASCII letter, any other byte itself.
constexpr unsigned char LowerByte(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return value >= 'A' && value <= 'Z' ? static_cast<unsigned char>(value + ('a' - 'A')) : value;
}

} // namespace sys
