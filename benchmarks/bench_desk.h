/// BenchDesk: the desktop in its window, with options of its own and nothing kept for recovery.
#pragma once

#include "screen_work.h"

#include "desktop_core.h"
#include "main_window.h"
#include "open_documents.h"

/// One for a process, behind its QApplication.
class BenchDesk {
public:
    /// @param options lines of the options' file
    explicit BenchDesk(const std::string& options) {
        qputenv("QUOREL_DATA_DIR", QUOREL_SOURCE_DIR);
        const std::string path = PathOf("options.ini");
        std::ofstream(path) << "[Options]\n" << options;
        m_Core = std::make_unique<DesktopCore>();
        const sys::Status status = m_Core->Start(
            {.m_Options = path, .m_Recovery = {}, .m_Module = QUOREL_BIN_DIR "/Netlist.so"});
        if (!status) {
            std::fprintf(stderr, "%s\n", status.reason.c_str());
            std::_Exit(2);
        }
        m_Window = std::make_unique<MainWindow>(*m_Core);
        m_Window->show();
        m_Window->Begin();
        screen::Application::Settle();
        screen::FitClient(*m_Window, GetClient());
    }

    void Open(const std::string& path) { m_Window->OpenFiles({{path}}); }
    QtDesk& GetDesk() { return m_Core->m_Desk; }
    HostPrompt& GetPrompt() { return *m_Core->m_Desktop.GetPrompt(); }

    /// @name Of the text whose window is active
    /// @{
    IEditorInspector& GetInspector() { return *GetDocument().GetEditor().m_Inspector; }
    IEditorDriver& GetDriver() { return *GetDocument().GetEditor().m_Driver; }
    /// Where its text is painted, and which its keys go to.
    QWidget& GetClient() {
        QWidget* client = GetDocument().GetShell()->widget();
        while (client->focusProxy())
            client = client->focusProxy();
        return *client;
    }
    /// @}

    /// A place for a file that goes with the desk.
    std::string PathOf(const std::string& name) const {
        return m_Folder.path().toStdString() + '/' + name;
    }

private:
    OpenDocument& GetDocument() { return *m_Window->GetDocuments().GetActive(); }

    QTemporaryDir m_Folder;
    std::unique_ptr<DesktopCore> m_Core;
    std::unique_ptr<MainWindow> m_Window;
};
