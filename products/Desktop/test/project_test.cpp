// Projects on the desktop: views by instance, saving, closing, and what could not be read.

#include <QMdiSubWindow>
#include <QTreeWidget>

#include "desk_stage.h"
#include "ieditor.h"
#include "project_commands.h"
#include "project_tree.h"

namespace {

const std::string kProject = "$begin 'Project'\n"
                             "\tFormat=1\n"
                             "\tName='Audio'\n"
                             "\t$begin 'Design'\n"
                             "\t\tName='amp'\n"
                             "\t\t$begin 'Text'\n"
                             "\t\t\tLine='R1 in out 1k'\n"
                             "\t\t$end 'Text'\n"
                             "\t\t$begin 'Instance'\n"
                             "\t\t\tName='left'\n"
                             "\t\t\tNetlist(View(WindowPos(1, 0, 0, 0, 0, 10, 20, 310, 220)))\n"
                             "\t\t$end 'Instance'\n"
                             "\t\t$begin 'Instance'\n"
                             "\t\t\tName='right'\n"
                             "\t\t\tNetlist()\n"
                             "\t\t$end 'Instance'\n"
                             "\t\t$begin 'Script'\n"
                             "\t\t\tName='sweep'\n"
                             "\t\t\tLanguage='VBScript'\n"
                             "\t\t\tUse=false\n"
                             "\t\t\tScript()\n"
                             "\t\t\t$begin 'Text'\n"
                             "\t\t\t\tLine='\\' x'\n"
                             "\t\t\t$end 'Text'\n"
                             "\t\t$end 'Script'\n"
                             "\t$end 'Design'\n"
                             "$end 'Project'\n";

class Projects : public DeskTest {
protected:
    Projects() {
        m_Documents.resize(1000, 700);
        m_Documents.SetTabs(false);
        m_Documents.show();
    }
    ~Projects() override { m_Projects.CloseNow(); }

    std::string OpenBytes(const std::string& bytes) {
        WriteBytes(PathOf("a.qproj"), bytes);
        EXPECT_TRUE(m_Projects.Open(PathOf("a.qproj")));
        return PathOf("a.qproj");
    }
    /// Opens what stands in a row below the first design.
    void Activate(int row) {
        QTreeWidget& tree = m_Tree.GetTree();
        Q_EMIT tree.itemActivated(tree.topLevelItem(0)->child(row), 0);
    }
    std::vector<QString> Titles() const {
        std::vector<QString> titles;
        for (const QMdiSubWindow* window : m_Documents.subWindowList())
            titles.push_back(window->windowTitle());
        return titles;
    }

    std::vector<QString> m_Told;
    ProjectTree m_Tree;
    ProjectCommands m_Projects{
        m_Documents,
        m_Timer,
        m_Tree,
        {.m_Ask =
             [this](const Question& question) {
                 m_Asked.push_back(question.m_Text);
                 const int answer = m_Answers.empty() ? 0 : m_Answers.front();
                 if (!m_Answers.empty())
                     m_Answers.pop_front();
                 return answer;
             },
         .m_AskOpen = [](const QString&) { return QStringList(); },
         .m_AskSave = [this](const QString&) { return m_SaveName; },
         .m_Tell = [this](const QString& text, bool) { m_Told.push_back(text); },
         .m_Used = [](const QString&) {}}};
};

const QString kLeft = QStringLiteral("left \u2013 amp[*]");
const QString kRight = QStringLiteral("right \u2013 amp[*]");
const QString kSweep = QStringLiteral("sweep \u2013 amp[*]");

TEST_F(Projects, OpenAViewForEachInstanceOfOneText) {
    const std::string path = OpenBytes(kProject);
    EXPECT_EQ(Titles(), std::vector<QString>{kLeft});
    QMdiSubWindow* const left = m_Documents.subWindowList().front();
    EXPECT_EQ(left->geometry(), QRect(10, 20, 300, 200));
    Activate(1);
    Activate(2);
    Activate(1);
    EXPECT_EQ(Titles(), (std::vector<QString>{kLeft, kRight, kSweep}));
    EXPECT_EQ(m_Documents.GetAll().size(), 2u) << "the instances share a text";
    OpenDocument& netlist = *m_Documents.GetActive();
    Type(netlist, "* ");
    netlist.RefreshTitle();
    EXPECT_TRUE(left->isWindowModified());

    left->setGeometry(40, 50, 400, 300);
    EXPECT_TRUE(m_Files.Save(netlist));
    EXPECT_FALSE(m_Projects.GetSession().IsModified());
    const std::string saved = ReadBytes(path);
    EXPECT_NE(saved.find("Line='* R1 in out 1k'"), std::string::npos) << saved;
    EXPECT_NE(saved.find(", 40, 50, 440, 350)))"), std::string::npos) << saved;
    EXPECT_EQ(saved.find("Script()"), std::string::npos) << "its window stands open";

    EXPECT_TRUE(m_Files.Close(netlist));
    EXPECT_EQ(Titles(), (std::vector<QString>{kLeft, kSweep})) << "the text stays open";
    m_Documents.setActiveSubWindow(left);
    EXPECT_TRUE(m_Projects.Close());
    EXPECT_TRUE(m_Documents.GetAll().empty());
    EXPECT_TRUE(m_Asked.empty());
    EXPECT_TRUE(m_Projects.Open(path));
    EXPECT_EQ(Titles(), (std::vector<QString>{kLeft, kSweep})) << "as they stood at the end";
    EXPECT_EQ(m_Documents.activeSubWindow()->windowTitle(), kLeft);
    EXPECT_EQ(m_Documents.subWindowList().front()->geometry(), QRect(40, 50, 400, 300));
}

/// A script keeps its name, language and use, and the empty lines at its end.
TEST_F(Projects, ScriptsKeepWhatTheUserChooses) {
    std::string bytes = kProject;
    bytes.insert(bytes.find("\t\t\t$end 'Text'\n\t\t$end 'Script'"),
                 "\t\t\t\tLine=''\n\t\t\t\tLine=''\n");
    const std::string path = OpenBytes(bytes);
    Activate(2);
    OpenDocument& script = *m_Documents.GetActive();
    EXPECT_EQ(script.GetEditor().m_Inspector->GetLineCount(), 3);
    AString name;
    script.GetScript()->GetScriptName(name);
    EXPECT_EQ(name, u"sweep");
    EXPECT_FALSE(m_Projects.GetSession().IsModified());
    script.GetScript()->SetUseScript(true);
    script.GetScript()->SetLanguage(u"Python");
    EXPECT_TRUE(m_Projects.GetSession().IsModified());
    EXPECT_TRUE(m_Files.Save(script));
    EXPECT_FALSE(m_Projects.GetSession().IsModified());
    const std::string saved = ReadBytes(path);
    EXPECT_NE(saved.find("Language='Python'\n\t\t\tUse=true"), std::string::npos) << saved;
    EXPECT_NE(saved.find("Line=''\n\t\t\t\tLine=''\n"), std::string::npos) << saved;
}

TEST_F(Projects, AskBeforeChangesAreLost) {
    const std::string path = OpenBytes(kProject);
    Type(*m_Documents.GetActive(), "* ");
    m_Answers = {2, 0, 1};
    EXPECT_FALSE(m_Projects.Close()) << "cancelled";
    EXPECT_TRUE(m_Projects.GetSession().IsOpen());
    Touch(path);
    m_Answers = {0, 1};
    EXPECT_FALSE(m_Projects.Close()) << "another program's file is not overwritten";
    EXPECT_EQ(ReadBytes(path), kProject);
    m_Answers = {1};
    EXPECT_TRUE(m_Projects.Close()) << "without saving";
    EXPECT_EQ(ReadBytes(path), kProject);
}

TEST_F(Projects, TellWhatTheyDoNotUnderstandAndKeepIt) {
    const std::string odd = "\tnobody knows ! this\n";
    std::string bytes = kProject;
    bytes.insert(bytes.find("\t$begin 'Design'"), odd);
    const std::string path = OpenBytes(bytes);
    ASSERT_EQ(m_Told.size(), 1u);
    EXPECT_TRUE(m_Told[0].startsWith(QString::fromStdString(path + ":4: expected")));
    EXPECT_TRUE(m_Projects.Save());
    EXPECT_TRUE(ReadBytes(path).ends_with(odd + "$end 'Project'\n"));

    WriteBytes(PathOf("b.qproj"), "R1 1 2 1k\n");
    EXPECT_FALSE(m_Projects.Open(PathOf("b.qproj")));
    EXPECT_EQ(ReadBytes(PathOf("b.qproj")), "R1 1 2 1k\n");
}

} // namespace
