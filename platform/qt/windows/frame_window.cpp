#include "frame_window.h"

#include <QEvent>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QVBoxLayout>

#include "image_surface.h"
#include "qt_seat.h"
#include "qt_text.h"
#include "view_area.h"
#include "view_window.h"

namespace {

constexpr QSize kFirstSize{640, 420};

/// The Qt state of a ShowCommand; the normal one for what names none.
Qt::WindowState StateOf(int showCommand) {
    return showCommand == kShowMinimized   ? Qt::WindowMinimized
           : showCommand == kShowMaximized ? Qt::WindowMaximized
                                           : Qt::WindowNoState;
}

CRect RectOf(const QRect& rect) {
    return {rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()};
}

constexpr int kLeastHeight = 50; ///< that a user can drag a frame to

} // namespace

/// Sees the shell's events before it does.
class FrameWindow::Watcher : public QObject {
public:
    explicit Watcher(FrameWindow& frame) : m_Frame(&frame) {}
    void Close() {
        m_Frame = nullptr;
        deleteLater();
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        return m_Frame && Filter(*event) ? true : QObject::eventFilter(watched, event);
    }

private:
    /// @return true: the shell doesn't get the event
    bool Filter(QEvent& event) {
        switch (event.type()) {
        case QEvent::Close:
            event.ignore();
            m_Frame->ShellClosing();
            return true;
        case QEvent::WindowActivate:
            if (m_Frame->GetWidget()->isWindow())
                m_Frame->GetSeat().FrameActivated(*m_Frame, false);
            return false;
        case QEvent::Move:
        case QEvent::Resize:
            m_Frame->ShellMoved();
            return false;
        case QEvent::MouseMove:
            m_Frame->PointerOnTitle(static_cast<QMouseEvent&>(event).globalPosition());
            return false;
        default:
            return false;
        }
    }

    FrameWindow* m_Frame;
};

FrameWindow::FrameWindow(QtSeat& seat, IWindowSink& sink)
    : QtWindow(seat, sink), m_Body(new QWidget), m_Shell(m_Body), m_Watcher(new Watcher(*this)) {
    auto* layout = new QVBoxLayout(m_Body);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    if (QMdiArea* area = seat.GetFrameArea()) {
        auto* shell = new QMdiSubWindow;
        shell->setMinimumHeight(kLeastHeight);
        shell->setWidget(m_Body);
        m_Shell = shell;
        shell->resize(kFirstSize.boundedTo(area->size()).expandedTo({200, 120}));
        area->addSubWindow(shell);
    } else {
        m_Body->resize(kFirstSize);
    }
    layout->activate();
    m_Shell->installEventFilter(m_Watcher);
    seat.Enter(*this);
}

FrameWindow::~FrameWindow() {
    m_Seat.Leave(*this);
    m_Watcher->Close();
    if (!m_Shell)
        return; // its area is gone, and the shell with it
    m_Shell->hide();
    if (auto* shell = qobject_cast<QMdiSubWindow*>(m_Shell.data()); shell && shell->mdiArea())
        shell->mdiArea()->removeSubWindow(shell);
    m_Shell->deleteLater();
}

void FrameWindow::TakeView(ViewArea& view) {
    m_View = &view;
    static_cast<QVBoxLayout*>(m_Body->layout())->addWidget(&view, 1);
    m_Body->setFocusProxy(view.GetFocusWidget());
    if (m_Shell != m_Body)
        m_Shell->layout()->activate();
    m_Body->layout()->activate();
    view.show();
}

void FrameWindow::ShellMoved() {
    if (!m_Shell->isMinimized() && !m_Shell->isMaximized())
        m_Placement.m_Normal = RectOf(m_Shell->geometry());
}

void FrameWindow::ShellClosing() {
    if (!m_Seat.m_Hooks.m_Closing || m_Seat.m_Hooks.m_Closing(*this))
        Post(kMsgClose, 0, 0); // the shell isn't destroyed inside its own event
}

void FrameWindow::PointerOnTitle(QPointF global) {
    if (!m_View || !m_View->GetViewWindow() || m_Shell == m_Body)
        return;
    const CPoint at = QtSeat::ToScreen(global);
    m_View->GetViewWindow()->Send(kMsgNcMouseMove, 0, MakePointValue(at.x, at.y));
}

CSize FrameWindow::GetClientSize() {
    return m_Body ? GetDeviceSize(*m_Body) : CSize{};
}

CRect FrameWindow::GetWindowRect() {
    if (!m_Shell)
        return {};
    const QRect own = m_Shell->isWindow() ? m_Shell->frameGeometry() : m_Shell->rect();
    const QPoint from = m_Shell->isWindow() ? own.topLeft() : m_Shell->mapToGlobal(own.topLeft());
    const CPoint start = QtSeat::ToScreen(from);
    const CPoint end = QtSeat::ToScreen(from + QPoint(own.width(), own.height()));
    return {start.x, start.y, end.x, end.y};
}

IBackendSurface& FrameWindow::GetSurface() {
    if (!m_Surface)
        m_Surface = std::make_unique<ImageSurface>(m_NoImage, m_Ratio, m_Seat.m_DefaultFont,
                                                   [](const CRect&) {});
    return *m_Surface;
}

void FrameWindow::SetFocus() {
    m_Seat.m_Focus.Move(this);
}

void FrameWindow::SetTitle(const AString& title) {
    if (!m_Shell)
        return;
    // Qt takes "[*]" in a title for the place of its own mark.
    m_Shell->setWindowTitle(ToQt(title).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
    if (m_Seat.m_Hooks.m_TitleChanged)
        m_Seat.m_Hooks.m_TitleChanged(*this, title);
}

void FrameWindow::Show(int showCommand) {
    if (!m_Shell)
        return;
    if (showCommand == kShowHide) {
        m_Shell->hide();
        return;
    }
    const QPointer<QWidget> shell = m_Shell;
    m_Seat.m_Showing = this;
    ShowShell(showCommand);
    if (shell && m_Seat.m_Showing == this && showCommand != kShowNoActivate) {
        if (auto* sub = qobject_cast<QMdiSubWindow*>(shell.data()); sub && sub->mdiArea()) {
            sub->mdiArea()->setActiveSubWindow(sub);
        } else {
            shell->raise();
            shell->activateWindow();
        }
    }
    m_Seat.m_Showing = nullptr;
}

void FrameWindow::ShowShell(int showCommand) {
    const bool keepsState =
        showCommand == kShowDefault || showCommand == kShow || showCommand == kShowNoActivate;
    if (!keepsState)
        m_Shell->setWindowState(StateOf(showCommand));
    else if (showCommand == kShowDefault && m_Shell->isHidden() && m_Seat.GetFrameArea())
        // A new frame is as the one before it: a user who works maximized goes on so.
        if (const QMdiSubWindow* before = m_Seat.GetFrameArea()->activeSubWindow();
            before && before->isMaximized())
            m_Shell->setWindowState(Qt::WindowMaximized);
    m_Shell->setAttribute(Qt::WA_ShowWithoutActivating, showCommand == kShowNoActivate);
    m_Shell->show();
}

WindowPlacement FrameWindow::GetPlacement() {
    if (!m_Shell)
        return m_Placement;
    WindowPlacement placement = m_Placement;
    placement.m_ShowCommand = m_Shell->isMinimized()   ? int{kShowMinimized}
                              : m_Shell->isMaximized() ? int{kShowMaximized}
                                                       : int{kShowNormal};
    if (placement.m_Normal.IsEmpty())
        placement.m_Normal = RectOf(m_Shell->geometry());
    return placement;
}

void FrameWindow::SetPlacement(const WindowPlacement& placement) {
    if (!m_Shell)
        return;
    m_Placement = placement;
    if (!placement.m_Normal.IsEmpty()) {
        if (m_Shell->isMaximized() || m_Shell->isMinimized())
            m_Shell->setWindowState(Qt::WindowNoState);
        m_Shell->setGeometry(::ToQt(placement.m_Normal));
    }
    m_Shell->setWindowState(StateOf(placement.m_ShowCommand));
    m_Placement.m_Normal = placement.m_Normal;
}
