#include "undo_manager.h"

#include <algorithm>
#include <functional>

#include "assertion.h"
#include "mundoable_object.h"
#include "quorel_command.h"

namespace {

constexpr const char* kIndexRule =
    "m_CommandIndex >= -1 && m_CommandIndex < (int) m_UndoableCommands.size()";

} // namespace

Undo_Manager::Undo_Manager() = default;

Undo_Manager::~Undo_Manager() {
    USE_ASSERT_TEXT(!m_CurrentSet, "!m_CurrentSet");
    Clear();
}

bool Undo_Manager::IsIndexValid() const {
    return m_CommandIndex >= -1 && m_CommandIndex < static_cast<int>(m_UndoableCommands.size());
}

bool Undo_Manager::Record(Undoable* obj) {
    USE_ASSERT_TEXT(m_CurrentSet.has_value(), "m_CurrentSet");
    USE_ASSERT(obj);
    if (!m_CurrentSet || !obj || m_CurrentSet->contains(obj))
        return false;
    if (!obj->m_Past.IsEmpty() && obj->IsSameAs(*obj->m_Past.GetHead()))
        return false;
    USE_ASSERT_TEXT(!obj->m_ItsManager || obj->m_ItsManager == this,
                    "obj->m_ItsManager == NULL || obj->m_ItsManager == this");
    if (!obj->m_ItsManager)
        obj->m_ItsManager = this;
    Joined& joined = m_Joined.emplace_back();
    joined.m_Object = obj;
    joined.m_EndedFuture = std::move(obj->m_Future);
    try {
        m_CurrentSet->insert(obj);
        if (TakeStepSnapshot(*obj))
            return true;
    } catch (...) {
        Leave();
        throw;
    }
    Leave();
    return false;
}

/// The snapshot that undoing the open step goes back to: of a new object, that it didn't exist.
/// @return whether one was taken
bool Undo_Manager::TakeStepSnapshot(Undoable& object) {
    const UndoableSnapshot* const prev = object.m_Past.GetHead();
    auto* const created = dynamic_cast<MUndoableObject*>(&object);
    if (!created || !created->m_IsNew) {
        object.TakeSnapshot();
    } else {
        USE_ASSERT(!prev);
        const bool deleted = std::exchange(object.m_Deleted, true);
        object.TakeSnapshot();
        object.m_Deleted = deleted;
        created->m_IsNew = false;
    }
    return object.m_Past.GetHead() != prev;
}

/// The object that joined last, and has no snapshot, leaves the open step.
void Undo_Manager::Leave() {
    Joined& last = m_Joined.back();
    last.m_Object->m_Future = std::move(last.m_EndedFuture);
    m_CurrentSet->erase(last.m_Object);
    m_Joined.pop_back();
}

const Undo_Manager::Step& Undo_Manager::ObjectsOf(const std::unique_ptr<const Step>& step) {
    static const Step sNone;
    return step ? *step : sNone;
}

void Undo_Manager::Undo() {
    USE_ASSERT(!m_UndoStack.empty());
    if (m_UndoStack.empty())
        return;
    m_RedoStack.emplace_back();
    if (m_UndoStack.back()) {
        const Step& step = *m_UndoStack.back();
        std::size_t done = 0;
        try {
            for (; done < step.size(); ++done)
                step[done]->StepBack();
        } catch (...) {
            while (done > 0)
                step[--done]->StepForward();
            m_RedoStack.pop_back();
            throw;
        }
    }
    m_RedoStack.back() = std::move(m_UndoStack.back());
    m_UndoStack.pop_back();
}

void Undo_Manager::Redo() {
    USE_ASSERT(!m_RedoStack.empty());
    if (m_RedoStack.empty())
        return;
    m_UndoStack.emplace_back();
    if (m_RedoStack.back()) {
        const Step& step = *m_RedoStack.back();
        std::size_t left = step.size();
        try {
            for (; left > 0; --left)
                step[left - 1]->StepForward();
        } catch (...) {
            for (; left < step.size(); ++left)
                step[left]->StepBack();
            m_UndoStack.pop_back();
            throw;
        }
    }
    m_UndoStack.back() = std::move(m_RedoStack.back());
    m_RedoStack.pop_back();
}

QuorelCommand* Undo_Manager::GetUndoCommand() const {
    USE_ASSERT_TEXT(IsIndexValid(), kIndexRule);
    return m_CommandIndex < 0 ? nullptr
                              : m_UndoableCommands[static_cast<std::size_t>(m_CommandIndex)];
}

QuorelCommand* Undo_Manager::GetRedoCommand() const {
    USE_ASSERT_TEXT(IsIndexValid(), kIndexRule);
    const auto next = static_cast<std::size_t>(m_CommandIndex + 1);
    return next < m_UndoableCommands.size() ? m_UndoableCommands[next] : nullptr;
}

void Undo_Manager::OpenStep() {
    USE_ASSERT_TEXT(!m_CurrentSet, "!m_CurrentSet");
    if (!m_CurrentSet)
        m_CurrentSet.emplace();
}

void Undo_Manager::CloseStep(QuorelCommand* command) {
    USE_ASSERT_TEXT(m_CurrentSet.has_value(), "m_CurrentSet");
    if (!m_CurrentSet)
        return;
    m_UndoStack.emplace_back();
    try {
        if (!m_CurrentSet->empty())
            m_UndoStack.back() =
                std::make_unique<const Step>(m_CurrentSet->begin(), m_CurrentSet->end());
        if (command)
            m_UndoableCommands.push_back(command);
    } catch (...) {
        m_UndoStack.pop_back();
        throw;
    }
    m_CurrentSet.reset();
    m_Joined.clear();
    if (command) // changes places with one of those that are forgotten now
        std::swap(m_UndoableCommands[static_cast<std::size_t>(++m_CommandIndex)],
                  m_UndoableCommands.back());
    ForgetRedo();
}

void Undo_Manager::ForgetRedo() {
    for (; !m_RedoStack.empty(); m_RedoStack.pop_back())
        for (Undoable* object : ObjectsOf(m_RedoStack.back())) {
            object->m_Future.Clear();
            object->LetGoIfUnreachable(*this);
        }
    for (const auto kept = static_cast<std::size_t>(m_CommandIndex + 1);
         m_UndoableCommands.size() > kept; m_UndoableCommands.pop_back())
        delete m_UndoableCommands.back();
}

void Undo_Manager::CancelStep() {
    for (; !m_Joined.empty(); m_Joined.pop_back()) {
        Undoable& object = *m_Joined.back().m_Object;
        object.TakeBackSnapshot(std::move(m_Joined.back().m_EndedFuture));
        object.LetGoIfUnreachable(*this);
    }
    m_CurrentSet.reset();
}

void Undo_Manager::SetCommandIndex(int index) {
    m_CommandIndex = index;
    USE_ASSERT_TEXT(IsIndexValid(), kIndexRule);
}

void Undo_Manager::DropOldest() {
    USE_ASSERT(m_CommandIndex >= 0 && !m_UndoStack.empty());
    if (m_CommandIndex < 0 || m_UndoStack.empty())
        return;
    for (Undoable* object : ObjectsOf(m_UndoStack.front())) {
        if (!object->m_Past.IsEmpty())
            object->m_Past.DropOldest();
        object->LetGoIfUnreachable(*this);
    }
    m_UndoStack.pop_front();
    delete m_UndoableCommands.front();
    m_UndoableCommands.pop_front();
    --m_CommandIndex;
}

QuorelCommand* Undo_Manager::TakeFirst() {
    QuorelCommand* const first = m_ExtraCommands.front();
    m_ExtraCommands.erase(m_ExtraCommands.begin());
    return first;
}

/// Forgets the steps of a stack, newest first, and appends their objects.
void Undo_Manager::EmptyStack(Steps& stack, Step& objects) {
    for (; !stack.empty(); stack.pop_back())
        for (Undoable* object : ObjectsOf(stack.back())) {
            objects.push_back(object);
            object->ClearFuture();
            object->ClearPast();
        }
}

void Undo_Manager::Clear() {
    Step objects;
    EmptyStack(m_RedoStack, objects);
    EmptyStack(m_UndoStack, objects);
    std::ranges::sort(objects, std::less<>());
    objects.erase(std::unique(objects.begin(), objects.end()), objects.end());
    for (Undoable* u : objects) {
        USE_ASSERT(u);
        if (!u->m_Deleted || u->m_ItsManager != this)
            continue;
        USE_ASSERT(u->IsAliveUndoable());
        if (u->IsAliveUndoable())
            u->m_LifeMark = Undoable::kLetGo;
    }
    for (; !m_UndoableCommands.empty(); m_UndoableCommands.pop_back())
        delete m_UndoableCommands.back();
    for (; !m_ExtraCommands.empty(); m_ExtraCommands.pop_back())
        delete m_ExtraCommands.back();
    m_CommandIndex = -1;
}
