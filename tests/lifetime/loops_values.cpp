// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The message about a value that doesn't fit. It comes up inside a change of the focus, wherever
// that change comes from.

#include "loops.h"

#include "initialvalueline.h"
#include "molkcore.h"
#include "molkoptionwidget.h"
#include "probeportsoptionwidget.h"
#include "reloadbanner.h"

#include <QApplication>
#include <QTest>
#include <QTreeWidget>

using namespace MOLK;

static const LoopDriver::Step here = nullptr;

// The one net that the port drives takes a digit of 0 or 1.
static void typeTooMuch(const Scene &scene)
{
    QApplication::setActiveWindow(scene.view->window());
    InitialValueLine *line = scene.line();
    line->setFocus();
    line->setCursorPosition(2);
    QTest::keyClick(line, Qt::Key_F);
}

using Trigger = void (*)(Scene &scene);

static void moveFocus(Scene &scene)
{
    scene.tree("treeProbeIn")->setFocus();
}

static void clickElsewhere(Scene &scene)
{
    QTest::mouseClick(scene.tree("treeProbeIn")->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(20, 10));
}

static void deactivateWindow(Scene &)
{
    QApplication::setActiveWindow(nullptr);
}

static void disableLine(Scene &scene)
{
    documentOf(scene.view)->cores.first()->getProbeOut(0)->setSignalNet({});
    scene.page()->findChild<ProbePortsOptionWidget *>()->refreshProbeOutSignals();
}

static void showOtherPage(Scene &scene)
{
    scene.view->changeMolkWidget(1);
}

static void removeCore(Scene &scene)
{
    documentOf(scene.view)->removeCore(0);
}

static void reloadFile(Scene &scene)
{
    scene.writeOther(2);
    scene.view->checkForReload();
    emit scene.view->findChild<ReloadBanner *>()->reload();
}

static void dropViews(Scene &scene)
{
    scene.bench.host.documentArea()->dropAllViews();
}

static void closeView(Scene &scene)
{
    Core::ViewManager::closeView(scene.view);
}

QList<LoopCase> loopsOfValues()
{
    struct Case
    {
        const char *name;
        Trigger trigger;
        int mayChange;
        bool mayEnd;
    };
    static const Case cases[] = {
        {"focus-moves", moveFocus, 0, false},         {"click-elsewhere", clickElsewhere, 0, false},
        {"window-loses", deactivateWindow, 0, false}, {"line-is-disabled", disableLine, 0, false},
        {"page-changes", showOtherPage, 0, false},    {"core-goes", removeCore, 1, false},
        {"file-is-reloaded", reloadFile, 2, false},   {"views-drop", dropViews, 0, true},
        {"view-closes", closeView, 0, true},
    };
    QList<LoopCase> loops;
    for (const Case &each : cases) {
        const Trigger trigger = each.trigger;
        LoopCase loop;
        loop.name = QString("value-as-%1").arg(QLatin1String(each.name));
        loop.way = {here};
        loop.run = [trigger](Scene &scene, LoopDriver &) {
            typeTooMuch(scene);
            trigger(scene);
        };
        loop.mayChange = each.mayChange;
        loop.mayEnd = each.mayEnd;
        loops.append(loop);
    }
    return loops;
}
