/// quorel show: a file in its colours, as the editor colours it.
#include "ansi_text.h"
#include "archive.h"
#include "command.h"
#include "input_file.h"
#include "json_writer.h"
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

/// By a writer: trees of all these small lists would take most of the time.
void WriteLine(const CSimEditLine& line, JsonWriter& json) {
    json << "{\"text\":";
    json.AppendBytes(line.Text());
    json << ",\"tabs\":[";
    for (const TabEntry& tab : line.Tabs())
        json.AppendIntegers({tab.Position, tab.Width});
    json << "],\"rangeIn\":";
    json.AppendInteger(line.RangeIn());
    json << ",\"rangeOut\":";
    json.AppendInteger(line.RangeOut());
    json << ",\"colors\":[";
    for (const CColorDscr& color : line.Colors())
        json.AppendIntegers({color.Start, color.End, color.Color});
    json << "]}";
}

void SetProgress(std::int32_t row, std::int32_t count) {
    Progress::Set(static_cast<std::uint64_t>(row), static_cast<std::uint64_t>(count));
}

void ShowAsJson(CSimEditDoc& document, int syntax) {
    JsonWriter json(JsonWriter::Target::kStandardOutput);
    json << "{\"syntax\":" << std::to_string(syntax) << ",\"lines\":[";
    for (std::int32_t row = 0; row < document.LineCount(); ++row) {
        SetProgress(row, document.LineCount());
        json.NextElement(row == 0);
        WriteLine(document.ColouredLine(row), json);
    }
    json.EndList();
    json << "}";
    json.End();
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
