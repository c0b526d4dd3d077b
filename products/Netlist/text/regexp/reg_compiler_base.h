/// The parser of expressions.
#pragma once

#include "reg_error_handler.h"
#include "reg_program.h"

#include <cstddef>
#include <string_view>

/// Parses an expression and hands what it finds to its heir, which counts or writes. The depth of
/// the recursion is bounded by the number of groups.
class CRegCompilerBase : public CRegErrorHandler, public CRegProgramAccessor {
public:
    static constexpr int kMaxGroups = 9;
    /// A program of this many bytes is too big.
    static constexpr std::size_t kSizeLimit = 32767;

    /// Goes through the expression. Stops at its first error, in text order, and returns false
    /// then.
    bool Parse();

    /// After parsing: whether the last branch of the top level begins with a piece that ends in `*`
    /// or `+`.
    bool BeginsWithLoop() const { return m_beginsWithLoop; }
    /// The number of groups, that is of opening parentheses.
    int GroupCount() const { return m_groups; }

protected:
    /// `text` holds no NUL and stays alive; `code` is null for a pass that only counts.
    CRegCompilerBase(std::string_view text, RegCode* code);
    ~CRegCompilerBase() = default;

    /// Adds a byte to the operand of the node last emitted; 0 ends it.
    virtual void EmitByte(unsigned char byte) = 0;
    /// Appends a node and returns its place.
    virtual RegPlace EmitNode(RegOp op, int group = 0) = 0;
    /// Puts a node at `place`, before the atom that stands there.
    virtual void InsertNode(RegOp op, RegPlace place) = 0;
    /// Lets the chain that begins at `place` end in `target`.
    virtual void SetNext(RegPlace place, RegPlace target) = 0;
    /// The same for the chain inside the BRANCH at `place`; nothing for another node.
    virtual void SetOperandNext(RegPlace place, RegPlace target) = 0;
    /// Adds the bytes from `first` to `last` as `EmitByte` would.
    virtual void EmitRange(unsigned char first, unsigned char last) = 0;

private:
    /// What is known of a part of the expression.
    struct Traits {
        bool hasWidth = false; ///< it never matches the empty string
        bool simple = false;   ///< it is one node that matches exactly one character
        bool loop = false;     ///< it is a piece with `*` or `+`, or a branch that begins with one
    };

    RegPlace ParseExpression(bool inGroup, Traits& traits);
    RegPlace ParseBranches(Traits& traits, RegPlace& last);
    bool CheckEnd(bool inGroup);
    RegPlace ParseBranch(Traits& traits);
    RegPlace ParsePiece(Traits& traits);
    void EmitRepeat(unsigned char op, RegPlace atom, bool simple);
    RegPlace ParseAtom(Traits& traits);
    RegPlace ParseEscape(Traits& traits);
    RegPlace ParseClass();
    bool ParseClassMembers();
    RegPlace ParseRun(Traits& traits);
    RegPlace EmitText(std::string_view text);
    RegPlace Fail(RegError error);

    /// The character `ahead` places on, 0 behind the end.
    unsigned char Peek(std::size_t ahead = 0) const {
        return m_at + ahead < m_text.size() ? static_cast<unsigned char>(m_text[m_at + ahead]) : 0;
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    int m_groups = 0;
    bool m_beginsWithLoop = false;
};
