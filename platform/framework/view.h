/// CView, CScrollView: what shows a document in a window.
#pragma once

#include <cstdint>

#include "wnd.h"

class CDC;
class CDocument;
class CFrameWnd;
struct CPrintInfo;

/// A view of one document, alone in its frame. It leaves its document when it is destroyed.
class QUOREL_API CView : public CWnd {
public:
    CView();
    ~CView() override;

    /// Null before CDocument::AddView and after the document's end.
    CDocument* GetDocument() const { return m_Document; }
    /// The frame around the view, null when it stands in none.
    CFrameWnd* GetParentFrame() const;

    /// Makes a context ready for OnDraw, or for a page of a print job (info isn't null then). The
    /// base ends a job behind page 1 unless OnBeginPrinting has told the last page.
    virtual void OnPrepareDC(CDC& dc, CPrintInfo* info);
    /// The view is to show its document from the start. The base calls OnUpdate.
    virtual void OnInitialUpdate();
    /// The view has become, or stops being, its frame's active one, or its frame was activated.
    /// The base takes the focus when it becomes active.
    /// @param deactivated the view that was active before, may be null or the same
    virtual void OnActivateView(bool activate, CView* activated, CView* deactivated);
    /// The document's update notice. The base repaints everything.
    virtual void OnUpdate(CView* sender, std::intptr_t hint, CObject* object);
    /// Draws what the context's clip box shows. The base draws nothing.
    virtual void OnDraw(CDC& dc);

    /// @name A print job: one info for all of it
    /// @{
    /// Sets what the print dialog offers, then asks for the device. The base only asks.
    /// @return false: there is no job
    virtual bool OnPreparePrinting(CPrintInfo& info);
    /// Takes the device's measures and tells the pages. The base does nothing.
    virtual void OnBeginPrinting(CDC& dc, CPrintInfo& info);
    /// Draws the page m_CurPage, after OnPrepareDC. The base calls OnDraw.
    virtual void OnPrint(CDC& dc, CPrintInfo& info);
    /// The job has ended, well or not. The base does nothing.
    virtual void OnEndPrinting(CDC& dc, CPrintInfo& info);
    /// @}

    /// Paints through OnPrepareDC and OnDraw; with erase, OnEraseBackground in between.
    void HandlePaint(IBackendSurface& surface, bool erase) override;

    /// Own map first, then the document's route.
    Route RouteCommand(unsigned id) override;

protected:
    /// The PrintCommands.
    const CommandMap& GetCommandMap() const override;
    /// Fills the clip box with the background. The base takes white.
    virtual void OnEraseBackground(CDC& dc);
    /// Views delete themselves with their window.
    void PostNcDestroy() override;

private:
    friend class CDocument;
    void OnFilePrint();
    void OnFilePrintDirect();
    void OnFilePrintPreview();
    void PrintJob(CPrintInfo& info);
    bool PrintPages(CDC& dc, CPrintInfo& info);

    CDocument* m_Document = nullptr;
};

/// A view with scroll bars: total size, page and line sizes in pixels, and the position.
class QUOREL_API CScrollView : public CView {
public:
    /// Sets the sizes and goes to a position, clamped to the range.
    void SetScrollSizes(CSize total, CSize page, CSize line, CPoint position = {});
    CSize GetTotalSize() const { return m_Total; }
    CSize GetPageSize() const { return m_Page; }
    CSize GetLineSize() const { return m_Line; }
    CPoint GetScrollPosition() const { return m_Position; }
    /// The greatest position: total less client size, at least 0 each.
    CPoint GetScrollLimit() const;
    /// Goes to a position, clamped to the range, and puts the scroll bars there. Moves no pixels.
    void SetScrollPosition(CPoint position);
    /// As SetScrollPosition, and moves the window's content along.
    void ScrollToPosition(CPoint position);

protected:
    const MessageMap& GetMessageMap() const override;
    /// A bar asks for a ScrollCode, of the thumb with a position: scrolls by line and page sizes.
    std::intptr_t OnHScroll(std::uintptr_t code, std::intptr_t position);
    std::intptr_t OnVScroll(std::uintptr_t code, std::intptr_t position);

private:
    void ShowScrollBars();
    void InvalidateUncovered(CSize distance);

    CSize m_Total;
    CSize m_Page;
    CSize m_Line;
    CPoint m_Position;
};
