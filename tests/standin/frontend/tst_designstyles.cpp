// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "extractiontest.h"
#include "golden.h"
#include "netlistlines.h"
#include "testmain.h"

/// Designs that use much of what the languages offer at once: every level, net, range and flag is
/// as the reference has it.
class tst_DesignStyles : public QObject
{
    Q_OBJECT

private slots:
    void netlistIsWhole_data();
    void netlistIsWhole();
};

void tst_DesignStyles::netlistIsWhole_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("top");
    // Packages come behind what uses them.
    QTest::newRow("streams") << QStringList{"streams/top.sv", "streams/a_pkg.sv"} << "top";
    // One file includes all others, from several directories and under conditions.
    QTest::newRow("includes") << QStringList{"includes/all.v"} << "top";
}

void tst_DesignStyles::netlistIsWhole()
{
    QFETCH(QStringList, files);
    QFETCH(QString, top);
    ExtractionTest test;
    for (const QString &file : qAsConst(files))
        test.add(test.data("styles/" + file));
    test.info.insert(Standin::DesignInfo::Defines, QVariantMap{{"FROM_COMMAND_LINE", "9"}});
    const ModulesAnswer answer = test.modules();
    QCOMPARE(answer.errors().join('\n'), QString());
    QCOMPARE(answer.topModules, QStringList(top));
    const auto netlist = test.netlist();
    QCOMPARE(namesNotFound(*netlist), QStringList());
    compareWithReference(netlistLines(*netlist).join('\n').toUtf8() + '\n',
                         "styles-" + QLatin1String(QTest::currentDataTag()) + ".txt");
}

MOLK_TEST_GUILESS_MAIN(tst_DesignStyles)
#include "tst_designstyles.moc"
