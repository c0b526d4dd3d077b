// The canvas's keyboard and pointer: Qt's events become messages.

#include <cmath>

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QWheelEvent>

#include "qt_canvas.h"
#include "qt_keys.h"
#include "qt_seat.h"
#include "qt_text.h"
#include "view_window.h"

namespace {

constexpr double kNotch = 120;
/// Rows or columns that a notch moves, for touchpads, which tell pixels.
constexpr int kLinesPerNotch = 2;
constexpr int kColumnsPerNotch = 3;
/// A key or character from the keyboard: pressed once.
constexpr std::intptr_t kOnce = 1;

double TakeNotches(double& rest, double turned) {
    rest += turned;
    const double whole = std::trunc(rest / kNotch) * kNotch;
    rest -= whole;
    return whole;
}

} // namespace

std::intptr_t Canvas::Send(unsigned message, std::uintptr_t first, std::intptr_t second) {
    return m_Window ? m_Window->Send(message, first, second) : 0;
}

void Canvas::keyPressEvent(QKeyEvent* event) {
    if (!m_Window)
        return;
    const QPointer<Canvas> guard(this);
    const IAccessibleText::Range before = GetSelection();
    if (event->key() == Qt::Key_Shift && !event->isAutoRepeat())
        m_BeforeShift = before;
    TakeKey(*event);
    // While Shift is held the selection grows: it is offered at its end.
    if (guard && !event->modifiers().testFlag(Qt::ShiftModifier) && GetSelection() != before)
        OfferSelection();
}

void Canvas::TakeKey(QKeyEvent& event) {
    const QPointer<Canvas> guard(this);
    const QString text = event.text();
    const unsigned key = KeyCodeOf(event.key());
    m_Window->GetSeat().NoteModifiers(event.modifiers());
    if (key == 0 && text.isEmpty()) {
        event.ignore();
        return;
    }
    event.accept();
    if (key != 0) {
        if (m_Window->GetSink().PreTranslateKey(key, ModifiersOf(event.modifiers())) || !guard)
            return;
        Send(kMsgKeyDown, key, kOnce);
    }
    if (guard)
        SendText(text, event.modifiers());
}

void Canvas::SendText(const QString& text, Qt::KeyboardModifiers modifiers) {
    constexpr char16_t kRubout = 0x7F; // what the Delete key gives as its text
    if (modifiers & (Qt::AltModifier | Qt::MetaModifier))
        return;
    const QPointer<Canvas> guard(this);
    for (const QChar c : text) {
        const char16_t unit = c.unicode();
        if (unit == kRubout || (unit >= u' ' && modifiers.testFlag(Qt::ControlModifier)))
            continue;
        Send(kMsgChar, unit, kOnce);
        if (!guard)
            return;
    }
}

void Canvas::keyReleaseEvent(QKeyEvent* event) {
    const QPointer<Canvas> guard(this);
    const unsigned key = KeyCodeOf(event->key());
    if (m_Window)
        m_Window->GetSeat().NoteModifiers(event->modifiers());
    if (key != 0 && !event->isAutoRepeat())
        Send(kMsgKeyUp, key, kOnce);
    if (guard && event->key() == Qt::Key_Shift && !event->isAutoRepeat() &&
        GetSelection() != m_BeforeShift)
        OfferSelection();
}

void Canvas::SendPointer(unsigned message, QPointF place, Qt::KeyboardModifiers modifiers) {
    if (!m_Window)
        return;
    m_Window->GetSeat().NoteModifiers(modifiers);
    m_Window->GetSeat().NotePointer(*this);
    const CPoint at = ToDevice(place);
    Send(message, ModifiersOf(modifiers), MakePointValue(at.x, at.y));
}

void Canvas::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        SendPointer(kMsgLButtonDown, event->position(), event->modifiers());
    else if (event->button() == Qt::MiddleButton)
        PasteSelection(event->position());
}

void Canvas::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        SendPointer(kMsgLButtonDblClk, event->position(), event->modifiers());
    else if (event->button() == Qt::MiddleButton)
        PasteSelection(event->position());
}

void Canvas::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const QPointer<Canvas> guard(this);
    SendPointer(kMsgLButtonUp, event->position(), event->modifiers());
    if (guard)
        OfferSelection();
}

void Canvas::mouseMoveEvent(QMouseEvent* event) {
    const QPointer<Canvas> guard(this);
    if (m_Window)
        m_Window->GetSeat().NotePointer(*this);
    if (Send(kMsgSetCursor, 0, 0) == 0 && guard && cursor().shape() != Qt::IBeamCursor)
        setCursor(Qt::IBeamCursor);
    if (guard)
        SendPointer(kMsgMouseMove, event->position(), event->modifiers());
}

void Canvas::PasteSelection(QPointF place) {
    const QClipboard& clipboard = *QGuiApplication::clipboard();
    if (!clipboard.supportsSelection() || !m_Window)
        return;
    const QString text = clipboard.text(QClipboard::Selection);
    if (text.isEmpty())
        return;
    const QPointer<Canvas> guard(this);
    QtSeat& seat = m_Window->GetSeat();
    seat.m_PrimaryPaste = FromQt(text);
    SendPointer(kMsgLButtonDown, place, Qt::NoModifier);
    if (guard)
        SendPointer(kMsgLButtonUp, place, Qt::NoModifier);
    if (guard)
        Send(kMsgPaste, 0, 0);
    seat.m_PrimaryPaste.reset();
}

/// What is selected, for a screen that has a middle button's text; empty elsewhere.
IAccessibleText::Range Canvas::GetSelection() const {
    IAccessibleText* text = m_Window ? m_Window->GetSink().GetAccessibleText() : nullptr;
    return text && QGuiApplication::clipboard()->supportsSelection() ? text->GetSelection()
                                                                     : IAccessibleText::Range{};
}

/// Offers what is selected to the middle button.
void Canvas::OfferSelection() {
    QClipboard& clipboard = *QGuiApplication::clipboard();
    IAccessibleText* text = m_Window ? m_Window->GetSink().GetAccessibleText() : nullptr;
    if (!text || !clipboard.supportsSelection())
        return;
    if (const AString selected = text->GetSelectedText(); !selected.empty())
        clipboard.setText(WithPlainLineEnds(selected), QClipboard::Selection);
}

void Canvas::wheelEvent(QWheelEvent* event) {
    if (!m_Window || event->modifiers().testFlag(Qt::ControlModifier)) {
        event->ignore(); // for the host: a larger or smaller font
        return;
    }
    event->accept();
    m_Window->GetSeat().NoteModifiers(event->modifiers());
    const auto& area = static_cast<const ViewArea&>(*m_Window->GetWidget());
    const double line = area.GetBar(ScrollBar::vertical).m_Line;
    const double column = area.GetBar(ScrollBar::horizontal).m_Line;
    const QPointF pixels = QPointF(event->pixelDelta()) * devicePixelRatioF();
    const bool inPixels = !event->pixelDelta().isNull() && line > 0 && column > 0;
    const double down =
        inPixels ? pixels.y() * kNotch / (kLinesPerNotch * line) : event->angleDelta().y();
    const double across =
        inPixels ? pixels.x() * kNotch / (kColumnsPerNotch * column) : event->angleDelta().x();
    const QPointer<Canvas> guard(this);
    if (const double whole = TakeNotches(m_WheelRest.m_Down, down); whole != 0)
        SendWheel(whole);
    if (guard)
        if (const double whole = TakeNotches(m_WheelRest.m_Across, across); whole != 0)
            SendWheelAcross(whole);
}

void Canvas::SendWheel(double down) {
    Send(kMsgMouseWheel, static_cast<std::uintptr_t>(static_cast<std::intptr_t>(down)), 0);
}

void Canvas::SendWheelAcross(double across) {
    const QPointer<Canvas> guard(this);
    const auto steps = static_cast<int>(std::abs(across) / kNotch) * kColumnsPerNotch;
    for (int i = 0; i < steps && guard; ++i)
        Send(kMsgHScroll, across > 0 ? kScrollLineUp : kScrollLineDown, 0);
}

void Canvas::contextMenuEvent(QContextMenuEvent* event) {
    QPointF at = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard && m_Window && m_Window->GetCaret())
        at = mapToGlobal(QPointF(FromDevice(*m_Window->GetCaret()).bottomLeft()));
    if (m_Window)
        m_Window->GetSeat().NotePointer(*this);
    const CPoint screen = QtSeat::ToScreen(at);
    Send(kMsgContextMenu, 0, MakePointValue(screen.x, screen.y));
    event->accept();
}
