/// Menus and toolbars of the MainWindow.
#include <algorithm>

#include <QMdiSubWindow>
#include <QMenuBar>
#include <QStyle>
#include <QToolBar>

#include "desktop_core.h"
#include "iview_doc.h"
#include "message_pane.h"
#include "project_commands.h"
#include "project_tree.h"
#include "recent_files.h"
#include "tool_bar_screen.h"
#include "undo_pane.h"
#include "window_commands.h"

namespace {

/// The commands of every view that stand in the Edit menu, by number.
constexpr struct {
    unsigned m_Command; ///< 0: a separator
    const char* m_Text;
    std::optional<LineIcon> m_Icon;
} kEditCommands[] = {
    {57635, "Cu&t\tCtrl+X", LineIcon::cut},
    {57634, "&Copy\tCtrl+C", LineIcon::copy},
    {57637, "&Paste\tCtrl+V", LineIcon::paste},
    {57632, "&Delete\tDel", std::nullopt},
    {0, nullptr, std::nullopt},
    {57642, "Select &All\tCtrl+A", std::nullopt},
    {0, nullptr, std::nullopt},
};

/// The commands on the standard toolbar, by their icons; nothing: a gap.
constexpr std::optional<LineIcon> kStandardButtons[] = {
    LineIcon::fileNew, LineIcon::open, LineIcon::save, std::nullopt,
    LineIcon::print,   std::nullopt,   LineIcon::undo, LineIcon::redo};

} // namespace

void MainWindow::BuildMenus() {
    QMenu* const file = menuBar()->addMenu(QStringLiteral("&File"));
    BuildMenu(*file, WindowActions::File());
    m_Recent = new RecentFiles(
        m_Core.m_Settings, [this](const QString& path) { m_Files->Open({path.toStdString()}); },
        this);
    file->insertMenu(file->actions().at(4), m_Recent);
    m_EditMenu = menuBar()->addMenu(QStringLiteral("&Edit"));
    AddEditMenu();
    QMenu* const view = menuBar()->addMenu(QStringLiteral("&View"));
    BuildMenu(*view, WindowActions::View());
    AddModuleMenus();
    AddWindowMenu();
    BuildMenu(*menuBar()->addMenu(QStringLiteral("&Help")), WindowActions::Help());
    view->setObjectName(QStringLiteral("ViewMenu"));
}

void MainWindow::BuildMenu(QMenu& menu, std::span<const Command> commands) {
    for (const Command& command : commands) {
        if (command.m_Text)
            AddCommand(menu, command);
        else
            menu.addSeparator();
    }
}

QAction* MainWindow::AddCommand(QMenu& menu, const Command& command) {
    QAction* const action = menu.addAction(QString::fromUtf8(command.m_Text));
    if (command.m_Keys)
        action->setShortcut(QKeySequence(QLatin1String(command.m_Keys)));
    if (command.m_Icon)
        action->setIcon(MakeLineIcon(*command.m_Icon));
    action->setStatusTip(QLatin1String(command.m_Status));
    action->setMenuRole(command.m_Role);
    connect(action, &QAction::triggered, this, command.m_Run);
    m_Actions.push_back({action, &command});
    return action;
}

void MainWindow::AddEditMenu() {
    const auto source = [this] { return EditorMenuOf(GetActive(), IViewDoc::kEditMenu); };
    BuildMenu(*m_EditMenu, WindowActions::Edit());
    for (const auto& row : kEditCommands) {
        if (row.m_Command == 0) {
            m_EditMenu->addSeparator();
            continue;
        }
        QAction* const action =
            m_Commands.AppendCommand(*m_EditMenu, row.m_Command, QLatin1String(row.m_Text), source);
        if (row.m_Icon)
            action->setIcon(MakeLineIcon(*row.m_Icon));
        connect(m_EditMenu, &QMenu::aboutToShow, action, [action, source, id = row.m_Command] {
            ModuleCommands::Update(*action, id, source());
        });
    }
    const qsizetype own = m_EditMenu->actions().size();
    connect(m_EditMenu, &QMenu::aboutToShow, this, [this, own, source] {
        for (QAction* action : m_EditMenu->actions().mid(own))
            delete action;
        m_Commands.Append(*m_EditMenu, source);
    });
}

void MainWindow::AddModuleMenus() {
    const auto source = [this] { return EditorMenuOf(GetActive(), IViewDoc::kExportMenu); };
    m_EditorMenu = menuBar()->addMenu(QString());
    connect(m_EditorMenu, &QMenu::aboutToShow, this, [this, source] {
        m_EditorMenu->clear();
        m_Commands.Append(*m_EditorMenu, source);
    });
    QMenu* const options = menuBar()->addMenu(QStringLiteral("&Options"));
    m_Commands.Append(*options, [this] {
        ModuleMenu menu;
        if (INetlistFactory* factory = m_Core.m_Module.GetFactory())
            static_cast<void>(
                factory->GetFactoryMenu(IViewDoc::kOptionsMenu, menu.m_Menu, menu.m_Targets));
        return menu;
    });
}

void MainWindow::AddWindowMenu() {
    m_WindowMenu = menuBar()->addMenu(QStringLiteral("&Window"));
    BuildMenu(*m_WindowMenu, WindowActions::Window());
    const qsizetype own = m_WindowMenu->actions().size();
    connect(m_WindowMenu, &QMenu::aboutToShow, this, [this, own] {
        for (QAction* action : m_WindowMenu->actions().mid(own))
            delete action;
        FillWindowList();
    });
}

void MainWindow::FillWindowList() {
    int number = 0;
    m_WindowMenu->addSeparator();
    for (OpenDocument* document : m_Documents->GetAll()) {
        if (!document->GetShell())
            continue;
        QString title = document->GetTitle().replace(QLatin1Char('&'), QLatin1String("&&"));
        if (++number < 10)
            title.prepend(QStringLiteral("&%1  ").arg(number));
        QAction* const action = m_WindowMenu->addAction(title);
        action->setCheckable(true);
        action->setChecked(document == GetActive());
        const QPointer<QMdiSubWindow> shell = document->GetShell();
        connect(action, &QAction::triggered, this, [this, shell] {
            if (shell)
                m_Documents->setActiveSubWindow(shell);
        });
    }
}

void MainWindow::BuildToolBars() {
    auto* const standard = addToolBar(QStringLiteral("Standard"));
    standard->setObjectName(QStringLiteral("StandardToolBar"));
    for (const std::optional<LineIcon>& icon : kStandardButtons) {
        const auto bound = std::ranges::find_if(
            m_Actions, [&](const BoundAction& each) { return each.m_Command->m_Icon == icon; });
        if (icon && bound != m_Actions.end())
            standard->addAction(bound->m_Action);
        else
            standard->addSeparator();
    }
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize) * 5 / 4;
    setIconSize({size, size});
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    QMenu& view = *menuBar()->findChild<QMenu*>(QStringLiteral("ViewMenu"));
    AddViewToggles(view);
    ShowModuleBars(view);
}

/// The modules' toolbars come with the first text.
void MainWindow::ShowModuleBars(QMenu& toggles) {
    QAction* const behind = m_Messages->toggleViewAction();
    m_ToolBars = std::make_unique<ToolBarScreen>(
        *m_Core.m_Desktop.GetToolBarHost(),
        ToolBarScreen::Surroundings{
            .m_Window = *this,
            .m_Use = {.m_Commands = m_Commands,
                      .m_Source = [this] { return EditorMenuOf(GetActive(), IViewDoc::kEditMenu); },
                      .m_OnEscape = [this] { FocusText(); },
                      .m_OnOtherKey =
                          [this](const QKeyEvent& key) { return m_Core.m_Desk.OfferKey(key); }},
            .m_RestorePlaces = [this] { RestorePlaces(); },
            .m_AddToggle = [&toggles,
                            behind](QAction& toggle) { toggles.insertAction(behind, &toggle); },
            .m_Changed = [this] { m_Saving.start(); }});
}

QMenu* MainWindow::createPopupMenu() {
    QMenu* const menu = QMainWindow::createPopupMenu();
    menu->addSeparator();
    for (const BoundAction& bound : m_Actions)
        if (bound.m_Command->m_Run == &MainWindow::CustomizeToolBars)
            menu->addAction(bound.m_Action);
    return menu;
}

void MainWindow::AddViewToggles(QMenu& menu) {
    for (QToolBar* bar : findChildren<QToolBar*>(Qt::FindDirectChildrenOnly))
        menu.addAction(bar->toggleViewAction());
    menu.addActions({m_Messages->toggleViewAction(), m_UndoPane->toggleViewAction(),
                     m_Tree->toggleViewAction()});
}

void MainWindow::RefreshActions(OpenDocument* document) {
    IEditorInspector* const inspector = document ? document->GetEditor().m_Inspector : nullptr;
    const bool isThere[] = {true,
                            document != nullptr,
                            document && !document->GetFile().GetPath().empty(),
                            document && document->CanUndo(),
                            document && document->CanRedo(),
                            inspector && inspector->IsModified(),
                            m_Projects->GetSession().IsOpen()};
    for (const BoundAction& bound : m_Actions)
        bound.m_Action->setEnabled(isThere[static_cast<std::size_t>(bound.m_Command->m_Needs)]);
    m_ToolBars->Refresh();
    m_UndoPane->Refresh();
    const QString title = PopupTitleOf(EditorMenuOf(document, IViewDoc::kExportMenu));
    m_EditorMenu->menuAction()->setVisible(!title.isEmpty());
    if (m_EditorMenu->title() != title)
        m_EditorMenu->setTitle(title);
}
