/// KeysPage: all keys, made from the tables of commands.
#pragma once

#include <vector>

#include <QDialog>

class INetlistFactory;

/// A row of the page; one without a key is a heading.
struct KeyRow {
    QString m_Key;
    QString m_Text;
};

/// The keys of the module's commands, then those of the texts themselves.
std::vector<KeyRow> ModuleKeys(INetlistFactory& factory);

class KeysPage : public QDialog {
public:
    KeysPage(const std::vector<KeyRow>& rows, QWidget* parent);
};
