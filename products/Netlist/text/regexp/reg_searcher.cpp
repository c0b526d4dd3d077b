#include "reg_searcher.h"

#include <algorithm>
#include <cstring>

namespace {

/// Steps that a try may take without counting as waste, alone and for each character that it
/// matched.
constexpr std::ptrdiff_t kFreeSteps = 4;
constexpr std::ptrdiff_t kFreeStepsPerByte = 4;

} // namespace

RegSearcher::RegSearcher(const CRegProgram& program)
    : program_(program), firsts_(program.Program.First(program.Program.Entry())) {
    const unsigned first = firsts_.Next(0);
    if (first < 256 && firsts_.Next(first + 1) == 256) {
        onlyFirst_ = static_cast<int>(first);
    }
}

void RegSearcher::SetLimits(const RegLimits& limits) {
    limits_ = limits;
    serial_ = 0;
    thorough_.reset();
}

void RegSearcher::Begin(const RegSubject& subject) {
    if (serial_ != subject.Serial()) {
        serial_ = subject.Serial();
        const std::size_t waste = limits_.waste == 0 ? 0 : limits_.waste + subject.Length() / 4;
        waste_ = static_cast<std::ptrdiff_t>(waste);
    }
}

RegViability& RegSearcher::Thorough(const RegSubject& subject) {
    if (!thorough_) {
        thorough_ = std::make_unique<RegViability>(program_.Program, limits_);
    }
    thorough_->Begin(subject);
    return *thorough_;
}

RegTry RegSearcher::Try(const RegTail& tail, const char* at, const RegGroups& groups) {
    const RegAllowance allowance{waste_ + kFreeSteps, limits_.depth};
    const RegTry tried = TryRegProgram(program_.Program, tail, at, allowance, groups);
    const std::ptrdiff_t taken = allowance.steps - tried.left;
    steps_ += static_cast<std::uint64_t>(taken);
    if (tried.outcome == RegTry::GaveUp) {
        waste_ = 0;
    } else {
        const std::ptrdiff_t free = kFreeSteps + kFreeStepsPerByte * (tried.end - at);
        waste_ = std::max<std::ptrdiff_t>(waste_ - std::max<std::ptrdiff_t>(taken - free, 0), 0);
    }
    return tried;
}

bool RegSearcher::LacksMustHave(const RegTail& tail) const {
    const auto length = static_cast<std::size_t>(tail.end - tail.begin);
    return program_.MustLength != 0 &&
           (length < program_.MustLength ||
            memmem(tail.begin, length, program_.MustHave, program_.MustLength) == nullptr);
}

const char* RegSearcher::NextStart(const RegTail& tail, const char* from) const {
    if (program_.Anchored) {
        return from == tail.begin && firsts_.Has(tail.At(from)) ? from : nullptr;
    }
    if (onlyFirst_ > 0) {
        const auto rest = static_cast<std::size_t>(tail.end - from);
        return rest == 0 ? nullptr : static_cast<const char*>(std::memchr(from, onlyFirst_, rest));
    }
    if (onlyFirst_ == 0) {
        return tail.end;
    }
    while (from < tail.end && !firsts_.Has(static_cast<unsigned char>(*from))) {
        ++from;
    }
    return from < tail.end || firsts_.Has(0) ? from : nullptr;
}

const char* RegSearcher::StartBehind(const RegTail& tail, const char* failed) const {
    const RegNode& entry = program_.Program.Node(program_.Program.Entry());
    if (RegPlaces::IsLoop(entry)) {
        // What follows the loop was tried all along its run, so a start inside the run fails too.
        failed = RegRunEnd(program_.Program, entry, tail, failed);
    }
    return failed == tail.end ? nullptr : failed + 1;
}

RegSpan RegSearcher::Find(const RegSubject& subject, std::size_t tailStart,
                          const RegGroups& groups) {
    const RegTail tail{subject.Begin() + tailStart, subject.End()};
    if (LacksMustHave(tail)) {
        return {};
    }
    Begin(subject);
    const char* at = tail.begin;
    while (waste_ > 0) {
        const char* const from = at;
        at = NextStart(tail, from);
        if (at == nullptr) {
            return {};
        }
        steps_ += static_cast<std::uint64_t>(at - from);
        const RegTry tried = Try(tail, at, groups);
        if (tried.outcome == RegTry::Matched) {
            return {at - subject.Begin(), tried.end - at};
        }
        if (tried.outcome == RegTry::Failed) {
            at = StartBehind(tail, at);
            if (at == nullptr) {
                return {};
            }
        }
    }
    return FindThoroughly(subject, tail, groups);
}

RegSpan RegSearcher::FindThoroughly(const RegSubject& subject, const RegTail& tail,
                                    const RegGroups& groups) {
    RegViability& thorough = Thorough(subject);
    const char* const start = program_.Anchored ? tail.begin : thorough.FindStart(tail);
    if (start == nullptr) {
        return {};
    }
    if (groups.starts != nullptr) { // a try that gave up may have left something
        groups.starts->fill(nullptr);
        groups.ends->fill(nullptr);
    }
    const char* const end = thorough.MatchEnd(tail, start, groups);
    return end == nullptr ? RegSpan{} : RegSpan{start - subject.Begin(), end - start};
}

std::ptrdiff_t RegSearcher::LengthAt(const RegSubject& subject, std::size_t at,
                                     std::size_t tailStart) {
    const RegTail tail{subject.Begin() + tailStart, subject.End()};
    const char* const start = subject.Begin() + at;
    if (!firsts_.Has(tail.At(start))) {
        return -1;
    }
    Begin(subject);
    if (waste_ > 0) {
        const RegTry tried = Try(tail, start, {});
        if (tried.outcome != RegTry::GaveUp) {
            return tried.outcome == RegTry::Matched ? tried.end - start : -1;
        }
    }
    const char* const end = Thorough(subject).MatchEnd(tail, start, {});
    return end == nullptr ? -1 : end - start;
}
