/// What a command does and whom it tells, in which order.
#include "quorel_command.h"

#include <gtest/gtest.h>
#include <string>

#include "assertion_watch.h"
#include "idesign.h"
#include "quorel_delta_state.h"
#include "undo_manager.h"

namespace {

std::string sLog;

/// A context, an instance with its key, and its listener, which log what they are told.
struct Surroundings : ICommandContext, IDesignInstance, IViewKey, ICommandListener {
    void GetName(AString&) override {}
    IDesktop* GetOwner() override { return nullptr; }
    void CommandDone(IQuorelCommand*) override { sLog += "done "; }
    void CommandUndone(IQuorelCommand*) override { sLog += "undone "; }
    void CommandFinished(IQuorelCommand*) override { sLog += "finished "; }
    void GetInstanceName(AString&) override {}
    IViewKey* GetViewKey() override { return this; }
    IDesignInstance* GetInstance() override { return this; }
    void EditorActivated(IEditor*) override {}
    void EditorDeactivated(IEditor*) override {}
    ICommandListener* GetCommandListener() override { return this; }
};

struct Delta : QuorelDeltaState {
    explicit Delta(char name) : QuorelDeltaState(true), m_Name(name) {}
    ~Delta() override { Log("~"); }
    void Undo() override {
        Log("u");
        QuorelDeltaState::Undo();
    }
    void Redo() override {
        Log("r");
        QuorelDeltaState::Redo();
    }
    void Log(const char* what) const { sLog += what + std::string(1, m_Name) + ' '; }
    char m_Name;
};

struct Target : IChangeTarget {
    void ChangesApplied(const std::vector<IChange*>* changes, const std::vector<IChange*>* common,
                        IQuorelCommand*) override {
        sLog += std::to_string(m_Number) + (changes ? 'd' : '-') + (common ? 'c' : '-') + ' ';
    }
    int m_Number = 0;
};

struct Command : QuorelCommand {
    Command(ICommandContext* context, IViewKey* key) : QuorelCommand(context, key, nullptr) {}
    bool Execute() override { return true; }
    void GetSecondDescription(AString& description) const override { description.clear(); }
    void Reserved19() override {}
    using QuorelCommand::GetRecords;
    using QuorelCommand::mIsUndoable;
    using QuorelCommand::mNotifyContext;
};

/// Runs a command through doing, undoing and redoing, and gives what was logged.
std::string RunThrough(Command& command) {
    Undo_Manager manager;
    manager.OpenStep();
    command.SetManager(&manager);
    manager.CloseStep(nullptr);
    sLog.clear();
    command.SetState(QuorelCommand::kDone);
    command.CommandExecuted();
    sLog += "| ";
    command.SetState(QuorelCommand::kUndone);
    command.Undo();
    sLog += "| ";
    command.SetState(QuorelCommand::kRedone);
    command.Redo();
    return sLog;
}

TEST(Command, TellsContextThenListenersThenTheObjectsThatChanged) {
    Surroundings around;
    std::array<Target, 3> targets{};
    const auto fill = [&](Command& command) {
        for (int i = 0; i < 3; ++i)
            targets[static_cast<std::size_t>(i)].m_Number = i;
        command.GetRecords().mUndoChanges[&targets[0]] = {new IChange};
        command.GetRecords().mRedoChanges[&targets[1]] = {};
        command.GetRecords().mCommonChanges[&targets[1]] = {};
        command.GetRecords().mCommonChanges[&targets[2]] = {};
    };
    const std::tuple<bool, bool, const char*> kRows[] = {
        {true, true,
         "done finished finished 0-- 1dc 2-c | "
         "uB uA undone finished finished 2-c 1-c 0d- | "
         "rA rB done finished finished 0-- 1dc 2-c "},
        {true, false,
         "finished finished 0-- 1dc 2-c | uB uA finished finished 2-c 1-c 0d- | "
         "rA rB finished finished 0-- 1dc 2-c "},
        {false, true, "0-- 1dc 2-c | uB uA 2-c 1-c 0d- | rA rB 0-- 1dc 2-c "}};
    for (const auto& [hasContext, notifyContext, log] : kRows) {
        Command command(hasContext ? &around : nullptr, hasContext ? around.GetViewKey() : nullptr);
        EXPECT_FALSE(command.IsDone() || command.IsUndone() || command.IsRedone());
        fill(command);
        command.mNotifyContext = notifyContext;
        command.AddDeltaState(new Delta('A'));
        command.AddDeltaState(new Delta('B'));
        EXPECT_EQ(RunThrough(command), log);
    }
}

TEST(Command, DeletesItsDeltaStatesInTheOrderOfItsState) {
    for (const bool undone : {false, true}) {
        auto* const command = new Command(nullptr, nullptr);
        command->AddDeltaState(new Delta('A'));
        command->AddDeltaState(new Delta('B'));
        command->SetState(undone ? QuorelCommand::kUndone : QuorelCommand::kDone);
        sLog.clear();
        delete command;
        EXPECT_EQ(sLog, undone ? "~A ~B " : "~B ~A ");
    }
    const Delta kept('K');
    sLog.clear();
    {
        Command command(nullptr, nullptr);
        command.mIsUndoable = false;
        command.AddDeltaState(const_cast<Delta*>(&kept));
    }
    EXPECT_EQ(sLog, "") << "they belong to undoable commands only";
}

TEST(Command, UnsoundUseIsAnAssertionAndNothingElse) {
    AssertionWatch asserts;
    Command command(nullptr, nullptr);
    command.AddDeltaState(new Delta('A'));
    sLog.clear();
    command.AddUndoable(nullptr);
    command.Undo();
    command.Redo();
    EXPECT_EQ(sLog, "");
    EXPECT_EQ(asserts.Take(), 3);
    Delta twice('T');
    twice.Undo();
    twice.Undo();
    EXPECT_EQ(asserts.Take(), 1);
}

} // namespace
