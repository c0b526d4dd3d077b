/// QtWindow: what frames and views of a QtDesk have in common.
#pragma once

#include <QPointer>
#include <QWidget>

#include "backend.h"

class QtSeat;

/// A window's tie to its sink. Its widgets outlive it until the event loop comes by, since it may
/// be destroyed by a message that one of them is just sending.
class QUOREL_API QtWindow : public IBackendWindow {
public:
    QtWindow(QtSeat& seat, IWindowSink& sink);
    ~QtWindow() override;

    /// Sends a message through the sink; the window may be gone afterwards.
    std::intptr_t Send(unsigned message, std::uintptr_t first = 0, std::intptr_t second = 0);
    IWindowSink& GetSink() const { return m_Sink; }
    QtSeat& GetSeat() const { return m_Seat; }
    /// The outermost widget; null once a host has destroyed it with what it stands in.
    virtual QWidget* GetWidget() const = 0;

    void Post(unsigned message, std::uintptr_t first, std::intptr_t second) override;
    CPoint ClientToScreen(CPoint point) override;

protected:
    /// The widget of the client area, null as GetWidget is.
    virtual QWidget* GetClient() const = 0;

    QtSeat& m_Seat;
    IWindowSink& m_Sink;

private:
    class Mailbox;
    Mailbox* m_Mailbox;
};

/// A client widget's size in device pixels, at least 1. A last pixel that is shown in part only
/// counts.
CSize GetDeviceSize(const QWidget& widget);
