#include "reg_viability.h"

#include <algorithm>

namespace {

/// Most bytes that the notes of one subject take, unless blocks would be longer than their number.
constexpr std::size_t kNotesLimit = std::size_t{32} << 20;
/// Most bytes of the states that one block can add, if its characters all make new ones.
constexpr std::size_t kBlockStatesLimit = std::size_t{8} << 20;
/// Most eaters for which steps of a match are kept.
constexpr std::size_t kMaxKnownEaters = 128;

} // namespace

RegViability::RegViability(const RegCode& code, const RegLimits& limits)
    : code_(code), places_(code), automaton_(places_, limits.cache),
      blockLimit_(std::min(kBlockStatesLimit / (automaton_.StateSize() + 4 * places_.Count()),
                           limits.block)),
      keepsKnown_(places_.Count() <= kMaxKnownEaters), visited_(code.Nodes().size()),
      noEaters_(automaton_.Words()) {}

void RegViability::Begin(const RegSubject& subject) {
    if (subject.Serial() == subject_.Serial()) {
        return;
    }
    subject_ = subject;
    const std::size_t noteSize = automaton_.Words() * sizeof(std::uint64_t);
    const std::size_t length = subject.Length();
    block_ = std::max({blockLimit_, length / (kNotesLimit / noteSize), std::size_t{1}});
    blocks_ = (length + block_ - 1) / block_;
    covered_ = blocks_;
    loaded_ = kNoBlock;
    states_.clear();
    if (capacity_ < blocks_ || capacity_ > 2 * blocks_ + 1024) {
        notes_ = std::make_unique_for_overwrite<std::uint64_t[]>(blocks_ * automaton_.Words());
        capacity_ = blocks_;
    }
    hasStart_.assign(blocks_, 0);
    if (blocks_ != 0) {
        std::fill_n(&notes_[(blocks_ - 1) * automaton_.Words()], automaton_.Words(), 0);
    }
}

const char* RegViability::BlockEnd(std::size_t block) const {
    return block + 1 < blocks_ ? BlockBegin(block + 1) : subject_.End();
}

/// Makes room for the steps of a match from all states that there are.
void RegViability::GrowKnown() {
    if (keepsKnown_) {
        known_.resize(automaton_.StateCount() * 2 * places_.Count(), kUnknown);
    }
}

/// Drops all that names states.
void RegViability::Forget() {
    loaded_ = kNoBlock;
    states_.clear();
    known_.clear();
}

RegViability::State RegViability::StateBehind(std::size_t block) {
    const char* const end = BlockEnd(block);
    const auto next = end == subject_.End() ? RegContext::AtEnd
                                            : RegContext::NextFor(static_cast<unsigned char>(*end));
    return automaton_.Find(&notes_[block * automaton_.Words()], next);
}

void RegViability::Cover(std::size_t block) {
    while (covered_ > block) {
        const State state = Read(--covered_);
        if (covered_ != 0) {
            std::copy_n(automaton_.Eaters(state), automaton_.Words(),
                        &notes_[(covered_ - 1) * automaton_.Words()]);
        }
    }
}

void RegViability::Load(std::size_t block) {
    Cover(block);
    if (loaded_ != block) {
        Read(block);
    }
}

/// Works out and keeps the states of a block. Returns the one of its first character.
RegViability::State RegViability::Read(std::size_t block) {
    if (automaton_.Trim()) {
        Forget();
    }
    State state = StateBehind(block);
    std::uint8_t starts = 0;
    loaded_ = block;
    loadedBegin_ = BlockBegin(block);
    states_.resize(static_cast<std::size_t>(BlockEnd(block) - loadedBegin_));
    for (std::size_t i = states_.size(); i-- > 0;) {
        state = automaton_.Step(state, static_cast<unsigned char>(loadedBegin_[i]));
        states_[i] = state;
        starts |= automaton_.StartsOf(state);
    }
    GrowKnown();
    hasStart_[block] = starts;
    steps_ += states_.size();
    return state;
}

RegViability::State RegViability::LoadStateAt(const char* at) {
    if (at == subject_.End()) {
        const State state = automaton_.Find(noEaters_.data(), RegContext::AtEnd);
        GrowKnown();
        return state;
    }
    const std::size_t block = BlockOf(at);
    Load(block);
    return states_[static_cast<std::size_t>(at - BlockBegin(block))];
}

RegContext RegViability::ContextAt(const char* at, const RegTail& tail, State state) const {
    return {.atBegin = at == tail.begin,
            .afterWord = IsAfterWord(at, tail),
            .next = automaton_.NextOf(state)};
}

const char* RegViability::FindStart(const RegTail& tail) {
    if (Enter(tail.begin, tail) != kNowhere) {
        return tail.begin;
    }
    if (tail.begin == tail.end) {
        return nullptr;
    }
    const char* from = tail.begin + 1;
    for (std::size_t block = BlockOf(tail.begin); block < blocks_; ++block) {
        if (hasStart_[block] != 0) {
            from = std::max(from, BlockBegin(block));
            if (const char* const start = FirstStartIn(block, from)) {
                return start;
            }
        }
    }
    return Enter(tail.end, tail) != kNowhere ? tail.end : nullptr;
}

const char* RegViability::FirstStartIn(std::size_t block, const char* from) {
    Load(block);
    steps_ += block_;
    const char* const begin = BlockBegin(block);
    for (const char* at = from; at < BlockEnd(block); ++at) {
        const bool afterWord = IsRegWordChar(static_cast<unsigned char>(at[-1]));
        const auto starts =
            afterWord ? RegAutomaton::kStartsAfterWord : RegAutomaton::kStartsAfterOther;
        if ((automaton_.StartsOf(states_[static_cast<std::size_t>(at - begin)]) & starts) != 0) {
            return at;
        }
    }
    return nullptr;
}

RegViability::Target RegViability::Enter(const char* at, const RegTail& tail) {
    bounds_.clear();
    const State state = StateAt(at);
    return Descend(code_.Entry(), state, ContextAt(at, tail, state));
}

const char* RegViability::MatchEnd(const RegTail& tail, const char* at, const RegGroups& groups) {
    Target target = Enter(at, tail);
    if (target == kNowhere) {
        return nullptr;
    }
    StoreBounds(at, groups);
    return groups.starts == nullptr && keepsKnown_ ? Walk(target, at, tail)
                                                   : WalkGroups(target, at, tail, groups);
}

const char* RegViability::WalkGroups(Target target, const char* at, const RegTail& tail,
                                     const RegGroups& groups) {
    while (target != kEnd) {
        const State state = StateAt(++at);
        bounds_.clear();
        target = Follow(target, state, ContextAt(at, tail, state));
        StoreBounds(at, groups);
        ++steps_;
    }
    return at;
}

const char* RegViability::Walk(Target target, const char* at, const RegTail& tail) {
    const char* const from = at;
    while (target != kEnd) {
        const State state = StateAt(++at);
        Target& known = Known(target, state, IsAfterWord(at, tail));
        if (known == kUnknown) {
            known = Follow(target, state, ContextAt(at, tail, state));
        }
        target = known;
    }
    steps_ += static_cast<std::uint64_t>(at - from);
    return at;
}

RegViability::Target RegViability::Follow(Target eater, State state, const RegContext& context) {
    if (places_.HasSuccessor(eater)) {
        return static_cast<Target>(eater + 1);
    }
    const RegNode& node = places_.NodeOf(eater);
    if (RegPlaces::IsLoop(node) && HasRegBit(automaton_.Eaters(state), eater)) {
        return eater;
    }
    return Descend(node.go, state, context);
}

/// The first viable target in the order of preference. The nodes on the way form no circle, but
/// ways may join, so each is visited once: where it led nowhere before, it does again.
RegViability::Target RegViability::Descend(std::uint16_t root, State state,
                                           const RegContext& context) {
    const std::uint64_t* const eaters = automaton_.Eaters(state);
    ++descent_;
    forks_.assign(1, {root, bounds_.size()});
    while (!forks_.empty()) {
        const auto [place, bounds] = forks_.back();
        forks_.pop_back();
        if (place == kNoWay || visited_[place] == descent_) {
            continue;
        }
        visited_[place] = descent_;
        ++steps_;
        bounds_.resize(bounds);
        const RegNode& node = code_.Node(place);
        if (node.op == RegOp::End) {
            return kEnd;
        }
        const bool eats = RegPlaces::IsBarrier(node) || RegPlaces::IsLoop(node);
        if (eats && HasRegBit(eaters, places_.Base(place))) {
            return static_cast<Target>(places_.Base(place));
        }
        if (IsRegGroupBound(node.op)) {
            bounds_.push_back(place);
        } else if (RegPlaces::IsBarrier(node) ||
                   (!eats && node.op != RegOp::Branch && !context.Holds(node.op))) {
            continue;
        }
        forks_.push_back({node.other, bounds_.size()});
        forks_.push_back({node.go, bounds_.size()});
    }
    return kNowhere;
}

void RegViability::StoreBounds(const char* at, const RegGroups& groups) {
    if (groups.starts == nullptr) {
        return;
    }
    for (const std::uint16_t place : bounds_) {
        const RegNode& node = code_.Node(place);
        (*(node.op == RegOp::Open ? groups.starts : groups.ends))[node.value] = at;
    }
}
