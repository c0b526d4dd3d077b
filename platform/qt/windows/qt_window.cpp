#include "qt_window.h"

#include <algorithm>
#include <cmath>

#include <QCoreApplication>
#include <QEvent>

#include "qt_seat.h"

namespace {

constexpr auto kPostedMessage = static_cast<QEvent::Type>(QEvent::User + 1);

class MessageEvent : public QEvent {
public:
    MessageEvent(unsigned message, std::uintptr_t first, std::intptr_t second)
        : QEvent(kPostedMessage), m_Message(message), m_First(first), m_Second(second) {}
    const unsigned m_Message;
    const std::uintptr_t m_First;
    const std::intptr_t m_Second;
};

} // namespace

/// Takes posted messages. Qt's queue keeps them in order over all windows, and lets other events in
/// before those that are posted while it is emptied.
class QtWindow::Mailbox : public QObject {
public:
    explicit Mailbox(QtWindow& window) : m_Window(&window) {}
    void Close() {
        m_Window = nullptr;
        QCoreApplication::removePostedEvents(this, kPostedMessage);
        deleteLater();
    }
    bool event(QEvent* event) override {
        if (event->type() != kPostedMessage)
            return QObject::event(event);
        const auto* message = static_cast<MessageEvent*>(event);
        if (m_Window)
            m_Window->Send(message->m_Message, message->m_First, message->m_Second);
        return true;
    }

private:
    QtWindow* m_Window;
};

QtWindow::QtWindow(QtSeat& seat, IWindowSink& sink)
    : m_Seat(seat), m_Sink(sink), m_Mailbox(new Mailbox(*this)) {}

QtWindow::~QtWindow() {
    m_Seat.Leave(*this);
    m_Mailbox->Close();
}

std::intptr_t QtWindow::Send(unsigned message, std::uintptr_t first, std::intptr_t second) {
    return m_Sink.HandleMessage(message, first, second);
}

void QtWindow::Post(unsigned message, std::uintptr_t first, std::intptr_t second) {
    QCoreApplication::postEvent(m_Mailbox, new MessageEvent(message, first, second));
}

CPoint QtWindow::ClientToScreen(CPoint point) {
    const QWidget* client = GetClient();
    if (!client)
        return point;
    return QtSeat::ToScreen(
        client->mapToGlobal(QPointF(point.x, point.y) / client->devicePixelRatioF()));
}

CSize GetDeviceSize(const QWidget& widget) {
    // Rounding up must not take a whole number for a little more than it is.
    constexpr double kSlack = 1e-6;
    const double ratio = widget.devicePixelRatioF();
    return {std::max(static_cast<int>(std::ceil(widget.width() * ratio - kSlack)), 1),
            std::max(static_cast<int>(std::ceil(widget.height() * ratio - kSlack)), 1)};
}
