#include "reg_viability.h"

#include <algorithm>

namespace {

/// Most bytes that the notes of one subject take, unless blocks would be longer than their number.
constexpr std::size_t kNotesLimit = std::size_t{32} << 20;

constexpr std::size_t kKnownSteps = 512;

} // namespace

RegViability::RegViability(const RegCode& code, const RegLimits& limits)
    : code_(code), places_(code), automaton_(places_, limits.cache),
      leastBlock_(std::max<std::size_t>(limits.block, 1)), known_(kKnownSteps),
      visited_(code.Nodes().size()) {}

void RegViability::Begin(const RegSubject& subject) {
    if (subject.Serial() == subject_.Serial()) {
        return;
    }
    subject_ = subject;
    const std::size_t noteSize = automaton_.Words() * sizeof(std::uint64_t);
    const std::size_t length = subject.Length();
    block_ = std::max(leastBlock_, length / (kNotesLimit / noteSize));
    blocks_ = (length + block_ - 1) / block_;
    covered_ = blocks_;
    loaded_ = ~std::size_t{0};
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

RegViability::State RegViability::StateBehind(std::size_t block) {
    const char* const end = BlockEnd(block);
    const auto next = end == subject_.End() ? RegContext::AtEnd
                                            : RegContext::NextFor(static_cast<unsigned char>(*end));
    return automaton_.Find(&notes_[block * automaton_.Words()], next);
}

void RegViability::Cover(std::size_t block) {
    while (covered_ > block) {
        if (automaton_.Trim()) {
            loaded_ = ~std::size_t{0};
            std::fill(known_.begin(), known_.end(), KnownStep{});
        }
        --covered_;
        State state = StateBehind(covered_);
        State any = 0;
        const char* const begin = BlockBegin(covered_);
        for (const char* at = BlockEnd(covered_); at != begin;) {
            state = automaton_.Step(state, static_cast<unsigned char>(*--at));
            any |= state;
        }
        steps_ += block_;
        hasStart_[covered_] = (any & RegAutomaton::kStarts) != 0 ? 1 : 0;
        if (covered_ != 0) {
            std::copy_n(automaton_.Eaters(state), automaton_.Words(),
                        &notes_[(covered_ - 1) * automaton_.Words()]);
        }
    }
}

void RegViability::Load(std::size_t block) {
    if (loaded_ == block) {
        return;
    }
    Cover(block);
    if (automaton_.Trim()) {
        std::fill(known_.begin(), known_.end(), KnownStep{});
    }
    loaded_ = block;
    State state = StateBehind(block);
    const char* const begin = BlockBegin(block);
    states_.resize(static_cast<std::size_t>(BlockEnd(block) - begin));
    for (std::size_t i = states_.size(); i-- > 0;) {
        state = automaton_.Step(state, static_cast<unsigned char>(begin[i]));
        states_[i] = state;
    }
    steps_ += states_.size();
}

RegViability::State RegViability::StateAt(const char* at) {
    if (at == subject_.End()) {
        const std::vector<std::uint64_t> none(automaton_.Words());
        return automaton_.Find(none.data(), RegContext::AtEnd);
    }
    const std::size_t block = BlockOf(at);
    Load(block);
    return states_[static_cast<std::size_t>(at - BlockBegin(block))];
}

RegContext RegViability::ContextAt(const char* at, const RegTail& tail, State state) const {
    const bool first = at == tail.begin;
    return {.atBegin = first,
            .afterWord = !first && IsRegWordChar(static_cast<unsigned char>(at[-1])),
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
        const State starts =
            afterWord ? RegAutomaton::kStartsAfterWord : RegAutomaton::kStartsAfterOther;
        if ((states_[static_cast<std::size_t>(at - begin)] & starts) != 0) {
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
    while (target != kEnd) {
        ++at;
        ++steps_;
        const State state = StateAt(at);
        const RegContext context = ContextAt(at, tail, state);
        if (groups.starts == nullptr) {
            target = KnownFollow(target, state, context);
        } else {
            bounds_.clear();
            target = Follow(target, state, context);
            StoreBounds(at, groups);
        }
    }
    return at;
}

RegViability::Target RegViability::KnownFollow(Target eater, State state,
                                               const RegContext& context) {
    const std::uint64_t key = std::uint64_t{eater} << 32 | (state & ~RegAutomaton::kStarts) << 1 |
                              (context.afterWord ? 1U : 0U);
    KnownStep& known = known_[(key ^ key >> 32 ^ key >> 7) % kKnownSteps];
    if (known.key != key) {
        known = {key, Follow(eater, state, context)};
    }
    return known.target;
}

RegViability::Target RegViability::Follow(Target eater, State state, const RegContext& context) {
    if (places_.HasSuccessor(eater)) {
        return eater + 1;
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
