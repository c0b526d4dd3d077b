/// A million characters typed into an editor without a screen, each a command on its host's stack:
/// whether typing grows slower, and whether stack and journal hold more than their limits say.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>

#include <unistd.h>

#include "headless_desk.h"
#include "host_design.h"
#include "host_desktop.h"
#include "messages.h"
#include "module_host.h"
#include "peer_bench.h"

namespace {

constexpr int kPart = 100'000; ///< and the limit of both, so that they are full behind the first
constexpr int kParts = 10;
constexpr std::string_view kLine = "R12 node_a node_b 1.5k ; a line of a netlist as it is typed";
const std::string kTime = "typing: the last 100,000 characters of 1M over the second";
const std::string kMemory = "typing: memory after 1M characters over that after 200,000";

/// Types into the view as a user does, the Return key at the end of each line.
void Type(HeadlessDesk& desk, int count) {
    HeadlessWindow& view = *desk.GetWindows().back();
    for (int i = 0; i < count; ++i) {
        const std::size_t at = static_cast<std::size_t>(i) % (kLine.size() + 1);
        if (at == kLine.size())
            view.Send(kMsgKeyDown, kKeyReturn, 1);
        else
            view.Send(kMsgChar, static_cast<unsigned char>(kLine[at]), 1);
        desk.Pump();
    }
}

double ResidentPages() {
    long all = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return static_cast<double>(resident);
}

void Require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "typing_bench: %s\n", what);
    std::exit(2);
}

void Measure(HeadlessDesk& desk, HostDesign& design, IEditorInspector& inspector) {
    std::clock_t times[kParts];
    double secondPages = 0;
    for (int part = 0; part < kParts; ++part) {
        const std::clock_t start = std::clock();
        Type(desk, kPart);
        times[part] = std::clock() - start;
        if (part == 1)
            secondPages = ResidentPages();
    }
    const double lastPages = ResidentPages();
    Require(design.GetCommands().GetCommandCount() == kPart, "the stack isn't full");
    std::vector<JournalEntry> records;
    inspector.GetUndoRecords(records);
    Require(records.size() > kPart / 2 && records.size() <= kPart, "the journal isn't full");
    Require(inspector.GetLineCount() > kParts * kPart / 100, "the text isn't there");
    bench::Row(kTime, "quorel", "ratio",
               static_cast<double>(times[kParts - 1]) / static_cast<double>(times[1]));
    bench::Row(kTime, "the aim", "ratio", 1);
    bench::Row(kMemory, "quorel", "ratio", lastPages / secondPages);
    bench::Row(kMemory, "the aim", "ratio", 1);
}

} // namespace

int main() {
    ::setenv("QUOREL_DATA_DIR", QUOREL_SOURCE_DIR, 1);
    HeadlessDesk desk;
    OptionStore options;
    for (const char16_t* limit : {u"NumberOfCommands", u"NumberOfUndos"})
        options.Set(u"Options", limit, AString(std::to_string(kPart)));
    HostDesktop desktop(
        {.m_InstallDirectory = QUOREL_SOURCE_DIR "/config/", .m_SysLibDirectory = {}}, options);
    HostDesign design(u"typed", desktop);
    HostInstance instance(u"typed", design.GetViewKeys());
    ModuleHost host(desktop, &desk);
    Require(static_cast<bool>(host.Start(QUOREL_BIN_DIR "/Netlist.so")), "no module");
    {
        const HostedEditor editor = host.CreateNetlistEditor(&design);
        Require(static_cast<bool>(editor), "no editor");
        editor.m_Editor->OpenView(&instance);
        Measure(desk, design, *editor.m_Inspector);
    }
    host.Stop();
}
