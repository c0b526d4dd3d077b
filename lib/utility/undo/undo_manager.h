/// Undo_Manager: the steps and commands that can be undone and redone.
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "quorel_export.h"
#include "snapshot_chain.h"

class QuorelCommand;
class Undoable;

/// Keeps which objects took part in each step, and the commands, which it owns, oldest first. The
/// objects keep their states themselves and stay their owners'. Recording an object costs one
/// snapshot for each step in which it changes; all else costs the objects that it touches.
///
/// A step is opened before a command is executed and closed behind it: by whoever runs commands,
/// who also says which of them is the newest one done.
class QUOREL_API Undo_Manager {
public:
    Undo_Manager();
    Undo_Manager(const Undo_Manager&) = delete;
    Undo_Manager& operator=(const Undo_Manager&) = delete;
    /// Clears. A step that is open is an assertion.
    ~Undo_Manager();

    /// Has the object take a snapshot, once for each step, unless it equals its newest one. A
    /// null object and no open step are assertions.
    /// @return whether the object joined the open step by it
    bool Record(Undoable* obj);
    /// Steps back each object of the newest step. None to undo is an assertion and changes nothing;
    /// so do an object's exceptions.
    void Undo();
    /// Steps forward each object of the newest undone step, in the opposite order.
    void Redo();
    /// Forgets all steps and commands, and lets go those objects that are out of the model.
    void Clear();
    /// The newest command done; null when there is none.
    QuorelCommand* GetUndoCommand() const;
    /// The command to be redone next; null when there is none.
    QuorelCommand* GetRedoCommand() const;

    /// @name For whoever runs commands
    /// @{
    /// An assertion, and nothing, while a step is open.
    void OpenStep();
    bool IsStepOpen() const { return m_CurrentSet.has_value(); }
    /// The open step becomes the newest that can be undone, and those undone are forgotten with
    /// their commands. An exception for want of memory leaves the step open and the rest as it was.
    /// @param command belongs to the manager from then on, as the newest one done; null for a step
    ///        of no command
    void CloseStep(QuorelCommand* command);
    /// Takes back the open step: the objects given to Record are as they were before it, their
    /// futures included; those that were new are let go.
    /// @return false: an object could not be restored
    bool CancelStep();
    /// Ends the open step without a place on the stack: its objects keep their present states, and
    /// all else is as if none had been recorded.
    void ForgetStep();
    /// Says that the command at this index is the newest one done, -1: none is. An index of no
    /// command is an assertion and changes nothing.
    void SetCommandIndex(int index);
    /// Forgets the oldest step and the oldest command done. @return false: there is none
    bool DropOldest();
    /// Takes a command for later, and gives the first one so taken; null when there is none.
    void AddWaiting(QuorelCommand* command) { m_ExtraCommands.push_back(command); }
    QuorelCommand* TakeWaiting() { return m_ExtraCommands.empty() ? nullptr : TakeFirst(); }
    std::size_t GetWaitingCount() const { return m_ExtraCommands.size(); }
    /// Deletes those taken last, until so many are left.
    void ForgetWaiting(std::size_t kept);
    /// @}

    /// -1 when no command is done.
    int GetCommandIndex() const { return m_CommandIndex; }
    /// Done and undone.
    std::size_t GetCommandCount() const { return m_UndoableCommands.size(); }
    const QuorelCommand& GetCommand(std::size_t index) const { return *m_UndoableCommands[index]; }
    std::size_t GetUndoStepCount() const { return m_UndoStack.size(); }
    std::size_t GetRedoStepCount() const { return m_RedoStack.size(); }

private:
    using Step = std::vector<Undoable*>;
    /// An object of the open step, with what it was before it joined.
    struct Joined {
        Undoable* m_Object = nullptr;
        SnapshotChain m_EndedFuture;
        Undo_Manager* m_Manager = nullptr;
        bool m_IsNew = false;
    };

    using Steps = std::deque<std::unique_ptr<const Step>>; ///< null: without objects

    bool IsIndexValid(int index) const;
    QuorelCommand* CommandAt(int index) const;
    static bool TakeStepSnapshot(const Joined& joined);
    void Leave();
    void EndStep();
    QuorelCommand* TakeFirst();
    void ForgetRedo();
    static const Step& ObjectsOf(const std::unique_ptr<const Step>& step);
    static void EmptyStack(Steps& stack, Step& objects);

    Steps m_UndoStack; ///< newest at the back
    Steps m_RedoStack;
    std::optional<std::set<Undoable*>> m_CurrentSet;
    std::vector<Joined> m_Joined; ///< the open step's, in order
    /// Objects that have equalled their newest snapshot in the open step, and whether they were
    /// out of the model then.
    std::map<Undoable*, bool> m_Unchanged;
    std::deque<QuorelCommand*> m_UndoableCommands; ///< owned
    int m_CommandIndex = -1;
    std::vector<QuorelCommand*> m_ExtraCommands; ///< owned, not executed yet
};
