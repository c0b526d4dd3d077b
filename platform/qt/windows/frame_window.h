/// FrameWindow: the frame around a view.
#pragma once

#include <QImage>

#include "qt_window.h"

class QMdiSubWindow;
class ViewArea;

/// A sub window of the frame area, or a window of its own when there is no area. The body inside
/// lays out what a host puts there and the view, top to bottom.
class FrameWindow : public QtWindow {
public:
    FrameWindow(QtSeat& seat, IWindowSink& sink);
    ~FrameWindow() override;

    QWidget* GetWidget() const override { return m_Shell; }
    /// Puts a view into the body.
    void TakeView(ViewArea& view);

    /// @name Called by the shell's watcher
    /// @{
    void ShellMoved();
    void ShellClosing();
    void PointerOnTitle(QPointF global);
    /// @}

    CSize GetClientSize() override;
    CRect GetWindowRect() override;
    void Invalidate(const CRect&, bool) override {}
    void Update() override {}
    void ScrollPixels(CSize, const CRect&) override {}
    IBackendSurface& GetSurface() override;
    void SetCaret(const CRect*) override {}
    void SetCapture(bool) override {}
    void SetFocus() override;
    void SetScrollBar(ScrollBar, const ScrollInfo&) override {}
    void SetTitle(const AString& title) override;
    void Show(int showCommand) override;
    WindowPlacement GetPlacement() override;
    void SetPlacement(const WindowPlacement& placement) override;

protected:
    QWidget* GetClient() const override { return m_Body; }

private:
    class Watcher;
    void ShowShell(int showCommand);

    QPointer<QWidget> m_Body;
    QPointer<QWidget> m_Shell; ///< the sub window, or the body itself
    QPointer<ViewArea> m_View;
    Watcher* m_Watcher;
    WindowPlacement m_Placement;
    std::unique_ptr<IBackendSurface> m_Surface;
    QImage m_NoImage;
    double m_Ratio = 1;
};
