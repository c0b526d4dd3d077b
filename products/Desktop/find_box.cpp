#include "find_box.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include "messages.h"
#include "qt_strings.h"

namespace {

constexpr int kShownCharacters = 22;

constexpr struct {
    unsigned m_Message;
    void (*m_Edit)(QLineEdit&);
} kEdits[] = {
    {kMsgCut, [](QLineEdit& edit) { edit.cut(); }},
    {kMsgCopy, [](QLineEdit& edit) { edit.copy(); }},
    {kMsgPaste, [](QLineEdit& edit) { edit.paste(); }},
};

} // namespace

FindBox::FindBox(CComboBox& box, QWidget* parent) : QComboBox(parent), m_Box(box) {
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    setMinimumContentsLength(kShownCharacters);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    lineEdit()->setPlaceholderText(QStringLiteral("Find"));
    lineEdit()->setClearButtonEnabled(true);
    setAccessibleName(QStringLiteral("Find"));
    connect(this, &QComboBox::editTextChanged, this, [this](const QString& text) {
        if (m_Syncing)
            return;
        m_Syncing = true;
        m_Box.SetWindowText(ToAString(text));
        m_Syncing = false;
    });
    m_Box.SetPeer(this);
    ComboBoxChanged();
}

FindBox::~FindBox() {
    m_Box.SetPeer(nullptr);
}

void FindBox::ComboBoxChanged() {
    if (m_Syncing)
        return;
    m_Syncing = true;
    QStringList items;
    for (int i = 0; i < m_Box.GetCount(); ++i)
        items << FromAString(m_Box.GetItemText(i));
    clear();
    addItems(items);
    setEditText(FromAString(m_Box.GetWindowText()));
    m_Syncing = false;
}

void FindBox::EditCommand(unsigned message) {
    for (const auto& edit : kEdits)
        if (edit.m_Message == message)
            edit.m_Edit(*lineEdit());
}

bool FindBox::TakeKey(const QKeyEvent& key) {
    const bool isReturn = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (isReturn && m_OnReturn)
        m_OnReturn(key.modifiers().testFlag(Qt::ShiftModifier));
    if (key.key() == Qt::Key_Escape && m_OnEscape)
        m_OnEscape();
    if (isReturn || key.key() == Qt::Key_Escape)
        return true;
    return m_OnOtherKey && !Edits(key) && m_OnOtherKey(key);
}

/// Whether the line has a use for a key: it is asked as before a shortcut.
bool FindBox::Edits(const QKeyEvent& key) const {
    QKeyEvent question(QEvent::ShortcutOverride, key.key(), key.modifiers(), key.text());
    question.ignore();
    QCoreApplication::sendEvent(lineEdit(), &question);
    return question.isAccepted();
}

/// The line has no focus of its own: what comes to the box is passed on to it past all filters.
bool FindBox::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress && TakeKey(static_cast<QKeyEvent&>(*event)))
        return true;
    if (event->type() == QEvent::FocusIn) {
        m_Box.SetFocus();
        if (m_OnFocus)
            m_OnFocus();
    }
    if (event->type() == QEvent::FocusOut)
        m_Box.HandleMessage(kMsgKillFocus, 0, 0);
    return QComboBox::event(event);
}
