/// Tables that both grammars share besides the transitions.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "base_grammar.h"
#include "char_class.h"

namespace io {

/// Flags of all characters below 256 that have a class.
struct FlagsOfClass {
    chars::Class charClass;
    std::uint32_t flags;
};
/// Flags of single characters, on top of those by class.
struct FlagsOfChars {
    std::u16string_view characters;
    std::uint32_t flags;
};

/// A flag that decides a class.
struct ClassOfFlag {
    std::uint32_t flag;
    CharClass charClass;
};

/// Finds the class of the first row whose flag is among `flags`; without one, false and Other.
inline bool FindClass(std::uint32_t flags, std::span<const ClassOfFlag> rows,
                      CharClass& charClass) {
    for (const ClassOfFlag& row : rows) {
        if (flags & row.flag) {
            charClass = row.charClass;
            return true;
        }
    }
    charClass = CharClass::Other;
    return false;
}

/// The kind that a scan which stopped in final state 32 + i reports.
inline constexpr std::array<TokenKind, kStateCount - kFirstFinalState> kFinalTokens{
    TokenKind::Error,            // 32
    TokenKind::Eol,              // 33
    TokenKind::Eof,              // 34
    TokenKind::Symbol,           // 35
    TokenKind::Keyword,          // 36
    TokenKind::Double,           // 37
    TokenKind::Int,              // 38
    TokenKind::SingleQuotedText, // 39
    TokenKind::DoubleQuotedText, // 40
    TokenKind::CData,            // 41
    TokenKind::Comment,          // 42
    TokenKind::WhiteSpace,       // 43
    TokenKind::Symbol,           // 44
    TokenKind::Double,           // 45
    TokenKind::Double,           // 46
    TokenKind::Short,            // 47
    TokenKind::Hex               // 48
};

/// Groups of states; what is not named belongs to group 0. Classify asks for group 4 alone.
inline constexpr std::uint8_t kInQuotes = 4;
inline constexpr std::array<std::uint8_t, kStateCount> kStateKinds{
    //  0 to 7, 8 to 15, 16 to 23, 24 to 31; 32 and above: 0
    0, 1, 2, 0, 0, 3, 4, 4, //
    6, 6, 6, 6, 0, 4, 4, 4, //
    4, 4, 4, 4, 4, 4, 4, 5, //
    5, 6, 7, 7, 6, 6, 6, 6};

/// The handler of each state of the token grammar.
inline constexpr std::array<StateHandler, kStateCount> kTokenHandlers{
    StateHandler::Nothing,       //  0 start
    StateHandler::KeepIf,        //  1 in a comment
    StateHandler::KeepIf,        //  2 in white space
    StateHandler::KeepIf,        //  3 one symbol character
    StateHandler::Skip,          //  4 end of line seen
    StateHandler::Word,          //  5 in an identifier
    StateHandler::Skip,          //  6 just after an opening single quote
    StateHandler::Skip,          //  7 just after an opening double quote
    StateHandler::Append,        //  8 after a first 0
    StateHandler::Append,        //  9 after a sign
    StateHandler::Append,        // 10 after a first point
    StateHandler::Append,        // 11 integer digits
    StateHandler::Skip,          // 12 CR seen
    StateHandler::Append,        // 13 in single-quoted text
    StateHandler::Append,        // 14 in double-quoted text
    StateHandler::Skip,          // 15 after a backslash in single-quoted text
    StateHandler::Skip,          // 16 after a backslash in double-quoted text
    StateHandler::Newline,       // 17 after backslash and CR in single-quoted text
    StateHandler::Newline,       // 18 after backslash and CR in double-quoted text
    StateHandler::Escape,        // 19 escaped character in single-quoted text
    StateHandler::Escape,        // 20 escaped character in double-quoted text
    StateHandler::Skip,          // 21 after the closing single quote
    StateHandler::Skip,          // 22 after the closing double quote
    StateHandler::Append,        // 23 in CData
    StateHandler::EndMarker,     // 24 matching the CData end word
    StateHandler::Append,        // 25 after sign and point
    StateHandler::Append,        // 26 after 0x
    StateHandler::HexDigit,      // 27 hex digits
    StateHandler::Append,        // 28 fraction digits
    StateHandler::Append,        // 29 after an exponent letter
    StateHandler::Append,        // 30 exponent digits
    StateHandler::Append,        // 31 after the exponent's sign
    StateHandler::Invalid,       // 32
    StateHandler::Eol,           // 33
    StateHandler::Eof,           // 34
    StateHandler::Symbol,        // 35
    StateHandler::Keyword,       // 36
    StateHandler::Real,          // 37
    StateHandler::Integer,       // 38
    StateHandler::SingleQuoted,  // 39
    StateHandler::DoubleQuoted,  // 40
    StateHandler::CDataEnd,      // 41
    StateHandler::Comment,       // 42
    StateHandler::WhiteSpace,    // 43
    StateHandler::SymbolLessOne, // 44
    StateHandler::RealLessOne,   // 45
    StateHandler::RealLessTwo,   // 46
    StateHandler::ShortLessOne,  // 47
    StateHandler::Hex            // 48
};

/// Where the delimiter grammar differs: what looks like a number may turn out to be a word, and
/// what it doesn't use is invalid.
struct HandlerOfState {
    std::uint8_t state;
    StateHandler handler;
};
inline constexpr HandlerOfState kDelimiterHandlers[] = {
    {8, StateHandler::Word},     {9, StateHandler::Word},
    {10, StateHandler::Word},    {11, StateHandler::Word},
    {23, StateHandler::Invalid}, {24, StateHandler::Invalid},
    {25, StateHandler::Word},    {26, StateHandler::Invalid},
    {27, StateHandler::Invalid}, {28, StateHandler::Word},
    {29, StateHandler::Word},    {30, StateHandler::Word},
    {31, StateHandler::Word},    {36, StateHandler::WordOrDelimiter},
    {41, StateHandler::Invalid}, {44, StateHandler::Invalid},
    {45, StateHandler::Invalid}, {46, StateHandler::Invalid},
    {47, StateHandler::Invalid}, {48, StateHandler::Invalid},
};

} // namespace io
