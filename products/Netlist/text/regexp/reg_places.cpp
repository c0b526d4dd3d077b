#include "reg_places.h"

RegPlaces::RegPlaces(const RegCode& code) : m_code(code), m_bases(code.Nodes().size()) {
    std::vector<std::uint8_t> seen(code.Nodes().size());
    SortFrom(code.Entry(), seen);
    // Ways on from places that take characters add nodes, whose own ways on must be followed too.
    for (std::size_t done = 0; done < m_order.size(); ++done) {
        const RegNode& node = m_code.Node(m_order[done]);
        if (IsBarrier(node) && node.go != kNoWay)
            SortFrom(node.go, seen);
    }
    NumberEaters();
}

bool RegPlaces::IsBarrier(const RegNode& node) {
    switch (node.op) {
    case RegOp::End:
    case RegOp::Any:
    case RegOp::AnyOf:
    case RegOp::AnyBut:
    case RegOp::Exactly:
    case RegOp::Plus:
        return true;
    default:
        return false;
    }
}

void RegPlaces::SortFrom(std::uint16_t root, std::vector<std::uint8_t>& seen) {
    enum : std::uint8_t { Unseen, Open, Done };
    std::vector<std::uint16_t> stack{root};
    while (!stack.empty()) {
        const std::uint16_t place = stack.back();
        if (seen[place] != Unseen) {
            stack.pop_back();
            if (seen[place] == Open) {
                seen[place] = Done;
                m_order.push_back(place);
            }
            continue;
        }
        seen[place] = Open;
        const RegNode& node = m_code.Node(place);
        if (!IsBarrier(node)) {
            for (const std::uint16_t way : {node.other, node.go})
                if (way != kNoWay && seen[way] == Unseen)
                    stack.push_back(way);
        }
    }
}

void RegPlaces::NumberEaters() {
    for (const std::uint16_t place : m_order) {
        const RegNode& node = m_code.Node(place);
        if ((!IsBarrier(node) && !IsLoop(node)) || node.op == RegOp::End)
            continue;
        m_bases[place] = static_cast<std::uint32_t>(m_eaters.size());
        const std::size_t count = node.op == RegOp::Exactly ? node.length : 1;
        for (std::size_t offset = 0; offset < count; ++offset)
            m_eaters.push_back({place, static_cast<std::uint16_t>(offset)});
    }
}

ByteSet RegPlaces::BytesOf(std::size_t eater) const {
    const RegNode& node = NodeOf(eater);
    if (node.op == RegOp::Exactly)
        return ByteSet::Of(static_cast<unsigned char>(m_code.Text(node)[At(eater).offset]));
    return m_code.Set(node.operand);
}

bool RegPlaces::HasSuccessor(std::size_t eater) const {
    const RegNode& node = NodeOf(eater);
    return node.op == RegOp::Exactly && At(eater).offset + 1U < node.length;
}
