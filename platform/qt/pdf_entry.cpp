// The entry for hosts that open this library at run time, to print into a file.

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <QApplication>

#include "pdf_desk.h"
#include "qt_desk.h"

namespace {

/// What a QApplication is made with; it keeps references to them.
struct Arguments {
    int m_Count = 1;
    char m_Name[7] = "quorel";
    char* m_Values[2] = {m_Name, nullptr};
};

struct PdfSession {
    Arguments m_Arguments;
    std::unique_ptr<QApplication> m_Application; ///< null when the process has its own
    std::unique_ptr<QtDesk> m_Desk;
};

std::unique_ptr<PdfSession> sSession;

/// What Qt remarks about its surroundings is none of the host's messages.
void DropRemarks(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

std::unique_ptr<PdfSession> StartSession() {
    auto session = std::make_unique<PdfSession>();
    if (!QCoreApplication::instance()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qInstallMessageHandler(&DropRemarks);
        session->m_Application = std::make_unique<QApplication>(session->m_Arguments.m_Count,
                                                                session->m_Arguments.m_Values);
    } else if (!qobject_cast<QApplication*>(QCoreApplication::instance())) {
        return nullptr;
    }
    session->m_Desk = std::make_unique<QtDesk>();
    return session;
}

} // namespace

extern "C" QUOREL_API IBackendDesk* QuorelOpenPdfDesk(const PdfOutput& output) {
    if (!sSession)
        sSession = StartSession();
    if (!sSession)
        return nullptr;
    sSession->m_Desk->SetPdfOutput(output);
    return sSession->m_Desk.get();
}

extern "C" QUOREL_API void QuorelClosePdfDesk() {
    sSession.reset();
}

static_assert(std::is_same_v<decltype(QuorelOpenPdfDesk), OpenPdfDeskFunction>);
static_assert(std::is_same_v<decltype(QuorelClosePdfDesk), ClosePdfDeskFunction>);
