// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molksignalselectdialog.h"

#include "ui_molksignalselectdialog.h"

#include "hierarchymatch.h"
#include "netfilter.h"
#include "netitems.h"
#include "rtlnetlisttreeview.h"
#include "signaldisplay.h"

#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"
#include "fathom/rtlnetlist.h"

#include <QCursor>
#include <QDebug>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QIcon>

namespace MOLK {

NetFilter MolkSignalSelectDialog::readFilter() const
{
    NetFilter filter;
    filter.pattern = ui->lineEditName->text();
    filter.caseSensitivity =
        ui->checkBoxCaseSensitive->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
    filter.useRegExp = !ui->radioButtonNormal->isChecked();
    filter.syntax = ui->radioButtonWildcard->isChecked() ? QRegExp::WildcardUnix : QRegExp::RegExp;
    filter.advanced = true;
    if (ui->checkBoxAdvancedFilter->isChecked()) {
        filter.scope = pickedLevel();
        filter.includeSubentries = ui->checkBoxIncludeSubentries->isChecked();
    } else {
        filter.scope = netlist.get()->top;
        filter.includeSubentries = true;
    }
    return filter;
}

FATHOM::Hierachy *MolkSignalSelectDialog::pickedLevel() const
{
    const auto *item = dynamic_cast<RtlTreeItem *>(searchInView->currentItem());
    return item ? item->hierarchy : netlist.get()->top;
}

void MolkSignalSelectDialog::on_pushButtonSearch_clicked()
{
    QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    ui->pushButtonSearch->setEnabled(false);
    ui->treeWidget->clear();
    if (netlist.get()) {
        const NetFilter filter = readFilter();
        if (ui->checkBoxAdvancedFilter->isChecked() && ui->checkBoxHierarchyView->isChecked()) {
            qDebug() << "checked Hierarchy View";
            showHierarchy(matchHierarchy(filter));
        } else {
            QList<FATHOM::RtlNet *> nets;
            QList<FATHOM::RtlNetBus *> buses;
            collectNets(netlist.get(), filter, nets, buses);
            showNets(nets, buses);
        }
    }
    ui->pushButtonSearch->setEnabled(true);
    QGuiApplication::restoreOverrideCursor();
}

void MolkSignalSelectDialog::showNets(const QList<FATHOM::RtlNet *> &nets,
                                      const QList<FATHOM::RtlNetBus *> &buses)
{
    QElapsedTimer timer;
    timer.start();
    if (netlist.get()) {
        QList<QTreeWidgetItem *> rows;
        rows.reserve(buses.size() + nets.size());
        for (const FATHOM::RtlNetBus *bus : buses)
            rows.append(makeSignalRow(itemOfBus(bus, type), 0));
        for (const FATHOM::RtlNet *net : nets)
            rows.append(makeSignalRow(itemOfNet(net, type), 0));
        ui->treeWidget->addTopLevelItems(rows);
    }
    qDebug() << timer.elapsed() / 1000.0 << "s";
}

// One icon for all rows: each look-up of the file costs more than all the rest of a row.
static QTreeWidgetItem *makeModuleRow(const QString &label)
{
    static const QIcon icon(":/zorins/image/module.png");
    auto *row = new QTreeWidgetItem(QStringList(label), 0);
    row->setIcon(0, icon);
    row->setFlags(row->flags() & ~Qt::ItemIsSelectable);
    return row;
}

static QTreeWidgetItem *makeBusRow(const FATHOM::RtlNetBus *bus, int type)
{
    QStringList names{bus->BusName()};
    const QList<FATHOM::RtlNet *> bits = bus->nets();
    for (const FATHOM::RtlNet *bit : bits)
        names.append(bit->name());
    return makeNamedSignalRow(itemOfBus(bus, type), names, 0);
}

void MolkSignalSelectDialog::showHierarchy(const HierarchyMatch &match)
{
    if (match.isEmpty())
        return;
    QTreeWidgetItem *row = makeModuleRow(match.label);
    fillModuleRow(row, match);
    ui->treeWidget->addTopLevelItem(row);
    row->setExpanded(true);
}

void MolkSignalSelectDialog::addHierarchyRow(QTreeWidgetItem *parent, const HierarchyMatch &match)
{
    QTreeWidgetItem *row = makeModuleRow(match.label);
    // Ahead of the filling: adding a row goes through all rows below it.
    parent->addChild(row);
    fillModuleRow(row, match);
}

// The row stands in no tree yet, so that its rows cost no signals.
void MolkSignalSelectDialog::fillModuleRow(QTreeWidgetItem *row, const HierarchyMatch &match)
{
    QList<QTreeWidgetItem *> rows;
    rows.reserve(match.buses.size() + match.nets.size());
    for (const FATHOM::RtlNetBus *bus : match.buses)
        rows.append(makeBusRow(bus, type));
    for (const FATHOM::RtlNet *net : match.nets)
        rows.append(makeNamedSignalRow(itemOfNet(net, type), {net->name()}, 0));
    row->addChildren(rows);
    for (const HierarchyMatch &child : match.children)
        addHierarchyRow(row, child);
}

} // namespace MOLK
