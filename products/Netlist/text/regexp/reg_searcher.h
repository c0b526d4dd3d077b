/// Finds matches of one program.
#pragma once

#include "reg_backtracker.h"
#include "reg_exp.h"
#include "reg_viability.h"

#include <memory>

/// Looks for matches the quick way, and the thorough way on subjects on which too many steps of the
/// quick one were in vain. Keeps count of those from call to call, so that all calls on one subject
/// together stay linear.
class RegSearcher {
public:
    /// `program` must be valid and outlive the object.
    explicit RegSearcher(const CRegProgram& program);

    void SetLimits(const RegLimits& limits);

    /// The leftmost match in the tail that begins at `tailStart`, which is at most the subject's
    /// length.
    RegSpan Find(const RegSubject& subject, std::size_t tailStart, const RegGroups& groups);
    /// The length of the match at `at`, -1 if there is none.
    std::ptrdiff_t LengthAt(const RegSubject& subject, std::size_t at, std::size_t tailStart);

    std::uint64_t Steps() const { return steps_ + (thorough_ ? thorough_->Steps() : 0); }

private:
    bool LacksMustHave(const RegTail& tail) const;
    const char* NextStart(const RegTail& tail, const char* from) const;
    const char* StartBehind(const RegTail& tail, const char* failed) const;
    RegTry Try(const RegTail& tail, const char* at, const RegGroups& groups);
    void Begin(const RegSubject& subject);
    RegViability& Thorough(const RegSubject& subject);
    RegSpan FindThoroughly(const RegSubject& subject, const RegTail& tail, const RegGroups& groups);

    const CRegProgram& program_;
    RegLimits limits_;
    ByteSet firsts_;           ///< bytes that can begin a match; NUL for an empty one at the end
    int onlyFirst_ = -1;       ///< the one member of `firsts_`, if it has one alone
    std::uint64_t serial_ = 0; ///< of the subject that `waste_` is counted on
    std::ptrdiff_t waste_ = 0; ///< steps in vain that are still allowed; 0: the thorough way
    std::unique_ptr<RegViability> thorough_;
    std::uint64_t steps_ = 0;
};
