// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molksignalselectdialog.h"

#include "ui_molksignalselectdialog.h"

#include "modal.h"
#include "rtlnetlisttreeview.h"
#include "signalitem.h"

#include <QKeyEvent>
#include <QPointer>

namespace MOLK {

static void setUpTree(QTreeWidget *tree)
{
    tree->setHeaderHidden(true);
    tree->setTextElideMode(Qt::ElideMiddle);
}

MolkSignalSelectDialog::MolkSignalSelectDialog(FATHOM::RtlNetlist *design, int direction,
                                               QWidget *parent)
    : QDialog(parent)
    , ui(new Ui::MolkSignalSelectDialog)
    , netlist(design)
    , type(direction)
{
    ui->setupUi(this);
    ui->radioButtonNormal->setChecked(true);
    ui->checkBoxAdvancedFilter->setChecked(false);
    ui->widget_4->setVisible(false);
    setUpTree(ui->treeWidget);
    setUpTree(ui->treeWidgetAddSignal);

    searchInView = new RtlNetlistTreeView(this);
    searchInView->setNetlist(netlist.get());
    searchInView->setItemsExpandable(false);
    searchInView->expandAll();
    ui->comboBoxSearchIn->setModel(searchInView->model());
    ui->comboBoxSearchIn->setView(searchInView);

    ui->treeWidget->setSelectionMode(QAbstractItemView::ExtendedSelection);
    ui->treeWidgetAddSignal->setSelectionMode(QAbstractItemView::ExtendedSelection);
    ui->btnAdd->setToolTip("Add");
    ui->btnAddAll->setToolTip("Add all");
    ui->btnDel->setToolTip("Remove");
    ui->btnDelAll->setToolTip("Remove all");
    connect(ui->btnAdd, SIGNAL(clicked()), this, SLOT(onAddSignal()));
    connect(ui->btnAddAll, SIGNAL(clicked()), this, SLOT(onAddAllSignal()));
    connect(ui->btnDel, SIGNAL(clicked()), this, SLOT(onDelSignal()));
    connect(ui->btnDelAll, SIGNAL(clicked()), this, SLOT(onDelAllSignal()));
}

MolkSignalSelectDialog::~MolkSignalSelectDialog()
{
    delete ui;
}

// The dialog may die with its parent while it runs, so it lives on the heap.
template<typename Result>
static Result pick(MolkSignalSelectDialog *made, Result (MolkSignalSelectDialog::*read)() const)
{
    const QPointer<MolkSignalSelectDialog> dialog(made);
    Result result;
    if (execDialog(made) == QDialog::Accepted && dialog)
        result = (dialog->*read)();
    delete dialog.data();
    return result;
}

QList<SignalItem> MolkSignalSelectDialog::getSignals(FATHOM::RtlNetlist *netlist, int type,
                                                     QWidget *parent)
{
    return pick(new MolkSignalSelectDialog(netlist, type, parent),
                &MolkSignalSelectDialog::selectedSignals);
}

QString MolkSignalSelectDialog::getSignal(FATHOM::RtlNetlist *netlist, int type, QWidget *parent)
{
    return pick(new MolkSignalSelectDialog(netlist, type, parent),
                &MolkSignalSelectDialog::selectedSignalName);
}

void MolkSignalSelectDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return)
        on_pushButtonSearch_clicked();
}

void MolkSignalSelectDialog::on_checkBoxAdvancedFilter_toggled(bool checked)
{
    ui->widget_4->setVisible(checked);
}

} // namespace MOLK
