/// quorel syntax check: what the reader makes of a syntax configuration.
#include <cstdio>

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
        std::fprintf(stderr, "%s: can't be read\n", report.file.c_str());
    for (const DroppedExpression& one : report.dropped)
        std::fprintf(stderr, "%s: [%s] %s: %s: %s\n", report.file.c_str(), one.section.c_str(),
                     one.key.c_str(), one.reason.c_str(), one.expression.c_str());
}

void WriteText(const SyntaxConfig& config) {
    Output& output = Output::Get();
    output.Write(config.m_Path + ": " + std::to_string(config.m_Dscrs.size()) + " descriptions\n");
    for (std::size_t i = 0; i < config.m_Dscrs.size(); ++i) {
        const CSyntaxDscr& dscr = *config.m_Dscrs[i];
        const DescriptionReport& report = config.m_Reports[i];
        output.Write(std::to_string(i) + " " + report.section + ": " +
                     std::to_string(dscr.Ranges().size()) + " ranges, " +
                     std::to_string(dscr.Tokens().size()) + " tokens, " +
                     (report.file.empty() ? "no file" : report.file) + "\n");
        output.Flush();
        WriteFaults(report);
    }
}

ExitCode Check(const CheckOptions& options) {
    const SyntaxConfig config = LoadSyntaxConfig(options.m_Config);
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
                "The configuration. Default: the one installed");
    command.add_flag("--json", options->m_Json, "The report as JSON");
    OnRun(command, choice, options, &Check);
}
