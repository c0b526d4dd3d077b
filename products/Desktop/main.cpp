/// quorel-desktop: the reference desktop.
#include <cstdio>
#include <filesystem>

#include <QApplication>

#include "command_line.h"
#include "desktop_core.h"
#include "directory.h"
#include "line_icon.h"
#include "main_window.h"
#include "questions.h"
#include "session_signals.h"
#include "single_instance.h"

namespace {

enum ExitCode { kDone = 0, kUsageError = 2, kNoModule = 3 };

bool IsThere(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

/// The part of the command line that needs no window. @return whether all is said
bool AnswerWithoutWindow(const CommandLine& line) {
    if (line.m_Help)
        std::fputs(kUsage.data(), stdout);
    else if (line.m_Version)
        std::puts("quorel-desktop " QUOREL_VERSION);
    return line.m_Help || line.m_Version;
}

int RunWindow(const CommandLine& line, SingleInstance& instance) {
    DesktopCore core;
    if (const sys::Status status = core.Start({}); !status) {
        std::fprintf(stderr, "quorel-desktop: %s\n", status.reason.c_str());
        AskInBox(nullptr, {Question::Kind::error,
                           QStringLiteral("The editor module can't be loaded."),
                           QString::fromStdString(status.reason),
                           {}});
        return kNoModule;
    }
    MainWindow window(core);
    const SessionSignals signals([&window] { window.EndSession(); });
    window.show();
    if (!line.m_NewWindow)
        instance.Listen([&window](const auto& files) { window.OpenFilesLater(files); });
    window.OpenFiles(line.m_Files);
    window.Begin();
    return QApplication::exec();
}

} // namespace

int main(int count, char** values) {
    const CommandLine line =
        ParseCommandLine({values + 1, values + count}, sys::CurrentDirectory(), IsThere);
    if (!line.m_Error.empty()) {
        std::fprintf(stderr, "quorel-desktop: %s\n%s", line.m_Error.c_str(), kUsage.data());
        return kUsageError;
    }
    if (AnswerWithoutWindow(line))
        return kDone;
    QApplication::setApplicationName(QStringLiteral("quorel-desktop"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setDesktopFileName(QStringLiteral("quorel-desktop"));
    int ownCount = 1; // the arguments are ours, none is Qt's
    QApplication application(ownCount, values);
    QApplication::setWindowIcon(MakeProgramIcon());
    SingleInstance instance;
    if (!line.m_NewWindow && instance.HandOver(line.m_Files))
        return kDone;
    return RunWindow(line, instance);
}
