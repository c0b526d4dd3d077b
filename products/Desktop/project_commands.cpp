#include "project_commands.h"

#include <filesystem>

#include <QFileInfo>

#include "project_tree.h"
#include "qt_strings.h"
#include "recovery_timer.h"

namespace {

constexpr std::size_t kMostTold = 100; ///< problems of one project

} // namespace

bool ProjectCommands::IsProject(const std::string& path) {
    return FromPath(path).endsWith(QLatin1String(".qproj"), Qt::CaseInsensitive);
}

ProjectCommands::ProjectCommands(OpenDocuments& documents, RecoveryTimer& recovery,
                                 ProjectTree& tree, FileCommands::Surroundings surroundings)
    : m_Documents(documents), m_Recovery(recovery), m_Tree(tree), m_Window(std::move(surroundings)),
      m_Session(documents, *this) {
    m_Tree.m_OnInstance = [this](ProjectDesign& design, ProjectInstance& instance) {
        m_Session.Show(design, instance);
    };
    m_Tree.m_OnScript = [this](ProjectDesign& design, ProjectScript& script) {
        m_Session.Show(design, script);
    };
    m_Session.m_OnForeignCharacters = [this](const AString& name) {
        m_Window.m_Tell(
            FromAString(name) +
                QStringLiteral(": this text holds characters that Windows-1252 hasn't "
                               "got, shown as \u201C?\u201D. They are lost when you save "
                               "a change of it."),
            true);
    };
}

ProjectCommands::~ProjectCommands() = default;

QString ProjectCommands::GetName() const {
    return QFileInfo(FromPath(m_Session.GetPath())).fileName();
}

bool ProjectCommands::Open(const std::string& path) {
    std::error_code error;
    if (m_Session.IsOpen() && std::filesystem::equivalent(m_Session.GetPath(), path, error))
        return true;
    if (!Close())
        return false;
    std::vector<ProjectProblem> problems;
    if (const sys::Status status = m_Session.Open(path, problems); !status) {
        const QString reason = QString::fromStdString(status.reason);
        m_Window.m_Tell(reason, true);
        m_Window.m_Ask(
            {Question::Kind::error, QStringLiteral("The project can't be opened."), reason, {}});
        return false;
    }
    TellProblems(problems);
    m_Tree.ShowProject(&m_Session.GetProject());
    m_Tree.show();
    m_Session.RestoreViews();
    const auto& designs = m_Session.GetProject().m_Designs;
    if (m_Session.GetDocuments().empty() && !designs.empty() &&
        !designs.front()->m_Instances.empty())
        m_Tree.m_OnInstance(*designs.front(), *designs.front()->m_Instances.front());
    m_Window.m_Used(FromPath(path));
    return true;
}

void ProjectCommands::TellProblems(const std::vector<ProjectProblem>& problems) {
    for (std::size_t i = 0; i < problems.size() && i < kMostTold; ++i)
        m_Window.m_Tell(QStringLiteral("%1:%2: %3")
                            .arg(FromPath(m_Session.GetPath()))
                            .arg(problems[i].m_Line)
                            .arg(QString::fromStdString(problems[i].m_Message)),
                        true);
    if (problems.size() > kMostTold)
        m_Window.m_Tell(QStringLiteral("%1: %2 more lines are not understood; all are kept")
                            .arg(FromPath(m_Session.GetPath()))
                            .arg(problems.size() - kMostTold),
                        true);
}

bool ProjectCommands::Save() {
    if (!m_Session.IsOpen())
        return false;
    if (m_Session.IsChangedOnDisk() &&
        m_Window.m_Ask(
            {Question::Kind::warning,
             QStringLiteral("Another program has changed \u201C%1\u201D.").arg(GetName()),
             QStringLiteral("Saving replaces what that program wrote by the project as it is "
                            "here."),
             {QStringLiteral("&Overwrite"), QStringLiteral("Cancel")}}) != 0)
        return false;
    return SaveTo(m_Session.GetPath());
}

bool ProjectCommands::SaveAs() {
    if (!m_Session.IsOpen())
        return false;
    const QString chosen = m_Window.m_AskSave(FromPath(m_Session.GetPath()));
    return !chosen.isEmpty() && SaveTo(ToPath(chosen));
}

bool ProjectCommands::SaveTo(const std::string& path) {
    const sys::Status status = m_Session.Save(path);
    if (!status) {
        const QString reason = QString::fromStdString(status.reason);
        m_Window.m_Tell(reason, true);
        m_Window.m_Ask({Question::Kind::error,
                        QStringLiteral("The project could not be saved."),
                        reason + QStringLiteral("\n\nIts texts are still here."),
                        {}});
        return false;
    }
    for (OpenDocument* document : m_Session.GetDocuments())
        m_Recovery.Forget(*document);
    m_Window.m_Used(FromPath(path));
    return true;
}

bool ProjectCommands::MayClose() {
    if (!m_Session.IsModified())
        return true;
    const int answer = m_Window.m_Ask(
        {Question::Kind::question,
         QStringLiteral("Save the changes of the project \u201C%1\u201D?").arg(GetName()),
         QStringLiteral("Without saving they are lost."),
         {QStringLiteral("&Save"), QStringLiteral("&Don't Save"), QStringLiteral("Cancel")}});
    return answer == 0 ? Save() : answer == 1;
}

bool ProjectCommands::Close() {
    if (!MayClose())
        return false;
    CloseNow();
    return true;
}

void ProjectCommands::CloseNow() {
    if (!m_Session.IsOpen())
        return;
    m_Session.SavePlaces();
    for (OpenDocument* document : m_Session.GetDocuments())
        m_Recovery.Forget(*document);
    m_Tree.ShowProject(nullptr);
    m_Tree.hide();
    m_Session.Close();
}
