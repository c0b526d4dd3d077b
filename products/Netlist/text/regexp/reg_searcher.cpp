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
    : m_program(program), m_firsts(program.Program.First(program.Program.Entry())) {
    const unsigned first = m_firsts.Next(0);
    if (first < 256 && m_firsts.Next(first + 1) == 256)
        m_onlyFirst = static_cast<int>(first);
}

void RegSearcher::SetLimits(const RegLimits& limits) {
    m_limits = limits;
    m_serial = 0;
    Release();
}

void RegSearcher::Release() {
    if (!m_thorough)
        return;
    m_steps += m_thorough->Steps();
    m_thorough.reset();
}

void RegSearcher::Begin(const RegSubject& subject) {
    if (m_serial != subject.Serial()) {
        m_serial = subject.Serial();
        const std::size_t waste = m_limits.waste == 0 ? 0 : m_limits.waste + subject.Length() / 4;
        m_waste = static_cast<std::ptrdiff_t>(waste);
        m_mustHaveAt = nullptr;
    }
}

RegViability& RegSearcher::Thorough(const RegSubject& subject) {
    if (!m_thorough)
        m_thorough = std::make_unique<RegViability>(m_program.Program, m_limits);
    m_thorough->Begin(subject);
    return *m_thorough;
}

RegTry RegSearcher::Try(const RegTail& tail, const char* at, RegWanted wanted,
                        const RegGroups& groups) {
    const RegAllowance allowance{m_waste + kFreeSteps, m_limits.depth};
    const RegTry tried = TryRegProgram(m_program.Program, tail, at, allowance, groups);
    const std::ptrdiff_t taken = allowance.steps - tried.left;
    m_steps += static_cast<std::uint64_t>(taken);
    if (tried.outcome == RegTry::GaveUp) {
        m_waste = 0;
    } else {
        const std::ptrdiff_t passed = wanted == RegWanted::Span ? tried.end - at : 0;
        const std::ptrdiff_t free = kFreeSteps + kFreeStepsPerByte * passed;
        m_waste = std::max<std::ptrdiff_t>(m_waste - std::max<std::ptrdiff_t>(taken - free, 0), 0);
    }
    return tried;
}

bool RegSearcher::LacksMustHave(const RegTail& tail) {
    if (m_program.MustLength == 0)
        return false;
    const bool isKnown =
        m_mustHaveAt != nullptr && m_mustHaveFrom <= tail.begin && tail.begin <= m_mustHaveAt;
    if (!isKnown) {
        const auto length = static_cast<std::size_t>(tail.end - tail.begin);
        const void* const found =
            length < m_program.MustLength
                ? nullptr
                : memmem(tail.begin, length, m_program.MustHave, m_program.MustLength);
        m_mustHaveFrom = tail.begin;
        m_mustHaveAt = found == nullptr ? tail.end : static_cast<const char*>(found);
    }
    return m_mustHaveAt == tail.end;
}

const char* RegSearcher::NextStart(const RegTail& tail, const char* from) const {
    if (m_program.Anchored)
        return from == tail.begin && m_firsts.Has(tail.At(from)) ? from : nullptr;
    if (m_onlyFirst > 0) {
        const auto rest = static_cast<std::size_t>(tail.end - from);
        return rest == 0 ? nullptr : static_cast<const char*>(std::memchr(from, m_onlyFirst, rest));
    }
    if (m_onlyFirst == 0)
        return tail.end;
    while (from < tail.end && !m_firsts.Has(static_cast<unsigned char>(*from)))
        ++from;
    return from < tail.end || m_firsts.Has(0) ? from : nullptr;
}

const char* RegSearcher::StartBehind(const RegTail& tail, const char* failed) const {
    const RegNode& entry = m_program.Program.Node(m_program.Program.Entry());
    if (RegPlaces::IsLoop(entry)) {
        // What follows the loop was tried all along its run, so a start inside the run fails too.
        failed = RegRunEnd(m_program.Program, entry, tail, failed);
    }
    return failed == tail.end ? nullptr : failed + 1;
}

RegSpan RegSearcher::Find(const RegSubject& subject, std::size_t tailStart, RegWanted wanted,
                          const RegGroups& groups) {
    const RegTail tail{subject.Begin() + tailStart, subject.End()};
    Begin(subject);
    if (LacksMustHave(tail))
        return {};
    const char* at = tail.begin;
    while (m_waste > 0) {
        const char* const from = at;
        at = NextStart(tail, from);
        if (at == nullptr)
            return {};
        m_steps += static_cast<std::uint64_t>(at - from);
        const RegTry tried = Try(tail, at, wanted, groups);
        if (tried.outcome == RegTry::Matched)
            return {at - subject.Begin(), tried.end - at};
        if (tried.outcome == RegTry::Failed) {
            at = StartBehind(tail, at);
            if (at == nullptr)
                return {};
        }
    }
    return FindThoroughly(subject, tail, wanted, groups);
}

RegSpan RegSearcher::FindThoroughly(const RegSubject& subject, const RegTail& tail,
                                    RegWanted wanted, const RegGroups& groups) {
    if (groups.starts != nullptr) { // the try that gave up has left what it had stored
        groups.starts->fill(nullptr);
        groups.ends->fill(nullptr);
    }
    RegViability& thorough = Thorough(subject);
    const char* start = nullptr;
    if (!m_program.Anchored)
        start = thorough.FindStart(tail);
    else if (thorough.IsStart(tail, tail.begin))
        start = tail.begin;
    if (start == nullptr)
        return {};
    if (wanted == RegWanted::Start)
        return {start - subject.Begin(), 0};
    const char* const end = thorough.MatchEnd(tail, start, groups);
    return end == nullptr ? RegSpan{} : RegSpan{start - subject.Begin(), end - start};
}

std::ptrdiff_t RegSearcher::LengthAt(const RegSubject& subject, std::size_t at,
                                     std::size_t tailStart, RegWanted wanted) {
    const RegTail tail{subject.Begin() + tailStart, subject.End()};
    const char* const start = subject.Begin() + at;
    if (!m_firsts.Has(tail.At(start)))
        return -1;
    Begin(subject);
    if (m_waste > 0) {
        const RegTry tried = Try(tail, start, wanted, {});
        if (tried.outcome != RegTry::GaveUp)
            return tried.outcome == RegTry::Matched ? tried.end - start : -1;
    }
    RegViability& thorough = Thorough(subject);
    if (wanted == RegWanted::Start)
        return thorough.IsStart(tail, start) ? 0 : -1;
    const char* const end = thorough.MatchEnd(tail, start, {});
    return end == nullptr ? -1 : end - start;
}
