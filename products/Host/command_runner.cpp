#include "command_runner.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>

#include "assertion.h"
#include "quorel_command.h"
#include "undo_manager.h"

namespace {

using Reason = std::optional<std::string>;

/// Does work. @return why it has thrown, if it has
template <class Work>
Reason WhyNot(Work work) {
    try {
        work();
        return std::nullopt;
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "unknown exception";
    }
}

/// Executes a command in a step of its own, which stands with the manager when it is done, the
/// command with it, unless that can't be undone.
bool ExecuteStep(std::unique_ptr<QuorelCommand>& command, Undo_Manager& manager) {
    manager.OpenStep();
    if (!command->Execute())
        return false;
    if (!command->GetIsUndoable()) { // it may know only now
        manager.ForgetStep();
    } else {
        manager.CloseStep(command.get());
        static_cast<void>(command.release());
    }
    return true;
}

/// Takes back what a command that didn't get through has done. @return why it can't be, if so
Reason TakeBack(QuorelCommand& command, Undo_Manager& manager) {
    command.SetState(QuorelCommand::kUndone);
    const bool areRestored = manager.CancelStep();
    Reason reason;
    if (command.GetIsUndoable())
        reason = WhyNot([&] { command.UndoDeltaStates(); });
    return areRestored || reason ? reason : "an object can't be restored";
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

/// Runs what has come while a command was at work. Telling is last: whoever is told may ask the
/// user, who may run, undo and redo meanwhile.
void CommandRunner::RunWaiting(Undo_Manager& manager) {
    while (QuorelCommand* next = manager.TakeWaiting())
        RunOne(next, manager);
    if (!m_AtWork.empty())
        return; // of another manager
    for (const Failure& failure : std::exchange(m_Failures, {}))
        if (m_OnFailure)
            m_OnFailure(failure);
}

void CommandRunner::Keep(const Reason& reason, Outcome outcome) {
    if (reason)
        m_Failures.push_back({*reason, outcome});
}

bool CommandRunner::RunOne(QuorelCommand* command, Undo_Manager& manager) {
    std::unique_ptr<QuorelCommand> owned(command);
    const AtWork atWork(*this, manager);
    const std::size_t waiting = manager.GetWaitingCount();
    const bool wasUndoable = command->GetIsUndoable();
    command->SetManager(&manager);
    bool done = false;
    const Reason reason = WhyNot([&] {
        command->CheckMessages();
        done = ExecuteStep(owned, manager);
    });
    if (!done) {
        const bool isUndoable = wasUndoable && command->GetIsUndoable();
        const Reason stuck = TakeBack(*command, manager);
        manager.ForgetWaiting(waiting);
        Keep(reason ? reason : stuck,
             isUndoable && !stuck ? Outcome::takenBack : Outcome::notTakenBack);
        return false;
    }
    command->SetState(QuorelCommand::kDone);
    if (!owned)
        while (manager.GetCommandCount() > m_Limit && manager.DropOldest()) {
        }
    Keep(WhyNot([command] { command->CommandExecuted(); }), Outcome::done);
    return true;
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
    const bool done = MoveOne(*command, manager, forward);
    RunWaiting(manager);
    return done;
}

bool CommandRunner::MoveOne(QuorelCommand& command, Undo_Manager& manager, bool forward) {
    const AtWork atWork(*this, manager);
    const QuorelCommand::State state = command.GetState();
    const int index = manager.GetCommandIndex();
    const std::size_t undoSteps = manager.GetUndoStepCount();
    const std::size_t waiting = manager.GetWaitingCount();
    command.SetState(forward ? QuorelCommand::kRedone : QuorelCommand::kUndone);
    manager.SetCommandIndex(forward ? index + 1 : index - 1);
    const Reason reason = WhyNot([&] { forward ? command.Redo() : command.Undo(); });
    if (!reason)
        return true;
    command.SetState(state);
    manager.SetCommandIndex(index);
    const Reason stuck = WhyNot([&] { BringBack(command, manager, forward, undoSteps); });
    manager.ForgetWaiting(waiting);
    Keep(reason, stuck ? Outcome::notTakenBack : Outcome::takenBack);
    return false;
}
