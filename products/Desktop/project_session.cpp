#include "project_session.h"

#include <algorithm>

#include "block.h"
#include "file_io.h"
#include "ieditor.h"
#include "qt_strings.h"

namespace {

/// A text, whose lines end with LF, as a document's archive: its last lines may be empty.
std::string ArchiveOf(const AString& text) {
    std::string archive;
    for (const char byte : text.ToCString(AString::kAnsi))
        byte == '\n' ? archive += "\r\n" : archive += byte;
    return archive;
}

/// Whether a window is told as the one in front: shown as it is, or over all.
bool IsInFront(const ProjectPlacement& placement) {
    constexpr long kShown = 1, kMaximised = 3;
    return std::ranges::any_of(placement.GetWindows(), [](const auto& window) {
        return window[0] == kShown || window[0] == kMaximised;
    });
}

} // namespace

sys::Status ProjectSession::Open(const std::string& path, std::vector<ProjectProblem>& problems) {
    m_Stamp = FileStamp::Of(path);
    sys::Status status = LoadProject(path, m_Project, problems);
    if (status)
        m_Path = path;
    return status;
}

void ProjectSession::Close() {
    for (const auto& [text, open] : m_Texts)
        m_Documents.Remove(*open.m_Document);
    m_Texts.clear();
    m_Path.clear();
    m_Project = {};
}

// --- Documents ---

ProjectSession::Text* ProjectSession::TextOf(ProjectText& text, EditorSort sort,
                                             const AString& name) {
    OpenDocument* const document = m_Documents.Create(sort, FromAString(name), &m_Home);
    if (!document)
        return nullptr;
    AString all = text.Get();
    if (!all.CanEncode(AString::kAnsi) && m_OnForeignCharacters)
        m_OnForeignCharacters(name);
    document->GetEditor().m_Driver->LoadArchive(ArchiveOf(all));
    document->TakeAsLoaded();
    Text& open = m_Texts[&text];
    open.m_Document = document;
    return &open;
}

ProjectSession::Text* ProjectSession::NetlistOf(ProjectDesign& design) {
    if (const auto found = m_Texts.find(&design.m_Netlist); found != m_Texts.end())
        return &found->second;
    Text* const open = TextOf(design.m_Netlist, EditorSort::netlist, design.m_Name);
    if (open)
        for (const auto& instance : design.m_Instances)
            open->m_Views.push_back(
                {&instance->m_Placement, &open->m_Document->AddInstance(instance->m_Name)});
    return open;
}

ProjectSession::Text* ProjectSession::ScriptOf(ProjectDesign& design, ProjectScript& script) {
    if (const auto found = m_Texts.find(&script.m_Text); found != m_Texts.end())
        return &found->second;
    const bool isVbScript = script.m_Language.CompareNoCase(u"VBScript") == 0;
    Text* const open = TextOf(
        script.m_Text, isVbScript ? EditorSort::vbScript : EditorSort::javaScript, design.m_Name);
    if (!open)
        return nullptr;
    open->m_Script = &script;
    if (IScriptEditor* editor = open->GetEditor()) {
        editor->SetScriptName(script.m_Name);
        editor->SetLanguage(script.m_Language);
        editor->SetUseScript(script.m_IsUsed);
    }
    open->m_Document->TakeAsLoaded();
    open->m_Views.push_back({&script.m_Placement, &open->m_Document->AddInstance(script.m_Name)});
    return open;
}

OpenDocument* ProjectSession::Show(Text* text, const ProjectPlacement& placement) {
    if (!text)
        return nullptr;
    const auto view = std::ranges::find(text->m_Views, &placement, &View::m_Placement);
    if (view != text->m_Views.end())
        m_Documents.Show(*text->m_Document, *view->m_Instance);
    return text->m_Document;
}

OpenDocument* ProjectSession::Show(ProjectDesign& design, ProjectInstance& instance) {
    return Show(NetlistOf(design), instance.m_Placement);
}

OpenDocument* ProjectSession::Show(ProjectDesign& design, ProjectScript& script) {
    return Show(ScriptOf(design, script), script.m_Placement);
}

void ProjectSession::Place(Text* text) {
    if (!text)
        return;
    for (const View& view : text->m_Views)
        if (!view.m_Placement->GetWindows().empty())
            m_Documents.Place(*text->m_Document, *view.m_Instance, *view.m_Placement);
}

/// Each window comes to the front as it opens: the one that was there comes last once more.
void ProjectSession::RestoreViews() {
    const auto hasWindows = [](const auto& placed) {
        return !placed->m_Placement.GetWindows().empty();
    };
    for (const auto& design : m_Project.m_Designs) {
        if (std::ranges::any_of(design->m_Instances, hasWindows))
            Place(NetlistOf(*design));
        for (const auto& script : design->m_Scripts)
            if (hasWindows(script))
                Place(ScriptOf(*design, *script));
    }
    for (auto& [text, open] : m_Texts)
        for (const View& view : open.m_Views)
            if (IsInFront(*view.m_Placement))
                Show(&open, *view.m_Placement);
}

std::vector<OpenDocument*> ProjectSession::GetDocuments() const {
    std::vector<OpenDocument*> documents;
    for (const auto& [text, open] : m_Texts)
        documents.push_back(open.m_Document);
    return documents;
}

// --- Saving ---

bool ProjectSession::IsModified() const {
    return std::ranges::any_of(m_Texts, [](const auto& row) {
        return row.second.m_Document->IsModified() || row.second.HasOtherChoices();
    });
}

bool ProjectSession::Text::HasOtherChoices() const {
    IScriptEditor* const editor = GetEditor();
    AString language;
    if (editor)
        editor->GetLanguage(language);
    return editor &&
           (language != m_Script->m_Language || editor->GetUseScript() != m_Script->m_IsUsed);
}

/// What the editors write of their windows.
void ProjectSession::TakePlaces() {
    for (auto& [text, open] : m_Texts) {
        for (View& view : open.m_Views) {
            io::CBlock block;
            open.m_Document->GetEditor().m_Editor->WriteViews(&block, view.m_Instance);
            if (block.begin() != block.end())
                *view.m_Placement =
                    ProjectPlacement(io::CBlock_ptr<io::CBlock_func>(*block.begin()));
        }
    }
}

sys::Status ProjectSession::Save(const std::string& path) {
    for (auto& [text, open] : m_Texts) {
        if (IScriptEditor* editor = open.GetEditor()) {
            editor->GetLanguage(open.m_Script->m_Language);
            open.m_Script->m_IsUsed = editor->GetUseScript();
        }
        if (!open.m_Document->IsModified())
            continue;
        AString all;
        open.m_Document->GetEditor().m_Editor->GetText(all);
        text->Set(std::move(all));
    }
    TakePlaces();
    if (sys::Status status = SaveProject(path, m_Project); !status)
        return status;
    m_Path = path;
    m_Stamp = FileStamp::Of(path);
    for (auto& [text, open] : m_Texts) {
        open.m_Document->GetEditor().m_Driver->SetModified(false);
        open.m_Document->RefreshTitle();
    }
    return {};
}

void ProjectSession::SavePlaces() {
    std::string bytes;
    const std::string read = WriteProject(m_Project);
    if (!IsOpen() || IsModified() || !sys::ReadWholeFile(m_Path, kMaxProjectFile, bytes) ||
        bytes != read)
        return;
    TakePlaces();
    if (WriteProject(m_Project) != read)
        static_cast<void>(SaveProject(m_Path, m_Project)); // nothing but places is lost
}
