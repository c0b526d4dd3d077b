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
    : begin_(text.data() == nullptr ? "" : text.data()), length_(BeforeNul(text).size()),
      serial_(lastSerial.fetch_add(1, std::memory_order_relaxed) + 1) {}

/// The program, and what finds its matches.
struct RegEngine {
    CRegProgram program;
    std::optional<RegSearcher> searcher; ///< set if the program is valid
};

CRegExp::CRegExp(const char* expression, bool ignoreCase) : engine_(std::make_unique<RegEngine>()) {
    if (expression == nullptr) {
        errors_.SetError(RegError::NullExpression);
    } else {
        Compile(expression, ignoreCase);
    }
}

CRegExp::CRegExp(std::string_view expression, bool ignoreCase)
    : engine_(std::make_unique<RegEngine>()) {
    Compile(BeforeNul(expression), ignoreCase);
}

CRegExp::CRegExp(CRegExp&&) noexcept = default;
CRegExp& CRegExp::operator=(CRegExp&&) noexcept = default;
CRegExp::~CRegExp() = default;

void CRegExp::Compile(std::string_view expression, bool ignoreCase) {
    CRegProgram& program = engine_->program;
    errors_.SetError(ignoreCase ? CompileRegProgram(FoldRegCase(expression), program)
                                : CompileRegProgram(expression, program));
    if (program.Valid) {
        engine_->searcher.emplace(program);
    }
}

bool CRegExp::IsValid() const {
    return engine_->program.Valid;
}

bool CRegExp::Match(const char* subject) {
    if (subject == nullptr) {
        errors_.SetError(RegError::NullSubject);
        engine_->program.ClearPointers();
        return false;
    }
    return Match(std::string_view(subject));
}

bool CRegExp::Match(std::string_view subject) {
    CRegProgram& program = engine_->program;
    program.ClearPointers();
    const RegSubject whole(subject);
    subject_ = whole.Begin();
    if (!program.Valid) {
        return false;
    }
    const RegGroups groups =
        program.HasGroups ? RegGroups{&program.StartPointers, &program.EndPointers} : RegGroups{};
    const RegSpan span = engine_->searcher->Find(whole, 0, groups);
    if (!span.Found()) {
        return false;
    }
    program.StartPointers[0] = subject_ + span.start;
    program.EndPointers[0] = program.StartPointers[0] + span.length;
    program.CountGroups();
    return true;
}

std::ptrdiff_t CRegExp::SubStart(int index) const {
    const char* const start =
        engine_->program.StartPointers[static_cast<std::size_t>(std::clamp(index, 0, kMaxGroup))];
    return start == nullptr ? -1 : start - subject_;
}

std::ptrdiff_t CRegExp::SubLength(int index) const {
    const auto group = static_cast<std::size_t>(std::clamp(index, 0, kMaxGroup));
    return engine_->program.EndPointers[group] - engine_->program.StartPointers[group];
}

int CRegExp::GroupCount() const {
    return engine_->program.GroupCount;
}

RegSpan CRegExp::MatchFrom(const RegSubject& subject, std::size_t tailStart) const {
    if (!IsValid() || tailStart > subject.Length()) {
        return {};
    }
    return engine_->searcher->Find(subject, tailStart, {});
}

std::ptrdiff_t CRegExp::MatchAt(const RegSubject& subject, std::size_t at,
                                std::size_t tailStart) const {
    if (!IsValid() || tailStart > at || at > subject.Length()) {
        return -1;
    }
    return engine_->searcher->LengthAt(subject, at, tailStart);
}

unsigned char CRegExp::FirstChar() const {
    return engine_->program.FirstChar;
}

bool CRegExp::Anchored() const {
    return engine_->program.Anchored;
}

std::string_view CRegExp::MustHave() const {
    return {engine_->program.MustHave, engine_->program.MustLength};
}

std::size_t CRegExp::Size() const {
    return engine_->program.Size;
}

RegFacts CRegExp::Facts() const {
    return IsValid() ? FindRegFacts(engine_->program.Program) : RegFacts{};
}

std::string CRegExp::Dump() const {
    return DumpRegProgram(engine_->program.Program);
}

std::uint64_t CRegExp::Steps() const {
    return IsValid() ? engine_->searcher->Steps() : 0;
}

void CRegExp::SetLimits(const RegLimits& limits) {
    if (IsValid()) {
        engine_->searcher->SetLimits(limits);
    }
}
