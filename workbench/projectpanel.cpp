// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "projectpanel.h"

#include "projectgroups.h"
#include "projectoptions.h"

#include "project/edamproject.h"

#include <QDir>
#include <QHash>
#include <QScrollBar>
#include <QSet>
#include <QTreeWidgetItemIterator>

namespace Workbench {

static constexpr int PathRole = Qt::UserRole;
static constexpr int OptionRole = Qt::UserRole + 1;

static QTreeWidgetItem *makeFileRow(const TE::DesignFile &file, const QDir &directory, int group)
{
    auto *row = new QTreeWidgetItem;
    row->setText(0, directory.relativeFilePath(file.path));
    row->setToolTip(0, QDir::toNativeSeparators(file.path));
    row->setIcon(0, QIcon(groupPicture(group, file.path)));
    row->setData(0, PathRole, file.path);
    if (!file.enable) {
        row->setForeground(0, Qt::gray);
        row->setToolTip(
            0, row->toolTip(0) + "\n" + ProjectPanel::tr("Switched off: not in the design"));
    }
    return row;
}

static QTreeWidgetItem *makeOptionsRow(const Standin::EdamProject &project)
{
    auto *group = new QTreeWidgetItem({ProjectPanel::tr("Options")});
    const QVector<ProjectOption> options = projectOptions();
    for (const ProjectOption &option : options) {
        const QString value = optionText(project.option(option.name));
        auto *row = new QTreeWidgetItem({option.title + ": " + value});
        row->setToolTip(0, row->text(0));
        row->setData(0, OptionRole, option.name);
        group->addChild(row);
    }
    return group;
}

ProjectPanel::ProjectPanel(QWidget *parent)
    : QTreeWidget(parent)
{
    setObjectName("projectPanel");
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setTextElideMode(Qt::ElideMiddle);
    setSelectionMode(ExtendedSelection);
    connect(this, &QTreeWidget::itemActivated, this, &ProjectPanel::onItemActivated);
}

static QSet<QString> foldedGroups(const QTreeWidget *tree)
{
    QSet<QString> folded;
    const QTreeWidgetItem *root = tree->topLevelItem(0);
    for (int i = 0; root && i < root->childCount(); ++i) {
        if (!root->child(i)->isExpanded())
            folded.insert(root->child(i)->text(0));
    }
    return folded;
}

// What a row is about, which tells the rows of one tree from one another.
static QString keyOf(const QTreeWidgetItem *row)
{
    const QString path = row->data(0, PathRole).toString();
    if (!path.isEmpty())
        return path;
    const QString option = row->data(0, OptionRole).toString();
    return option.isEmpty() ? "group " + row->text(0) : "option " + option;
}

namespace {

// Which rows of a tree are selected and which is current, so that another tree can take it over.
struct Marks
{
    QStringList order; // the keys from the current row to the end, then back from it to the start
    QSet<QString> selected;
    int scrolled = 0;
};

} // namespace

static Marks marksOf(const QTreeWidget *tree)
{
    Marks marks;
    marks.scrolled = tree->verticalScrollBar()->value();
    QStringList before;
    bool passed = false;
    for (QTreeWidgetItemIterator it(const_cast<QTreeWidget *>(tree)); *it; ++it) {
        passed = passed || *it == tree->currentItem();
        const QString key = keyOf(*it);
        if (passed)
            marks.order.append(key);
        else
            before.prepend(key);
    }
    marks.order = passed ? marks.order + before : QStringList();
    const QList<QTreeWidgetItem *> selected = tree->selectedItems();
    for (const QTreeWidgetItem *row : selected)
        marks.selected.insert(keyOf(row));
    return marks;
}

// The rows below \a parent whose keys are in \a keys, neighbours in one range.
static void selectChildren(const QAbstractItemModel *model, const QModelIndex &parent,
                           const QTreeWidgetItem *parentRow, const QSet<QString> &keys,
                           QItemSelection *selection)
{
    int first = -1;
    const int count = parentRow->childCount();
    for (int i = 0; i <= count; ++i) {
        const bool isSelected = i < count && keys.contains(keyOf(parentRow->child(i)));
        if (isSelected && first < 0)
            first = i;
        if (isSelected || first < 0)
            continue;
        selection->append({model->index(first, 0, parent), model->index(i - 1, 0, parent)});
        first = -1;
    }
    for (int i = 0; i < count; ++i) {
        if (parentRow->child(i)->childCount() > 0)
            selectChildren(model, model->index(i, 0, parent), parentRow->child(i), keys, selection);
    }
}

// All at once, since whoever listens looks at the whole selection each time.
static void applyMarks(const Marks &marks, QTreeWidget *tree)
{
    QItemSelection selection;
    selectChildren(tree->model(), QModelIndex(), tree->invisibleRootItem(), marks.selected,
                   &selection);
    tree->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);

    QHash<QString, QTreeWidgetItem *> rows;
    for (QTreeWidgetItemIterator it(tree); *it; ++it)
        rows.insert(keyOf(*it), *it);
    for (const QString &key : marks.order) {
        QTreeWidgetItem *row = rows.value(key);
        if (!row)
            continue;
        // Without a selection that is left, the user goes on from here.
        const bool select = selection.isEmpty() && !marks.selected.isEmpty();
        tree->setCurrentItem(
            row, 0, select ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate);
        break;
    }
    tree->verticalScrollBar()->setValue(marks.scrolled);
}

void ProjectPanel::showProject(const Standin::EdamProject *project)
{
    const QSet<QString> folded = foldedGroups(this);
    const Marks marks = marksOf(this);
    clear();
    if (!project)
        return;

    QVector<QList<QTreeWidgetItem *>> rows(GroupCount);
    const QDir directory(project->directory());
    const QList<TE::DesignFile> files = project->files();
    for (const TE::DesignFile &file : files) {
        const ProjectGroup group = groupOf(file);
        rows[group].append(makeFileRow(file, directory, group));
    }

    auto *root = new QTreeWidgetItem({project->name()});
    root->setIcon(0, QIcon(":/workbench/project.png"));
    root->setToolTip(0, QDir::toNativeSeparators(project->path()));
    for (int group = 0; group < GroupCount; ++group) {
        if (rows.at(group).isEmpty())
            continue;
        auto *row = new QTreeWidgetItem(root, {groupTitle(group)});
        row->addChildren(rows.at(group));
    }
    root->addChild(makeOptionsRow(*project));

    addTopLevelItem(root);
    root->setExpanded(true);
    for (int i = 0; i < root->childCount(); ++i)
        root->child(i)->setExpanded(!folded.contains(root->child(i)->text(0)));
    applyMarks(marks, this);
}

QStringList ProjectPanel::selectedFiles() const
{
    QStringList paths;
    const QList<QTreeWidgetItem *> rows = selectedItems();
    for (const QTreeWidgetItem *row : rows) {
        const QString path = row->data(0, PathRole).toString();
        if (!path.isEmpty())
            paths.append(path);
    }
    return paths;
}

QString ProjectPanel::currentOption() const
{
    return currentItem() ? currentItem()->data(0, OptionRole).toString() : QString();
}

void ProjectPanel::onItemActivated(QTreeWidgetItem *item)
{
    const QString path = item->data(0, PathRole).toString();
    const QString option = item->data(0, OptionRole).toString();
    if (!path.isEmpty())
        emit fileActivated(path);
    else if (!option.isEmpty())
        emit optionActivated(option);
}

} // namespace Workbench
