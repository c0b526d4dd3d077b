/// ProjectTree: the designs of the project, their instances and scripts, to be opened from there.
#pragma once

#include <functional>

#include <QDockWidget>

#include "project.h"

class QTreeWidget;
class QTreeWidgetItem;

class ProjectTree : public QDockWidget {
public:
    explicit ProjectTree(QWidget* parent = nullptr);

    /// @param project outlives what is shown; null: none
    void ShowProject(const Project* project);
    QTreeWidget& GetTree() { return *m_Tree; }

    /// Told of what the user opens.
    std::function<void(ProjectDesign&, ProjectInstance&)> m_OnInstance;
    std::function<void(ProjectDesign&, ProjectScript&)> m_OnScript;

private:
    void Open(QTreeWidgetItem& item);

    QTreeWidget* m_Tree;
    const Project* m_Project = nullptr;
};
