/// The second pass of a compilation, and the whole of it.
#pragma once

#include "reg_compiler_base.h"

/// Writes the nodes of an expression that the validator has passed.
class CRegCompiler final : public CRegCompilerBase {
public:
    /// `code` has room for all that the expression needs.
    CRegCompiler(std::string_view text, RegCode& code) : CRegCompilerBase(text, &code) {}

private:
    void EmitByte(unsigned char byte) override;
    RegPlace EmitNode(RegOp op, int group) override;
    void InsertNode(RegOp op, RegPlace place) override;
    void SetNext(RegPlace place, RegPlace target) override;
    void SetOperandNext(RegPlace place, RegPlace target) override;
    void EmitRange(unsigned char first, unsigned char last) override;

    ByteSet& NewSet(RegNode& node);

    RegPlace m_nodes = 0;
    std::uint32_t m_sets = 0;
    std::uint32_t m_letters = 0;
};

/// Compiles `expression`, which holds no NUL, into `program`. Gives the error, and an invalid
/// program then.
RegError CompileRegProgram(std::string_view expression, CRegProgram& program);

/// The text that is compiled when case is ignored: letters outside of classes become classes of
/// their two forms. A backslash gets no care.
std::string FoldRegCase(std::string_view expression);
