#include "undo_manager.h"

#include <algorithm>
#include <functional>

#include "assertion.h"
#include "mundoable_object.h"
#include "quorel_command.h"

namespace {

constexpr const char* kIndexRule =
    "m_CommandIndex >= -1 && m_CommandIndex < (int) m_UndoableCommands.size()";

/// A flag that has another value while this object lives.
class ForTheMoment {
public:
    ForTheMoment(bool& flag, bool value) : m_Flag(flag), m_Before(std::exchange(flag, value)) {}
    ForTheMoment(const ForTheMoment&) = delete;
    ForTheMoment& operator=(const ForTheMoment&) = delete;
    ~ForTheMoment() { m_Flag = m_Before; }

private:
    bool& m_Flag;
    bool m_Before;
};

} // namespace

Undo_Manager::Undo_Manager() = default;

Undo_Manager::~Undo_Manager() {
    USE_ASSERT_TEXT(!m_CurrentSet, "!m_CurrentSet");
    Clear();
}

bool Undo_Manager::IsIndexValid(int index) const {
    return index >= -1 && index < static_cast<int>(m_UndoableCommands.size());
}

bool Undo_Manager::Record(Undoable* obj) {
    USE_ASSERT_TEXT(m_CurrentSet.has_value(), "m_CurrentSet");
    USE_ASSERT(obj);
    if (!m_CurrentSet || !obj || m_CurrentSet->contains(obj))
        return false;
    if (!obj->m_Past.IsEmpty() && obj->IsSameAs(*obj->m_Past.GetHead())) {
        m_Unchanged.try_emplace(obj, obj->m_Deleted);
        return false;
    }
    USE_ASSERT_TEXT(!obj->m_ItsManager || obj->m_ItsManager == this,
                    "obj->m_ItsManager == NULL || obj->m_ItsManager == this");
    const auto* const created = dynamic_cast<MUndoableObject*>(obj);
    Joined& joined = m_Joined.emplace_back();
    joined.m_Object = obj;
    joined.m_EndedFuture = std::move(obj->m_Future);
    joined.m_Manager = obj->m_ItsManager;
    joined.m_IsNew = created && created->m_IsNew;
    if (!obj->m_ItsManager)
        obj->m_ItsManager = this;
    try {
        m_CurrentSet->insert(obj);
        if (TakeStepSnapshot(joined))
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
bool Undo_Manager::TakeStepSnapshot(const Joined& joined) {
    Undoable& object = *joined.m_Object;
    const UndoableSnapshot* const prev = object.m_Past.GetHead();
    if (joined.m_IsNew) {
        USE_ASSERT(!prev);
        const ForTheMoment deleted(object.m_Deleted, true);
        object.TakeSnapshot();
    } else {
        object.TakeSnapshot();
    }
    if (object.m_Past.GetHead() == prev)
        return false;
    if (joined.m_IsNew)
        static_cast<MUndoableObject&>(object).m_IsNew = false;
    return true;
}

/// The object that joined last, and has no snapshot any more, leaves the open step.
void Undo_Manager::Leave() {
    Joined& last = m_Joined.back();
    last.m_Object->m_Future = std::move(last.m_EndedFuture);
    last.m_Object->m_ItsManager = last.m_Manager;
    m_CurrentSet->erase(last.m_Object);
    m_Joined.pop_back();
}

void Undo_Manager::EndStep() {
    m_CurrentSet.reset();
    m_Joined.clear();
    m_Unchanged.clear();
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
    return CommandAt(m_CommandIndex);
}

QuorelCommand* Undo_Manager::GetRedoCommand() const {
    return CommandAt(m_CommandIndex + 1);
}

/// Null where no command stands, and while the index breaks its rule, which is an assertion.
QuorelCommand* Undo_Manager::CommandAt(int index) const {
    const bool isSound = IsIndexValid(m_CommandIndex);
    USE_ASSERT_TEXT(isSound, kIndexRule);
    return isSound && index >= 0 && IsIndexValid(index)
               ? m_UndoableCommands[static_cast<std::size_t>(index)]
               : nullptr;
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
    EndStep();
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

bool Undo_Manager::CancelStep() {
    bool areRestored = true;
    while (!m_Joined.empty()) {
        Undoable& object = *m_Joined.back().m_Object;
        areRestored = object.RestoreNewest(object.m_Past.GetHead()->GetDeleted()) && areRestored;
        object.m_Past.Pop();
        if (m_Joined.back().m_IsNew)
            object.LetGoIfUnreachable(*this);
        Leave();
    }
    for (const auto& [object, deleted] : m_Unchanged) // behind the others: some have joined later
        if (!object->m_Past.IsEmpty())
            areRestored = object->RestoreNewest(deleted) && areRestored;
    EndStep();
    return areRestored;
}

void Undo_Manager::ForgetStep() {
    while (!m_Joined.empty()) {
        m_Joined.back().m_Object->m_Past.Pop();
        Leave();
    }
    EndStep();
}

void Undo_Manager::SetCommandIndex(int index) {
    const bool isSound = IsIndexValid(index);
    USE_ASSERT_TEXT(isSound, kIndexRule);
    if (isSound)
        m_CommandIndex = index;
}

bool Undo_Manager::DropOldest() {
    if (m_CommandIndex < 0 || m_UndoStack.empty())
        return false;
    for (Undoable* object : ObjectsOf(m_UndoStack.front())) {
        if (!object->m_Past.IsEmpty())
            object->m_Past.DropOldest();
        object->LetGoIfUnreachable(*this);
    }
    m_UndoStack.pop_front();
    delete m_UndoableCommands.front();
    m_UndoableCommands.pop_front();
    --m_CommandIndex;
    return true;
}

void Undo_Manager::ForgetWaiting(std::size_t kept) {
    for (; m_ExtraCommands.size() > kept; m_ExtraCommands.pop_back())
        delete m_ExtraCommands.back();
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
    ForgetWaiting(0);
    m_CommandIndex = -1;
}
