/// SnapshotChain: the saved states of one object in one direction of time.
#pragma once

#include <memory>
#include <utility>

#include "undoable_snapshot.h"

/// A list of snapshots, newest first, linked through the snapshots themselves. It owns them. Every
/// operation but Clear costs the same whatever the length.
class QUOREL_API SnapshotChain {
public:
    SnapshotChain() = default;
    SnapshotChain(SnapshotChain&& other) noexcept
        : m_Newest(std::exchange(other.m_Newest, nullptr)),
          m_Oldest(std::exchange(other.m_Oldest, nullptr)) {}
    SnapshotChain& operator=(SnapshotChain&& other) noexcept {
        std::swap(m_Newest, other.m_Newest);
        std::swap(m_Oldest, other.m_Oldest);
        return *this;
    }
    ~SnapshotChain() { Clear(); }

    bool IsEmpty() const { return !m_Newest; }
    /// The newest one; null when there is none.
    const UndoableSnapshot* GetHead() const { return m_Newest; }

    void Push(std::unique_ptr<UndoableSnapshot> snapshot);
    /// Deletes the newest one, of which there is one.
    void Pop();
    /// Deletes the oldest one, of which there is one.
    void DropOldest();
    /// Deletes all, newest first.
    void Clear();

private:
    UndoableSnapshot* m_Newest = nullptr;
    UndoableSnapshot* m_Oldest = nullptr;
};
