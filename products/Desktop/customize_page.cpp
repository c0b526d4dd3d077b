#include "customize_page.h"

#include <algorithm>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "host_tool_bars.h"
#include "module_tool_bar.h"
#include "qt_strings.h"

namespace {

constexpr QSize kFirstSize{620, 420};
constexpr int kRowRole = Qt::UserRole; ///< the index in the list of buttons that an item stands for

ToolBarButton Separator() {
    return {.mCommand = ToolBarEntry::kSeparator, .mBitmap = ToolBarEntry::kNoBitmap, .mText = {}};
}

QString NameOf(const ToolBarButton& button) {
    if (button.IsSeparator())
        return QStringLiteral("Separator");
    const QString tip = ToolTipOf(button.mCommand);
    if (!tip.isEmpty())
        return tip;
    return button.IsControlPlace() ? QStringLiteral("Find box")
                                   : QStringLiteral("Command %1").arg(button.mCommand);
}

void AddRow(QListWidget& list, const ToolBarButton& button, int index) {
    auto* const item = new QListWidgetItem(IconOf(button), NameOf(button), &list);
    item->setToolTip(StatusTextOf(button.mCommand));
    item->setData(kRowRole, index);
}

bool IsIn(const ToolBarButtonList& list, const ToolBarButton& button) {
    return std::ranges::any_of(
        list, [&](const ToolBarButton& each) { return each.IsSameButton(button); });
}

} // namespace

CustomizePage::CustomizePage(HostToolBars& host, QWidget* parent)
    : QDialog(parent), m_Host(host), m_Bars(new QComboBox), m_Available(new QListWidget),
      m_Shown(new QListWidget) {
    setWindowTitle(QStringLiteral("Customise Toolbars"));
    setAttribute(Qt::WA_DeleteOnClose);
    for (const CQrToolBar* bar : m_Host.GetBars())
        m_Bars->addItem(FromAString(bar->GetBarName()));
    m_Add = AddButton(QStringLiteral("&Add >"), &CustomizePage::Add);
    m_Remove = AddButton(QStringLiteral("< &Remove"), &CustomizePage::Remove);
    m_Up = AddButton(QStringLiteral("Move &Up"), &CustomizePage::MoveUp);
    m_Down = AddButton(QStringLiteral("Move &Down"), &CustomizePage::MoveDown);
    m_Reset = AddButton(QStringLiteral("Re&set"), &CustomizePage::Reset);
    BuildLists();
    resize(kFirstSize);
    ShowBar();
    m_Host.SetCustomizing(true);
}

CustomizePage::~CustomizePage() {
    m_Host.SetCustomizing(false);
}

QPushButton* CustomizePage::AddButton(const QString& text, void (CustomizePage::*run)()) {
    auto* const button = new QPushButton(text);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, run);
    return button;
}

void CustomizePage::BuildLists() {
    auto* const middle = new QVBoxLayout;
    middle->addStretch();
    for (QPushButton* button : {m_Add, m_Remove, m_Up, m_Down, m_Reset})
        middle->addWidget(button);
    middle->addStretch();
    auto* const close = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* const available = new QLabel(QStringLiteral("A&vailable buttons"));
    available->setBuddy(m_Available);
    auto* const layout = new QGridLayout(this);
    layout->addWidget(available, 0, 0);
    layout->addWidget(m_Bars, 0, 2);
    layout->addWidget(m_Available, 1, 0);
    layout->addLayout(middle, 1, 1);
    layout->addWidget(m_Shown, 1, 2);
    layout->addWidget(close, 2, 0, 1, 3);
    m_Bars->setAccessibleName(QStringLiteral("Toolbar"));
    m_Shown->setAccessibleName(QStringLiteral("Buttons on the toolbar"));
    m_Shown->setDragDropMode(QAbstractItemView::InternalMove);
    connect(m_Bars, &QComboBox::currentIndexChanged, this, &CustomizePage::ShowBar);
    connect(m_Available, &QListWidget::itemDoubleClicked, this, &CustomizePage::Add);
    connect(m_Shown, &QListWidget::itemDoubleClicked, this, &CustomizePage::Remove);
    connect(m_Shown->model(), &QAbstractItemModel::rowsMoved, this, &CustomizePage::TakeOrder,
            Qt::QueuedConnection);
    for (QListWidget* list : {m_Available, m_Shown})
        connect(list, &QListWidget::currentRowChanged, this, &CustomizePage::EnableButtons);
}

CQrToolBar* CustomizePage::GetBar() const {
    const std::vector<CQrToolBar*> bars = m_Host.GetBars();
    const auto index = static_cast<std::size_t>(m_Bars->currentIndex());
    return index < bars.size() ? bars[index] : nullptr;
}

ToolBarButtonList CustomizePage::GetShown() const {
    const CQrToolBar* const bar = GetBar();
    return bar && bar->GetButtons() ? *bar->GetButtons() : ToolBarButtonList();
}

void CustomizePage::ShowBar() {
    const int row = m_Shown->currentRow();
    m_Shown->clear();
    for (const ToolBarButton& button : GetShown()) {
        const ToolBarButton* const known = m_Host.FindInCatalogue(button);
        AddRow(*m_Shown, known ? *known : button, m_Shown->count());
    }
    m_Shown->setCurrentRow(std::min(row, m_Shown->count() - 1));
    FillAvailable();
    EnableButtons();
}

/// A gap, and every button that isn't on the bar.
void CustomizePage::FillAvailable() {
    const int row = m_Available->currentRow();
    m_Choice = {Separator()};
    for (const ToolBarButton& button : m_Host.GetCatalogue())
        if (!button.IsSeparator() && !IsIn(GetShown(), button))
            m_Choice.push_back(button);
    m_Available->clear();
    for (const ToolBarButton& button : m_Choice)
        AddRow(*m_Available, button, m_Available->count());
    m_Available->setCurrentRow(std::min(row, m_Available->count() - 1));
}

void CustomizePage::Change(const ToolBarButtonList& buttons, int selected) {
    if (CQrToolBar* bar = GetBar())
        m_Host.SetButtons(*bar, buttons);
    ShowBar();
    m_Shown->setCurrentRow(std::min(selected, m_Shown->count() - 1));
}

/// Ahead of the selected button of the bar, else at its end.
void CustomizePage::Add() {
    const int chosen = m_Available->currentRow();
    if (chosen < 0)
        return;
    ToolBarButtonList buttons = GetShown();
    ToolBarButton button = m_Choice[static_cast<std::size_t>(chosen)];
    button.mBitmapObject = nullptr;
    button.mText = AString();
    const int row = m_Shown->currentRow() < 0 ? m_Shown->count() : m_Shown->currentRow();
    buttons.insert(buttons.begin() + row, button);
    Change(buttons, row);
}

void CustomizePage::Remove() {
    const int row = m_Shown->currentRow();
    ToolBarButtonList buttons = GetShown();
    if (row < 0)
        return;
    buttons.erase(buttons.begin() + row);
    Change(buttons, row);
}

void CustomizePage::Move(int distance) {
    const int row = m_Shown->currentRow();
    const int to = row + distance;
    ToolBarButtonList buttons = GetShown();
    if (row < 0 || to < 0 || to >= std::ssize(buttons))
        return;
    std::swap(buttons[static_cast<std::size_t>(row)], buttons[static_cast<std::size_t>(to)]);
    Change(buttons, to);
}

/// The user has dragged a row of the list.
void CustomizePage::TakeOrder() {
    const ToolBarButtonList before = GetShown();
    ToolBarButtonList buttons;
    for (int row = 0; row < m_Shown->count(); ++row)
        if (const auto index = m_Shown->item(row)->data(kRowRole).toUInt(); index < before.size())
            buttons.push_back(before[index]);
    Change(buttons, m_Shown->currentRow());
}

void CustomizePage::Reset() {
    if (CQrToolBar* bar = GetBar())
        m_Host.ResetButtons(*bar);
    ShowBar();
}

void CustomizePage::EnableButtons() {
    const int row = m_Shown->currentRow();
    m_Add->setEnabled(m_Available->currentRow() >= 0);
    m_Remove->setEnabled(row >= 0);
    m_Up->setEnabled(row > 0);
    m_Down->setEnabled(row >= 0 && row < m_Shown->count() - 1);
    m_Reset->setEnabled(GetBar() && HostToolBars::FindDefaults(*GetBar()));
}
