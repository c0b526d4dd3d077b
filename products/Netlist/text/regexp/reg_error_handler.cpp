#include "reg_error_handler.h"

#include <array>
#include <cstddef>

namespace {

/// The texts by code, from 1 on. 7 to 9 belong to a substitution that the engine doesn't offer, 15,
/// 20 and 23 to states that the parser can't reach.
constexpr std::array kTexts = {
    "NULL argument to regexec",
    "corrupted regexp",
    "regexp corruption",
    "corrupted pointers",
    "internal error: bad call of regrepeat",
    "corrupted opcode",
    "NULL parm to regsub",
    "damaged regexp fed to regsub",
    "damaged match string",
    "NULL argument to regcomp",
    "regexp too big",
    "too many ()",
    "unterminated ()",
    "unmatched ()",
    "internal error: junk on end",
    "*+ operand could be empty",
    "nested *?+",
    "invalid [] range",
    "unmatched []",
    "internal error: \\0|) unexpected",
    "?+* follows nothing",
    "trailing \\",
    "internal error: strcspn 0",
    "NULL regexp",
};

} // namespace

const char* CRegErrorHandler::ErrorText(int code) {
    const auto row = static_cast<std::size_t>(code) - 1;
    return row < kTexts.size() ? kTexts[row] : "Unknown error";
}
