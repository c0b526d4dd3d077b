/// What the commands of the MainWindow's menus do.
#include <QPageSetupDialog>
#include <QPrinter>

#include "about_box.h"
#include "desktop_core.h"
#include "ifactory_tools.h"
#include "keys_page.h"
#include "messages.h"
#include "page_layout.h"
#include "project_commands.h"
#include "status_line.h"
#include "tool_bar_screen.h"
#include "window_commands.h"

namespace {
constexpr int kZoomMilliseconds = 3000;
} // namespace

void MainWindow::NewNetlist() {
    m_Files->New(EditorSort::netlist);
}

void MainWindow::NewJavaScript() {
    m_Files->New(EditorSort::javaScript);
}

void MainWindow::NewVBScript() {
    m_Files->New(EditorSort::vbScript);
}

void MainWindow::OpenAsked() {
    m_Files->AskAndOpen();
}

void MainWindow::Save() {
    WithActive([this](OpenDocument& document) { m_Files->Save(document); });
}

void MainWindow::SaveAs() {
    WithActive([this](OpenDocument& document) { m_Files->SaveAs(document); });
}

void MainWindow::SaveAll() {
    m_Files->SaveAll();
    RefreshSoon();
}

void MainWindow::Revert() {
    WithActive([this](OpenDocument& document) { m_Files->Revert(document); });
}

void MainWindow::SaveProject() {
    m_Projects->Save();
    RefreshSoon();
}

void MainWindow::SaveProjectAs() {
    m_Projects->SaveAs();
    RefreshSoon();
}

void MainWindow::CloseProject() {
    m_Projects->Close();
    RefreshSoon();
}

void MainWindow::CloseActive() {
    WithActive([this](OpenDocument& document) { m_Files->Close(document); });
}

void MainWindow::Export() {
    WithActive([](OpenDocument& document) {
        document.GetEditor().m_Driver->RunCommand(kExportTextCommand);
    });
}

void MainWindow::PageSetup() {
    QPrinter printer;
    printer.setPageLayout(GetPageLayout());
    if (QPageSetupDialog(&printer, this).exec() == QDialog::Accepted)
        SetPageLayout(printer.pageLayout());
}

void MainWindow::Preview() {
    WithActive([](OpenDocument& document) {
        document.GetEditor().m_Driver->RunCommand(kCommandPrintPreview);
    });
}

void MainWindow::Print() {
    WithActive(
        [](OpenDocument& document) { document.GetEditor().m_Driver->RunCommand(kCommandPrint); });
}

void MainWindow::Undo() {
    WithActive([](OpenDocument& document) { document.Undo(); });
}

void MainWindow::Redo() {
    WithActive([](OpenDocument& document) { document.Redo(); });
}

void MainWindow::Zoom(int steps) {
    IFactoryTools* const tools = m_Core.GetTools();
    if (!tools)
        return;
    const int height = tools->ZoomText(steps);
    m_Status->showMessage(QStringLiteral("Text of %1 pixels").arg(height), kZoomMilliseconds);
    m_Saving.start();
}

void MainWindow::ToggleFullScreen() {
    setWindowState(windowState() ^ Qt::WindowFullScreen);
}

void MainWindow::CustomizeToolBars() {
    m_ToolBars->Customize();
}

void MainWindow::ToggleTabs() {
    const bool on = !m_Documents->AreTabs();
    m_Documents->SetTabs(on);
    m_Core.m_Settings.SetTabs(on);
    SaveOptions();
}

void MainWindow::NextWindow() {
    m_Documents->activateNextSubWindow();
}

void MainWindow::PreviousWindow() {
    m_Documents->activatePreviousSubWindow();
}

void MainWindow::Tile() {
    m_Documents->SetTabs(false);
    m_Documents->tileSubWindows();
}

void MainWindow::Cascade() {
    m_Documents->SetTabs(false);
    m_Documents->cascadeSubWindows();
}

void MainWindow::CloseAllWindows() {
    m_Files->CloseAll();
    RefreshSoon();
}

void MainWindow::ShowKeys() {
    std::vector<KeyRow> rows{{{}, QStringLiteral("Desktop")}};
    for (const BoundAction& bound : m_Actions)
        if (bound.m_Command->m_Keys)
            rows.push_back({bound.m_Action->shortcut().toString(QKeySequence::NativeText),
                            QLatin1String(bound.m_Command->m_Status)});
    if (INetlistFactory* factory = m_Core.m_Module.GetFactory())
        for (KeyRow& row : ModuleKeys(*factory))
            rows.push_back(std::move(row));
    KeysPage(rows, this).exec();
}

void MainWindow::ShowAbout() {
    AboutBox(m_Core, this).exec();
}
