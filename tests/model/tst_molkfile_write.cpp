// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkcore.h"
#include "molkfile.h"
#include "testmain.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <csignal>
#include <functional>
#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using MOLK::MolkCore;
using MOLK::SignalItem;

/// A write puts the whole new file in the old one's place, or leaves the old one as it was.
class TestMolkFileWrite : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void newFileIsMade();
    void olderFileIsReplaced();
    void permissionsAreKept_data();
    void permissionsAreKept();
    void linkIsFollowed();
    void chainOfLinksIsFollowed();
    void danglingLinkMakesItsTarget();
    void oddNamesAreWritten_data();
    void oddNamesAreWritten();

    void unwritableNameIsRefused_data();
    void unwritableNameIsRefused();
    void pipeIsLeftAPipe();
    void deviceIsLeftADevice();
    void readOnlyDirectoryLeavesTheOldFile();
    void readOnlyFileLeavesTheOldFile();
    void fileSizeLimitLeavesTheOldFile();
    void modelThatCouldNotBeReadLeavesTheOldFile_data();
    void modelThatCouldNotBeReadLeavesTheOldFile();
    void nextWriteWorksAfterAFailure();

private:
    QStringList entries() const
    {
        return QDir(directory->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    QString pathOf(const QString &name) const { return directory->filePath(name); }
    QByteArray bytesOf(const QString &name) const;
    void putOldFile();
    int writeInChild(const std::function<bool()> &prepare) const;

    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<MolkCore> core;
};

static const char oldBytes[] = "the old file";

void TestMolkFileWrite::init()
{
    directory = std::make_unique<QTemporaryDir>();
    QVERIFY(directory->isValid());
    core = std::make_unique<MolkCore>(0);
    core->setModuleName("top");
}

void TestMolkFileWrite::cleanup()
{
    // A read-only directory couldn't be cleared.
    QFile::setPermissions(directory->path(), QFileDevice::Permissions(0x7777));
    directory.reset();
}

QByteArray TestMolkFileWrite::bytesOf(const QString &name) const
{
    QFile file(pathOf(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestMolkFileWrite::putOldFile()
{
    QFile file(pathOf("a.molk"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(oldBytes) > 0);
}

// The child may give up what the parent needs: privileges, limits. 0 if the write was refused.
int TestMolkFileWrite::writeInChild(const std::function<bool()> &prepare) const
{
    const pid_t child = ::fork();
    if (child == 0) {
        if (!prepare())
            ::_exit(2);
        ::_exit(MOLK::writeMOLKConfigToXml({core.get()}, pathOf("a.molk")) ? 1 : 0);
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

// The superuser may write everywhere, so the rights of a file count for a child without privileges
// only. It has to own what it is shut out of, or the directory's sticky bit would be what refuses.
static bool dropPrivileges()
{
    return ::geteuid() != 0 || ::setuid(65534) == 0;
}

static bool giveAway(const QString &path)
{
    return ::geteuid() != 0 || ::chown(QFile::encodeName(path).constData(), 65534, 65534) == 0;
}

void TestMolkFileWrite::newFileIsMade()
{
    QVERIFY(MOLK::writeMOLKConfigToXml({core.get()}, pathOf("a.molk")));
    QCOMPARE(entries(), QStringList("a.molk"));
    QVERIFY(bytesOf("a.molk").contains("<core module=\"top\">"));
}

void TestMolkFileWrite::olderFileIsReplaced()
{
    putOldFile();
    QVERIFY(MOLK::writeMOLKConfigToXml({core.get()}, pathOf("a.molk")));
    QCOMPARE(entries(), QStringList("a.molk"));
    QVERIFY(MOLK::checkMOLKFile(pathOf("a.molk")));
}

void TestMolkFileWrite::permissionsAreKept_data()
{
    QTest::addColumn<int>("mode");

    QTest::newRow("usual") << 0644;
    QTest::newRow("private") << 0600;
    QTest::newRow("for-everyone") << 0666;
    QTest::newRow("executable") << 0755;
}

void TestMolkFileWrite::permissionsAreKept()
{
    QFETCH(int, mode);
    putOldFile();
    const QByteArray path = QFile::encodeName(pathOf("a.molk"));
    QCOMPARE(::chmod(path.constData(), mode_t(mode)), 0);
    QVERIFY(MOLK::writeMOLKConfigToXml({core.get()}, pathOf("a.molk")));
    struct stat status = {};
    QCOMPARE(::stat(path.constData(), &status), 0);
    QCOMPARE(int(status.st_mode & 07777), mode);
}

void TestMolkFileWrite::linkIsFollowed()
{
    putOldFile();
    QVERIFY(QFile::link("a.molk", pathOf("link.molk")));
    QVERIFY(MOLK::writeMOLKConfigToXml({core.get()}, pathOf("link.molk")));
    QVERIFY(QFileInfo(pathOf("link.molk")).isSymLink());
    QVERIFY(!QFileInfo(pathOf("a.molk")).isSymLink());
    QVERIFY(MOLK::checkMOLKFile(pathOf("a.molk")));
}

void TestMolkFileWrite::chainOfLinksIsFollowed()
{
    QVERIFY(QDir(directory->path()).mkdir("deep"));
    putOldFile();
    QVERIFY(QFile::link("../a.molk", pathOf("deep/second.molk")));
    QVERIFY(QFile::link("deep/second.molk", pathOf("first.molk")));
    QVERIFY(MOLK::writeMOLKConfigToXml({core.get()}, pathOf("first.molk")));
    QVERIFY(QFileInfo(pathOf("first.molk")).isSymLink());
    QVERIFY(QFileInfo(pathOf("deep/second.molk")).isSymLink());
    QVERIFY(MOLK::checkMOLKFile(pathOf("a.molk")));
}

void TestMolkFileWrite::danglingLinkMakesItsTarget()
{
    QVERIFY(QFile::link("a.molk", pathOf("link.molk")));
    QVERIFY(MOLK::writeMOLKConfigToXml({core.get()}, pathOf("link.molk")));
    QVERIFY(QFileInfo(pathOf("link.molk")).isSymLink());
    QVERIFY(MOLK::checkMOLKFile(pathOf("a.molk")));
}

void TestMolkFileWrite::oddNamesAreWritten_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("blanks") << "  a b .molk";
    QTest::newRow("quotes") << "a\"b'c.molk";
    QTest::newRow("line-end") << "a\nb.molk";
    QTest::newRow("leading-dash") << "-a.molk";
    QTest::newRow("place-marker") << "%1.molk";
    QTest::newRow("template-of-temporary-files") << "XXXXXX.molk";
    QTest::newRow("other-letters") << QString::fromUtf8("Z\xC3\xA4hler\xE4\xBF\xA1.molk");
}

void TestMolkFileWrite::oddNamesAreWritten()
{
    QFETCH(QString, name);
    QVERIFY(MOLK::writeMOLKConfigToXml({core.get()}, pathOf(name)));
    QCOMPARE(entries(), QStringList(name));
    QVERIFY(MOLK::checkMOLKFile(pathOf(name)));
}

void TestMolkFileWrite::unwritableNameIsRefused_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("missing-directory") << "no/a.molk";
    QTest::newRow("file-as-directory") << "a.molk/a.molk";
    QTest::newRow("directory") << ".";
    QTest::newRow("nul") << QString("a") + QChar('\0') + ".molk";
    QTest::newRow("too-long") << QString(300, QLatin1Char('n')) + ".molk";
}

void TestMolkFileWrite::unwritableNameIsRefused()
{
    QFETCH(QString, name);
    putOldFile();
    QVERIFY(!MOLK::writeMOLKConfigToXml({core.get()}, pathOf(name)));
    QVERIFY(!MOLK::writeMOLKConfigToXml({core.get()}, QString()));
    QCOMPARE(entries(), QStringList("a.molk"));
    QCOMPARE(bytesOf("a.molk"), QByteArray(oldBytes));
}

void TestMolkFileWrite::pipeIsLeftAPipe()
{
    const QByteArray path = QFile::encodeName(pathOf("pipe.molk"));
    QCOMPARE(::mkfifo(path.constData(), 0600), 0);
    QVERIFY(!MOLK::writeMOLKConfigToXml({core.get()}, pathOf("pipe.molk")));
    struct stat status = {};
    QCOMPARE(::stat(path.constData(), &status), 0);
    QVERIFY(S_ISFIFO(status.st_mode));
}

void TestMolkFileWrite::deviceIsLeftADevice()
{
    QVERIFY(QFile::link("/dev/full", pathOf("full.molk")));
    QVERIFY(!MOLK::writeMOLKConfigToXml({core.get()}, pathOf("full.molk")));
    QVERIFY(!MOLK::writeMOLKConfigToXml({core.get()}, "/dev/full"));
    struct stat status = {};
    QCOMPARE(::stat("/dev/full", &status), 0);
    QVERIFY(S_ISCHR(status.st_mode));
}

void TestMolkFileWrite::readOnlyDirectoryLeavesTheOldFile()
{
    putOldFile();
    QVERIFY(giveAway(pathOf("a.molk")));
    QVERIFY(giveAway(directory->path()));
    QVERIFY(QFile::setPermissions(directory->path(), QFileDevice::Permissions(0x5555)));
    QCOMPARE(writeInChild(dropPrivileges), 0);
    QCOMPARE(bytesOf("a.molk"), QByteArray(oldBytes));
    QCOMPARE(entries(), QStringList("a.molk"));
}

void TestMolkFileWrite::readOnlyFileLeavesTheOldFile()
{
    putOldFile();
    QVERIFY(giveAway(pathOf("a.molk")));
    QVERIFY(giveAway(directory->path()));
    QVERIFY(QFile::setPermissions(pathOf("a.molk"), QFileDevice::Permissions(0x4444)));
    QCOMPARE(writeInChild(dropPrivileges), 0);
    QCOMPARE(bytesOf("a.molk"), QByteArray(oldBytes));
    QCOMPARE(entries(), QStringList("a.molk"));
}

// The system ends the write in the middle as a full disk does, at a size of our choice.
void TestMolkFileWrite::fileSizeLimitLeavesTheOldFile()
{
    putOldFile();
    QList<SignalItem> items;
    for (int i = 0; i < 5000; ++i) {
        items.append(SignalItem());
        items.last().name = QString("top/u_core/net_%1").arg(i);
    }
    core->getProbeIn(0)->setSignalNet(items);
    for (rlim_t limit : {0, 1, 100, 16 * 1024, 100 * 1024}) {
        const int refused = writeInChild([limit] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit sizes{limit, limit};
            return ::setrlimit(RLIMIT_FSIZE, &sizes) == 0;
        });
        QCOMPARE(refused, 0);
        QCOMPARE(bytesOf("a.molk"), QByteArray(oldBytes));
        QCOMPARE(entries(), QStringList("a.molk"));
    }
}

void TestMolkFileWrite::modelThatCouldNotBeReadLeavesTheOldFile_data()
{
    QTest::addColumn<int>("levels");
    QTest::addColumn<int>("nameLength");

    QTest::newRow("seventeen-levels-of-members") << 17 << 1;
    QTest::newRow("many-levels-of-members") << 1000 << 1;
    QTest::newRow("name-above-the-limit") << 0 << 65537;
    QTest::newRow("long-name-of-a-bit") << 1 << 1024 * 1024;
}

void TestMolkFileWrite::modelThatCouldNotBeReadLeavesTheOldFile()
{
    QFETCH(int, levels);
    QFETCH(int, nameLength);
    putOldFile();
    SignalItem item;
    item.name = QString(nameLength, QLatin1Char('n'));
    for (int i = 0; i < levels; ++i) {
        SignalItem outer;
        outer.members.append(item);
        item = outer;
    }
    core->getProbeIn(0)->setSignalNet({item});
    QVERIFY(!MOLK::writeMOLKConfigToXml({core.get()}, pathOf("a.molk")));
    QCOMPARE(bytesOf("a.molk"), QByteArray(oldBytes));
    QCOMPARE(entries(), QStringList("a.molk"));
}

void TestMolkFileWrite::nextWriteWorksAfterAFailure()
{
    putOldFile();
    SignalItem item;
    item.name = QString(2 * 1024 * 1024, QLatin1Char('n'));
    core->getProbeIn(0)->setSignalNet({item});
    QVERIFY(!MOLK::writeMOLKConfigToXml({core.get()}, pathOf("a.molk")));
    core->getProbeIn(0)->setSignalNet({});
    QVERIFY(MOLK::writeMOLKConfigToXml({core.get()}, pathOf("a.molk")));
    QVERIFY(MOLK::checkMOLKFile(pathOf("a.molk")));
}

MOLK_TEST_GUILESS_MAIN(TestMolkFileWrite)
#include "tst_molkfile_write.moc"
