/// quorel syntax check: what the reader makes of a syntax configuration.
#include "ansi_text.h"
#include "command.h"
#include "json_text.h"
#include "output.h"
#include "syntax_choice.h"

namespace {

struct CheckOptions {
    std::string m_Config;
    bool m_Json = false;
};

Json TextsAsJson(const std::vector<AString>& texts) {
    Json list = Json::array();
    for (const AString& text : texts)
        list.push_back(JsonFromText(text));
    return list;
}

Json DroppedAsJson(const DroppedExpression& dropped) {
    return {{"section", JsonFromBytes(dropped.section)},
            {"key", JsonFromBytes(dropped.key)},
            {"expression", JsonFromBytes(dropped.expression)},
            {"reason", JsonFromBytes(dropped.reason)}};
}

Json DescriptionAsJson(const CSyntaxDscr& dscr, const DescriptionReport& report) {
    Json dropped = Json::array();
    for (const DroppedExpression& one : report.dropped)
        dropped.push_back(DroppedAsJson(one));
    return {{"section", JsonFromBytes(report.section)}, {"file", report.file},
            {"extensions", TextsAsJson(dscr.FileExts)}, {"languages", TextsAsJson(dscr.Languages)},
            {"ranges", dscr.Ranges().size()},           {"tokens", dscr.Tokens().size()},
            {"unreadable", report.unreadable},          {"dropped", std::move(dropped)}};
}

/// Line by line, as `show` does: a report may hold a million entries.
void WriteJson(const SyntaxConfig& config) {
    Output& output = Output::Get();
    output.Write("{\"descriptions\":[");
    for (std::size_t i = 0; i < config.m_Dscrs.size(); ++i)
        output.Write((i ? ",\n" : "\n") +
                     DumpJson(DescriptionAsJson(*config.m_Dscrs[i], config.m_Reports[i])));
    output.Write("]}\n");
}

void WriteFaults(const DescriptionReport& report) {
    if (report.unreadable)
        Complain(report.file + ": can't be read");
    for (const DroppedExpression& one : report.dropped)
        Complain(report.file + ": [" + one.section + "] " + one.key + ": " + one.reason +
                 (one.expression.empty() ? "" : ": " + one.expression));
}

void WriteLine(const std::string& text) {
    std::string shown;
    AnsiText(AnsiText::Style::plain, text).AppendLine(text, {}, shown);
    Output::Get().Write(shown + "\n");
}

void WriteText(const SyntaxConfig& config) {
    WriteLine(config.m_Path + ": " + Count(config.m_Dscrs.size(), "description"));
    for (std::size_t i = 0; i < config.m_Dscrs.size(); ++i) {
        const CSyntaxDscr& dscr = *config.m_Dscrs[i];
        const DescriptionReport& report = config.m_Reports[i];
        WriteLine(std::to_string(i) + " " + report.section + ": " +
                  Count(dscr.Ranges().size(), "range") + ", " +
                  Count(dscr.Tokens().size(), "token") + ", " +
                  (report.file.empty() ? "no file" : report.file));
        Output::Get().Flush();
        WriteFaults(report);
    }
}

ExitCode Check(const CheckOptions& options) {
    const SyntaxConfig config = ReadSyntaxConfig(options.m_Config);
    bool isFaulty = false;
    for (const DescriptionReport& report : config.m_Reports)
        isFaulty = isFaulty || report.unreadable || !report.dropped.empty();
    options.m_Json ? WriteJson(config) : WriteText(config);
    return isFaulty ? ExitCode::no : ExitCode::done;
}

} // namespace

void AddSyntaxCheck(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<CheckOptions>();
    CLI::App& command =
        AddCommand(parent, "check",
                   "Reads a syntax configuration with its description files and names each entry "
                   "that is dropped",
                   "quorel syntax check --json config/NetlistEditor.cfg");
    AddArgument(command, "CONFIG", options->m_Config,
                "The configuration, - for standard input. Default: the one installed")
        .check(&RefuseEmptyPath);
    command.add_flag("--json", options->m_Json, "The report as JSON");
    OnRun(command, choice, options, &Check);
}
