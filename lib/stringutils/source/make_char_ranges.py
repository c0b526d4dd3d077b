#!/usr/bin/env python3
"""Writes char_ranges.h, the table of character classes, to standard output.

It comes from Python's copy of the Unicode character database, which must be the version named here,
so that the table stays as it is until someone decides on another one.
"""
import sys
import unicodedata

VERSION = "14.0.0"
WHITE_SPACE = {*range(0x09, 0x0E), 0x20, 0x85, 0xA0, 0x1680, *range(0x2000, 0x200B), 0x2028, 0x2029,
               0x202F, 0x205F, 0x3000}
CATEGORIES = {"Lu": "Upper", "Ll": "Lower", "Lt": "Alpha", "Lm": "Alpha", "Lo": "Alpha",
              "Cc": "Control"}

HEAD = """#pragma once

namespace chars::detail {

enum class RangeKind : unsigned char {
    None,         ///< of no class, but with a lower case form
    Space,        ///< white space that is no control character
    SpaceControl, ///< white space that is one
    Control,      ///< any other control character
    Digit,        ///< `0` to `9`
    Alpha,        ///< a letter of neither case
    Lower,        ///< a lower case letter
    Upper,        ///< an upper case letter
    Pairs         ///< an upper case letter, its lower case form, and so on
};

/// The units from `first` to `last`. The lower case form of each, but for the second ones of pairs,
/// is `delta` further on.
struct CharRange {
    char16_t first, last;
    RangeKind kind;
    int delta;
};

using enum RangeKind;
// clang-format off
inline constexpr CharRange kCharRanges[] = {"""


def class_of(code):
    if code in WHITE_SPACE:
        return "SpaceControl" if unicodedata.category(chr(code)) == "Cc" else "Space"
    if 0x30 <= code <= 0x39:
        return "Digit"
    return CATEGORIES.get(unicodedata.category(chr(code)), "None")


def delta_of(code):
    """How far the simple lower case form is from the character."""
    lower = chr(code).lower()
    # The one full mapping that isn't the simple one: capital I with a dot.
    return (0x69 if code == 0x130 else ord(lower)) - code


def runs():
    """[first, last, class, delta] over equal neighbours."""
    rows = []
    for code in range(0x10000):
        row = [code, code, class_of(code), delta_of(code)]
        if rows and rows[-1][1] == code - 1 and rows[-1][2:] == row[2:]:
            rows[-1][1] = code
        elif row[2:] != ["None", 0]:
            rows.append(row)
    return rows


def with_pairs(rows):
    """Joins runs of upper and lower case neighbours into one row of class Pairs."""
    joined = []
    for upper, lower in zip(rows, rows[1:] + [None]):
        if joined and upper[0] <= joined[-1][1]:
            continue
        is_pair = (lower and upper[0] == upper[1] and lower[0] == lower[1] == upper[0] + 1
                   and upper[2:] == ["Upper", 1] and lower[2:] == ["Lower", 0])
        if not is_pair:
            joined.append(upper)
        elif joined and joined[-1][2] == "Pairs" and joined[-1][1] == upper[0] - 1:
            joined[-1][1] = lower[0]
        else:
            joined.append([upper[0], lower[0], "Pairs", 1])
    return joined


def main():
    if unicodedata.unidata_version != VERSION:
        sys.exit(f"make_char_ranges.py: needs Unicode {VERSION}")
    print(f"/// Classes and lower case forms of 16-bit units, after Unicode {VERSION}. Made by")
    print("/// make_char_ranges.py. A unit in no range has no class and no other form.")
    print(HEAD)
    line = ""
    for first, last, kind, delta in with_pairs(runs()):
        cell = f"{{0x{first:04X}, 0x{last:04X}, {kind}, {delta}}}, "
        if len(line) + len(cell) > 97:
            print(f"    {line.rstrip()}")
            line = ""
        line += cell
    print(f"    {line.rstrip()}\n}};\n// clang-format on\n\n}} // namespace chars::detail")


main()
