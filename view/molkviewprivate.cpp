// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkview_p.h"

#include "ui_molkview.h"

#include "initialvalueline.h"
#include "modal.h"
#include "molkcore.h"
#include "molkfile.h"
#include "molkoptionwidget.h"
#include "molkview.h"
#include "netlistguard.h"
#include "reloadbanner.h"
#include "validation.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnetlist.h"

#include <QAction>
#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QPointer>

namespace MOLK {
namespace private_impl {

MolkViewPrivate::MolkViewPrivate(MolkView *view)
    : q(view)
    , addAction(new QAction("Add", this))
    , removeAction(new QAction("Remove", this))
    , watcher(new QFileSystemWatcher(this))
{
    connect(watcher, SIGNAL(fileChanged(QString)), q, SLOT(onFileChange()));
}

MolkViewPrivate::~MolkViewPrivate()
{
    delete watcher;
    delete addAction;
    delete removeAction;
    endNetlist(netlist);
    qDeleteAll(cores);
    modificationChanged = nullptr;
}

MolkViewPrivate *MolkViewPrivate::get(MolkView *view)
{
    return view->d;
}

void MolkViewPrivate::setRtlNetlist(FATHOM::RtlNetlist *newNetlist)
{
    endNetlist(netlist);
    netlist = newNetlist;
    const QList<MolkOptionWidget *> pages = optionWidgets;
    for (MolkOptionWidget *page : pages)
        page->setNetlist(netlist);
}

bool MolkViewPrivate::validate(QString *report) const
{
    const QStringList faults = configurationFaults(cores, netlist);
    if (report)
        *report = faults.join("\n");
    return faults.isEmpty();
}

static void reportFaults(QWidget *parent, const QString &report)
{
    auto *box = new QMessageBox(parent);
    box->setWindowTitle("Error");
    box->setIcon(QMessageBox::Critical);
    // The blanks keep the box from being narrower than its details.
    box->setText("Your settings contain some errors.             ");
    box->setDetailedText(report);
    box->setStandardButtons(QMessageBox::Ok);
    box->setDefaultButton(QMessageBox::Ok);
    box->setEscapeButton(QMessageBox::Ok);
    execAndDelete(box);
}

bool MolkViewPrivate::saveFile()
{
    qDebug() << "save zor";
    const QList<MolkOptionWidget *> pages = optionWidgets;
    for (MolkOptionWidget *page : pages)
        page->storeToModel();

    QString report;
    if (!validate(&report)) {
        reportFaults(q, report);
        return false;
    }

    // Our own write isn't a change from outside.
    watcher->removePath(file);
    // Without a netlist, as inside the event loop of a read, the cores keep the names they have.
    if (netlist) {
        for (MolkCore *core : qAsConst(cores))
            core->setModuleName(netlist->top->name());
    }
    const bool written = writeMOLKConfigToXml(cores, file);
    watcher->addPath(file);
    if (!written) {
        showMessage(q, QMessageBox::Critical, "Error",
                    QString("Can not save to %1").arg(QDir::toNativeSeparators(file)));
        return false;
    }

    clearModified();
    const QString title = QFileInfo(file).fileName();
    q->setWindowTitle(title);
    q->setShortTitle(title);
    return true;
}

bool MolkViewPrivate::commitValue()
{
    const QPointer<MolkViewPrivate> guard(this);
    const auto *line = qobject_cast<InitialValueLine *>(QApplication::focusWidget());
    if (line && q->isAncestorOf(line))
        q->ui->treeWidget->setFocus();
    return guard;
}

void MolkViewPrivate::clearModified()
{
    const bool wasModified = modified;
    modified = false;
    if (wasModified)
        modificationChanged(false);
}

void MolkViewPrivate::showBanner(ReloadBanner *banner)
{
    q->ui->widget_3->layout()->addWidget(banner);
    q->ui->widget_3->show();
}

void MolkViewPrivate::takeDownBanner(QObject *sender)
{
    auto *banner = qobject_cast<ReloadBanner *>(sender);
    if (!banner)
        return;
    banner->hide();
    q->ui->widget_3->layout()->removeWidget(banner);
    delete banner;
}

void MolkViewPrivate::closeWithoutQuestion()
{
    clearModified();
    QWidget *parent = q->parentWidget();
    if (!parent)
        return;
    parent->setAttribute(Qt::WA_DeleteOnClose, true);
    parent->close();
}

} // namespace private_impl
} // namespace MOLK
