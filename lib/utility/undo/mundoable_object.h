/// MUndoableObject: an undoable object that may itself come about in a step.
#pragma once

#include "undoable.h"

/// An Undoable that knows whether it is new. A class may make its snapshots of this kind too, by
/// deriving them from UndoableSnapshot and its own class.
class QUOREL_API MUndoableObject : public Undoable {
public:
    ~MUndoableObject() override;

    /// Whether the object was created in the running step and isn't recorded yet.
    bool IsNew() const { return m_IsNew; }
    /// To be called by the command that creates the object: undoing its first step takes the object
    /// out of the model.
    void SetNew() { m_IsNew = true; }
    /// Whether this is a snapshot of another object.
    bool IsSnapshot() const { return m_IsSnapshot; }

private:
    friend class Undoable;
    friend class Undo_Manager;

    bool m_IsNew = false;
    bool m_IsSnapshot = false;
};
