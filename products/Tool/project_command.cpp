/// quorel project: what a project file holds, and what of it can't be read.
#include "ansi_text.h"
#include "command.h"
#include "input_file.h"
#include "json_writer.h"
#include "output.h"
#include "project_file.h"

namespace {

struct ProjectOptions {
    std::string m_File;
    bool m_Json = false;
};

// --- JSON ---

class ProjectJson : public JsonWriter {
public:
    ProjectJson() : JsonWriter(Target::kStandardOutput) {}

    void AppendDesign(const ProjectDesign& design) {
        *this << "{\"name\":";
        AppendString(design.m_Name);
        AppendLines(design.m_Netlist);
        *this << ",\"instances\":";
        AppendInnerList(design.m_Instances, [this](const ProjectInstance& instance) {
            *this << "{\"name\":";
            AppendString(instance.m_Name);
            AppendWindows(instance.m_Placement);
        });
        *this << ",\"scripts\":";
        AppendInnerList(design.m_Scripts, [this](const ProjectScript& script) {
            *this << "{\"name\":";
            AppendString(script.m_Name);
            *this << ",\"language\":";
            AppendString(script.m_Language);
            AppendLines(script.m_Text);
            *this << ",\"use\":" << (script.m_IsUsed ? "true" : "false");
            AppendWindows(script.m_Placement);
        });
        *this << "}";
    }
    void AppendProblem(const ProjectProblem& problem) {
        *this << "{\"line\":";
        AppendInteger(problem.m_Line);
        *this << ",\"message\":";
        AppendString(problem.m_Message);
        *this << "}";
    }

private:
    void AppendLines(const ProjectText& text) {
        *this << ",\"lines\":";
        AppendInteger(static_cast<std::int64_t>(text.CountLines()));
    }
    void AppendWindows(const ProjectPlacement& placement) {
        *this << ",\"windows\":[";
        bool isFirst = true;
        for (const ProjectPlacement::Window& w : placement.GetWindows()) {
            *this << (std::exchange(isFirst, false) ? "[" : ",[");
            for (std::size_t i = 0; i < w.size(); ++i)
                *this << (i == 0 ? "" : ",") << std::to_string(w[i]);
            *this << "]";
        }
        *this << "]";
    }
    template <class List, class Append>
    void AppendInnerList(const List& list, Append append) {
        *this << "[";
        for (const auto& element : list) {
            *this << (&element == &list.front() ? "" : ",");
            append(*element);
            *this << "}";
        }
        *this << "]";
    }
};

void WriteJson(const Project& project, const std::vector<ProjectProblem>& problems) {
    ProjectJson json;
    json << "{\"name\":";
    json.AppendString(project.m_Name);
    json << ",\"designs\":[";
    for (std::size_t i = 0; i < project.m_Designs.size(); ++i) {
        json.NextElement(i == 0);
        json.AppendDesign(*project.m_Designs[i]);
    }
    json.EndList();
    json << ",\"problems\":[";
    for (std::size_t i = 0; i < problems.size(); ++i) {
        json.NextElement(i == 0);
        json.AppendProblem(problems[i]);
    }
    json.EndList();
    json << "}";
    json.End();
}

// --- Text ---

/// Names can't work a terminal, as in Complain.
void WriteLine(const std::string& line) {
    std::string shown;
    AnsiText(AnsiText::Style::plain, line).AppendLine(line, {}, shown);
    Output::Get().Write(shown + "\n");
}

void WriteText(const Project& project) {
    const auto name = [](const auto& named) { return named.m_Name.ToCString(AString::kUtf8); };
    const auto lines = [](const ProjectText& text) { return Count(text.CountLines(), "line"); };
    WriteLine(name(project) + ": " + Count(project.m_Designs.size(), "design"));
    for (const auto& design : project.m_Designs) {
        WriteLine("  " + name(*design) + ": " + lines(design->m_Netlist));
        for (const auto& instance : design->m_Instances)
            WriteLine("    instance " + name(*instance) + ": " +
                      Count(instance->m_Placement.GetWindows().size(), "window"));
        for (const auto& script : design->m_Scripts)
            WriteLine("    script " + name(*script) + ": " +
                      script->m_Language.ToCString(AString::kUtf8) + ", " + lines(script->m_Text));
    }
}

ExitCode List(const ProjectOptions& options) {
    Project project;
    std::vector<ProjectProblem> problems;
    if (sys::Status status = ReadProject(ReadInput(options.m_File), project, problems); !status)
        throw ToolError(ExitCode::no, "'" + options.m_File + "': " + status.reason);
    if (options.m_Json) {
        WriteJson(project, problems);
    } else {
        WriteText(project);
        for (const ProjectProblem& problem : problems)
            Complain(options.m_File + ":" + std::to_string(problem.m_Line) + ": " +
                     problem.m_Message);
    }
    return problems.empty() ? ExitCode::done : ExitCode::no;
}

} // namespace

void AddProject(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<ProjectOptions>();
    CLI::App& command =
        AddCommand(parent, "project", "Lists the designs, instances and scripts of a project",
                   "quorel project samples/amplifier.qproj");
    AddArgument(command, "FILE", options->m_File, "The project, - for standard input").required();
    command.add_flag("--json", options->m_Json, "The project and its problems as JSON");
    OnRun(command, choice, options, &List);
}
