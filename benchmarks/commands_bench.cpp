/// Commands on a host's stack beside QUndoStack: what a command costs without its own work.
#include <memory>

#include <QUndoStack>

#include "host_design.h"
#include "host_desktop.h"
#include "peer_bench.h"
#include "quorel_command.h"

namespace {

constexpr int kCommands = 100'000;
constexpr int kRounds = 11;
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
    Undo_Manager& Commands() { return m_Design.GetCommands(); }

    OptionStore m_Store;
    HostDesktop m_Desktop{{}, m_Store};
    HostDesign m_Design{u"filter", m_Desktop};
    ICommandContext* m_Context = m_Design.GetProject()->GetCommandContext();
};

/// Nanoseconds a command of work that does all of them, median of rounds.
template <class Setup, class Work>
void Row(const char* work, const char* who, Setup setup, Work all) {
    bench::Row(work, who, "ns", bench::TimeOf(kRounds, setup, all) / kCommands);
}

void MeasureOwn(const char* who) {
    std::unique_ptr<Stage> stage;
    const auto fresh = [&](int limit) {
        return [&stage, limit] { stage = std::make_unique<Stage>(limit); };
    };
    const auto push = [&] {
        for (int i = 0; i < kCommands; ++i)
            stage->Push();
    };
    const auto undo = [&] {
        for (int i = 0; i < kCommands; ++i)
            stage->m_Desktop.UndoCommand(&stage->Commands());
    };
    const auto redo = [&] {
        for (int i = 0; i < kCommands; ++i)
            stage->m_Desktop.RedoCommand(&stage->Commands());
    };
    Row("commands: push", who, fresh(kCommands), push);
    Row(
        "commands: undo", who, [&] { redo(); }, undo);
    Row(
        "commands: redo", who, [&] { undo(); }, redo);
    Row("commands: push with a limit of 1,000", who, fresh(kSmallLimit), push);
}

void MeasurePeer(const char* who) {
    std::unique_ptr<QUndoStack> stack;
    const auto fresh = [&](int limit) {
        return [&stack, limit] {
            stack = std::make_unique<QUndoStack>();
            stack->setUndoLimit(limit);
        };
    };
    const auto push = [&] {
        for (int i = 0; i < kCommands; ++i)
            stack->push(new TrivialPeer);
    };
    const auto undo = [&] {
        for (int i = 0; i < kCommands; ++i)
            stack->undo();
    };
    const auto redo = [&] {
        for (int i = 0; i < kCommands; ++i)
            stack->redo();
    };
    Row("commands: push", who, fresh(0), push);
    Row("commands: undo", who, redo, undo);
    Row("commands: redo", who, undo, redo);
    Row("commands: push with a limit of 1,000", who, fresh(kSmallLimit), push);
}

/// How the last commands of a million compare with the first that are dropped.
void MeasureEndurance(const char* who) {
    constexpr int kMillion = 1'000'000;
    Stage stage(kCommands);
    const auto some = [&](int count) {
        const double start = bench::Now();
        for (int i = 0; i < count; ++i)
            stage.Push();
        return (bench::Now() - start) / count;
    };
    some(kCommands);
    const double first = some(kCommands);
    some(kMillion - 3 * kCommands);
    bench::Row("commands: the last 100,000 of 1M over the second", who, "ratio",
               some(kCommands) / first);
}

} // namespace

int main() {
    MeasureOwn("quorel");
    MeasurePeer("QUndoStack");
    MeasureEndurance("quorel");
    bench::Keep(sWork);
}
