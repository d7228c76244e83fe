// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "sourcetext.h"
#include "sourceview.h"
#include "testwidgetsmain.h"

#include <QFile>
#include <QTemporaryDir>

using Workbench::SourceText;
using Workbench::SourceView;

class SourceViewTest : public QObject
{
    Q_OBJECT

private slots:
    void aFileIsShownReadOnly();
    void aLineIsBroughtIntoView();
    void whatIsNoFileIsRefused();
    void aTooLongFileIsRefused();
    void bytesThatAreNoTextAreShownAsReplacements();
    void theStripGrowsWithTheNumberOfLines();

private:
    QString makeFile(const QByteArray &content);

    QTemporaryDir dir;
};

QString SourceViewTest::makeFile(const QByteArray &content)
{
    QFile file(dir.filePath("a.v"));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("can't write the test's file");
    return file.fileName();
}

static SourceText *textOf(SourceView &view)
{
    return view.findChild<SourceText *>();
}

void SourceViewTest::aFileIsShownReadOnly()
{
    SourceView view;
    QString error;
    const QString path = makeFile("module a;\nendmodule\n");
    QVERIFY2(view.open(path, &error), qPrintable(error));
    QCOMPARE(view.file(), path);
    QCOMPARE(view.windowTitle(), "a.v");
    QCOMPARE(textOf(view)->toPlainText(), "module a;\nendmodule\n");

    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QTest::keyClicks(textOf(view), "x");
    QTest::keyClick(textOf(view), Qt::Key_Delete);
    QCOMPARE(textOf(view)->toPlainText(), "module a;\nendmodule\n");
}

void SourceViewTest::aLineIsBroughtIntoView()
{
    SourceView view;
    QString error;
    view.resize(400, 200);
    QVERIFY(view.open(makeFile(QByteArray("line\n").repeated(1000)), &error));
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));

    view.showLine(700);
    QCOMPARE(view.currentLine(), 700);
    QVERIFY(textOf(view)->viewport()->rect().contains(textOf(view)->cursorRect().center()));
    view.showLine(5000);
    QCOMPARE(view.currentLine(), 700);
    view.showLine(0);
    QCOMPARE(view.currentLine(), 700);
}

void SourceViewTest::whatIsNoFileIsRefused()
{
    SourceView view;
    QString error;
    QVERIFY(!view.open(dir.filePath("missing.v"), &error));
    QCOMPARE(error, dir.filePath("missing.v") + " does not exist.");
    QVERIFY(!view.open(dir.path(), &error));
    QCOMPARE(error, dir.path() + " is no regular file.");
    QVERIFY(view.file().isEmpty());
}

void SourceViewTest::aTooLongFileIsRefused()
{
    SourceView view;
    QString error;
    const QString path = makeFile("");
    QVERIFY(QFile::resize(path, (qint64(64) << 20) + 1));
    QVERIFY(!view.open(path, &error));
    QCOMPARE(error, path + " is longer than 64 MiB.");
}

void SourceViewTest::bytesThatAreNoTextAreShownAsReplacements()
{
    SourceView view;
    QString error;
    QVERIFY(view.open(makeFile("a\xff"
                               "b"),
                      &error));
    QCOMPARE(textOf(view)->toPlainText(), QString("a") + QChar(0xfffd) + "b");
}

void SourceViewTest::theStripGrowsWithTheNumberOfLines()
{
    SourceView view;
    QString error;
    QVERIFY(view.open(makeFile("one\n"), &error));
    const int narrow = textOf(view)->numbersWidth();
    QVERIFY(view.open(makeFile(QByteArray("x\n").repeated(20000)), &error));
    QVERIFY(textOf(view)->numbersWidth() > narrow);
}

MOLK_TEST_MAIN(SourceViewTest)
#include "tst_sourceview.moc"
