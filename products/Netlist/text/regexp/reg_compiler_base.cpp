#include "reg_compiler_base.h"

#include "byte_set.h"

namespace {

constexpr ByteSet SetOf(std::string_view bytes) {
    ByteSet set;
    for (const char byte : bytes)
        set.Add(static_cast<unsigned char>(byte));
    return set;
}

constexpr ByteSet kRepeats = SetOf("*+?");
/// Characters that end a run of plain ones. `]` alone is plain.
constexpr ByteSet kSpecial = SetOf("^$.[()|?+*\\");

} // namespace

CRegCompilerBase::CRegCompilerBase(std::string_view text, RegCode* code)
    : CRegProgramAccessor(code), m_text(text) {}

bool CRegCompilerBase::Parse() {
    Traits traits;
    const bool parsed = ParseExpression(false, traits) != kNoPlace;
    m_beginsWithLoop = traits.loop;
    return parsed;
}

RegPlace CRegCompilerBase::Fail(RegError error) {
    SetError(error);
    return kNoPlace;
}

RegPlace CRegCompilerBase::ParseExpression(bool inGroup, Traits& traits) {
    RegPlace open = kNoPlace;
    int group = 0;
    if (inGroup) {
        if (m_groups == kMaxGroups)
            return Fail(RegError::TooManyGroups);
        group = ++m_groups;
        open = EmitNode(RegOp::Open, group);
    }
    RegPlace last = open;
    const RegPlace first = ParseBranches(traits, last);
    if (first == kNoPlace || !CheckEnd(inGroup))
        return kNoPlace;
    traits.loop = traits.loop && !inGroup;
    const RegPlace end = EmitNode(inGroup ? RegOp::Close : RegOp::End, group);
    SetNext(last, end);
    for (RegPlace branch = first; branch != kNoPlace && branch != end; branch = NextOf(branch))
        SetOperandNext(branch, end);
    return inGroup ? open : first;
}

RegPlace CRegCompilerBase::ParseBranches(Traits& traits, RegPlace& last) {
    traits = {.hasWidth = true};
    RegPlace first = kNoPlace;
    for (;;) {
        Traits latest;
        const RegPlace branch = ParseBranch(latest);
        if (branch == kNoPlace)
            return kNoPlace;
        traits.hasWidth = traits.hasWidth && latest.hasWidth;
        traits.loop = latest.loop;
        if (last != kNoPlace)
            SetNext(last, branch);
        first = first == kNoPlace ? branch : first;
        last = branch;
        if (Peek() != '|')
            return first;
        ++m_at;
    }
}

bool CRegCompilerBase::CheckEnd(bool inGroup) {
    const bool closed = Peek() == ')';
    if (closed != inGroup) {
        Fail(inGroup ? RegError::UnterminatedGroup : RegError::UnmatchedGroup);
        return false;
    }
    m_at += inGroup ? 1 : 0;
    return true;
}

RegPlace CRegCompilerBase::ParseBranch(Traits& traits) {
    const RegPlace branch = EmitNode(RegOp::Branch);
    RegPlace chain = kNoPlace;
    for (unsigned char c = Peek(); c != 0 && c != '|' && c != ')'; c = Peek()) {
        Traits piece;
        const RegPlace latest = ParsePiece(piece);
        if (latest == kNoPlace)
            return kNoPlace;
        traits.hasWidth = traits.hasWidth || piece.hasWidth;
        if (chain != kNoPlace)
            SetNext(chain, latest);
        else
            traits.loop = piece.loop;
        chain = latest;
    }
    if (chain == kNoPlace)
        EmitNode(RegOp::Nothing);
    return branch;
}

RegPlace CRegCompilerBase::ParsePiece(Traits& traits) {
    const RegPlace atom = ParseAtom(traits);
    const unsigned char op = Peek();
    if (atom == kNoPlace || !kRepeats.Has(op))
        return atom;
    if (!traits.hasWidth && op != '?')
        return Fail(RegError::EmptyOperand);
    EmitRepeat(op, atom, traits.simple);
    traits = {.hasWidth = op == '+', .loop = op != '?'};
    ++m_at;
    return kRepeats.Has(Peek()) ? Fail(RegError::NestedRepeat) : atom;
}

void CRegCompilerBase::EmitRepeat(unsigned char op, RegPlace atom, bool simple) {
    if (simple && op != '?') {
        InsertNode(op == '*' ? RegOp::Star : RegOp::Plus, atom);
    } else if (op == '*') { // the atom loops back to its branch; the other branch leaves
        InsertNode(RegOp::Branch, atom);
        SetOperandNext(atom, EmitNode(RegOp::Back));
        SetOperandNext(atom, atom);
        SetNext(atom, EmitNode(RegOp::Branch));
        SetNext(atom, EmitNode(RegOp::Nothing));
    } else if (op == '+') { // behind the atom, a branch leads back to it and another leaves
        const RegPlace loop = EmitNode(RegOp::Branch);
        SetNext(atom, loop);
        SetNext(EmitNode(RegOp::Back), atom);
        SetNext(loop, EmitNode(RegOp::Branch));
        SetNext(atom, EmitNode(RegOp::Nothing));
    } else {
        InsertNode(RegOp::Branch, atom);
        SetNext(atom, EmitNode(RegOp::Branch));
        const RegPlace end = EmitNode(RegOp::Nothing);
        SetNext(atom, end);
        SetOperandNext(atom, end);
    }
}

RegPlace CRegCompilerBase::ParseAtom(Traits& traits) {
    const unsigned char c = Peek();
    if (!kSpecial.Has(c))
        return ParseRun(traits);
    ++m_at;
    switch (c) {
    case '(':
        return ParseExpression(true, traits);
    case '[':
        traits = {.hasWidth = true, .simple = true};
        return ParseClass();
    case '.':
        traits = {.hasWidth = true, .simple = true};
        return EmitNode(RegOp::Any);
    case '^':
        return EmitNode(RegOp::Bol);
    case '$':
        return EmitNode(RegOp::Eol);
    case '\\':
        return ParseEscape(traits);
    default: // `|` and `)` end a branch before an atom is asked for
        return Fail(RegError::NothingToRepeat);
    }
}

RegPlace CRegCompilerBase::ParseEscape(Traits& traits) {
    const unsigned char c = Peek();
    if (c == 0)
        return Fail(RegError::TrailingBackslash);
    ++m_at;
    if (c == '<' || c == '>')
        return EmitNode(c == '<' ? RegOp::WordA : RegOp::WordZ);
    traits = {.hasWidth = true, .simple = true};
    return EmitText(m_text.substr(m_at - 1, 1));
}

RegPlace CRegCompilerBase::ParseClass() {
    const bool complement = Peek() == '^';
    m_at += complement ? 1 : 0;
    const RegPlace place = EmitNode(complement ? RegOp::AnyBut : RegOp::AnyOf);
    if (!ParseClassMembers())
        return kNoPlace;
    if (Peek() != ']')
        return Fail(RegError::UnmatchedClass);
    ++m_at;
    EmitByte(0);
    return place;
}

bool CRegCompilerBase::ParseClassMembers() {
    if (Peek() == ']' || Peek() == '-') {
        EmitByte(Peek());
        ++m_at;
    }
    for (unsigned char c = Peek(); c != 0 && c != ']'; c = Peek()) {
        const unsigned char upper = Peek(1);
        ++m_at;
        if (c != '-' || upper == ']' || upper == 0) {
            EmitByte(c);
            continue;
        }
        // The member before the "-" bounds the range, even if it bounds another one already.
        const auto lower = static_cast<unsigned char>(m_text[m_at - 2]);
        if (lower > upper) {
            Fail(RegError::InvalidRange);
            return false;
        }
        if (lower < upper)
            EmitRange(static_cast<unsigned char>(lower + 1), upper);
        ++m_at;
    }
    return true;
}

RegPlace CRegCompilerBase::ParseRun(Traits& traits) {
    std::size_t length = 1;
    while (Peek(length) != 0 && !kSpecial.Has(Peek(length)))
        ++length;
    if (length > 1 && kRepeats.Has(Peek(length)))
        --length; // the last one is an atom of its own
    traits = {.hasWidth = true, .simple = length == 1};
    m_at += length;
    return EmitText(m_text.substr(m_at - length, length));
}

RegPlace CRegCompilerBase::EmitText(std::string_view text) {
    const RegPlace place = EmitNode(RegOp::Exactly);
    for (const char c : text)
        EmitByte(static_cast<unsigned char>(c));
    EmitByte(0);
    return place;
}
