/// MainWindow: the desktop's window: menus, toolbars, texts, messages, status line.
#pragma once

#include <vector>

#include <QMainWindow>
#include <QTimer>

#include "command_line.h"
#include "file_commands.h"
#include "module_commands.h"
#include "recovery_timer.h"

class DesktopCore;
class MessagePane;
class OpenDocuments;
class ProjectCommands;
class ProjectTree;
class RecentFiles;
class StatusLine;
class ToolBarScreen;
class UndoPane;

/// The window and what belongs to it. What the user sees of a text's state is brought up to date
/// once after each of the user's actions, when the program has nothing else to do.
class MainWindow : public QMainWindow {
public:
    /// @param core started; outlives the window
    explicit MainWindow(DesktopCore& core);
    ~MainWindow() override;

    /// Opens files and comes to the front. A file that isn't there is a new text of that name.
    void OpenFiles(const std::vector<FileTarget>& files);
    /// The same for files from elsewhere, once no box or menu is open: what it is about must stay.
    void OpenFilesLater(const std::vector<FileTarget>& files);
    /// Offers recovered texts; a new text when nothing is open then.
    void Begin();
    /// The session ends without asking: what is unsaved is kept for the next start.
    void EndSession();

    OpenDocuments& GetDocuments() { return *m_Documents; }
    FileCommands& GetFiles() { return *m_Files; }
    RecoveryTimer& GetRecovery() { return *m_Recovery; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    QMenu* createPopupMenu() override;

private:
    friend struct WindowActions;
    struct Command;

    void BuildParts();
    void BuildMenus();
    void BuildMenu(QMenu& menu, std::span<const Command> commands);
    void BuildToolBars();
    QAction* AddCommand(QMenu& menu, const Command& command);
    void AddEditMenu();
    void AddModuleMenus();
    void AddViewToggles(QMenu& menu);
    void ShowModuleBars(QMenu& toggles);
    void RestorePlaces();
    void AddWindowMenu();
    void FillWindowList();
    FileCommands::Surroundings MakeSurroundings();
    QStringList AskOpen(const QString& folder);
    QString AskSave(const QString& preset);
    void Tell(const QString& text, bool warning);

    OpenDocument* GetActive() const;
    void WithActive(const std::function<void(OpenDocument&)>& act);
    void RefreshSoon() { m_Idle.start(); }
    void Refresh();
    void OpenWaiting();
    void RefreshActions(OpenDocument* document);
    void PrepareTimers();
    void TellReplacedInput(OpenDocument& document);
    void FocusText();
    void ReadState();
    void WriteState();
    void SaveOptions();

    // Commands of the menus.
    void NewNetlist();
    void NewJavaScript();
    void NewVBScript();
    void OpenAsked();
    void Save();
    void SaveAs();
    void SaveAll();
    void Revert();
    void SaveProject();
    void SaveProjectAs();
    void CloseProject();
    void CloseActive();
    void Export();
    void PageSetup();
    void Preview();
    void Print();
    void Undo();
    void Redo();
    void Quit() { close(); }
    void ZoomIn() { Zoom(1); }
    void ZoomOut() { Zoom(-1); }
    void ZoomReset() { Zoom(0); }
    void Zoom(int steps);
    void ToggleFullScreen();
    void CustomizeToolBars();
    void ToggleTabs();
    void NextWindow();
    void PreviousWindow();
    void Tile();
    void Cascade();
    void CloseAllWindows();
    void ShowKeys();
    void ShowAbout();

    DesktopCore& m_Core;
    ModuleCommands m_Commands;
    OpenDocuments* m_Documents = nullptr;
    std::unique_ptr<RecoveryTimer> m_Recovery;
    std::unique_ptr<FileCommands> m_Files;
    std::unique_ptr<ProjectCommands> m_Projects;
    ProjectTree* m_Tree = nullptr;
    RecentFiles* m_Recent = nullptr;
    StatusLine* m_Status = nullptr;
    MessagePane* m_Messages = nullptr;
    UndoPane* m_UndoPane = nullptr;
    std::unique_ptr<ToolBarScreen> m_ToolBars;
    QMenu* m_EditMenu = nullptr;
    QMenu* m_EditorMenu = nullptr; ///< of the active editor's own commands
    QMenu* m_WindowMenu = nullptr;
    struct BoundAction {
        QAction* m_Action;
        const Command* m_Command;
    };
    std::vector<BoundAction> m_Actions;
    std::vector<FileTarget> m_FilesToOpen;
    QTimer m_Opening;        ///< looks whether they may be opened
    std::string m_CheckedId; ///< of the active text, when its file was last looked at
    QTimer m_Saving;         ///< of options that change many times in a row
    QTimer m_Idle;           ///< fires when the events at hand are done
    int m_ReplacedInputs = 0;
    bool m_SessionEnds = false;
};
