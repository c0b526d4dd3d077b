#include "document.h"

#include <algorithm>

#include "assertion.h"
#include "doc_template.h"
#include "frame.h"
#include "view.h"

CDocument::CDocument() = default;

CDocument::~CDocument() {
    for (CView* view : m_Views)
        view->m_Document = nullptr;
    if (m_Template)
        m_Template->RemoveDocument(this);
}

void CDocument::AddView(CView* view) {
    USE_ASSERT(view && !view->m_Document);
    if (!view || view->m_Document)
        return;
    m_Views.push_back(view);
    view->m_Document = this;
}

void CDocument::RemoveView(CView* view) {
    const auto place = std::ranges::find(m_Views, view);
    if (place == m_Views.end())
        return;
    m_Views.erase(place);
    view->m_Document = nullptr;
    if (m_Views.empty() && m_AutoDelete)
        delete this;
}

void CDocument::UpdateAllViews(CView* sender, std::intptr_t hint, CObject* object) {
    for (std::size_t i = 0; i < m_Views.size();) {
        CView* const view = m_Views[i];
        if (view != sender)
            view->OnUpdate(sender, hint, object);
        // A view that has left makes its successor the present one.
        if (i < m_Views.size() && m_Views[i] == view)
            ++i;
    }
}

void CDocument::SendInitialUpdate() {
    const std::vector<CView*> views = m_Views;
    for (CView* view : views)
        view->OnInitialUpdate();
}

void CDocument::SetTitle(const AString& title) {
    m_Title = title;
    for (CView* view : m_Views)
        if (CFrameWnd* frame = view->GetParentFrame())
            frame->SetWindowText(title);
}

void CDocument::Serialize(CArchive&) {}

bool CDocument::OnNewDocument() {
    DeleteContents();
    SetModifiedFlag(false);
    m_PathName.clear();
    return true;
}

void CDocument::DeleteContents() {}

void CDocument::OnCloseDocument() {
    const bool autoDelete = m_AutoDelete;
    m_AutoDelete = false;
    while (!m_Views.empty()) {
        CView* const view = m_Views.back();
        CFrameWnd* const frame = view->GetParentFrame();
        if (CWnd* const window = frame ? static_cast<CWnd*>(frame) : view; window->IsCreated())
            window->DestroyWindow();
        if (!m_Views.empty() && m_Views.back() == view)
            RemoveView(view);
    }
    m_AutoDelete = autoDelete;
    if (autoDelete)
        delete this;
}

CCmdTarget::Route CDocument::RouteCommand(unsigned id) {
    const Route own = CCmdTarget::RouteCommand(id);
    return own.m_Target || !m_Template ? own : m_Template->RouteCommand(id);
}
