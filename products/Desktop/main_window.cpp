#include "main_window.h"

#include <utility>

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QWheelEvent>
#include <QWindow>

#include "desktop_core.h"
#include "line_icon.h"
#include "message_pane.h"
#include "project_commands.h"
#include "project_tree.h"
#include "qt_strings.h"
#include "recent_files.h"
#include "status_line.h"
#include "tool_bar_screen.h"
#include "undo_pane.h"

namespace {

constexpr int kShownMilliseconds = 8000;
constexpr int kSavingMilliseconds = 1000;
constexpr int kOpeningMilliseconds = 50;
constexpr QSize kFirstSize{1080, 720};

const QString kOpenFilter = QStringLiteral("All texts (*);;Projects (*.qproj);;Netlists (*.cir "
                                           "*.ckt *.net *.sp *.lib *.inc);;Scripts (*.js *.vbs)");

/// Events upon which the state of a text may be another.
bool IsUserAction(QEvent::Type type) {
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Drop:
    case QEvent::FocusIn:
        return true;
    default:
        return false;
    }
}

} // namespace

MainWindow::MainWindow(DesktopCore& core)
    : m_Core(core), m_Commands([this] {
          SaveOptions();
          RefreshSoon();
      }) {
    PrepareTimers();
    setWindowIcon(MakeProgramIcon());
    setAcceptDrops(true);
    BuildParts();
    BuildMenus();
    BuildToolBars();
    ReadState();
    for (const std::string& trouble : m_Core.GetTroubles())
        Tell(QString::fromStdString(trouble), true);
    qApp->installEventFilter(this);
    connect(qApp, &QGuiApplication::commitDataRequest, this, [this] { m_Recovery->KeepAll(); });
    Refresh();
}

MainWindow::~MainWindow() {
    qApp->removeEventFilter(this);
    m_Core.m_Desktop.GetUserInterface()->m_OnRefresh = nullptr;
    m_Core.m_Desktop.GetPrompt()->m_OnShown = nullptr;
    m_Idle.stop();
    delete m_Documents; // while the rest of the window is there
    m_Documents = nullptr;
}

void MainWindow::PrepareTimers() {
    m_Idle.setSingleShot(true);
    m_Idle.setInterval(0);
    connect(&m_Idle, &QTimer::timeout, this, &MainWindow::Refresh);
    m_Opening.setInterval(kOpeningMilliseconds);
    connect(&m_Opening, &QTimer::timeout, this, &MainWindow::OpenWaiting);
    m_Saving.setSingleShot(true);
    m_Saving.setInterval(kSavingMilliseconds);
    connect(&m_Saving, &QTimer::timeout, this, &MainWindow::SaveOptions);
}

void MainWindow::BuildParts() {
    m_Documents = new OpenDocuments(m_Core, this);
    setCentralWidget(m_Documents);
    m_Documents->m_OnActivated = [this] { RefreshSoon(); };
    m_Documents->m_OnScriptSaved = [this](OpenDocument& document) {
        if (m_Files->Save(document))
            Tell(document.GetTitle() + QStringLiteral(": the script is saved"), false);
        RefreshSoon();
    };
    m_Documents->m_OnClosing = [this](OpenDocument& document) { m_Files->Close(document); };
    m_Documents->SetTabs(m_Core.m_Settings.GetTabs());
    m_Status = new StatusLine(this);
    setStatusBar(m_Status);
    m_Messages = new MessagePane(this);
    addDockWidget(Qt::BottomDockWidgetArea, m_Messages);
    m_Messages->hide();
    m_UndoPane = new UndoPane([this] { return GetActive(); }, this);
    m_UndoPane->m_OnMoved = [this] { RefreshSoon(); };
    addDockWidget(Qt::RightDockWidgetArea, m_UndoPane);
    m_UndoPane->hide();
    connect(m_UndoPane, &QDockWidget::visibilityChanged, this, [this] { RefreshSoon(); });
    m_Recovery = std::make_unique<RecoveryTimer>(
        m_Core.m_Recovery, [this] { return m_Documents->GetAll(); },
        [this](const std::string& reason) {
            Tell(QStringLiteral("Unsaved texts can't be kept for recovery: ") +
                     QString::fromStdString(reason),
                 true);
        });
    m_Recovery->SetPause(m_Core.m_Settings.GetRecoveryPause());
    m_Files = std::make_unique<FileCommands>(m_Core, *m_Documents, *m_Recovery, MakeSurroundings());
    m_Tree = new ProjectTree(this);
    addDockWidget(Qt::LeftDockWidgetArea, m_Tree);
    m_Projects =
        std::make_unique<ProjectCommands>(*m_Documents, *m_Recovery, *m_Tree, MakeSurroundings());
    m_Core.m_Desktop.GetUserInterface()->m_OnRefresh = [this] { RefreshSoon(); };
    m_Core.m_Desktop.GetPrompt()->m_OnShown = [this](const HostPrompt::Shown& shown) {
        Tell(FromAString(shown.m_Text), false);
    };
}

FileCommands::Surroundings MainWindow::MakeSurroundings() {
    return {.m_Ask = [this](const Question& question) { return AskInBox(this, question); },
            .m_AskOpen = [this](const QString& folder) { return AskOpen(folder); },
            .m_AskSave = [this](const QString& preset) { return AskSave(preset); },
            .m_Tell = [this](const QString& text, bool warning) { Tell(text, warning); },
            .m_Used =
                [this](const QString& path) {
                    m_Recent->Add(path);
                    SaveOptions();
                },
            .m_OpenOther =
                [this](const std::string& path) {
                    const bool isProject = ProjectCommands::IsProject(path);
                    if (isProject)
                        m_Projects->Open(path);
                    return isProject;
                }};
}

QStringList MainWindow::AskOpen(const QString& folder) {
    return QFileDialog::getOpenFileNames(this, QStringLiteral("Open"), folder, kOpenFilter);
}

QString MainWindow::AskSave(const QString& preset) {
    return QFileDialog::getSaveFileName(this, QStringLiteral("Save As"), preset, kOpenFilter);
}

void MainWindow::Tell(const QString& text, bool warning) {
    m_Messages->Add(text, warning);
    m_Status->showMessage(text.section(QLatin1Char('\n'), 0, 0), kShownMilliseconds);
}

void MainWindow::OpenFiles(const std::vector<FileTarget>& files) {
    for (const FileTarget& file : files)
        m_Files->Open(file, true);
    if (isMinimized())
        showNormal();
    raise();
    activateWindow();
    RefreshSoon();
}

void MainWindow::OpenFilesLater(const std::vector<FileTarget>& files) {
    m_FilesToOpen.insert(m_FilesToOpen.end(), files.begin(), files.end());
    m_Opening.start();
}

void MainWindow::OpenWaiting() {
    if (!QApplication::activeModalWidget() && !QApplication::activePopupWidget()) {
        m_Opening.stop();
        OpenFiles(std::exchange(m_FilesToOpen, {}));
    }
}

void MainWindow::Begin() {
    m_Files->OfferRecovered();
    if (m_Documents->GetAll().empty())
        m_Files->New(EditorSort::netlist);
    RefreshSoon();
}

void MainWindow::EndSession() {
    m_Recovery->KeepAll();
    m_SessionEnds = true;
    close();
}

OpenDocument* MainWindow::GetActive() const {
    return m_Documents ? m_Documents->GetActive() : nullptr;
}

void MainWindow::WithActive(const std::function<void(OpenDocument&)>& act) {
    if (OpenDocument* document = GetActive())
        act(*document);
    RefreshSoon();
}

void MainWindow::Refresh() {
    OpenDocument* const document = GetActive();
    for (OpenDocument* each : m_Documents->GetAll())
        if (each->GetShell() && each->GetShell()->isWindowModified() != each->IsModified())
            each->RefreshTitle();
    const QString name = document ? document->GetTitle() : QString();
    QString title = name;
    title.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
    title = document ? title + QStringLiteral("[*] \u2013 Quorel") : QStringLiteral("Quorel");
    if (windowTitle() != title)
        setWindowTitle(title);
    setWindowModified(document && document->IsModified());
    setWindowFilePath({});
    m_Status->Show(document);
    RefreshActions(document);
    m_Recovery->Look();
    const std::string id = document ? document->GetId() : std::string();
    if (std::exchange(m_CheckedId, id) != id && document)
        m_Files->CheckDisk(*document);
    if (document)
        TellReplacedInput(*document);
}

void MainWindow::TellReplacedInput(OpenDocument& document) {
    int all = 0;
    for (OpenDocument* each : m_Documents->GetAll())
        all += each->GetEditor().m_Inspector->GetReplacedInputs();
    if (all > m_ReplacedInputs)
        Tell(document.GetTitle() +
                 QStringLiteral(
                     ": characters that this text can't hold were replaced by \u201C?\u201D"),
             false);
    m_ReplacedInputs = all;
}

void MainWindow::FocusText() {
    if (QMdiSubWindow* shell = m_Documents->currentSubWindow(); shell && shell->widget())
        shell->widget()->setFocus();
}

void MainWindow::ReadState() {
    const DesktopSettings& settings = m_Core.m_Settings;
    if (!restoreGeometry(settings.GetWindowGeometry()))
        resize(kFirstSize);
    restoreState(settings.GetWindowState());
    m_Messages->hide();
    m_Tree->hide();
}

/// Places toolbars and panes as they were at the last close, those that have come since too.
void MainWindow::RestorePlaces() {
    const bool areMessagesHidden = m_Messages->isHidden();
    const bool isTreeHidden = m_Tree->isHidden();
    restoreState(m_Core.m_Settings.GetWindowState());
    m_Messages->setHidden(areMessagesHidden);
    m_Tree->setHidden(isTreeHidden);
}

void MainWindow::WriteState() {
    m_Core.m_Settings.SetWindowGeometry(saveGeometry());
    m_Core.m_Settings.SetWindowState(saveState());
    m_Core.m_Desktop.GetToolBarHost()->StoreStates();
    SaveOptions();
}

void MainWindow::SaveOptions() {
    if (const sys::Status status = m_Core.m_Options.Save(); !status)
        Tell(QString::fromStdString(status.reason), false);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!m_SessionEnds && !(m_Projects->MayClose() && m_Files->CloseAll())) {
        event->ignore();
        return;
    }
    if (!m_SessionEnds)
        m_Projects->CloseNow();
    WriteState();
    event->accept();
    qApp->quit();
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    OpenDocument* const document = GetActive();
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && document)
        m_Files->CheckDisk(*document);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile())
            m_Files->Open({ToPath(url.toLocalFile())});
    event->acceptProposedAction();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (IsUserAction(event->type()))
        RefreshSoon();
    const auto* const widget = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::Wheel && widget && m_Documents &&
        m_Documents->isAncestorOf(widget)) {
        const auto& wheel = static_cast<QWheelEvent&>(*event);
        if (wheel.modifiers() == Qt::ControlModifier && wheel.angleDelta().y() != 0) {
            wheel.angleDelta().y() > 0 ? ZoomIn() : ZoomOut();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}
