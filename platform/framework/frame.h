/// CFrameWnd, CMDIChildWnd: the frame around a view.
#pragma once

#include "view.h"

class CDocument;

/// A frame with one active view. Frames delete themselves with their window. The user closes the
/// last frame of a document only if that agrees, see CDocument::SaveModified.
class QUOREL_API CFrameWnd : public CWnd {
public:
    CFrameWnd();
    ~CFrameWnd() override;

    CView* GetActiveView() const { return m_ActiveView; }
    /// With notify, tells the view before that it stops, then the new one that it starts; null:
    /// none.
    void SetActiveView(CView* view, bool notify = true);
    /// The document of the active view, null when there is none.
    CDocument* GetActiveDocument() const;
    /// Shows the frame, by a ShowCommand, and makes it the active one.
    virtual void ActivateFrame(int showCommand = kShowDefault);

    /// Without a screen side: what was set last.
    WindowPlacement GetPlacement() const;
    void SetPlacement(const WindowPlacement& placement);

    /// The active view's route first, then the own map.
    Route RouteCommand(unsigned id) override;
    /// A key among the default accelerators of the active document runs its command; it is taken
    /// even while the command is disabled.
    bool PreTranslateKey(unsigned key, unsigned modifiers) override;

protected:
    const MessageMap& GetMessageMap() const override;
    void PostNcDestroy() override;

private:
    friend class CView;
    std::intptr_t OnClose(std::uintptr_t first, std::intptr_t second);
    std::intptr_t OnCommand(std::uintptr_t first, std::intptr_t second);

    CView* m_ActiveView = nullptr;
    WindowPlacement m_Placement;
};

/// One of the frames among which exactly one is active at a time.
class QUOREL_API CMDIChildWnd : public CFrameWnd {
public:
    CMDIChildWnd();
    ~CMDIChildWnd() override;

    /// The active one of all such frames, null when there is none.
    static CMDIChildWnd* GetActiveChild();
    void ActivateFrame(int showCommand = kShowDefault) override;

protected:
    const MessageMap& GetMessageMap() const override;
    /// This frame gains (activate) or loses activation; either of the two frames may be null. The
    /// base tells the frame's active view.
    virtual void OnMDIActivate(bool activate, CFrameWnd* gaining, CFrameWnd* losing);

private:
    std::intptr_t OnUserActivates(std::uintptr_t first, std::intptr_t second);
    std::intptr_t OnDestroy(std::uintptr_t first, std::intptr_t second);
    void MakeActive();
};
