#include "undoable.h"

#include "assertion.h"
#include "mundoable_object.h"

Undoable::~Undoable() = default;

bool Undoable::IsAliveUndoable(const Undoable* object) {
    USE_ASSERT_TEXT(object, "this");
    return object && object->IsAliveUndoable();
}

bool Undoable::GetDeleted() const {
    USE_ASSERT(IsAliveUndoable());
    return m_Deleted;
}

/// A snapshot with the marks that go with it; null, and an assertion, where the class gives none.
std::unique_ptr<UndoableSnapshot> Undoable::MakeSnapshot() {
    std::unique_ptr<UndoableSnapshot> snapshot = CreateSnapshot();
    USE_ASSERT(snapshot);
    if (!snapshot)
        return snapshot;
    if (auto* const object = dynamic_cast<MUndoableObject*>(snapshot.get()))
        object->m_IsSnapshot = true;
    snapshot->m_Deleted = m_Deleted;
    return snapshot;
}

void Undoable::TakeSnapshot() {
    USE_ASSERT(IsAliveUndoable());
    if (!IsAliveUndoable())
        return;
    ClearFuture();
    if (auto snapshot = MakeSnapshot())
        m_Past.Push(std::move(snapshot));
    USE_ASSERT_TEXT(m_Future.IsEmpty(), "!m_Future");
}

/// Takes the state at the head of one chain, and puts the present one at the head of the other.
void Undoable::Move(SnapshotChain& from, SnapshotChain& to) {
    auto present = MakeSnapshot();
    if (!present)
        return;
    RestoreSnapshot(*from.GetHead());
    m_Deleted = from.GetHead()->GetDeleted();
    from.Pop();
    to.Push(std::move(present));
}

void Undoable::StepBack() {
    USE_ASSERT(IsAliveUndoable());
    USE_ASSERT_TEXT(!m_Past.IsEmpty(), "m_Past");
    if (IsAliveUndoable() && !m_Past.IsEmpty())
        Move(m_Past, m_Future);
}

void Undoable::StepForward() {
    USE_ASSERT(IsAliveUndoable());
    USE_ASSERT_TEXT(!m_Future.IsEmpty(), "m_Future");
    if (IsAliveUndoable() && !m_Future.IsEmpty())
        Move(m_Future, m_Past);
}

void Undoable::ClearFuture() {
    USE_ASSERT(IsAliveUndoable());
    if (IsAliveUndoable())
        m_Future.Clear();
}

void Undoable::ClearPast() {
    USE_ASSERT(IsAliveUndoable());
    if (IsAliveUndoable())
        m_Past.Clear();
}

/// Sets the state from the newest snapshot, of which there is one, and leaves that where it is.
/// @return false: the class has thrown, and keeps the state it has
bool Undoable::RestoreNewest(bool deleted) noexcept {
    m_Deleted = deleted;
    try {
        RestoreSnapshot(*m_Past.GetHead());
        return true;
    } catch (...) {
        return false;
    }
}

/// An object that is out of the model, and that no step can bring back, isn't alive any more.
void Undoable::LetGoIfUnreachable(const Undo_Manager& manager) {
    if (m_Deleted && m_ItsManager == &manager && m_Past.IsEmpty() && m_Future.IsEmpty())
        m_LifeMark = kLetGo;
}
