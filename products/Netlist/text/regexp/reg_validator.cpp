#include "reg_validator.h"

namespace {

/// Bytes of a node in the compact encoding: its operation and the offset of the next one.
constexpr std::size_t kNodeSize = 3;

} // namespace

bool CRegValidator::Validate() {
    if (!Parse())
        return false;
    if (m_counts.size >= kSizeLimit) {
        SetError(RegError::TooBig);
        return false;
    }
    return true;
}

void CRegValidator::EmitByte(unsigned char byte) {
    m_counts.size += 1;
    m_counts.letters += m_inText && byte != 0 ? 1 : 0;
}

RegPlace CRegValidator::EmitNode(RegOp op, int) {
    m_counts.size += kNodeSize;
    m_counts.nodes += 1;
    m_counts.sets += op == RegOp::Any || op == RegOp::AnyOf || op == RegOp::AnyBut ? 1 : 0;
    m_inText = op == RegOp::Exactly;
    return 0;
}

void CRegValidator::InsertNode(RegOp op, RegPlace) {
    m_counts.size += kNodeSize;
    m_counts.nodes += 1;
    m_counts.sets +=
        op != RegOp::Branch && m_inText ? 1 : 0; // a loop over a character makes it a set
}

void CRegValidator::EmitRange(unsigned char first, unsigned char last) {
    m_counts.size += last - first + std::size_t{1};
}
