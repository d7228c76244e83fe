// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testmain.h"

#include "host/event.h"
#include "project/edamproject.h"
#include "project/sourcewatcher.h"

#include "qutil/eventmanager.h"
#include "qutil/ieventhandler.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

using Standin::EdamProject;
using Standin::SourceWatcher;

class TestProjectWatcher : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void writingInPlaceIsTold();
    void replacingByRenamingIsTold();
    void replacedFileIsStillWatched();
    void severalWritesAtOnceAreOne();
    void sameContentAgainIsNotTold();
    void removedFileIsToldAndComesBack();
    void removedDirectoryIsToldAndComesBack();
    void fileThatWasMissingIsTold();
    void otherFilesAreNotTold();
    void fileThatIsNoLongerWantedIsNotTold();
    void keptFileIsStillWatched();
    void severalFilesAreToldInOrder();
    void projectSendsAnEventForItsSources();

private:
    QString in(const QString &name) const { return directory->filePath(name); }
    void write(const QString &name, const QByteArray &text);
    void replace(const QString &name, const QByteArray &text);
    QStringList next();
    QStringList nextAfterMarker();

    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<SourceWatcher> watcher;
    std::unique_ptr<QSignalSpy> spy;
    int markers = 0;
};

void TestProjectWatcher::init()
{
    directory = std::make_unique<QTemporaryDir>();
    write("a.v", "one");
    write("b.v", "one");
    write("marker.v", "0");
    watcher = std::make_unique<SourceWatcher>();
    watcher->setFiles({in("a.v"), in("b.v"), in("marker.v")});
    spy = std::make_unique<QSignalSpy>(watcher.get(), SIGNAL(modified(QString)));
}

void TestProjectWatcher::cleanup()
{
    spy.reset();
    watcher.reset();
}

void TestProjectWatcher::write(const QString &name, const QByteArray &text)
{
    QFile file(in(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        QTest::qFail("a source file can't be written", __FILE__, __LINE__);
}

void TestProjectWatcher::replace(const QString &name, const QByteArray &text)
{
    QSaveFile file(in(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
        QTest::qFail("a source file can't be replaced", __FILE__, __LINE__);
}

// The names of the files told of next.
QStringList TestProjectWatcher::next()
{
    if (spy->isEmpty())
        spy->wait();
    QStringList names;
    while (!spy->isEmpty())
        names.append(QFileInfo(spy->takeFirst().at(0).toString()).fileName());
    return names;
}

// All that is told up to a change that comes later than everything else.
QStringList TestProjectWatcher::nextAfterMarker()
{
    QStringList names;
    do {
        write("marker.v", QByteArray::number(++markers));
        names += next();
    } while (!names.isEmpty() && !names.contains("marker.v"));
    names.removeAll("marker.v");
    return names;
}

void TestProjectWatcher::writingInPlaceIsTold()
{
    write("a.v", "two");
    QCOMPARE(next(), QStringList("a.v"));
    write("a.v", "three");
    QCOMPARE(next(), QStringList("a.v"));
    QCOMPARE(nextAfterMarker(), QStringList());
}

void TestProjectWatcher::replacingByRenamingIsTold()
{
    replace("a.v", "two");
    QCOMPARE(next(), QStringList("a.v"));
    QCOMPARE(nextAfterMarker(), QStringList());
}

void TestProjectWatcher::replacedFileIsStillWatched()
{
    replace("a.v", "two");
    QCOMPARE(next(), QStringList("a.v"));
    write("a.v", "three");
    QCOMPARE(next(), QStringList("a.v"));
    replace("a.v", "four");
    QCOMPARE(next(), QStringList("a.v"));
}

void TestProjectWatcher::severalWritesAtOnceAreOne()
{
    write("a.v", "");
    write("a.v", "tw");
    replace("a.v", "two");
    QCOMPARE(next(), QStringList("a.v"));
    QCOMPARE(nextAfterMarker(), QStringList());
}

void TestProjectWatcher::sameContentAgainIsNotTold()
{
    write("a.v", "one");
    replace("a.v", "one");
    QFile::setPermissions(in("a.v"), QFile::ReadOwner | QFile::WriteOwner);
    QCOMPARE(nextAfterMarker(), QStringList());

    write("a.v", "two");
    QCOMPARE(next(), QStringList("a.v"));
}

void TestProjectWatcher::removedFileIsToldAndComesBack()
{
    QVERIFY(QFile::remove(in("a.v")));
    QCOMPARE(next(), QStringList("a.v"));
    write("a.v", "one");
    QCOMPARE(next(), QStringList("a.v"));
    write("a.v", "two");
    QCOMPARE(next(), QStringList("a.v"));
}

void TestProjectWatcher::removedDirectoryIsToldAndComesBack()
{
    QDir(directory->path()).mkpath("sub/deep");
    write("sub/deep/c.v", "one");
    watcher->setFiles({in("sub/deep/c.v"), in("marker.v")});

    QVERIFY(QDir(in("sub")).removeRecursively());
    QCOMPARE(next(), QStringList("c.v"));
    QDir(directory->path()).mkpath("sub/deep");
    QCOMPARE(nextAfterMarker(), QStringList());
    write("sub/deep/c.v", "one");
    QCOMPARE(next(), QStringList("c.v"));
}

void TestProjectWatcher::fileThatWasMissingIsTold()
{
    watcher->setFiles({in("new.v"), in("marker.v")});
    write("new.v", "one");
    QCOMPARE(next(), QStringList("new.v"));
    write("new.v", "two");
    QCOMPARE(next(), QStringList("new.v"));
}

void TestProjectWatcher::otherFilesAreNotTold()
{
    write("other.v", "one");
    QCOMPARE(nextAfterMarker(), QStringList());
}

void TestProjectWatcher::fileThatIsNoLongerWantedIsNotTold()
{
    watcher->setFiles({in("a.v"), in("marker.v")});
    write("b.v", "two");
    QCOMPARE(nextAfterMarker(), QStringList());
}

void TestProjectWatcher::keptFileIsStillWatched()
{
    write("a.v", "two");
    watcher->setFiles({in("a.v"), in("marker.v")});
    QCOMPARE(next(), QStringList("a.v"));
}

void TestProjectWatcher::severalFilesAreToldInOrder()
{
    write("b.v", "two");
    write("a.v", "two");
    QCOMPARE(next(), QStringList({"a.v", "b.v"}));
}

/// Writes down the files of the events that it hears.
class ModifiedFiles : public QUtil::IEventHandler
{
public:
    ModifiedFiles() { QUtil::EventManager::instance()->subscribe(this, "TE.File.Modified"); }
    ~ModifiedFiles() override { QUtil::EventManager::instance()->unsubscribeAll(this); }

    void handleIEvent(const QUtil::IEvent *event) override
    {
        files.append(event->get("file").toString());
    }

    QStringList files;
};

void TestProjectWatcher::projectSendsAnEventForItsSources()
{
    ModifiedFiles heard;
    const auto project = EdamProject::adHoc({in("a.v"), in("x.molk")}, "top");
    project->watchSources();
    QString error;
    QVERIFY(project->addFiles({in("b.v")}, &error));

    write("x.molk", "not a source");
    write("a.v", "two");
    write("b.v", "two");
    QTRY_COMPARE(heard.files, QStringList({in("a.v"), in("b.v")}));

    QVERIFY(project->removeFiles({in("b.v")}, &error));
    write("b.v", "three");
    write("a.v", "three");
    QTRY_COMPARE(heard.files, QStringList({in("a.v"), in("b.v"), in("a.v")}));
}

MOLK_TEST_GUILESS_MAIN(TestProjectWatcher)
#include "tst_projectwatcher.moc"
