/// quorel tour: the module at work in a host without windows, each step with a line.
#include <algorithm>
#include <limits>

#include "ansi_text.h"
#include "command.h"
#include "data_files.h"
#include "file_io.h"
#include "headless_desk.h"
#include "host_design.h"
#include "host_desktop.h"
#include "input_file.h"
#include "module_entries.h"
#include "module_host.h"
#include "output.h"
#include "progress.h"
#include "record_type.h"
#include "temporary_file.h"

namespace {

constexpr const char* kSample = "samples/amplifier.cir";
constexpr int kShownLines = 30;

struct TourOptions {
    std::string m_File;
    ColorOption m_Color;
};

std::string ToUtf8(const AString& text) {
    return text.ToCString(AString::kUtf8);
}

AString FromUtf8(std::string_view text) {
    return AString::FromMultiByte(AString::kUtf8, text);
}

const char* NameOf(LineEnds ends) {
    static constexpr const char* kNames[] = {"no line ends", "CR LF", "LF", "CR",
                                             "mixed line ends"};
    return kNames[static_cast<std::size_t>(ends)];
}

const char* NameOf(const JournalEntry& record) {
    static constexpr const char* kNames[] = {
        "character deleted", "character inserted", "character overwritten",
        "line deleted",      "text inserted",      "range deleted",
        "tab deleted",       "tab inserted",       "character overwritten by a tab"};
    if (record.m_Char == kLineBreak && record.m_Type <= kInserted)
        return record.m_Type == kInserted ? "line divided" : "lines joined";
    return kNames[static_cast<std::size_t>(record.m_Type)];
}

/// Whether a record's string is text of the document.
bool HoldsText(const JournalEntry& record) {
    return record.m_Type >= kLineDeleted && record.m_Type <= kRangeDeleted;
}

/// Without a configuration the module tells that it found none.
HostDesktop::Settings FindSettings() {
    const std::string config = FindConfigDirectory();
    return {.m_InstallDirectory = config, .m_SysLibDirectory = config};
}

std::string FindSample() {
    const std::string data = FindDataDirectory();
    if (data.empty())
        throw ToolError(ExitCode::file,
                        std::string("cannot find ") + kSample + " near the program; name a FILE");
    return data + kSample;
}

/// The steps, in the order in which Run takes them.
class Tour {
public:
    explicit Tour(const TourOptions& options)
        : m_Options(options), m_Desktop(FindSettings(), m_Store), m_Host(m_Desktop, &m_Desk) {}

    ExitCode Run();

private:
    void Tell(const char* step, const std::string& text);
    void ShowLines(int first, int count);

    void StartModule();
    void CreateEditor();
    void Load(const std::string& path);
    void Edit();
    void TellJournal();
    std::string Save();
    void TellReplay(const char* step, int (IEditorDriver::*replay)(int), const std::string& wanted,
                    const char* state);
    void UndoAndRedo();
    void Export();
    void Script();
    void End();

    const TourOptions& m_Options;
    AnsiText m_Painter{AnsiText::Style::plain, {}};
    HeadlessDesk m_Desk;
    OptionStore m_Store;
    HostDesktop m_Desktop;
    HostDesign m_Design{u"Tour", m_Desktop};
    HostContext m_ScriptOwner{u"Tour", &m_Desktop};
    ModuleHost m_Host;
    HostedEditor m_Editor; // gone before the module
    std::string m_Loaded;  // what a save writes right behind the load
    ExitCode m_Result = ExitCode::done;
};

ExitCode Tour::Run() {
    StartModule();
    CreateEditor();
    Load(m_Options.m_File.empty() ? FindSample() : m_Options.m_File);
    Edit();
    TellJournal();
    UndoAndRedo();
    Export();
    Script();
    End();
    return m_Result;
}

void Tour::Tell(const char* step, const std::string& text) {
    std::string name(step);
    name.resize(std::max<std::size_t>(name.size() + 1, 10), ' ');
    Output::Get().Write(name + text + "\n");
    Output::Get().Flush();
}

void Tour::ShowLines(int first, int count) {
    IEditorInspector& inspector = *m_Editor.m_Inspector;
    const int behind = std::min(first + count, inspector.GetLineCount());
    const std::size_t digits = std::to_string(behind).size();
    std::string shown;
    std::vector<ColorSpan> colors;
    for (int row = first; row < behind; ++row) {
        inspector.GetLineColors(row, colors);
        m_Painter.AppendNumber(row, digits, shown);
        m_Painter.AppendLine(inspector.GetLineText(row), colors, shown);
        shown += '\n';
    }
    Output::Get().Write(shown);
}

void Tour::StartModule() {
    Require(m_Host.Start());
    AString environment, editors;
    m_Host.GetFactory()->GetFactoryName(environment);
    m_Host.GetFactory()->GetEditorsName(editors);
    Tell("module", m_Host.GetPath() + ", by its entry " + kGetFactoryInterfaceEntry);
    Tell("factory", ToUtf8(environment) + ", makes " + ToUtf8(editors) + " editors");
}

void Tour::CreateEditor() {
    m_Editor = m_Host.CreateNetlistEditor(&m_Design);
    for (const HostPrompt::Shown& shown : m_Desktop.GetPrompt()->GetShown())
        Tell("prompt", ToUtf8(shown.m_Text));
    if (!m_Editor)
        throw ToolError(ExitCode::file, m_Host.GetPath() + " made no editor");
    const int syntax = m_Editor.m_Inspector->GetSyntaxIndex();
    Tell("editor", syntax < 0
                       ? "of a netlist, without colours"
                       : "of a netlist, coloured by syntax description " + std::to_string(syntax));
}

void Tour::Load(const std::string& path) {
    const std::string bytes = ReadInput(path);
    m_Painter = AnsiText(m_Options.m_Color.GetStyle(), bytes);
    m_Editor.m_Driver->LoadArchive(bytes);
    IEditorInspector& inspector = *m_Editor.m_Inspector;
    m_Loaded = Save();
    const auto lines = static_cast<std::size_t>(inspector.GetLineCount());
    Tell("load", path + ": " + Count(bytes.size(), "byte") + ", " + Count(lines, "line") + ", " +
                     NameOf(inspector.GetLineEnds()));
    std::size_t spans = 0;
    std::vector<ColorSpan> colors;
    for (int row = 0; row < inspector.GetLineCount(); ++row) {
        Progress::Set(static_cast<std::uint64_t>(row), lines);
        inspector.GetLineColors(row, colors);
        spans += colors.size();
    }
    Progress::Set(0, 0);
    Tell("show", Count(spans, "coloured span") + "; the first lines:");
    ShowLines(0, kShownLines);
}

/// A resistor in a new line, its value changed, and a comment that gets a line of its own.
void Tour::Edit() {
    IEditorDriver& driver = *m_Editor.m_Driver;
    const int row = std::min(2, m_Editor.m_Inspector->GetLineCount());
    bool good = driver.InsertLine(row, true, true, "Rtest\tout 0 8k");
    const int end = static_cast<int>(m_Editor.m_Inspector->GetLineText(row).size());
    good = good && driver.InsertString(row, end, "; a load to test", true, true);
    good = good && driver.DelChar(row, end - 1, true);
    good = good && driver.SplitLine(row, end - 1, true, 0, true);
    driver.NotifyEdited(row);
    if (!good)
        m_Result = ExitCode::no;
    Tell("edit",
         good ? "a line inserted, changed and divided by the document's primitives:" : "refused");
    ShowLines(row, 2);
}

void Tour::TellJournal() {
    std::vector<JournalEntry> records;
    m_Editor.m_Inspector->GetUndoRecords(records);
    Tell("journal", Count(records.size(), "record") + ":");
    // What it quotes stands in a line of ours: no colours, no paper.
    const AnsiText painter(AnsiText::Style::plain, m_Loaded);
    for (const JournalEntry& record : records) {
        std::string line = "  line " + std::to_string(record.m_Row + 1) + ", column " +
                           std::to_string(record.m_Column + 1) + ": " + NameOf(record);
        if (HoldsText(record)) {
            line += ": \"";
            painter.AppendLine(record.m_String, {}, line);
            line += '"';
        }
        Output::Get().Write(line + "\n");
    }
}

std::string Tour::Save() {
    std::string bytes;
    m_Editor.m_Inspector->GetArchive(bytes);
    return bytes;
}

void Tour::TellReplay(const char* step, int (IEditorDriver::*replay)(int),
                      const std::string& wanted, const char* state) {
    constexpr int kAll = std::numeric_limits<int>::max();
    const auto actions = static_cast<std::size_t>((m_Editor.m_Driver->*replay)(kAll));
    const bool good = actions > 0 && Save() == wanted;
    if (!good)
        m_Result = ExitCode::no;
    Tell(step, Count(actions, "action") + ", the text is " + (good ? "" : "not ") + state);
}

void Tour::UndoAndRedo() {
    const std::string edited = Save();
    TellReplay("undo", &IEditorDriver::UndoEdit, m_Loaded, "as it was loaded");
    TellReplay("redo", &IEditorDriver::RedoEdit, edited, "as it was edited");
}

void Tour::Export() {
    std::string path, written;
    Require(sys::CreateTemporaryFile(sys::TemporaryDirectory(), "quorel", path));
    m_Desk.m_FileAnswers.push_back(FromUtf8(path));
    const bool ran = m_Editor.m_Driver->RunCommand(kExportTextCommand);
    const sys::Status status = sys::ReadWholeFile(path, kMaxInput, written);
    static_cast<void>(sys::DeleteFile(path));
    Require(status);
    const bool same = ran && written == Save();
    if (!same)
        m_Result = ExitCode::no;
    Tell("export", "command " + std::to_string(kExportTextCommand) + " to " + path + ": " +
                       Count(written.size(), "byte") +
                       (same ? ", the same as a save writes" : ", not what a save writes"));
}

void Tour::Script() {
    m_Editor = m_Host.CreateScriptEditor(
        &m_ScriptOwner,
        u"// node voltages of the last run\nfor (var n in nodes)\n    print(n, 1e3 * v(n));",
        u"JavaScript", u"Report");
    if (!m_Editor)
        throw ToolError(ExitCode::file, m_Host.GetPath() + " made no script editor");
    AString language;
    m_Editor.m_Inspector->GetLanguage(language);
    Tell("script", "an editor of " + ToUtf8(language) + ":");
    ShowLines(0, kShownLines);
    m_Editor = {};
}

void Tour::End() {
    m_Host.Stop();
    Tell("end", "editors destroyed, factory uninitialised, module unloaded");
}

ExitCode RunTour(const TourOptions& options) {
    return Tour(options).Run();
}

} // namespace

void AddTour(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<TourOptions>();
    CLI::App& command = AddCommand(
        parent, "tour", "Loads the module as any host would, opens a file, edits it and exports it",
        "quorel tour samples/filter.cir");
    AddArgument(command, "FILE", options->m_File,
                "A netlist, - for standard input. Default: an installed sample")
        .check(&RefuseEmptyPath);
    options->m_Color.AddTo(command);
    OnRun(command, choice, options, &RunTour);
}
