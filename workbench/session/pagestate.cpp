// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "pagestate.h"

#include "molkcore.h"
#include "molkfile.h"
#include "treelines.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>

namespace Workbench {

static QStringList rowsOf(QWidget *view, const QString &name)
{
    const auto *tree = view->findChild<QTreeWidget *>(name);
    return tree ? treeLines(tree->model()) : QStringList("no " + name);
}

// A value row holds a line, and each row below it a label with the bits of one signal.
static QStringList values(const QTreeWidget *tree)
{
    QStringList lines;
    lines.reserve(tree->topLevelItemCount());
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem *port = tree->topLevelItem(i);
        const auto *line = qobject_cast<QLineEdit *>(tree->itemWidget(port, 0));
        if (!line)
            lines.append("no line");
        else
            lines.append(line->isEnabled() ? line->displayText()
                                           : line->displayText() + " disabled");
        for (int row = 0; row < port->childCount(); ++row) {
            const auto *bits = qobject_cast<QLabel *>(tree->itemWidget(port->child(row), 0));
            lines.append("  " + (bits ? bits->text() : QString("no label")));
        }
    }
    return lines;
}

static QString clockLine(bool used, const QString &name)
{
    return QLatin1String(used ? "clock " : "no clock ") + name;
}

QStringList pageState(QWidget *view)
{
    if (!view)
        return {"no view"};
    QStringList lines = rowsOf(view, "treeProbeIn") + rowsOf(view, "treeProbeOut");
    if (const auto *tree = view->findChild<QTreeWidget *>("treeValue"))
        lines += values(tree);
    const auto *useClock = view->findChild<QCheckBox *>("checkUserClock");
    const auto *clock = view->findChild<QLineEdit *>("lineEditUserClock");
    if (useClock && clock)
        lines.append(clockLine(useClock->isChecked(), clock->text()));
    return lines;
}

static QStringList signalLines(const MOLK::ProbeIn *port)
{
    QStringList lines;
    const QList<MOLK::SignalItem> items = port->getSignalNet();
    for (const MOLK::SignalItem &item : items) {
        const int bits = item.members.size();
        lines.append("    " + item.name + (bits > 0 ? QString(" (%1 bits)").arg(bits) : QString()));
    }
    return lines;
}

static QStringList coreLines(const MOLK::MolkCore *core)
{
    QStringList lines{QString("core %1 of %2").arg(core->id).arg(core->getModuleName())};
    const auto ins = core->getAllProbeIns();
    for (const MOLK::ProbeIn *port : ins)
        lines += QStringList(QString("  in %1").arg(port->number)) + signalLines(port);
    const auto outs = core->getAllProbeOuts();
    for (const MOLK::ProbeOut *port : outs) {
        lines += QStringList(QString("  out %1 = %2").arg(port->number).arg(port->getValue()))
            + signalLines(port);
    }
    lines.append("  " + clockLine(core->useUserClock, core->getUserClockName()));
    return lines;
}

QStringList fileState(const QString &path)
{
    bool ok = false;
    QString error = "unreadable";
    const QList<MOLK::MolkCore *> cores = MOLK::readMOLKConfigFromXml(path, &ok, &error);
    QStringList lines;
    for (const MOLK::MolkCore *core : cores)
        lines += coreLines(core);
    qDeleteAll(cores);
    return ok ? lines : QStringList(error);
}

} // namespace Workbench
