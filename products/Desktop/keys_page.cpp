#include "keys_page.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "ifactory.h"
#include "ifactory_tools.h"
#include "messages.h"
#include "module_commands.h"
#include "qt_strings.h"
#include "resources.h"

namespace {

/// What the texts do with keys that are no commands.
constexpr struct {
    const char* m_Key;
    const char* m_Text;
} kTextKeys[] = {
    {"Arrow keys", "Move the caret"},
    {"Ctrl+Left, Ctrl+Right", "Move by words"},
    {"Home, End", "Begin and end of the line"},
    {"Ctrl+Home, Ctrl+End", "Begin and end of the text"},
    {"Page Up, Page Down", "Move by pages"},
    {"Shift+any of these", "Select"},
    {"Alt+drag", "Select a block of columns"},
    {"Insert", "Insert or overwrite"},
    {"Escape", "Cancel the selection"},
    {"Ctrl+wheel", "Larger or smaller text"},
};

constexpr struct {
    unsigned m_Modifier;
    const char* m_Name;
} kModifiers[] = {{kModControl, "Ctrl+"}, {kModAlt, "Alt+"}, {kModShift, "Shift+"}};

QString KeyName(const Accelerator& key) {
    QString name;
    for (const auto& modifier : kModifiers)
        if (key.m_Modifiers & modifier.m_Modifier)
            name += QLatin1String(modifier.m_Name);
    constexpr unsigned kF1 = kKeyF2 - 1;
    return key.m_Key >= kF1 && key.m_Key < kF1 + 24
               ? name + QStringLiteral("F%1").arg(key.m_Key - kF1 + 1)
               : name + QChar(static_cast<char16_t>(key.m_Key));
}

} // namespace

std::vector<KeyRow> ModuleKeys(INetlistFactory& factory) {
    AString name;
    factory.GetEditorsName(name);
    std::vector<KeyRow> rows{{{}, FromAString(name)}};
    if (auto* tools = dynamic_cast<IFactoryTools*>(&factory))
        for (const Accelerator& key : tools->GetKeys())
            rows.push_back({KeyName(key), StatusTextOf(key.m_Command)});
    rows.push_back({{}, QStringLiteral("In the text")});
    for (const auto& key : kTextKeys)
        rows.push_back({QLatin1String(key.m_Key), QLatin1String(key.m_Text)});
    return rows;
}

KeysPage::KeysPage(const std::vector<KeyRow>& rows, QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("Keys"));
    auto* tree = new QTreeWidget;
    tree->setColumnCount(2);
    tree->setHeaderLabels({QStringLiteral("Command"), QStringLiteral("Key")});
    tree->setAlternatingRowColors(true);
    QTreeWidgetItem* heading = nullptr;
    for (const KeyRow& row : rows) {
        if (row.m_Key.isEmpty() || !heading)
            heading = new QTreeWidgetItem(tree, {row.m_Text});
        if (!row.m_Key.isEmpty())
            new QTreeWidgetItem(heading, {row.m_Text, row.m_Key});
    }
    tree->expandAll();
    tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    tree->header()->setStretchLastSection(false);
    tree->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    auto* search = new QLineEdit;
    search->setPlaceholderText(QStringLiteral("Search"));
    search->setClearButtonEnabled(true);
    connect(search, &QLineEdit::textChanged, this, [tree](const QString& text) {
        for (QTreeWidgetItemIterator at(tree, QTreeWidgetItemIterator::NoChildren); *at; ++at)
            (*at)->setHidden(!(*at)->text(0).contains(text, Qt::CaseInsensitive) &&
                             !(*at)->text(1).contains(text, Qt::CaseInsensitive));
    });
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(search);
    layout->addWidget(tree);
    layout->addWidget(buttons);
    resize(520, 560);
}
