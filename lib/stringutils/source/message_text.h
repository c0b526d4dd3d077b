/// Messages with numbered inserts.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "astring.h"
#include "format_arg.h"

namespace messagetext {

/// How a message is to be laid out, see AString::FormatMessageText.
struct Layout {
    bool ignoresInserts = false;
    unsigned width = 0; ///< of a line; 0 keeps the message's line breaks, 255 has no width
};

/// A result has at most so many units, less one.
inline constexpr std::size_t kCapacity = 4096;

/// Forms the text in `out`, which is undefined unless the result is kMessageDone.
AString::MessageError Form(std::u16string_view message, std::span<const FormatArg> args,
                           const Layout& layout, std::u16string& out);

} // namespace messagetext
