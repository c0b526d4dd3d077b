#include "notice_bar.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QTimer>
#include <QToolButton>

#include "line_icon.h"

namespace {

constexpr int kMargin = 6;

/// The surroundings' colour with a touch of another one, in light and dark alike.
QColor Tinted(const QColor& base, const QColor& tint) {
    constexpr int kShare = 24; // of 100
    const auto mix = [](int from, int to) { return (from * (100 - kShare) + to * kShare) / 100; };
    return QColor(mix(base.red(), tint.red()), mix(base.green(), tint.green()),
                  mix(base.blue(), tint.blue()));
}

} // namespace

NoticeBar::NoticeBar(Kind kind, const QString& text, QWidget* parent)
    : QFrame(parent), m_Kind(kind) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2 * kMargin, kMargin, kMargin, kMargin);
    auto* icon = new QLabel;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    icon->setPixmap(style()
                        ->standardIcon(kind == Kind::warning ? QStyle::SP_MessageBoxWarning
                                                             : QStyle::SP_MessageBoxInformation)
                        .pixmap(size, size));
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_Buttons = new QHBoxLayout;
    auto* close = new QToolButton;
    close->setAutoRaise(true);
    close->setIcon(MakeLineIcon(LineIcon::close));
    close->setToolTip(QStringLiteral("Close this notice"));
    close->setFocusPolicy(Qt::NoFocus);
    connect(close, &QToolButton::clicked, this, &NoticeBar::Leave);
    layout->addWidget(icon);
    layout->addWidget(label, 1);
    layout->addLayout(m_Buttons);
    layout->addWidget(close);
    setAutoFillBackground(true);
    Paint();
}

void NoticeBar::AddButton(const QString& text, std::function<void()> action) {
    auto* button = new QPushButton(text);
    button->setFocusPolicy(Qt::TabFocus);
    m_Buttons->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, action = std::move(action)] {
        const std::function<void()> kept = action;
        Leave();
        QTimer::singleShot(0, kept);
    });
}

void NoticeBar::Leave() {
    setObjectName(QString());
    hide();
    deleteLater();
}

void NoticeBar::Paint() {
    m_Painting = true;
    setPalette({});
    QPalette colors = palette();
    const QColor tint =
        m_Kind == Kind::warning ? QColor(0xF5, 0xA6, 0x23) : colors.color(QPalette::Highlight);
    colors.setColor(QPalette::Window, Tinted(colors.color(QPalette::Window), tint));
    setPalette(colors);
    m_Painting = false;
}

void NoticeBar::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange && !m_Painting)
        Paint();
}
