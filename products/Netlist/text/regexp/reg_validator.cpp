#include "reg_validator.h"

namespace {

/// Bytes of a node in the compact encoding: its operation and the offset of the next one.
constexpr std::size_t kNodeSize = 3;

} // namespace

bool CRegValidator::Validate() {
    if (!Parse()) {
        return false;
    }
    if (counts_.size >= kSizeLimit) {
        SetError(RegError::TooBig);
        return false;
    }
    return true;
}

void CRegValidator::EmitByte(unsigned char byte) {
    counts_.size += 1;
    counts_.letters += inText_ && byte != 0 ? 1 : 0;
}

RegPlace CRegValidator::EmitNode(RegOp op, int) {
    counts_.size += kNodeSize;
    counts_.nodes += 1;
    counts_.sets += op == RegOp::Any || op == RegOp::AnyOf || op == RegOp::AnyBut ? 1 : 0;
    inText_ = op == RegOp::Exactly;
    return 0;
}

void CRegValidator::InsertNode(RegOp op, RegPlace) {
    counts_.size += kNodeSize;
    counts_.nodes += 1;
    counts_.sets +=
        op != RegOp::Branch && inText_ ? 1 : 0; // a loop over a character makes it a set
}

void CRegValidator::EmitRange(unsigned char first, unsigned char last) {
    counts_.size += last - first + std::size_t{1};
}
