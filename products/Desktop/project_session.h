/// ProjectSession: the project that is open, and the documents of those of its texts that are.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "file_stamp.h"
#include "open_documents.h"
#include "project_file.h"

class IScriptEditor;

/// One project at a time. A text becomes a document when it is first looked at; from then on to the
/// project's end the document has it, with or without a window.
class ProjectSession {
public:
    /// @param home of the documents; both outlive the session
    ProjectSession(OpenDocuments& documents, ITextHome& home)
        : m_Documents(documents), m_Home(home) {}

    /// Reads a project; none is open. @param problems what of it could not be read
    sys::Status Open(const std::string& path, std::vector<ProjectProblem>& problems);
    bool IsOpen() const { return !m_Path.empty(); }
    const std::string& GetPath() const { return m_Path; }
    const Project& GetProject() const { return m_Project; }
    /// Closes all windows and forgets the project, saved or not.
    void Close();

    /// Opens the windows that the project tells of where they stood.
    void RestoreViews();
    /// Opens the window of an instance or script, or brings it to the front.
    /// @return null when the module makes no editor
    OpenDocument* Show(ProjectDesign& design, ProjectInstance& instance);
    OpenDocument* Show(ProjectDesign& design, ProjectScript& script);
    /// Told, before anything is lost, of a text that holds characters that its editor can't.
    std::function<void(const AString& name)> m_OnForeignCharacters;
    /// The documents of the project.
    std::vector<OpenDocument*> GetDocuments() const;

    /// Whether a text has been changed; windows that were moved are no change.
    bool IsModified() const;
    /// Whether another program has written the file since it was read or saved.
    bool IsChangedOnDisk() const { return IsOpen() && FileStamp::Of(m_Path) != m_Stamp; }
    /// Saves texts and places of windows into a file, which is the project's from then on.
    sys::Status Save(const std::string& path);
    /// Saves the places of windows alone, if nothing else of the file would be another: it is as a
    /// save writes it, and no text has been changed.
    void SavePlaces();

private:
    /// A window's place and the instance that it belongs to.
    struct View {
        ProjectPlacement* m_Placement;
        HostInstance* m_Instance;
    };
    struct Text {
        OpenDocument* m_Document = nullptr;
        ProjectScript* m_Script = nullptr; ///< null for a netlist

        IScriptEditor* GetEditor() const { return m_Script ? m_Document->GetScript() : nullptr; }
        /// Whether the user has chosen another language, or whether to use the script.
        bool HasOtherChoices() const;
        std::vector<View> m_Views;
    };
    Text* NetlistOf(ProjectDesign& design);
    Text* ScriptOf(ProjectDesign& design, ProjectScript& script);
    Text* TextOf(ProjectText& text, EditorSort sort, const AString& name);
    OpenDocument* Show(Text* text, const ProjectPlacement& placement);
    void Place(Text* text);
    void TakePlaces();

    OpenDocuments& m_Documents;
    ITextHome& m_Home;
    std::string m_Path;
    Project m_Project;
    std::optional<FileStamp> m_Stamp;
    std::map<ProjectText*, Text> m_Texts; ///< those that are documents
};
