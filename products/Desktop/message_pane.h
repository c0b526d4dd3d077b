/// MessagePane: what the desktop and its modules have told, kept for reading.
#pragma once

#include <QDockWidget>

class QListWidget;

class MessagePane : public QDockWidget {
public:
    explicit MessagePane(QWidget* parent = nullptr);

    /// Appends a message with the time of day; the oldest of many go.
    /// @param warning also brings the pane into sight
    void Add(const QString& text, bool warning);
    QString GetText() const;

private:
    void Copy() const;

    QListWidget* m_List;
};
