#include "netlist_mdi_child_wnd.h"

#include "sim_edit_view.h"

namespace {

CSimEditView* TextViewOf(const CFrameWnd* frame) {
    return dynamic_cast<CSimEditView*>(frame ? frame->GetActiveView() : nullptr);
}

/// Marks a view as busy for a while in which it may go.
class Busy {
public:
    explicit Busy(const CSimEditView* view) : m_Mark(view ? view->BusyMark() : nullptr) {
        Set(true);
    }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
    ~Busy() { Set(false); }

private:
    void Set(bool busy) {
        if (m_Mark)
            *m_Mark = busy;
    }
    std::shared_ptr<bool> m_Mark;
};

} // namespace

CNetlistMDIChildWnd::CNetlistMDIChildWnd() = default;

CNetlistMDIChildWnd::~CNetlistMDIChildWnd() = default;

void CNetlistMDIChildWnd::OnMDIActivate(bool activate, CFrameWnd* gaining, CFrameWnd* losing) {
    CSimEditView* const gains = TextViewOf(gaining);
    CSimEditView* const loses = TextViewOf(losing);
    const Busy gainsBusy(gains);
    const Busy losesBusy(loses);
    CMDIChildWnd::OnMDIActivate(activate, gaining, losing);
    if (CSimEditView* told = activate ? gains : loses)
        told->ActivationNotice(activate, gains, loses);
}
