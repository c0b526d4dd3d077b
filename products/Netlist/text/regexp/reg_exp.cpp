#include "reg_exp.h"

#include "reg_compiler.h"
#include "reg_facts_finder.h"
#include "reg_searcher.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <optional>

namespace {

/// The part of a text before its first NUL.
std::string_view BeforeNul(std::string_view text) {
    const void* const nul = text.empty() ? nullptr : std::memchr(text.data(), 0, text.size());
    return nul == nullptr
               ? text
               : text.substr(0,
                             static_cast<std::size_t>(static_cast<const char*>(nul) - text.data()));
}

std::atomic<std::uint64_t> lastSerial{0};

} // namespace

RegSubject::RegSubject(std::string_view text)
    : m_begin(text.data() == nullptr ? "" : text.data()), m_length(BeforeNul(text).size()),
      m_serial(lastSerial.fetch_add(1, std::memory_order_relaxed) + 1) {}

/// The program, and what finds its matches.
struct RegEngine {
    CRegProgram program;
    std::optional<RegSearcher> searcher; ///< set if the program is valid
};

CRegExp::CRegExp(const char* expression, bool ignoreCase)
    : m_engine(std::make_unique<RegEngine>()) {
    if (expression == nullptr)
        m_errors.SetError(RegError::NullExpression);
    else
        Compile(expression, ignoreCase);
}

CRegExp::CRegExp(std::string_view expression, bool ignoreCase)
    : m_engine(std::make_unique<RegEngine>()) {
    Compile(BeforeNul(expression), ignoreCase);
}

CRegExp::CRegExp(CRegExp&&) noexcept = default;
CRegExp& CRegExp::operator=(CRegExp&&) noexcept = default;
CRegExp::~CRegExp() = default;

void CRegExp::Compile(std::string_view expression, bool ignoreCase) {
    CRegProgram& program = m_engine->program;
    m_errors.SetError(ignoreCase ? CompileRegProgram(FoldRegCase(expression), program)
                                 : CompileRegProgram(expression, program));
    if (program.Valid)
        m_engine->searcher.emplace(program);
}

bool CRegExp::IsValid() const {
    return m_engine->program.Valid;
}

bool CRegExp::Match(const char* subject) {
    if (subject == nullptr) {
        m_errors.SetError(RegError::NullSubject);
        m_engine->program.ClearPointers();
        return false;
    }
    return Match(std::string_view(subject));
}

bool CRegExp::Match(std::string_view subject) {
    CRegProgram& program = m_engine->program;
    program.ClearPointers();
    const RegSubject whole(subject);
    m_subject = whole.Begin();
    if (!program.Valid)
        return false;
    const RegGroups groups =
        program.HasGroups ? RegGroups{&program.StartPointers, &program.EndPointers} : RegGroups{};
    const RegSpan span = m_engine->searcher->Find(whole, 0, RegWanted::Span, groups);
    if (!span.Found())
        return false;
    program.StartPointers[0] = m_subject + span.start;
    program.EndPointers[0] = program.StartPointers[0] + span.length;
    program.CountGroups();
    return true;
}

std::ptrdiff_t CRegExp::SubStart(int index) const {
    const char* const start =
        m_engine->program.StartPointers[static_cast<std::size_t>(std::clamp(index, 0, kMaxGroup))];
    return start == nullptr ? -1 : start - m_subject;
}

std::ptrdiff_t CRegExp::SubLength(int index) const {
    const auto group = static_cast<std::size_t>(std::clamp(index, 0, kMaxGroup));
    return m_engine->program.EndPointers[group] - m_engine->program.StartPointers[group];
}

int CRegExp::GroupCount() const {
    return m_engine->program.GroupCount;
}

RegSpan CRegExp::MatchFrom(const RegSubject& subject, std::size_t tailStart) const {
    if (!IsValid() || tailStart > subject.Length())
        return {};
    return m_engine->searcher->Find(subject, tailStart, RegWanted::Span);
}

std::ptrdiff_t CRegExp::StartFrom(const RegSubject& subject, std::size_t tailStart) const {
    if (!IsValid() || tailStart > subject.Length())
        return -1;
    return m_engine->searcher->Find(subject, tailStart, RegWanted::Start).start;
}

std::ptrdiff_t CRegExp::MatchAt(const RegSubject& subject, std::size_t at,
                                std::size_t tailStart) const {
    if (!IsValid() || tailStart > at || at > subject.Length())
        return -1;
    return m_engine->searcher->LengthAt(subject, at, tailStart, RegWanted::Span);
}

bool CRegExp::MatchesAt(const RegSubject& subject, std::size_t at, std::size_t tailStart) const {
    if (!IsValid() || tailStart > at || at > subject.Length())
        return false;
    return m_engine->searcher->LengthAt(subject, at, tailStart, RegWanted::Start) >= 0;
}

unsigned char CRegExp::FirstChar() const {
    return m_engine->program.FirstChar;
}

bool CRegExp::Anchored() const {
    return m_engine->program.Anchored;
}

std::string_view CRegExp::MustHave() const {
    return {m_engine->program.MustHave, m_engine->program.MustLength};
}

std::size_t CRegExp::Size() const {
    return m_engine->program.Size;
}

RegFacts CRegExp::Facts() const {
    return IsValid() ? FindRegFacts(m_engine->program.Program) : RegFacts{};
}

const RegCode& CRegExp::Code() const {
    return m_engine->program.Program;
}

std::string CRegExp::Dump() const {
    return DumpRegProgram(m_engine->program.Program);
}

std::uint64_t CRegExp::Steps() const {
    return IsValid() ? m_engine->searcher->Steps() : 0;
}

void CRegExp::SetLimits(const RegLimits& limits) const {
    if (IsValid())
        m_engine->searcher->SetLimits(limits);
}

void CRegExp::Release() const {
    if (IsValid())
        m_engine->searcher->Release();
}

std::size_t CRegExp::HolderCount() {
    return RegViability::Count();
}
