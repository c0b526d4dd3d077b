/// QtSeat: what the windows of a QtDesk share.
#pragma once

#include <optional>
#include <vector>

#include <QMdiArea>
#include <QObject>
#include <QPointer>

#include "focus_holder.h"
#include "image_surface.h"
#include "qt_desk.h"

class Canvas;
class FrameWindow;
class QtWindow;

/// The focus as the sinks know it, the keyboard and pointer as of the last event, the cursor, the
/// frames and their area. Lives as long as the desk.
class QtSeat {
public:
    QtSeat();
    QtSeat(const QtSeat&) = delete;
    QtSeat& operator=(const QtSeat&) = delete;
    ~QtSeat();

    void Enter(FrameWindow& frame) { m_Frames.push_back(&frame); }
    /// Forgets a window that ends.
    void Leave(QtWindow& window);
    FrameWindow* GetFrameOf(const QWidget* shell) const;

    void SetFrameArea(QMdiArea* area);
    QMdiArea* GetFrameArea() const { return m_Area; }
    /// A frame has come to the front. @param byProgram the framework knows already
    void FrameActivated(FrameWindow& frame, bool byProgram);

    /// Notes the modifiers of an event, for IsKeyDown.
    void NoteModifiers(Qt::KeyboardModifiers modifiers) { m_Modifiers = modifiers; }
    bool IsKeyDown(unsigned key, bool now) const;
    /// The canvas under the pointer, which shows the cursor and begins drags.
    void NotePointer(Canvas& canvas);
    QWidget* GetPointerWidget() const { return m_PointerWidget; }
    void SetCursor(CursorShape shape);

    /// A place of Qt's on the screen, as the framework counts it, and back.
    static CPoint ToScreen(QPointF global);
    static QPointF FromScreen(CPoint screen);
    /// Device pixels of the main screen for one of Qt's.
    static double GetScreenRatio();

    /// For measuring.
    IBackendSurface& GetScreen();

    FocusHolder<QtWindow> m_Focus;
    FrameHooks m_Hooks;
    const QtFont m_DefaultFont;
    std::optional<PdfOutput> m_PdfOutput;
    /// While set, the clipboard's text for the one paste that a middle click makes.
    std::optional<AString> m_PrimaryPaste;
    /// Whom Show is bringing to the front.
    FrameWindow* m_Showing = nullptr;

private:
    std::vector<FrameWindow*> m_Frames;
    QPointer<QMdiArea> m_Area;
    QMetaObject::Connection m_AreaActivates;
    Qt::KeyboardModifiers m_Modifiers;
    QPointer<QWidget> m_PointerWidget;
    bool m_Waiting = false;
    QImage m_ScreenImage;
    double m_ScreenRatio = 1;
    ImageSurface m_Screen;
};
