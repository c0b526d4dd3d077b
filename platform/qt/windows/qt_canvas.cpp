#include "qt_canvas.h"

#include <cmath>

#include <QApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QStyleHints>

#include "accessible_canvas.h"
#include "qt_seat.h"
#include "qt_text.h"
#include "view_window.h"

namespace {

constexpr auto kFlush = static_cast<QEvent::Type>(QEvent::User + 1);
constexpr auto kRatioChanged = static_cast<QEvent::Type>(QEvent::User + 2);

/// Typing and moving belong to the text, also where the host has such a key as a shortcut.
bool IsForText(const QKeyEvent& key) {
    const bool function = key.key() >= Qt::Key_F1 && key.key() <= Qt::Key_F35;
    return !function && !(key.modifiers() & (Qt::ControlModifier | Qt::AltModifier));
}

} // namespace

Canvas::Canvas(ViewWindow& window, QWidget* parent) : QWidget(parent), m_Window(&window) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_InputMethodEnabled);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::IBeamCursor);
}

CPoint Canvas::ToDevice(QPointF place) const {
    const double ratio = devicePixelRatioF();
    return {static_cast<int>(std::floor(place.x() * ratio)),
            static_cast<int>(std::floor(place.y() * ratio))};
}

QRect Canvas::FromDevice(const CRect& part) const {
    const double ratio = devicePixelRatioF();
    return QRectF(part.left / ratio, part.top / ratio, part.Width() / ratio, part.Height() / ratio)
        .toAlignedRect();
}

void Canvas::ShowPart(const CRect& part) {
    update(FromDevice(part));
}

void Canvas::RequestFlush() {
    if (m_FlushAsked)
        return;
    m_FlushAsked = true;
    QCoreApplication::postEvent(this, new QEvent(kFlush));
}

void Canvas::Flush() {
    m_FlushAsked = false;
    if (!m_Window)
        return;
    const bool caretMoved = m_Window->IsCaretMoved();
    ShowPart(m_Window->TakeDrawn());
    if (!caretMoved || !hasFocus())
        return;
    QGuiApplication::inputMethod()->update(Qt::ImCursorRectangle);
    AccessibleCanvas::TellChanges(*this);
}

bool Canvas::event(QEvent* event) {
    switch (static_cast<int>(event->type())) {
    case kFlush:
        Flush();
        return true;
    case kRatioChanged:
        if (m_Window)
            m_Window->ClientChanged();
        return true;
    case QEvent::ScreenChangeInternal: {
        const bool handled = QWidget::event(event);
        if (m_Window)
            m_Window->ClientChanged();
        return handled;
    }
    case QEvent::ShortcutOverride:
        if (!IsForText(static_cast<QKeyEvent&>(*event)))
            return QWidget::event(event);
        event->accept();
        return true;
    default:
        return QWidget::event(event);
    }
}

void Canvas::paintEvent(QPaintEvent* event) {
    if (m_Window)
        m_Window->Update();
    QPainter painter(this);
    if (!m_Window) {
        painter.fillRect(event->rect(), Qt::white);
        return;
    }
    const double ratio = devicePixelRatioF();
    const QImage& image = m_Window->GetImage();
    if (ratio != m_Window->GetRatio()) {
        painter.drawImage(rect(), image); // until the view has drawn anew
        QCoreApplication::postEvent(this, new QEvent(kRatioChanged));
        return;
    }
    // One unit of the painter is a pixel of the screen from here on. The canvas itself may begin
    // between two of them; the image begins at the nearer one.
    const QPointF corner = painter.deviceTransform().map(QPointF(0, 0));
    painter.scale(1 / ratio, 1 / ratio);
    painter.translate(std::round(corner.x()) - corner.x(), std::round(corner.y()) - corner.y());
    for (const QRect& rect : event->region()) {
        const QRect part =
            QRectF(rect.x() * ratio, rect.y() * ratio, rect.width() * ratio, rect.height() * ratio)
                .toAlignedRect()
                .adjusted(-1, -1, 1, 1);
        if (!image.rect().contains(part))
            painter.fillRect(part, Qt::white); // a last pixel that the screen has in part only
        const QRect shown = part.intersected(image.rect());
        painter.drawImage(shown.topLeft(), image, shown);
    }
    PaintCaret(painter);
    PaintPreedit(painter);
}

void Canvas::PaintCaret(QPainter& painter) const {
    if (!m_CaretOn || !hasFocus() || !m_Window->GetCaret())
        return;
    painter.setCompositionMode(QPainter::CompositionMode_Difference); // from white: inversion
    painter.fillRect(ToQt(*m_Window->GetCaret()), Qt::white);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void Canvas::PaintPreedit(QPainter& painter) const {
    if (m_Preedit.isEmpty() || !m_Window->GetCaret())
        return;
    const QtFont& font = m_Window->GetSeat().m_DefaultFont;
    const CRect caret = *m_Window->GetCaret();
    QFont shown = font.GetControlFont();
    shown.setPixelSize(std::max(caret.Height() * 4 / 5, 1));
    painter.setFont(shown);
    const int width = painter.fontMetrics().horizontalAdvance(m_Preedit);
    const QRect box(caret.left, caret.top, width, caret.Height());
    painter.fillRect(box, Qt::white);
    painter.setPen(Qt::black);
    painter.drawText(box, Qt::AlignVCenter | Qt::AlignLeft, m_Preedit);
    painter.drawLine(box.bottomLeft(), box.bottomRight());
}

void Canvas::CaretChanged(const CRect& before, const CRect& now) {
    if (!before.IsEmpty())
        ShowPart(before);
    if (now.IsEmpty())
        return;
    ShowPart(now);
    RequestFlush();
    RestartBlinking();
}

void Canvas::RestartBlinking() {
    m_CaretOn = true;
    const int period = QGuiApplication::styleHints()->cursorFlashTime();
    if (period > 0 && hasFocus())
        m_Blinking.start(period / 2, this);
    else
        m_Blinking.stop();
}

void Canvas::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_Blinking.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    m_CaretOn = !m_CaretOn;
    if (!m_Window || !m_Window->GetCaret())
        m_Blinking.stop();
    else
        ShowPart(*m_Window->GetCaret());
}

void Canvas::focusInEvent(QFocusEvent*) {
    const QPointer<Canvas> guard(this);
    if (m_Window)
        m_Window->GetSeat().m_Focus.Move(m_Window);
    if (!guard || !m_Window || !m_Window->GetCaret())
        return;
    RestartBlinking();
    ShowPart(*m_Window->GetCaret());
}

void Canvas::focusOutEvent(QFocusEvent* event) {
    m_Blinking.stop();
    if (m_Window && m_Window->GetCaret())
        ShowPart(*m_Window->GetCaret());
    // A menu borrows the keyboard; the window keeps the focus meanwhile.
    if (m_Window && event->reason() != Qt::PopupFocusReason &&
        m_Window->GetSeat().m_Focus.Get() == m_Window)
        m_Window->GetSeat().m_Focus.Move(nullptr);
}

void Canvas::inputMethodEvent(QInputMethodEvent* event) {
    const QPointer<Canvas> guard(this);
    m_Preedit = event->preeditString();
    event->accept();
    SendText(event->commitString(), Qt::NoModifier);
    if (guard)
        update();
}

QVariant Canvas::inputMethodQuery(Qt::InputMethodQuery query) const {
    switch (query) {
    case Qt::ImEnabled:
        return true;
    case Qt::ImCursorRectangle:
        return m_Window && m_Window->GetCaret() ? FromDevice(*m_Window->GetCaret()) : QRect();
    case Qt::ImHints:
        return static_cast<int>(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase |
                                Qt::ImhMultiLine);
    default:
        return QWidget::inputMethodQuery(query);
    }
}
