#include "qt_seat.h"

#include <algorithm>
#include <cmath>

#include <QCursor>
#include <QGuiApplication>
#include <QMdiSubWindow>
#include <QScreen>

#include "frame_window.h"
#include "qt_canvas.h"

namespace {

/// The font of texts whose style names none.
LogFont DefaultFont() {
    LogFont font;
    font.m_FaceName = u"Courier New";
    font.m_Height = -12;
    return font;
}

struct ModifierKey {
    unsigned m_Key;
    Qt::KeyboardModifier m_Modifier;
};
constexpr ModifierKey kModifierKeys[] = {
    {kKeyShift, Qt::ShiftModifier},
    {kKeyControl, Qt::ControlModifier},
    {kKeyAlt, Qt::AltModifier},
};

} // namespace

QtSeat::QtSeat()
    : m_DefaultFont(DefaultFont()),
      m_Screen(m_ScreenImage, m_ScreenRatio, m_DefaultFont, [](const CRect&) {}) {}

QtSeat::~QtSeat() {
    SetFrameArea(nullptr);
    if (m_Waiting)
        QGuiApplication::restoreOverrideCursor();
}

void QtSeat::Leave(QtWindow& window) {
    std::erase_if(m_Frames, [&](const FrameWindow* frame) { return frame == &window; });
    if (m_Showing == &window)
        m_Showing = nullptr;
    m_Focus.Forget(window);
}

FrameWindow* QtSeat::GetFrameOf(const QWidget* shell) const {
    const auto place = std::ranges::find_if(
        m_Frames, [&](FrameWindow* frame) { return frame->GetWidget() == shell; });
    return place == m_Frames.end() ? nullptr : *place;
}

void QtSeat::SetFrameArea(QMdiArea* area) {
    QObject::disconnect(m_AreaActivates);
    m_Area = area;
    if (!area)
        return;
    m_AreaActivates =
        QObject::connect(area, &QMdiArea::subWindowActivated, area, [this](QMdiSubWindow* shell) {
            // Null when the whole program goes to the back: the frame stays the active one.
            if (FrameWindow* frame = shell ? GetFrameOf(shell) : nullptr)
                FrameActivated(*frame, frame == m_Showing);
        });
}

void QtSeat::FrameActivated(FrameWindow& frame, bool byProgram) {
    const QPointer<QWidget> shell = frame.GetWidget();
    if (!byProgram)
        frame.Send(kMsgMdiActivate);
    if (shell && GetFrameOf(shell) && m_Hooks.m_Activated)
        m_Hooks.m_Activated(frame);
}

bool QtSeat::IsKeyDown(unsigned key, bool now) const {
    if (key == kKeyLeftButton)
        return QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    const Qt::KeyboardModifiers down =
        now ? QGuiApplication::queryKeyboardModifiers() : m_Modifiers;
    const auto row = std::ranges::find(kModifierKeys, key, &ModifierKey::m_Key);
    return row != std::end(kModifierKeys) && down.testFlag(row->m_Modifier);
}

void QtSeat::NotePointer(Canvas& canvas) {
    m_PointerWidget = &canvas;
}

void QtSeat::SetCursor(CursorShape shape) {
    const bool wait = shape == CursorShape::wait;
    if (wait != m_Waiting) {
        m_Waiting = wait;
        if (wait)
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        else
            QGuiApplication::restoreOverrideCursor();
    }
    const Qt::CursorShape cursor = shape == CursorShape::iBeam ? Qt::IBeamCursor : Qt::ArrowCursor;
    if (!wait && m_PointerWidget && m_PointerWidget->cursor().shape() != cursor)
        m_PointerWidget->setCursor(cursor);
}

IBackendSurface& QtSeat::GetScreen() {
    m_ScreenRatio = GetScreenRatio();
    return m_Screen;
}

double QtSeat::GetScreenRatio() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->devicePixelRatio() : 1;
}

CPoint QtSeat::ToScreen(QPointF global) {
    const double ratio = GetScreenRatio();
    return {static_cast<int>(std::lround(global.x() * ratio)),
            static_cast<int>(std::lround(global.y() * ratio))};
}

QPointF QtSeat::FromScreen(CPoint screen) {
    return QPointF(screen.x, screen.y) / GetScreenRatio();
}
