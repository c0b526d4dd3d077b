/// Commands on a host's stack beside QUndoStack: what a command costs without its own work.
#include <ctime>
#include <memory>

#include <QUndoStack>

#include "block_turns.h"
#include "host_design.h"
#include "host_desktop.h"
#include "peer_bench.h"
#include "quorel_command.h"

namespace {

constexpr int kCommands = 100'000;
constexpr int kRounds = 15;
constexpr int kSmallLimit = 1000;
long sWork = 0; // what the commands do

class TrivialCommand : public QuorelCommand {
public:
    explicit TrivialCommand(ICommandContext* context) : QuorelCommand(context, nullptr, nullptr) {}
    ~TrivialCommand() override;
    bool Execute() override {
        ++sWork;
        return true;
    }
    void Undo() override {
        QuorelCommand::Undo();
        --sWork;
    }
    void Redo() override {
        QuorelCommand::Redo();
        ++sWork;
    }
    void GetSecondDescription(AString&) const override {}
    void Reserved19() override {}
};

TrivialCommand::~TrivialCommand() = default;

class TrivialPeer : public QUndoCommand {
public:
    ~TrivialPeer() override;
    void undo() override { --sWork; }
    void redo() override { ++sWork; }
};

TrivialPeer::~TrivialPeer() = default;

/// A host's desktop with one design, new for each round.
struct Stage {
    explicit Stage(int limit) {
        m_Store.Set(u"Options", u"NumberOfCommands", AString(std::to_string(limit)));
    }
    void Push() { m_Design.RunCommand(new TrivialCommand(m_Context)); }
    void Undo() { m_Desktop.UndoCommand(&m_Design.GetCommands()); }
    void Redo() { m_Desktop.RedoCommand(&m_Design.GetCommands()); }

    OptionStore m_Store;
    HostDesktop m_Desktop{{}, m_Store};
    HostDesign m_Design{u"filter", m_Desktop};
    ICommandContext* m_Context = m_Design.GetProject()->GetCommandContext();
};

struct Peer {
    explicit Peer(int limit) { m_Stack.setUndoLimit(limit); }
    void Push() { m_Stack.push(new TrivialPeer); }
    void Undo() { m_Stack.undo(); }
    void Redo() { m_Stack.redo(); }

    QUndoStack m_Stack;
};

template <class Stack>
work::Turns::Step Repeat(std::unique_ptr<Stack>& stack, void (Stack::*step)()) {
    return [&stack, step] {
        for (int i = 0; i < kCommands; ++i)
            (stack.get()->*step)();
    };
}

/// Adds the work of one sort of stack. The stack of 100,000 commands is pushed anew each round and
/// then undone and redone.
template <class Stack>
void AddWork(work::Turns& turns, const char* who, std::unique_ptr<Stack>& stack) {
    const auto fresh = [&stack](int limit) {
        return [&stack, limit] { stack = std::make_unique<Stack>(limit); };
    };
    const auto push = Repeat(stack, &Stack::Push);
    turns.Add("commands: push", who, kRounds, {fresh(kCommands), push, {}});
    turns.Add("commands: undo", who, kRounds, {{}, Repeat(stack, &Stack::Undo), {}});
    turns.Add("commands: redo", who, kRounds, {{}, Repeat(stack, &Stack::Redo), {}});
    turns.Add("commands: push with a limit of 1,000", who, kRounds, {fresh(kSmallLimit), push, {}});
}

/// How the last commands of a million compare with the first that are dropped.
void MeasureEndurance(const char* who) {
    constexpr int kMillion = 1'000'000;
    Stage stage(kCommands);
    const auto some = [&](int count) {
        const std::clock_t start = std::clock();
        for (int i = 0; i < count; ++i)
            stage.Push();
        return static_cast<double>(std::clock() - start) / count;
    };
    some(kCommands);
    const double first = some(kCommands);
    some(kMillion - 3 * kCommands);
    bench::Row("commands: the last 100,000 of 1M over the second", who, "ratio",
               some(kCommands) / first);
}

} // namespace

int main() {
    work::Turns turns;
    std::unique_ptr<Stage> stage;
    std::unique_ptr<Peer> peer;
    AddWork(turns, "quorel", stage);
    AddWork(turns, "QUndoStack", peer);
    turns.Run(kCommands);
    MeasureEndurance("quorel");
    bench::Keep(sWork);
}
