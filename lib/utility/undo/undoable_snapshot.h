/// UndoableSnapshot: a saved state of an undoable object.
#pragma once

#include "quorel_export.h"

/// The base of a saved state. Each Undoable class derives one that holds the data it needs, and is
/// the only one to understand it.
class QUOREL_API UndoableSnapshot {
public:
    UndoableSnapshot() = default;
    UndoableSnapshot(const UndoableSnapshot&) = delete;
    UndoableSnapshot& operator=(const UndoableSnapshot&) = delete;
    virtual ~UndoableSnapshot();

    /// The next older snapshot of the chain; null for the oldest and outside of a chain.
    const UndoableSnapshot* GetNext() const { return m_Next; }
    /// The object's own flag at the moment of the snapshot.
    bool GetDeleted() const { return m_Deleted; }

private:
    friend class SnapshotChain;
    friend class Undoable;

    UndoableSnapshot* m_Next = nullptr;
    bool m_Deleted = false;
    UndoableSnapshot* m_Newer = nullptr; ///< so that the oldest can be dropped
};
