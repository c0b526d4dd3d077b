/// ProjectCommands: opening, saving and closing of projects as the user does it, with all that is
/// asked.
#pragma once

#include "file_commands.h"
#include "project_session.h"

class ProjectTree;

class ProjectCommands : public ITextHome {
public:
    /// Whether a file is a project, by its name.
    static bool IsProject(const std::string& path);

    /// All outlive the commands.
    ProjectCommands(OpenDocuments& documents, RecoveryTimer& recovery, ProjectTree& tree,
                    FileCommands::Surroundings surroundings);
    virtual ~ProjectCommands();

    /// Opens a project in place of the one that is open, with the windows that it had.
    /// @return false: it can't be opened, of which the user has been told, or the user wants to go
    ///         on with the other
    bool Open(const std::string& path);
    bool Save() override;
    bool SaveAs() override;
    /// Asks whether unsaved texts are to be saved. @return false: the user wants to go on
    bool MayClose();
    /// The same, and closes it.
    bool Close();
    /// Without asking.
    void CloseNow();

    ProjectSession& GetSession() { return m_Session; }

private:
    void TellProblems(const std::vector<ProjectProblem>& problems);
    bool SaveTo(const std::string& path);
    QString GetName() const;

    OpenDocuments& m_Documents;
    RecoveryTimer& m_Recovery;
    ProjectTree& m_Tree;
    FileCommands::Surroundings m_Window;
    ProjectSession m_Session;
};
