/// CommandRunner: how a desktop runs, undoes and redoes commands.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "quorel_export.h"

class QuorelCommand;
class Undo_Manager;

/// Drives the commands of undo managers: opens and closes their steps, sets the commands' states
/// and the managers' index, and calls everything in order.
///
///     Run    CheckMessages, step opened, Execute, step closed, state 1, CommandExecuted
///     Undo   state 2, index back, the command's Undo
///     Redo   state 3, index on, the command's Redo
///
/// A command that fails or throws leaves steps, commands and index as they were, and the objects
/// that it has recorded too. A command that comes while another of its manager is at work waits
/// until that has ended. Each operation costs the command's own work.
class QUOREL_API CommandRunner {
public:
    static constexpr int kDefaultLimit = 100000;

    /// The most commands that a manager keeps, at least 1: the oldest are dropped.
    void SetLimit(int limit);

    /// The command belongs to the manager from then on: it becomes the newest one done, and those
    /// undone are deleted. One that fails is deleted; one that can't be undone is, once it is done.
    /// Null is an assertion.
    /// @return false: it has failed
    bool Run(QuorelCommand* command, Undo_Manager& manager);
    /// Undoes the newest command done. @return false: there is none, it fails, or one is at work
    bool Undo(Undo_Manager& manager);
    bool Redo(Undo_Manager& manager);

    /// Told why a command has thrown, once all is as it was; may be empty.
    std::function<void(const std::string& reason)> m_OnFailure;

private:
    class AtWork;

    bool IsAtWork(const Undo_Manager& manager) const;
    bool RunOne(QuorelCommand* command, Undo_Manager& manager);
    bool ExecuteStep(QuorelCommand& command, Undo_Manager& manager);
    bool Move(QuorelCommand* command, Undo_Manager& manager, bool forward);
    void RunWaiting(Undo_Manager& manager);
    template <class Work>
    bool Try(Work work);

    std::size_t m_Limit = kDefaultLimit;
    std::vector<const Undo_Manager*> m_AtWork;
};
