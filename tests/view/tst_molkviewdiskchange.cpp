// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "corelist.h"
#include "diskchanges.h"
#include "modaldriver.h"
#include "molkcore.h"
#include "molkfile.h"
#include "singleshots.h"
#include "testwidgetsmain.h"
#include "viewtest.h"

#include <QFileSystemWatcher>
#include <QLayout>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>

using namespace MOLK;

class tst_MolkViewDiskChange : public ViewTest
{
    Q_OBJECT

private slots:
    void changeRaisesABannerAfterAWhile();
    void outsideActRaisesABanner_data();
    void outsideActRaisesABanner();
    void bannerStaysInItsPlace();
    void severalWritesRaiseOneBanner();
    void changeWhileTheBannerStandsIsIgnored();
    void fileThatComesBackBeforeTheQuestionCountsAsChanged();
    void fileThatComesBackBehindTheQuestionIsNotNoticed();
    void backgroundAndModifiedViewsAreAskedToo();
    void viewMayGoWhileItWaits();

    void cancelKeepsAllAndTheNextChangeAsksAgain();
    void cancelAfterAReplacementEndsTheWatch();
    void keepItKeepsAllAndASaveWritesTheFileAnew();
    void closeClosesWithoutQuestion();
    void closeWithoutParentOnlyClearsTheState();
};

void tst_MolkViewDiskChange::changeRaisesABannerAfterAWhile()
{
    QVERIFY(showCores());
    QSignalSpy changes(document()->watcher, SIGNAL(fileChanged(QString)));
    append(file, "\n");
    QVERIFY(changes.wait());
    QVERIFY(document()->reloadPending);
    QVERIFY(!shown->banner());
    QVERIFY(child<QWidget>(shown->view, "widget_3")->isHidden());
    QCOMPARE(singleShots(), QList<int>({500}));

    QTRY_VERIFY(shown->banner());

    QCOMPARE(bannerText(shown->banner()), changedText(file));
    QVERIFY(shown->banner()->isVisible());
    QVERIFY(child<QWidget>(shown->view, "widget_3")->isVisible());
    QVERIFY(document()->reloadPending);
}

void tst_MolkViewDiskChange::outsideActRaisesABanner_data()
{
    QTest::addColumn<QString>("act");
    QTest::addColumn<bool>("removed");
    for (const char *act : {"append", "truncate", "rewrite", "replace"})
        QTest::newRow(act) << act << false;
    for (const char *act : {"remove", "rename"})
        QTest::newRow(act) << act << true;
}

void tst_MolkViewDiskChange::outsideActRaisesABanner()
{
    QFETCH(QString, act);
    QFETCH(bool, removed);
    QVERIFY(showCores());

    if (act == "append")
        append(file, "\n");
    else if (act == "truncate")
        QVERIFY(QFile::resize(file, 10));
    else if (act == "rewrite")
        bench->write("a.molk", ViewBench::read(file));
    else if (act == "replace")
        replace(file, ViewBench::read(file));
    else if (act == "remove")
        QVERIFY(QFile::remove(file));
    else if (act == "rename")
        QVERIFY(QFile::rename(file, file + ".old"));

    QTRY_VERIFY(shown->banner());
    QCOMPARE(bannerText(shown->banner()), removed ? removedText(file) : changedText(file));
}

void tst_MolkViewDiskChange::bannerStaysInItsPlace()
{
    QVERIFY(showCores());

    const ReloadBanner *banner = raiseBanner(*shown);

    auto *place = child<QWidget>(shown->view, "widget_3");
    QCOMPARE(banner->parentWidget(), place);
    QCOMPARE(place->layout()->indexOf(const_cast<ReloadBanner *>(banner)), 0);
    QVERIFY(place->isVisible());
}

void tst_MolkViewDiskChange::severalWritesRaiseOneBanner()
{
    QVERIFY(showCores());
    QSignalSpy changes(document()->watcher, SIGNAL(fileChanged(QString)));

    for (int i = 0; i < 3; ++i) {
        append(file, "\n");
        QTRY_COMPARE(changes.count(), i + 1);
    }

    QTRY_VERIFY(shown->banner());
    QCOMPARE(shown->banners().size(), 1);
}

void tst_MolkViewDiskChange::changeWhileTheBannerStandsIsIgnored()
{
    QVERIFY(showCores());
    append(file, "\n");
    QTRY_VERIFY(shown->banner());
    const QPointer<ReloadBanner> first = shown->banner();
    QSignalSpy changes(document()->watcher, SIGNAL(fileChanged(QString)));

    // Another view that hears of the change asks later than this one would.
    const ShownView witness(*bench, file);
    QVERIFY(witness.view);
    append(file, "\n");
    QTRY_VERIFY(witness.banner());

    QVERIFY(changes.count() > 0);
    QCOMPARE(shown->banners(), QList<ReloadBanner *>({first.data()}));
}

void tst_MolkViewDiskChange::fileThatComesBackBeforeTheQuestionCountsAsChanged()
{
    QVERIFY(showCores());
    QVERIFY(QFile::remove(file));
    QTRY_VERIFY(document()->reloadPending);
    bench->writeCores(2);

    QTRY_VERIFY(shown->banner());

    QCOMPARE(bannerText(shown->banner()), changedText(file));
    press(shown->banner(), "btnA");
    QCOMPARE(coreLines(shown->view), QStringList({"molk_0", "molk_1"}));
}

void tst_MolkViewDiskChange::fileThatComesBackBehindTheQuestionIsNotNoticed()
{
    QVERIFY(showCores());
    QVERIFY(QFile::remove(file));
    QTRY_VERIFY(shown->banner());
    const QPointer<ReloadBanner> first = shown->banner();

    bench->writeCores(2);
    QCoreApplication::processEvents();

    QCOMPARE(shown->banners(), QList<ReloadBanner *>({first.data()}));
    QCOMPARE(bannerText(first), removedText(file));
}

void tst_MolkViewDiskChange::backgroundAndModifiedViewsAreAskedToo()
{
    QVERIFY(showCores());
    shown->view->onModified();
    shown->page->hide();

    append(file, "\n");

    QTRY_VERIFY(shown->banner());
    QVERIFY(shown->view->isModified());
}

void tst_MolkViewDiskChange::viewMayGoWhileItWaits()
{
    QVERIFY(showCores());
    const ShownView witness(*bench, file);
    QVERIFY(witness.view);
    append(file, "\n");
    QTRY_VERIFY(document()->reloadPending);

    shown.reset();

    QTRY_VERIFY(witness.banner());
}

void tst_MolkViewDiskChange::cancelKeepsAllAndTheNextChangeAsksAgain()
{
    QVERIFY(showCores());
    shown->view->onModified();
    bench->write("a.molk", ViewBench::read(bench->writeCores(2, "b.molk")));
    QTRY_VERIFY(shown->banner());
    const QPointer<ReloadBanner> banner = shown->banner();

    press(banner, "btnB");

    QVERIFY(!banner);
    QVERIFY(!document()->reloadPending);
    QCOMPARE(coreLines(shown->view), QStringList("molk_0"));
    QVERIFY(shown->view->isModified());
    QCOMPARE(shown->view->windowTitle(), QString("a.molk *"));
    // The place of the banners stays, empty.
    QVERIFY(child<QWidget>(shown->view, "widget_3")->isVisible());
    QCOMPARE(child<QWidget>(shown->view, "widget_3")->layout()->count(), 0);

    append(file, "\n");
    QTRY_VERIFY(shown->banner());
}

void tst_MolkViewDiskChange::cancelAfterAReplacementEndsTheWatch()
{
    QVERIFY(showCores());
    replace(file, ViewBench::read(file));
    QTRY_VERIFY(shown->banner());

    press(shown->banner(), "btnB");

    QCOMPARE(document()->watcher->files(), QStringList());
}

void tst_MolkViewDiskChange::keepItKeepsAllAndASaveWritesTheFileAnew()
{
    QVERIFY(showCores());
    QVERIFY(QFile::remove(file));
    QTRY_VERIFY(shown->banner());
    const QPointer<ReloadBanner> banner = shown->banner();

    press(banner, "btnA");

    QVERIFY(!banner);
    QVERIFY(!document()->reloadPending);
    QVERIFY(!shown->view->isModified());
    QCOMPARE(coreLines(shown->view), QStringList("molk_0"));
    QCOMPARE(document()->watcher->files(), QStringList());

    QVERIFY(shown->view->save());
    QVERIFY(checkMOLKFile(file));
    QCOMPARE(document()->watcher->files(), QStringList(file));
    append(file, "\n");
    QTRY_VERIFY(shown->banner());
}

void tst_MolkViewDiskChange::closeClosesWithoutQuestion()
{
    QVERIFY(showCores());
    shown->view->onModified();
    QSignalSpy status(shown->view, SIGNAL(modificationStatusChanged(bool)));
    QVERIFY(QFile::remove(file));
    QTRY_VERIFY(shown->banner());
    ModalDriver driver;

    press(shown->banner(), "btnB");

    QCOMPARE(status, QList<QVariantList>({{false}}));
    QTRY_VERIFY(!shown->page);
    QVERIFY(!shown->view);
    QVERIFY(!QFile::exists(file));
}

void tst_MolkViewDiskChange::closeWithoutParentOnlyClearsTheState()
{
    QVERIFY(openCores());
    view->onModified();
    QVERIFY(QFile::remove(file));
    document()->reloadPending = true;
    view->checkForReload();
    const QPointer<ReloadBanner> banner = view->findChild<ReloadBanner *>();

    child<QPushButton>(banner, "btnB")->click();

    QVERIFY(!banner);
    QVERIFY(!document()->reloadPending);
    QVERIFY(!view->isModified());
    QCOMPARE(view->windowTitle(), QString("a.molk *"));
}

MOLK_TEST_MAIN(tst_MolkViewDiskChange)
#include "tst_molkviewdiskchange.moc"
