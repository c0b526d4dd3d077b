#include "qt_dialog.h"

#include <algorithm>
#include <cmath>

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontMetricsF>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "qt_font.h"
#include "qt_text.h"

namespace {

/// How far dialog units may grow beyond the font's for texts and controls to fit.
constexpr double kMostGrowth = 1.75;

template <class T>
QWidget* MakeNamed(const QString& text, QWidget& page) {
    return new T(text, &page);
}

QWidget* MakeButton(const QString& text, QWidget& page) {
    auto* button = new QPushButton(text, &page);
    button->setAutoDefault(false);
    return button;
}

QWidget* MakeDefaultButton(const QString& text, QWidget& page) {
    auto* button = new QPushButton(text, &page);
    button->setDefault(true);
    return button;
}

QWidget* MakeComboBox(const QString& text, QWidget& page) {
    auto* box = new QComboBox(&page);
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setEditText(text);
    return box;
}

QWidget* MakeGroupBox(const QString& text, QWidget& page) {
    auto* box = new QGroupBox(text, &page);
    box->lower(); // the controls that stand in it are the page's own
    return box;
}

QWidget* MakeSample(const QString&, QWidget& page) {
    auto* sample = new QFrame(&page);
    sample->setFrameStyle(QFrame::Box | QFrame::Plain);
    sample->setAutoFillBackground(true);
    return sample;
}

using Maker = QWidget* (*)(const QString& text, QWidget& page);
/// By ControlRow::Kind.
constexpr Maker kMakers[] = {&MakeNamed<QLabel>, &MakeNamed<QLineEdit>, &MakeButton,
                             &MakeDefaultButton, &MakeNamed<QCheckBox>, &MakeNamed<QRadioButton>,
                             &MakeGroupBox,      &MakeComboBox,         &MakeSample};
static_assert(std::size(kMakers) == ControlRow::colorSample + 1);

bool HasFixedText(ControlRow::Kind kind) {
    return kind != ControlRow::edit && kind != ControlRow::comboBox &&
           kind != ControlRow::colorSample && kind != ControlRow::groupBox;
}

} // namespace

QtDialog::QtDialog(const AString& title, std::span<const DialogResource* const> pages,
                   IDialogSink& sink, QWidget* parent)
    : QDialog(parent), m_Sink(sink) {
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    for (const DialogResource* page : pages)
        m_Pages.push_back({page, MakePage(*page)});
    if (pages.size() == 1) {
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(m_Pages.front().m_Widget);
    } else if (!pages.empty()) {
        auto* tabs = new QTabWidget(this);
        for (const Page& page : m_Pages)
            tabs->addTab(page.m_Widget, ToQt(page.m_Resource->m_Title));
        layout->addWidget(tabs);
    }
    if (!title.empty() || !pages.empty())
        setWindowTitle(ToQt(title.empty() ? pages.front()->m_Title : std::u16string_view(title)));
    AddButtonsIfMissing(*layout);
    Place(ChooseUnits());
}

QWidget* QtDialog::MakePage(const DialogResource& page) {
    auto* widget = new QWidget(this);
    QLabel* label = nullptr; // waits for the control that its mnemonic goes to
    QButtonGroup* group = nullptr;
    for (const ControlRow& row : page.m_Controls) {
        QWidget* const control = kMakers[row.m_Kind](ToQt(row.m_Text), *widget);
        control->setObjectName(QString::number(row.m_Id)); // for whoever works it from outside
        m_Placed.push_back({&row, control});
        m_Controls.insert_or_assign(row.m_Id, control);
        if (label && control->focusPolicy() != Qt::NoFocus)
            label->setBuddy(control);
        label = qobject_cast<QLabel*>(control);
        if (row.m_StartsGroup)
            group = nullptr;
        if (auto* radio = qobject_cast<QRadioButton*>(control)) {
            if (!group)
                group = new QButtonGroup(widget);
            group->addButton(radio);
        }
        Connect(row.m_Id, *control);
    }
    return widget;
}

void QtDialog::Connect(unsigned id, QWidget& widget) {
    if (auto* button = qobject_cast<QAbstractButton*>(&widget))
        connect(button, &QAbstractButton::clicked, this,
                [this, id] { Notice(id, kNoticeClicked); });
    else if (auto* edit = qobject_cast<QLineEdit*>(&widget))
        connect(edit, &QLineEdit::textEdited, this, [this, id] { Notice(id, kNoticeTextChanged); });
    else if (auto* box = qobject_cast<QComboBox*>(&widget)) {
        connect(box, &QComboBox::activated, this, [this, id] { Notice(id, kNoticeSelectionDone); });
        connect(box->lineEdit(), &QLineEdit::textEdited, this,
                [this, id] { Notice(id, kNoticeTextChanged); });
    }
}

void QtDialog::AddButtonsIfMissing(QVBoxLayout& layout) {
    if (m_Controls.contains(kIdOk) || m_Controls.contains(kIdCancel))
        return;
    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    const std::pair<unsigned, QPushButton*> kButtons[] = {
        {kIdOk, box->button(QDialogButtonBox::Ok)},
        {kIdCancel, box->button(QDialogButtonBox::Cancel)}};
    for (const auto& [id, button] : kButtons) {
        button->setObjectName(QString::number(id));
        m_Controls.emplace(id, button);
        Connect(id, *button);
    }
    layout.addWidget(box);
}

QtDialog::Units QtDialog::ChooseUnits() const {
    const QFontMetricsF metrics(font());
    const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    const Units base{metrics.horizontalAdvance(letters) / static_cast<double>(letters.size()) / 4,
                     metrics.height() / 8};
    Units units = base;
    for (const Placed& placed : m_Placed) {
        const QSize wanted = placed.m_Widget->sizeHint();
        const ControlRow& row = *placed.m_Row;
        if (HasFixedText(row.m_Kind) && row.m_Width > 0)
            units.m_Across = std::max(units.m_Across, double{1} * wanted.width() / row.m_Width);
        if (row.m_Kind != ControlRow::label && row.m_Kind != ControlRow::colorSample &&
            row.m_Kind != ControlRow::groupBox && row.m_Height > 0)
            units.m_Down = std::max(units.m_Down, double{1} * wanted.height() / row.m_Height);
    }
    return {std::min(units.m_Across, base.m_Across * kMostGrowth),
            std::min(units.m_Down, base.m_Down * kMostGrowth)};
}

void QtDialog::Place(const Units& units) {
    const auto across = [&](int x) { return static_cast<int>(std::lround(x * units.m_Across)); };
    const auto down = [&](int y) { return static_cast<int>(std::lround(y * units.m_Down)); };
    for (const Page& page : m_Pages)
        page.m_Widget->setFixedSize(across(page.m_Resource->m_Width),
                                    down(page.m_Resource->m_Height));
    for (const Placed& placed : m_Placed) {
        const ControlRow& row = *placed.m_Row;
        QRect place(across(row.m_X), down(row.m_Y), across(row.m_Width), down(row.m_Height));
        // A combo box's height in a table may count its open list.
        if (row.m_Kind == ControlRow::comboBox)
            place.setHeight(std::min(place.height(), placed.m_Widget->sizeHint().height()));
        placed.m_Widget->setGeometry(place);
    }
}

int QtDialog::Run() {
    m_Sink.DialogShown(*this);
    SelectFirstEdit();
    if (!m_Result)
        exec();
    return m_Result.value_or(kIdCancel);
}

/// So that what is typed replaces what a dialog is preset with.
void QtDialog::SelectFirstEdit() {
    for (const Placed& placed : m_Placed) {
        if (auto* edit = qobject_cast<QLineEdit*>(placed.m_Widget)) {
            edit->setFocus();
            edit->selectAll();
            return;
        }
    }
}

void QtDialog::Notice(unsigned control, unsigned notice) {
    if (m_Result)
        return;
    ++m_Noticing;
    m_Sink.ControlNotice(control, notice);
    if (--m_Noticing == 0 && m_Result)
        done(*m_Result);
}

void QtDialog::reject() {
    Notice(kIdCancel, kNoticeClicked);
}

void QtDialog::End(int result) {
    if (m_Result)
        return;
    m_Result = result;
    if (m_Noticing == 0 && isVisible())
        done(result);
}

QWidget* QtDialog::FindControl(unsigned control) const {
    const auto place = m_Controls.find(control);
    return place == m_Controls.end() ? nullptr : place->second;
}

template <class T>
T* QtDialog::Find(unsigned control) const {
    return qobject_cast<T*>(FindControl(control));
}

AString QtDialog::GetText(unsigned control) {
    const QWidget* const found = FindControl(control);
    if (const auto* box = qobject_cast<const QComboBox*>(found))
        return FromQt(box->currentText());
    return found ? FromQt(found->property("text").toString()) : AString();
}

void QtDialog::SetText(unsigned control, const AString& text) {
    if (auto* box = Find<QComboBox>(control))
        box->setEditText(ToQt(text));
    else if (QWidget* found = FindControl(control))
        found->setProperty(qobject_cast<QGroupBox*>(found) ? "title" : "text", ToQt(text));
}

bool QtDialog::IsChecked(unsigned control) {
    const auto* button = Find<QAbstractButton>(control);
    return button && button->isChecked();
}

void QtDialog::SetChecked(unsigned control, bool checked) {
    auto* const button = Find<QAbstractButton>(control);
    if (!button)
        return;
    // A group that allows one choice only doesn't give that one up.
    QButtonGroup* const group = checked ? nullptr : button->group();
    if (group)
        group->setExclusive(false);
    button->setChecked(checked);
    if (group)
        group->setExclusive(true);
}

void QtDialog::Enable(unsigned control, bool enabled) {
    if (QWidget* found = FindControl(control))
        found->setEnabled(enabled);
}

void QtDialog::AddItem(unsigned control, const AString& text) {
    auto* const box = Find<QComboBox>(control);
    if (!box)
        return;
    const int index = box->currentIndex();
    const QString shown = box->currentText();
    box->addItem(ToQt(text));
    box->setCurrentIndex(index); // the first item would select itself
    box->setEditText(shown);
}

int QtDialog::GetSelection(unsigned control) {
    const auto* box = Find<QComboBox>(control);
    return box ? box->currentIndex() : -1;
}

void QtDialog::SetSelection(unsigned control, int index) {
    auto* const box = Find<QComboBox>(control);
    if (!box)
        return;
    const bool inside = index >= 0 && index < box->count();
    box->setCurrentIndex(inside ? index : -1);
    box->setEditText(inside ? box->itemText(index) : QString());
}

void QtDialog::SetFont(unsigned control, const IBackendFont* font) {
    const auto* own = dynamic_cast<const QtFont*>(font);
    if (QWidget* found = FindControl(control); found && own)
        found->setFont(own->GetControlFont());
}

void QtDialog::SetColor(unsigned control, ColorRef color) {
    auto* const sample = Find<QFrame>(control);
    if (!sample)
        return;
    QPalette palette = sample->palette();
    palette.setColor(QPalette::Window, ToQt(color));
    sample->setPalette(palette);
}
