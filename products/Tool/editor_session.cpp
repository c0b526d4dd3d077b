#include "editor_session.h"

#include <algorithm>

#include "atomic_file.h"
#include "backend.h"
#include "combo_box.h"
#include "data_files.h"
#include "directory.h"
#include "document.h"
#include "editor_options.h"
#include "file_io.h"
#include "input_file.h"
#include "syntax_choice.h"
#include "temporary_file.h"
#include "tool_bars_data.h"

namespace {

constexpr const char* kConfigName = "NetlistEditor.cfg";
constexpr const char* kNoConfig = "none";
constexpr std::string_view kDescriptionKey = "dscrfile";
constexpr std::string_view kBlanks = " \t";

/// The scripts' languages by the name of their editor; a netlist has none.
constexpr struct {
    const char* m_Editor;
    const char16_t* m_Language;
} kEditors[] = {{"netlist", u""}, {"javascript", u"JavaScript"}, {"vbscript", u"VBScript"}};

std::string_view Strip(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(kBlanks), text.size());
    return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

bool IsDescriptionKey(std::string_view key) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::ranges::equal(Strip(key), kDescriptionKey, {}, lower);
}

/// A line of a configuration that names its description file wherever the line stands.
std::string WithFullPath(std::string_view line, const std::string& folder) {
    const std::size_t equals = std::min(line.find('='), line.size());
    if (equals == line.size() || !IsDescriptionKey(line.substr(0, equals)))
        return std::string(line);
    std::string_view value = Strip(line.substr(equals + 1));
    if (value.size() > 1 && value.front() == value.back() &&
        (value.front() == '"' || value.front() == '\''))
        value = value.substr(1, value.size() - 2);
    const bool isFull = value.empty() || value.front() == '/' || value.front() == '\\' ||
                        value.find(':') != std::string_view::npos;
    return isFull ? std::string(line) : "DscrFile=" + folder + std::string(value);
}

std::string WithFullPaths(const std::string& config, const std::string& folder) {
    std::string changed;
    for (std::size_t at = 0; at < config.size();) {
        const std::size_t end = std::min(config.find_first_of("\r\n", at), config.size());
        changed += WithFullPath(std::string_view(config).substr(at, end - at), folder) + '\n';
        at = end + 1;
    }
    return changed;
}

/// The folder of a file, absolute, with a closing slash; of standard input the current one.
std::string FolderOf(const std::string& file) {
    const std::string folder = file.substr(0, file.rfind('/') + 1);
    return folder.starts_with('/') ? folder
                                   : sys::WithClosingSlash(sys::CurrentDirectory() + '/' + folder);
}

std::string CheckOption(const std::string& text) {
    const std::size_t equals = text.find('=');
    return equals == std::string::npos || equals == 0 ? "'" + text + "' is no KEY=VALUE"
                                                      : std::string();
}

AString FromUtf8(std::string_view text) {
    return AString::FromMultiByte(AString::kUtf8, text);
}

} // namespace

bool IsEditor(const std::string& name) {
    return std::ranges::any_of(kEditors, [&](const auto& e) { return name == e.m_Editor; });
}

void AddSessionOptions(CLI::App& command, SessionOptions& options) {
    std::vector<std::string> names;
    for (const auto& editor : kEditors)
        names.emplace_back(editor.m_Editor);
    command.add_option("--editor", options.m_Editor, "netlist, javascript or vbscript")
        ->type_name("NAME")
        ->check(CLI::IsMember(names));
    command
        .add_option("--option", options.m_Options,
                    "An editor option, as stored under \"Options\"; repeatable")
        ->type_name("KEY=VALUE")
        ->check(&CheckOption)
        ->allow_extra_args(false);
    command
        .add_option("--config", options.m_Config,
                    "The syntax configuration; none: no colours. Default: the one installed")
        ->check(&RefuseEmptyPath)
        ->type_name("FILE");
}

ConfigFolder::ConfigFolder(const std::string& given) {
    if (given.empty()) {
        const std::string file = GetDefaultConfig();
        m_Path = file.substr(0, file.rfind('/') + 1);
        return;
    }
    const std::string config =
        given == kNoConfig ? std::string() : WithFullPaths(ReadInput(given), FolderOf(given));
    Require(sys::CreateTemporaryFile(sys::TemporaryDirectory(), "quorel", m_Name));
    m_Path = m_Name + ".d/";
    Require(sys::MakeDirectory(m_Name + ".d"));
    Require(sys::WriteFileAtomically(m_Path + kConfigName, config));
}

ConfigFolder::~ConfigFolder() {
    if (m_Name.empty())
        return;
    static_cast<void>(sys::DeleteFile(m_Path + kConfigName));
    static_cast<void>(sys::RemoveDirectory(m_Name + ".d"));
    static_cast<void>(sys::DeleteFile(m_Name));
}

EditorSession::EditorSession(const SessionOptions& options, IBackendDesk& desk)
    : m_Config(options.m_Config),
      m_Desktop({.m_InstallDirectory = m_Config.GetPath(), .m_SysLibDirectory = {}}, m_Store),
      m_Host(m_Desktop, &desk) {
    TakeOptions(options.m_Options);
    Require(m_Host.Start());
    OpenEditor(options.m_Editor);
}

void EditorSession::Reopen(const SessionOptions& options, IBackendDesk& desk) {
    Close();
    SetBackend(&desk);
    m_Desktop.ReleaseCommands();
    TakeOptions(options.m_Options);
    LoadOptions(m_Desktop);
    GetFindBox().ResetContent();
    OpenEditor(options.m_Editor);
    GetFindBox().SetWindowText({});
}

void EditorSession::TakeOptions(const std::vector<std::string>& options) {
    m_Store.Clear();
    for (const std::string& option : options) {
        const std::size_t equals = option.find('=');
        m_Store.Set(u"Options", FromUtf8(option.substr(0, equals)),
                    FromUtf8(option.substr(equals + 1)));
    }
}

void EditorSession::OpenEditor(const std::string& kind) {
    m_Editor = MakeEditor(kind);
    if (!m_Editor)
        throw ToolError(ExitCode::file, m_Host.GetPath() + " made no editor");
    GetEditor().OpenView(&m_Instance);
}

EditorSession::~EditorSession() {
    m_Editor = {};
    m_Host.Stop();
}

HostedEditor EditorSession::MakeEditor(const std::string& kind) {
    const auto* const editor =
        std::ranges::find_if(kEditors, [&](const auto& e) { return kind == e.m_Editor; });
    const AString language = editor->m_Language;
    return language.empty() ? m_Host.CreateNetlistEditor(&m_Design)
                            : m_Host.CreateScriptEditor(&m_ScriptOwner, {}, language, u"quorel");
}

Undo_Manager& EditorSession::GetCommands() {
    Undo_Manager* const own = GetInspector().GetUndoManager();
    return own ? *own : m_Design.GetCommands();
}

IFactoryTools& EditorSession::GetTools() {
    return dynamic_cast<IFactoryTools&>(*m_Host.GetFactory());
}

CComboBox& EditorSession::GetFindBox() {
    if (const CToolBarsData* bars = GetTools().GetToolBars())
        for (const auto& control : bars->GetControls())
            if (auto* box = dynamic_cast<CComboBox*>(control->mWindow))
                return *box;
    throw ToolError(ExitCode::file, m_Host.GetPath() + " has no find box");
}

void EditorSession::SetTitle(const AString& title) {
    auto* const object =
        static_cast<CObject*>(GetEditor().GetInterface(IEditor::kDocumentInterface));
    if (auto* document = dynamic_cast<CDocument*>(object))
        document->SetTitle(title);
}
