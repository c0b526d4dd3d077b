/// The text in which expressions look for matches.
#pragma once

#include "quorel_export.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// One text that many expressions are to be tried on, a line say.
///
/// The text isn't copied: it must live and stay unchanged while the subject is used. It ends at its
/// first NUL. Each subject made has a serial number of its own, by which an expression knows that
/// what it learnt in an earlier call still holds; copies share it.
///
/// So what tries in vain cost is linear in the subject for all calls of an expression together. A
/// call takes, besides, time for the characters that it passes: from the tail's start to the
/// match's end, or to the subject's end if there is no match. Scans from match to match are linear,
/// then; tails that begin inside what an earlier call passed are paid for again. Where an
/// expression has turned to the thorough way, a call may read the rest of its first and last block
/// (RegLimits) once more.
class RegSubject {
public:
    /// Ends `text` at its first NUL. Costs one pass of a fast byte search.
    QUOREL_API explicit RegSubject(std::string_view text);

    const char* Begin() const { return m_begin; }
    const char* End() const { return m_begin + m_length; }
    std::size_t Length() const { return m_length; }
    std::string_view Text() const { return {m_begin, m_length}; }
    std::uint64_t Serial() const { return m_serial; }

private:
    const char* m_begin;
    std::size_t m_length;
    std::uint64_t m_serial;
};

/// Where a match stands in its subject.
struct RegSpan {
    std::ptrdiff_t start = -1; ///< offset of the first character, -1 if there is no match
    std::ptrdiff_t length = 0; ///< number of characters, possibly 0

    bool Found() const { return start >= 0; }
};
