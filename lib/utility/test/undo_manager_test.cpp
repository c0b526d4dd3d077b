/// Undo_Manager against a twin that copies all objects at each step, and the rules of one object.
#include "undo_manager.h"

#include <array>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "assertion.h"
#include "mundoable_object.h"
#include "quorel_command.h"

namespace {

int sSnapshots = 0; // alive
bool sRestoreThrows = false;
bool sCreateThrows = false;

/// An object whose state is a number.
struct Number : MUndoableObject {
    struct Snapshot : UndoableSnapshot {
        explicit Snapshot(int value) : m_Value(value) { ++sSnapshots; }
        ~Snapshot() override { --sSnapshots; }
        int m_Value;
    };

    std::unique_ptr<UndoableSnapshot> CreateSnapshot() override {
        if (sCreateThrows)
            throw std::bad_alloc();
        return std::make_unique<Snapshot>(m_Value);
    }
    void RestoreSnapshot(const UndoableSnapshot& snapshot) override {
        if (sRestoreThrows)
            throw std::bad_alloc();
        m_Value = dynamic_cast<const Snapshot&>(snapshot).m_Value;
    }
    bool IsSameAs(const UndoableSnapshot& snapshot) override {
        return m_Value == dynamic_cast<const Snapshot&>(snapshot).m_Value;
    }
    int m_Value = 0;
};

struct Nothing : QuorelCommand {
    Nothing() : QuorelCommand(nullptr, nullptr, nullptr) {}
    bool Execute() override { return true; }
    void GetSecondDescription(AString&) const override {}
    void Reserved19() override {}
};

/// Assertions on, and counted.
class UndoManager : public testing::Test {
protected:
    UndoManager() {
        gIgnoreAllAsserts = false;
        SetAssertHandler([this](const std::string&, unsigned) {
            ++m_Asserts;
            return AssertAnswer::kRetry;
        });
    }
    ~UndoManager() override {
        SetAssertHandler({});
        gIgnoreAllAsserts = true;
        sRestoreThrows = sCreateThrows = false;
    }
    void Undo() {
        m_Manager.Undo();
        m_Manager.SetCommandIndex(m_Manager.GetCommandIndex() - 1);
    }
    void Redo() {
        m_Manager.Redo();
        m_Manager.SetCommandIndex(m_Manager.GetCommandIndex() + 1);
    }

    int m_Asserts = 0;
    std::array<Number, 4> m_Numbers; // outlive the manager
    Undo_Manager m_Manager;
};

TEST_F(UndoManager, RandomStepsAgreeWithCopiesOfEverything) {
    using State = std::array<int, 4>;
    const auto state = [this] {
        State now{};
        for (std::size_t i = 0; i < now.size(); ++i)
            now[i] = m_Numbers[i].m_Value;
        return now;
    };
    std::minstd_rand random(7);
    std::vector<State> past, future; // the last is the next to come back
    for (int round = 0; round < 4000; ++round) {
        const auto dice = random() % 8;
        const State before = state();
        if (dice < 4) {
            m_Manager.OpenStep();
            for (auto changes = random() % 4; changes > 0; --changes) {
                Number& number = m_Numbers[random() % m_Numbers.size()];
                m_Manager.Record(&number);
                number.m_Value += 1 + static_cast<int>(random() % 3);
            }
            if (dice == 0) {
                m_Manager.CancelStep();
                ASSERT_EQ(state(), before);
            } else {
                m_Manager.CloseStep(new Nothing);
                past.push_back(before);
                future.clear();
            }
        } else if (dice < 7 && m_Manager.GetUndoCommand()) {
            Undo();
            ASSERT_EQ(state(), past.back());
            past.pop_back();
            future.push_back(before);
        } else if (m_Manager.GetRedoCommand()) {
            Redo();
            ASSERT_EQ(state(), future.back());
            future.pop_back();
            past.push_back(before);
        }
        if (past.size() > 5) {
            m_Manager.DropOldest();
            past.erase(past.begin());
        }
        ASSERT_EQ(m_Manager.GetUndoStepCount(), past.size());
        ASSERT_EQ(m_Manager.GetRedoStepCount(), future.size());
        ASSERT_EQ(m_Manager.GetCommandCount(), past.size() + future.size());
    }
    EXPECT_EQ(m_Asserts, 0);
    EXPECT_LE(sSnapshots, 4 * 6) << "what was dropped is gone";
    m_Manager.Clear();
    EXPECT_EQ(sSnapshots, 0);
    EXPECT_TRUE(m_Numbers[0].IsAliveUndoable());
    EXPECT_EQ(m_Manager.GetUndoCommand(), nullptr);
}

TEST_F(UndoManager, RecordsAnObjectOnceAStepAndOnlyIfItHasChanged) {
    Number& number = m_Numbers[0];
    EXPECT_FALSE(m_Manager.Record(&number));
    m_Manager.OpenStep();
    EXPECT_FALSE(m_Manager.Record(nullptr));
    EXPECT_EQ(m_Asserts, 2);
    EXPECT_TRUE(m_Manager.Record(&number));
    EXPECT_FALSE(m_Manager.Record(&number));
    m_Manager.CloseStep(nullptr);
    m_Manager.OpenStep();
    EXPECT_FALSE(m_Manager.Record(&number)) << "equal to its newest snapshot";
    number.m_Value = 1;
    EXPECT_TRUE(m_Manager.Record(&number));
    EXPECT_EQ(sSnapshots, 2);
    m_Manager.CloseStep(nullptr);
    m_Manager.Undo();
    m_Manager.OpenStep();
    number.m_Value = 5;
    EXPECT_TRUE(m_Manager.Record(&number));
    number.StepForward();
    EXPECT_EQ(m_Asserts, 3) << "the future has ended";
    m_Manager.CancelStep();
    m_Manager.Redo();
    EXPECT_EQ(number.m_Value, 1) << "a step taken back has ended nothing";
    m_Manager.Redo();
    EXPECT_EQ(m_Asserts, 4);
    m_Manager.SetCommandIndex(0);
    EXPECT_EQ(m_Asserts, 5);
    EXPECT_EQ(m_Manager.GetCommandIndex(), -1) << "no command has that index";
}

TEST_F(UndoManager, AStepTakenBackLeavesObjectsAsTheyWere) {
    Number& changed = m_Numbers[0];
    Number& created = m_Numbers[1];
    m_Manager.OpenStep();
    m_Manager.Record(&changed);
    m_Manager.CloseStep(nullptr);
    for (const bool again : {false, true}) {
        m_Manager.OpenStep();
        EXPECT_FALSE(m_Manager.Record(&changed)) << "equal to its newest snapshot";
        changed.m_Value = 7;
        changed.SetDeleted(true);
        EXPECT_EQ(again && m_Manager.Record(&changed), again);
        changed.m_Value = 8;
        EXPECT_TRUE(m_Manager.CancelStep());
        EXPECT_EQ(changed.m_Value, 0);
        EXPECT_FALSE(changed.GetDeleted());
    }
    created.SetNew();
    m_Manager.OpenStep();
    sCreateThrows = true;
    EXPECT_THROW(m_Manager.Record(&created), std::bad_alloc);
    sCreateThrows = false;
    EXPECT_FALSE(created.GetDeleted());
    EXPECT_TRUE(created.IsNew());
    EXPECT_EQ(created.GetManager(), nullptr);
    m_Numbers[2].SetDeleted(true);
    m_Manager.Record(&m_Numbers[2]);
    m_Manager.Record(&created);
    m_Manager.CancelStep();
    EXPECT_FALSE(created.IsAliveUndoable());
    EXPECT_TRUE(m_Numbers[2].IsAliveUndoable()) << "its owner had it before";
    EXPECT_EQ(sSnapshots, 1);
    EXPECT_EQ(m_Asserts, 0);
}

TEST_F(UndoManager, LetsGoWhatNothingBringsBack) {
    Number& created = m_Numbers[0];
    Number& removed = m_Numbers[1];
    created.SetNew();
    m_Manager.OpenStep();
    m_Manager.Record(&created);
    m_Manager.Record(&removed);
    removed.SetDeleted(true);
    m_Manager.CloseStep(new Nothing);
    EXPECT_FALSE(created.GetDeleted());
    Undo();
    EXPECT_TRUE(created.GetDeleted());
    EXPECT_FALSE(removed.GetDeleted());
    Redo();
    EXPECT_FALSE(created.GetDeleted());
    EXPECT_TRUE(removed.GetDeleted());
    Undo();
    m_Manager.OpenStep();
    m_Manager.CloseStep(new Nothing);
    EXPECT_FALSE(created.IsAliveUndoable()) << "its creation can't be redone any more";
    EXPECT_TRUE(removed.IsAliveUndoable());
    m_Manager.OpenStep();
    m_Manager.Record(&removed);
    removed.SetDeleted(true);
    m_Manager.CloseStep(new Nothing);
    m_Manager.Clear();
    EXPECT_FALSE(removed.IsAliveUndoable());
    EXPECT_EQ(m_Asserts, 0);
}

TEST_F(UndoManager, AnObjectThatThrowsLeavesTheStepsAsTheyWere) {
    m_Manager.OpenStep();
    m_Manager.Record(&m_Numbers[0]);
    m_Numbers[0].m_Value = 3;
    m_Manager.CloseStep(nullptr);
    sRestoreThrows = true;
    EXPECT_THROW(m_Manager.Undo(), std::bad_alloc);
    sRestoreThrows = false;
    EXPECT_EQ(m_Manager.GetUndoStepCount(), 1u);
    m_Manager.Undo();
    EXPECT_EQ(m_Numbers[0].m_Value, 0);
    sRestoreThrows = true;
    EXPECT_THROW(m_Manager.Redo(), std::bad_alloc);
    EXPECT_EQ(m_Manager.GetRedoStepCount(), 1u);
    EXPECT_EQ(sSnapshots, 1);
}

} // namespace
