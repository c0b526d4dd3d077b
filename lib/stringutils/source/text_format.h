/// `printf` conversions into 16-bit text, with typed arguments.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "format_arg.h"

namespace textformat {

/// What one conversion says.
struct Conversion {
    bool isLeft = false;      ///< flag `-`
    bool hasPlus = false;     ///< flag `+`
    bool hasBlank = false;    ///< flag ` `
    bool isAlternate = false; ///< flag `#`
    bool hasZeros = false;    ///< flag `0`
    int width = 0;
    int precision = -1;    ///< below 0: none given
    int integerSize = 0;   ///< bytes that a whole number is cut to; 0 for its own
    bool isNarrow = false; ///< modifier `h`, or a conversion `C` or `S`
    char16_t letter = 0;   ///< of the conversion; 0 when it is none that is known
};

/// Hands out arguments one after the other.
class Arguments {
public:
    explicit Arguments(std::span<const FormatArg> args) : mRest(args) {}
    /// The next one; one of kind kNone when there is none left, which HasMissed notes.
    FormatArg Next();
    bool HasMissed() const { return mHasMissed; }

private:
    std::span<const FormatArg> mRest;
    bool mHasMissed = false;
};

/// Reads a conversion from behind its `%`, and steps over it. A `*` takes an argument.
Conversion TakeConversion(std::u16string_view& format, Arguments& args);

/// Appends one argument as the conversion says.
void Append(const Conversion& conversion, const FormatArg& arg, std::u16string& out);

/// Appends a whole text by its format. False when an argument was missing.
bool AppendAll(std::u16string_view format, std::span<const FormatArg> args, std::u16string& out);

} // namespace textformat
