/// quorel print: a file as the editor prints it, into a PDF or, to look at what is drawn, as JSON.
#include "atomic_file.h"
#include "command.h"
#include "editor_session.h"
#include "file_io.h"
#include "input_file.h"
#include "messages.h"
#include "number_pair.h"
#include "output.h"
#include "print_desks.h"
#include "temporary_file.h"

namespace {

constexpr const char* kStandardOutput = "-";
constexpr int kMostDeviceUnits = 1'000'000;

struct PrintOptions {
    std::string m_File;
    SessionOptions m_Session;
    std::string m_Output;
    bool m_Json = false;
    std::string m_Device;      ///< empty: the default
    std::string m_Paper;       ///< likewise
    std::string m_Pages;       ///< empty: all
    std::vector<int> m_Select; ///< row and column, twice; empty: everything
    bool m_Block = false;
};

std::string CheckDevice(const std::string& text) {
    const auto size = ParsePair(text, 'x');
    return size && std::max(size->m_First, size->m_Second) <= kMostDeviceUnits
               ? std::string()
               : "'" + text + "' is no WIDTHxHEIGHT from 1x1 to 1000000x1000000";
}

std::string CheckPages(const std::string& text) {
    const auto pages = ParsePair(text, '-');
    return pages && pages->m_First <= pages->m_Second ? std::string()
                                                      : "'" + text + "' is no A-B with 1 <= A <= B";
}

void CheckTogether(const PrintOptions& options) {
    if (options.m_Json == !options.m_Output.empty())
        throw UsageError("one of --output and --json is needed");
    if (options.m_Json && !options.m_Paper.empty())
        throw UsageError("--paper goes with --output");
    if (!options.m_Json && !options.m_Device.empty())
        throw UsageError("--device goes with --json");
    if (options.m_Block && options.m_Select.empty())
        throw UsageError("--block needs --select");
    if (options.m_File == kStandardInput && options.m_Session.m_Config == kStandardInput)
        throw UsageError("FILE and --config can't both be standard input");
}

NumberPair PagesOf(const PrintOptions& options) {
    return ParsePair(options.m_Pages, '-').value_or(NumberPair{1, kLastPage});
}

/// Where the PDF goes: the file named, or one that ends up on standard output.
class PdfTarget {
public:
    explicit PdfTarget(const std::string& output) : m_IsCopied(output == kStandardOutput) {
        if (m_IsCopied)
            Require(sys::CreateTemporaryFile(sys::TemporaryDirectory(), "quorel", m_Path));
        else
            m_Path = output;
        sys::AtomicFile probe; // tells the reason, which a print job can't
        Require(probe.Open(m_Path));
    }
    PdfTarget(const PdfTarget&) = delete;
    PdfTarget& operator=(const PdfTarget&) = delete;
    ~PdfTarget() {
        if (m_IsCopied)
            static_cast<void>(sys::DeleteFile(m_Path));
    }

    const std::string& GetPath() const { return m_Path; }
    void HandOn() const {
        std::string bytes;
        if (!m_IsCopied)
            return;
        Require(sys::ReadWholeFile(m_Path, kMaxInput, bytes));
        Output::Get().Write(bytes);
    }

private:
    bool m_IsCopied;
    std::string m_Path;
};

/// The file's name without its folders.
AString TitleOf(const std::string& file) {
    return AString::FromMultiByte(AString::kUtf8, file.substr(file.rfind('/') + 1));
}

/// @param where what the pages go to, for a message
void Print(const PrintOptions& options, PrintDesk& desk, const std::string& where) {
    const std::string bytes = ReadInput(options.m_File);
    EditorSession session(options.m_Session, desk);
    session.GetDriver().LoadArchive(bytes);
    session.SetTitle(TitleOf(options.m_File));
    if (const std::vector<int>& at = options.m_Select; !at.empty())
        session.GetDriver().Select({at[0], at[1]}, {at[2], at[3]}, options.m_Block);
    desk.m_GetState = [&session] { return session.GetInspector().GetPrint().value(); };
    session.GetDriver().RunCommand(kCommandPrint);
    if (desk.m_Outcome.m_Reason)
        std::rethrow_exception(desk.m_Outcome.m_Reason);
    if (desk.m_Outcome.m_Failed)
        throw ToolError(ExitCode::file, "cannot print to " + where);
}

ExitCode PrintToPdf(const PrintOptions& options) {
    const PdfTarget target(options.m_Output);
    const auto [from, to] = PagesOf(options);
    PdfOutput output;
    output.m_Path = AString::FromMultiByte(AString::kUtf8, target.GetPath());
    output.m_Paper = options.m_Paper == "Letter" ? PdfOutput::Paper::letter : PdfOutput::Paper::a4;
    output.m_FromPage = from;
    output.m_ToPage = to;
    PdfPrintDesk desk(output);
    Print(options, desk, target.GetPath());
    const auto pages = static_cast<std::size_t>(desk.m_Outcome.m_TablePages);
    if (!desk.m_Outcome.m_Completed)
        throw ToolError(ExitCode::no, "there is no page " + std::to_string(from) + " among " +
                                          Count(pages, "page"));
    target.HandOn();
    return ExitCode::done;
}

ExitCode RunPrint(const PrintOptions& options) {
    CheckTogether(options);
    if (!options.m_Json)
        return PrintToPdf(options);
    const auto [from, to] = PagesOf(options);
    const PrinterSettings usual;
    const auto [width, height] =
        ParsePair(options.m_Device, 'x')
            .value_or(NumberPair{usual.m_PageSize.cx, usual.m_PageSize.cy});
    JsonPrintDesk desk({width, height}, from, to);
    Print(options, desk, "standard output");
    JsonPrintDesk::Finish();
    return ExitCode::done;
}

} // namespace

void AddPrint(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<PrintOptions>();
    CLI::App& command = AddCommand(parent, "print", "Prints a file as the editor does",
                                   "quorel print samples/amplifier.cir --output amplifier.pdf "
                                   "--option PrintLineNumbers=1");
    AddArgument(command, "FILE", options->m_File, "The file, - for standard input").required();
    command.add_option("--output", options->m_Output, "The PDF file, - for standard output")
        ->type_name("OUT.pdf");
    command.add_flag("--json", options->m_Json,
                     "What a device that records is told to draw, as JSON");
    command.add_option("--device", options->m_Device, "Of that device. Default: 800x1000")
        ->type_name("WIDTHxHEIGHT")
        ->check(&CheckDevice);
    command.add_option("--paper", options->m_Paper, "Of the PDF: A4 or Letter. Default: A4")
        ->type_name("NAME")
        ->check(CLI::IsMember({"A4", "Letter"}));
    command.add_option("--pages", options->m_Pages, "Only these pages, from 1 on")
        ->type_name("A-B")
        ->check(&CheckPages);
    command
        .add_option("--select", options->m_Select,
                    "Only what a selection from one row and column to another holds, from 0 on")
        ->type_name("ROW COLUMN ROW COLUMN")
        ->expected(4)
        ->allow_extra_args(false);
    command.add_flag("--block", options->m_Block, "The selection is a rectangle");
    AddSessionOptions(command, options->m_Session);
    OnRun(command, choice, options, &RunPrint);
}
