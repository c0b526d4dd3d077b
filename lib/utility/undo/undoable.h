/// Undoable: an object whose changes can be undone.
#pragma once

#include <cstdint>
#include <memory>

#include "snapshot_chain.h"

class Undo_Manager;

/// The base of every object that commands change. Before a change the object is recorded with an
/// Undo_Manager, which has it take a snapshot; undoing moves the object one step along its chains
/// of snapshots, its past and its future. The manager doesn't know what a state is, and the object
/// doesn't know what a step is.
///
/// An object belongs to one manager at most. It must outlive the manager's steps, or the manager
/// must have let it go: see IsAliveUndoable.
class QUOREL_API Undoable {
public:
    Undoable() = default;
    Undoable(const Undoable&) = delete;
    Undoable& operator=(const Undoable&) = delete;
    /// Deletes both chains.
    virtual ~Undoable();
    /// A new snapshot of the present state; never null.
    virtual std::unique_ptr<UndoableSnapshot> CreateSnapshot() = 0;
    /// Sets the state from a snapshot that this object has made.
    virtual void RestoreSnapshot(const UndoableSnapshot& snapshot) = 0;
    /// Whether the present state equals a snapshot that this object has made.
    virtual bool IsSameAs(const UndoableSnapshot& snapshot) = 0;

    /// False once the manager has let the object go: nothing can bring it back into the model, and
    /// its owner may delete it.
    bool IsAliveUndoable() const { return m_LifeMark == kAlive; }
    /// As above; null is an assertion, and false.
    static bool IsAliveUndoable(const Undoable* object);
    /// True while the object exists for the sake of undo only: it is out of the model and may come
    /// back.
    bool GetDeleted() const;
    /// To be called by the command that takes the object out of the model, once it is recorded.
    void SetDeleted(bool deleted) { m_Deleted = deleted; }
    /// Null until the object is first recorded.
    Undo_Manager* GetManager() const { return m_ItsManager; }

    /// @name What a manager does. Each asserts that the object is alive, else it does nothing
    /// @{
    /// Puts a snapshot of the present state at the head of the past; ends the future.
    void TakeSnapshot();
    /// Goes to the newest state of the past; the present one becomes the head of the future. An
    /// empty past is an assertion and changes nothing.
    void StepBack();
    /// The same with past and future changed over.
    void StepForward();
    void ClearFuture();
    void ClearPast();
    const SnapshotChain& GetPast() const { return m_Past; }
    const SnapshotChain& GetFuture() const { return m_Future; }
    /// @}

private:
    friend class Undo_Manager;
    enum LifeMark : std::int32_t { kAlive = 12345, kLetGo = 54321 };

    std::unique_ptr<UndoableSnapshot> MakeSnapshot();
    void Move(SnapshotChain& from, SnapshotChain& to);
    bool RestoreNewest(bool deleted) noexcept;
    void LetGoIfUnreachable(const Undo_Manager& manager);

    LifeMark m_LifeMark = kAlive;
    bool m_Deleted = false;
    SnapshotChain m_Future;
    SnapshotChain m_Past;
    Undo_Manager* m_ItsManager = nullptr;
};
