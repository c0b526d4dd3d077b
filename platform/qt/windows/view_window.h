/// ViewWindow: the window of a view, drawn by way of an image.
#pragma once

#include <optional>

#include <QImage>

#include "image_surface.h"
#include "qt_window.h"
#include "view_area.h"

class FrameWindow;

/// The client area is an image with one pixel for each of the screen's. The view draws into it,
/// inverts and scrolls it; the canvas shows it, with the caret laid over.
///
/// Why device pixels: at a ratio of 1.25 the edges of Qt's pixels fall between the screen's, so
/// that rows of 15 of Qt's pixels would be 18 or 19 of the screen's, by their place; moving pixels
/// by a row could not be exact then, nor inversion seamless. Counted in the screen's pixels, a font
/// has a whole cell at every ratio, and every operation is exact.
class QUOREL_API ViewWindow : public QtWindow {
public:
    ViewWindow(QtSeat& seat, FrameWindow* frame, IWindowSink& sink);
    ~ViewWindow() override;

    QWidget* GetWidget() const override { return m_Area; }

    /// @name Called by the widgets
    /// @{
    /// The client's size or its pixel ratio may have changed.
    void ClientChanged();
    const QImage& GetImage() const { return m_Image; }
    double GetRatio() const { return m_Ratio; }
    const std::optional<CRect>& GetCaret() const { return m_Caret; }
    /// What has been drawn since the last call.
    CRect TakeDrawn();
    bool IsCaretMoved() const { return m_CaretMoved; }
    /// @}

    CSize GetClientSize() override { return {m_Image.width(), m_Image.height()}; }
    CRect GetWindowRect() override;
    void Invalidate(const CRect& rect, bool erase) override;
    void Update() override;
    void ScrollPixels(CSize distance, const CRect& area) override;
    IBackendSurface& GetSurface() override;
    void SetCaret(const CRect* caret) override;
    /// Qt gives the pointer to the widget where a button went down until it goes up, which is all
    /// that a view captures it for.
    void SetCapture(bool) override {}
    void SetFocus() override;
    void SetScrollBar(ScrollBar bar, const ScrollInfo& info) override;
    void SetTitle(const AString&) override {}
    void Show(int) override {}
    WindowPlacement GetPlacement() override { return {}; }
    void SetPlacement(const WindowPlacement&) override {}

protected:
    QWidget* GetClient() const override;

private:
    void MakeImage(CSize size, double ratio);
    void Drawn(const CRect& part);

    FrameWindow* m_Frame;
    QPointer<QWidget> m_FrameShell; ///< null: the frame is gone
    QPointer<ViewArea> m_Area;
    QImage m_Image;
    double m_Ratio = 1;
    ImageSurface m_Surface;
    CRect m_Invalid;
    bool m_Erase = false;
    CRect m_Drawn;
    std::optional<CRect> m_Caret;
    bool m_CaretMoved = false;
};
