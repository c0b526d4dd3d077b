#include "line_scanner.h"

#include <algorithm>
#include <bit>

namespace {

/// Tokens that are found together at the most.
constexpr std::size_t kMostTogether = 4096;
/// Separators that hold states at the most.
constexpr std::size_t kMostWithStates = 256;
/// Candidates whose memory is kept for the next line.
constexpr std::size_t kKeptCandidates = 65536;
/// Candidates of a line, for each of its characters and beside that, before they are too many.
constexpr std::size_t kCandidatesPerByte = 2;
constexpr std::size_t kFreeCandidates = 256;
/// Ranges' and separators' expressions that may all take the memory that one may take by itself.
constexpr std::size_t kMostWithFullMemory = 64;

unsigned char ByteOf(char character) {
    return static_cast<unsigned char>(character);
}

} // namespace

LineScanner::LineScanner(const CSyntaxDscr& syntax) : m_subject(std::string_view()) {
    for (const auto& range : syntax.Ranges())
        AddRange(*range);
    std::vector<TokenTraits> traits;
    for (const auto& token : syntax.Tokens())
        AddToken(*token, traits);
    ShareMemory();
    m_automaton = std::make_unique<TokenAutomaton>(traits);
    m_chains.resize(traits.size());
    m_touched.resize((traits.size() + 63) / 64);
}

void LineScanner::AddRange(const CColorRange& range) {
    const RegFacts facts = range.Open.Facts();
    const std::uint32_t bit = std::uint32_t{1} << (m_ranges.size() % 31);
    for (unsigned value = 0; value < 256; ++value) {
        const auto byte = static_cast<unsigned char>(value);
        if (facts.canBeEmpty || facts.firstBytes.Has(byte))
            m_opensFrom[value] |= bit;
        if (facts.canBeEmpty || facts.canBeOneByte || facts.secondBytes.Has(byte))
            m_opensOn[value] |= bit;
    }
    if (facts.canBeEmpty || facts.canBeOneByte)
        m_opensOn[kLineEnd] |= bit;
    if (!range.Open.Anchored())
        m_opensAnywhere |= bit;
    m_ranges.push_back({.open = &range.Open,
                        .close = &range.Close,
                        .paletteIndex = ColorPalette::IndexOf(range.Color),
                        .dependsOnStart = facts.hasBol || facts.hasWordStart});
}

const Separator* LineScanner::SeparatorOf(const CRegExp& expression) {
    const bool mayHoldStates = m_separators.size() < kMostWithStates;
    return &m_separators.try_emplace(&expression, expression, mayHoldStates).first->second;
}

void LineScanner::AddToken(const CColorToken& token, std::vector<TokenTraits>& traits) {
    const RegFacts facts = token.Token.Facts();
    Token entry{.expression = &token.Token,
                .startSeparator = SeparatorOf(*token.StartSep),
                .stopSeparator = SeparatorOf(*token.StopSep),
                .paletteIndex = ColorPalette::IndexOf(token.Color)};
    const ByteSet& before = entry.startSeparator->Bytes();
    entry.separable = entry.startSeparator->IsSet() && !facts.alphabet.Intersects(before);
    // A separator that never holds leaves the line's first column alone, where every scan begins.
    const bool isFirstColumnOnly = entry.startSeparator->IsSet() && before.Empty();
    const bool dependsOnStart = (facts.hasBol || facts.hasWordStart) && !isFirstColumnOnly;
    const bool isFree = !facts.canBeEmpty && !dependsOnStart;
    if (isFree && traits.size() < kMostTogether) {
        entry.number = traits.size();
        m_together.push_back(m_tokens.size());
        traits.push_back({.expression = &token.Token,
                          .first = facts.firstBytes,
                          .startSeparator = before,
                          .separable = entry.separable});
    }
    m_tokens.push_back(std::move(entry));
}

/// On one line hard searches of all ranges and separators keep what they have learnt. Where they
/// are many, each learns it anew more often.
void LineScanner::ShareMemory() {
    const std::size_t shares =
        (2 * m_ranges.size() + m_separators.size()) / kMostWithFullMemory + 1;
    if (shares == 1)
        return;
    RegLimits limits;
    limits.block = std::max<std::size_t>(limits.block / shares, 128);
    limits.cache = std::max<std::size_t>(limits.cache / shares, 4096);
    limits.notes = std::max<std::size_t>(limits.notes / shares, 4096);
    for (const Range& range : m_ranges) {
        range.open->SetLimits(limits);
        range.close->SetLimits(limits);
    }
    for (const auto& [expression, separator] : m_separators)
        expression->SetLimits(limits);
}

LineColours LineScanner::Colour(std::string_view text, std::int32_t carried) {
    LineColours result;
    const std::size_t holders = CRegExp::HolderCount();
    BeginLine(text);
    m_encoder.Start();
    std::size_t column = 0;
    if (carried >= 0 && static_cast<std::size_t>(carried) < m_ranges.size()) {
        result.rangeIn = carried;
        column = CloseCarried(static_cast<std::size_t>(carried));
    }
    if (column == kNone) {
        result.rangeOut = carried;
    } else {
        result.rangeOut = ScanRanges(column);
        if (!text.empty())
            ScanTokens();
    }
    if (text.empty() && column == kNone) // what runs through an empty line shows as one column
        m_encoder.Add(0, 1, m_ranges[static_cast<std::size_t>(carried)].paletteIndex);
    else
        m_canvas.Encode(m_encoder);
    result.spans = m_encoder.Bytes();
    if (CRegExp::HolderCount() != holders)
        ReleaseExpressions();
    return result;
}

/// Hard searches of many expressions would add up, so none keeps its memory from line to line.
void LineScanner::ReleaseExpressions() {
    for (const Range& range : m_ranges) {
        range.open->Release();
        range.close->Release();
    }
    for (const auto& [expression, separator] : m_separators)
        expression->Release();
}

void LineScanner::BeginLine(std::string_view text) {
    m_text = text;
    m_subject = RegSubject(text);
    m_subjectBegin = 0;
    m_hasNul = m_subject.Length() != text.size();
    m_canvas.Start(text.size());
}

/// Makes the subject that part of the line in which the tail from column begins.
void LineScanner::EnterSubject(std::size_t column) {
    if (!m_hasNul || (column >= m_subjectBegin && column <= m_subjectBegin + m_subject.Length()))
        return;
    m_subject = RegSubject(m_text.substr(column));
    m_subjectBegin = column;
}

/// The first match in the tail from column; its start is kNone if there is none.
LineScanner::Match LineScanner::FindFrom(const CRegExp& expression, std::size_t column) {
    EnterSubject(column);
    const RegSpan span = expression.MatchFrom(m_subject, column - m_subjectBegin);
    if (!span.Found())
        return {kNone, kNone};
    const std::size_t start = m_subjectBegin + static_cast<std::size_t>(span.start);
    return {start, start + static_cast<std::size_t>(span.length)};
}

std::size_t LineScanner::CloseCarried(std::size_t range) {
    if (m_text.empty())
        return kNone;
    const Match close = FindFrom(*m_ranges[range].close, 0);
    const std::size_t behind = close.start == kNone ? m_text.size() : close.behind;
    if (behind != 0)
        m_canvas.Lay(0, behind, m_ranges[range].paletteIndex);
    return close.start == kNone ? kNone : behind;
}

std::int32_t LineScanner::ScanRanges(std::size_t column) {
    while (CanOpenBehind(column)) {
        Match open{kNone, kNone};
        const std::size_t index = FirstOpen(column, open);
        if (index == kNone)
            return -1;
        const Range& range = m_ranges[index];
        const Match close = FindFrom(*range.close, open.behind);
        const std::size_t behind = close.start == kNone ? m_text.size() : close.behind;
        if (behind > open.start)
            m_canvas.Lay(open.start, behind, range.paletteIndex);
        if (close.start == kNone)
            return static_cast<std::int32_t>(index);
        column = std::max(behind, open.start + 1);
    }
    return -1;
}

/// Whether some range can open at or behind column, by the first two bytes that this takes.
bool LineScanner::CanOpenBehind(std::size_t column) const {
    std::uint32_t ranges = ~std::uint32_t{0};
    for (; column < m_text.size(); ++column) {
        const std::size_t next = column + 1 < m_text.size() ? ByteOf(m_text[column + 1]) : kLineEnd;
        if ((m_opensFrom[ByteOf(m_text[column])] & m_opensOn[next] & ranges) != 0)
            return true;
        ranges = m_opensAnywhere;
    }
    return false;
}

/// The range that opens first at or behind column, the one with the highest index on equal starts.
/// Only of that one it is asked how far the match goes: the others may be found again and again.
std::size_t LineScanner::FirstOpen(std::size_t column, Match& match) {
    std::size_t first = kNone;
    EnterSubject(column);
    for (std::size_t index = m_ranges.size(); index-- > 0;) {
        const std::size_t start = NextOpen(m_ranges[index], column);
        if (start < match.start) {
            match.start = start;
            first = index;
        }
    }
    if (first != kNone) {
        const std::ptrdiff_t length = m_ranges[first].open->MatchAt(
            m_subject, match.start - m_subjectBegin, column - m_subjectBegin);
        match.behind = match.start + static_cast<std::size_t>(length);
    }
    return first;
}

/// The first place at or behind column where the range opens. One that was found further on stays
/// the next one, but an expression that looks at its subject's start may match at column too.
std::size_t LineScanner::NextOpen(Range& range, std::size_t column) {
    const std::size_t tail = column - m_subjectBegin;
    const bool isKnown = range.subject == m_subject.Serial();
    if (isKnown && range.next > column)
        return range.dependsOnStart && range.open->MatchesAt(m_subject, tail, tail) ? column
                                                                                    : range.next;
    if (!isKnown || range.dependsOnStart || range.next < column) {
        const std::ptrdiff_t start = range.open->StartFrom(m_subject, tail);
        range.next = start < 0 ? kNone : m_subjectBegin + static_cast<std::size_t>(start);
        range.subject = m_subject.Serial();
    }
    return range.next;
}

void LineScanner::ScanTokens() {
    const bool together = !m_hasNul && GatherCandidates();
    if (together && m_together.size() == m_tokens.size()) {
        for (std::size_t word = 0; word < m_touched.size(); ++word)
            for (std::uint64_t bits = m_touched[word]; bits != 0; bits &= bits - 1)
                ScanCandidates(
                    m_tokens[word * 64 + static_cast<std::size_t>(std::countr_zero(bits))]);
        return;
    }
    for (const Token& token : m_tokens)
        if (!together || token.number == kNone)
            SearchToken(token);
        else if (IsTouched(token.number))
            ScanCandidates(token);
}

/// Chains the occurrences of each token. @return false if the slow way must be taken for this line
bool LineScanner::GatherCandidates() {
    if (m_candidates.capacity() > kKeptCandidates)
        m_candidates = {};
    m_candidates.clear();
    std::fill(m_touched.begin(), m_touched.end(), 0);
    m_lastCandidate = {kNone, kNone};
    m_mostCandidates =
        std::min<std::size_t>(kCandidatesPerByte * m_text.size() + kFreeCandidates, kNoCandidate);
    const bool done = m_automaton->ForEachMatch(
        m_text, [this](std::size_t column) { return m_canvas.IsCovered(column); },
        [this](std::size_t number, std::size_t column, std::size_t length) {
            AddCandidate(number, {column, column + length});
        });
    return done && m_candidates.size() < m_mostCandidates;
}

/// A match with the columns of the last candidate, which is an earlier token's, never finds them
/// free: either that one is laid down or both are in another's way.
void LineScanner::AddCandidate(std::size_t number, Match match) {
    const Token& token = m_tokens[m_together[number]];
    if (token.separable ? match == m_lastCandidate || !HoldsAt(*token.stopSeparator, match.behind)
                        : !IsOccurrence(token, match))
        return;
    m_lastCandidate = match;
    const std::size_t index = m_candidates.size();
    if (index == m_mostCandidates)
        return;
    Chain& chain = ChainOf(number);
    (chain.last == kNoCandidate ? chain.first : m_candidates[chain.last].next) =
        static_cast<std::uint32_t>(index);
    chain.last = static_cast<std::uint32_t>(index);
    m_candidates.push_back({static_cast<std::uint32_t>(match.start),
                            static_cast<std::uint32_t>(match.behind), kNoCandidate});
}

/// Whether the search for a token that isn't separable finds this match, the separators stand
/// beside it, and no range or earlier token of the same columns is in its way.
bool LineScanner::IsOccurrence(const Token& token, Match match) {
    Chain& chain = ChainOf(token.number);
    if (match.start < chain.column)
        return false;
    chain.column = match.behind + 1;
    return match != m_lastCandidate && m_canvas.IsFree(match.start, match.behind) &&
           HasSeparators(token, match.start, match.behind);
}

void LineScanner::ScanCandidates(const Token& token) {
    std::uint32_t next = kNoCandidate;
    for (std::uint32_t i = m_chains[token.number].first; i != kNoCandidate; i = next) {
        const Candidate& candidate = m_candidates[i];
        next = candidate.next;
        if (m_canvas.IsFree(candidate.start, candidate.behind))
            m_canvas.Lay(candidate.start, candidate.behind, token.paletteIndex);
    }
}

/// The slow way: the leftmost match in each tail, each search going on one column behind the column
/// that follows an occurrence.
void LineScanner::SearchToken(const Token& token) {
    std::size_t column = 0;
    while (column < m_text.size()) {
        const Match match = FindFrom(*token.expression, column);
        if (match.start == kNone)
            break;
        column = match.behind + 1;
        if (match.behind > match.start && HasSeparators(token, match.start, match.behind) &&
            m_canvas.IsFree(match.start, match.behind))
            m_canvas.Lay(match.start, match.behind, token.paletteIndex);
    }
    token.expression->Release();
}

bool LineScanner::HasSeparators(const Token& token, std::size_t start, std::size_t behind) {
    return (start == 0 || HoldsAt(*token.startSeparator, start - 1)) &&
           HoldsAt(*token.stopSeparator, behind);
}

bool LineScanner::HoldsAt(const Separator& separator, std::size_t column) {
    EnterSubject(column);
    return separator.Holds(m_subject, column - m_subjectBegin);
}
