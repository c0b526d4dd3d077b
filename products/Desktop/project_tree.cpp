#include "project_tree.h"

#include <QTreeWidget>

#include "qt_strings.h"

namespace {

// What an item has beside its text: the number of its design, and its own among the design's
// instances and scripts.
constexpr int kDesignRole = Qt::UserRole;
constexpr int kNumberRole = Qt::UserRole + 1;

QTreeWidgetItem* MakeItem(const AString& name, const QString& missing, qulonglong design) {
    const QString text = FromAString(name);
    auto* const item = new QTreeWidgetItem({text.isEmpty() ? missing : text});
    item->setData(0, kDesignRole, design);
    return item;
}

QTreeWidgetItem* MakeDesign(const ProjectDesign& design, qulonglong number) {
    auto* const item = MakeItem(design.m_Name, QStringLiteral("(design)"), number);
    qulonglong own = 0;
    const auto append = [&](QTreeWidgetItem* child, const QString& tip) {
        child->setData(0, kNumberRole, own++);
        child->setToolTip(0, tip);
        item->addChild(child);
    };
    for (const auto& instance : design.m_Instances)
        append(MakeItem(instance->m_Name, QStringLiteral("(instance)"), number),
               QStringLiteral("Instance of the design"));
    for (const auto& script : design.m_Scripts)
        append(MakeItem(script->m_Name, QStringLiteral("(script)"), number),
               QStringLiteral("Script in %1").arg(FromAString(script->m_Language)));
    return item;
}

} // namespace

ProjectTree::ProjectTree(QWidget* parent)
    : QDockWidget(QStringLiteral("Project"), parent), m_Tree(new QTreeWidget(this)) {
    setObjectName(QStringLiteral("ProjectTree"));
    m_Tree->setHeaderHidden(true);
    m_Tree->setUniformRowHeights(true);
    m_Tree->setExpandsOnDoubleClick(false);
    setWidget(m_Tree);
    connect(m_Tree, &QTreeWidget::itemActivated, this,
            [this](QTreeWidgetItem* item) { Open(*item); });
}

void ProjectTree::ShowProject(const Project* project) {
    m_Tree->clear();
    m_Project = project;
    setWindowTitle(project ? QStringLiteral("Project ") + FromAString(project->m_Name)
                           : QStringLiteral("Project"));
    if (!project)
        return;
    QList<QTreeWidgetItem*> items;
    for (const auto& design : project->m_Designs)
        items.append(MakeDesign(*design, static_cast<qulonglong>(items.size())));
    m_Tree->addTopLevelItems(items);
    constexpr qsizetype kMostExpanded = 50;
    if (items.size() <= kMostExpanded)
        m_Tree->expandAll();
}

void ProjectTree::Open(QTreeWidgetItem& item) {
    ProjectDesign& design = *m_Project->m_Designs[item.data(0, kDesignRole).toULongLong()];
    const bool isDesign = !item.parent();
    if (isDesign && design.m_Instances.empty())
        return;
    const std::size_t number = isDesign ? 0 : item.data(0, kNumberRole).toULongLong();
    const std::size_t instances = design.m_Instances.size();
    if (number < instances)
        m_OnInstance(design, *design.m_Instances[number]);
    else
        m_OnScript(design, *design.m_Scripts[number - instances]);
}
