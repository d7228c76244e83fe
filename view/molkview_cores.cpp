// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The cores of a document and the widgets that show them.

#include "molkview.h"

#include "ui_molkview.h"

#include "modal.h"
#include "molkcore.h"
#include "molkoptionwidget.h"
#include "molkview_p.h"
#include "retirement.h"

#include <QAction>
#include <QCursor>
#include <QDebug>
#include <QMenu>
#include <QPointer>

namespace MOLK {

static constexpr int MostCores = 16;

static QString coreName(int number)
{
    return QString("molk_%1").arg(number);
}

int MolkView::addMolkOptionWidget(MolkOptionWidget *widget)
{
    ui->stackedWidget->addWidget(widget);
    connect(widget, SIGNAL(modifed()), this, SLOT(onModified()));
    auto *item = new QTreeWidgetItem;
    item->setText(0, coreName(widget->core->id));
    ui->treeWidget->addTopLevelItem(item);
    return ui->stackedWidget->count();
}

void MolkView::removeMolkOptionWidget(MolkOptionWidget *widget)
{
    ui->stackedWidget->removeWidget(widget);
    disconnect(widget, SIGNAL(modifed()), this, SLOT(onModified()));
    delete ui->treeWidget->takeTopLevelItem(widget->core->id);
    // The cores may not have been renumbered yet, so the position counts.
    for (int i = 0; i < ui->treeWidget->topLevelItemCount(); ++i)
        ui->treeWidget->topLevelItem(i)->setText(0, coreName(i));
}

void MolkView::changeMolkWidget(int id)
{
    if (!d->commitValue())
        return;
    for (MolkOptionWidget *page : qAsConst(d->optionWidgets)) {
        if (page->core->id != id)
            continue;
        ui->stackedWidget->setCurrentWidget(page);
        ui->treeWidget->setCurrentItem(ui->treeWidget->topLevelItem(id));
        ui->dockWidget_2->setWindowTitle(coreName(id));
        return;
    }
}

void MolkView::on_treeWidget_clicked(const QModelIndex &index)
{
    // Row and column are no position in the view: this only asks whether the tree shows anything.
    if (!ui->treeWidget->itemAt(QPoint(index.row(), index.column())))
        return;
    if (!d->coreById(index.row()))
        return;
    changeMolkWidget(index.row());
}

void MolkView::on_treeWidget_doubleClicked(const QModelIndex &index)
{
    on_treeWidget_clicked(index);
}

static const QAction *execMenu(QMenu *menu)
{
    const NestedLoop loop(menu);
    return menu->exec(QCursor::pos());
}

void MolkView::on_treeWidget_customContextMenuRequested(const QPoint &pos)
{
    const int row = ui->treeWidget->indexAt(pos).row();
    d->addAction->setEnabled(true);
    d->removeAction->setEnabled(row >= 0);

    // The file may be reloaded, or the view go, while the menu is open; the line of the tree would
    // be gone then, so the page is what is remembered.
    const QPointer<MolkView> guard(this);
    const QPointer<MolkOptionWidget> page(d->optionWidgets.value(row));
    const QPointer<QMenu> menu(new QMenu(ui->treeWidget));
    menu->addAction(d->addAction);
    menu->addAction(d->removeAction);
    const QAction *chosen = execMenu(menu);
    delete menu.data();
    if (!guard || !chosen)
        return;

    if (chosen == d->addAction) {
        const int added = d->cores.size();
        d->addCore(added);
        if (guard)
            changeMolkWidget(added);
    } else if (chosen == d->removeAction) {
        d->removeCore(d->optionWidgets.indexOf(page));
        if (guard)
            changeMolkWidget(0);
    }
}

namespace private_impl {

MolkCore *MolkViewPrivate::coreById(int id) const
{
    for (MolkCore *core : cores) {
        if (core->id == id)
            return core;
    }
    return nullptr;
}

void MolkViewPrivate::addCore(int id)
{
    if (cores.size() >= MostCores) {
        showMessage(q, QMessageBox::Warning, "Warning", "Support 16 MOLKs at most.");
        return;
    }
    auto *core = new MolkCore(id);
    cores.append(core);
    auto *page = new MolkOptionWidget(core, netlist, q);
    optionWidgets.append(page);
    q->addMolkOptionWidget(page);
    q->onModified();
}

static void logNumbers(const QList<MolkCore *> &cores)
{
    for (const MolkCore *core : cores)
        qDebug() << core->id;
}

void MolkViewPrivate::removeCore(int index)
{
    if (cores.size() == 1) {
        showMessage(q, QMessageBox::Warning, "Remove MOLK", "The only MOLK can not be removed.");
        return;
    }
    if (index == -1 || index >= cores.size())
        return;

    const QPointer<MolkViewPrivate> guard(this);
    const QPointer<MolkOptionWidget> page(optionWidgets.at(index));
    const QMessageBox::StandardButton answer =
        showMessage(q, QMessageBox::Question, "Remove MOLk",
                    QString("Do you want to remove MOLK %1 ?").arg(index),
                    QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok);
    if (!guard || answer != QMessageBox::Ok || !commitValue())
        return;
    // A reload meanwhile has put other cores in place of the one that was asked about, and a
    // removal has left it as the only one.
    if (!page || optionWidgets.value(index) != page || cores.size() == 1)
        return;

    optionWidgets.removeAt(index);
    MolkCore *core = page->core;
    q->removeMolkOptionWidget(page);
    if (!retire(page))
        delete page.data();
    cores.removeOne(core);
    delete core;
    for (int i = 0; i < cores.size(); ++i)
        cores.at(i)->id = i;

    qDebug() << "before changed";
    logNumbers(cores);
    qDebug() << "after changed";
    logNumbers(cores);
    q->onModified();
}

void MolkViewPrivate::createOptionWidgets()
{
    for (MolkCore *core : qAsConst(cores)) {
        auto *page = new MolkOptionWidget(core, netlist, nullptr);
        optionWidgets.append(page);
        q->addMolkOptionWidget(page);
    }
}

void MolkViewPrivate::makePages()
{
    // A file written by hand may number its cores and ports as it likes; here the position counts.
    for (int i = 0; i < cores.size(); ++i) {
        cores.at(i)->id = i;
        cores.at(i)->updateProbeIn();
        cores.at(i)->updateProbeOut();
    }
    if (cores.isEmpty())
        addCore(0);
    else
        createOptionWidgets();
}

} // namespace private_impl
} // namespace MOLK
