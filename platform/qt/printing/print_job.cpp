#include "print_job.h"

#include <QPdfWriter>
#include <QPrinter>
#include <QProgressDialog>
#include <QSaveFile>

#include "qt_text.h"
#include "standard_dialogs.h"

namespace {

/// What a page of a PDF leaves free on each side, in millimetres.
constexpr double kPdfMargin = 10;

class PdfDevice : public PrintDevice {
public:
    explicit PdfDevice(const PdfOutput& output) : m_File(ToQt(output.m_Path)), m_Writer(&m_File) {
        const bool letter = output.m_Paper == PdfOutput::Paper::letter;
        m_Writer.setPageSize(QPageSize(letter ? QPageSize::Letter : QPageSize::A4));
        m_Writer.setPageMargins(QMarginsF(kPdfMargin, kPdfMargin, kPdfMargin, kPdfMargin),
                                QPageLayout::Millimeter);
    }
    QPagedPaintDevice& Get() override { return m_Writer; }
    bool Open(const QString& title) override {
        m_Writer.setTitle(title);
        return m_File.open(QIODevice::WriteOnly);
    }
    bool IsGood() override { return m_File.error() == QFileDevice::NoError; }
    bool Commit() override { return IsGood() && m_File.commit(); }
    void Abort() override { m_File.cancelWriting(); }

private:
    QSaveFile m_File;
    QPdfWriter m_Writer;
};

class PrinterDevice : public PrintDevice {
public:
    explicit PrinterDevice(QPrinter& printer) : m_Printer(printer) {}
    explicit PrinterDevice(std::unique_ptr<QPrinter> printer)
        : m_Owned(std::move(printer)), m_Printer(*m_Owned) {}
    QPagedPaintDevice& Get() override { return m_Printer; }
    bool Open(const QString& title) override {
        m_Printer.setDocName(title);
        return m_Printer.isValid();
    }
    bool IsGood() override {
        return m_Printer.printerState() != QPrinter::Error &&
               m_Printer.printerState() != QPrinter::Aborted;
    }
    bool Commit() override { return IsGood(); }
    void Abort() override { m_Printer.abort(); }

private:
    std::unique_ptr<QPrinter> m_Owned;
    QPrinter& m_Printer;
};

CSize PageSizeOf(const QPagedPaintDevice& device) {
    const QSize size = device.pageLayout().paintRectPixels(device.logicalDpiX()).size();
    return {size.width(), size.height()};
}

} // namespace

std::unique_ptr<PrintDevice> MakePdfDevice(const PdfOutput& output) {
    return std::make_unique<PdfDevice>(output);
}

std::unique_ptr<PrintDevice> MakePrinterDevice(std::unique_ptr<QPrinter> printer) {
    return std::make_unique<PrinterDevice>(std::move(printer));
}

std::unique_ptr<PrintDevice> MakeTargetDevice(QPrinter& printer) {
    return std::make_unique<PrinterDevice>(printer);
}

PrintJob::PrintJob(std::unique_ptr<PrintDevice> device, const QtFont& defaultFont, bool isWatched)
    : m_Device(std::move(device)),
      m_Progress(isWatched ? MakeProgressDialog(QStringLiteral("Printing")) : nullptr),
      m_Surface(m_Painter, PageSizeOf(m_Device->Get()),
                {m_Device->Get().logicalDpiX(), m_Device->Get().logicalDpiY()}, defaultFont) {}

PrintJob::~PrintJob() {
    if (m_Ended || !m_Painter.isActive())
        return;
    m_Device->Abort();
    m_Painter.end();
}

bool PrintJob::StartDocument(const AString& title) {
    return m_Device->Open(ToQt(title)) && m_Painter.begin(&m_Device->Get());
}

bool PrintJob::GoOn(int page, int lastPage) {
    if (!m_Progress)
        return true;
    m_Progress->setRange(0, lastPage);
    m_Progress->setLabelText(QStringLiteral("Page %1 of %2").arg(page).arg(lastPage));
    m_Progress->setValue(page - 1); // which lets the user answer
    return !m_Progress->wasCanceled();
}

bool PrintJob::StartPage() {
    if (!m_Painter.isActive() || (m_Pages > 0 && !m_Device->Get().newPage()))
        return false;
    ++m_Pages;
    m_Surface.SetOrigin({});
    m_Surface.SetClip(nullptr);
    return m_Device->IsGood();
}

bool PrintJob::EndPage() {
    m_Surface.Flush();
    return m_Painter.isActive() && m_Device->IsGood();
}

bool PrintJob::EndDocument() {
    m_Ended = true;
    return m_Painter.isActive() && m_Painter.end() && m_Device->Commit();
}
