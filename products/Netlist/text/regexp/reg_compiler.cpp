#include "reg_compiler.h"

#include "reg_linker.h"
#include "reg_validator.h"

#include <algorithm>

void CRegCompiler::EmitByte(unsigned char byte) {
    RegNode& node = NodeAt(m_nodes - 1);
    if (node.op != RegOp::Exactly) {
        ByteSet& set = Code().Set(node.operand);
        if (byte != 0) {
            set.Add(byte);
        } else if (node.op == RegOp::AnyBut) {
            set.Add(0);
            set = ~set;
        }
    } else if (byte != 0) {
        node.value = node.length == 0 ? byte : node.value;
        ++node.length;
        Code().Letters()[m_letters++] = static_cast<char>(byte);
    }
}

ByteSet& CRegCompiler::NewSet(RegNode& node) {
    node.operand = m_sets++;
    return Code().Set(node.operand);
}

RegPlace CRegCompiler::EmitNode(RegOp op, int group) {
    RegNode& node = NodeAt(m_nodes);
    node.op = op;
    node.value = static_cast<std::uint8_t>(group);
    if (op == RegOp::Any)
        NewSet(node).AddRange(1, 255);
    else if (op == RegOp::AnyOf || op == RegOp::AnyBut)
        NewSet(node);
    else if (op == RegOp::Exactly)
        node.operand = m_letters;
    return m_nodes++;
}

void CRegCompiler::InsertNode(RegOp op, RegPlace place) {
    RegNode* const at = &NodeAt(place);
    std::move_backward(at, at + (m_nodes - place), at + (m_nodes - place) + 1);
    ++m_nodes;
    *at = RegNode{};
    at->op = op;
    if (op == RegOp::Branch)
        return;
    const RegNode& repeated = at[1];
    if (repeated.op == RegOp::Exactly)
        NewSet(*at).Add(repeated.value);
    else
        at->operand = repeated.operand;
}

void CRegCompiler::SetNext(RegPlace place, RegPlace target) {
    RegPlace last = place;
    for (RegPlace next = NextOf(last); next != kNoPlace; next = NextOf(last))
        last = next;
    NodeAt(last).next = static_cast<std::int16_t>(target - last);
}

void CRegCompiler::SetOperandNext(RegPlace place, RegPlace target) {
    if (NodeAt(place).op == RegOp::Branch)
        SetNext(place + 1, target);
}

void CRegCompiler::EmitRange(unsigned char first, unsigned char last) {
    Code().Set(NodeAt(m_nodes - 1).operand).AddRange(first, last);
}

namespace {

constexpr unsigned char kCaseBit = 'a' - 'A';

constexpr bool IsLetter(char c) {
    const auto lower = static_cast<unsigned char>(c | kCaseBit);
    return lower >= 'a' && lower <= 'z';
}

/// Finds what every match must have, if the top level has one branch only. The chain of that branch
/// leads past all groups and alternatives, so each EXACTLY on it is part of any match.
void FindHints(CRegProgram& program, bool beginsWithLoop) {
    const auto nodes = program.Program.Nodes();
    if (nodes[static_cast<std::size_t>(nodes[0].next)].op != RegOp::End)
        return;
    program.FirstChar = nodes[1].op == RegOp::Exactly ? nodes[1].value : std::uint8_t{0};
    program.Anchored = nodes[1].op == RegOp::Bol;
    if (!beginsWithLoop)
        return;
    for (const RegNode* node = &nodes[1]; node->op != RegOp::End; node += node->next) {
        if (node->op == RegOp::Exactly && node->length >= program.MustLength) {
            program.MustHave = program.Program.Text(*node);
            program.MustLength = node->length;
        }
    }
}

} // namespace

RegError CompileRegProgram(std::string_view expression, CRegProgram& program) {
    CRegValidator validator(expression);
    if (!validator.Validate())
        return static_cast<RegError>(validator.LastErrorCode());
    program.Program = RegCode(validator.Counts());
    program.Size = validator.Counts().size;
    CRegCompiler compiler(expression, program.Program);
    program.Valid = compiler.Parse();
    program.HasGroups = compiler.GroupCount() != 0;
    FindHints(program, compiler.BeginsWithLoop());
    LinkRegCode(program.Program);
    return RegError::None;
}

std::string FoldRegCase(std::string_view expression) {
    std::string folded;
    folded.reserve(expression.size() * 4);
    for (std::size_t at = 0; at < expression.size(); ++at) {
        const char c = expression[at];
        if (IsLetter(c)) {
            folded += {'[', static_cast<char>(c & ~kCaseBit), static_cast<char>(c | kCaseBit), ']'};
            continue;
        }
        std::size_t last = at;
        if (c == '[') { // up to the next "]" that doesn't stand directly behind the opening
            last += expression.substr(last + 1, 1) == "^" ? 1 : 0;
            last += expression.substr(last + 1, 1) == "]" ? 1 : 0;
            last = std::min(expression.find(']', last + 1), expression.size() - 1);
        }
        folded += expression.substr(at, last - at + 1);
        at = last;
    }
    return folded;
}
