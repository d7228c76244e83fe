// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designrefusal.h"
#include "testmain.h"

using namespace MOLK;

class tst_DesignRefusal : public QObject
{
    Q_OBJECT

private slots:
    void errorIsALineThatBeginsWithTheWord_data();
    void errorIsALineThatBeginsWithTheWord();
    void modulesAreJudged_data();
    void modulesAreJudged();
    void netlistIsJudged_data();
    void netlistIsJudged();
};

void tst_DesignRefusal::errorIsALineThatBeginsWithTheWord_data()
{
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<bool>("error");
    QTest::newRow("no-log") << QStringList() << false;
    QTest::newRow("first-line") << QStringList({"ERROR: a.v:1", "INFO"}) << true;
    QTest::newRow("last-line") << QStringList({"INFO", "ERROR"}) << true;
    QTest::newRow("longer-word") << QStringList("ERRORS: 3") << true;
    QTest::newRow("further-on") << QStringList("0 ERROR") << false;
    QTest::newRow("behind-a-blank") << QStringList(" ERROR") << false;
    QTest::newRow("other-case") << QStringList({"Error: a.v:1", "error", "eRROR"}) << false;
    QTest::newRow("empty-lines") << QStringList({"", QString()}) << false;
}

void tst_DesignRefusal::errorIsALineThatBeginsWithTheWord()
{
    QFETCH(QStringList, messages);
    QTEST(reportsError(messages), "error");
}

void tst_DesignRefusal::modulesAreJudged_data()
{
    QTest::addColumn<QString>("top");
    QTest::addColumn<QStringList>("topModules");
    QTest::addColumn<QStringList>("modules");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");

    const QStringList none;
    const QStringList one = {"a"};
    const QStringList two = {"a", "b"};
    const QString errors = "Design files contain some errors";
    const QString noModule = "Get no module from design.";
    QTest::newRow("one-top") << "" << one << two << ""
                             << "";
    QTest::newRow("one-top-that-is-set") << "a" << one << two << ""
                                         << "";
    QTest::newRow("nothing") << "" << none << none << errors << noModule;
    QTest::newRow("no-module-below-a-candidate") << "" << one << none << errors << noModule;
    QTest::newRow("set-top-is-missing") << "c" << two << none << "Invalid Top Module"
                                        << "No module named \"c\", please reset top module.";
    QTest::newRow("two-tops") << "" << two << two << "Multiple Top Module"
                              << "Multiple top, please set top module.";
    QTest::newRow("no-top-among-modules") << "" << none << two << "Multiple Top Module"
                                          << "Multiple top, please set top module.";
    QTest::newRow("two-tops-though-one-is-set") << "a" << two << two << errors << noModule;
    QTest::newRow("no-top-though-one-is-set") << "a" << none << two << errors << noModule;
    QTest::newRow("place-marks-in-a-name") << "%1" << none << none << "Invalid Top Module"
                                           << "No module named \"%1\", please reset top module.";
}

void tst_DesignRefusal::modulesAreJudged()
{
    QFETCH(QString, top);
    QFETCH(QStringList, topModules);
    QFETCH(QStringList, modules);

    const DesignRefusal refusal = modulesRefusal(top, topModules, modules);

    QTEST(refusal.title, "title");
    QTEST(refusal.text, "text");
    QCOMPARE(refusal.isEmpty(), refusal.title.isEmpty());
}

void tst_DesignRefusal::netlistIsJudged_data()
{
    QTest::addColumn<QString>("top");
    QTest::addColumn<QString>("received");
    QTest::addColumn<bool>("usesJtag");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");

    const QString jtag = "OD_JTAG used in design conflicts with MOLK.";
    const QString other = "Get module \"top\" failed, just received default module \"Top\".";
    QTest::newRow("no-top-set") << ""
                                << "any" << false << ""
                                << "";
    QTest::newRow("top-received") << "top"
                                  << "top" << false << ""
                                  << "";
    QTest::newRow("other-case") << "top"
                                << "Top" << false << "Error" << other;
    QTest::newRow("jtag") << ""
                          << "any" << true << "Error" << jtag;
    QTest::newRow("jtag-in-the-top-that-is-set") << "top"
                                                 << "top" << true << "Error" << jtag;
    QTest::newRow("wrong-name-goes-first") << "top"
                                           << "Top" << true << "Error" << other;
    QTest::newRow("place-marks-in-names")
        << "%2"
        << "%1" << false << "Error"
        << "Get module \"%2\" failed, just received default module \"%1\".";
}

void tst_DesignRefusal::netlistIsJudged()
{
    QFETCH(QString, top);
    QFETCH(QString, received);
    QFETCH(bool, usesJtag);

    const DesignRefusal refusal = netlistRefusal(top, received, usesJtag);

    QTEST(refusal.title, "title");
    QTEST(refusal.text, "text");
    QCOMPARE(refusal.isEmpty(), refusal.title.isEmpty());
}

MOLK_TEST_GUILESS_MAIN(tst_DesignRefusal)
#include "tst_designrefusal.moc"
