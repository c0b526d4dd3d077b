/// quorel edit: an editor driven by a script, in a window that nobody sees.
#include <optional>

#include "batch.h"
#include "command.h"
#include "edit_actions.h"
#include "edit_request.h"
#include "edit_script.h"
#include "edit_stage.h"
#include "edit_state.h"
#include "input_file.h"
#include "number_pair.h"
#include "output.h"

namespace {

struct EditOptions {
    const CLI::App* m_Command = nullptr;
    std::string m_File;
    bool m_AsText = false;
    std::string m_Script; ///< its file; empty: none
    SessionOptions m_Session;
    std::string m_Window; ///< empty: the usual one
    std::string m_Output; ///< empty: none
    bool m_Json = false;
    bool m_Batch = false;
};

std::string CheckWindow(const std::string& text) {
    const auto size = ParsePair(text, 'x');
    return size && std::max(size->m_First, size->m_Second) <= kMostCells
               ? std::string()
               : "'" + text + "' is no COLSxROWS from 1x1 to 1000x1000";
}

void CheckBatch(const EditOptions& options) {
    for (const char* other : {"FILE", "--as-text", "--script", "--output", "--json"})
        if (options.m_Command->count(other) > 0)
            throw UsageError(std::string(other) + " doesn't go with --batch");
}

void CheckTogether(const EditOptions& options) {
    if (options.m_Batch)
        CheckBatch(options);
    if (options.m_AsText && options.m_File.empty())
        throw UsageError("--as-text needs FILE");
    if (options.m_Json && options.m_Output == kStandardInput)
        throw UsageError("--json and --output can't both be standard output");
    int readers = options.m_Batch;
    for (const std::string& file : {options.m_File, options.m_Script, options.m_Session.m_Config})
        readers += file == kStandardInput;
    if (readers > 1)
        throw UsageError("standard input can be read only once");
}

EditRequest RequestOf(const EditOptions& options) {
    EditRequest request;
    request.m_Session = options.m_Session;
    if (const auto cells = ParsePair(options.m_Window, 'x'))
        request.m_Cells = {cells->m_First, cells->m_Second};
    return request;
}

// --- One file ---

void LoadFile(const EditOptions& options, EditStage& stage) {
    if (options.m_File.empty())
        return;
    const std::string bytes = ReadInput(options.m_File);
    if (!options.m_AsText) {
        stage.GetSession().GetDriver().LoadArchive(bytes);
    } else if (AString::CanDecode(AString::kUtf8, bytes)) {
        stage.GetSession().GetEditor().SetText(AString::FromMultiByte(AString::kUtf8, bytes));
    } else {
        throw ToolError(ExitCode::no, options.m_File + " isn't UTF-8");
    }
    stage.Settle();
}

void WriteStateLine(EditStage& stage) {
    JsonWriter json(JsonWriter::Target::kOneLine);
    WriteState(stage, json);
    json.End();
}

/// The text with LF between lines: in UTF-8 if it came so, else the document's bytes.
std::string TextOf(EditStage& stage, bool asText) {
    if (asText) {
        AString text;
        stage.GetSession().GetEditor().GetText(text);
        return text.ToCString(AString::kUtf8);
    }
    std::string bytes;
    stage.GetSession().GetInspector().GetArchive(bytes);
    std::erase(bytes, '\r'); // which stands before an LF only
    return bytes;
}

void WriteResult(const EditOptions& options, EditStage& stage) {
    if (!options.m_Output.empty()) {
        std::string bytes;
        stage.GetSession().GetInspector().GetArchive(bytes);
        WriteOutput(options.m_Output, bytes);
    }
    if (options.m_Json)
        WriteStateLine(stage);
    else if (options.m_Output.empty())
        Output::Get().Write(TextOf(stage, options.m_AsText));
}

ExitCode EditFile(const EditOptions& options) {
    const EditRequest request = RequestOf(options);
    const std::string script = options.m_Script.empty() ? "" : ReadInput(options.m_Script);
    EditDesk desk(request.m_Cells);
    EditorSession session(request.m_Session, desk);
    const std::vector<ScriptStep> steps = ReadScript(SplitLines(script), session.GetKeys());
    EditStage stage(session, desk);
    if (options.m_Json)
        stage.m_OnState = [&stage] { WriteStateLine(stage); };
    LoadFile(options, stage);
    RunScript(steps, stage);
    WriteResult(options, stage);
    return ExitCode::done;
}

// --- Batch ---

/// Ends the editor of a request ahead of its desk.
class EditorEnd {
public:
    explicit EditorEnd(EditorSession& session) : m_Session(session) {}
    EditorEnd(const EditorEnd&) = delete;
    EditorEnd& operator=(const EditorEnd&) = delete;
    ~EditorEnd() { m_Session.Close(); }

private:
    EditorSession& m_Session;
};

std::string ServeEdit(const EditRequest& request, EditorSession& session) {
    const std::vector<std::string_view> lines(request.m_Script.begin(), request.m_Script.end());
    const std::vector<ScriptStep> steps = ReadScript(lines, session.GetKeys());
    EditDesk desk(request.m_Cells);
    const EditorEnd end(session);
    session.Reopen(request.m_Session, desk);
    EditStage stage(session, desk);
    session.GetDriver().LoadArchive(request.m_Archive);
    stage.Settle();
    RunScript(steps, stage);
    JsonWriter json(JsonWriter::Target::kKept);
    WriteState(stage, json);
    return json.GetText();
}

ExitCode EditBatch(const EditOptions& options) {
    const EditRequest defaults = RequestOf(options);
    EditDesk desk(defaults.m_Cells);
    EditorSession session(defaults.m_Session, desk);
    session.Close();
    return RunTextBatch(
        [&](const Json& json) { return ServeEdit(ReadRequest(json, defaults), session); });
}

ExitCode RunEdit(const EditOptions& options) {
    CheckTogether(options);
    return options.m_Batch ? EditBatch(options) : EditFile(options);
}

} // namespace

void AddEdit(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<EditOptions>();
    CLI::App& command = AddCommand(
        parent, "edit", "Drives an editor by a script and gives the text",
        "printf 'replace-all 1k 2k\\n' | quorel edit samples/amplifier.cir --script -\n\n"
        "A script has an action a line: type, key, command, caret, drag, double-click, wheel,\n"
        "scroll, clipboard, undo, redo, undo-edit, redo-edit, find-box, find, replace,\n"
        "replace-all, go-to, language, state. A line of a batch is {\"text\": \"...\",\n"
        "\"script\": [\"action\", ...], \"options\": {...}, \"editor\": \"...\", "
        "\"window\": [80,25]}");
    options->m_Command = &command;
    AddArgument(command, "FILE", options->m_File,
                "The file, - for standard input. Default: an empty document")
        .check(&RefuseEmptyPath);
    command.add_flag("--as-text", options->m_AsText, "FILE is UTF-8");
    command.add_option("--script", options->m_Script, "The script, - for standard input")
        ->type_name("FILE");
    command.add_option("--window", options->m_Window, "Of the client area. Default: 80x25")
        ->type_name("COLSxROWS")
        ->check(&CheckWindow);
    command
        .add_option("--output", options->m_Output,
                    "Where the document is saved, - for standard output")
        ->type_name("FILE");
    command.add_flag("--json", options->m_Json, "The state after the last action, as JSON");
    command.add_flag("--batch", options->m_Batch, "JSON in, a line each, the state of each out");
    AddSessionOptions(command, options->m_Session);
    OnRun(command, choice, options, &RunEdit);
}
