// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkoptionwidget.h"

#include "probeportsoptionwidget.h"

namespace MOLK {

MolkOptionWidget::MolkOptionWidget(MolkCore *shownCore, FATHOM::RtlNetlist *design, QWidget *parent)
    : QTabWidget(parent)
    , core(shownCore)
    , netlist(design)
    , probePorts(new ProbePortsOptionWidget(core, netlist, this))
{
    addTab(probePorts, "Probe Ports");

    // Only now, since loading a core raises modified() too.
    connect(probePorts, SIGNAL(modified()), this, SIGNAL(modifed()));
}

MolkOptionWidget::~MolkOptionWidget() = default;

void MolkOptionWidget::storeToModel()
{
    probePorts->storeToModel();
}

void MolkOptionWidget::setNetlist(FATHOM::RtlNetlist *design)
{
    netlist = design;
    probePorts->setNetlist(design);
}

} // namespace MOLK
