// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "logline.h"
#include "testmain.h"

using Workbench::LogLine;
using Workbench::parseLogLine;

class LogLineTest : public QObject
{
    Q_OBJECT

private slots:
    void linesAreTakenApart_data();
    void linesAreTakenApart();
};

void LogLineTest::linesAreTakenApart_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("severity");
    QTest::addColumn<QString>("said");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");

    QTest::newRow("full-place") << "ERROR: /a/b.v:12:7: syntax error" << int(LogLine::Error)
                                << "syntax error"
                                << "/a/b.v" << 12 << 7;
    QTest::newRow("no-column") << "WARNING: /a/b.v:12: odd" << int(LogLine::Warning) << "odd"
                               << "/a/b.v" << 12 << 0;
    QTest::newRow("no-place") << "ERROR: cancelled" << int(LogLine::Error) << "cancelled"
                              << "" << 0 << 0;
    QTest::newRow("blanks-in-name") << "ERROR: /a dir/b c.v:1:2: x" << int(LogLine::Error) << "x"
                                    << "/a dir/b c.v" << 1 << 2;
    QTest::newRow("colon-in-name") << "ERROR: /a:b.v:3:4: x" << int(LogLine::Error) << "x"
                                   << "/a:b.v" << 3 << 4;
    QTest::newRow("place-like-text-behind")
        << "ERROR: /a.v:3:4: see /b.v:5:6: y" << int(LogLine::Error) << "see /b.v:5:6: y"
        << "/a.v" << 3 << 4;
    QTest::newRow("information") << "INFO: read 3 files" << int(LogLine::Information)
                                 << "read 3 files"
                                 << "" << 0 << 0;
    QTest::newRow("plain") << "Molk workbench" << int(LogLine::Information) << "Molk workbench"
                           << "" << 0 << 0;
    QTest::newRow("number-too-long")
        << "ERROR: /a.v:12345678901: x" << int(LogLine::Error) << "/a.v:12345678901: x"
        << "" << 0 << 0;
    QTest::newRow("word-alone") << "ERROR" << int(LogLine::Error) << ""
                                << "" << 0 << 0;
    QTest::newRow("empty") << "" << int(LogLine::Information) << ""
                           << "" << 0 << 0;
}

void LogLineTest::linesAreTakenApart()
{
    QFETCH(QString, text);
    const LogLine line = parseLogLine(text);
    QTEST(int(line.severity), "severity");
    QTEST(line.text, "said");
    QTEST(line.file, "file");
    QTEST(line.line, "line");
    QTEST(line.column, "column");
}

MOLK_TEST_GUILESS_MAIN(LogLineTest)
#include "tst_logline.moc"
