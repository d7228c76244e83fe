// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "childprocess.h"
#include "faultinjector.h"
#include "molkfile.h"
#include "savebench.h"
#include "testwidgetsmain.h"

#include <QDir>
#include <QFile>

using Faults::Kind;

/// A save that is cut off at any call of the system leaves the old file or the new one, whole, and
/// doesn't stand in the way of the next save.
class TestSaveInterrupted : public QObject
{
    Q_OBJECT

private slots:
    void killedSaveLeavesAWholeFile_data();
    void killedSaveLeavesAWholeFile();
};

void TestSaveInterrupted::killedSaveLeavesAWholeFile_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("unnamed");
    QTest::addColumn<bool>("exists");
    QTest::newRow("ahead-of-a-call") << int(Kind::KillBefore) << true << true;
    QTest::newRow("behind-a-call") << int(Kind::KillAfter) << true << true;
    QTest::newRow("amidst-a-write") << int(Kind::KillAmidst) << true << true;
    QTest::newRow("new-file") << int(Kind::KillAfter) << true << false;
    QTest::newRow("named-ahead-of-a-call") << int(Kind::KillBefore) << false << true;
    QTest::newRow("named-behind-a-call") << int(Kind::KillAfter) << false << true;
    QTest::newRow("named-amidst-a-write") << int(Kind::KillAmidst) << false << true;
    QTest::newRow("named-new-file") << int(Kind::KillAfter) << false << false;
}

void TestSaveInterrupted::killedSaveLeavesAWholeFile()
{
    QFETCH(int, kind);
    QFETCH(bool, unnamed);
    QFETCH(bool, exists);
    SaveBench save;
    save.open();
    const QByteArray oldBytes = exists ? save.oldBytes() : QByteArray();
    const QByteArray newBytes = save.newBytes();
    QVERIFY(newBytes != oldBytes);
    Faults::refuseUnnamedFiles(!unnamed);

    int killed = 0;
    bool isOld = true;
    for (bool completed = false; !completed; ++killed) {
        // All children draw the same random names, so those of earlier ones have to go.
        QVERIFY(QDir(save.directory()).removeRecursively() && QDir().mkdir(save.directory()));
        if (exists)
            save.bench.write("d/a.molk", oldBytes);
        const QString end = inChild([&] {
            Faults::arm(save.directory(), killed + 1, Kind(kind));
            return save.view->save() ? QString() : QString("the save fails");
        });
        completed = end.isEmpty();
        QVERIFY2(completed || end == "ended by signal 9", qPrintable(end));
        if (completed)
            break;

        const QByteArray bytes =
            QFile::exists(save.file) ? ViewBench::read(save.file) : QByteArray();
        QVERIFY2(bytes == oldBytes || bytes == newBytes,
                 qPrintable(QString("mixture at call %1").arg(killed + 1)));
        // Once the new file is there it doesn't go away again.
        QVERIFY(isOld || bytes == newBytes);
        isOld = bytes == oldBytes;

        // Whatever was left lying around, another editor saves and all is as it should be.
        const QString next = inChild([&] {
            return save.view->save() && ViewBench::read(save.file) == newBytes
                ? QString()
                : QString("the next save fails");
        });
        QCOMPARE(next, QString());
        QVERIFY(MOLK::checkMOLKFile(save.file));
    }
    Faults::refuseUnnamedFiles(false);
    QCOMPARE(ViewBench::read(save.file), newBytes);
    // Opening, several writes, synchronising, putting the file in its place, closing.
    QVERIFY2(killed >= 6, qPrintable(QString::number(killed)));
}

MOLK_TEST_MAIN(TestSaveInterrupted)
#include "tst_saveinterrupted.moc"
