// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "recentfiles.h"
#include "testmain.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

using Workbench::RecentFiles;

class RecentFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void newestComesFirst();
    void aFileStandsOnce();
    void theListIsShort();
    void otherWorkbenchesShareTheList();
    void removingAndClearing();

private:
    QTemporaryDir settings;
};

void RecentFilesTest::init()
{
    QCoreApplication::setOrganizationName("molk-tests");
    QCoreApplication::setApplicationName("recentfiles");
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QSettings().clear();
}

void RecentFilesTest::newestComesFirst()
{
    RecentFiles recent("recent");
    QSignalSpy changed(&recent, &RecentFiles::changed);
    recent.add("/a");
    recent.add("/b");
    QCOMPARE(recent.paths(), QStringList({"/b", "/a"}));
    QCOMPARE(changed.count(), 2);
}

void RecentFilesTest::aFileStandsOnce()
{
    RecentFiles recent("recent");
    recent.add("/a");
    recent.add("/b");
    recent.add("/x/../a");
    recent.add("/a");
    QCOMPARE(recent.paths(), QStringList({"/a", "/b"}));
}

void RecentFilesTest::theListIsShort()
{
    RecentFiles recent("recent");
    for (int i = 0; i < 2 * RecentFiles::Most; ++i)
        recent.add(QString("/%1").arg(i));
    QCOMPARE(recent.paths().size(), int(RecentFiles::Most));
    QCOMPARE(recent.paths().constFirst(), "/19");
}

void RecentFilesTest::otherWorkbenchesShareTheList()
{
    RecentFiles one("recent");
    RecentFiles two("recent");
    RecentFiles other("projects");
    one.add("/a");
    two.add("/b");
    QCOMPARE(one.paths(), QStringList({"/b", "/a"}));
    QVERIFY(other.paths().isEmpty());
}

void RecentFilesTest::removingAndClearing()
{
    RecentFiles recent("recent");
    recent.add("/a");
    recent.add("/b");
    QSignalSpy changed(&recent, &RecentFiles::changed);
    recent.remove("/c");
    QCOMPARE(changed.count(), 0);
    recent.remove("/a");
    QCOMPARE(recent.paths(), QStringList("/b"));
    recent.clear();
    QVERIFY(recent.paths().isEmpty());
    QCOMPARE(changed.count(), 2);
}

MOLK_TEST_GUILESS_MAIN(RecentFilesTest)
#include "tst_recentfiles.moc"
