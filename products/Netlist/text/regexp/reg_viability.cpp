// Backtracking tries ways that fail, and may try the same failing way again from each fork before
// it. Whether a way from a place of the program at a position of the subject gets to the end
// depends on nothing but that pair. So the pairs are settled first, from the subject's end
// backward, where the answer for a position needs only the one behind it; a match then never has to
// turn back.
//
// For `(a|ab)(c|bcd)` on "abcd", the eaters that are viable at each position are
//     a: that of `a`, that of "ab"    b: that of "ab", that of "bcd"    c: `c`, that of "bcd"
// and that of "bcd" at d. The walk takes the first alternative at each fork: `a`, then "bcd", since
// `c` is not viable behind `a`.
//
// Other ways to be linear, and why not: a table of failed pairs takes a bit for each node and
// character and several steps for each character, where a state takes one look-up; threads that run
// side by side in order take less memory but as many steps, and carry the bounds of all groups
// along; an automaton that runs forward tells where the preferred match ends but not which way it
// went, and needs this backward one too to find where it starts.

#include "reg_viability.h"

#include <algorithm>
#include <atomic>

namespace {

/// Most bytes of the states that one block can add, if its characters all make new ones. They lie
/// in arrays that double when they are full, and so take three times as many at a time.
constexpr std::size_t kBlockStatesLimit = std::size_t{8} << 20;
/// Most eaters for which steps of a match are kept.
constexpr std::size_t kMaxKnownEaters = 128;

std::atomic<std::size_t> count{0};

} // namespace

RegViability::RegViability(const RegCode& code, const RegLimits& limits)
    : m_code(code), m_places(code), m_automaton(m_places, limits.cache),
      m_block(std::max<std::size_t>(
          std::min(kBlockStatesLimit / (m_automaton.StateSize() + 4 * m_places.Count()),
                   limits.block),
          1)),
      m_stretch(std::max<std::size_t>(limits.notes / NoteSize(), 1)),
      m_mayKeepKnown(m_places.Count() <= kMaxKnownEaters), m_visited(code.Nodes().size()),
      m_noEaters(m_automaton.Words()) {
    count.fetch_add(1, std::memory_order_relaxed);
}

RegViability::~RegViability() {
    count.fetch_sub(1, std::memory_order_relaxed);
}

std::size_t RegViability::Count() {
    return count.load(std::memory_order_relaxed);
}

void RegViability::Begin(const RegSubject& subject) {
    if (subject.Serial() == m_subject.Serial())
        return;
    m_subject = subject;
    m_blocks = (subject.Length() + m_block - 1) / m_block;
    m_loaded = kNoBlock;
    m_states.clear();
    m_hasStart.assign(m_blocks, 0);
    const std::size_t room = std::min(m_blocks, m_stretch);
    if (m_capacity < room || m_capacity > 2 * room + 1024) {
        m_notes = std::make_unique_for_overwrite<std::uint64_t[]>(room * m_automaton.Words());
        m_capacity = room;
    }
    m_farNotes.assign((m_blocks + m_stretch - 1) / m_stretch * m_automaton.Words(), 0);
    if (m_blocks == 0)
        return;
    m_lowestStretch = (m_blocks - 1) / m_stretch;
    EnterStretch(m_lowestStretch);
}

/// Begins with the note behind a stretch's last block.
void RegViability::EnterStretch(std::size_t stretch) {
    m_atStretch = stretch;
    m_lowest = std::min((stretch + 1) * m_stretch, m_blocks) - 1;
    std::copy_n(&m_farNotes[stretch * m_automaton.Words()], m_automaton.Words(), NoteOf(m_lowest));
}

const char* RegViability::BlockEnd(std::size_t block) const {
    return block + 1 < m_blocks ? BlockBegin(block + 1) : m_subject.End();
}

/// Makes room for the steps of a match from all states that there are.
void RegViability::GrowKnown() {
    if (m_keepsKnown)
        m_known.resize(m_automaton.StateCount() * 2 * m_places.Count(), kUnknown);
}

/// Drops all that names states.
void RegViability::Forget() {
    m_loaded = kNoBlock;
    m_states.clear();
    m_known.clear();
}

RegViability::State RegViability::StateBehind(std::size_t block) {
    const char* const end = BlockEnd(block);
    const auto next = end == m_subject.End()
                          ? RegContext::AtEnd
                          : RegContext::NextFor(static_cast<unsigned char>(*end));
    return m_automaton.Find(NoteOf(block), next);
}

/// Reads what is needed for the note behind a block.
void RegViability::Cover(std::size_t block) {
    const std::size_t stretch = std::max(block / m_stretch, m_lowestStretch);
    if (stretch != m_atStretch)
        EnterStretch(stretch);
    while (m_lowest > block) {
        const std::uint64_t* const eaters = m_automaton.Eaters(Read(m_lowest));
        std::copy_n(eaters, m_automaton.Words(), NoteOf(--m_lowest));
        if ((m_lowest + 1) % m_stretch == 0) {
            m_atStretch = m_lowestStretch = m_lowest / m_stretch;
            std::copy_n(eaters, m_automaton.Words(),
                        &m_farNotes[m_atStretch * m_automaton.Words()]);
        }
    }
}

void RegViability::Load(std::size_t block) {
    if (m_loaded == block)
        return;
    Cover(block);
    Read(block);
}

/// Works out and keeps the states of a block. Returns the one of its first character.
RegViability::State RegViability::Read(std::size_t block) {
    if (m_automaton.Trim())
        Forget();
    State state = StateBehind(block);
    std::uint8_t starts = 0;
    m_loaded = block;
    m_loadedBegin = BlockBegin(block);
    m_states.resize(static_cast<std::size_t>(BlockEnd(block) - m_loadedBegin));
    for (std::size_t i = m_states.size(); i-- > 0;) {
        state = m_automaton.Step(state, static_cast<unsigned char>(m_loadedBegin[i]));
        m_states[i] = state;
        starts |= StartsAt(m_loadedBegin + i, state);
    }
    GrowKnown();
    m_hasStart[block] = starts;
    m_steps += m_states.size();
    return state;
}

RegViability::State RegViability::LoadStateAt(const char* at) {
    if (at == m_subject.End()) {
        const State state = m_automaton.Find(m_noEaters.data(), RegContext::AtEnd);
        GrowKnown();
        return state;
    }
    const std::size_t block = BlockOf(at);
    Load(block);
    return m_states[static_cast<std::size_t>(at - BlockBegin(block))];
}

RegContext RegViability::ContextAt(const char* at, const RegTail& tail, State state) const {
    return {.atBegin = at == tail.begin,
            .afterWord = IsAfterWord(at, tail),
            .next = m_automaton.NextOf(state)};
}

const char* RegViability::FindStart(const RegTail& tail) {
    if (Enter(tail.begin, tail) != kNowhere)
        return tail.begin;
    if (tail.begin == tail.end)
        return nullptr;
    const char* from = tail.begin + 1;
    for (std::size_t block = BlockOf(tail.begin); block < m_blocks; ++block) {
        if (m_hasStart[block] != 0) {
            from = std::max(from, BlockBegin(block));
            if (const char* const start = FirstStartIn(block, from))
                return start;
        }
    }
    return Enter(tail.end, tail) != kNowhere ? tail.end : nullptr;
}

/// Whether a match can begin at a place that isn't a tail's first.
std::uint8_t RegViability::StartsAt(const char* at, State state) const {
    const bool afterWord = m_automaton.AsksBehind() && at != m_subject.Begin() &&
                           IsRegWordChar(static_cast<unsigned char>(at[-1]));
    return m_automaton.StartsOf(state) &
           (afterWord ? RegAutomaton::kStartsAfterWord : RegAutomaton::kStartsAfterOther);
}

const char* RegViability::FirstStartIn(std::size_t block, const char* from) {
    Load(block);
    const char* const begin = BlockBegin(block);
    for (const char* at = from; at < BlockEnd(block); ++at) {
        ++m_steps;
        if (StartsAt(at, m_states[static_cast<std::size_t>(at - begin)]) != 0)
            return at;
    }
    return nullptr;
}

RegViability::Target RegViability::Enter(const char* at, const RegTail& tail) {
    m_bounds.clear();
    const State state = StateAt(at);
    return Descend(m_code.Entry(), state, ContextAt(at, tail, state));
}

const char* RegViability::MatchEnd(const RegTail& tail, const char* at, const RegGroups& groups) {
    Target target = Enter(at, tail);
    if (target == kNowhere)
        return nullptr;
    StoreBounds(at, groups);
    if (groups.starts != nullptr || !m_mayKeepKnown)
        return WalkGroups(target, at, tail, groups);
    if (!m_keepsKnown) {
        m_keepsKnown = true;
        GrowKnown();
    }
    return Walk(target, at, tail);
}

const char* RegViability::WalkGroups(Target target, const char* at, const RegTail& tail,
                                     const RegGroups& groups) {
    while (target != kEnd) {
        const State state = StateAt(++at);
        m_bounds.clear();
        target = Follow(target, state, ContextAt(at, tail, state));
        StoreBounds(at, groups);
        ++m_steps;
    }
    return at;
}

const char* RegViability::Walk(Target target, const char* at, const RegTail& tail) {
    const char* const from = at;
    while (target != kEnd) {
        const State state = StateAt(++at);
        Target& known = Known(target, state, IsAfterWord(at, tail));
        if (known == kUnknown)
            known = Follow(target, state, ContextAt(at, tail, state));
        target = known;
    }
    m_steps += static_cast<std::uint64_t>(at - from);
    return at;
}

RegViability::Target RegViability::Follow(Target eater, State state, const RegContext& context) {
    if (m_places.HasSuccessor(eater))
        return static_cast<Target>(eater + 1);
    const RegNode& node = m_places.NodeOf(eater);
    if (RegPlaces::IsLoop(node) && HasRegBit(m_automaton.Eaters(state), eater))
        return eater;
    return Descend(node.go, state, context);
}

/// The first viable target in the order of preference. The nodes on the way form no circle, but
/// ways may join, so each is visited once: where it led nowhere before, it does again.
RegViability::Target RegViability::Descend(std::uint16_t root, State state,
                                           const RegContext& context) {
    const std::uint64_t* const eaters = m_automaton.Eaters(state);
    m_visited.Clear();
    m_forks.assign(1, {root, m_bounds.size()});
    while (!m_forks.empty()) {
        const auto [place, bounds] = m_forks.back();
        m_forks.pop_back();
        if (place == kNoWay || !m_visited.Mark(place))
            continue;
        ++m_steps;
        m_bounds.resize(bounds);
        const RegNode& node = m_code.Node(place);
        if (node.op == RegOp::End)
            return kEnd;
        const bool eats = RegPlaces::IsBarrier(node) || RegPlaces::IsLoop(node);
        if (eats && HasRegBit(eaters, m_places.Base(place)))
            return static_cast<Target>(m_places.Base(place));
        if (IsRegGroupBound(node.op))
            m_bounds.push_back(place);
        else if (RegPlaces::IsBarrier(node) ||
                 (!eats && node.op != RegOp::Branch && !context.Holds(node.op)))
            continue;
        m_forks.push_back({node.other, m_bounds.size()});
        m_forks.push_back({node.go, m_bounds.size()});
    }
    return kNowhere;
}

void RegViability::StoreBounds(const char* at, const RegGroups& groups) {
    if (groups.starts == nullptr)
        return;
    for (const std::uint16_t place : m_bounds) {
        const RegNode& node = m_code.Node(place);
        (*(node.op == RegOp::Open ? groups.starts : groups.ends))[node.value] = at;
    }
}
