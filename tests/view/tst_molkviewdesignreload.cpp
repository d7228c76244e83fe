// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designchanges.h"
#include "diskchanges.h"
#include "modaldriver.h"
#include "molkoptionwidget.h"
#include "netlistguard.h"
#include "probedialog.h"
#include "testwidgetsmain.h"
#include "viewtest.h"

#include "netlist/netlistbuilder.h"

#include "fathom/hierachy.h"
#include "fathom/rtlnetlist.h"

#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidget>

using namespace MOLK;

class tst_MolkViewDesignReload : public ViewTest
{
    Q_OBJECT

private slots:
    void reloadReadsTheDesignAnew();
    void reloadReadsTheNewTopModule();
    void reloadKeepsTheModifiedState();
    void cancelKeepsTheNetlistAndTheNextChangeAsksAgain();
    void refusedReloadClosesTheViewWithoutQuestion();
    void refusedReloadOfAViewWithoutParentKeepsAskingOff();
    void changeDuringAReloadIsIgnored();
    void changeDuringTheFirstReadRaisesABanner();

    void bothKindsOfBannersStandTogether();
    void dormantBannerStaysHidden();
    void slotsWithoutABannerAreHarmless();
    void viewMayGoDuringAReload();
    void viewMayGoInAnEvent();
    void reloadClosesADialogOnAProbeOut();
};

void tst_MolkViewDesignReload::reloadReadsTheDesignAnew()
{
    QVERIFY(showCores(2));
    const NetlistGuard old(document()->netlist);
    FATHOM::RtlNetlist *next = benchNetlist();
    bench->host.extraction().queueNetlist(next);
    bench->host.events().send(filesChanged());
    const QPointer<ReloadBanner> banner = shown->banner();
    bench->host.extraction().duringNetlist([&] {
        // The banner goes first.
        QVERIFY(!banner);
        QVERIFY(!old.get());
    });

    press(banner, "btnA");

    QCOMPARE(document()->netlist, next);
    QVERIFY(child<QWidget>(shown->view, "widget_3")->isVisible());
    QCOMPARE(child<QWidget>(shown->view, "widget_3")->layout()->count(), 0);
    // The view listens again.
    bench->host.events().send(topChanged());
    QCOMPARE(bannerText(shown->banner()), topText());
}

void tst_MolkViewDesignReload::reloadReadsTheNewTopModule()
{
    QVERIFY(showCores());
    bench->host.events().send(filesChanged());
    bench->host.serveDesign("next", [] { return Standin::NetlistBuilder("next").build(); });
    bench->host.events().send(topChanged());
    QCOMPARE(bannerText(shown->banner()), filesText());

    press(shown->banner(), "btnA");

    QCOMPARE(document()->netlist->top->name(), QString("next"));
    QVERIFY(!shown->banner());
}

void tst_MolkViewDesignReload::reloadKeepsTheModifiedState()
{
    QVERIFY(showCores());
    shown->view->onModified();
    QSignalSpy status(shown->view, SIGNAL(modificationStatusChanged(bool)));
    bench->host.events().send(filesChanged());

    press(shown->banner(), "btnA");

    QVERIFY(shown->view->isModified());
    QCOMPARE(shown->view->windowTitle(), QString("a.molk *"));
    QCOMPARE(status.count(), 0);
}

void tst_MolkViewDesignReload::cancelKeepsTheNetlistAndTheNextChangeAsksAgain()
{
    QVERIFY(showCores());
    const FATHOM::RtlNetlist *netlist = document()->netlist;
    bench->host.events().send(filesChanged());
    const QPointer<ReloadBanner> banner = shown->banner();
    bench->host.clearCalls();

    press(banner, "btnB");

    QVERIFY(!banner);
    QCOMPARE(document()->netlist, netlist);
    QCOMPARE(bench->host.calls(), QStringList());
    bench->host.events().send(topChanged());
    QCOMPARE(bannerText(shown->banner()), topText());
}

void tst_MolkViewDesignReload::refusedReloadClosesTheViewWithoutQuestion()
{
    QVERIFY(showCores());
    const QByteArray before = ViewBench::read(file);
    child<QPushButton>(shown->view, "btnProbeInAdd")->click();
    QSignalSpy status(shown->view, SIGNAL(modificationStatusChanged(bool)));
    bench->host.events().send(filesChanged());
    bench->host.extraction().queueModules({{}, {}, {}});
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->windowTitle(), QString("Invalid Top Module"));
        QVERIFY(shown->view->isModified());
        box->button(QMessageBox::Ok)->click();
    });

    press(shown->banner(), "btnA");

    QCOMPARE(status, QList<QVariantList>({{false}}));
    QTRY_VERIFY(!shown->page);
    QVERIFY(!shown->view);
    QCOMPARE(ViewBench::read(file), before);
}

void tst_MolkViewDesignReload::refusedReloadOfAViewWithoutParentKeepsAskingOff()
{
    QVERIFY(openCores());
    view->onModified();
    bench->host.events().send(filesChanged());
    bench->host.design().setSourceFiles({});
    ModalDriver driver;
    driver.expectMessage("Error", "Design files are not exist.", QMessageBox::Ok);

    child<QPushButton>(view, "btnA")->click();

    QVERIFY(!view->isModified());
    QVERIFY(document()->netlist == nullptr);
    bench->host.events().send(filesChanged());
    QVERIFY(!view->findChild<ReloadBanner *>());
    // It can still be saved; its cores keep the names of their modules.
    QVERIFY(view->save());
}

void tst_MolkViewDesignReload::changeDuringAReloadIsIgnored()
{
    QVERIFY(showCores());
    bench->host.events().send(filesChanged());
    bench->host.extraction().duringNetlist([&] {
        bench->host.events().send(topChanged());
        QVERIFY(!shown->banner());
    });

    press(shown->banner(), "btnA");

    QVERIFY(!shown->banner());
    bench->host.events().send(topChanged());
    QVERIFY(shown->banner());
}

void tst_MolkViewDesignReload::changeDuringTheFirstReadRaisesABanner()
{
    bench->host.extraction().duringNetlist([&] { bench->host.events().send(filesChanged()); });

    QVERIFY(showFile(bench->writeCores(1)));

    QCOMPARE(shown->banners().size(), 1);
    QVERIFY(shown->banner()->isVisible());
    press(shown->banner(), "btnA");
    QVERIFY(document()->netlist);
    QVERIFY(!shown->banner());
}

void tst_MolkViewDesignReload::bothKindsOfBannersStandTogether()
{
    QVERIFY(showCores());
    bench->host.events().send(filesChanged());
    QFile outside(file);
    QVERIFY(outside.open(QIODevice::Append));
    QVERIFY(outside.write("\n") == 1);
    outside.close();
    QTRY_COMPARE(shown->banners().size(), 2);
    const QPointer<ReloadBanner> ofDesign = shown->banners().at(0);
    const QPointer<ReloadBanner> ofFile = shown->banners().at(1);
    QCOMPARE(bannerText(ofDesign), filesText());
    QVERIFY(bannerText(ofFile).contains("changed on disk"));
    auto *place = child<QWidget>(shown->view, "widget_3");
    QCOMPARE(place->layout()->indexOf(ofDesign), 0);
    QCOMPARE(place->layout()->indexOf(ofFile), 1);
    QTRY_VERIFY(ofFile->isVisible());

    press(ofDesign, "btnA");
    QVERIFY(!ofDesign);
    QVERIFY(ofFile);
    QVERIFY(document()->reloadPending);
    bench->host.events().send(topChanged());
    QCOMPARE(shown->banners().size(), 2);

    press(ofFile, "btnB");
    QCOMPARE(shown->banners().size(), 1);
    QCOMPARE(bannerText(shown->banner()), topText());
    // While the design's banner stands its events stay ignored.
    bench->host.events().send(filesChanged());
    QCOMPARE(shown->banners().size(), 1);
}

void tst_MolkViewDesignReload::dormantBannerStaysHidden()
{
    QVERIFY(showCores());

    bench->host.events().send(filesChanged());

    QVERIFY(child<QWidget>(shown->view, "widget_2")->isHidden());
    shown->view->onOKBtn();
    QVERIFY(shown->banner());
    // It doesn't answer the question either.
    bench->host.events().send(topChanged());
    QCOMPARE(shown->banners().size(), 1);
}

void tst_MolkViewDesignReload::slotsWithoutABannerAreHarmless()
{
    QVERIFY(showCores());

    shown->view->onReloadCancel();
    shown->view->onRtlReload();

    QVERIFY(document()->netlist);
    bench->host.events().send(filesChanged());
    QVERIFY(shown->banner());
    shown->view->onReloadCancel();
    // The banner wasn't the sender, so it stays; the view asks again all the same.
    bench->host.events().send(filesChanged());
    QCOMPARE(shown->banners().size(), 2);
}

void tst_MolkViewDesignReload::viewMayGoDuringAReload()
{
    QVERIFY(showCores());
    bench->host.events().send(filesChanged());
    bench->host.extraction().duringNetlist([&] { delete shown->page; });

    press(shown->banner(), "btnA");

    QVERIFY(!shown->view);
}

void tst_MolkViewDesignReload::viewMayGoInAnEvent()
{
    const ShownView first(*bench, bench->writeCores(1, "a.molk"));
    const ShownView second(*bench, bench->writeCores(1, "b.molk"));
    QVERIFY(first.view && second.view);
    bench->host.extraction().duringNetlist([&] {
        delete second.page;
        bench->host.events().send(filesChanged());
    });

    QVERIFY(first.view->readRtlNetlist());

    QCOMPARE(first.banners().size(), 1);
    QVERIFY(!second.view);
}

void tst_MolkViewDesignReload::reloadClosesADialogOnAProbeOut()
{
    QVERIFY(showCores());
    auto *tree = child<QTreeWidget>(shown->view, "treeProbeOut");
    bool wasOpen = false;
    ModalDriver driver;
    driver.expectDialog<ProbeDialog>([&](ProbeDialog *dialog) {
        wasOpen = dialog->isVisible();
        QVERIFY(shown->view->readRtlNetlist());
        QVERIFY(!dialog->isVisible());
    });

    QMetaObject::invokeMethod(tree, "itemDoubleClicked",
                              Q_ARG(QTreeWidgetItem *, tree->topLevelItem(0)), Q_ARG(int, 0));

    QVERIFY(wasOpen);
    QVERIFY(!shown->view->isModified());
}

MOLK_TEST_MAIN(tst_MolkViewDesignReload)
#include "tst_molkviewdesignreload.moc"
