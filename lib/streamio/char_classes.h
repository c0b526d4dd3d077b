/// What a grammar knows of single characters: flags, and the classes that the automaton runs over.
#pragma once

#include <cstdint>

namespace io {

/// Flags of a character; the grammars' tables say which character has which.
enum CharFlag : std::uint32_t {
    kCharEndOfLine = 0x00000002,      ///< ends a line: NUL and LF
    kCharIdentStart = 0x00000008,     ///< may begin an identifier
    kCharIdentPart = 0x00000010,      ///< may continue an identifier
    kCharZero = 0x00000020,           ///< the digit 0
    kCharDigit = 0x00000040,          ///< a decimal digit
    kCharBlank = 0x00000080,          ///< white space
    kCharSign = 0x00000100,           ///< plus or minus sign
    kCharMinus = 0x00000200,          ///< minus sign
    kCharPoint = 0x00000400,          ///< decimal point
    kCharComment = 0x00000800,        ///< begins a comment
    kCharDoubleQuote = 0x00001000,    ///< double quote
    kCharSingleQuote = 0x00002000,    ///< single quote
    kCharExponent = 0x00004000,       ///< e or E
    kCharHexMark = 0x00008000,        ///< lower-case x only
    kCharHexLetter = 0x00010000,      ///< a to f, lower case only
    kCharBackslash = 0x00020000,      ///< backslash
    kCharCarriageReturn = 0x00040000, ///< CR
    kCharDollar = 0x00080000,         ///< dollar sign
    kCharDelimiter = 0x00100000       ///< a delimiter of the delimiter grammar
};

/// One more than the greatest character.
inline constexpr unsigned kCharMax = 0x10000;
/// Stands for the end of input where a character is due.
inline constexpr int kEndOfInput = 0xFFFF;

/// Columns of the transition tables. Which class a character has depends on the state too.
enum class CharClass : std::uint8_t {
    Other,
    Invalid, ///< no 16-bit character
    LineEnd,
    EndOfInput,
    IdentStart,
    IdentPart,
    Zero,
    Digit,
    Blank,
    Sign,
    Unused, ///< never produced
    Point,
    CommentStart,
    DoubleQuote,
    SingleQuote,
    Exponent,
    HexMark,
    HexLetter,
    Backslash,
    CarriageReturn,
    Dollar,
    Delimiter
};
inline constexpr unsigned kCharClassCount = 22;

} // namespace io
