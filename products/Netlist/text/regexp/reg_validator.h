/// The first pass of a compilation.
#pragma once

#include "reg_compiler_base.h"

/// Counts what an expression needs, and finds all its errors. Its places are none of a program.
class CRegValidator final : public CRegCompilerBase {
public:
    explicit CRegValidator(std::string_view text) : CRegCompilerBase(text, nullptr) {}

    /// Runs the pass. False with an error if the expression has one or its program would be too
    /// big.
    bool Validate();

    const RegCounts& Counts() const { return m_counts; }

private:
    void EmitByte(unsigned char byte) override;
    RegPlace EmitNode(RegOp op, int group) override;
    void InsertNode(RegOp op, RegPlace place) override;
    void SetNext(RegPlace, RegPlace) override {}
    void SetOperandNext(RegPlace, RegPlace) override {}
    void EmitRange(unsigned char first, unsigned char last) override;

    RegCounts m_counts;
    bool m_inText = false; ///< the node last emitted is an EXACTLY
};
