#include "quorel_command.h"

#include <algorithm>
#include <functional>

#include "assertion.h"
#include "idesign.h"
#include "idesktop.h"
#include "quorel_command_info.h"
#include "quorel_delta_state.h"
#include "undo_manager.h"

namespace {

IDesktop* DesktopOf(const QuorelCommandContext& context) {
    return context.mContextObject ? context.mContextObject->GetOwner() : nullptr;
}

const std::vector<IChange*>* ChangesOf(const QuorelCommand::Changes& changes,
                                       IChangeTarget* target) {
    const auto found = changes.find(target);
    return found == changes.end() ? nullptr : &found->second;
}

void DeleteChanges(const QuorelCommand::Changes& changes) {
    for (const auto& [target, list] : changes)
        for (const IChange* change : list)
            delete change;
}

} // namespace

QuorelCommand::QuorelCommand(ICommandContext* contextObject, IViewKey* viewKey, IEditor* editor)
    : mContext(contextObject, viewKey, editor) {}

QuorelCommand::~QuorelCommand() {
    if (!mRecords)
        return;
    if (mIsUndoable)
        VisitDeltaStates(!IsUndone(), [](const QuorelDeltaState* state) { delete state; });
    for (const auto& [key, info] : mRecords->mInfos)
        delete info;
    DeleteChanges(mRecords->mUndoChanges);
    DeleteChanges(mRecords->mRedoChanges);
    DeleteChanges(mRecords->mCommonChanges);
}

QuorelCommand::Records& QuorelCommand::GetRecords() {
    if (!mRecords)
        mRecords = std::make_unique<Records>();
    return *mRecords;
}

template <class Visit>
void QuorelCommand::VisitDeltaStates(bool newestFirst, Visit visit) const {
    if (!mRecords)
        return;
    const auto& states = mRecords->mDeltaStates;
    if (newestFirst)
        std::for_each(states.rbegin(), states.rend(), visit);
    else
        std::for_each(states.begin(), states.end(), visit);
}

void QuorelCommand::AddDeltaState(QuorelDeltaState* state) {
    GetRecords().mDeltaStates.push_back(state);
}

void QuorelCommand::SetCommandInfo(std::int32_t key, QuorelCommandInfo* info) {
    GetRecords().mInfos[key] = info;
}

void QuorelCommand::AddUndoable(Undoable* obj) {
    const bool isSound = mUndoMgr && obj && GetIsUndoable();
    USE_ASSERT_TEXT(isSound, "this && mUndoMgr && obj && GetIsUndoable()");
    if (isSound)
        mUndoMgr->Record(obj);
}

QuorelCommandInfo* QuorelCommand::GetCommandInfo(std::int32_t key) {
    if (!mRecords)
        return nullptr;
    const auto found = mRecords->mInfos.find(key);
    return found == mRecords->mInfos.end() ? nullptr : found->second;
}

IPrompt* QuorelCommand::FindMessageHolder() const {
    IDesktop* const desktop = DesktopOf(mContext);
    return desktop ? desktop->GetPrompt() : nullptr;
}

void QuorelCommand::CheckMessages() {
    IPrompt* const holder = FindMessageHolder();
    const int numMessages = holder ? holder->GetMessageCount() : 0;
    USE_ASSERT(numMessages == 0);
    if (numMessages > 0)
        holder->ShowMessages(mContext);
}

void QuorelCommand::CommandExecuted() {
    TellAll();
    if (IPrompt* holder = FindMessageHolder())
        holder->ShowMessages(mContext);
}

void QuorelCommand::UndoDeltaStates() {
    VisitDeltaStates(true, [](QuorelDeltaState* state) {
        if (state->IsChangeDone())
            state->Undo();
    });
}

void QuorelCommand::RedoDeltaStates() {
    VisitDeltaStates(false, [](QuorelDeltaState* state) {
        if (!state->IsChangeDone())
            state->Redo();
    });
}

void QuorelCommand::Undo() {
    const bool isSound = mUndoMgr && GetIsUndoable();
    USE_ASSERT_TEXT(isSound, "this && mUndoMgr && GetIsUndoable()");
    if (!isSound)
        return;
    mUndoMgr->Undo();
    VisitDeltaStates(true, [](QuorelDeltaState* state) { state->Undo(); });
    TellAll();
}

void QuorelCommand::Redo() {
    const bool isSound = mUndoMgr && GetIsUndoable();
    USE_ASSERT_TEXT(isSound, "this && mUndoMgr && GetIsUndoable()");
    if (!isSound)
        return;
    VisitDeltaStates(false, [](QuorelDeltaState* state) { state->Redo(); });
    mUndoMgr->Redo();
    TellAll();
}

void QuorelCommand::TellAll() {
    if (mNotifyContext)
        TellContext();
    TellListeners();
    if (mRecords)
        ReportChanges();
    if (mNotifyContext)
        RefreshDesktop();
}

void QuorelCommand::TellContext() {
    if (!mContext.mContextObject)
        return;
    if (IsUndone())
        mContext.mContextObject->CommandUndone(this);
    else
        mContext.mContextObject->CommandDone(this);
}

void QuorelCommand::TellListeners() {
    if (mContext.mContextObject)
        mContext.mContextObject->CommandFinished(this);
    IDesignInstance* const instance =
        mContext.mViewKey ? mContext.mViewKey->GetInstance() : nullptr;
    if (ICommandListener* listener = instance ? instance->GetCommandListener() : nullptr)
        listener->CommandFinished(this);
}

/// Tells each object of its changes, in the order of the objects' addresses, backwards when undone.
void QuorelCommand::ReportChanges() {
    std::vector<IChangeTarget*> targets;
    const auto& [undone, redone, common, states, infos] = *mRecords;
    for (const Changes* changes : {&undone, &redone, &common})
        for (const auto& [target, list] : *changes)
            targets.push_back(target);
    std::ranges::sort(targets, std::less<>());
    targets.erase(std::unique(targets.begin(), targets.end()), targets.end());
    if (IsUndone())
        std::ranges::reverse(targets);
    const Changes& directed = IsUndone() ? undone : redone;
    for (IChangeTarget* target : targets)
        target->ChangesApplied(ChangesOf(directed, target), ChangesOf(common, target), this);
}

void QuorelCommand::RefreshDesktop() const {
    IDesktop* const desktop = DesktopOf(mContext);
    if (IUserInterface* userInterface = desktop ? desktop->GetUserInterface() : nullptr)
        userInterface->Refresh();
}
