#include "reg_linker.h"

namespace {

constexpr ByteSet kNonWord = ~kRegWordSet; // the subject's end, as NUL, is none either
constexpr ByteSet kEnd = ByteSet::Of(0);

class Linker {
public:
    explicit Linker(RegCode& code) : m_code(code), m_nodes(code.Nodes()) {}

    void Run() {
        for (std::size_t place = 0; place < m_nodes.size(); ++place)
            Link(place);
        m_code.SetEntry(Resolve(0));
        // A way back leads to a set that is not known yet; all bytes stand for it the first time.
        FindFirsts();
        if (m_hasWayBack)
            FindFirsts();
        for (RegNode& node : m_nodes)
            if (node.op == RegOp::Star || node.op == RegOp::Plus)
                ChooseRun(node);
    }

private:
    /// The first node at or behind `place` at which something happens.
    std::uint16_t Resolve(std::size_t place) const {
        for (;;) {
            const RegNode& node = m_nodes[place];
            if (node.op == RegOp::Nothing || node.op == RegOp::Back)
                place = Behind(place);
            else if (node.op == RegOp::Branch && m_nodes[Behind(place)].op != RegOp::Branch)
                ++place;
            else
                return static_cast<std::uint16_t>(place);
        }
    }

    std::size_t Behind(std::size_t place) const {
        return place + static_cast<std::size_t>(std::ptrdiff_t{m_nodes[place].next});
    }

    void Link(std::size_t place) {
        RegNode& node = m_nodes[place];
        if (node.op == RegOp::Branch) {
            node.go = Resolve(place + 1);
            node.other =
                m_nodes[Behind(place)].op == RegOp::Branch ? Resolve(Behind(place)) : kNoWay;
        } else if (node.next != 0) {
            node.go = Resolve(Behind(place));
            m_hasWayBack = m_hasWayBack || node.go <= place;
        }
    }

    void FindFirsts() {
        for (std::size_t place = m_nodes.size(); place-- > 0;)
            m_code.First(place) = FirstOf(place);
        m_wayBackKnown = true;
    }

    ByteSet FirstBehind(std::size_t place) const {
        const std::uint16_t go = m_nodes[place].go;
        if (go == kNoWay || (go <= place && !m_wayBackKnown))
            return ByteSet::All();
        return m_code.First(go);
    }

    ByteSet FirstOf(std::size_t place) const {
        const RegNode& node = m_nodes[place];
        switch (node.op) {
        case RegOp::End:
            return ByteSet::All();
        case RegOp::Eol:
            return kEnd & FirstBehind(place);
        case RegOp::WordA:
            return kRegWordSet & FirstBehind(place);
        case RegOp::WordZ:
            return kNonWord & FirstBehind(place);
        case RegOp::Any:
        case RegOp::AnyOf:
        case RegOp::AnyBut:
        case RegOp::Plus:
            return m_code.Set(node.operand);
        case RegOp::Exactly:
            return ByteSet::Of(node.value);
        case RegOp::Star:
            return m_code.Set(node.operand) | FirstBehind(place);
        case RegOp::Branch:
            return node.other == kNoWay ? FirstBehind(place)
                                        : FirstBehind(place) | m_code.First(node.other);
        default:
            return FirstBehind(place);
        }
    }

    void ChooseRun(RegNode& node) const {
        const ByteSet& set = m_code.Set(node.operand);
        node.possessive =
            m_nodes[node.go].op == RegOp::End || !set.Intersects(m_code.First(node.go));
        ByteSet lacking = ~set;
        lacking.Remove(0);
        if (lacking.Empty()) {
            node.run = RegRun::ToEnd;
        } else if (lacking.Count() == 1) {
            node.run = RegRun::Until;
            node.value = static_cast<std::uint8_t>(lacking.Next(0));
        }
    }

    RegCode& m_code;
    std::span<RegNode> m_nodes;
    bool m_hasWayBack = false;
    bool m_wayBackKnown = false;
};

} // namespace

void LinkRegCode(RegCode& code) {
    Linker(code).Run();
}
