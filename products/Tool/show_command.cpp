/// quorel show: a file in its colours, as the editor colours it.
#include "ansi_text.h"
#include "archive.h"
#include "command.h"
#include "input_file.h"
#include "json_text.h"
#include "output.h"
#include "progress.h"
#include "sim_edit_doc.h"
#include "syntax_choice.h"

namespace {

struct ShowOptions {
    std::string m_File;
    SyntaxOptions m_Syntax;
    ColorOption m_Color;
    bool m_LineNumbers = false;
    bool m_Json = false;
};

/// Appends a list of numbers, behind a comma unless it is the first.
void AppendNumbers(std::initializer_list<std::int64_t> numbers, std::string& out) {
    if (out.back() != '[')
        out += ',';
    char open = '[';
    for (const std::int64_t number : numbers) {
        out += open;
        out += std::to_string(number);
        open = ',';
    }
    out += ']';
}

/// Written by hand: trees of all these small lists would take most of the time.
void AppendLineAsJson(const CSimEditLine& line, std::string& out) {
    out += "{\"text\":" + DumpJson(JsonFromBytes(line.Text())) + ",\"tabs\":[";
    for (const TabEntry& tab : line.Tabs())
        AppendNumbers({tab.Position, tab.Width}, out);
    out += "],\"rangeIn\":" + std::to_string(line.RangeIn());
    out += ",\"rangeOut\":" + std::to_string(line.RangeOut()) + ",\"colors\":[";
    for (const CColorDscr& color : line.Colors())
        AppendNumbers({color.Start, color.End, color.Color}, out);
    out += "]}";
}

void SetProgress(std::int32_t row, std::int32_t count) {
    Progress::Set(static_cast<std::uint64_t>(row), static_cast<std::uint64_t>(count));
}

void ShowAsJson(CSimEditDoc& document, int syntax) {
    Output& output = Output::Get();
    output.Write("{\"syntax\":" + std::to_string(syntax) + ",\"lines\":[");
    std::string shown;
    for (std::int32_t row = 0; row < document.LineCount(); ++row) {
        SetProgress(row, document.LineCount());
        shown = row ? ",\n" : "\n";
        AppendLineAsJson(document.ColouredLine(row), shown);
        output.Write(shown);
    }
    output.Write("]}\n");
}

/// The rows that a person wants to see: a CR LF at a file's end has an empty line behind it.
std::int32_t CountShownRows(const CSimEditDoc& document, std::string_view bytes) {
    return document.LineCount() - (bytes.empty() || bytes.ends_with("\r\n"));
}

void ShowAsText(CSimEditDoc& document, std::int32_t count, const AnsiText& painter,
                bool lineNumbers) {
    const std::size_t digits = std::to_string(count).size();
    std::string shown;
    std::vector<ColorSpan> colors;
    for (std::int32_t row = 0; row < count; ++row) {
        SetProgress(row, count);
        const CSimEditLine& line = document.ColouredLine(row);
        colors.clear();
        for (const CColorDscr& color : line.Colors())
            colors.push_back({color.Start, color.End, color.Color});
        shown.clear();
        if (lineNumbers)
            painter.AppendNumber(row, digits, shown);
        painter.AppendLine(line.Text(), colors, shown);
        shown += '\n';
        Output::Get().Write(shown);
    }
}

ExitCode Show(const ShowOptions& options) {
    if (options.m_File == kStandardInput && options.m_Syntax.m_Config == kStandardInput)
        throw UsageError("FILE and --config can't both be standard input");
    const SyntaxConfig config = LoadSyntaxConfig(options.m_Syntax.m_Config);
    const int syntax = ChooseSyntax(config, options.m_Syntax.m_Syntax, options.m_File);
    const std::string bytes = ReadInput(options.m_File);
    CSimEditDoc document;
    if (syntax >= 0)
        document.SetSyntaxDscr(config.m_Dscrs[static_cast<std::size_t>(syntax)].get());
    CArchive archive{std::string_view(bytes)};
    document.LoadArchive(archive);
    if (options.m_Json)
        ShowAsJson(document, syntax);
    else
        ShowAsText(document, CountShownRows(document, bytes),
                   AnsiText(options.m_Color.GetStyle(), bytes), options.m_LineNumbers);
    return ExitCode::done;
}

} // namespace

void AddShow(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<ShowOptions>();
    CLI::App& command = AddCommand(parent, "show", "Shows a file in its colours",
                                   "quorel show --line-numbers samples/amplifier.cir");
    AddArgument(command, "FILE", options->m_File, "The file, - for standard input").required();
    AddSyntaxOption(command, options->m_Syntax);
    AddConfigOption(command, options->m_Syntax);
    options->m_Color.AddTo(command);
    command.add_flag("--line-numbers", options->m_LineNumbers, "A number before each line");
    command.add_flag("--json", options->m_Json, "Lines, tabs, ranges and colours as JSON");
    OnRun(command, choice, options, &Show);
}
