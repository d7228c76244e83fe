// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testmain.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QRegularExpression>
#include <QSet>

static const char root[] = MOLK_ROOT;

/// What the documents refer to and quote is there.
class DocumentsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyLinkLeadsSomewhere();
    void decisionsAreNumberedInOrder();
    void everyPictureIsMadeByTheSession();
    void everyPictureIsShownAndSmall();
    void everyQuotedMessageIsInTheCode();
    void everyMessageOfTheEditorIsExplained();

private:
    QStringList documents;
};

static QString read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("can't read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

static QStringList captures(const QString &text, const QString &pattern)
{
    QStringList found;
    QRegularExpression expression(pattern, QRegularExpression::MultilineOption);
    for (auto it = expression.globalMatch(text); it.hasNext();)
        found.append(it.next().captured(1));
    return found;
}

void DocumentsTest::initTestCase()
{
    const QDir directory{QLatin1String(root)};
    for (const char *name : {"README.md", "CONTRIBUTING.md", "examples/README.md"})
        documents.append(directory.filePath(QLatin1String(name)));
    for (QDirIterator it(directory.filePath("docs"), {"*.md"}, QDir::Files,
                         QDirIterator::Subdirectories);
         it.hasNext();)
        documents.append(it.next());
    QVERIFY(documents.size() > 8);
}

// Headings are found by the names that they get when a document is shown.
static QStringList anchorsOf(const QString &text)
{
    QStringList anchors;
    const QStringList headings = captures(text, "^#+ +(.+)$");
    for (QString heading : headings) {
        heading = heading.toLower();
        heading.remove(QRegularExpression("[^a-z0-9 -]"));
        anchors.append(heading.replace(' ', '-'));
    }
    return anchors;
}

void DocumentsTest::everyLinkLeadsSomewhere()
{
    int checked = 0;
    for (const QString &document : qAsConst(documents)) {
        const QStringList links = captures(read(document), "\\]\\(([^) ]+)\\)");
        for (const QString &link : links) {
            if (link.contains("://"))
                continue;
            const QString path = link.section('#', 0, 0);
            const QString target =
                path.isEmpty() ? document : QFileInfo(document).dir().filePath(path);
            const QString what = document + ": " + link;
            QVERIFY2(QFileInfo::exists(target), qPrintable(what));
            const QString anchor = link.section('#', 1);
            if (!anchor.isEmpty())
                QVERIFY2(anchorsOf(read(target)).contains(anchor), qPrintable(what));
            ++checked;
        }
    }
    QVERIFY(checked > 20);
}

void DocumentsTest::decisionsAreNumberedInOrder()
{
    const QStringList names = QDir(QLatin1String(root) + "/docs/decisions").entryList(QDir::Files);
    QVERIFY(!names.isEmpty());
    for (int i = 0; i < names.size(); ++i)
        QCOMPARE(names.at(i).left(5), QString("%1-").arg(i + 1, 4, 10, QLatin1Char('0')));
}

void DocumentsTest::everyPictureIsMadeByTheSession()
{
    const QDir made(QStringLiteral(MOLK_SESSION_DIR));
    const auto pictures = QDir(QLatin1String(root) + "/docs/images").entryInfoList(QDir::Files);
    QVERIFY(!pictures.isEmpty());
    for (const QFileInfo &picture : pictures) {
        QVERIFY2(made.exists(picture.fileName()), qPrintable(picture.fileName()));
        QVERIFY2(!QImage(made.filePath(picture.fileName())).isNull(),
                 qPrintable(picture.fileName()));
    }
}

void DocumentsTest::everyPictureIsShownAndSmall()
{
    QSet<QString> shown;
    for (const QString &document : qAsConst(documents)) {
        const QStringList links = captures(read(document), "!\\[[^\\]]*\\]\\(([^)]+)\\)");
        for (const QString &link : links)
            shown.insert(QFileInfo(QFileInfo(document).dir().filePath(link)).canonicalFilePath());
    }
    const auto pictures = QDir(QLatin1String(root) + "/docs/images").entryInfoList(QDir::Files);
    for (const QFileInfo &picture : pictures) {
        QVERIFY2(shown.contains(picture.canonicalFilePath()), qPrintable(picture.fileName()));
        QVERIFY2(picture.size() < 64 * 1024, qPrintable(picture.fileName()));
    }
}

// The literals of the product's code, as one text each file, with the places of values as they are
// in the literals.
static QString productTexts()
{
    QString all;
    for (const char *folder : {"plugin", "model", "view", "netlist", "ports", "signals", "forms",
                               "standin", "workbench"}) {
        for (QDirIterator it(QLatin1String(root) + "/" + QLatin1String(folder),
                             {"*.cpp", "*.h", "*.ui"}, QDir::Files, QDirIterator::Subdirectories);
             it.hasNext();)
            all += read(it.next()) + "\n";
    }
    // Literals of several lines are one text.
    all.remove(QRegularExpression("\"\\s*\\n\\s*\""));
    all.replace("\\n", " ");
    return all.replace("\\\"", "\"");
}

// A piece of a message without what stands between it and a name.
static QString bare(QString piece)
{
    return piece.remove(QRegularExpression("^[ :]+|[ :.]+$"));
}

// The texts of the tables of messages, with a null character in place of each name.
static QStringList quotedMessages()
{
    const QString guide = read(QLatin1String(root) + "/docs/users-guide.md");
    QStringList messages = captures(guide, "^\\| \"(.+?)\" \\|");
    for (QString &message : messages)
        message.replace(QRegularExpression("\\*[a-z]+\\*"), QString(QChar(0)));
    return messages;
}

void DocumentsTest::everyQuotedMessageIsInTheCode()
{
    const QString texts = productTexts();
    const QStringList messages = quotedMessages();
    QVERIFY(messages.size() > 70);
    for (const QString &message : messages) {
        const QStringList pieces = message.split(QChar(0));
        for (const QString &piece : pieces) {
            const QString wanted = bare(piece);
            if (wanted.size() > 2)
                QVERIFY2(texts.contains(wanted), qPrintable(wanted));
        }
    }
}

// Every sentence that the plug-in shows in a window stands in the guide; titles don't.
void DocumentsTest::everyMessageOfTheEditorIsExplained()
{
    QString guide = quotedMessages().join('\n');
    int checked = 0;
    for (const char *name :
         {"view/molkview.cpp", "view/molkviewprivate.cpp", "view/molkview_cores.cpp",
          "view/molkview_reload.cpp", "view/reloadbanner.cpp", "view/validation.cpp",
          "netlist/designrefusal.cpp", "netlist/molkview_netlist.cpp",
          "netlist/molkview_events.cpp", "ports/probeportsoptionwidget_ports.cpp",
          "ports/initialvalueline.cpp", "signals/probedialog.cpp", "plugin/newfiledialog.cpp"}) {
        QString text = read(QLatin1String(root) + "/" + QLatin1String(name));
        text.remove(QRegularExpression("\"\\s*\\n\\s*\""));
        // What is written to the log for developers is no message.
        text.remove(QRegularExpression("^.*qDebug.*$", QRegularExpression::MultilineOption));
        const QStringList literals = captures(text, "\"((?:[^\"\\\\\\n]|\\\\.)*)\"");
        for (QString literal : literals) {
            literal.replace("\\n", " ").replace("\\\"", "\"");
            const bool isSentence = literal.trimmed().count(' ') >= 3 || literal.endsWith('.');
            const bool isStyle = literal.contains('{');
            if (!isSentence || isStyle)
                continue;
            const QStringList pieces = literal.split(QRegularExpression("%[0-9]"));
            for (const QString &piece : pieces) {
                const QString wanted = bare(piece);
                if (wanted.size() > 2)
                    QVERIFY2(guide.contains(wanted),
                             qPrintable(QLatin1String(name) + ": " + wanted));
            }
            ++checked;
        }
    }
    QVERIFY(checked >= 25);
}

MOLK_TEST_GUILESS_MAIN(DocumentsTest)
#include "tst_documents.moc"
