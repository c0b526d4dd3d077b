/// How a CView prints: the sequence of a job, from its preparation to its end.
#include <algorithm>

#include "dc.h"
#include "document.h"
#include "print_info.h"
#include "view.h"

const CommandMap& CView::GetCommandMap() const {
    static constexpr CommandEntry kEntries[] = {
        Command<&CView::OnFilePrint>(kCommandPrint),
        Command<&CView::OnFilePrintDirect>(kCommandPrintDirect),
        Command<&CView::OnFilePrintPreview>(kCommandPrintPreview),
    };
    static const CommandMap kMap{kEntries, &CWnd::GetCommandMap()};
    return kMap;
}

bool CView::OnPreparePrinting(CPrintInfo& info) {
    IBackendDesk* const desk = GetBackend();
    if (!info.m_Printer && desk) // a preview brings its own
        info.m_Printer = desk->AskPrinter(info.m_Request);
    return info.m_Printer != nullptr;
}

void CView::OnBeginPrinting(CDC&, CPrintInfo&) {}

void CView::OnPrint(CDC& dc, CPrintInfo&) {
    OnDraw(dc);
}

void CView::OnEndPrinting(CDC&, CPrintInfo&) {}

void CView::OnFilePrint() {
    CPrintInfo info;
    PrintJob(info);
}

void CView::OnFilePrintDirect() {
    CPrintInfo info;
    info.m_Request.m_Direct = true;
    PrintJob(info);
}

void CView::OnFilePrintPreview() {
    IBackendDesk* const desk = GetBackend();
    if (!desk)
        return;
    desk->ShowPreview([this](std::unique_ptr<IBackendPrinter> printer) {
        CPrintInfo info;
        info.m_Preview = true;
        info.m_Printer = std::move(printer);
        PrintJob(info);
    });
}

/// Tells the user of a device that has refused. A job that isn't ended is dropped with its printer.
void CView::PrintJob(CPrintInfo& info) {
    if (!OnPreparePrinting(info))
        return;
    bool good = false;
    {
        CDC dc(info.m_Printer->GetSurface());
        struct Job {
            CView& m_View;
            CDC& m_Dc;
            CPrintInfo& m_Info;
            ~Job() { m_View.OnEndPrinting(m_Dc, m_Info); }
        } const job{*this, dc, info};
        OnBeginPrinting(dc, info);
        good = PrintPages(dc, info);
    }
    info.m_Printer.reset();
    if (IBackendDesk* const desk = GetBackend(); desk && !good)
        desk->ShowMessage(u"The document could not be printed.", kWarningStyle);
}

/// @return false: the device has refused
bool CView::PrintPages(CDC& dc, CPrintInfo& info) {
    IBackendPrinter& printer = *info.m_Printer;
    if (!printer.StartDocument(m_Document ? m_Document->GetTitle() : AString()))
        return false;
    const int first = std::max(info.m_MinPage, info.m_Request.m_FromPage);
    const int last = std::min(info.m_MaxPage, info.m_Request.m_ToPage);
    for (info.m_CurPage = first; info.m_CurPage <= last; ++info.m_CurPage) {
        OnPrepareDC(dc, &info);
        if (!info.m_ContinuePrinting)
            break;
        if (!printer.GoOn(info.m_CurPage, last))
            return true;
        if (!printer.StartPage())
            return false;
        OnPrint(dc, info);
        if (!printer.EndPage())
            return false;
    }
    const bool isEmpty = info.m_CurPage <= first;
    return isEmpty || printer.EndDocument();
}
