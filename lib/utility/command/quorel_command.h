/// QuorelCommand: one action of a user that a desktop can run, undo and redo.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "astring.h"
#include "iquorel_command.h"
#include "quorel_command_context.h"

class IChange;
class IChangeTarget;
class IPrompt;
class Undo_Manager;

/// The base of all commands. A command keeps the record of what it changed, while the objects that
/// changed keep their own states. The desktop owns the stack of commands and drives them: it gives
/// a command its manager and calls CheckMessages, opens a step, calls Execute, closes the step,
/// sets the state to kDone and calls CommandExecuted; later it sets kUndone and calls Undo, or
/// kRedone and Redo.
class QUOREL_API QuorelCommand : public IQuorelCommand {
public:
    enum State : std::int32_t { kNew, kDone, kUndone, kRedone };
    using Changes = std::map<IChangeTarget*, std::vector<IChange*>>;

    QuorelCommand(ICommandContext* contextObject, IViewKey* viewKey, IEditor* editor);
    QuorelCommand(const QuorelCommand&) = delete;
    QuorelCommand& operator=(const QuorelCommand&) = delete;
    ~QuorelCommand() override;
    bool IsDone() const override { return mState == kDone; }
    bool IsUndone() const override { return mState == kUndone; }
    bool IsRedone() const override { return mState == kRedone; }
    /// A null object, no manager and a command that can't be undone are assertions, and nothing.
    void AddUndoable(Undoable* obj) override;
    void AddDeltaState(QuorelDeltaState* state) override;
    void SetCommandInfo(std::int32_t key, QuorelCommandInfo* info) override;
    QuorelCommandInfo* GetCommandInfo(std::int32_t key) override;
    Infos& GetCommandInfos() override { return GetRecords().mInfos; }
    virtual bool Reserved10() { return true; }
    /// Shows what messages are left from before the command; there should be none.
    virtual void CheckMessages();
    /// Does the command's work. @return whether it was done
    virtual bool Execute() = 0;
    virtual void Reserved13() {}
    /// Tells everybody concerned that Execute was done, and shows the messages collected meanwhile.
    virtual void CommandExecuted();
    /// Undoes the manager's newest step, then the delta states, newest first, and tells everybody.
    /// No manager and a command that can't be undone are assertions, and nothing.
    virtual void Undo();
    /// The same forward, in the opposite order.
    virtual void Redo();
    /// What a menu shows behind "Undo" or "Redo".
    virtual void GetDescription(AString& description) const { description.clear(); }
    virtual void GetSecondDescription(AString& description) const = 0;
    virtual void Reserved19() = 0;

    bool GetIsUndoable() const { return mIsUndoable; }
    const QuorelCommandContext& GetContext() const { return mContext; }

    /// @name For whoever runs the command
    /// @{
    void SetManager(Undo_Manager* manager) { mUndoMgr = manager; }
    State GetState() const { return mState; }
    void SetState(State state) { mState = state; }
    /// Undoes those delta states that are done, newest first, or redoes the others, oldest first:
    /// what a command that has stopped halfway needs.
    void UndoDeltaStates();
    void RedoDeltaStates();
    /// @}

protected:
    /// What most commands don't have.
    struct Records {
        /// @name What the objects concerned hear of when the command is undone, done or redone, and
        /// each time. The changes belong to the command.
        /// @{
        Changes mUndoChanges;
        Changes mRedoChanges;
        Changes mCommonChanges;
        /// @}
        std::vector<QuorelDeltaState*> mDeltaStates; ///< owned when the command is undoable
        Infos mInfos;                                ///< owned
    };
    /// Made when first asked for.
    Records& GetRecords();

    bool mIsUndoable = true;
    bool mNotifyContext = true;

private:
    void TellContext();
    void TellListeners();
    void TellAll();
    void ReportChanges();
    void RefreshDesktop() const;
    IPrompt* FindMessageHolder() const;
    template <class Visit>
    void VisitDeltaStates(bool newestFirst, Visit visit) const;

    State mState = kNew;
    Undo_Manager* mUndoMgr = nullptr; ///< not owned, set by whoever runs the command
    std::unique_ptr<Records> mRecords;
    QuorelCommandContext mContext;
};
