// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "stage.h"

#include "initialvalueline.h"
#include "molkinserterplugin.h"
#include "molkoptionwidget.h"
#include "molkview.h"
#include "molkview_p.h"
#include "molkviewmanager.h"
#include "probeportsoptionwidget.h"
#include "singleshots.h"
#include "turnloop.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTest>

using namespace MOLK;

Stage::Stage()
    : plugin(std::make_unique<MolkInserterPlugin>())
{
    host.setRecording(false);
    plugin->initialize();
    host.documentArea()->resize(900, 600);
    host.documentArea()->show();
}

Stage::~Stage()
{
    plugin->shutdown();
}

void Stage::clear()
{
    host.documentArea()->dropAllViews();
    turnLoop();
    host.design().clearAnswers();
    host.extraction().clear();
    for (int i = 0; i < MostDocuments; ++i) {
        QDir(path(i)).removeRecursively();
        QFile::remove(path(i));
    }
    current = 0;
    modals.takeFaults();
    saveAction()->setText(QString());
    saveAction()->setToolTip(QString());
}

QString Stage::path(int document) const
{
    return dir.filePath(QString("%1.molk").arg(QChar('a' + document)));
}

MolkView *Stage::view(int document) const
{
    const QList<MolkView *> views = MolkViewManager::instance()->molkViews();
    for (MolkView *view : views) {
        if (view->file() == path(document))
            return view;
    }
    return nullptr;
}

QAction *Stage::saveAction() const
{
    return MolkViewManager::instance()->findChild<QAction *>();
}

QList<ProbePortsOptionWidget *> Stage::pages() const
{
    QList<ProbePortsOptionWidget *> all;
    for (const MolkOptionWidget *widget :
         qAsConst(private_impl::MolkViewPrivate::get(view())->optionWidgets))
        all.append(widget->findChild<ProbePortsOptionWidget *>());
    return all;
}

ProbePortsOptionWidget *Stage::shownPage() const
{
    return pages().value(coreTree()->indexOfTopLevelItem(coreTree()->currentItem()));
}

QTreeWidget *Stage::coreTree() const
{
    return view()
        ->findChild<QWidget *>("dockWidgetContents")
        ->findChild<QTreeWidget *>("treeWidget");
}

InitialValueLine *Stage::line(const ProbePortsOptionWidget *page, int port)
{
    auto *tree = page->findChild<QTreeWidget *>("treeValue");
    return qobject_cast<InitialValueLine *>(tree->itemWidget(tree->topLevelItem(port), 0));
}

void Stage::letTimePass()
{
    fireSingleShots(500);
}

// The focus goes first: a window that becomes active hands the focus to whoever had it last.
void Stage::restFocus()
{
    if (view())
        coreTree()->setFocus();
    QApplication::setActiveWindow(host.documentArea());
    if (view())
        coreTree()->setFocus();
}

static QPoint centreOf(QTreeWidgetItem *row)
{
    QTreeWidget *tree = row->treeWidget();
    tree->scrollToItem(row);
    return QPoint(tree->visualItemRect(row).left() + 5, tree->visualItemRect(row).center().y());
}

void Stage::click(QTreeWidgetItem *row, Qt::KeyboardModifiers modifiers)
{
    if (!row)
        return;
    const QPoint place = centreOf(row);
    QTest::mouseClick(row->treeWidget()->viewport(), Qt::LeftButton, modifiers, place);
}

void Stage::doubleClick(QTreeWidgetItem *row)
{
    if (!row)
        return;
    const QPoint place = centreOf(row);
    QWidget *viewport = row->treeWidget()->viewport();
    QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(viewport, Qt::LeftButton, Qt::NoModifier, place);
}

void Stage::press(const QWidget *parent, const QString &name)
{
    auto *button = parent->findChild<QAbstractButton *>(name);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(5, button->height() / 2));
}
