#include "doc_template.h"

#include <algorithm>
#include <memory>

#include "assertion.h"
#include "document.h"
#include "frame.h"

CDocTemplate::CDocTemplate(unsigned resourceId, DocumentMaker document, FrameMaker frame,
                           ViewMaker view)
    : m_ResourceId(resourceId), m_MakeDocument(document), m_MakeFrame(frame), m_MakeView(view) {}

CDocTemplate::~CDocTemplate() {
    while (!m_Documents.empty()) {
        CDocument* const document = m_Documents.back();
        RemoveDocument(document);
        delete document;
    }
}

void CDocTemplate::AddDocument(CDocument* document) {
    USE_ASSERT(document && !document->m_Template);
    if (!document || document->m_Template)
        return;
    m_Documents.push_back(document);
    document->m_Template = this;
}

void CDocTemplate::RemoveDocument(CDocument* document) {
    // Documents mostly go in the reverse order of their coming.
    const auto place = std::find(m_Documents.rbegin(), m_Documents.rend(), document);
    if (place == m_Documents.rend())
        return;
    m_Documents.erase(std::next(place).base());
    document->m_Template = nullptr;
}

CDocument* CDocTemplate::CreateNewDocument() {
    CDocument* const document = m_MakeDocument ? m_MakeDocument() : nullptr;
    if (document)
        AddDocument(document);
    return document;
}

CFrameWnd* CDocTemplate::CreateNewFrame(CDocument* document) {
    if (!document || !m_MakeFrame || !m_MakeView)
        return nullptr;
    std::unique_ptr<CFrameWnd> frame(m_MakeFrame());
    std::unique_ptr<CView> view(m_MakeView());
    if (!frame->Create(WindowKind::frame, nullptr))
        return nullptr;
    CFrameWnd* const made = frame.release(); // it and the view end with their windows from here on
    document->AddView(view.get());
    if (!view->Create(WindowKind::view, made)) {
        view.reset();
        made->DestroyWindow();
        return nullptr;
    }
    made->SetActiveView(view.release(), false);
    return made;
}

void CDocTemplate::InitialUpdateFrame(CFrameWnd* frame, CDocument* document, bool makeVisible) {
    if (!frame || !document)
        return;
    if (CView* view = frame->GetActiveView())
        view->OnInitialUpdate();
    frame->SetWindowText(document->GetTitle());
    if (makeVisible)
        frame->ActivateFrame();
}

void CDocTemplate::CloseAllDocuments() {
    const std::vector<CDocument*> documents = m_Documents;
    for (CDocument* document : documents)
        if (std::ranges::find(m_Documents, document) != m_Documents.end())
            document->OnCloseDocument();
}

CMultiDocTemplate::~CMultiDocTemplate() = default;
