// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "molkinserterplugin.h"
#include "molkview.h"
#include "molkviewmanager.h"
#include "testwidgetsmain.h"
#include "viewbench.h"

#include "dev/devicearg.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>

using namespace MOLK;

// There is one manager in the process and it is brought up once, so all tests share it and its
// host, and leave no view behind.
class tst_MolkViewManager : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

    void openedFileGetsAView();
    void openedViewIsRegisteredAndThenShown();
    void viewKnowsItsDeviceOnlyAfterOpening();
    void openFileIsBroughtForward_data();
    void openFileIsBroughtForward();
    void fileThatDiffersInCaseGetsAViewOfItsOwn();
    void missingFileIsReportedAndLeavesNothing();
    void markupInTheReportIsShownAsItIs();
    void refusedNetlistIsReportedOnce();
    void fileOpenedInsideItsOwnOpeningGetsOneView();

    void closeFindsTheView();
    void closeOfAnUnknownFileDoesNothing();
    void refusedCloseKeepsTheView();
    void viewsComeInOrderOfOpening();
    void viewOfAnotherKindIsNoneOfOurs();

    void actionFollowsTheActiveView();
    void actionTextLagsBehindTheTitle();
    void skeletonEnablesTheActionAtOnce();
    void backgroundViewLeavesTheActionAlone();
    void otherViewDisablesTheActionAndKeepsItsText();
    void disabledActionStillSavesTheLastView();
    void triggerSavesAndDisables();
    void triggerOnACleanViewSavesNothing();
    void failedSaveKeepsTheActionEnabled();
    void closedActiveViewDisablesTheAction();
    void closedBackgroundViewKeepsTheAction();
    void viewDestroyedWithoutReportIsForgotten();
    void discardedViewIsGone();

private:
    MolkViewManager *manager() const { return MolkViewManager::instance(); }
    QAction *saveAction() const { return manager()->findChild<QAction *>(); }
    QString actionState() const;
    MolkView *open(const QString &file) const;

    std::unique_ptr<ViewBench> bench;
    std::unique_ptr<MolkInserterPlugin> plugin;
};

namespace {

class OtherView : public Core::IView
{
};

} // namespace

void tst_MolkViewManager::initTestCase()
{
    // Static initialisation has made the manager, and nothing more.
    QVERIFY(manager());
    QVERIFY(manager()->parent() == nullptr);
    QVERIFY(!saveAction());
    QVERIFY(manager()->molkViews().isEmpty());

    bench = std::make_unique<ViewBench>();
    plugin = std::make_unique<MolkInserterPlugin>();
    QVERIFY(plugin->initialize());

    QVERIFY(saveAction());
    QVERIFY(!saveAction()->isEnabled());
    QCOMPARE(saveAction()->text(), QString());
    QCOMPARE(bench->host.callsOf({"registerAction"}),
             QStringList("registerAction Core.Action.Save MOLK.MolkViewManager.Context"));
}

void tst_MolkViewManager::cleanup()
{
    bench->host.documentArea()->dropAllViews();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(manager()->molkViews().isEmpty());
    QVERIFY(!saveAction()->isEnabled());
    saveAction()->setText(QString());
    bench->host.design().clearAnswers();
    bench->host.serveDesign("top", benchNetlist);
    bench->host.clearCalls();
    const QStringList files = QDir(bench->dir.path()).entryList(QDir::Files);
    for (const QString &file : files)
        QVERIFY(QFile::remove(bench->path(file)));
}

void tst_MolkViewManager::cleanupTestCase()
{
    const QPointer<QAction> action = saveAction();
    plugin->shutdown();
    QVERIFY(!action);
    plugin.reset();
    bench.reset();
}

// The Save action in one line: its two texts and whether it is enabled.
QString tst_MolkViewManager::actionState() const
{
    return saveAction()->text() + " | " + saveAction()->toolTip() + " | "
        + QLatin1String(saveAction()->isEnabled() ? "on" : "off");
}

MolkView *tst_MolkViewManager::open(const QString &file) const
{
    const int before = manager()->molkViews().size();
    MolkViewManager::openMolkView(file, DEV::DeviceArg("OD-500"));
    const QList<MolkView *> views = manager()->molkViews();
    return views.size() == before + 1 ? views.last() : nullptr;
}

void tst_MolkViewManager::openedFileGetsAView()
{
    const QString file = bench->writeCores(1);

    QVERIFY(MolkViewManager::openMolkView(file, DEV::DeviceArg("OD-500")));

    QCOMPARE(manager()->molkViews().size(), 1);
    MolkView *view = manager()->molkViews().first();
    QCOMPARE(view->file(), file);
    QCOMPARE(view->device(), QString("OD-500"));
    QCOMPARE(bench->host.documentArea()->views(), QList<Core::IView *>({view}));
    QCOMPARE(bench->host.documentArea()->activeView(), view);
}

void tst_MolkViewManager::openedViewIsRegisteredAndThenShown()
{
    bench->host.clearCalls();

    QVERIFY(open(bench->writeCores(1)));

    QCOMPARE(bench->host.callsOf({"resultFile", "catchRtlModules", "catchRtlNetsWithProgressDialog",
                                  "registerContext", "showView", "viewActiveted"}),
             QStringList({"resultFile RES.netlist", "catchRtlModules top=top",
                          "catchRtlNetsWithProgressDialog",
                          "registerContext MOLK.MolkViewManager.Context on", "showView a.molk",
                          "viewActiveted a.molk"}));
}

void tst_MolkViewManager::viewKnowsItsDeviceOnlyAfterOpening()
{
    QString during = "never asked";
    bench->host.extraction().duringNetlist([&] {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            if (const auto *view = qobject_cast<MolkView *>(window))
                during = view->device();
        }
        QVERIFY(manager()->molkViews().isEmpty());
    });

    MolkView *view = open(bench->writeCores(1));
    QVERIFY(view);

    QCOMPARE(during, QString());
    QCOMPARE(view->device(), QString("OD-500"));
}

void tst_MolkViewManager::openFileIsBroughtForward_data()
{
    QTest::addColumn<QString>("form");
    QTest::newRow("same") << "%1/a.molk";
    QTest::newRow("dot") << "%1/./a.molk";
    QTest::newRow("dot-dot") << "%1/none/../a.molk";
    QTest::newRow("relative") << "a.molk";
}

void tst_MolkViewManager::openFileIsBroughtForward()
{
    QFETCH(QString, form);
    MolkView *first = open(bench->writeCores(1));
    QVERIFY(first);
    QVERIFY(open(bench->writeCores(1, "b.molk")));
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(bench->dir.path()));
    const QString again = form.contains("%1") ? form.arg(bench->dir.path()) : form;
    bench->host.clearCalls();

    QVERIFY(MolkViewManager::openMolkView(again, DEV::DeviceArg("OD-900")));

    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(manager()->molkViews().size(), 2);
    QCOMPARE(first->device(), QString("OD-500"));
    QCOMPARE(bench->host.calls(), QStringList({"showView a.molk", "viewActiveted a.molk"}));
}

void tst_MolkViewManager::fileThatDiffersInCaseGetsAViewOfItsOwn()
{
    QVERIFY(open(bench->writeCores(1, "a.molk")));

    QVERIFY(open(bench->writeCores(1, "A.molk")));

    QCOMPARE(manager()->molkViews().size(), 2);
}

void tst_MolkViewManager::missingFileIsReportedAndLeavesNothing()
{
    const QString file = bench->path("missing.molk");
    bench->host.clearCalls();
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), bench->host.documentArea());
        QCOMPARE(box->windowTitle(), QString("Error"));
        QCOMPARE(box->text(), file + " open file failed.");
        QCOMPARE(box->icon(), QMessageBox::Critical);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        box->button(QMessageBox::Ok)->click();
    });

    QVERIFY(MolkViewManager::openMolkView(file, DEV::DeviceArg()));

    QVERIFY(manager()->molkViews().isEmpty());
    QCOMPARE(bench->host.callsOf({"registerContext", "showView"}), QStringList());
    QVERIFY(!saveAction()->isEnabled());
}

void tst_MolkViewManager::markupInTheReportIsShownAsItIs()
{
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([](QMessageBox *box) {
        QCOMPARE(box->textFormat(), Qt::PlainText);
        box->button(QMessageBox::Ok)->click();
    });

    MolkViewManager::openMolkView("<b>missing", DEV::DeviceArg());
}

void tst_MolkViewManager::refusedNetlistIsReportedOnce()
{
    bench->host.design().setSourceFiles({});
    ModalDriver driver;
    driver.expectMessage("Error", "Design files are not exist.", QMessageBox::Ok);

    QVERIFY(MolkViewManager::openMolkView(bench->writeCores(1), DEV::DeviceArg()));

    QVERIFY(manager()->molkViews().isEmpty());
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        QVERIFY(!qobject_cast<MolkView *>(window));
}

void tst_MolkViewManager::fileOpenedInsideItsOwnOpeningGetsOneView()
{
    const QString file = bench->writeCores(1);
    bool inner = false;
    bench->host.extraction().duringNetlist(
        [&] { inner = MolkViewManager::openMolkView(file, DEV::DeviceArg()); });

    QVERIFY(open(file));

    QVERIFY(inner);
    QCOMPARE(manager()->molkViews().size(), 1);
    // And it isn't taken for being opened for ever.
    bench->host.documentArea()->dropAllViews();
    QVERIFY(open(file));
}

void tst_MolkViewManager::closeFindsTheView()
{
    const QString file = bench->writeCores(1);
    QPointer<MolkView> view = open(file);
    QVERIFY(view);
    bench->host.clearCalls();

    QVERIFY(MolkViewManager::closeMolkView(bench->dir.path() + "/x/../a.molk"));

    QCOMPARE(bench->host.callsOf({"closeView", "viewClosed"}),
             QStringList({"closeView a.molk", "viewClosed a.molk"}));
    QVERIFY(manager()->molkViews().isEmpty());
    QTRY_VERIFY(!view);
}

void tst_MolkViewManager::closeOfAnUnknownFileDoesNothing()
{
    QVERIFY(open(bench->writeCores(1)));
    bench->host.clearCalls();

    QVERIFY(!MolkViewManager::closeMolkView(bench->path("b.molk")));
    QVERIFY(!MolkViewManager::closeMolkView(bench->path("A.molk")));

    QCOMPARE(bench->host.calls(), QStringList());
    QCOMPARE(manager()->molkViews().size(), 1);
}

void tst_MolkViewManager::refusedCloseKeepsTheView()
{
    const QString file = bench->writeCores(1);
    MolkView *view = open(file);
    QVERIFY(view);
    view->onModified();
    ModalDriver driver;
    driver.expectMessage("Save", "Save changes to \"" + QDir::toNativeSeparators(file) + "\" ?",
                         QMessageBox::Cancel);

    QVERIFY(MolkViewManager::closeMolkView(file));

    QCOMPARE(manager()->molkViews(), QList<MolkView *>({view}));
}

void tst_MolkViewManager::viewsComeInOrderOfOpening()
{
    MolkView *b = open(bench->writeCores(1, "b.molk"));
    MolkView *a = open(bench->writeCores(1, "a.molk"));
    MolkViewManager::openMolkView(bench->path("b.molk"), DEV::DeviceArg());

    QList<MolkView *> views = manager()->molkViews();
    QCOMPARE(views, QList<MolkView *>({b, a}));
    // The list is a copy.
    views.clear();
    QCOMPARE(manager()->molkViews().size(), 2);
}

void tst_MolkViewManager::viewOfAnotherKindIsNoneOfOurs()
{
    MolkView *view = open(bench->writeCores(1));
    auto *other = new OtherView;
    Core::ViewManager::showView(other);
    Core::ViewManager::closeView(other);

    QCOMPARE(manager()->molkViews(), QList<MolkView *>({view}));
}

void tst_MolkViewManager::actionFollowsTheActiveView()
{
    QVERIFY(open(bench->writeCores(1, "a.molk")));
    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | off"));
    MolkView *b = open(bench->writeCores(1, "b.molk"));
    QCOMPARE(actionState(), QString("&Save \"b.molk\" | Save \"b.molk\" | off"));

    b->onModified();
    QVERIFY(saveAction()->isEnabled());
    MolkViewManager::openMolkView(bench->path("a.molk"), DEV::DeviceArg());
    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | off"));
    MolkViewManager::openMolkView(bench->path("b.molk"), DEV::DeviceArg());
    QCOMPARE(actionState(), QString("&Save \"b.molk *\" | Save \"b.molk *\" | on"));
}

void tst_MolkViewManager::actionTextLagsBehindTheTitle()
{
    MolkView *view = open(bench->writeCores(1));
    QVERIFY(view);

    view->onModified();
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | on"));

    QVERIFY(view->save());
    QCOMPARE(view->windowTitle(), QString("a.molk"));
    QCOMPARE(actionState(), QString("&Save \"a.molk *\" | Save \"a.molk *\" | off"));

    Core::ViewManager::showView(view);
    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | off"));
}

void tst_MolkViewManager::skeletonEnablesTheActionAtOnce()
{
    QVERIFY(open(bench->writeSkeleton()));

    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | on"));
}

void tst_MolkViewManager::backgroundViewLeavesTheActionAlone()
{
    MolkView *a = open(bench->writeCores(1, "a.molk"));
    QVERIFY(open(bench->writeCores(1, "b.molk")));
    const QString before = actionState();

    a->onModified();

    QCOMPARE(actionState(), before);
    Core::ViewManager::showView(a);
    QCOMPARE(actionState(), QString("&Save \"a.molk *\" | Save \"a.molk *\" | on"));
}

void tst_MolkViewManager::otherViewDisablesTheActionAndKeepsItsText()
{
    MolkView *view = open(bench->writeCores(1));
    view->onModified();

    Core::ViewManager::showView(new OtherView);

    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | off"));
    // The view behind is still the one that the manager means.
    view->setModified(false);
    view->setModified(true);
    QVERIFY(!saveAction()->isEnabled());
    Core::ViewManager::showView(view);
    QVERIFY(saveAction()->isEnabled());
}

void tst_MolkViewManager::disabledActionStillSavesTheLastView()
{
    const QString file = bench->writeCores(1);
    MolkView *view = open(file);
    child<QPushButton>(view, "btnProbeInAdd")->click();
    const QByteArray before = ViewBench::read(file);
    Core::ViewManager::showView(new OtherView);

    saveAction()->trigger();

    QVERIFY(!view->isModified());
    QVERIFY(ViewBench::read(file) != before);
    QVERIFY(!saveAction()->isEnabled());
}

void tst_MolkViewManager::triggerSavesAndDisables()
{
    const QString file = bench->writeCores(1);
    MolkView *view = open(file);
    child<QPushButton>(view, "btnProbeInAdd")->click();
    const QByteArray before = ViewBench::read(file);

    bench->host.activeAction("Core.Action.Save")->trigger();

    QVERIFY(!view->isModified());
    QVERIFY(ViewBench::read(file) != before);
    QVERIFY(!saveAction()->isEnabled());
}

void tst_MolkViewManager::triggerOnACleanViewSavesNothing()
{
    MolkView *view = open(bench->writeCores(1));
    QVERIFY(view);
    bench->host.clearCalls();

    saveAction()->trigger();

    // The save begins with this question.
    QCOMPARE(bench->host.callsOf({"getOptionValue"}), QStringList());
}

void tst_MolkViewManager::failedSaveKeepsTheActionEnabled()
{
    MolkView *view = open(bench->writeCores(1));
    view->onModified();
    bench->host.design().setOptionValue("Synthesize_tool", "Synplify");
    ModalDriver driver;
    driver.expectDialog<QMessageBox>(
        [](QMessageBox *box) { box->button(QMessageBox::Ok)->click(); });

    saveAction()->trigger();

    QVERIFY(saveAction()->isEnabled());
}

void tst_MolkViewManager::closedActiveViewDisablesTheAction()
{
    QVERIFY(open(bench->writeCores(1, "a.molk")));
    MolkView *b = open(bench->writeCores(1, "b.molk"));
    b->setModified(true);
    QVERIFY(saveAction()->isEnabled());
    QStringList states;
    const auto connection = connect(Core::ViewManager::instance(), &Core::ViewManager::viewClosed,
                                    this, [&] { states.append(actionState()); });
    b->setModified(false);

    QVERIFY(MolkViewManager::closeMolkView(bench->path("b.molk")));

    disconnect(connection);
    // The other view is open, but nobody has made it active at that moment.
    QCOMPARE(states, QStringList("&Save \"b.molk\" | Save \"b.molk\" | off"));
}

void tst_MolkViewManager::closedBackgroundViewKeepsTheAction()
{
    QVERIFY(open(bench->writeCores(1, "a.molk")));
    MolkView *b = open(bench->writeCores(1, "b.molk"));
    b->onModified();

    QVERIFY(MolkViewManager::closeMolkView(bench->path("a.molk")));

    // It was refreshed from the active view, whose title has its star by now.
    QCOMPARE(actionState(), QString("&Save \"b.molk *\" | Save \"b.molk *\" | on"));
}

void tst_MolkViewManager::viewDestroyedWithoutReportIsForgotten()
{
    MolkView *a = open(bench->writeCores(1, "a.molk"));
    MolkView *b = open(bench->writeCores(1, "b.molk"));
    b->setModified(true);
    QVERIFY(saveAction()->isEnabled());
    Core::ViewManager *viewManager = Core::ViewManager::instance();
    viewManager->blockSignals(true);

    delete b;

    viewManager->blockSignals(false);
    QCOMPARE(manager()->molkViews(), QList<MolkView *>({a}));
    QVERIFY(!saveAction()->isEnabled());
    saveAction()->trigger();
}

void tst_MolkViewManager::discardedViewIsGone()
{
    const QString file = bench->writeCores(1);
    QPointer<MolkView> view = open(file);
    view->onModified();
    ModalDriver driver;
    driver.expectMessage("Save", "Save changes to \"" + QDir::toNativeSeparators(file) + "\" ?",
                         QMessageBox::Discard);

    QVERIFY(MolkViewManager::closeMolkView(file));

    QVERIFY(manager()->molkViews().isEmpty());
    QVERIFY(!saveAction()->isEnabled());
    QTRY_VERIFY(!view);
}

MOLK_TEST_MAIN(tst_MolkViewManager)
#include "tst_molkviewmanager.moc"
