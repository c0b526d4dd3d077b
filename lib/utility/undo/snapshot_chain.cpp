#include "snapshot_chain.h"

void SnapshotChain::Push(std::unique_ptr<UndoableSnapshot> snapshot) {
    snapshot->m_Next = m_Newest;
    (m_Newest ? m_Newest->m_Newer : m_Oldest) = snapshot.get();
    m_Newest = snapshot.release();
}

void SnapshotChain::Pop() {
    const std::unique_ptr<UndoableSnapshot> head(m_Newest);
    m_Newest = head->m_Next;
    (m_Newest ? m_Newest->m_Newer : m_Oldest) = nullptr;
}

void SnapshotChain::DropOldest() {
    const std::unique_ptr<UndoableSnapshot> oldest(m_Oldest);
    m_Oldest = oldest->m_Newer;
    (m_Oldest ? m_Oldest->m_Next : m_Newest) = nullptr;
}

void SnapshotChain::Clear() {
    while (m_Newest)
        Pop();
}
