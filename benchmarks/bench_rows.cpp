// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The trees of the search dialog at full size, against the plainest trees that Qt can hold: rows
// with a text alone, made outside the tree and added in one call.

#include "benchnets.h"
#include "comparison.h"

#include "netlist/netlistbuilder.h"

#include "molksignalselectdialog.h"
#include "probedialog.h"
#include "probein.h"
#include "signaltree.h"

#include <QApplication>
#include <QComboBox>
#include <QPointer>
#include <QPushButton>
#include <QTreeWidget>

using namespace MOLK;

static const int million = 1000000;
static const int selectedRows = 10000;
static const int levels = 100000;
static const int branches = 8; // Below each level.

static void require(bool right, const char *what)
{
    if (!right)
        qFatal("%s", what);
}

static void settle()
{
    for (int i = 0; i < 3; ++i)
        QApplication::processEvents();
}

static void click(QWidget *dialog, const char *button)
{
    dialog->findChild<QAbstractButton *>(QString::fromLatin1(button))->click();
}

static QList<QTreeWidgetItem *> bareRows(const BenchNetlist &design)
{
    QList<QTreeWidgetItem *> rows;
    for (const FATHOM::RtlNetBus *bus : design.get()->top->netbuses()) {
        QList<QTreeWidgetItem *> bits;
        for (const FATHOM::RtlNet *bit : bus->nets())
            bits.append(new QTreeWidgetItem(QStringList(bit->fullPathName()), 0));
        rows.append(new QTreeWidgetItem(QStringList(bus->fullBusName()), 0));
        rows.last()->addChildren(bits);
    }
    for (const FATHOM::RtlNet *net : design.get()->top->singleNets())
        rows.append(new QTreeWidgetItem(QStringList(net->fullPathName()), 0));
    return rows;
}

static void searchRows(Comparison *comparison)
{
    if (!comparison->wantsAny({"search-rows", "search-rows-heap"}))
        return;
    const BenchNetlist design(million / 3, million * 2 / 3 / 33);
    MolkSignalSelectDialog dialog(design.get(), 0, nullptr);
    dialog.show();
    auto *results = dialog.findChild<QTreeWidget *>("treeWidget");
    QDialog bareDialog;
    QTreeWidget bare(&bareDialog);
    bare.setHeaderHidden(true);
    bare.resize(results->size());
    bareDialog.show();
    settle();

    comparison->time("search-rows", 0.8, million, {[&] {
                         click(&dialog, "pushButtonSearch");
                         settle();
                         results->clear();
                         settle();
                     }},
                     {[&] {
                         bare.addTopLevelItems(bareRows(design));
                         settle();
                         bare.clear();
                         settle();
                     }});

    const double empty = Comparison::heap();
    click(&dialog, "pushButtonSearch");
    settle();
    const double ours = (Comparison::heap() - empty) / million;
    results->clear();
    settle();
    const double emptyAgain = Comparison::heap();
    bare.addTopLevelItems(bareRows(design));
    settle();
    const double plain = (Comparison::heap() - emptyAgain) / million;
    comparison->print("search-rows-heap", ours / plain, 0.72, ours, plain, "bytes a row", million);
}

static QList<SignalItem> nets(int count)
{
    QList<SignalItem> items;
    for (int i = 0; i < count; ++i) {
        SignalItem item;
        item.name = QString("top/u_core/u_fifo/ctrl_signal_valid_q%1").arg(i);
        item.kind = 0;
        items.append(item);
    }
    return items;
}

// All rows, or every second one.
static void select(QTreeWidget *tree, bool scattered)
{
    QItemSelection selection;
    for (int row = 0; scattered && row < tree->topLevelItemCount(); row += 2)
        selection.append(QItemSelectionRange(tree->model()->index(row, 0)));
    if (scattered)
        tree->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    else
        tree->selectAll();
    settle();
    require(tree->selectedItems().size() == selectedRows, "rows are selected");
}

static void deleteSelected(Comparison *comparison, QDialog *dialog, QTreeWidget *tree,
                           const char *button)
{
    if (!comparison->wants("delete-selected"))
        return;
    dialog->show();
    for (bool scattered : {false, true}) {
        const int rows = scattered ? 2 * selectedRows : selectedRows;
        const auto prepare = [=] {
            tree->clear();
            addSignalRows(tree, nets(rows), 0);
            settle();
            select(tree, scattered);
        };
        comparison->time("delete-selected", 1.3, rows,
                         {[=] {
                              click(dialog, button);
                              settle();
                              require(tree->topLevelItemCount() == rows - selectedRows,
                                      "the others stay");
                          },
                          prepare},
                         {[=] {
                              tree->clear();
                              settle();
                          },
                          prepare});
    }
}

static void searchIn(Comparison *comparison)
{
    if (!comparison->wantsAny({"search-in-build", "search-in-popup"}))
        return;
    Standin::NetlistBuilder builder("top");
    for (int i = 1; i < levels; ++i)
        builder.addLevel((i - 1) / branches, QString("u_level_%1").arg(i), "m");
    const std::unique_ptr<FATHOM::RtlNetlist> design(builder.build());

    QTreeWidget bare;
    bare.show();
    const auto buildBare = [&] {
        QVector<QTreeWidgetItem *> rows{new QTreeWidgetItem(QStringList("top"), 0)};
        for (int i = 1; i < levels; ++i) {
            rows.append(new QTreeWidgetItem(QStringList(QString("u_level_%1[m]").arg(i)), 0));
            rows.at((i - 1) / branches)->addChild(rows.last());
        }
        bare.addTopLevelItem(rows.first());
        settle();
    };
    const Side bound{buildBare, [&] {
                         bare.clear();
                     }};
    QPointer<MolkSignalSelectDialog> dialog;
    const auto drop = [&] {
        delete dialog.data();
    };
    const auto open = [&] {
        dialog = new MolkSignalSelectDialog(design.get(), 0, nullptr);
    };
    comparison->time("search-in-build", 1.5, levels, {open, [] {}, drop}, bound);
    comparison->time("search-in-popup", 0.5, levels,
                     {[&] {
                          auto *box = dialog->findChild<QComboBox *>("comboBoxSearchIn");
                          box->showPopup();
                          settle();
                          require(box->view()->isVisible(), "the box is open");
                      },
                      [&] {
                          open();
                          dialog->show();
                          click(dialog, "checkBoxAdvancedFilter");
                          settle();
                      },
                      drop},
                     bound);
}

int main(int argc, char *argv[])
{
    useNoDisplay();
    const QApplication app(argc, argv);
    Comparison comparison(argc, argv);
    searchRows(&comparison);
    {
        MolkSignalSelectDialog dialog(nullptr, 0, nullptr);
        deleteSelected(&comparison, &dialog, dialog.findChild<QTreeWidget *>("treeWidgetAddSignal"),
                       "btnDel");
        ProbeIn port(0);
        ProbeDialog probeDialog(&port, nullptr, 0, nullptr);
        deleteSelected(&comparison, &probeDialog,
                       probeDialog.findChild<QTreeWidget *>("treeWidget"), "btnRemove");
    }
    searchIn(&comparison);
    return comparison.exitCode();
}
