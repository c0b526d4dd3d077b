/// CDockSite: a window of a host on which toolbars stand.
#pragma once

#include "wnd.h"

/// Turns places in its client area into places on the screen and back. Without a screen side both
/// are the same.
class QUOREL_API CDockSite : public CWnd {
public:
    CDockSite();
    ~CDockSite() override;

    CPoint ClientToScreen(CPoint point) const;
    CPoint ScreenToClient(CPoint point) const;

protected:
    /// The place of the client area's upper left corner on the screen.
    virtual CPoint GetClientOrigin() const { return {}; }
};
