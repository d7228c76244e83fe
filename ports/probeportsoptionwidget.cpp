// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "probeportsoptionwidget.h"

#include "ui_probeportsoptionwidget.h"

#include "initialvalueline.h"
#include "molkcore.h"
#include "molksignalselectdialog.h"
#include "portrows.h"
#include "retirement.h"
#include "signaldisplay.h"

#include "qutil/eventmanager.h"
#include "qutil/ievent.h"

#include <QPointer>
#include <QScrollBar>

namespace MOLK {

ProbePortsOptionWidget::ProbePortsOptionWidget(MolkCore *shownCore, FATHOM::RtlNetlist *design,
                                               QWidget *parent)
    : QWidget(parent)
    , ui(new Ui::ProbePortsOptionWidget)
    , core(shownCore)
    , netlist(design)
{
    ui->setupUi(this);
    setUpTrees();
    for (int i = 0; i < core->getAllProbeIns().size(); ++i)
        appendProbeInRow(i);
    const QList<ProbeOut *> probeOuts = core->getAllProbeOuts();
    for (int i = 0; i < probeOuts.size(); ++i) {
        InitialValueLine *line = appendProbeOutRows(i);
        line->updateInputMask(probeOuts.at(i)->width());
        line->setText(probeOuts.at(i)->getValue());
    }
    refreshProbeInSignals();
    refreshProbeOutSignals();
    setUpControls();

    probeOutScrollBar = ui->treeProbeOut->verticalScrollBar();
    valueScrollBar = ui->treeValue->verticalScrollBar();
    connect(probeOutScrollBar, SIGNAL(valueChanged(int)), this, SLOT(onScrollProbeOutChanged()));
    connect(valueScrollBar, SIGNAL(valueChanged(int)), this, SLOT(onScrollInitialValueChanged()));

    // Rows that were unfolded on the left are laid out on the right as soon as all of them are on
    // the left, so that it can be scrolled as far.
    connect(probeOutScrollBar, SIGNAL(rangeChanged(int, int)), ui->treeValue,
            SLOT(updateEditorGeometries()));

    QUtil::EventManager::instance()->subscribe(this, "TE.Device.Change");
}

ProbePortsOptionWidget::~ProbePortsOptionWidget()
{
    QUtil::EventManager::instance()->unsubscribeAll(this);

    // The lines would take their labels along, and search each among all that the tree holds. The
    // tree itself has them in order.
    for (int i = 0; i < ui->treeValue->topLevelItemCount(); ++i)
        if (InitialValueLine *line = valueLine(i))
            line->labels.clear();
    // Whoever shows the page may delete it under a message that one of its lines has raised, and Qt
    // goes on with that line.
    retireChildren(this);
    delete ui;
}

bool ProbePortsOptionWidget::eventFilter(QObject *watched, QEvent *event)
{
    return QObject::eventFilter(watched, event);
}

void ProbePortsOptionWidget::handleIEvent(const QUtil::IEvent *event)
{
    if (event->type() != "TE.Device.Change")
        return;
    // Nothing on this page depends on the device.
}

void ProbePortsOptionWidget::storeToModel()
{
    core->setUserClockName(ui->lineEditUserClock->text());
    core->useUserClock = ui->checkUserClock->isChecked();
    const QList<ProbeOut *> probeOuts = core->getAllProbeOuts();
    for (ProbeOut *port : probeOuts) {
        // text() would leave out the blanks, and a blank is a digit here.
        if (const InitialValueLine *line = valueLine(port->number))
            port->setValue(line->displayText());
    }
}

void ProbePortsOptionWidget::setNetlist(FATHOM::RtlNetlist *design)
{
    netlist = design;
    refreshProbeInSignals();
    emit netlistChanged();
}

void ProbePortsOptionWidget::refreshProbeInSignals()
{
    for (int i = 0; i < ui->treeProbeIn->topLevelItemCount(); ++i) {
        QTreeWidgetItem *portRow = ui->treeProbeIn->topLevelItem(i);
        qDeleteAll(portRow->takeChildren());
        portRow->addChildren(probeInSignalRows(core->getProbeIn(i)->getSignalNet()));
    }
}

void ProbePortsOptionWidget::onCheckUserClock()
{
    setClockControlsEnabled(ui->checkUserClock->isChecked());
    emit modified();
}

void ProbePortsOptionWidget::onbtnUserClock()
{
    const QPointer<ProbePortsOptionWidget> self = this;
    const QString name = MolkSignalSelectDialog::getSignal(netlist, 0, this);
    if (isRetired(self) || name.isEmpty())
        return;
    ui->lineEditUserClock->setText(name);
    emit modified();
}

void ProbePortsOptionWidget::setUpTrees()
{
    const QString sheet = "QTreeWidget::item { height: 20px;}QTreeWidget{ icon-size: 17px; }";

    ui->treeProbeIn->setStyleSheet(sheet);
    ui->treeProbeIn->setTextElideMode(Qt::ElideMiddle);
    connect(ui->treeProbeIn, SIGNAL(itemDoubleClicked(QTreeWidgetItem *, int)), this,
            SLOT(editProbeIn(QTreeWidgetItem *, int)));

    ui->treeProbeOut->setStyleSheet(sheet);
    ui->treeProbeOut->setTextElideMode(Qt::ElideMiddle);
    connect(ui->treeProbeOut, SIGNAL(itemClicked(QTreeWidgetItem *, int)), this,
            SLOT(onProbeOutClicked(QTreeWidgetItem *, int)));
    connect(ui->treeProbeOut, SIGNAL(itemDoubleClicked(QTreeWidgetItem *, int)), this,
            SLOT(editProbeOut(QTreeWidgetItem *, int)));
    connect(ui->treeProbeOut, SIGNAL(itemCollapsed(QTreeWidgetItem *)), this,
            SLOT(onProbeOutTreeCollapsed(QTreeWidgetItem *)));
    connect(ui->treeProbeOut, SIGNAL(itemExpanded(QTreeWidgetItem *)), this,
            SLOT(onProbeOutTreeExpanded(QTreeWidgetItem *)));

    connect(ui->treeValue, SIGNAL(itemClicked(QTreeWidgetItem *, int)), this,
            SLOT(onValueTreeClicked(QTreeWidgetItem *, int)));
    connect(ui->treeValue, SIGNAL(itemCollapsed(QTreeWidgetItem *)), this,
            SLOT(onValueTreeCollapsed(QTreeWidgetItem *)));
    connect(ui->treeValue, SIGNAL(itemExpanded(QTreeWidgetItem *)), this,
            SLOT(onValueTreeExpanded(QTreeWidgetItem *)));
    ui->treeValue->setStyleSheet(sheet);

    // All rows are 20 pixels high, so that none has to be measured but the first.
    ui->treeProbeIn->setUniformRowHeights(true);
    ui->treeProbeOut->setUniformRowHeights(true);

    // A double click opens the port's dialog, and the port is unfolded when that was accepted. The
    // view would fold it again right after.
    ui->treeProbeIn->setExpandsOnDoubleClick(false);
    ui->treeProbeOut->setExpandsOnDoubleClick(false);
}

void ProbePortsOptionWidget::setUpControls()
{
    connect(ui->btnProbeInAdd, SIGNAL(clicked()), this, SLOT(onAddProbeIn()));
    connect(ui->btnProbeInRemove, SIGNAL(clicked()), this, SLOT(onRemoveProbeIn()));
    connect(ui->btnProbeOutAdd, SIGNAL(clicked()), this, SLOT(onAddProbeOut()));
    connect(ui->btnProbeOutRemove, SIGNAL(clicked()), this, SLOT(onRemoveProbeOut()));
    connect(ui->checkUserClock, SIGNAL(clicked()), this, SLOT(onCheckUserClock()));
    connect(ui->btnUserClock, SIGNAL(clicked()), this, SLOT(onbtnUserClock()));
    connect(ui->lineEditUserClock, SIGNAL(textChanged(QString)), this, SIGNAL(modified()));

    ui->lineEditUserClock->setText(core->getUserClockName());
    if (core->useUserClock)
        ui->checkUserClock->setChecked(true);
    else
        setClockControlsEnabled(false);
}

void ProbePortsOptionWidget::setClockControlsEnabled(bool enabled)
{
    ui->labelClock->setEnabled(enabled);
    ui->btnUserClock->setEnabled(enabled);
    ui->lineEditUserClock->setEnabled(enabled);
}

} // namespace MOLK
