#include "reg_program.h"

#include <algorithm>
#include <new>

RegCode::RegCode(const RegCounts& counts) : m_counts(counts) {
    const std::size_t sets = counts.sets * sizeof(ByteSet);
    const std::size_t firsts = counts.nodes * sizeof(ByteSet);
    const std::size_t nodes = counts.nodes * sizeof(RegNode);
    m_memory = std::make_unique_for_overwrite<std::byte[]>(sets + firsts + nodes + counts.letters);
    std::byte* place = m_memory.get();
    m_sets = new (place) ByteSet[counts.sets];
    m_firsts = new (place += sets) ByteSet[counts.nodes];
    m_nodes = new (place += firsts) RegNode[counts.nodes];
    m_letters = new (place += nodes) char[counts.letters];
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
    if (!HasCode())
        return kNoPlace;
    const RegPlace distance = NodeAt(place).next;
    return distance == 0 ? kNoPlace : place + distance;
}
