/// CommandStack: the commands that were done, and those undone.
#pragma once

#include <cstddef>
#include <vector>

#include "quorel_export.h"

class IQuorelCommand;

/// The work on a command that its stack asks for: the hook by which the library of commands comes
/// in, since a stack knows a command by its address only.
class QUOREL_API ICommandWork {
public:
    /// @return false: the command did nothing
    virtual bool Execute(IQuorelCommand& command) = 0;
    virtual bool Undo(IQuorelCommand& command) = 0;
    virtual bool Redo(IQuorelCommand& command) = 0;
    virtual void Destroy(IQuorelCommand& command) = 0;

protected:
    ~ICommandWork() = default;
};

/// Two lists of commands, which belong to the stack. Executing, undoing and redoing cost the work
/// itself.
class QUOREL_API CommandStack {
public:
    /// @param work must outlive the stack; null when none is there yet
    explicit CommandStack(ICommandWork* work = nullptr) : m_Work(work) {}
    CommandStack(const CommandStack&) = delete;
    CommandStack& operator=(const CommandStack&) = delete;
    ~CommandStack() { Clear(); }

    /// Executes a command, which belongs to the stack from then on: it becomes the latest one done,
    /// and those undone are destroyed. One that fails is destroyed and leaves the rest as it was.
    /// A stack without work destroys every command. A null command is an assertion and changes
    /// nothing.
    bool Run(IQuorelCommand* command);
    /// Undoes the latest command. False when there is none, or it fails; it stays then.
    bool Undo();
    /// Does the latest undone command again. False as for Undo.
    bool Redo();
    void Clear();

    std::size_t GetDoneCount() const { return m_Done.size(); }
    std::size_t GetUndoneCount() const { return m_Undone.size(); }

private:
    using Commands = std::vector<IQuorelCommand*>;
    bool Move(Commands& from, Commands& to, bool (ICommandWork::*work)(IQuorelCommand&));
    void Destroy(Commands& commands);

    ICommandWork* m_Work;
    Commands m_Done;
    Commands m_Undone; // the latest undone is the last
};
