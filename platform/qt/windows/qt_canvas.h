/// Canvas: the widget of a view's client area.
#pragma once

#include <QBasicTimer>
#include <QPointF>
#include <QString>
#include <QWidget>

#include "backend.h"
#include "geometry.h"
#include "messages.h"

class ViewWindow;

/// Shows the window's image with the caret over it, and turns Qt's events into messages. It may
/// outlive its window, and the window may end in any message.
class Canvas : public QWidget {
public:
    Canvas(ViewWindow& window, QWidget* parent);

    /// The window is gone: nothing is shown or sent any more.
    void Close() { m_Window = nullptr; }
    ViewWindow* GetViewWindow() const { return m_Window; }
    /// Has a part, in device pixels, painted when Qt comes to it.
    void ShowPart(const CRect& part);
    /// Comes back for what the window has drawn, once the present event is done.
    void RequestFlush();
    void CaretChanged(const CRect& before, const CRect& now);
    CPoint ToDevice(QPointF place) const;
    QRect FromDevice(const CRect& part) const;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool) override { return false; } // the tab is a character
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    /// What is left of wheel turns, in 120ths of a notch, until it makes a whole one.
    struct WheelRest {
        double m_Across = 0;
        double m_Down = 0;
    };

    std::intptr_t Send(unsigned message, std::uintptr_t first, std::intptr_t second);
    void SendPointer(unsigned message, QPointF place, Qt::KeyboardModifiers modifiers);
    void SendText(const QString& text, Qt::KeyboardModifiers modifiers);
    void PasteSelection(QPointF place);
    void TakeKey(QKeyEvent& event);
    IAccessibleText::Range GetSelection() const;
    void OfferSelection();
    void SendWheel(double down);
    void SendWheelAcross(double across);

    void Flush();
    void RestartBlinking();
    void StopBlinking();
    void PaintCaret(QPainter& painter) const;
    void PaintPreedit(QPainter& painter) const;

    ViewWindow* m_Window;
    QBasicTimer m_Blinking;
    bool m_CaretOn = true;
    bool m_FlushAsked = false;
    QString m_Preedit;
    WheelRest m_WheelRest;
    IAccessibleText::Range m_BeforeShift; ///< the selection when Shift was pressed
};
