// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "projectpanel.h"

#include "filekinds.h"

#include "project/edamproject.h"

#include <QDir>
#include <QSet>

namespace Workbench {

static constexpr int PathRole = Qt::UserRole;

namespace {

enum Group {
    ConfigurationGroup,
    VerilogGroup,
    SystemVerilogGroup,
    VhdlGroup,
    NetlistGroup,
    IncludeGroup,
    OtherGroup,
    GroupCount
};

} // namespace

static QString groupTitle(int group)
{
    switch (group) {
    case VerilogGroup:
        return ProjectPanel::tr("Verilog");
    case SystemVerilogGroup:
        return ProjectPanel::tr("SystemVerilog");
    case VhdlGroup:
        return ProjectPanel::tr("VHDL");
    case NetlistGroup:
        return ProjectPanel::tr("Netlists");
    case IncludeGroup:
        return ProjectPanel::tr("Include Files");
    case ConfigurationGroup:
        return ProjectPanel::tr("Configurations");
    default:
        return ProjectPanel::tr("Other Files");
    }
}

// The project's word on a file's kind counts, not the file's suffix, except where the project has
// no word for it.
static Group groupOf(const TE::DesignFile &file)
{
    if (file.data.value("is_include_file").toBool())
        return IncludeGroup;
    const FileKind kind = fileKind(file.path);
    if (kind == FileKind::Netlist)
        return NetlistGroup;
    switch (file.type) {
    case Standin::VerilogKind:
        return VerilogGroup;
    case Standin::SystemVerilogKind:
        return SystemVerilogGroup;
    case Standin::VhdlKind:
        return VhdlGroup;
    default:
        break;
    }
    return kind == FileKind::Configuration ? ConfigurationGroup : OtherGroup;
}

static FileKind kindOfGroup(int group, const QString &path)
{
    switch (group) {
    case VerilogGroup:
        return FileKind::Verilog;
    case SystemVerilogGroup:
        return FileKind::SystemVerilog;
    case VhdlGroup:
        return FileKind::Vhdl;
    default:
        return fileKind(path);
    }
}

static QTreeWidgetItem *makeFileRow(const TE::DesignFile &file, const QDir &directory, int group)
{
    auto *row = new QTreeWidgetItem;
    row->setText(0, directory.relativeFilePath(file.path));
    row->setToolTip(0, QDir::toNativeSeparators(file.path));
    row->setIcon(0, QIcon(filePicture(kindOfGroup(group, file.path))));
    row->setData(0, PathRole, file.path);
    if (!file.enable)
        row->setForeground(0, Qt::gray);
    return row;
}

static QTreeWidgetItem *makeOptionsRow(const Standin::EdamProject &project)
{
    static const struct
    {
        const char *option;
        const char *title;
    } options[] = {
        {"TopModule", QT_TRANSLATE_NOOP("Workbench::ProjectPanel", "Top module")},
        {"Device", QT_TRANSLATE_NOOP("Workbench::ProjectPanel", "Device")},
        {"Verilog_Standard", QT_TRANSLATE_NOOP("Workbench::ProjectPanel", "Verilog standard")},
        {"Synthesize_tool", QT_TRANSLATE_NOOP("Workbench::ProjectPanel", "Synthesis tool")},
        {"IncludePath", QT_TRANSLATE_NOOP("Workbench::ProjectPanel", "Include path")},
    };

    auto *group = new QTreeWidgetItem({ProjectPanel::tr("Options")});
    for (const auto &entry : options) {
        QString value = project.option(QLatin1String(entry.option)).toStringList().join(", ");
        if (value.isEmpty())
            value = ProjectPanel::tr("not set");
        auto *row = new QTreeWidgetItem({ProjectPanel::tr(entry.title) + ": " + value});
        row->setToolTip(0, row->text(0));
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

void ProjectPanel::showProject(const Standin::EdamProject *project)
{
    const QSet<QString> folded = foldedGroups(this);
    clear();
    if (!project)
        return;

    QVector<QList<QTreeWidgetItem *>> rows(GroupCount);
    const QDir directory(project->directory());
    const QList<TE::DesignFile> files = project->files();
    for (const TE::DesignFile &file : files) {
        const Group group = groupOf(file);
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
}

void ProjectPanel::onItemActivated(QTreeWidgetItem *item)
{
    const QString path = item->data(0, PathRole).toString();
    if (!path.isEmpty())
        emit fileActivated(path);
}

} // namespace Workbench
