/// The desks of `print`: windows that nobody sees, and a printer that writes JSON or a PDF file.
#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <string>

#include "headless_desk.h"
#include "ieditor_inspector.h"
#include "pdf_desk.h"

/// How a job went.
struct PrintOutcome {
    int m_TablePages = 0;        ///< of the whole text, whether wanted or not
    bool m_Failed = false;       ///< the device refused
    bool m_Completed = false;    ///< there were pages, and all came out
    std::exception_ptr m_Reason; ///< of a refusal, if it is known
};

/// What all jobs of `print` share.
class PrintDesk : public HeadlessDesk {
public:
    /// Tells the pages of the job that runs; to be set before it starts.
    std::function<PrintState()> m_GetState;
    PrintOutcome m_Outcome;

    /// Notes the job's outcome and shows its progress.
    std::unique_ptr<IBackendPrinter> AskPrinter(PrintRequest& request) final;

protected:
    virtual std::unique_ptr<IBackendPrinter> MakePrinter(PrintRequest& request) = 0;
};

/// Writes what is printed to standard output as JSON, each page as it ends.
class JsonPrintDesk : public PrintDesk {
public:
    JsonPrintDesk(CSize device, int fromPage, int toPage);
    /// Ends the JSON once the job has ended.
    static void Finish();

protected:
    std::unique_ptr<IBackendPrinter> MakePrinter(PrintRequest& request) override;

private:
    int m_FromPage;
    int m_ToPage;
};

/// Prints into a file by the library of real windows, which it opens for that.
class PdfPrintDesk : public PrintDesk {
public:
    /// ExitCode::file when the library can't be opened.
    explicit PdfPrintDesk(const PdfOutput& output);
    /// Fonts and jobs must be gone by then.
    ~PdfPrintDesk() override;

    /// A page's text needs the fonts of its printer; those of the windows are measured alike.
    std::unique_ptr<IBackendFont> CreateFont(const LogFont& font) override;

protected:
    std::unique_ptr<IBackendPrinter> MakePrinter(PrintRequest& request) override;

private:
    ClosePdfDeskFunction* m_Close = nullptr;
    IBackendDesk* m_Pdf = nullptr;
};
