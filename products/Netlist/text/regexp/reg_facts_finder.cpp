#include "reg_facts_finder.h"

namespace {

/// Collects the eaters that can be reached without taking a character, whatever the assertions.
class Reach {
public:
    explicit Reach(const RegPlaces& places)
        : m_places(places), m_seen(places.Code().Nodes().size()), m_has(places.Count()) {}

    void From(std::uint16_t root) {
        std::vector<std::uint16_t> stack{root};
        while (!stack.empty()) {
            const std::uint16_t place = stack.back();
            stack.pop_back();
            if (place == kNoWay || m_seen[place] != 0)
                continue;
            m_seen[place] = 1;
            const RegNode& node = m_places.Code().Node(place);
            m_toEnd = m_toEnd || node.op == RegOp::End;
            if (node.op != RegOp::End && (RegPlaces::IsBarrier(node) || RegPlaces::IsLoop(node)))
                Add(m_places.Base(place));
            if (!RegPlaces::IsBarrier(node)) {
                stack.push_back(node.other);
                stack.push_back(node.go);
            }
        }
    }

    /// Goes on behind an eater that took a character.
    void Behind(std::size_t eater) {
        if (m_places.HasSuccessor(eater)) {
            Add(eater + 1);
            return;
        }
        if (RegPlaces::IsLoop(m_places.NodeOf(eater)))
            Add(eater);
        From(m_places.NodeOf(eater).go);
    }

    bool ToEnd() const { return m_toEnd; }
    const std::vector<std::size_t>& Eaters() const { return m_eaters; }

    ByteSet Bytes() const {
        ByteSet bytes;
        for (const std::size_t eater : m_eaters)
            bytes |= m_places.BytesOf(eater);
        return bytes;
    }

private:
    void Add(std::size_t eater) {
        if (m_has[eater] == 0) {
            m_has[eater] = 1;
            m_eaters.push_back(eater);
        }
    }

    const RegPlaces& m_places;
    std::vector<std::uint8_t> m_seen;
    std::vector<std::uint8_t> m_has;
    std::vector<std::size_t> m_eaters;
    bool m_toEnd = false;
};

/// Whether some way to the end takes no character and asks for nothing but the subject's end.
bool MatchesAnyEnd(const RegCode& code) {
    std::vector<std::uint8_t> seen(code.Nodes().size());
    std::vector<std::uint16_t> stack{code.Entry()};
    while (!stack.empty()) {
        const std::uint16_t place = stack.back();
        stack.pop_back();
        if (place == kNoWay || seen[place] != 0)
            continue;
        seen[place] = 1;
        const RegNode& node = code.Node(place);
        if (node.op == RegOp::End)
            return true;
        if (RegPlaces::IsBarrier(node) || node.op == RegOp::Bol || node.op == RegOp::WordA ||
            node.op == RegOp::WordZ)
            continue;
        stack.push_back(node.other);
        stack.push_back(node.go);
    }
    return false;
}

void FindSequence(const RegPlaces& places, RegFacts& facts) {
    const RegCode& code = places.Code();
    std::vector<ByteSet> sequence;
    std::string literal;
    std::uint16_t place = code.Entry();
    for (; code.Node(place).op != RegOp::End; place = code.Node(place).go) {
        const RegNode& node = code.Node(place);
        if (IsRegGroupBound(node.op))
            continue;
        if (!RegPlaces::IsBarrier(node) || node.op == RegOp::Plus)
            return;
        const std::size_t count = node.op == RegOp::Exactly ? node.length : 1;
        for (std::size_t offset = 0; offset < count; ++offset) {
            const ByteSet set = places.BytesOf(places.Base(place) + offset);
            sequence.push_back(set);
            literal += set.Count() == 1 ? std::string(1, static_cast<char>(set.Next(0))) : "";
        }
    }
    facts.literal = literal.size() == sequence.size() ? literal : "";
    facts.fixedSequence = std::move(sequence);
}

} // namespace

RegFacts FindRegFacts(const RegCode& code) {
    const RegPlaces places(code);
    RegFacts facts;
    Reach first(places);
    first.From(code.Entry());
    Reach second(places);
    for (const std::size_t eater : first.Eaters())
        second.Behind(eater);
    // The linker's set knows of assertions, the reach doesn't.
    facts.firstBytes = first.Bytes() & code.First(code.Entry());
    facts.secondBytes = second.Bytes();
    facts.canBeEmpty = first.ToEnd();
    facts.canBeOneByte = second.ToEnd();
    for (std::size_t eater = 0; eater < places.Count(); ++eater)
        facts.alphabet |= places.BytesOf(eater);
    for (const std::uint16_t place : places.Order()) {
        const RegOp op = code.Node(place).op;
        facts.hasBol = facts.hasBol || op == RegOp::Bol;
        facts.hasWordStart = facts.hasWordStart || op == RegOp::WordA;
        facts.looksBehindMatch =
            facts.looksBehindMatch || op == RegOp::Eol || op == RegOp::WordA || op == RegOp::WordZ;
    }
    facts.matchesAnyEnd = MatchesAnyEnd(code);
    FindSequence(places, facts);
    return facts;
}
