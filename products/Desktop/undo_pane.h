/// UndoPane: the commands of the active text, done and undone, to go back and forth among.
#pragma once

#include <functional>

#include <QDockWidget>

class OpenDocument;
class QListView;
class UndoModel;

/// A row for the state at the begin and one for that behind each command, the oldest first. A click
/// goes to that state. Showing costs what is in sight.
class UndoPane : public QDockWidget {
public:
    /// @param source gives the active text, null for none
    UndoPane(std::function<OpenDocument*()> source, QWidget* parent);

    /// Shows how the active text's commands stand now.
    void Refresh();
    /// Undoes, or does again, until that row's state is reached.
    void GoTo(int row);

    /// Told when the user has gone to another state.
    std::function<void()> m_OnMoved;

private:
    UndoModel* m_Model;
    QListView* m_List;
};
