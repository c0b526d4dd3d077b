#include "undo_pane.h"

#include <QAbstractListModel>
#include <QListView>
#include <QPalette>

#include "open_document.h"
#include "qt_strings.h"
#include "quorel_command.h"
#include "undo_manager.h"

/// The rows of the pane. It asks for the text anew each time, which may have been closed.
class UndoModel : public QAbstractListModel {
public:
    UndoModel(std::function<OpenDocument*()> source, QObject* parent)
        : QAbstractListModel(parent), m_Source(std::move(source)) {}

    OpenDocument* GetDocument() const { return m_Source(); }
    int GetCurrentRow() const { return m_Shown.m_CurrentRow; }
    bool Refresh();

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : m_Shown.m_Rows;
    }
    QVariant data(const QModelIndex& index, int role) const override;

private:
    /// What the rows show.
    struct Shown {
        const Undo_Manager* m_Commands = nullptr;
        int m_Rows = 0;
        int m_CurrentRow = -1;
        bool operator==(const Shown&) const = default;
    };
    QString TextOf(int row) const;

    std::function<OpenDocument*()> m_Source;
    Shown m_Shown;
};

/// @return whether anything is other than it was
bool UndoModel::Refresh() {
    Shown now;
    if (OpenDocument* document = m_Source()) {
        const Undo_Manager& commands = document->GetCommands();
        now = {&commands, static_cast<int>(commands.GetCommandCount()) + 1,
               commands.GetCommandIndex() + 1};
    }
    if (now == m_Shown)
        return false;
    beginResetModel();
    m_Shown = now;
    endResetModel();
    return true;
}

QString UndoModel::TextOf(int row) const {
    if (row == 0)
        return QStringLiteral("Begin");
    OpenDocument* const document = m_Source();
    const auto command = static_cast<std::size_t>(row) - 1;
    if (!document || command >= document->GetCommands().GetCommandCount())
        return {};
    AString text;
    document->GetCommands().GetCommand(command).GetDescription(text);
    return text.empty() ? QStringLiteral("Edit") : FromAString(text);
}

QVariant UndoModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::DisplayRole)
        return TextOf(index.row());
    if (role == Qt::ForegroundRole && index.row() > m_Shown.m_CurrentRow)
        return QPalette().brush(QPalette::Disabled, QPalette::Text);
    return {};
}

UndoPane::UndoPane(std::function<OpenDocument*()> source, QWidget* parent)
    : QDockWidget(QStringLiteral("Undo History"), parent),
      m_Model(new UndoModel(std::move(source), this)), m_List(new QListView(this)) {
    setObjectName(QStringLiteral("UndoPane"));
    m_List->setModel(m_Model);
    m_List->setUniformItemSizes(true);
    m_List->setFrameShape(QFrame::NoFrame);
    m_List->setAccessibleName(QStringLiteral("Undo history"));
    connect(m_List, &QListView::clicked, this,
            [this](const QModelIndex& index) { GoTo(index.row()); });
    connect(m_List, &QListView::activated, this,
            [this](const QModelIndex& index) { GoTo(index.row()); });
    setWidget(m_List);
}

void UndoPane::Refresh() {
    if (isVisible() && m_Model->Refresh())
        m_List->setCurrentIndex(m_Model->index(m_Model->GetCurrentRow()));
}

void UndoPane::GoTo(int row) {
    OpenDocument* const document = m_Model->GetDocument();
    if (!document)
        return;
    const Undo_Manager& commands = document->GetCommands();
    const int wanted = row - 1;
    int before = -2; // no index
    for (int at; (at = commands.GetCommandIndex()) != wanted && at != before; before = at)
        at > wanted ? document->Undo() : document->Redo(); // one that refuses ends it
    m_OnMoved();
}
