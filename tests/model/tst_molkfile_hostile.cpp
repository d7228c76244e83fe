// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "childprocess.h"
#include "cost.h"
#include "growingfile.h"
#include "molkcore.h"
#include "molkfile.h"
#include "testmain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <sys/stat.h>
#include <unistd.h>

/// Files that were made to hang, fill or crash the editor are refused with a clear message, without
/// much memory and without reading on behind the fault.
class TestMolkFileHostile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void noPlainFileIsRefusedUnread_data();
    void noPlainFileIsRefusedUnread();
    void pipeIsNotWaitedFor();
    void linkToAPipeIsNotWaitedFor();
    void unreadableFileIsRefused();
    void fileOfTwoGibibytesIsRefusedBySize();
    void fileJustAboveTheLimitIsRefusedBySize();
    void hugeDocumentIsNeitherReadToItsEndNorKept_data();
    void hugeDocumentIsNeitherReadToItsEndNorKept();
    void fileThatGrowsIsReadAsItWasWhenOpened();

private:
    QString pathOf(const QString &name) const { return directory.filePath(name); }

    QTemporaryDir directory;
};

static QString refusal(const QString &path)
{
    bool ok = false;
    QString message;
    const QList<MOLK::MolkCore *> cores = MOLK::readMOLKConfigFromXml(path, &ok, &message);
    if (ok || !cores.isEmpty() || MOLK::checkMOLKFile(path))
        QTest::qFail("the file was accepted", __FILE__, __LINE__);
    qDeleteAll(cores);
    return message;
}

static void writeFile(const QString &path, const std::function<bool(QFile *)> &fill)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(fill(&file));
}

void TestMolkFileHostile::initTestCase()
{
    QVERIFY(directory.isValid());
    QVERIFY(QDir().mkdir(pathOf("directory.molk")));
    QVERIFY(QFile::link(pathOf("nowhere"), pathOf("dangling.molk")));
    QVERIFY(QFile::link(pathOf("circle.molk"), pathOf("circle.molk")));
    writeFile(pathOf("empty.molk"), [](QFile *) { return true; });
}

void TestMolkFileHostile::noPlainFileIsRefusedUnread_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("message");

    const QString none = "there is no such file.";
    const QString irregular = "this is no regular file.";
    QTest::newRow("no-name") << ""
                             << "\"\": " + none;
    QTest::newRow("missing") << pathOf("missing.molk") << "\"missing.molk\": " + none;
    QTest::newRow("missing-directory") << pathOf("no/a.molk") << "\"a.molk\": " + none;
    QTest::newRow("name-with-nul")
        << pathOf(QString("a") + QChar('\0') + "b") << "\"a?b\": " + none;
    QTest::newRow("dangling-link") << pathOf("dangling.molk") << "\"dangling.molk\": " + none;
    QTest::newRow("circle-of-links") << pathOf("circle.molk") << "\"circle.molk\": " + none;
    QTest::newRow("directory") << pathOf("directory.molk") << "\"directory.molk\": " + irregular;
    QTest::newRow("file-as-directory") << pathOf("empty.molk/a.molk") << "\"a.molk\": " + none;
    QTest::newRow("empty") << pathOf("empty.molk") << "\"empty.molk\": the file is empty.";
    QTest::newRow("null-device") << "/dev/null"
                                 << "\"null\": " + irregular;
    QTest::newRow("endless-device") << "/dev/zero"
                                    << "\"zero\": " + irregular;
    QTest::newRow("made-up-file") << "/proc/self/status"
                                  << "\"status\": the file is empty.";
    QTest::newRow("made-up-memory") << "/proc/self/mem"
                                    << "\"mem\": the file is empty.";
}

void TestMolkFileHostile::noPlainFileIsRefusedUnread()
{
    QFETCH(QString, path);
    QFETCH(QString, message);
    QCOMPARE(refusal(path), message);
}

void TestMolkFileHostile::pipeIsNotWaitedFor()
{
    const QString pipe = pathOf("pipe.molk");
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QCOMPARE(refusal(pipe), QString("\"pipe.molk\": this is no regular file."));
}

void TestMolkFileHostile::linkToAPipeIsNotWaitedFor()
{
    const QString pipe = pathOf("target");
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QVERIFY(QFile::link(pipe, pathOf("link.molk")));
    QCOMPARE(refusal(pathOf("link.molk")), QString("\"link.molk\": this is no regular file."));
}

void TestMolkFileHostile::unreadableFileIsRefused()
{
    const QString path = pathOf("secret.molk");
    writeFile(path, [](QFile *file) { return file->write("x") == 1; });
    QVERIFY(QFile::setPermissions(path, QFileDevice::Permissions()));
    // The superuser reads everything: a child without privileges has to try it then.
    QVERIFY(QFile::setPermissions(directory.path(), QFileDevice::Permissions(0x7555)));
    const QString message = inChild([&path] {
        if (::geteuid() == 0 && ::setuid(65534) != 0)
            return QString("the privileges stay");
        QString reason;
        MOLK::readMOLKConfigFromXml(path, nullptr, &reason);
        return reason;
    });
    QCOMPARE(message, QString("\"secret.molk\": the file can't be opened: Permission denied."));
}

static bool makeSparse(const QString &path, qint64 size)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write("<MOLK_CONFIG>") > 0 && file.resize(size);
}

void TestMolkFileHostile::fileOfTwoGibibytesIsRefusedBySize()
{
    QVERIFY(makeSparse(pathOf("large.molk"), Q_INT64_C(2) * 1024 * 1024 * 1024));
    QCOMPARE(refusal(pathOf("large.molk")),
             QString("\"large.molk\": the file is larger than the limit of 256 MiB."));
}

void TestMolkFileHostile::fileJustAboveTheLimitIsRefusedBySize()
{
    QVERIFY(makeSparse(pathOf("above.molk"), 256 * 1024 * 1024 + 1));
    QCOMPARE(refusal(pathOf("above.molk")),
             QString("\"above.molk\": the file is larger than the limit of 256 MiB."));
}

void TestMolkFileHostile::hugeDocumentIsNeitherReadToItsEndNorKept_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QByteArray>("repeated");
    QTest::addColumn<int>("times");
    QTest::addColumn<QString>("cause");

    const QByteArray head = "<MOLK_CONFIG><Version>1.0</Version>";
    const QByteArray port = head + "<core><probeIn>";
    const int mebibyte = 1024 * 1024;
    const QString piece = "a tag, comment or text of more than 1048576 bytes.";
    const QString many = "an element with more than 64 attributes.";
    const QString nesting = "members are nested more than 16 deep.";

    QTest::newRow("attribute-of-100-megabytes")
        << port + "<net name='" << QByteArray(mebibyte, 'a') << 100 << piece;
    QTest::newRow("tag-name-of-100-megabytes")
        << head + "<" << QByteArray(mebibyte, 'a') << 100
        << "exceeds implementation limits (4KiB characters).";
    QTest::newRow("blanks-in-a-tag-of-100-megabytes")
        << head + "<core " << QByteArray(mebibyte, ' ') << 100 << piece;
    QTest::newRow("text-of-100-megabytes") << head << QByteArray(mebibyte, 'a') << 100 << piece;
    QTest::newRow("blanks-of-100-megabytes") << head << QByteArray(mebibyte, ' ') << 100 << piece;
    QTest::newRow("version-of-100-megabytes")
        << QByteArray("<MOLK_CONFIG><Version>") << QByteArray(mebibyte, '1') << 100 << piece;
    QTest::newRow("comment-of-100-megabytes")
        << head + "<!--" << QByteArray(mebibyte, '>') << 100 << piece;
    QTest::newRow("instruction-of-100-megabytes")
        << head + "<?x " << QByteArray(mebibyte, '>') << 100 << piece;
    QTest::newRow("character-data-of-100-megabytes")
        << head + "<![CDATA[" << QByteArray(mebibyte, ']') << 100 << piece;
    QTest::newRow("million-attributes")
        << head + "<core" << QByteArray(" a='1'") << mebibyte << many;
    QTest::newRow("200000-levels-of-members")
        << port << QByteArray("<bus name='b'>") << 200000 << nesting;
    QTest::newRow("200000-levels-of-cores")
        << head << QByteArray("<core>") << 200000 << "unknown element \"core\" in \"core\".";
    QTest::newRow("million-entities")
        << QByteArray("<!DOCTYPE m [") << QByteArray("<!ENTITY a '&b;&b;'>") << mebibyte
        << "document types aren't accepted.";
}

void TestMolkFileHostile::hugeDocumentIsNeitherReadToItsEndNorKept()
{
    QFETCH(QByteArray, start);
    QFETCH(QByteArray, repeated);
    QFETCH(int, times);
    QFETCH(QString, cause);
    const QString path = pathOf("huge.molk");
    writeFile(path, [&](QFile *file) {
        bool ok = file->write(start) == start.size();
        for (int i = 0; i < times; ++i)
            ok = ok && file->write(repeated) == repeated.size();
        return ok;
    });

    const QString fault = inChild([&]() -> QString {
        QString message;
        const Cost cost =
            costOf([&] { qDeleteAll(MOLK::readMOLKConfigFromXml(path, nullptr, &message)); });
        if (!message.endsWith(cause))
            return message;
        if (cost.readBytes > 8 * 1024 * 1024)
            return QString("%1 bytes are read").arg(cost.readBytes);
        if (cost.peakKibibytes > 64 * 1024)
            return QString("%1 KiB are taken").arg(cost.peakKibibytes);
        return QString();
    });
    QFile::remove(path);
    QCOMPARE(fault, QString());
}

void TestMolkFileHostile::fileThatGrowsIsReadAsItWasWhenOpened()
{
    const QString path = pathOf("growing.molk");
    writeFile(path, [](QFile *file) {
        // Long enough that the writer gets to work before the end is read.
        return file->write("<MOLK_CONFIG><Version>1.0</Version><core id='7'/></MOLK_CONFIG>") > 0
            && file->write(QByteArray("<!-- -->\n").repeated(200 * 1000)) > 0;
    });

    const GrowingFile growing(path);
    QVERIFY(growing.isWatched());
    bool ok = false;
    QString message;
    const QList<MOLK::MolkCore *> cores = MOLK::readMOLKConfigFromXml(path, &ok, &message);
    QCOMPARE(message, QString());
    QVERIFY(ok);
    QCOMPARE(cores.size(), 1);
    qDeleteAll(cores);
}

MOLK_TEST_GUILESS_MAIN(TestMolkFileHostile)
#include "tst_molkfile_hostile.moc"
