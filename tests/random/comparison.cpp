// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "comparison.h"

#include "initialvalueline.h"
#include "modellines.h"
#include "molkview.h"
#include "molkview_p.h"
#include "probeportsoptionwidget.h"
#include "reloadbanner.h"
#include "stage.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QDockWidget>
#include <QFile>
#include <QFileSystemWatcher>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>

using namespace MOLK;

static QString onOff(bool on)
{
    return QLatin1String(on ? "on" : "off");
}

// A row as the user sees it: "text" and how it looks.
static QString rowLine(const QString &text, const QString &tip, bool selectable, bool found,
                       bool italic, bool enabled, int depth)
{
    QString line = QString(depth * 2, QLatin1Char(' ')) + '"' + text + '"';
    if (tip != text)
        line += " tip \"" + tip + '"';
    if (!selectable)
        line += " gray";
    else if (!found)
        line += " red";
    if (italic)
        line += " italic";
    return enabled ? line : line + " disabled";
}

// The bits of a disabled bus are disabled with it, in their own colours.
static QString rowLine(const Plain::Signal &item, bool enabled, int depth)
{
    return rowLine(item.text(), item.text(), item.selectable, item.found, !item.alias.isEmpty(),
                   enabled && item.selectable, depth);
}

static QString rowLine(const QTreeWidgetItem *row, int depth)
{
    const QColor colour = row->foreground(0).color();
    QString line = rowLine(row->text(0), row->toolTip(0), colour != QColor(Qt::gray),
                           colour != QColor(Qt::red), row->font(0).italic(),
                           row->flags() & Qt::ItemIsEnabled, depth);
    if (bool(row->flags() & Qt::ItemIsSelectable) != (colour != QColor(Qt::gray)))
        line += " with flags " + QString::number(int(row->flags()));
    return line;
}

static void addRows(QStringList *lines, const Plain::Items &items, int depth, bool withBits,
                    bool enabled = true)
{
    for (const Plain::Signal &item : items) {
        lines->append(rowLine(item, enabled, depth));
        if (withBits)
            addRows(lines, item.members, depth + 1, true, item.selectable);
    }
}

static void addRows(QStringList *lines, const QTreeWidgetItem *parent, int depth)
{
    for (int i = 0; i < parent->childCount(); ++i) {
        lines->append(rowLine(parent->child(i), depth));
        addRows(lines, parent->child(i), depth + 1);
    }
}

QStringList rowLines(const Plain::Items &items)
{
    QStringList lines;
    addRows(&lines, items, 0, true);
    return lines;
}

QStringList rowLines(const QTreeWidget *tree)
{
    QStringList lines;
    addRows(&lines, tree->invisibleRootItem(), 0);
    return lines;
}

static QString portLine(const QString &name, bool expanded)
{
    return '"' + name + "\" expanded " + onOff(expanded);
}

static QString clockLine(const QString &clock, bool checked, const QString &enabled)
{
    return "clock \"" + clock + "\" " + onOff(checked) + " enabled " + enabled;
}

static void addPage(QStringList *lines, const Plain::Page &page)
{
    for (int i = 0; i < page.core.ins.size(); ++i) {
        lines->append(portLine("Probe In" + QString::number(i), page.insExpanded.at(i)));
        addRows(lines, page.shownIns.at(i), 1, true);
    }
    for (int i = 0; i < page.lines.size(); ++i) {
        lines->append(portLine("Probe Out" + QString::number(i), page.outsExpanded.at(i)));
        addRows(lines, page.core.outs.at(i).items, 1, false);
    }
    for (int i = 0; i < page.lines.size(); ++i) {
        const Plain::ValueLine &line = page.lines.at(i);
        lines->append(portLine(line.text, page.outsExpanded.at(i)) + " enabled "
                      + onOff(line.enabled) + " of " + QString::number(i) + " bits "
                      + line.labels.join('|'));
    }
    const QString state = onOff(page.useClock);
    lines->append(clockLine(page.clock, page.useClock, state + ' ' + state + ' ' + state));
}

static void addPorts(QStringList *lines, const QTreeWidget *tree)
{
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *row = tree->topLevelItem(i);
        lines->append(portLine(row->text(0), row->isExpanded()));
        addRows(lines, row, 1);
    }
}

static void addValues(QStringList *lines, QTreeWidget *tree)
{
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem *row = tree->topLevelItem(i);
        const auto *line = qobject_cast<InitialValueLine *>(tree->itemWidget(row, 0));
        if (!line) {
            lines->append("no line");
            continue;
        }
        QStringList labels;
        for (int j = 0; j < row->childCount(); ++j) {
            const auto *label = qobject_cast<QLabel *>(tree->itemWidget(row->child(j), 0));
            labels.append(label && line->labels.value(j) == label ? label->text()
                                                                  : QString("no label"));
        }
        lines->append(portLine(line->displayText(), row->isExpanded()) + " enabled "
                      + onOff(line->isEnabled()) + " of " + QString::number(line->index) + " bits "
                      + labels.join('|'));
    }
}

static void addPage(QStringList *lines, const ProbePortsOptionWidget *page)
{
    addPorts(lines, page->findChild<QTreeWidget *>("treeProbeIn"));
    addPorts(lines, page->findChild<QTreeWidget *>("treeProbeOut"));
    addValues(lines, page->findChild<QTreeWidget *>("treeValue"));
    QStringList enabled;
    for (const QString &name :
         {QString("labelClock"), QString("btnUserClock"), QString("lineEditUserClock")})
        enabled.append(onOff(page->findChild<QWidget *>(name)->isEnabled()));
    lines->append(clockLine(page->findChild<QLineEdit *>("lineEditUserClock")->text(),
                            page->findChild<QCheckBox *>("checkUserClock")->isChecked(),
                            enabled.join(' ')));
}

static QString actionLine(const QString &text, const QString &tip, bool enabled)
{
    return "action " + text + " | " + tip + " | " + onOff(enabled);
}

static QString viewLine(const QString &title, const QString &shortTitle, bool modified,
                        bool watched, int shown, const QString &dock)
{
    return "view \"" + title + "\" \"" + shortTitle + "\" modified " + onOff(modified) + " watched "
        + onOff(watched) + " shows " + QString::number(shown) + " as " + dock;
}

static QString diskLine(const QString &kind, const QByteArray &bytes)
{
    return "disk " + kind + ' ' + QString::fromUtf8(bytes);
}

static void addDocument(QStringList *lines, const Plain::Document &document)
{
    static const QStringList kinds = {"missing", "file", "file", "directory"};
    lines->append(diskLine(kinds.at(document.disk.kind), document.disk.bytes));
    const Plain::View &view = document.view;
    if (!view.isOpen) {
        lines->append("no view");
        return;
    }
    lines->append(viewLine(view.title, view.shortTitle, view.modified, view.watched, view.current,
                           "molk_" + QString::number(view.current)));
    for (const Plain::Banner &banner : view.banners)
        lines->append("banner " + banner.text + " | " + banner.yes + " | " + banner.no);
    for (int i = 0; i < view.pages.size(); ++i)
        lines->append("molk_" + QString::number(i));
    *lines += Plain::linesOf(view.cores());
    for (const Plain::Page &page : view.pages)
        addPage(lines, page);
}

QStringList linesOf(const QList<Plain::Document> &documents, const Plain::Action &action)
{
    QStringList lines = {actionLine(action.text, action.toolTip, action.enabled)};
    for (const Plain::Document &document : documents)
        addDocument(&lines, document);
    return lines;
}

static QString realDiskLine(const QString &path)
{
    if (QFileInfo(path).isDir())
        return diskLine("directory", QByteArray());
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return diskLine("missing", QByteArray());
    return diskLine("file", file.readAll());
}

static void addBanners(QStringList *lines, const MolkView *view)
{
    const QLayout *layout =
        view->findChild<QWidget *>("widget_3", Qt::FindDirectChildrenOnly)->layout();
    for (int i = 0; i < layout->count(); ++i) {
        const QWidget *banner = layout->itemAt(i)->widget();
        lines->append("banner " + banner->findChild<QLabel *>("labelFile")->text() + " | "
                      + banner->findChild<QPushButton *>("btnA")->text() + " | "
                      + banner->findChild<QPushButton *>("btnB")->text());
    }
}

static void addDocument(QStringList *lines, const Stage &stage)
{
    lines->append(realDiskLine(stage.path()));
    MolkView *view = stage.view();
    if (!view) {
        lines->append("no view");
        return;
    }
    const auto *document = private_impl::MolkViewPrivate::get(view);
    auto *stack = view->findChild<QStackedWidget *>("stackedWidget");
    lines->append(viewLine(view->windowTitle(), view->property("shortTitle").toString(),
                           view->isModified(), document->watcher->files().contains(stage.path()),
                           stack->currentIndex(),
                           view->findChild<QDockWidget *>("dockWidget_2")->windowTitle()));
    addBanners(lines, view);
    const QTreeWidget *tree = stage.coreTree();
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        lines->append(tree->topLevelItem(i)->text(0));
    if (tree->indexOfTopLevelItem(tree->currentItem()) != stack->currentIndex())
        lines->append("the current row isn't that of the shown page");
    *lines += modelLines(document->cores);
    const QList<ProbePortsOptionWidget *> pages = stage.pages();
    for (const ProbePortsOptionWidget *page : pages)
        addPage(lines, page);
}

QStringList linesOf(Stage *stage, int documents)
{
    const QAction *action = stage->saveAction();
    QStringList lines = {actionLine(action->text(), action->toolTip(), action->isEnabled())};
    const int current = stage->document();
    for (int i = 0; i < documents; ++i) {
        stage->turnTo(i);
        addDocument(&lines, *stage);
    }
    stage->turnTo(current);
    return lines;
}

QString difference(const QStringList &wanted, const QStringList &got)
{
    for (int i = 0; i < qMax(wanted.size(), got.size()); ++i) {
        if (wanted.value(i, "nothing") == got.value(i, "nothing"))
            continue;
        QString text = "in line " + QString::number(i) + "\n  wanted " + wanted.value(i, "nothing")
            + "\n  got    " + got.value(i, "nothing");
        if (i > 0)
            text += "\n  after  " + got.value(i - 1).left(300);
        return text;
    }
    return QString();
}
