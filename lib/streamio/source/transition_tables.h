/// The transitions of both grammars, a row a working state and a column a character class. States
/// from 32 on are final. Class Invalid leads to state 32 from everywhere, as does what can't occur.
///
/// Columns: Other, Invalid, LineEnd, EndOfInput, IdentStart, IdentPart, Zero, Digit, Blank, Sign,
/// -, Point, CommentStart, DoubleQuote, SingleQuote, Exponent, HexMark, HexLetter, Backslash,
/// CarriageReturn, Dollar, Delimiter.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "char_classes.h"

namespace io {

struct TransitionRow {
    std::uint8_t state;
    std::array<std::uint8_t, kCharClassCount> next;
};

// clang-format off
/// Comments, blanks, line ends and quoted text are the same in both grammars.
constexpr TransitionRow kCommonRows[] = {
    //     Oth Inv LEn EOI IdS IdP Zer Dig Bla Sig  -  Poi Com DQu SQu Exp HxM HxL BSl CRt Dol Del
    // 1: in a comment
    { 1, {{ 1, 32, 42, 42,  1,  1,  1,  1,  1,  1,  1,  1,  1,  1,  1,  1,  1,  1,  1, 42,  1,  1}}},
    // 2: in white space
    { 2, {{43, 32, 43, 43, 43, 43, 43, 43,  2, 43, 43, 43, 43, 43, 43, 43, 43, 43, 43, 43, 43, 43}}},
    // 3: one symbol character
    { 3, {{35, 32, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35}}},
    // 4: end of line seen
    { 4, {{33, 32, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33}}},
    // 6: just after an opening single quote
    { 6, {{13, 32, 39, 39, 13, 13, 13, 13, 13, 13, 13, 13, 13, 13, 21, 13, 13, 13, 15, 39, 13, 13}}},
    // 7: just after an opening double quote
    { 7, {{14, 32, 40, 40, 14, 14, 14, 14, 14, 14, 14, 14, 14, 22, 14, 14, 14, 14, 16, 40, 14, 14}}},
    // 12: CR seen
    {12, {{33, 32,  4, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33, 33}}},
    // 13: in single-quoted text
    {13, {{13, 32, 39, 39, 13, 13, 13, 13, 13, 13, 13, 13, 13, 13, 21, 13, 13, 13, 15, 39, 13, 13}}},
    // 14: in double-quoted text
    {14, {{14, 32, 40, 40, 14, 14, 14, 14, 14, 14, 14, 14, 14, 22, 14, 14, 14, 14, 16, 40, 14, 14}}},
    // 15: after a backslash in single-quoted text
    {15, {{19, 32, 19, 39, 19, 19, 19, 19, 19, 19, 19, 19, 19, 19, 19, 19, 19, 19, 19, 17, 19, 19}}},
    // 16: after a backslash in double-quoted text
    {16, {{20, 32, 20, 40, 20, 20, 20, 20, 20, 20, 20, 20, 20, 20, 20, 20, 20, 20, 20, 18, 20, 20}}},
    // 17: after backslash and CR in single-quoted text
    {17, {{13, 32,  6, 39, 13, 13, 13, 13, 13, 13, 13, 13, 13, 13, 21, 13, 13, 13, 15, 39, 13, 13}}},
    // 18: after backslash and CR in double-quoted text
    {18, {{14, 32,  7, 40, 14, 14, 14, 14, 14, 14, 14, 14, 14, 22, 14, 14, 14, 14, 16, 40, 14, 14}}},
    // 19: escaped character in single-quoted text
    {19, {{13, 32, 39, 39, 13, 13, 13, 13, 13, 13, 13, 13, 13, 13, 21, 13, 13, 13, 15, 39, 13, 13}}},
    // 20: escaped character in double-quoted text
    {20, {{14, 32, 40, 40, 14, 14, 14, 14, 14, 14, 14, 14, 14, 22, 14, 14, 14, 14, 16, 40, 14, 14}}},
    // 21: after the closing single quote
    {21, {{39, 32, 39, 39, 39, 39, 39, 39, 39, 39, 39, 39, 39, 39, 39, 39, 39, 39, 39, 39, 39, 39}}},
    // 22: after the closing double quote
    {22, {{40, 32, 40, 40, 40, 40, 40, 40, 40, 40, 40, 40, 40, 40, 40, 40, 40, 40, 40, 40, 40, 40}}},
};

/// The token grammar's own.
constexpr TransitionRow kTokenRows[] = {
    //     Oth Inv LEn EOI IdS IdP Zer Dig Bla Sig  -  Poi Com DQu SQu Exp HxM HxL BSl CRt Dol Del
    // 0: start
    { 0, {{ 3, 32,  4, 34,  5, 32,  8, 11,  2,  9, 32, 10,  1,  7,  6, 32, 32, 32,  3, 12, 32, 32}}},
    // 5: in an identifier
    { 5, {{36, 32, 36, 36, 36,  5, 36, 36, 36, 36, 36, 36, 36, 36, 36, 36, 36, 36, 36, 36, 36, 36}}},
    // 8: after a first 0
    { 8, {{38, 32, 38, 38, 38, 38, 38, 11, 38, 38, 38, 28, 38, 38, 38, 29, 26, 38, 38, 38, 38, 38}}},
    // 9: after a sign
    { 9, {{35, 32, 35, 35, 35, 35, 35, 11, 35, 35, 35, 25, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35}}},
    // 10: after a first point
    {10, {{35, 32, 35, 35, 35, 35, 35, 28, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35, 35}}},
    // 11: integer digits
    {11, {{38, 32, 38, 38, 38, 38, 38, 11, 38, 38, 38, 28, 38, 38, 38, 29, 38, 38, 38, 38, 38, 38}}},
    // 23: in CData
    {23, {{23, 32, 23, 41, 23, 23, 23, 23, 23, 23, 23, 23, 23, 23, 23, 23, 23, 23, 23, 23, 24, 23}}},
    // 24: matching the CData end word
    {24, {{41, 32, 41, 41, 41, 24, 41, 41, 41, 41, 41, 41, 41, 41, 41, 41, 41, 41, 41, 41, 41, 41}}},
    // 25: after sign and point
    {25, {{44, 32, 44, 44, 44, 44, 44, 28, 44, 44, 44, 44, 44, 44, 44, 44, 44, 44, 44, 44, 44, 44}}},
    // 26: after 0x
    {26, {{47, 32, 47, 47, 47, 47, 47, 27, 47, 47, 47, 47, 47, 47, 47, 47, 47, 27, 47, 47, 47, 47}}},
    // 27: hex digits
    {27, {{48, 32, 48, 48, 48, 48, 48, 27, 48, 48, 48, 48, 48, 48, 48, 48, 48, 27, 48, 48, 48, 48}}},
    // 28: fraction digits
    {28, {{37, 32, 37, 37, 37, 37, 37, 28, 37, 37, 37, 37, 37, 37, 37, 29, 37, 37, 37, 37, 37, 37}}},
    // 29: after an exponent letter
    {29, {{45, 32, 45, 45, 45, 45, 45, 30, 45, 31, 45, 45, 45, 45, 45, 45, 45, 45, 45, 45, 45, 45}}},
    // 30: exponent digits
    {30, {{37, 32, 37, 37, 37, 37, 37, 30, 37, 37, 37, 37, 37, 37, 37, 37, 37, 37, 37, 37, 37, 37}}},
    // 31: after the exponent's sign
    {31, {{46, 32, 46, 46, 46, 46, 46, 30, 46, 46, 46, 46, 46, 46, 46, 46, 46, 46, 46, 46, 46, 46}}},
};

/// The delimiter grammar's own; state 5 is any word. States 8, 23, 24, 26 and 27 are not used.
constexpr TransitionRow kDelimiterRows[] = {
    //     Oth Inv LEn EOI IdS IdP Zer Dig Bla Sig  -  Poi Com DQu SQu Exp HxM HxL BSl CRt Dol Del
    // 0: start
    { 0, {{ 5, 32,  4, 34, 32, 32, 11, 11,  2,  9, 32, 10,  1,  7,  6,  5, 32, 32, 32, 12, 32,  3}}},
    // 5: in a word
    { 5, {{ 5, 32, 36, 36, 36, 36, 36,  5, 36,  5, 36,  5, 36, 36, 36,  5, 36, 36, 36, 36, 36, 36}}},
    // 9: after a sign
    { 9, {{ 5, 32, 35, 35, 35, 35, 35, 11, 35,  5, 35, 25, 35, 35, 35,  5, 35, 35, 35, 35, 35, 35}}},
    // 10: after a first point
    {10, {{ 5, 32, 35, 35, 35, 35, 35, 28, 35,  5, 35,  5, 35, 35, 35,  5, 35, 35, 35, 35, 35, 35}}},
    // 11: integer digits
    {11, {{ 5, 32, 38, 38, 38, 38, 38, 11, 38,  5, 38, 28, 38, 38, 38, 29, 38, 38, 38, 38, 38, 38}}},
    // 25: after sign and point
    {25, {{ 5, 32, 36, 36, 36, 36, 36, 28, 36,  5, 36,  5, 36, 36, 36,  5, 36, 36, 36, 36, 36, 36}}},
    // 28: fraction digits
    {28, {{ 5, 32, 37, 37, 37, 37, 37, 28, 37,  5, 37,  5, 37, 37, 37, 29, 37, 37, 37, 37, 37, 37}}},
    // 29: after an exponent letter
    {29, {{ 5, 32, 36, 36, 36, 36, 36, 30, 36, 31, 36,  5, 36, 36, 36,  5, 36, 36, 36, 36, 36, 36}}},
    // 30: exponent digits
    {30, {{ 5, 32, 37, 37, 37, 37, 37, 30, 37,  5, 37,  5, 37, 37, 37,  5, 37, 37, 37, 37, 37, 37}}},
    // 31: after the exponent's sign
    {31, {{ 5, 32, 36, 36, 36, 36, 36, 30, 36,  5, 36,  5, 36, 36, 36,  5, 36, 36, 36, 36, 36, 36}}},
};
// clang-format on

} // namespace io
