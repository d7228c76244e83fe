// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "projectoptions.h"
#include "testmain.h"

#include "project/edamproject.h"

using namespace Workbench;

class ProjectOptionsTest : public QObject
{
    Q_OBJECT

private slots:
    void valuesComeFromTheProject();
    void aValueIsReadable_data();
    void aValueIsReadable();
    void onlyWhatIsOtherIsAChange_data();
    void onlyWhatIsOtherIsAChange();
};

void ProjectOptionsTest::valuesComeFromTheProject()
{
    const auto project = Standin::EdamProject::adHoc({}, "soc");
    QString error;
    QVERIFY(project->setOption("IncludePath", QStringList({"a", "b"}), &error));
    const QVariantMap values = optionValues(*project);
    QCOMPARE(
        values.keys(),
        QStringList({"Device", "IncludePath", "Synthesize_tool", "TopModule", "Verilog_Standard"}));
    QCOMPARE(values.value("TopModule"), QVariant("soc"));
    QCOMPARE(values.value("IncludePath"), QVariant(QStringList({"a", "b"})));
    QVERIFY(!values.value("Device").isValid());
}

void ProjectOptionsTest::aValueIsReadable_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << QVariant() << "not set";
    QTest::newRow("empty") << QVariant("") << "not set";
    QTest::newRow("text") << QVariant("soc") << "soc";
    QTest::newRow("list") << QVariant(QStringList({"a", "/b"})) << "a, /b";
    QTest::newRow("empty-list") << QVariant(QStringList()) << "not set";
}

void ProjectOptionsTest::aValueIsReadable()
{
    QFETCH(QVariant, value);
    QTEST(optionText(value), "text");
}

void ProjectOptionsTest::onlyWhatIsOtherIsAChange_data()
{
    QTest::addColumn<QVariant>("before");
    QTest::addColumn<QVariant>("after");
    QTest::addColumn<bool>("changes");
    QTest::newRow("set") << QVariant() << QVariant("x") << true;
    QTest::newRow("other") << QVariant("x") << QVariant("y") << true;
    QTest::newRow("unset") << QVariant("x") << QVariant("") << true;
    QTest::newRow("same") << QVariant("x") << QVariant("x") << false;
    QTest::newRow("still-unset") << QVariant() << QVariant("") << false;
    QTest::newRow("still-no-list") << QVariant() << QVariant(QStringList()) << false;
    QTest::newRow("other-order") << QVariant(QStringList({"a", "b"}))
                                 << QVariant(QStringList({"b", "a"})) << true;
}

void ProjectOptionsTest::onlyWhatIsOtherIsAChange()
{
    QFETCH(QVariant, before);
    QFETCH(QVariant, after);
    QFETCH(bool, changes);
    const QVariantMap found = optionChanges({{"x", before}}, {{"x", after}});
    QCOMPARE(found.contains("x"), changes);
    if (changes && optionText(after) == "not set")
        QVERIFY(!found.value("x").isValid());
}

MOLK_TEST_GUILESS_MAIN(ProjectOptionsTest)
#include "tst_projectoptions.moc"
