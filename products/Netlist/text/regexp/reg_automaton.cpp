#include "reg_automaton.h"

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
    : places_(places), words_((places.Count() + 64) / 64), cacheBytes_(cacheBytes), made_(words_),
      viable_(places.Code().Nodes().size()) {
    for (const std::uint16_t place : places.Order()) {
        const RegOp op = places.Code().Node(place).op;
        asksBehind_ = asksBehind_ || op == RegOp::WordA;
        asksAhead_ = asksAhead_ || op == RegOp::WordA || op == RegOp::WordZ || op == RegOp::Eol;
    }
    SortBytes();
    NoteEaters();
    slots_.resize(64);
}

namespace {

/// Splits the bytes into classes that no set tells apart.
class ByteSorter {
public:
    void Split(const ByteSet& set) {
        std::array<int, 512> parts;
        parts.fill(-1);
        count_ = 0;
        for (unsigned byte = 0; byte < 256; ++byte) {
            const unsigned old =
                classes_[byte] * 2U + (set.Has(static_cast<std::uint8_t>(byte)) ? 1 : 0);
            if (parts[old] < 0) {
                parts[old] = static_cast<int>(count_++);
            }
            classes_[byte] = static_cast<std::uint8_t>(parts[old]);
        }
    }
    unsigned Count() const { return count_; }
    const std::array<std::uint8_t, 256>& Classes() const { return classes_; }

private:
    std::array<std::uint8_t, 256> classes_{};
    unsigned count_ = 1;
};

} // namespace

void RegAutomaton::SortBytes() {
    ByteSorter sorter;
    ByteSet letters; // that an EXACTLY names
    for (std::size_t eater = 0; eater < places_.Count(); ++eater) {
        const ByteSet set = places_.BytesOf(eater);
        if (places_.NodeOf(eater).op == RegOp::Exactly) {
            letters |= set;
        } else {
            sorter.Split(set);
        }
    }
    for (unsigned byte = letters.Next(0); byte < 256; byte = letters.Next(byte + 1)) {
        sorter.Split(ByteSet::Of(static_cast<std::uint8_t>(byte)));
    }
    if (asksAhead_) {
        sorter.Split(kRegWordSet);
    }
    classes_ = sorter.Classes();
    shift_ = static_cast<unsigned>(std::bit_width(sorter.Count() - 1));
}

void RegAutomaton::NoteEaters() {
    takers_.resize(words_ << shift_);
    for (std::size_t eater = 0; eater < places_.Count(); ++eater) {
        const ByteSet set = places_.BytesOf(eater);
        for (unsigned byte = set.Next(0); byte < 256; byte = set.Next(byte + 1)) {
            AddRegBit(&takers_[classes_[byte] * words_], eater);
        }
    }
}

bool RegAutomaton::Trim() {
    if (StateCount() * StateSize() <= cacheBytes_) {
        return false;
    }
    steps_.clear();
    sets_.clear();
    nexts_.clear();
    starts_.clear();
    slots_.assign(64, 0);
    return true;
}

RegAutomaton::State RegAutomaton::Find(const std::uint64_t* eaters, RegContext::Next next) {
    next = asksAhead_ ? next : RegContext::AtEnd;
    const std::uint32_t index = slots_[Slot(eaters, next)];
    return index != 0 ? static_cast<State>((index - 1) << shift_) : Add(eaters, next);
}

std::size_t RegAutomaton::Slot(const std::uint64_t* eaters, RegContext::Next next) const {
    std::uint64_t hash = next;
    for (std::size_t word = 0; word < words_; ++word) {
        hash = (hash ^ eaters[word]) * 0x9E3779B97F4A7C15ULL;
        hash ^= hash >> 29;
    }
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
        if (slots_[slot] == 0) {
            return slot;
        }
        const std::size_t index = slots_[slot] - 1;
        if (nexts_[index] == next &&
            std::equal(eaters, eaters + words_, sets_.begin() + std::ptrdiff_t(index * words_))) {
            return slot;
        }
    }
}

RegAutomaton::State RegAutomaton::Add(const std::uint64_t* eaters, RegContext::Next next) {
    const std::size_t index = StateCount();
    sets_.insert(sets_.end(), eaters, eaters + words_);
    nexts_.push_back(next);
    steps_.resize(steps_.size() + (std::size_t{1} << shift_), kUnknown);

    const std::uint64_t* const stored = &sets_[index * words_];
    const std::uint16_t entry = places_.Code().Entry();
    Evaluate(stored, {.next = next});
    auto starts = viable_[entry] != 0 ? kStartsAfterOther : std::uint8_t{0};
    if (asksBehind_) {
        Evaluate(stored, {.afterWord = true, .next = next});
    }
    starts |= viable_[entry] != 0 ? kStartsAfterWord : std::uint8_t{0};
    starts_.push_back(starts);

    if (StateCount() * 2 > slots_.size()) {
        slots_.assign(slots_.size() * 2, 0);
        for (std::size_t i = 0; i < index; ++i) {
            slots_[Slot(&sets_[i * words_], nexts_[i])] = static_cast<std::uint32_t>(i + 1);
        }
    }
    slots_[Slot(stored, next)] = static_cast<std::uint32_t>(index + 1);
    return static_cast<State>(index << shift_);
}

RegAutomaton::State RegAutomaton::MakeStep(State state, unsigned char byte) {
    const std::uint64_t* const eaters = Eaters(state);
    Evaluate(eaters, {.afterWord = IsRegWordChar(byte), .next = NextOf(state)});
    const std::uint64_t* const takers = &takers_[classes_[byte] * words_];
    for (std::size_t word = 0; word < words_; ++word) {
        std::uint64_t made = 0;
        for (std::uint64_t rest = takers[word]; rest != 0; rest &= rest - 1) {
            const auto bit = static_cast<unsigned>(std::countr_zero(rest));
            made |= Follows(word * 64 + bit, eaters) ? 1ULL << bit : 0;
        }
        made_[word] = made;
    }
    work_ += places_.Count();
    const State next = Find(made_.data(), RegContext::NextFor(byte));
    steps_[state + classes_[byte]] = next;
    return next;
}

bool RegAutomaton::Follows(std::size_t eater, const std::uint64_t* eaters) const {
    if (places_.HasSuccessor(eater)) {
        return HasRegBit(eaters, eater + 1);
    }
    const RegNode& node = places_.NodeOf(eater);
    return viable_[node.go] != 0 || (RegPlaces::IsLoop(node) && HasRegBit(eaters, eater));
}

void RegAutomaton::Evaluate(const std::uint64_t* eaters, const RegContext& context) {
    work_ += places_.Order().size();
    const auto leads = [this](std::uint16_t way) { return way != kNoWay && viable_[way] != 0; };
    for (const std::uint16_t place : places_.Order()) {
        const RegNode& node = places_.Code().Node(place);
        bool viable = false;
        if (node.op == RegOp::End) {
            viable = true;
        } else if (RegPlaces::IsBarrier(node) || RegPlaces::IsLoop(node)) {
            viable = HasRegBit(eaters, places_.Base(place)) ||
                     (node.op == RegOp::Star && leads(node.go));
        } else if (node.op == RegOp::Branch) {
            viable = leads(node.go) || leads(node.other);
        } else {
            viable = leads(node.go) && (IsRegGroupBound(node.op) || context.Holds(node.op));
        }
        viable_[place] = viable ? 1 : 0;
    }
}
