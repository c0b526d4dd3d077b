#include "frame.h"

#include "accelerator.h"
#include "document.h"

namespace {

CMDIChildWnd* sActiveChild = nullptr;

} // namespace

CFrameWnd::CFrameWnd() = default;

CFrameWnd::~CFrameWnd() = default;

void CFrameWnd::SetActiveView(CView* view, bool notify) {
    CView* const before = m_ActiveView;
    if (before == view)
        return;
    m_ActiveView = nullptr;
    if (before && notify)
        before->OnActivateView(false, view, before);
    // The view told may have chosen another one.
    if (m_ActiveView || !view)
        return;
    m_ActiveView = view;
    if (notify)
        view->OnActivateView(true, view, before);
}

CDocument* CFrameWnd::GetActiveDocument() const {
    return m_ActiveView ? m_ActiveView->GetDocument() : nullptr;
}

void CFrameWnd::ActivateFrame(int showCommand) {
    if (IBackendWindow* window = GetBackendWindow())
        window->Show(showCommand);
}

WindowPlacement CFrameWnd::GetPlacement() const {
    IBackendWindow* const window = GetBackendWindow();
    return window ? window->GetPlacement() : m_Placement;
}

void CFrameWnd::SetPlacement(const WindowPlacement& placement) {
    m_Placement = placement;
    if (IBackendWindow* window = GetBackendWindow())
        window->SetPlacement(placement);
}

CCmdTarget::Route CFrameWnd::RouteCommand(unsigned id) {
    const Route view = m_ActiveView ? m_ActiveView->RouteCommand(id) : Route{};
    return view.m_Target ? view : CWnd::RouteCommand(id);
}

bool CFrameWnd::PreTranslateKey(unsigned key, unsigned modifiers) {
    CDocument* const document = GetActiveDocument();
    const CAcceleratorTable* keys = document ? document->GetDefaultAccelerator() : nullptr;
    const unsigned command = keys ? keys->FindCommand(key, modifiers) : 0;
    if (command == 0)
        return CWnd::PreTranslateKey(key, modifiers);
    RunCommand(command);
    return true;
}

const MessageMap& CFrameWnd::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {
        Message<&CFrameWnd::OnClose>(kMsgClose),
        Message<&CFrameWnd::OnCommand>(kMsgCommand),
    };
    static const MessageMap kMap{kEntries, &CWnd::GetMessageMap()};
    return kMap;
}

std::intptr_t CFrameWnd::OnClose(std::uintptr_t, std::intptr_t) {
    CDocument* const document = GetActiveDocument();
    const bool isLast = document && document->GetViews().size() == 1;
    if (!isLast || document->SaveModified())
        DestroyWindow();
    return 0;
}

std::intptr_t CFrameWnd::OnCommand(std::uintptr_t first, std::intptr_t) {
    return RunCommand(static_cast<unsigned>(first));
}

void CFrameWnd::PostNcDestroy() {
    delete this;
}

CMDIChildWnd::CMDIChildWnd() = default;

CMDIChildWnd::~CMDIChildWnd() {
    if (sActiveChild == this)
        sActiveChild = nullptr;
}

CMDIChildWnd* CMDIChildWnd::GetActiveChild() {
    return sActiveChild;
}

void CMDIChildWnd::ActivateFrame(int showCommand) {
    CFrameWnd::ActivateFrame(showCommand);
    MakeActive();
}

void CMDIChildWnd::MakeActive() {
    CMDIChildWnd* const losing = sActiveChild;
    if (losing == this)
        return;
    sActiveChild = this;
    if (losing)
        losing->OnMDIActivate(false, this, losing);
    if (sActiveChild == this)
        OnMDIActivate(true, this, losing);
}

void CMDIChildWnd::OnMDIActivate(bool activate, CFrameWnd*, CFrameWnd*) {
    if (CView* view = GetActiveView())
        view->OnActivateView(activate, view, view);
}

const MessageMap& CMDIChildWnd::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {
        Message<&CMDIChildWnd::OnUserActivates>(kMsgMdiActivate),
        Message<&CMDIChildWnd::OnDestroy>(kMsgDestroy),
    };
    static const MessageMap kMap{kEntries, &CFrameWnd::GetMessageMap()};
    return kMap;
}

std::intptr_t CMDIChildWnd::OnUserActivates(std::uintptr_t, std::intptr_t) {
    MakeActive();
    return 0;
}

std::intptr_t CMDIChildWnd::OnDestroy(std::uintptr_t, std::intptr_t) {
    if (sActiveChild == this) {
        sActiveChild = nullptr;
        OnMDIActivate(false, nullptr, this);
    }
    return 0;
}
