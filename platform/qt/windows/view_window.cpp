#include "view_window.h"

#include <algorithm>
#include <cstring>

#include <QPainter>

#include "frame_window.h"
#include "qt_canvas.h"
#include "qt_seat.h"
#include "qt_text.h"

ViewWindow::ViewWindow(QtSeat& seat, FrameWindow* frame, IWindowSink& sink)
    : QtWindow(seat, sink), m_Frame(frame),
      m_Surface(m_Image, m_Ratio, seat.m_DefaultFont, [this](const CRect& part) { Drawn(part); }) {
    m_Area = new ViewArea(*this);
    if (frame) {
        m_FrameShell = frame->GetWidget();
        frame->TakeView(*m_Area);
    }
    MakeImage(GetDeviceSize(m_Area->GetCanvas()), m_Area->GetCanvas().devicePixelRatioF());
}

ViewWindow::~ViewWindow() {
    m_Seat.Leave(*this);
    if (m_Area)
        m_Area->Close();
}

QWidget* ViewWindow::GetClient() const {
    return m_Area ? &m_Area->GetCanvas() : nullptr;
}

void ViewWindow::MakeImage(CSize size, double ratio) {
    QImage image(size.cx, size.cy, QImage::Format_RGB32);
    image.fill(Qt::white);
    if (!m_Image.isNull() && ratio == m_Ratio)
        QPainter(&image).drawImage(0, 0, m_Image);
    m_Image = image;
    m_Ratio = ratio;
    m_Drawn = {};
    Invalidate({0, 0, m_Image.width(), m_Image.height()}, true);
}

void ViewWindow::ClientChanged() {
    if (!m_Area || m_Image.isNull())
        return;
    const Canvas& canvas = m_Area->GetCanvas();
    const CSize size = GetDeviceSize(canvas);
    const double ratio = canvas.devicePixelRatioF();
    const bool isNewRatio = ratio != m_Ratio;
    if (size == GetClientSize() && !isNewRatio)
        return;
    MakeImage(size, ratio);
    const QPointer<ViewArea> guard(m_Area);
    if (isNewRatio)
        Send(kMsgDpiChanged);
    if (guard && guard->GetViewWindow())
        Send(kMsgSize, 0, MakePointValue(m_Image.width(), m_Image.height()));
}

CRect ViewWindow::GetWindowRect() {
    if (m_Frame && m_FrameShell)
        return m_Frame->GetWindowRect();
    const CSize client = GetClientSize();
    const CPoint start = ClientToScreen({0, 0});
    return {start.x, start.y, start.x + client.cx, start.y + client.cy};
}

void ViewWindow::Invalidate(const CRect& rect, bool erase) {
    const CRect part = rect.Intersect({0, 0, m_Image.width(), m_Image.height()});
    if (part.IsEmpty() || !m_Area)
        return;
    m_Invalid = m_Invalid.Union(part);
    m_Erase = m_Erase || erase;
    m_Area->GetCanvas().ShowPart(part);
}

void ViewWindow::Update() {
    if (m_Invalid.IsEmpty())
        return;
    const CRect invalid = m_Invalid;
    const bool erase = m_Erase;
    m_Invalid = {};
    m_Erase = false;
    ImageSurface surface(m_Image, m_Ratio, m_Seat.m_DefaultFont,
                         [this](const CRect& part) { Drawn(part); });
    surface.SetClip(&invalid);
    m_Sink.HandlePaint(surface, erase);
}

void ViewWindow::Drawn(const CRect& part) {
    if (m_Drawn.IsEmpty() && m_Area)
        m_Area->GetCanvas().RequestFlush();
    m_Drawn = m_Drawn.Union(part);
}

CRect ViewWindow::TakeDrawn() {
    m_CaretMoved = false;
    return std::exchange(m_Drawn, {});
}

void ViewWindow::ScrollPixels(CSize distance, const CRect& area) {
    const CRect all = area.Intersect({0, 0, m_Image.width(), m_Image.height()});
    const CRect to = all.Offset(distance.cx, distance.cy).Intersect(all);
    if (to.IsEmpty())
        return;
    const auto length = static_cast<std::size_t>(to.Width()) * sizeof(QRgb);
    const bool down = distance.cy > 0;
    for (int i = 0; i < to.Height(); ++i) {
        const int y = down ? to.bottom - 1 - i : to.top + i; // no row is overwritten unread
        std::memmove(m_Image.scanLine(y) + static_cast<std::size_t>(to.left) * sizeof(QRgb),
                     m_Image.constScanLine(y - distance.cy) +
                         static_cast<std::size_t>(to.left - distance.cx) * sizeof(QRgb),
                     length);
    }
    const CRect moved = m_Invalid.Intersect(all);
    if (!moved.IsEmpty())
        m_Invalid = m_Invalid.Union(moved.Offset(distance.cx, distance.cy).Intersect(all));
    Drawn(to);
}

IBackendSurface& ViewWindow::GetSurface() {
    m_Surface.SetOrigin({});
    m_Surface.SetClip(nullptr);
    return m_Surface;
}

void ViewWindow::SetCaret(const CRect* caret) {
    const std::optional<CRect> before = m_Caret;
    m_Caret = caret ? std::optional(*caret) : std::nullopt;
    if (before == m_Caret || !m_Area)
        return;
    m_CaretMoved = m_CaretMoved || m_Caret;
    m_Area->GetCanvas().CaretChanged(before.value_or(CRect{}), m_Caret.value_or(CRect{}));
}

void ViewWindow::SetFocus() {
    m_Seat.m_Focus.Move(this);
    if (m_Area && m_Seat.m_Focus.Get() == this)
        m_Area->GetCanvas().setFocus();
}

void ViewWindow::SetScrollBar(ScrollBar bar, const ScrollInfo& info) {
    if (m_Area)
        m_Area->SetBar(bar, info);
}
