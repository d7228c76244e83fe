// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "childprocess.h"
#include "cost.h"
#include "growingfile.h"
#include "modaldriver.h"
#include "molkcore.h"
#include "molkfile.h"
#include "reloadbanner.h"
#include "shownview.h"
#include "testwidgetsmain.h"

#include <QDir>
#include <QFile>
#include <QPushButton>

#include <sys/stat.h>

using namespace MOLK;

/// Files that were made to hang, fill or crash the editor are refused by a view, when it is opened
/// on them and when they come in the place of its file, with a message, in little memory and
/// with no more read than it takes to see what they are.
class TestHostileFiles : public QObject
{
    Q_OBJECT

private slots:
    void hostileFileIsRefused_data();
    void hostileFileIsRefused();
    void fileThatGrowsIsOpenedOrRefused();
};

#ifdef __SANITIZE_ADDRESS__
static const int factor = 8;
#else
static const int factor = 1;
#endif
// Whoever reads a piece that is too long has given up by then, and another reader has tried, too.
static const int maximumReadBytes = 8 * 1024 * 1024;
// The widgets of a view take a third of it.
static const int maximumKibibytes = 32 * 1024 * factor;

using Make = std::function<bool(const QString &path)>;
Q_DECLARE_METATYPE(Make)

static Make text(const QByteArray &bytes)
{
    return [bytes](const QString &path) {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    };
}

static Make repeated(const QByteArray &start, const QByteArray &piece, int times)
{
    return [=](const QString &path) {
        QFile file(path);
        bool ok = file.open(QIODevice::WriteOnly) && file.write(start) == start.size();
        for (int i = 0; i < times && ok; ++i)
            ok = file.write(piece) == piece.size();
        return ok;
    };
}

static Make linkTo(const QString &target)
{
    return [target](const QString &path) {
        return QFile::link(target, path);
    };
}

static bool makePipe(const QString &path)
{
    return ::mkfifo(QFile::encodeName(path).constData(), 0600) == 0;
}

static bool makeDirectory(const QString &path)
{
    return QDir().mkdir(path);
}

static bool makeSparse(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write("<MOLK_CONFIG>") > 0
        && file.resize(Q_INT64_C(2) * 1024 * 1024 * 1024);
}

static QByteArray document(const QByteArray &cores)
{
    return "<MOLK_CONFIG><Version>1.0</Version>" + cores + "</MOLK_CONFIG>";
}

static QByteArray signal(const QByteArray &attributes)
{
    return document("<core><probeIn><net " + attributes + "/></probeIn></core>");
}

static QByteArray utf16(const QString &content)
{
    return QByteArray("\xFF\xFE")
        + QByteArray(reinterpret_cast<const char *>(content.utf16()), content.size() * 2);
}

void TestHostileFiles::hostileFileIsRefused_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<QString>("cause");
    const auto row = [](const char *name, const Make &make, const QString &cause) {
        QTest::newRow(name) << make << cause;
    };
    const QByteArray head = "<MOLK_CONFIG><Version>1.0</Version>";
    const QString types = "document types aren't accepted.";
    const QString range = "is no whole number from -2147483648 to 2147483647.";
    const QString notText = "bytes that aren't text in UTF-8.";
    const QString irregular = "this is no regular file.";

    row("entity-bomb",
        text("<!DOCTYPE m [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;'>]>" + document("&b;")),
        types);
    row("external-entity",
        text("<!DOCTYPE m [<!ENTITY x SYSTEM 'file:///etc/passwd'>]>" + document("&x;")), types);
    row("external-type", text("<!DOCTYPE m SYSTEM 'http://localhost/m.dtd'>" + document("")),
        types);
    row("undeclared-entity", text(document("&x;")), "Entity 'x' not declared.");
    row("levels-of-members", repeated(head + "<core><probeIn>", "<bus name='b'>", 200000),
        "members are nested more than 16 deep.");
    row("levels-of-cores", repeated(head, "<core>", 200000),
        "unknown element \"core\" in \"core\".");
    row("attribute-of-100-megabytes",
        repeated(head + "<core><probeIn><net name='", QByteArray(1024 * 1024, 'a'), 100),
        "a tag, comment or text of more than 1048576 bytes.");
    row("number-above-the-range", text(document("<core id='2147483648'/>")), range);
    row("number-below-the-range", text(document("<core id='-2147483649'/>")), range);
    row("number-of-many-digits", text(document("<core id='" + QByteArray(1000, '9') + "'/>")),
        range);
    row("unknown-version", text("<MOLK_CONFIG><Version>2.0</Version></MOLK_CONFIG>"),
        "the file has version \"2.0\", this editor reads version \"1.0\".");
    row("invalid-utf-8", text(signal("name='\xC3('")), notText);
    row("surrogate-in-utf-8", text(signal("name='\xED\xA0\x80'")), notText);
    row("utf-16", text(utf16("<MOLK_CONFIG><Version>1.0</Version></MOLK_CONFIG>")), notText);
    row("declared-utf-16", text("<?xml version='1.0' encoding='UTF-16'?>" + document("")),
        QString());
    row("nul-in-a-name", text(signal(QByteArray("name='a\0b'", 10))),
        "a NUL byte, which isn't text.");
    row("nul-character-in-a-name", text(signal("name='a&#0;b'")), "Invalid character reference.");
    row("control-character-in-a-name", text(signal("name='a\x01z'")), QString());
    row("pipe", makePipe, irregular);
    row("device", linkTo("/dev/zero"), irregular);
    row("terminal", linkTo("/dev/tty"), irregular);
    row("directory", makeDirectory, irregular);
    row("made-up-file", linkTo("/proc/self/maps"), "the file is empty.");
    row("made-up-memory", linkTo("/proc/self/mem"), "the file is empty.");
    row("two-gibibytes", makeSparse, "the file is larger than the limit of 256 MiB.");
}

// Runs \a work, which says what is wrong, and adds what it cost beyond the bounds.
static QString measured(const QString &what, qint64 maximumRead,
                        const std::function<QString()> &work)
{
    QString fault;
    const Cost cost = costOf([&] { fault = work(); });
    std::fprintf(stderr, "%s: %lld bytes read, %lld KiB\n", qPrintable(what),
                 static_cast<long long>(cost.readBytes),
                 static_cast<long long>(cost.peakKibibytes));
    if (fault.isEmpty() && cost.readBytes > maximumRead)
        fault = QString("%1 reads %2 bytes").arg(what).arg(cost.readBytes);
    if (fault.isEmpty() && cost.peakKibibytes > maximumKibibytes)
        fault = QString("%1 takes %2 KiB").arg(what).arg(cost.peakKibibytes);
    return fault;
}

static QString checkReader(const QString &path, const QString &cause)
{
    QString message;
    const QList<MolkCore *> cores = readMOLKConfigFromXml(path, nullptr, &message);
    if (!cores.isEmpty() || message.isEmpty() || !message.endsWith(cause))
        return "the reader says: " + message;
    return QString();
}

static QString checkOpening(const QString &path)
{
    MolkView view;
    QString error;
    if (view.open(path, QString(), &error))
        return "the view opens";
    if (error != path + " open file failed.")
        return "the view says: " + error;
    return QString();
}

void TestHostileFiles::hostileFileIsRefused()
{
    QFETCH(Make, make);
    QFETCH(QString, cause);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    const auto work = [&]() -> QString {
        ViewBench bench;
        const QString hostile = bench.path("hostile.molk");
        if (!make(hostile))
            return "the file can't be made";
        QString fault =
            measured(name + " read", maximumReadBytes, [&] { return checkReader(hostile, cause); });
        if (fault.isEmpty())
            fault =
                measured(name + " opened", maximumReadBytes, [&] { return checkOpening(hostile); });
        if (!fault.isEmpty())
            return fault;

        ShownView shown(bench, bench.writeCores(1));
        QFile::remove(shown.view->file());
        if (std::rename(qPrintable(hostile), qPrintable(shown.view->file())) != 0)
            return "the file can't be put in the place of another";
        shown.view->checkForReload();
        ModalDriver driver;
        driver.expectNotice(QMessageBox::Warning, "Reload Molk", "Invalid MOLK file.");
        fault = measured(name + " reloaded", maximumReadBytes, [&] {
            press(shown.banner(), "btnA");
            return QString();
        });
        if (fault.isEmpty() && !QTest::qWaitFor([&] { return shown.page.isNull(); }))
            return "the view stays";
        return fault;
    };
    QCOMPARE(inChild(work), QString());
}

void TestHostileFiles::fileThatGrowsIsOpenedOrRefused()
{
    ViewBench bench;
    const QString path = bench.writeSkeleton();
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Append));
    QVERIFY(file.write(QByteArray("<!-- -->\n").repeated(200 * 1000)) > 0);
    file.close();

    const GrowingFile growing(path);
    QVERIFY(growing.isWatched());
    // It is read for the check and for its cores, each time as far as it goes at that moment.
    const qint64 largestRead = Q_INT64_C(1024) * 1024 * 1024;
    const QString end = inChild([&] {
        return measured("growing file", largestRead, [&] {
            MolkView view;
            QString error;
            const bool opened = view.open(path, QString(), &error);
            // What was appended may be met when it is read after the check.
            const bool isRefused =
                error == path + " open file failed." || error.startsWith("\"a.molk\": line ");
            return opened || isRefused ? QString() : "the view says: " + error;
        });
    });
    QCOMPARE(end, QString());
}

MOLK_TEST_MAIN(TestHostileFiles)
#include "tst_hostilefiles.moc"
