/// CNetlistMDIChildWnd: the frame of all editors.
#pragma once

#include "frame.h"

/// Tells the view that gains or loses activation, once its own activation is through.
class CNetlistMDIChildWnd : public CMDIChildWnd {
public:
    CNetlistMDIChildWnd();
    ~CNetlistMDIChildWnd() override;

protected:
    void OnMDIActivate(bool activate, CFrameWnd* gaining, CFrameWnd* losing) override;
};
