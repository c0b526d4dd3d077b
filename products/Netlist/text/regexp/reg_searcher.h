/// Finds matches of one program.
#pragma once

#include "reg_backtracker.h"
#include "reg_exp.h"
#include "reg_viability.h"

#include <memory>

/// What a search is for: the match, or only where it starts.
enum class RegWanted : std::uint8_t { Span, Start };

/// Looks for matches the quick way, and the thorough way on subjects on which too many steps of the
/// quick one were in vain. Keeps count of those from call to call, so that those of all calls on
/// one subject together stay linear.
class RegSearcher {
public:
    /// `program` must be valid and outlive the object.
    explicit RegSearcher(const CRegProgram& program);

    void SetLimits(const RegLimits& limits);

    /// The leftmost match in the tail that begins at `tailStart`, which is at most the subject's
    /// length. Where only the start is wanted, the length may be any.
    RegSpan Find(const RegSubject& subject, std::size_t tailStart, RegWanted wanted,
                 const RegGroups& groups = {});
    /// The length of the match at `at`, -1 if there is none. Where only the start is wanted, any
    /// length from 0 on.
    std::ptrdiff_t LengthAt(const RegSubject& subject, std::size_t at, std::size_t tailStart,
                            RegWanted wanted);

    /// Gives back what the thorough way has taken.
    void Release();

    std::uint64_t Steps() const { return m_steps + (m_thorough ? m_thorough->Steps() : 0); }

private:
    bool LacksMustHave(const RegTail& tail);
    const char* NextStart(const RegTail& tail, const char* from) const;
    const char* StartBehind(const RegTail& tail, const char* failed) const;
    RegTry Try(const RegTail& tail, const char* at, RegWanted wanted, const RegGroups& groups);
    void Begin(const RegSubject& subject);
    RegViability& Thorough(const RegSubject& subject);
    RegSpan FindThoroughly(const RegSubject& subject, const RegTail& tail, RegWanted wanted,
                           const RegGroups& groups);

    const CRegProgram& m_program;
    RegLimits m_limits;
    ByteSet m_firsts;           ///< bytes that can begin a match; NUL for an empty one at the end
    int m_onlyFirst = -1;       ///< the one member of `m_firsts`, if it has one alone
    std::uint64_t m_serial = 0; ///< of the subject that `m_waste` is counted on
    std::ptrdiff_t m_waste = 0; ///< steps in vain that are still allowed; 0: the thorough way
    /// The text that matches must contain: where it stands first in that subject from a place on,
    /// its end if nowhere.
    const char* m_mustHaveAt = nullptr;
    const char* m_mustHaveFrom = nullptr;
    std::unique_ptr<RegViability> m_thorough;
    std::uint64_t m_steps = 0;
};
