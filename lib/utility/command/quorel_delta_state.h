/// QuorelDeltaState: a small change that code undoes.
#pragma once

#include "quorel_export.h"

/// What a command records beside the snapshots of undoable objects. A derived class overrides Undo
/// and Redo, does its work and then calls these.
class QUOREL_API QuorelDeltaState {
public:
    /// @param isChangeDone whether the change is made already
    explicit QuorelDeltaState(bool isChangeDone) : m_isChangeDone(isChangeDone) {}
    QuorelDeltaState(const QuorelDeltaState&) = delete;
    QuorelDeltaState& operator=(const QuorelDeltaState&) = delete;
    virtual ~QuorelDeltaState();
    /// A change that isn't done is an assertion.
    virtual void Undo();
    /// A change that is done is an assertion.
    virtual void Redo();

    bool IsChangeDone() const { return m_isChangeDone; }

private:
    bool m_isChangeDone;
};
