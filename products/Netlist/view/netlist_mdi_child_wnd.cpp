#include "netlist_mdi_child_wnd.h"

#include "sim_edit_view.h"

namespace {

CSimEditView* TextViewOf(const CFrameWnd* frame) {
    return dynamic_cast<CSimEditView*>(frame ? frame->GetActiveView() : nullptr);
}

void SetBusy(CSimEditView* view, bool busy) {
    if (view)
        view->SetBusy(busy);
}

} // namespace

CNetlistMDIChildWnd::CNetlistMDIChildWnd() = default;

CNetlistMDIChildWnd::~CNetlistMDIChildWnd() = default;

void CNetlistMDIChildWnd::OnMDIActivate(bool activate, CFrameWnd* gaining, CFrameWnd* losing) {
    CSimEditView* const gains = TextViewOf(gaining);
    CSimEditView* const loses = TextViewOf(losing);
    SetBusy(gains, true);
    SetBusy(loses, true);
    CMDIChildWnd::OnMDIActivate(activate, gaining, losing);
    if (CSimEditView* told = activate ? gains : loses)
        told->ActivationNotice(activate, gains, loses);
    SetBusy(gains, false);
    SetBusy(loses, false);
}
