/// PrintJob: one job on a printer or into a PDF file.
#pragma once

#include <memory>

#include <QPainter>

#include "painter_surface.h"
#include "pdf_desk.h"

class QPagedPaintDevice;
class QPrinter;
class QProgressDialog;

/// What a job is printed on.
class PrintDevice {
public:
    virtual ~PrintDevice() = default;
    virtual QPagedPaintDevice& Get() = 0;
    /// @return false: it can't be printed on
    virtual bool Open(const QString& title) = 0;
    /// Whether all has gone well so far.
    virtual bool IsGood() = 0;
    /// Makes the job final. @return false: it is lost
    virtual bool Commit() = 0;
    /// Drops the job.
    virtual void Abort() = 0;
};

/// @name Devices
/// @{
/// A file that is there, and replaces one of its name, only with the last page.
std::unique_ptr<PrintDevice> MakePdfDevice(const PdfOutput& output);
std::unique_ptr<PrintDevice> MakePrinterDevice(std::unique_ptr<QPrinter> printer);
/// A printer of somebody else's.
std::unique_ptr<PrintDevice> MakeTargetDevice(QPrinter& printer);
/// @}

/// The pages of a job. Its device units are the device's dots, from the corner of what it can print
/// on.
class PrintJob : public IBackendPrinter {
public:
    /// @param defaultFont outlives the job
    /// @param isWatched a job that takes longer shows its progress, and can be given up
    PrintJob(std::unique_ptr<PrintDevice> device, const QtFont& defaultFont,
             bool isWatched = false);
    ~PrintJob() override;

    CSize GetPageSize() override { return m_Surface.GetSize(); }
    CSize GetResolution() override { return m_Surface.GetResolution(); }
    IBackendSurface& GetSurface() override { return m_Surface; }
    bool StartDocument(const AString& title) override;
    bool GoOn(int page, int lastPage) override;
    bool StartPage() override;
    bool EndPage() override;
    bool EndDocument() override;

private:
    std::unique_ptr<PrintDevice> m_Device;
    std::unique_ptr<QProgressDialog> m_Progress; ///< null: nobody waits for the job
    QPainter m_Painter;
    PainterSurface m_Surface;
    int m_Pages = 0;
    bool m_Ended = false;
};
