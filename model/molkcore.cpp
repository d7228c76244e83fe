// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkcore.h"

#include <utility>

namespace MOLK {

// The two directions differ in nothing but the type of their ports.
template<typename Port>
static QList<Port *> availablePorts(const QList<Port *> &ports)
{
    QList<Port *> available;
    for (Port *port : ports) {
        if (port->width() > 0)
            available.append(port);
    }
    return available;
}

template<typename Port>
static void removePort(QList<Port *> *ports, int index)
{
    if (index >= 0 && index < ports->size())
        delete ports->takeAt(index);
}

template<typename Port>
static void renumberPorts(const QList<Port *> &ports)
{
    for (int i = 0; i < ports.size(); ++i)
        ports.at(i)->number = i;
}

MolkCore::MolkCore(int coreId)
    : id(coreId)
{
    addProbeIn(0);
    addProbeOut(0);
}

MolkCore::~MolkCore()
{
    qDeleteAll(probeIns);
    qDeleteAll(probeOuts);
}

QList<ProbeIn *> MolkCore::getAllProbeIns() const
{
    return probeIns;
}

QList<ProbeOut *> MolkCore::getAllProbeOuts() const
{
    return probeOuts;
}

QList<ProbeIn *> MolkCore::getAvailableProbeIns() const
{
    return availablePorts(probeIns);
}

QList<ProbeOut *> MolkCore::getAvailableProbeOuts() const
{
    return availablePorts(probeOuts);
}

ProbeIn *MolkCore::getProbeIn(int index) const
{
    return probeIns.value(index, nullptr);
}

ProbeOut *MolkCore::getProbeOut(int index) const
{
    return probeOuts.value(index, nullptr);
}

QString MolkCore::getUserClockName() const
{
    return userClockName;
}

QString MolkCore::getModuleName() const
{
    return moduleName;
}

void MolkCore::addProbeIn(int number)
{
    probeIns.append(new ProbeIn(number));
}

void MolkCore::addProbeOut(int number)
{
    probeOuts.append(new ProbeOut(number));
}

void MolkCore::removeProbeIn(int index)
{
    removePort(&probeIns, index);
}

void MolkCore::removeProbeOut(int index)
{
    removePort(&probeOuts, index);
}

void MolkCore::updateProbeIn()
{
    renumberPorts(probeIns);
}

void MolkCore::updateProbeOut()
{
    renumberPorts(probeOuts);
}

void MolkCore::setUserClockName(QString name)
{
    userClockName = std::move(name);
}

void MolkCore::setModuleName(QString name)
{
    moduleName = std::move(name);
}

} // namespace MOLK
