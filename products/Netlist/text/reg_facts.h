/// What can be said of an expression's matches before any subject is seen.
#pragma once

#include "byte_set.h"

#include <string>
#include <vector>

/// Facts of one valid expression, for those who scan a line once for many expressions.
///
/// The sets may hold bytes that never occur in their place, but they lack none that can. NUL is
/// never in a set, since no subject holds it.
struct RegFacts {
    ByteSet firstBytes;            ///< bytes that can begin a match that isn't empty
    ByteSet secondBytes;           ///< bytes that can stand at the second place of a match
    ByteSet alphabet;              ///< bytes that can stand anywhere in a match
    bool canBeEmpty = false;       ///< a match may be empty
    bool canBeOneByte = false;     ///< a match may be of length 1
    bool hasBol = false;           ///< "^" occurs: the result depends on where the tail begins
    bool hasWordStart = false;     ///< `\<` occurs: so it does for a match at the tail's beginning
    bool looksBehindMatch = false; ///< the result may depend on the character behind the match
    bool matchesAnyEnd = false;    ///< matches, with nothing, at the end of every subject

    /// If every match is one character from each of these sets in turn and there is no other
    /// condition: those sets. Empty otherwise. The expression matches where, and only where, the
    /// sequence fits.
    std::vector<ByteSet> fixedSequence;

    /// The one text that the expression matches, if its fixed sequence leaves no choice; else
    /// empty.
    std::string literal;
};
