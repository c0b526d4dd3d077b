/// Any text as an expression, with any subject: all ways to match agree with each other and, where
/// that is small enough, with the slow twin; what is said of matches holds; work stays in bounds.
/// Input: a byte of flags, the expression up to a NUL, the subject.
#include "../products/Netlist/text/test/reg_twin.h"
#include "reg_exp.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

void Require(bool law) {
    if (!law)
        std::abort();
}

void RequireSame(const CRegExp& a, const CRegExp& b) {
    for (int i = 0; i <= CRegExp::kMaxGroup; ++i) {
        Require(a.SubStart(i) == b.SubStart(i));
        Require(a.SubLength(i) == b.SubLength(i));
    }
    Require(a.GroupCount() == b.GroupCount());
}

void CheckMatch(const CRegExp& expression, std::string_view subject) {
    const auto start = static_cast<std::size_t>(expression.SubStart(0));
    const std::string_view match =
        subject.substr(start, static_cast<std::size_t>(expression.SubLength(0)));
    const RegFacts facts = expression.Facts();
    Require(!expression.Anchored() || start == 0);
    Require(match.find(expression.MustHave()) != std::string_view::npos);
    Require(match.empty() ? facts.canBeEmpty
                          : facts.firstBytes.Has(static_cast<std::uint8_t>(match[0])));
    Require(match.size() != 1 || facts.canBeOneByte);
    Require(match.size() < 2 || facts.secondBytes.Has(static_cast<std::uint8_t>(match[1])));
    for (const char c : match)
        Require(facts.alphabet.Has(static_cast<std::uint8_t>(c)));
    if (expression.FirstChar() != 0)
        Require(!match.empty() && static_cast<std::uint8_t>(match[0]) == expression.FirstChar());
    if (!facts.fixedSequence.empty())
        Require(match.size() == facts.fixedSequence.size());
    if (!facts.literal.empty())
        Require(match == facts.literal);
    for (int i = 1; i <= CRegExp::kMaxGroup; ++i) {
        const std::ptrdiff_t end = expression.SubStart(i) + expression.SubLength(i);
        if (expression.SubStart(i) >= 0)
            Require(expression.SubStart(i) >= expression.SubStart(0) &&
                    expression.SubLength(i) >= 0 &&
                    end <= expression.SubStart(0) + expression.SubLength(0));
    }
}

void CheckTwin(const CRegExp& expression, const std::string& text, std::string_view subject) {
    RegTwin twin(text);
    Require(twin.Error() == expression.LastErrorCode());
    if (twin.Error() != 0)
        return;
    twin.steps = 20000;
    const RegTwin::Result result = twin.Match(subject);
    if (twin.Exhausted())
        return;
    Require(result.start == expression.SubStart(0));
    Require(result.start < 0 || result.length == expression.SubLength(0));
    for (std::size_t i = 1; result.start >= 0 && i < result.starts.size(); ++i)
        Require(result.starts[i] == expression.SubStart(static_cast<int>(i)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const bool ignoreCase = !input.empty() && (input[0] & 1) != 0;
    const std::string_view rest = input.substr(input.empty() ? 0 : 1);
    const std::string text(rest.substr(0, rest.find('\0')));
    std::string_view subject = rest.substr(std::min(text.size() + 1, rest.size()));
    subject = subject.substr(0, subject.find('\0'));

    CRegExp expression(text.c_str(), ignoreCase);
    CRegExp thorough(text.c_str(), ignoreCase);
    thorough.SetLimits({.waste = 0, .block = 5, .cache = 200, .notes = 40});
    CRegExp hasty(text.c_str(), ignoreCase);
    hasty.SetLimits({.waste = 3, .depth = 2});
    const bool matched = expression.Match(subject);
    Require(expression.IsValid() == (expression.LastErrorCode() == 0));
    Require(matched == (expression.SubStart(0) >= 0));
    for (CRegExp* const other : {&thorough, &hasty}) {
        Require(other->Match(subject) == matched);
        RequireSame(expression, *other);
    }
    const RegSubject whole(subject);
    for (const CRegExp* const each : {&expression, &thorough, &hasty}) {
        const RegSpan span = each->MatchFrom(whole);
        Require(span.start == expression.SubStart(0) && span.length == expression.SubLength(0));
        Require(each->StartFrom(whole) == span.start);
        for (std::size_t at = 0; at <= std::min<std::size_t>(subject.size(), 50); ++at) {
            const std::ptrdiff_t length = each->MatchAt(whole, at, 0);
            Require(length == expression.MatchAt(whole, at, 0));
            Require(each->MatchesAt(whole, at, 0) == (length >= 0));
            const auto offset = static_cast<std::ptrdiff_t>(at);
            Require(!matched || offset >= span.start ? offset != span.start || length == span.length
                                                     : length < 0);
        }
    }
    if (matched)
        CheckMatch(expression, subject);
    Require(expression.Dump().empty() != expression.IsValid());
    if (text.size() < 24 && subject.size() < 24)
        CheckTwin(expression, ignoreCase ? RegTwin::Folded(text) : text, subject);
    return 0;
}
