/// What can be wrong in a block stream.
#pragma once

#include <string_view>

#include "astring.h"
#include "quorel_export.h"

namespace io {

/// All errors, in order: code, name, message.
#define IO_READ_ERRORS(row)                                                                        \
    row(0, Ok, "ok") row(1, Read, "read error") row(2, Write, "write error")                       \
        row(3, BeginEnd, "begin/end block syntax invalid") row(4, Item, "invalid block item")      \
            row(5, Value, "value is not valid") row(6, Equals, "'=' expected")                     \
                row(7, ParenOrEquals, "expected a '(' or a '='")                                   \
                    row(8, Open, "'(' or '[' expected") row(9, Close, "')' or ']' expected")       \
                        row(10, CloseOrComma, "expected a ')', ']' or a ','")                      \
                            row(11, Identifier, "identifier expected")                             \
                                row(12, VectorSize, "invalid vector size")

#define IO_READ_ERROR_ENUMERATOR(code, name, message) k##name = code,
enum class ReadError : int { IO_READ_ERRORS(IO_READ_ERROR_ENUMERATOR) };
#undef IO_READ_ERROR_ENUMERATOR

/// The message of an error; empty for a code outside the list.
QUOREL_API std::string_view GetReadErrorMessage(ReadError code) noexcept;

/// An error and the line of the stream where it was found. Thrown by value by the block classes.
class QUOREL_API XStreamioError {
public:
    XStreamioError(ReadError code, int line) noexcept : mCode(code), mLine(line) {}

    ReadError GetCode() const noexcept { return mCode; }
    int GetLine() const noexcept { return mLine; }
    AString GetMessage() const;

private:
    ReadError mCode;
    int mLine;
};

} // namespace io
