/// CommandRunner: how a desktop runs, undoes and redoes commands.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
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
/// until that has ended, and is deleted when that fails. A command that can't be undone takes no
/// part in steps and commands; what counts is what it says when Execute has ended. Each operation
/// costs the command's own work.
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

    /// What became of the work of a command that has thrown.
    enum class Outcome {
        takenBack,
        notTakenBack, ///< the command can't be undone, or has thrown again
        done          ///< it stands: those who are told of it have thrown
    };
    struct Failure {
        std::string m_Reason;
        Outcome m_Outcome;
    };
    /// Told of each failure once no command is at work, so that it may run, undo and redo; may be
    /// empty.
    std::function<void(const Failure&)> m_OnFailure;

private:
    class AtWork;

    bool IsAtWork(const Undo_Manager& manager) const;
    bool RunOne(QuorelCommand* command, Undo_Manager& manager);
    bool Move(QuorelCommand* command, Undo_Manager& manager, bool forward);
    bool MoveOne(QuorelCommand& command, Undo_Manager& manager, bool forward);
    void RunWaiting(Undo_Manager& manager);
    void Keep(const std::optional<std::string>& reason, Outcome outcome);

    std::size_t m_Limit = kDefaultLimit;
    std::vector<const Undo_Manager*> m_AtWork;
    std::vector<Failure> m_Failures; ///< not told yet
};
