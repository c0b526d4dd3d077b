#include "message_pane.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QListWidget>
#include <QStyle>
#include <QTime>

namespace {
constexpr int kMostMessages = 1000;
} // namespace

MessagePane::MessagePane(QWidget* parent)
    : QDockWidget(QStringLiteral("Messages"), parent), m_List(new QListWidget(this)) {
    setObjectName(QStringLiteral("MessagePane"));
    m_List->setFrameShape(QFrame::NoFrame);
    m_List->setWordWrap(true);
    m_List->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_List->setContextMenuPolicy(Qt::ActionsContextMenu);
    auto* copy = new QAction(QStringLiteral("&Copy"), m_List);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, &MessagePane::Copy);
    auto* clear = new QAction(QStringLiteral("C&lear"), m_List);
    connect(clear, &QAction::triggered, m_List, &QListWidget::clear);
    m_List->addActions({copy, clear});
    setWidget(m_List);
}

void MessagePane::Add(const QString& text, bool warning) {
    const QString time = QTime::currentTime().toString(QStringLiteral("HH:mm:ss"));
    auto* item = new QListWidgetItem(time + QStringLiteral("   ") + text);
    item->setIcon(style()->standardIcon(warning ? QStyle::SP_MessageBoxWarning
                                                : QStyle::SP_MessageBoxInformation));
    m_List->addItem(item);
    if (m_List->count() > kMostMessages)
        delete m_List->takeItem(0);
    m_List->scrollToBottom();
    if (warning)
        show();
}

QString MessagePane::GetText() const {
    QStringList lines;
    for (int i = 0; i < m_List->count(); ++i)
        lines << m_List->item(i)->text();
    return lines.join(QLatin1Char('\n'));
}

void MessagePane::Copy() const {
    QStringList lines;
    for (const QListWidgetItem* item : m_List->selectedItems())
        lines << item->text();
    if (!lines.isEmpty())
        QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}
