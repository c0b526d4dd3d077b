#include "reg_automaton.h"

#include "byte_classes.h"

#include <algorithm>
#include <bit>

bool RegContext::Holds(RegOp op) const {
    switch (op) {
    case RegOp::Bol:
        return atBegin;
    case RegOp::Eol:
        return next == AtEnd;
    case RegOp::WordA:
        return next == BeforeWord && !afterWord;
    default:
        return next != BeforeWord;
    }
}

RegAutomaton::RegAutomaton(const RegPlaces& places, std::size_t cacheBytes)
    : m_places(places), m_words((places.Count() + 64) / 64), m_cacheBytes(cacheBytes),
      m_made(m_words), m_viable(places.Code().Nodes().size()) {
    for (const std::uint16_t place : places.Order()) {
        const RegOp op = places.Code().Node(place).op;
        m_asksBehind = m_asksBehind || op == RegOp::WordA;
        m_asksAhead = m_asksAhead || op == RegOp::WordA || op == RegOp::WordZ || op == RegOp::Eol;
    }
    SortBytes();
    NoteEaters();
    m_slots.resize(64);
}

void RegAutomaton::SortBytes() {
    ByteClasses sorter;
    ByteSet letters; // that an EXACTLY names
    for (std::size_t eater = 0; eater < m_places.Count(); ++eater) {
        const ByteSet set = m_places.BytesOf(eater);
        if (m_places.NodeOf(eater).op == RegOp::Exactly)
            letters |= set;
        else
            sorter.Split(set);
    }
    for (unsigned byte = letters.Next(0); byte < 256; byte = letters.Next(byte + 1))
        sorter.Split(ByteSet::Of(static_cast<std::uint8_t>(byte)));
    if (m_asksAhead)
        sorter.Split(kRegWordSet);
    m_classes = sorter.All();
    m_shift = static_cast<unsigned>(std::bit_width(sorter.Count() - 1));
}

void RegAutomaton::NoteEaters() {
    m_takers.resize(m_words << m_shift);
    for (std::size_t eater = 0; eater < m_places.Count(); ++eater) {
        const ByteSet set = m_places.BytesOf(eater);
        for (unsigned byte = set.Next(0); byte < 256; byte = set.Next(byte + 1))
            AddRegBit(&m_takers[m_classes[byte] * m_words], eater);
    }
}

bool RegAutomaton::Trim() {
    if (StateCount() * StateSize() <= m_cacheBytes)
        return false;
    m_steps.clear();
    m_sets.clear();
    m_nexts.clear();
    m_starts.clear();
    m_slots.assign(64, 0);
    return true;
}

RegAutomaton::State RegAutomaton::Find(const std::uint64_t* eaters, RegContext::Next next) {
    next = m_asksAhead ? next : RegContext::AtEnd;
    const std::uint32_t index = m_slots[Slot(eaters, next)];
    return index != 0 ? static_cast<State>((index - 1) << m_shift) : Add(eaters, next);
}

std::size_t RegAutomaton::Slot(const std::uint64_t* eaters, RegContext::Next next) const {
    std::uint64_t hash = next;
    for (std::size_t word = 0; word < m_words; ++word) {
        hash = (hash ^ eaters[word]) * 0x9E3779B97F4A7C15ULL;
        hash ^= hash >> 29;
    }
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
        if (m_slots[slot] == 0)
            return slot;
        const std::size_t index = m_slots[slot] - 1;
        if (m_nexts[index] == next &&
            std::equal(eaters, eaters + m_words, m_sets.begin() + std::ptrdiff_t(index * m_words)))
            return slot;
    }
}

RegAutomaton::State RegAutomaton::Add(const std::uint64_t* eaters, RegContext::Next next) {
    const std::size_t index = StateCount();
    m_sets.insert(m_sets.end(), eaters, eaters + m_words);
    m_nexts.push_back(next);
    m_steps.resize(m_steps.size() + (std::size_t{1} << m_shift), kUnknown);

    const std::uint64_t* const stored = &m_sets[index * m_words];
    const std::uint16_t entry = m_places.Code().Entry();
    Evaluate(stored, {.next = next});
    auto starts = m_viable[entry] != 0 ? kStartsAfterOther : std::uint8_t{0};
    if (m_asksBehind)
        Evaluate(stored, {.afterWord = true, .next = next});
    starts |= m_viable[entry] != 0 ? kStartsAfterWord : std::uint8_t{0};
    m_starts.push_back(starts);

    if (StateCount() * 2 > m_slots.size()) {
        m_slots.assign(m_slots.size() * 2, 0);
        for (std::size_t i = 0; i < index; ++i)
            m_slots[Slot(&m_sets[i * m_words], m_nexts[i])] = static_cast<std::uint32_t>(i + 1);
    }
    m_slots[Slot(stored, next)] = static_cast<std::uint32_t>(index + 1);
    return static_cast<State>(index << m_shift);
}

RegAutomaton::State RegAutomaton::MakeStep(State state, unsigned char byte) {
    const std::uint64_t* const eaters = Eaters(state);
    Evaluate(eaters, {.afterWord = IsRegWordChar(byte), .next = NextOf(state)});
    const std::uint64_t* const takers = &m_takers[m_classes[byte] * m_words];
    for (std::size_t word = 0; word < m_words; ++word) {
        std::uint64_t made = 0;
        for (std::uint64_t rest = takers[word]; rest != 0; rest &= rest - 1) {
            const auto bit = static_cast<unsigned>(std::countr_zero(rest));
            made |= Follows(word * 64 + bit, eaters) ? 1ULL << bit : 0;
        }
        m_made[word] = made;
    }
    m_work += m_places.Count();
    const State next = Find(m_made.data(), RegContext::NextFor(byte));
    m_steps[state + m_classes[byte]] = next;
    return next;
}

bool RegAutomaton::Follows(std::size_t eater, const std::uint64_t* eaters) const {
    if (m_places.HasSuccessor(eater))
        return HasRegBit(eaters, eater + 1);
    const RegNode& node = m_places.NodeOf(eater);
    return m_viable[node.go] != 0 || (RegPlaces::IsLoop(node) && HasRegBit(eaters, eater));
}

void RegAutomaton::Evaluate(const std::uint64_t* eaters, const RegContext& context) {
    m_work += m_places.Order().size();
    const auto leads = [this](std::uint16_t way) { return way != kNoWay && m_viable[way] != 0; };
    for (const std::uint16_t place : m_places.Order()) {
        const RegNode& node = m_places.Code().Node(place);
        bool viable = false;
        if (node.op == RegOp::End) {
            viable = true;
        } else if (RegPlaces::IsBarrier(node) || RegPlaces::IsLoop(node)) {
            viable = HasRegBit(eaters, m_places.Base(place)) ||
                     (node.op == RegOp::Star && leads(node.go));
        } else if (node.op == RegOp::Branch) {
            viable = leads(node.go) || leads(node.other);
        } else {
            viable = leads(node.go) && (IsRegGroupBound(node.op) || context.Holds(node.op));
        }
        m_viable[place] = viable ? 1 : 0;
    }
}
