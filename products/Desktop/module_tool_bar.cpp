#include "module_tool_bar.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QTimer>

#include "find_box.h"
#include "host_tool_bars.h"
#include "line_icon.h"
#include "qt_strings.h"
#include "resources.h"
#include "tool_bars_data.h"

namespace {

/// What a dragged button is to other programs: nothing of theirs.
constexpr const char* kButtonFormat = "application/x-quorel-toolbar-button";

constexpr struct {
    unsigned m_Id;
    Qt::ToolBarArea m_Area;
} kDockBars[] = {
    {1, Qt::TopToolBarArea},
    {2, Qt::LeftToolBarArea},
    {3, Qt::RightToolBarArea},
    {4, Qt::BottomToolBarArea},
};

/// The pictures of the buttons by their bitmap's number, ahead of those that a module brings.
constexpr struct {
    unsigned m_Bitmap;
    LineIcon m_Icon;
} kIcons[] = {
    {9007, LineIcon::bookmark},       {9008, LineIcon::bookmarkNone},
    {9009, LineIcon::bookmarkNext},   {9010, LineIcon::bookmarkPrevious},
    {9011, LineIcon::searchDown},     {9012, LineIcon::searchUp},
    {9013, LineIcon::searchDownCase}, {9014, LineIcon::searchUpCase},
};

CRect ToRect(const QRect& rect) {
    return {rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()};
}

/// A picture whose ground is see-through.
QIcon IconOf(const PictureResource& picture) {
    QImage image = QImage(picture.m_Rows.data()).convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if ((image.pixel(x, y) & RGB_MASK) == ToolBarButton::kPictureFace)
                image.setPixel(x, y, 0);
    return QIcon(QPixmap::fromImage(image));
}

} // namespace

unsigned DockBarIdOf(Qt::ToolBarArea area) {
    const auto found = std::ranges::find_if(
        kDockBars, [area](const auto& dockBar) { return dockBar.m_Area == area; });
    return found == std::end(kDockBars) ? kDockBars[0].m_Id : found->m_Id;
}

Qt::ToolBarArea AreaOf(unsigned dockBarId) {
    const auto found = std::ranges::find_if(
        kDockBars, [dockBarId](const auto& dockBar) { return dockBar.m_Id == dockBarId; });
    return found == std::end(kDockBars) ? kDockBars[0].m_Area : found->m_Area;
}

QIcon IconOf(const ToolBarButton& button) {
    const auto icon = std::ranges::find_if(
        kIcons, [&](const auto& each) { return each.m_Bitmap == button.mBitmap; });
    if (icon != std::end(kIcons))
        return MakeLineIcon(icon->m_Icon);
    return button.mBitmapObject ? IconOf(*button.mBitmapObject) : QIcon();
}

ModuleToolBar::ModuleToolBar(CQrToolBar& bar, Surroundings surroundings, QWidget* parent)
    : QToolBar(FromAString(bar.GetBarName()), parent), m_Bar(bar),
      m_Around(std::move(surroundings)) {
    setObjectName(QStringLiteral("ToolBar %1.%2")
                      .arg(FromAString(bar.GetData().GetName()), FromAString(bar.GetBarName())));
    m_Bar.SetPeer(this);
    setAcceptDrops(true);
    connect(this, &QToolBar::orientationChanged, this, &ModuleToolBar::FitBoxes);
    ShowButtons();
}

void ModuleToolBar::ShowButtons() {
    m_Items.clear();
    m_Boxes.clear();
    qDeleteAll(actions()); // with the boxes, whose windows take one peer at a time
    if (const ToolBarButtonList* buttons = m_Bar.GetButtons())
        for (const ToolBarButton& button : *buttons) {
            QAction* const action = AddItem(button);
            const bool isPressed = action && !button.IsSeparator() && !button.IsControlPlace();
            m_Items.push_back({action, isPressed ? button.mCommand : 0});
        }
    SetCustomizing(m_Around.m_Host.IsCustomizing());
    FitBoxes();
    Refresh();
    if (isFloating())
        adjustSize();
}

QAction* ModuleToolBar::AddItem(const ToolBarButton& button) {
    if (button.IsSeparator())
        return addSeparator();
    return button.IsControlPlace() ? AddBox(button) : AddButton(button);
}

QAction* ModuleToolBar::AddButton(const ToolBarButton& button) {
    QAction* const action = addAction(ToolTipOf(button.mCommand));
    const ToolBarButton* const known = m_Around.m_Host.FindInCatalogue(button);
    action->setIcon(IconOf(known ? *known : button));
    action->setStatusTip(StatusTextOf(button.mCommand));
    widgetForAction(action)->installEventFilter(this);
    connect(action, &QAction::triggered, this, [this, command = button.mCommand] {
        if (!m_Around.m_Host.IsCustomizing())
            m_Around.m_Use.m_Commands.Run(command, m_Around.m_Use.m_Source);
    });
    return action;
}

QAction* ModuleToolBar::AddBox(const ToolBarButton& button) {
    ToolBarControl* control = nullptr;
    auto* const window = m_Bar.GetData().FindControl(button.mCommand, control)
                             ? dynamic_cast<CComboBox*>(control->mWindow)
                             : nullptr;
    if (!window)
        return nullptr;
    auto* const box = new FindBox(*window, this);
    box->m_OnReturn = [this, id = button.mCommand](bool backward) { Search(id, backward); };
    box->m_OnEscape = m_Around.m_Use.m_OnEscape;
    box->m_OnOtherKey = m_Around.m_Use.m_OnOtherKey;
    box->m_OnFocus = [this, id = button.mCommand, window] {
        m_Bar.HandleMessage(kMsgCommand, MakeControlNotice(id, kNoticeGotFocus),
                            reinterpret_cast<std::intptr_t>(static_cast<CWnd*>(window)));
    };
    m_Boxes.push_back({box, addWidget(box), window});
    return m_Boxes.back().m_Action;
}

/// A bar that stands upright has no room for boxes.
void ModuleToolBar::FitBoxes() {
    for (const Box& box : m_Boxes)
        box.m_Action->setVisible(orientation() == Qt::Horizontal);
}

/// Return presses the button behind the box, with Shift the one after it: as the module has them,
/// whatever the user has made of the bar.
void ModuleToolBar::Search(unsigned box, bool backward) {
    const ToolBarButtonList* buttons = HostToolBars::FindDefaults(m_Bar);
    if (!buttons)
        buttons = m_Bar.GetButtons();
    const auto place = std::ranges::find(*buttons, box, &ToolBarButton::mCommand);
    const auto index = place - buttons->begin() + (backward ? 2 : 1);
    if (index < std::ssize(*buttons))
        m_Around.m_Use.m_Commands.Run((*buttons)[static_cast<std::size_t>(index)].mCommand,
                                      m_Around.m_Use.m_Source);
}

void ModuleToolBar::Refresh() {
    const ModuleMenu menu = m_Around.m_Use.m_Source();
    for (const Item& item : m_Items)
        if (item.m_Command != 0)
            ModuleCommands::Update(*item.m_Action, item.m_Command, menu);
}

void ModuleToolBar::SetCustomizing(bool on) {
    for (const Box& box : m_Boxes)
        if (!on)
            box.m_Shown->setEnabled(true);
}

/// The index of the button at a place, or of the one ahead of which the place is.
std::size_t ModuleToolBar::IndexAt(QPoint place) const {
    std::size_t index = 0;
    for (; index < m_Items.size(); ++index) {
        QAction* const action = m_Items[index].m_Action;
        const QRect rect = action && action->isVisible() ? actionGeometry(action) : QRect();
        const bool isBehind =
            orientation() == Qt::Horizontal ? place.x() > rect.right() : place.y() > rect.bottom();
        if (!rect.isNull() && !isBehind)
            break;
    }
    return index;
}

bool ModuleToolBar::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        if (m_Around.m_Host.IsCustomizing())
            return FilterMouse(static_cast<QWidget&>(*watched), static_cast<QMouseEvent&>(*event));
        break;
    default:
        break;
    }
    return QToolBar::eventFilter(watched, event);
}

bool ModuleToolBar::FilterMouse(QWidget& button, const QMouseEvent& mouse) {
    const QPoint place = button.mapTo(this, mouse.position().toPoint());
    if (mouse.type() == QEvent::MouseButtonPress)
        m_PressedAt = place;
    const bool isDragged =
        mouse.type() == QEvent::MouseMove && mouse.buttons().testFlag(Qt::LeftButton) &&
        (place - m_PressedAt).manhattanLength() >= QApplication::startDragDistance();
    if (isDragged && !m_Dragged && m_Bar.HandleMessage(kMsgNotify, kNoticeBeginDrag, 0) != 0)
        DragButton(IndexAt(m_PressedAt));
    return true;
}

void ModuleToolBar::DragButton(std::size_t index) {
    if (index >= m_Items.size() || !m_Items[index].m_Action)
        return;
    const QPointer<ModuleToolBar> alive = this;
    auto* const drag = new QDrag(this);
    auto* const dragged = new QMimeData;
    dragged->setData(QLatin1String(kButtonFormat), {});
    drag->setMimeData(dragged);
    drag->setPixmap(m_Items[index].m_Action->icon().pixmap(iconSize()));
    m_Dragged = index;
    m_DropIndex.reset();
    drag->exec(Qt::MoveAction);
    if (!alive)
        return;
    m_Dragged.reset();
    // Behind the event of the button, which goes.
    QTimer::singleShot(0, this, [this, index, to = m_DropIndex] { MoveButton(index, to); });
}

/// @param to ahead of which button, as they stand now; nothing: off the bar
void ModuleToolBar::MoveButton(std::size_t from, std::optional<std::size_t> to) {
    if (!m_Bar.GetButtons() || from >= m_Bar.GetButtons()->size())
        return;
    ToolBarButtonList buttons = *m_Bar.GetButtons();
    const ToolBarButton moved = buttons[from];
    buttons.erase(buttons.begin() + static_cast<std::ptrdiff_t>(from));
    if (to) {
        const std::size_t behindErased = *to > from ? *to - 1 : *to;
        const std::size_t place = std::min(behindErased, buttons.size());
        buttons.insert(buttons.begin() + static_cast<std::ptrdiff_t>(place), moved);
    }
    m_Around.m_Host.SetButtons(m_Bar, std::move(buttons));
}

void ModuleToolBar::dragEnterEvent(QDragEnterEvent* event) {
    if (m_Dragged && event->mimeData()->hasFormat(QLatin1String(kButtonFormat)))
        event->acceptProposedAction();
}

void ModuleToolBar::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    m_DropIndex = IndexAt(event->position().toPoint());
}

void ModuleToolBar::FloatAt(CPoint place) {
    const bool isShown = !isHidden();
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint); // as when the user drags it out
    move(place.x, place.y);
    adjustSize();
    setVisible(isShown);
    QTimer::singleShot(0, this, &QWidget::raise); // the main window may come up behind it
}

CRect ModuleToolBar::GetItemRect(std::size_t index) {
    QAction* const action = index < m_Items.size() ? m_Items[index].m_Action : nullptr;
    return action && action->isVisible() ? ToRect(actionGeometry(action)) : CRect();
}

unsigned ModuleToolBar::GetDockBarId() {
    return m_Around.m_GetArea();
}

CRect ModuleToolBar::GetWindowRect() {
    return ToRect(QRect(mapToGlobal(QPoint(0, 0)), size()));
}

std::optional<CRect> ModuleToolBar::GetFrameRect() {
    return isFloating() ? std::optional(ToRect(frameGeometry())) : std::nullopt;
}

void ModuleToolBar::DisableControl(CWnd& control) {
    for (const Box& box : m_Boxes)
        if (box.m_Window == &control)
            box.m_Shown->setEnabled(false);
}

std::intptr_t ModuleToolBar::DefaultMessage(unsigned, std::uintptr_t, std::intptr_t) {
    if (m_Passing)
        m_Passing->m_IsTaken = QToolBar::event(m_Passing->m_Event);
    return 0;
}

/// The bar hears of the event and has it handled, unless it swallows it.
bool ModuleToolBar::Pass(unsigned message, QEvent& event) {
    Passing passing{&event, true};
    Passing* const before = std::exchange(m_Passing, &passing);
    std::uintptr_t buttons = 0;
    std::intptr_t place = 0;
    if (message != kMsgWindowPosChanged) {
        const auto& mouse = static_cast<QMouseEvent&>(event);
        buttons = mouse.buttons().testFlag(Qt::LeftButton) ? kModLeftButton : 0;
        place = MakePointValue(mouse.position().toPoint().x(), mouse.position().toPoint().y());
    }
    m_Bar.HandleMessage(message, buttons, place);
    m_Passing = before;
    return passing.m_IsTaken;
}

bool ModuleToolBar::event(QEvent* event) {
    if (!m_Bar.HasWindow())
        return QToolBar::event(event);
    const auto isLeft = [event] {
        return static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
    };
    switch (event->type()) {
    case QEvent::MouseMove:
        return Pass(kMsgMouseMove, *event);
    case QEvent::MouseButtonPress:
        return isLeft() ? Pass(kMsgLButtonDown, *event) : QToolBar::event(event);
    case QEvent::MouseButtonRelease:
        return isLeft() ? Pass(kMsgLButtonUp, *event) : QToolBar::event(event);
    case QEvent::Move:
    case QEvent::Resize:
        return Pass(kMsgWindowPosChanged, *event);
    default:
        return QToolBar::event(event);
    }
}
