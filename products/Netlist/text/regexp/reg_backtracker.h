/// The quick way to match: backtracking within narrow bounds.
#pragma once

#include "reg_program.h"

#include <cstddef>
#include <cstdint>

/// The part of a subject that a try may look at. "^" holds at `begin`.
struct RegTail {
    const char* begin;
    const char* end;

    /// The byte at `at`, 0 at the end.
    unsigned char At(const char* at) const {
        return at < end ? static_cast<unsigned char>(*at) : std::uint8_t{0};
    }
};

/// Where the groups of a match begin and end, by number.
using RegPointers = std::array<const char*, CRegProgram::kPointers>;
struct RegGroups {
    RegPointers* starts = nullptr;
    RegPointers* ends = nullptr;
};

/// Whether an assertion (BOL, EOL, WORDA, WORDZ) holds at `at`.
bool RegHolds(RegOp op, const RegTail& tail, const char* at);

/// The end of the longest run of a STAR's or PLUS's operand from `at` on.
const char* RegRunEnd(const RegCode& code, const RegNode& loop, const RegTail& tail,
                      const char* at);

/// How a try ended.
struct RegTry {
    enum Outcome : std::uint8_t { Failed, Matched, GaveUp } outcome;
    const char* end;     ///< of the match
    std::ptrdiff_t left; ///< of the allowance, negative where the try gave up for that
};

/// Bounds of a try: steps, and choices open at one time.
struct RegAllowance {
    std::ptrdiff_t steps;
    std::size_t depth;
};

inline constexpr std::size_t kMaxRegDepth = 256;

/// Tries the program at `at`. Groups are stored if `groups` has pointers, and are undefined unless
/// it matched. Allocates nothing, doesn't recurse.
RegTry TryRegProgram(const RegCode& code, const RegTail& tail, const char* at,
                     const RegAllowance& allowance, const RegGroups& groups = {});
