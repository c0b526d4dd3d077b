/// ViewArea: a view's client widget with its scroll bars.
#pragma once

#include <QPointer>
#include <QScrollBar>
#include <QWidget>

#include "backend.h"

class Canvas;
class ViewWindow;

/// Lays the canvas and the bars out by itself and at once, since a bar that comes or goes changes
/// the client size, of which the view must hear before its call returns.
class QUOREL_API ViewArea : public QWidget {
public:
    explicit ViewArea(ViewWindow& window);

    /// The window that this belongs to; null once it is gone.
    ViewWindow* GetViewWindow() const { return m_Window; }
    void Close();
    Canvas& GetCanvas() const { return *m_Canvas; }
    QWidget* GetFocusWidget() const;
    /// Sets range, sizes and position, and shows or hides the bar.
    void SetBar(ScrollBar bar, const ScrollInfo& info);
    const ScrollInfo& GetBar(ScrollBar bar) const { return m_Bars[IndexOf(bar)].m_Info; }
    QScrollBar& GetScrollBar(ScrollBar bar) const { return *m_Bars[IndexOf(bar)].m_Bar; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Bar {
        QScrollBar* m_Bar;
        ScrollInfo m_Info;
        bool m_Shown = false;
    };

    static std::size_t IndexOf(ScrollBar bar) { return static_cast<std::size_t>(bar); }
    int ClientExtent(ScrollBar bar) const;
    void Connect(ScrollBar bar);
    void SetRange(ScrollBar bar);
    void ActionTriggered(ScrollBar bar, int action);
    void SliderReleased(ScrollBar bar);
    /// @return false: the window is gone
    bool SendScroll(ScrollBar bar, ScrollCode code, int position);
    void LayOut();

    ViewWindow* m_Window;
    Canvas* m_Canvas;
    Bar m_Bars[2];
    int m_LayingOut = 0;
};
