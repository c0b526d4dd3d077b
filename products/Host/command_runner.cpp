#include "command_runner.h"

#include <algorithm>
#include <exception>
#include <memory>

#include "assertion.h"
#include "quorel_command.h"
#include "undo_manager.h"

namespace {

/// Takes back what a command that didn't get through has done.
void TakeBack(QuorelCommand& command, Undo_Manager& manager) {
    command.SetState(QuorelCommand::kUndone);
    manager.CancelStep();
    command.UndoDeltaStates();
}

/// Brings a command that didn't get through its undo, or redo, to where it was before.
void BringBack(QuorelCommand& command, Undo_Manager& manager, bool wasForward,
               std::size_t undoSteps) {
    const bool hasMoved = manager.GetUndoStepCount() != undoSteps;
    if (wasForward) {
        if (hasMoved)
            manager.Undo();
        command.UndoDeltaStates();
    } else {
        command.RedoDeltaStates();
        if (hasMoved)
            manager.Redo();
    }
}

} // namespace

/// Marks a manager for the time in which one of its commands is at work.
class CommandRunner::AtWork {
public:
    AtWork(CommandRunner& runner, const Undo_Manager& manager) : m_Runner(runner) {
        m_Runner.m_AtWork.push_back(&manager);
    }
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;
    ~AtWork() { m_Runner.m_AtWork.pop_back(); }

private:
    CommandRunner& m_Runner;
};

void CommandRunner::SetLimit(int limit) {
    m_Limit = static_cast<std::size_t>(std::max(limit, 1));
}

bool CommandRunner::IsAtWork(const Undo_Manager& manager) const {
    return std::ranges::find(m_AtWork, &manager) != m_AtWork.end();
}

/// Does work that gives whether it succeeded. @return false: it didn't, or threw, which is told
template <class Work>
bool CommandRunner::Try(Work work) {
    std::string reason;
    try {
        return work();
    } catch (const std::exception& error) {
        reason = error.what();
    } catch (...) {
        reason = "unknown exception";
    }
    if (m_OnFailure)
        m_OnFailure(reason);
    return false;
}

bool CommandRunner::Run(QuorelCommand* command, Undo_Manager& manager) {
    USE_ASSERT(command);
    if (!command)
        return false;
    if (IsAtWork(manager)) {
        manager.AddWaiting(command);
        return true;
    }
    const bool done = RunOne(command, manager);
    RunWaiting(manager);
    return done;
}

void CommandRunner::RunWaiting(Undo_Manager& manager) {
    while (QuorelCommand* next = manager.TakeWaiting())
        RunOne(next, manager);
}

bool CommandRunner::RunOne(QuorelCommand* command, Undo_Manager& manager) {
    std::unique_ptr<QuorelCommand> failed(command);
    const AtWork atWork(*this, manager);
    command->SetManager(&manager);
    const bool isUndoable = command->GetIsUndoable();
    const bool done = Try([&] {
        command->CheckMessages();
        return isUndoable ? ExecuteStep(*command, manager) : command->Execute();
    });
    if (!done)
        return false;
    command->SetState(QuorelCommand::kDone);
    if (isUndoable)
        static_cast<void>(failed.release());
    while (manager.GetCommandCount() > m_Limit)
        manager.DropOldest();
    Try([command] {
        command->CommandExecuted();
        return true;
    });
    return true;
}

/// Executes a command as a step of its own, which stands with the manager when it is done.
bool CommandRunner::ExecuteStep(QuorelCommand& command, Undo_Manager& manager) {
    manager.OpenStep();
    try {
        if (command.Execute()) {
            manager.CloseStep(&command);
            return true;
        }
    } catch (...) {
        TakeBack(command, manager);
        throw;
    }
    TakeBack(command, manager);
    return false;
}

bool CommandRunner::Undo(Undo_Manager& manager) {
    return Move(manager.GetUndoCommand(), manager, false);
}

bool CommandRunner::Redo(Undo_Manager& manager) {
    return Move(manager.GetRedoCommand(), manager, true);
}

bool CommandRunner::Move(QuorelCommand* command, Undo_Manager& manager, bool forward) {
    if (!command || IsAtWork(manager))
        return false;
    bool done = false;
    {
        const AtWork atWork(*this, manager);
        const QuorelCommand::State state = command->GetState();
        const int index = manager.GetCommandIndex();
        const std::size_t undoSteps = manager.GetUndoStepCount();
        command->SetState(forward ? QuorelCommand::kRedone : QuorelCommand::kUndone);
        manager.SetCommandIndex(forward ? index + 1 : index - 1);
        done = Try([&] {
            forward ? command->Redo() : command->Undo();
            return true;
        });
        if (!done) {
            command->SetState(state);
            manager.SetCommandIndex(index);
            Try([&] {
                BringBack(*command, manager, forward, undoSteps);
                return true;
            });
        }
    }
    RunWaiting(manager);
    return done;
}
