#include "reg_program.h"

#include <algorithm>
#include <new>

RegCode::RegCode(const RegCounts& counts) : counts_(counts) {
    const std::size_t sets = counts.sets * sizeof(ByteSet);
    const std::size_t firsts = counts.nodes * sizeof(ByteSet);
    const std::size_t nodes = counts.nodes * sizeof(RegNode);
    memory_ = std::make_unique_for_overwrite<std::byte[]>(sets + firsts + nodes + counts.letters);
    std::byte* place = memory_.get();
    sets_ = new (place) ByteSet[counts.sets];
    firsts_ = new (place += sets) ByteSet[counts.nodes];
    nodes_ = new (place += firsts) RegNode[counts.nodes];
    letters_ = new (place += nodes) char[counts.letters];
}

void CRegProgram::ClearPointers() {
    StartPointers.fill(nullptr);
    EndPointers.fill(nullptr);
    GroupCount = -1;
}

void CRegProgram::CountGroups() {
    const auto unset = std::count(EndPointers.begin(), EndPointers.end(), nullptr);
    GroupCount = kPointers - static_cast<int>(unset) - 1;
}

RegPlace CRegProgramAccessor::NextOf(RegPlace place) {
    if (!HasCode()) {
        return kNoPlace;
    }
    const RegPlace distance = NodeAt(place).next;
    return distance == 0 ? kNoPlace : place + distance;
}
