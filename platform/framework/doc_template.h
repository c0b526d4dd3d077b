/// CDocTemplate, CMultiDocTemplate: what makes documents with their frames and views.
#pragma once

#include <vector>

#include "cmd_target.h"

class CDocument;
class CFrameWnd;
class CView;

/// A list of documents of one sort. It owns those that are in the list when it is destroyed; a
/// document destroyed before leaves the list by itself.
class QUOREL_API CDocTemplate : public CCmdTarget {
public:
    /// Make an object by `new`; null where a document needs arguments that only others have.
    using DocumentMaker = CDocument* (*)();
    using FrameMaker = CFrameWnd* (*)();
    using ViewMaker = CView* (*)();

    CDocTemplate(unsigned resourceId, DocumentMaker document, FrameMaker frame, ViewMaker view);
    ~CDocTemplate() override;

    unsigned GetResourceId() const { return m_ResourceId; }
    const std::vector<CDocument*>& GetDocuments() const { return m_Documents; }
    /// Puts a document that is in no template's list at the end; else an assertion, no change.
    void AddDocument(CDocument* document);
    /// Takes a document out of the list; one that isn't there changes nothing.
    void RemoveDocument(CDocument* document);

    /// A new document in the list; null without a maker.
    CDocument* CreateNewDocument();
    /// A new frame with a new view of the document, as the frame's active view, created but not
    /// shown. @return null without makers or when a window refused to be created
    CFrameWnd* CreateNewFrame(CDocument* document);
    /// Runs the initial update of the frame's view and shows the document's title in the frame;
    /// shows the frame when asked to.
    void InitialUpdateFrame(CFrameWnd* frame, CDocument* document, bool makeVisible);
    /// OnCloseDocument of every document in the list.
    void CloseAllDocuments();

private:
    unsigned m_ResourceId;
    DocumentMaker m_MakeDocument;
    FrameMaker m_MakeFrame;
    ViewMaker m_MakeView;
    std::vector<CDocument*> m_Documents;
};

/// A template whose documents each have frames of their own, any number of them.
class QUOREL_API CMultiDocTemplate : public CDocTemplate {
public:
    using CDocTemplate::CDocTemplate;
    ~CMultiDocTemplate() override;
};
