/// How a desktop drives commands: order, limits, and what a failure leaves.
#include "command_runner.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "host_design.h"
#include "host_desktop.h"
#include "quorel_command.h"
#include "quorel_delta_state.h"
#include "undoable.h"

namespace {

std::string sLog;

struct Number : Undoable {
    struct Snapshot : UndoableSnapshot {
        explicit Snapshot(int value) : m_Value(value) {}
        int m_Value;
    };
    std::unique_ptr<UndoableSnapshot> CreateSnapshot() override {
        return std::make_unique<Snapshot>(m_Value);
    }
    void RestoreSnapshot(const UndoableSnapshot& snapshot) override {
        m_Value = dynamic_cast<const Snapshot&>(snapshot).m_Value;
    }
    bool IsSameAs(const UndoableSnapshot&) override { return false; }
    int m_Value = 0;
};

/// Where a step of a command throws.
enum class Fault { none, fails, executing, delta, telling };

/// A change of a second number by code, which throws when the fault says so.
struct Delta : QuorelDeltaState {
    Delta(int& value, const Fault& fault)
        : QuorelDeltaState(true), m_Value(value), m_Fault(fault) {}
    void Undo() override {
        if (m_Fault == Fault::delta)
            throw std::runtime_error("delta");
        --m_Value;
        QuorelDeltaState::Undo();
    }
    void Redo() override {
        if (m_Fault == Fault::delta)
            throw std::runtime_error("delta");
        ++m_Value;
        QuorelDeltaState::Redo();
    }
    int& m_Value;
    const Fault& m_Fault;
};

/// A context that logs the command's state and the manager's index as it is told, and throws when
/// the fault says so.
struct Context : HostContext {
    Context(IDesktop* desktop, const Undo_Manager& manager)
        : HostContext(u"test", desktop), m_Manager(manager) {}
    void CommandDone(IQuorelCommand* command) override { Tell(command); }
    void CommandUndone(IQuorelCommand* command) override { Tell(command); }
    void Tell(IQuorelCommand* command) {
        sLog += "told" + std::to_string(dynamic_cast<QuorelCommand&>(*command).GetState()) + "@" +
                std::to_string(m_Manager.GetCommandIndex()) + ' ';
        if (m_Fault == Fault::telling)
            throw std::runtime_error("telling");
    }
    const Undo_Manager& m_Manager;
    Fault m_Fault = Fault::none;
};

struct Stage;

/// Adds 10 to the stage's number by a snapshot, and 1 to its count by a delta state.
struct Adding : QuorelCommand {
    explicit Adding(Stage& stage);
    ~Adding() override;
    void CheckMessages() override { sLog += "check "; }
    bool Execute() override;
    void GetSecondDescription(AString&) const override {}
    void Reserved19() override {}
    using QuorelCommand::mIsUndoable;

    Stage& m_Stage;
    QuorelCommand* m_Nested = nullptr; ///< run meanwhile
    bool m_TurnsPassing = false;       ///< finds that it can't be undone
};

struct Stage {
    OptionStore m_Store;
    HostDesktop m_Desktop{{}, m_Store};
    Number m_Number;
    int m_Count = 0;
    int m_Alive = 0; ///< commands
    HostDesign m_Design{u"filter", m_Desktop};
    Undo_Manager& m_Commands = m_Design.GetCommands();
    Context m_Context{&m_Desktop, m_Commands};

    void Run() { m_Design.RunCommand(new Adding(*this)); }
    void RunWithNested();
    void Undo() { m_Desktop.UndoCommand(&m_Commands); }
    void Redo() { m_Desktop.RedoCommand(&m_Commands); }
    /// Number, count, index of the newest command done, commands, steps to undo and to redo.
    std::string State() const {
        std::string state;
        for (const auto part : {m_Number.m_Value, m_Count, m_Commands.GetCommandIndex(),
                                static_cast<int>(m_Commands.GetCommandCount()),
                                static_cast<int>(m_Commands.GetUndoStepCount()),
                                static_cast<int>(m_Commands.GetRedoStepCount())})
            state += std::to_string(part) + ' ';
        return state;
    }
};

Adding::Adding(Stage& stage) : QuorelCommand(&stage.m_Context, nullptr, nullptr), m_Stage(stage) {
    ++stage.m_Alive;
}

Adding::~Adding() {
    --m_Stage.m_Alive;
}

void Stage::RunWithNested() {
    auto* const outer = new Adding(*this);
    outer->m_Nested = new Adding(*this);
    m_Design.RunCommand(outer);
}

bool Adding::Execute() {
    sLog += "execute ";
    if (m_Nested)
        m_Stage.m_Design.RunCommand(m_Nested);
    if (!GetIsUndoable())
        return true;
    AddUndoable(&m_Stage.m_Number);
    m_Stage.m_Number.m_Value += 10;
    mIsUndoable = !m_TurnsPassing;
    if (m_TurnsPassing)
        return true;
    AddDeltaState(new Delta(m_Stage.m_Count, m_Stage.m_Context.m_Fault));
    ++m_Stage.m_Count;
    if (m_Stage.m_Context.m_Fault == Fault::executing)
        throw std::runtime_error("executing");
    return m_Stage.m_Context.m_Fault != Fault::fails;
}

TEST(CommandRunner, DrivesCommandsInOrder) {
    Stage stage;
    sLog.clear();
    stage.Undo();
    stage.Run();
    stage.Run();
    EXPECT_EQ(sLog, "check execute told1@0 check execute told1@1 ");
    EXPECT_EQ(stage.State(), "20 2 1 2 2 0 ");
    sLog.clear();
    stage.Undo();
    stage.Undo();
    stage.Undo();
    EXPECT_EQ(stage.State(), "0 0 -1 2 0 2 ");
    stage.Redo();
    EXPECT_EQ(sLog, "told2@0 told2@-1 told3@0 ");
    EXPECT_EQ(stage.State(), "10 1 0 2 1 1 ");
    stage.Run();
    EXPECT_EQ(stage.State(), "20 2 1 2 2 0 ");
    EXPECT_EQ(stage.m_Alive, 2);
    EXPECT_EQ(stage.m_Desktop.GetCommands().GetCommandCount(), 0u) << "the design has its own";
    stage.m_Desktop.ReleaseCommands();
    EXPECT_EQ(stage.State(), "20 2 -1 0 0 0 ");
    EXPECT_EQ(stage.m_Alive, 0);
}

TEST(CommandRunner, AFailureLeavesAllAsItWas) {
    const struct {
        Fault m_Fault;
        void (Stage::*m_Work)();
        const char* m_Prompt; ///< null: nothing is told
        bool m_IsDone = false;
    } kRows[] = {
        {Fault::fails, &Stage::RunWithNested, nullptr},
        {Fault::executing, &Stage::RunWithNested, "was taken back: executing"},
        {Fault::telling, &Stage::Run, "was done, but what goes with it has failed: tell", true},
        {Fault::delta, &Stage::Undo, "was taken back: delta"},
        {Fault::delta, &Stage::Redo, "was taken back: delta"},
        {Fault::telling, &Stage::Undo, "was taken back: telling"},
        {Fault::telling, &Stage::Redo, "was taken back: telling"}};
    for (const auto& row : kRows) {
        Stage stage;
        stage.Run();
        stage.Run();
        stage.Undo();
        const std::string after = row.m_IsDone ? "20 2 1 2 2 0 " : stage.State();
        stage.m_Desktop.GetPrompt()->m_OnShown = [&](const HostPrompt::Shown&) {
            EXPECT_EQ(stage.State(), after) << "all is as it was when it is told";
            stage.m_Context.m_Fault = Fault::none;
            row.m_IsDone ? stage.Undo() : stage.Redo();
            EXPECT_NE(stage.State(), after) << "no command is at work any more";
            row.m_IsDone ? stage.Redo() : stage.Undo();
        };
        stage.m_Context.m_Fault = row.m_Fault;
        (stage.*row.m_Work)();
        const auto& shown = stage.m_Desktop.GetPrompt()->GetShown();
        ASSERT_EQ(shown.size(), row.m_Prompt ? 1u : 0u);
        if (row.m_Prompt) {
            EXPECT_NE(shown[0].m_Text.find(AString(row.m_Prompt)), AString::npos);
        }
        EXPECT_EQ(stage.State(), after);
        EXPECT_EQ(stage.m_Alive, 2);
        stage.m_Context.m_Fault = Fault::none;
        stage.Redo();
        EXPECT_EQ(stage.State(), "20 2 1 2 2 0 ");
        stage.Undo();
        stage.Undo();
        EXPECT_EQ(stage.State(), "0 0 -1 2 0 2 ");
    }
}

TEST(CommandRunner, CommandsOfACommandComeAfterIt) {
    Stage stage;
    sLog.clear();
    stage.RunWithNested();
    EXPECT_EQ(sLog, "check execute told1@0 check execute told1@1 ");
    stage.Undo();
    EXPECT_EQ(stage.State(), "10 1 0 2 1 1 ");

    auto* const passing = new Adding(stage);
    passing->mIsUndoable = false;
    stage.m_Design.RunCommand(passing);
    EXPECT_EQ(stage.State(), "10 1 0 2 1 1 ") << "what can't be undone stands on no stack";
    EXPECT_EQ(stage.m_Alive, 2);
    auto* const turning = new Adding(stage);
    turning->m_TurnsPassing = true;
    stage.m_Design.RunCommand(turning);
    EXPECT_EQ(stage.State(), "20 1 0 2 1 1 ") << "nor what finds so only when it is executed";
    stage.Undo();
    EXPECT_EQ(stage.State(), "0 0 -1 2 0 2 ");
}

TEST(CommandRunner, ALowerLimitDropsOnlyWhatIsDone) {
    Stage stage;
    CommandRunner runner;
    for (int i = 0; i < 3; ++i)
        runner.Run(new Adding(stage), stage.m_Commands);
    while (runner.Undo(stage.m_Commands)) {
    }
    runner.SetLimit(2);
    auto* const passing = new Adding(stage);
    passing->mIsUndoable = false;
    runner.Run(passing, stage.m_Commands);
    EXPECT_EQ(stage.State(), "0 0 -1 3 0 3 ");
    for (int i = 0; i < 3; ++i)
        runner.Run(new Adding(stage), stage.m_Commands);
    EXPECT_EQ(stage.State(), "30 3 1 2 2 0 ");
}

} // namespace
