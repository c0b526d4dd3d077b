/// quorel syntax match: one expression of the colouring engine on one text.
#include "batch.h"
#include "command.h"
#include "json_text.h"
#include "output.h"
#include "reg_exp.h"

namespace {

constexpr const char* kPattern = "PATTERN";
constexpr const char* kText = "TEXT";

struct MatchOptions {
    const CLI::App* m_Command = nullptr; ///< knows which of the texts were given; each may be empty
    std::string m_Pattern;
    std::string m_Text;
    bool m_IgnoreCase = false;
    bool m_Json = false;
    bool m_Batch = false;
};

Json GroupsAsJson(const CRegExp& expression) {
    Json groups = Json::array();
    for (int group = 1; group <= CRegExp::kMaxGroup; ++group)
        groups.push_back(expression.SubStart(group) < 0
                             ? Json()
                             : Json{expression.SubStart(group), expression.SubLength(group)});
    return groups;
}

Json MatchAsJson(CRegExp& expression, const std::string& text) {
    if (!expression.IsValid())
        return {{"valid", false},
                {"code", expression.LastErrorCode()},
                {"error", expression.LastError()}};
    if (!expression.Match(std::string_view(text)))
        return {{"valid", true}, {"match", false}};
    return {{"valid", true},
            {"match", true},
            {"start", expression.SubStart(0)},
            {"length", expression.SubLength(0)},
            {"groups", GroupsAsJson(expression)}};
}

Json ServeMatch(const Json& request, bool ignoreCase) {
    const std::string pattern = RequireBytes(request, "pattern");
    const std::string text = RequireBytes(request, "text");
    CRegExp expression(std::string_view(pattern), GetFlag(request, "ignoreCase", ignoreCase));
    return MatchAsJson(expression, text);
}

void WriteText(const Json& answer) {
    if (!answer["valid"])
        throw ToolError(ExitCode::no, answer["error"].get<std::string>());
    if (!answer["match"])
        throw ToolError(ExitCode::no, "no match");
    Output::Get().Write(answer["start"].dump() + " " + answer["length"].dump() + "\n");
}

ExitCode Match(const MatchOptions& options) {
    if (options.m_Batch && options.m_Command->count(kPattern) > 0)
        throw UsageError("--batch takes no PATTERN");
    if (options.m_Batch)
        return RunBatch(
            [&](const Json& request) { return ServeMatch(request, options.m_IgnoreCase); });
    if (options.m_Command->count(kText) == 0)
        throw UsageError("PATTERN and TEXT are required");
    CRegExp expression(std::string_view(options.m_Pattern), options.m_IgnoreCase);
    const Json answer = MatchAsJson(expression, options.m_Text);
    if (options.m_Json)
        Output::Get().Write(DumpJson(answer) + "\n");
    else
        WriteText(answer);
    return answer.value("match", false) ? ExitCode::done : ExitCode::no;
}

} // namespace

void AddSyntaxMatch(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<MatchOptions>();
    CLI::App& command =
        AddCommand(parent, "match",
                   "Tries an expression on a text and prints the start and the length of its match",
                   "quorel syntax match --json '[0-9]+(meg|k)?' 'R1 in out 10k'\n\n"
                   "A -- goes before a PATTERN that begins with a hyphen, and before a ++.\n"
                   "A line of a batch is\n"
                   "  {\"pattern\": \"...\", \"text\": \"...\", \"ignoreCase\": false}");
    AddArgument(command, kPattern, options->m_Pattern, "The expression");
    AddArgument(command, kText, options->m_Text, "What it is tried on");
    command.add_flag("--ignore-case", options->m_IgnoreCase, "Letters mean both their forms");
    command.add_flag("--json", options->m_Json, "The match with its groups, or the error, as JSON");
    command.add_flag("--batch", options->m_Batch,
                     "Serves a JSON object a line from standard input");
    options->m_Command = &command;
    OnRun(command, choice, options, &Match);
}
