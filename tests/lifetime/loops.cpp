// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "loops.h"

#include "menudriver.h"

#include "molkcore.h"
#include "molkfilewizardfactory.h"
#include "molkoptionwidget.h"
#include "molkviewmanager.h"
#include "reloadbanner.h"

#include "dev/devicearg.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDir>
#include <QEventLoop>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <QWindow>

#include <csignal>
#include <sys/resource.h>

using namespace MOLK;

static const LoopDriver::Step here = nullptr;
static const QStringList okOrCancel = {"Ok", "Cancel"};

template<typename Button>
static LoopDriver::Step clicking(const QString &name)
{
    return [name](LoopDriver &, QWidget *window) {
        child<Button>(window, name)->click();
    };
}

static void clickOnPage(const Scene &scene, const QString &button)
{
    child<QPushButton>(scene.page(), button)->click();
}

static Configuration sized(int cores, int ports)
{
    Configuration configuration;
    configuration.cores = cores;
    configuration.probeIns = ports;
    configuration.probeOuts = ports;
    return configuration;
}

static QList<LoopCase> loopsOfCores()
{
    LoopCase many;
    many.name = "too-many-cores";
    many.configuration = sized(16, 1);
    many.way = {here};
    many.run = [](Scene &scene, LoopDriver &) {
        documentOf(scene.view)->addCore(16);
    };

    LoopCase only = many;
    only.name = "only-core";
    only.configuration = sized(1, 1);
    only.run = [](Scene &scene, LoopDriver &) {
        documentOf(scene.view)->removeCore(0);
    };

    LoopCase question = only;
    question.name = "core-to-remove";
    question.configuration = sized(2, 1);
    question.answers = okOrCancel;
    question.mayChange = 1;

    LoopCase menu = question;
    menu.name = "core-menu";
    menu.run = [](Scene &scene, LoopDriver &) {
        QTreeWidget *tree = scene.coreTree();
        const QPoint place = tree->visualItemRect(tree->topLevelItem(0)).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                tree->viewport()->mapToGlobal(place));
        QApplication::sendEvent(tree->viewport(), &event);
    };
    menu.answers = QStringList{"Add", "Remove", "Cancel"};
    return {many, only, question, menu};
}

static QList<LoopCase> loopsOfPorts()
{
    QList<LoopCase> loops;
    for (const QString &direction : {QString("ProbeIn"), QString("ProbeOut")}) {
        LoopCase many;
        many.name = "too-many-" + direction;
        many.configuration = sized(2, 64);
        many.way = {here};
        many.run = [direction](Scene &scene, LoopDriver &) {
            clickOnPage(scene, "btn" + direction + "Add");
        };
        LoopCase only = many;
        only.name = "only-" + direction;
        only.configuration = sized(2, 1);
        only.run = [direction](Scene &scene, LoopDriver &) {
            clickOnPage(scene, "btn" + direction + "Remove");
        };
        loops += {many, only};
    }
    return loops;
}

static void editPort(const Scene &scene, const QString &tree)
{
    QTreeWidget *rows = scene.tree(tree);
    const QPoint place = rows->visualItemRect(rows->topLevelItem(0)).center();
    QTest::mouseClick(rows->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(rows->viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

// With something picked, the dialog has something to bring home.
static void pickNets(LoopDriver &driver, QWidget *search)
{
    child<QPushButton>(search, "pushButtonSearch")->click();
    child<QPushButton>(search, "btnAddAll")->click();
    driver.reach();
}

static void giveManySignals(Scene &scene)
{
    QList<SignalItem> items;
    for (int i = 0; i <= 256; ++i) {
        items.append(SignalItem());
        items.last().name = QString("top/many_%1").arg(i);
    }
    documentOf(scene.view)->cores.first()->getProbeIn(0)->setSignalNet(items);
}

// Wherever the mouse is by now.
static void letGo()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *window : windows) {
        if (window->isVisible())
            return QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, {1, 1});
    }
}

static void dragRow(LoopDriver &driver, QWidget *dialog)
{
    auto *tree = child<QTreeWidget>(dialog, "treeWidget");
    QWindow *window = dialog->windowHandle();
    const QPoint start =
        tree->viewport()->mapTo(dialog, tree->visualItemRect(tree->topLevelItem(0)).center());
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, start);
    QTest::mouseMove(window, start + QPoint(1, 0));
    // A window that is still blocked by the dialog doesn't hear of the mouse.
    QTimer mouse;
    QObject::connect(&mouse, &QTimer::timeout, letGo);
    QTimer::singleShot(0, &driver, [&driver, &mouse] {
        driver.reach();
        mouse.start(1);
    });
    QTest::mouseMove(window, start + QPoint(QApplication::startDragDistance() + 2, 0));
}

static QList<LoopCase> loopsOfDialogs()
{
    QList<LoopCase> loops;
    for (const QString &direction : {QString("ProbeIn"), QString("ProbeOut")}) {
        LoopCase dialog;
        dialog.name = "dialog-of-" + direction;
        dialog.way = {here};
        dialog.run = [direction](Scene &scene, LoopDriver &) {
            editPort(scene, "tree" + direction);
        };
        dialog.answers = okOrCancel;
        LoopCase search = dialog;
        search.name = "search-for-" + direction;
        search.way = {clicking<QToolButton>("btnAdd"), pickNets};
        LoopCase drag = dialog;
        drag.name = "drag-in-" + direction;
        drag.way = {dragRow};
        loops += {dialog, search, drag};
    }

    LoopCase many = loops.first();
    many.name = "too-many-signals";
    many.way = {[](LoopDriver &, QWidget *dialog) { answerWindow(dialog, "Ok"); }, here};
    many.run = [](Scene &scene, LoopDriver &) {
        giveManySignals(scene);
        editPort(scene, "treeProbeIn");
    };
    many.answers = QStringList{"Ok"};

    LoopCase clock = loops.first();
    clock.name = "search-for-clock";
    clock.way = {pickNets};
    clock.run = [](Scene &scene, LoopDriver &) {
        child<QPushButton>(scene.page(), "btnUserClock")->setEnabled(true);
        clickOnPage(scene, "btnUserClock");
    };
    clock.mayChange = 1;
    return loops << many << clock;
}

// The write fails as on a full disk; once the box stands there is room again.
static void setFileSizeLimit(rlim_t bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, RLIM_INFINITY};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

static QList<LoopCase> loopsOfSaving()
{
    LoopCase faults;
    faults.name = "faults";
    faults.way = {here};
    faults.run = [](Scene &scene, LoopDriver &) {
        MolkCore *core = documentOf(scene.view)->cores.first();
        core->getProbeIn(0)->setSignalNet({});
        core->getProbeOut(0)->setSignalNet({});
        scene.view->save();
    };
    faults.forbidsSave = true;

    LoopCase tool = faults;
    tool.name = "wrong-tool";
    tool.forbidsSave = false;
    tool.run = [](Scene &scene, LoopDriver &) {
        scene.bench.host.design().setOptionValue("Synthesize_tool", "Synplify");
        scene.view->save();
    };

    LoopCase write = tool;
    write.name = "failed-write";
    write.way = {[](LoopDriver &driver, QWidget *) {
        setFileSizeLimit(RLIM_INFINITY);
        driver.reach();
    }};
    write.run = [](Scene &scene, LoopDriver &) {
        setFileSizeLimit(0);
        scene.view->save();
    };

    LoopCase question = tool;
    question.name = "close-question";
    question.way = {here};
    question.run = [](Scene &scene, LoopDriver &) {
        Core::ViewManager::closeView(scene.view);
    };
    question.answers = QStringList{"Ok", "Discard", "Cancel"};
    question.mayEnd = true;
    return {faults, tool, write, question};
}

static QList<LoopCase> loopsOfFiles()
{
    LoopCase damaged;
    damaged.name = "damaged-file";
    damaged.way = {here};
    damaged.run = [](Scene &scene, LoopDriver &) {
        scene.bench.write("a.molk", "<MOLK_CONFIG>");
        scene.view->checkForReload();
        child<QPushButton>(scene.view->findChild<ReloadBanner *>(), "btnA")->click();
    };
    damaged.mayEnd = true;

    LoopCase missing = damaged;
    missing.name = "missing-file";
    missing.run = [](Scene &scene, LoopDriver &) {
        MolkViewManager::openMolkView(scene.bench.path("missing.molk"), DEV::DeviceArg());
    };
    missing.mayEnd = false;
    return {damaged, missing};
}

static void showWizard(Scene &scene, LoopDriver &)
{
    MolkFileWizardFactory().runWizard(scene.bench.host.documentArea(), scene.bench.dir.path());
}

static LoopDriver::Step naming(const QString &name, bool accepts)
{
    return [=](LoopDriver &driver, QWidget *dialog) {
        child<QLineEdit>(dialog, "editName")->setText(name);
        if (accepts)
            answerWindow(dialog, "Ok");
        else
            driver.reach();
    };
}

static QList<LoopCase> loopsOfTheWizard()
{
    LoopCase wizard;
    wizard.name = "wizard";
    wizard.way = {naming("new", false)};
    wizard.run = showWizard;
    wizard.answers = okOrCancel;
    LoopCase chooser = wizard;
    chooser.name = "directory-of-wizard";
    chooser.way = {clicking<QPushButton>("btnBrowse"), here};
    LoopCase box = wizard;
    box.name = "failed-wizard";
    box.way = {naming("no/such/place", true), here};
    return {wizard, chooser, box};
}

static void pressDesignBanner(Scene &scene)
{
    scene.bench.host.events().send(Standin::Event("TE.Option.Change", {{"option", "TopModule"}}));
    child<QPushButton>(scene.view->findChild<ReloadBanner *>(), "btnA")->click();
}

static void openFile(Scene &scene)
{
    MolkViewManager::openMolkView(scene.file, DEV::DeviceArg());
    scene.view = Scene::anyView();
}

// What the service of modules does in a host: it runs tools, and the event loop meanwhile.
static void reachInModules(Scene &scene, LoopDriver &driver)
{
    scene.bench.host.extraction().duringModules([&driver] {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&driver] { driver.reach(); });
        QTimer::singleShot(0, &loop, [&loop] { QTimer::singleShot(0, &loop, &QEventLoop::quit); });
        loop.exec();
    });
}

static void reachInNets(Scene &scene, LoopDriver &driver)
{
    scene.bench.host.extraction().duringNetlist([&driver] { driver.reach(); });
}

// Everything that was left to the loop is done before the nets are delivered.
static void reachInNetsEarly(Scene &scene, LoopDriver &driver)
{
    scene.bench.host.extraction().duringNetlist([&driver] {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&driver, &loop] {
            driver.reach();
            QTimer::singleShot(0, &loop, &QEventLoop::quit);
        });
        loop.exec();
    });
}

static QList<LoopCase> loopsOfDesigns()
{
    using Reach = void (*)(Scene &, LoopDriver &);
    const QList<std::pair<QString, Reach>> services = {
        {"modules", reachInModules}, {"nets", reachInNets}, {"nets-early", reachInNetsEarly}};
    QList<LoopCase> loops;
    for (const auto &[service, reach] : services) {
        const Reach prepare = reach;
        LoopCase reload;
        reload.name = service + "-of-a-reload";
        reload.readsDesign = true;
        reload.run = [prepare](Scene &scene, LoopDriver &driver) {
            prepare(scene, driver);
            pressDesignBanner(scene);
        };
        LoopCase opening;
        opening.name = service + "-of-an-opening";
        opening.run = [prepare](Scene &scene, LoopDriver &driver) {
            prepare(scene, driver);
            openFile(scene);
        };
        opening.opensView = true;
        loops += {reload, opening};
    }

    const auto refuse = [](Scene &scene) {
        scene.bench.host.design().setSourceFiles({});
    };
    const auto report = [](Scene &scene) {
        scene.bench.host.extraction().queueModules({{"top"}, {"top"}, {"ERROR: no"}});
    };
    const QList<std::pair<QString, std::function<void(Scene &)>>> refusals = {{"refusal", refuse},
                                                                              {"log", report}};
    for (const auto &[name, arrange] : refusals) {
        const std::function<void(Scene &)> prepare = arrange;
        LoopCase reload;
        reload.name = name + "-of-a-reload";
        reload.way = {here};
        reload.run = [prepare](Scene &scene, LoopDriver &) {
            prepare(scene);
            pressDesignBanner(scene);
        };
        reload.mayEnd = true;
        LoopCase opening = reload;
        opening.name = name + "-of-an-opening";
        opening.run = [prepare](Scene &scene, LoopDriver &) {
            prepare(scene);
            openFile(scene);
        };
        opening.opensView = true;
        loops += {reload, opening};
    }
    return loops;
}

QList<LoopCase> nestedLoops()
{
    return loopsOfCores() + loopsOfPorts() + loopsOfDialogs() + loopsOfValues() + loopsOfSaving()
        + loopsOfFiles() + loopsOfTheWizard() + loopsOfDesigns();
}

void answerLoop(QWidget *window, const QString &answer)
{
    auto *menu = qobject_cast<QMenu *>(window);
    if (!menu)
        return answerWindow(window, answer);
    if (answer == "Cancel")
        menu->close();
    else
        chooseEntry(menu, answer);
}
