/// A place is a candidate if the first and the last byte of the wanted text are there: two loads
/// tell it for sixteen places at once, and hardly a line has one by chance. Only candidates are
/// compared whole.
///
/// That is quadratic for a long text in lines much like it ("aaaa...ab" in "aaaa..."). So the
/// search for a long text counts what its comparisons cost, and if that outgrows the line's length
/// it goes on by the borders of the text's beginnings (the longest part that is both begin and end
/// of a beginning), where no byte of the line is looked at twice. Those alone would be slower by
/// several times for the usual line.
#include "text_search.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "char_class.h"
#include "code_page.h"

namespace {

using Folding = std::array<char, 256>;

/// Each byte for itself.
constexpr Folding kKept = [] {
    Folding table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<char>(i);
    return table;
}();

/// The lower case of each byte's character, as far as the code page has it.
Folding MakeLower() {
    constexpr auto kPage = codepage::Page::kWindows1252;
    Folding table = kKept;
    for (char& byte : table) {
        const char16_t lower = chars::ToLower(codepage::DecodeByte(kPage, byte));
        if (codepage::CanEncode(kPage, {&lower, 1}))
            byte = codepage::EncodeUnit(kPage, lower);
    }
    return table;
}

const Folding& Lower() {
    static const Folding sTable = MakeLower();
    return sTable;
}

/// Up to this length comparing every place costs little enough.
constexpr std::size_t kShort = 32;
/// What comparing may cost for each byte of a line.
constexpr std::size_t kMostWork = 16;

std::vector<std::size_t> BordersOf(std::string_view text) {
    std::vector<std::size_t> borders(text.size(), 0);
    for (std::size_t i = 1, border = 0; i < text.size(); borders[i++] = border) {
        while (border > 0 && text[i] != text[border])
            border = borders[border - 1];
        border += text[i] == text[border];
    }
    return borders;
}

} // namespace

TextSearch::TextSearch(std::string_view wanted, bool keepCase)
    : m_Folding((keepCase ? kKept : Lower()).data()), m_Wanted(wanted) {
    for (char& character : m_Wanted)
        character = Fold(character);
    if (m_Wanted.empty())
        return;
    const auto bytesOf = [this](char folded, char(&bytes)[2]) {
        bytes[0] = bytes[1] = folded;
        for (const char byte : kKept)
            if (Fold(byte) == folded && byte != folded)
                bytes[1] = byte;
    };
    bytesOf(m_Wanted.front(), m_Begins);
    bytesOf(m_Wanted.back(), m_Ends);
    if (m_Wanted.size() > kShort)
        m_Borders = BordersOf(m_Wanted);
}

bool TextSearch::IsCandidate(const char* place) const {
    const char last = place[m_Wanted.size() - 1];
    return (*place == m_Begins[0] || *place == m_Begins[1]) &&
           (last == m_Ends[0] || last == m_Ends[1]);
}

/// How many bytes from a candidate on are as the wanted text's.
std::size_t TextSearch::CountAlike(const char* place) const {
    std::size_t count = 0;
    while (count < m_Wanted.size() && Fold(place[count]) == m_Wanted[count])
        ++count;
    return count;
}

#if defined(__SSE2__)
/// The candidates among sixteen places, one bit each.
unsigned TextSearch::CandidatesAt(const char* place) const {
    const auto bytesLike = [](const char* from, const char(&either)[2]) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
        return _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(either[0])),
                            _mm_cmpeq_epi8(bytes, _mm_set1_epi8(either[1])));
    };
    const __m128i both =
        _mm_and_si128(bytesLike(place, m_Begins), bytesLike(place + m_Wanted.size() - 1, m_Ends));
    return static_cast<unsigned>(_mm_movemask_epi8(both));
}
#endif

/// The first candidate from a place on, of the count places where the text has room; count when
/// there is none.
std::size_t TextSearch::NextCandidate(std::string_view line, std::size_t at,
                                      std::size_t count) const {
#if defined(__SSE2__)
    constexpr std::size_t kStep = 16;
    for (; at + kStep <= count; at += kStep)
        if (const unsigned found = CandidatesAt(line.data() + at))
            return at + static_cast<std::size_t>(std::countr_zero(found));
    if (at < count && count >= kStep) { // some of the last sixteen have been looked at
        const std::size_t back = count - kStep;
        const unsigned found = CandidatesAt(line.data() + back) >> (at - back);
        return found != 0 ? at + static_cast<std::size_t>(std::countr_zero(found)) : count;
    }
#endif
    while (at < count && !IsCandidate(line.data() + at))
        ++at;
    return at;
}

std::size_t TextSearch::Find(std::string_view line) const {
    if (m_Wanted.empty() || m_Wanted.size() > line.size())
        return kNone;
    const std::size_t count = line.size() - m_Wanted.size() + 1;
    std::size_t work = 0;
    for (std::size_t at = NextCandidate(line, 0, count); at < count;
         at = NextCandidate(line, at + 1, count)) {
        const std::size_t alike = CountAlike(line.data() + at);
        if (alike == m_Wanted.size())
            return at;
        work += alike;
        if (!m_Borders.empty() && work > kMostWork * line.size())
            return Steadily(line, at + 1, false);
    }
    return kNone;
}

std::size_t TextSearch::FindLast(std::string_view line) const {
    if (m_Wanted.empty() || m_Wanted.size() > line.size())
        return kNone;
    std::size_t work = 0;
    for (std::size_t at = line.size() - m_Wanted.size() + 1; at-- > 0;) {
        if (!IsCandidate(line.data() + at))
            continue;
        const std::size_t alike = CountAlike(line.data() + at);
        if (alike == m_Wanted.size())
            return at;
        work += alike;
        if (!m_Borders.empty() && work > kMostWork * line.size())
            return Steadily(line.substr(0, at - 1 + m_Wanted.size()), 0, true);
    }
    return kNone;
}

/// The first or the last place from `from` on, in time linear in the line.
std::size_t TextSearch::Steadily(std::string_view line, std::size_t from, bool last) const {
    std::size_t place = kNone;
    std::size_t alike = 0;
    for (std::size_t at = from; at < line.size(); ++at) {
        const char folded = Fold(line[at]);
        while (alike > 0 && folded != m_Wanted[alike])
            alike = m_Borders[alike - 1];
        alike += folded == m_Wanted[alike];
        if (alike < m_Wanted.size())
            continue;
        place = at + 1 - alike;
        if (!last)
            return place;
        alike = m_Borders[alike - 1];
    }
    return place;
}
