// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "childprocess.h"
#include "faultinjector.h"
#include "molkfile.h"
#include "savebench.h"
#include "testwidgetsmain.h"

#include <QDir>
#include <QFile>
#include <QFileSystemWatcher>

#include <cerrno>
#include <csignal>
#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using Faults::Kind;

/// A save that fails tells so and leaves all as it was: the old file whole, the star, the watch.
/// The next save works.
class TestSaveFaults : public QObject
{
    Q_OBJECT

private slots:
    void refusedCallLeavesTheOldFile_data();
    void refusedCallLeavesTheOldFile();
    void shortWritesAreGoneOnWith();

    void fullDiskLeavesTheOldFile();
    void readOnlyDiskLeavesTheOldFile();
    void limitOnSizesLeavesTheOldFile();
    void lostRightLeavesTheOldFile_data();
    void lostRightLeavesTheOldFile();
    void missingDirectoryIsTold();
    void directoryInTheFilesPlaceIsTold();
    void linkIsSavedThrough();
    void permissionsAreKept_data();
    void permissionsAreKept();
    void oddNamesAreSaved_data();
    void oddNamesAreSaved();
};

static const int nobody = 65534;

static QString checkFailure(SaveBench &save)
{
    if (save.save())
        return "the save works";
    return save.faultAfter(false);
}

// After a failure, with its cause gone.
static QString checkRecovery(SaveBench &save)
{
    const QString watch = save.faultOfWatch();
    if (!watch.isEmpty())
        return watch;
    if (!save.save())
        return "the next save fails";
    const QString fault = save.faultAfter(true);
    return fault.isEmpty() ? save.faultOfWatch() : fault;
}

void TestSaveFaults::refusedCallLeavesTheOldFile_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("unnamed");
    QTest::newRow("disk-full") << int(Kind::FailOn) << ENOSPC << true;
    QTest::newRow("disk-full-for-a-moment") << int(Kind::Fail) << ENOSPC << true;
    QTest::newRow("quota") << int(Kind::FailOn) << EDQUOT << true;
    QTest::newRow("quota-for-a-moment") << int(Kind::Fail) << EDQUOT << true;
    QTest::newRow("bad-disk") << int(Kind::FailOn) << EIO << true;
    QTest::newRow("named-disk-full") << int(Kind::FailOn) << ENOSPC << false;
    QTest::newRow("named-quota-for-a-moment") << int(Kind::Fail) << EDQUOT << false;
    QTest::newRow("named-bad-disk") << int(Kind::FailOn) << EIO << false;
}

void TestSaveFaults::refusedCallLeavesTheOldFile()
{
    QFETCH(int, kind);
    QFETCH(int, error);
    QFETCH(bool, unnamed);
    Faults::refuseUnnamedFiles(!unnamed);
    QStringList survived;
    int refused = 0;
    for (bool completed = false; !completed; ++refused) {
        SaveBench save;
        save.open();
        Faults::arm(save.directory(), refused + 1, Kind(kind), error);
        const bool saved = save.save();
        const QStringList calls = Faults::disarm();
        completed = calls.size() <= refused;
        if (saved && !completed)
            survived.append(calls.at(refused));
        QVERIFY(saved || !completed);

        const QByteArray where = "call " + QByteArray::number(refused + 1) + ", "
            + calls.value(refused).toLatin1() + ": ";
        QVERIFY2(save.faultAfter(saved).isEmpty(), (where + qPrintable(save.faultAfter(saved))));
        if (saved)
            save.edit();
        const QString recovery = checkRecovery(save);
        QVERIFY2(recovery.isEmpty(), where + qPrintable(recovery));
    }
    Faults::refuseUnnamedFiles(false);
    // A refused close comes when all is stored, one way to synchronise or to name the file gives
    // way to the other, and rights that can't be set are none of the text.
    survived.removeDuplicates();
    for (const QString &call : {QString("close"), QString("fdatasync"), QString("linkat"),
                                QString("fchmod"), QString("chmod")})
        survived.removeOne(call);
    QCOMPARE(survived, QStringList());
    QVERIFY2(refused >= 8, qPrintable(QString::number(refused)));
}

void TestSaveFaults::shortWritesAreGoneOnWith()
{
    int calls = 1;
    for (int step = 1; step <= calls; ++step) {
        SaveBench save;
        save.open();
        Faults::arm(save.directory(), step, Kind::Shorten);
        QVERIFY(save.view->save());
        calls = Faults::disarm().size();
        QCOMPARE(save.faultAfter(true), QString());
    }
}

namespace {

// A small disk in place of a directory, seen by this process alone. Where that isn't allowed there
// is no such disk to be had, and refusing calls stand for it.
class SmallDisk
{
public:
    explicit SmallDisk(const QString &directory)
        : path(QFile::encodeName(directory))
    {
        if (::unshare(CLONE_NEWNS) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
            return;
        ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
        isReal = ::mount("molk", path.constData(), "tmpfs", 0, "size=1m,mode=0777") == 0;
    }

    ~SmallDisk()
    {
        if (isReal)
            ::umount2(path.constData(), MNT_DETACH);
    }

    Q_DISABLE_COPY(SmallDisk)

    bool remount(unsigned long flags) const
    {
        return ::mount(nullptr, path.constData(), nullptr, MS_REMOUNT | flags, nullptr) == 0;
    }

    bool isReal = false;

private:
    QByteArray path;
};

// A view with an unsaved edit on a file on such a disk.
class DiskBench : public SaveBench
{
public:
    DiskBench()
        : disk(directory())
    {
        // The disk hides what the directory held.
        if (disk.isReal)
            bench.write("d/a.molk", oldBytes());
        open();
    }

    const SmallDisk disk;
};

} // namespace

static bool fillDisk(const QString &name)
{
    QFile filler(name);
    if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    const QByteArray block(4096, 'x');
    while (filler.write(block) == block.size()) {}
    return filler.size() > 0;
}

static QString playFullDisk()
{
    DiskBench save;
    const QString filler = save.directory() + "/filler";
    if (save.disk.isReal && !fillDisk(filler))
        return "the disk can't be filled";
    if (!save.disk.isReal)
        Faults::arm(save.directory(), 2, Kind::FailOn, ENOSPC);
    if (save.save())
        return "the save works";
    Faults::disarm();
    if (save.disk.isReal && !QFile::remove(filler))
        return "the disk can't be cleared";
    const QString fault = save.faultAfter(false);
    return fault.isEmpty() ? checkRecovery(save) : fault;
}

void TestSaveFaults::fullDiskLeavesTheOldFile()
{
    QCOMPARE(inChild(playFullDisk), QString());
}

static QString playReadOnlyDisk()
{
    DiskBench save;
    if (save.disk.isReal && !save.disk.remount(MS_RDONLY))
        return "the disk can't be made read-only";
    if (!save.disk.isReal)
        Faults::arm(save.directory(), 1, Kind::FailOn, EROFS);
    const QString failure = checkFailure(save);
    Faults::disarm();
    if (save.disk.isReal && !save.disk.remount(0))
        return "the disk can't be made writable";
    return failure.isEmpty() ? checkRecovery(save) : failure;
}

void TestSaveFaults::readOnlyDiskLeavesTheOldFile()
{
    QCOMPARE(inChild(playReadOnlyDisk), QString());
}

static QString playLimit()
{
    std::signal(SIGXFSZ, SIG_IGN);
    for (rlim_t bytes : {0, 1, 1000, 50000}) {
        SaveBench save;
        save.open();
        const rlimit limit{bytes, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        const QString failure = checkFailure(save);
        const rlimit none{RLIM_INFINITY, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &none);
        const QString fault = failure.isEmpty() ? checkRecovery(save) : failure;
        if (!fault.isEmpty())
            return fault;
    }
    return QString();
}

void TestSaveFaults::limitOnSizesLeavesTheOldFile()
{
    QCOMPARE(inChild(playLimit), QString());
}

void TestSaveFaults::lostRightLeavesTheOldFile_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("mode");
    QTest::newRow("directory") << "d" << 0555;
    QTest::newRow("file") << "d/a.molk" << 0444;
}

// The superuser has every right, so a user without any tries. What the user is shut out of belongs
// to it, or others' rights would be what is tested.
static QString playLostRight(const QString &path, int mode)
{
    SaveBench save;
    for (const QString &each : {save.bench.dir.path(), save.directory(), save.file}) {
        if (::geteuid() == 0 && ::chown(QFile::encodeName(each).constData(), nobody, nobody) != 0)
            return "the files can't be given away";
    }
    if (::geteuid() == 0
        && (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0))
        return "the privileges stay";
    save.open();
    const QByteArray name = QFile::encodeName(save.bench.path(path));
    struct stat status = {};
    ::stat(name.constData(), &status);
    ::chmod(name.constData(), mode_t(mode));
    const QString failure = checkFailure(save);
    ::chmod(name.constData(), status.st_mode);
    return failure.isEmpty() ? checkRecovery(save) : failure;
}

void TestSaveFaults::lostRightLeavesTheOldFile()
{
    QFETCH(QString, path);
    QFETCH(int, mode);
    QCOMPARE(inChild([&] { return playLostRight(path, mode); }), QString());
}

void TestSaveFaults::missingDirectoryIsTold()
{
    SaveBench save;
    save.open();
    QVERIFY(QDir(save.directory()).removeRecursively());
    QVERIFY(!save.save());
    QVERIFY(save.view->isModified());
    QCOMPARE(save.view->windowTitle(), QString("a.molk *"));
    QVERIFY(!QFile::exists(save.directory()));

    // With the directory there again the save makes the file, and the watch begins anew.
    QVERIFY(QDir().mkdir(save.directory()));
    QVERIFY(save.save());
    QCOMPARE(save.faultAfter(true), QString());
    QCOMPARE(save.faultOfWatch(), QString());
}

void TestSaveFaults::directoryInTheFilesPlaceIsTold()
{
    SaveBench save;
    save.open();
    QVERIFY(QFile::remove(save.file));
    QVERIFY(QDir().mkdir(save.file));
    QVERIFY(!save.save());
    QVERIFY(save.view->isModified());
    QCOMPARE(save.view->windowTitle(), QString("a.molk *"));
    QVERIFY(QFileInfo(save.file).isDir());
    QVERIFY(QDir(save.file).isEmpty());

    QVERIFY(QDir().rmdir(save.file));
    QVERIFY(save.save());
    QCOMPARE(save.faultAfter(true), QString());
    QCOMPARE(save.faultOfWatch(), QString());
}

void TestSaveFaults::linkIsSavedThrough()
{
    SaveBench save;
    const QString target = save.bench.path("target.molk");
    QVERIFY(QFile::rename(save.file, target));
    QVERIFY(QFile::link(target, save.file));
    save.open();
    const int calls = [&] {
        Faults::arm(save.bench.dir.path(), 2, Kind::FailOn, ENOSPC);
        save.save();
        return Faults::disarm().size();
    }();
    QVERIFY(calls > 1);
    QCOMPARE(ViewBench::read(target), save.oldBytes());
    QCOMPARE(save.faultAfter(false), QString());
    QCOMPARE(save.faultOfWatch(), QString());

    QVERIFY(save.save());
    QCOMPARE(save.faultAfter(true), QString());
    QVERIFY(QFileInfo(save.file).isSymLink());
    QVERIFY(!QFileInfo(target).isSymLink());
    QCOMPARE(save.faultOfWatch(), QString());
}

void TestSaveFaults::permissionsAreKept_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("private") << 0600;
    QTest::newRow("for-everyone") << 0666;
    QTest::newRow("executable") << 0755;
    QTest::newRow("write-only-for-others") << 0622;
}

void TestSaveFaults::permissionsAreKept()
{
    QFETCH(int, mode);
    SaveBench save;
    const QByteArray name = QFile::encodeName(save.file);
    QCOMPARE(::chmod(name.constData(), mode_t(mode)), 0);
    save.open();
    for (bool fails : {true, false}) {
        if (fails)
            Faults::arm(save.directory(), 2, Kind::FailOn, ENOSPC);
        QCOMPARE(save.save(), !fails);
        Faults::disarm();
        struct stat status = {};
        QCOMPARE(::stat(name.constData(), &status), 0);
        QCOMPARE(int(status.st_mode & 07777), mode);
        QCOMPARE(save.faultAfter(!fails), QString());
    }
    QCOMPARE(save.faultOfWatch(), QString());
}

void TestSaveFaults::oddNamesAreSaved_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("quotes") << "a\"b'c`.molk";
    QTest::newRow("line-end") << "a\nb.molk";
    QTest::newRow("markup") << "<b>a&amp;.molk";
    QTest::newRow("place-marker") << "%1%2.molk";
    QTest::newRow("backslash") << "a\\b.molk";
    QTest::newRow("blanks") << "  a .molk";
    QTest::newRow("other-letters")
        << QString::fromUtf8("Z\xC3\xA4hler\xE4\xBF\xA1\xF0\x9F\x92\xA1.molk");
    QTest::newRow("right-to-left") << QString::fromUtf8("a\xE2\x80\xAE"
                                                        "b.molk");
}

void TestSaveFaults::oddNamesAreSaved()
{
    QFETCH(QString, name);
    SaveBench save(name);
    save.open();
    Faults::arm(save.directory(), 2, Kind::FailOn, EDQUOT);
    QVERIFY(!save.save());
    Faults::disarm();
    QCOMPARE(save.faultAfter(false), QString());
    QCOMPARE(checkRecovery(save), QString());
}

MOLK_TEST_MAIN(TestSaveFaults)
#include "tst_savefaults.moc"
