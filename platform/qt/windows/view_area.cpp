#include "view_area.h"

#include <algorithm>
#include <optional>

#include "qt_canvas.h"
#include "view_window.h"

namespace {

std::optional<ScrollCode> CodeOf(int action) {
    struct Row {
        QAbstractSlider::SliderAction m_Action;
        ScrollCode m_Code;
    };
    static constexpr Row kRows[] = {
        {QAbstractSlider::SliderSingleStepSub, kScrollLineUp},
        {QAbstractSlider::SliderSingleStepAdd, kScrollLineDown},
        {QAbstractSlider::SliderPageStepSub, kScrollPageUp},
        {QAbstractSlider::SliderPageStepAdd, kScrollPageDown},
        {QAbstractSlider::SliderToMinimum, kScrollTop},
        {QAbstractSlider::SliderToMaximum, kScrollBottom},
        {QAbstractSlider::SliderMove, kScrollThumbTrack},
    };
    const auto row = std::ranges::find(kRows, action, [](const Row& r) { return int{r.m_Action}; });
    return row == std::end(kRows) ? std::nullopt : std::optional(row->m_Code);
}

} // namespace

ViewArea::ViewArea(ViewWindow& window)
    : m_Window(&window),
      m_Canvas(new Canvas(window, this)), m_Bars{{new QScrollBar(Qt::Horizontal, this), {}},
                                                 {new QScrollBar(Qt::Vertical, this), {}}} {
    for (const ScrollBar bar : {ScrollBar::horizontal, ScrollBar::vertical}) {
        GetScrollBar(bar).hide();
        GetScrollBar(bar).setFocusPolicy(Qt::NoFocus);
        GetScrollBar(bar).setContextMenuPolicy(Qt::NoContextMenu);
        Connect(bar);
    }
    setFocusProxy(m_Canvas);
    resize(640, 400);
    LayOut();
}

void ViewArea::Close() {
    m_Window = nullptr;
    m_Canvas->Close();
    hide();
    deleteLater();
}

QWidget* ViewArea::GetFocusWidget() const {
    return m_Canvas;
}

void ViewArea::Connect(ScrollBar bar) {
    QObject::connect(&GetScrollBar(bar), &QScrollBar::actionTriggered, this,
                     [this, bar](int action) { ActionTriggered(bar, action); });
    QObject::connect(&GetScrollBar(bar), &QScrollBar::sliderReleased, this,
                     [this, bar] { SliderReleased(bar); });
}

int ViewArea::ClientExtent(ScrollBar bar) const {
    const CSize client = GetDeviceSize(*m_Canvas);
    return bar == ScrollBar::horizontal ? client.cx : client.cy;
}

void ViewArea::SetRange(ScrollBar bar) {
    const ScrollInfo& info = GetBar(bar);
    QScrollBar& widget = GetScrollBar(bar);
    const int client = ClientExtent(bar);
    widget.setRange(0, std::max(info.m_Total - client, 0));
    widget.setSingleStep(std::max(info.m_Line, 1));
    widget.setPageStep(std::max(client, 1)); // the thumb's length; the view knows its own page
    // While the user holds the thumb, it is where the user holds it.
    if (!widget.isSliderDown())
        widget.setValue(info.m_Position);
}

void ViewArea::SetBar(ScrollBar bar, const ScrollInfo& info) {
    Bar& entry = m_Bars[IndexOf(bar)];
    entry.m_Info = info;
    SetRange(bar);
    const bool needed = info.m_Total > ClientExtent(bar);
    // A bar that goes makes room, in which the view may want it back, and so on without end. While
    // the room is still being laid out, bars only come.
    if (needed == entry.m_Shown || (m_LayingOut > 0 && !needed))
        return;
    entry.m_Shown = needed;
    LayOut();
}

void ViewArea::LayOut() {
    const bool right = m_Bars[IndexOf(ScrollBar::vertical)].m_Shown;
    const bool below = m_Bars[IndexOf(ScrollBar::horizontal)].m_Shown;
    QScrollBar& vertical = GetScrollBar(ScrollBar::vertical);
    QScrollBar& horizontal = GetScrollBar(ScrollBar::horizontal);
    const int clientWidth = std::max(width() - (right ? vertical.sizeHint().width() : 0), 0);
    const int clientHeight = std::max(height() - (below ? horizontal.sizeHint().height() : 0), 0);
    vertical.setVisible(right);
    horizontal.setVisible(below);
    vertical.setGeometry(clientWidth, 0, width() - clientWidth, clientHeight);
    horizontal.setGeometry(0, clientHeight, clientWidth, height() - clientHeight);
    ++m_LayingOut;
    m_Canvas->setGeometry(0, 0, clientWidth, clientHeight);
    if (m_Window)
        m_Window->ClientChanged();
    --m_LayingOut;
    SetRange(ScrollBar::horizontal);
    SetRange(ScrollBar::vertical);
}

void ViewArea::resizeEvent(QResizeEvent*) {
    LayOut();
}

bool ViewArea::SendScroll(ScrollBar bar, ScrollCode code, int position) {
    const QPointer<ViewArea> guard(this);
    if (m_Window)
        m_Window->Send(bar == ScrollBar::horizontal ? kMsgHScroll : kMsgVScroll, code, position);
    return guard && m_Window;
}

void ViewArea::ActionTriggered(ScrollBar bar, int action) {
    const std::optional<ScrollCode> code = CodeOf(action);
    QScrollBar& widget = GetScrollBar(bar);
    const int position = widget.sliderPosition();
    // The bar stands where the view puts it, but under the user's hand it moves by itself.
    if (!widget.isSliderDown())
        widget.setSliderPosition(widget.value());
    if (!code || !SendScroll(bar, *code, position))
        return;
    if (*code == kScrollThumbTrack && !widget.isSliderDown())
        SliderReleased(bar);
}

void ViewArea::SliderReleased(ScrollBar bar) {
    const int position = GetScrollBar(bar).sliderPosition();
    if (SendScroll(bar, kScrollThumbPosition, position) && SendScroll(bar, kScrollEnd, 0))
        SetRange(bar);
}
