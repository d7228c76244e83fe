// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkcore.h"
#include "molkfile.h"
#include "testmain.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

using MOLK::MolkCore;
using MOLK::SignalItem;

/// The published schema and the reader agree on what a configuration file is.
class TestMolkSchema : public QObject
{
    Q_OBJECT

private slots:
    void writtenFileIsValid_data();
    void writtenFileIsValid();
    void schemaAndReaderAgree_data();
    void schemaAndReaderAgree();

private:
    QTemporaryDir directory;
};

// What xmllint has to say, empty if the file follows the schema.
static QString schemaErrors(const QString &path)
{
    QProcess xmllint;
    xmllint.setProcessChannelMode(QProcess::MergedChannels);
    xmllint.start(
        "xmllint",
        {"--noout", "--nonet", "--huge", "--schema", MOLK_TESTS_DIR "/../docs/molk.xsd", path});
    if (!xmllint.waitForFinished())
        return "xmllint (package libxml2-utils) didn't run: " + xmllint.errorString();
    const QString output = QString::fromUtf8(xmllint.readAll());
    return xmllint.exitCode() == 0 ? QString() : output + "refused";
}

static SignalItem signal(const QString &name, int kind)
{
    SignalItem item;
    item.name = name;
    item.kind = kind;
    return item;
}

static SignalItem everything()
{
    SignalItem item = signal("a\x01 <b> & \"c\"\n", 7);
    item.alias = "";
    item.selectable = false;
    item.found = false;
    item.members = {signal("net", 0), signal("bit", 1), signal("none", -1)};
    item.members[1].members = {signal("deeper", 1)};
    return item;
}

void TestMolkSchema::writtenFileIsValid_data()
{
    QTest::addColumn<int>("cores");
    QTest::addColumn<int>("ports");
    QTest::addColumn<int>("items");

    QTest::newRow("no-cores") << 0 << 0 << 0;
    QTest::newRow("new-core") << 1 << 1 << 0;
    QTest::newRow("no-ports") << 1 << 0 << 0;
    QTest::newRow("everything") << 3 << 3 << 2;
    QTest::newRow("larger-than-the-editor-allows") << 20 << 70 << 10;
}

void TestMolkSchema::writtenFileIsValid()
{
    QFETCH(int, cores);
    QFETCH(int, ports);
    QFETCH(int, items);
    QList<SignalItem> list;
    for (int i = 0; i < items; ++i)
        list.append(everything());
    QList<MolkCore *> all;
    for (int i = 0; i < cores; ++i) {
        auto *const core = new MolkCore(cores - i);
        core->removeProbeIn(0);
        core->removeProbeOut(0);
        core->setModuleName("top");
        core->setUserClockName("top/clk");
        core->useUserClock = true;
        for (int j = 0; j < ports; ++j) {
            core->addProbeIn(-j);
            core->addProbeOut(j + 1);
            core->getProbeIn(j)->setSignalNet(list);
            core->getProbeOut(j)->setSignalNet(list);
            core->getProbeOut(j)->setValue("0xF");
        }
        all.append(core);
    }
    const QString path = directory.filePath("written.molk");
    QVERIFY(MOLK::writeMOLKConfigToXml(all, path));
    qDeleteAll(all);
    QCOMPARE(schemaErrors(path), QString());
}

void TestMolkSchema::schemaAndReaderAgree_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("valid");

    const auto row = [](const char *name, const QByteArray &body, bool valid) {
        QTest::newRow(name) << body << valid;
    };
    const QByteArray version = "<Version>1.0</Version>";
    row("skeleton", version, true);
    row("version-with-blanks", "<Version> 1.0\n</Version>", true);
    row("comment", version + "<!-- note --><core/>", true);
    row("ports-in-any-order", version + "<core><probeOut/><probeIn/></core>", true);
    row("defaults-spelt-out",
        version + "<core id='0' useUserClock='false'><probeOut value='0x0'/></core>", true);
    row("signal-of-kind-0", version + "<core><probeIn><signal name='' kind='0'/></probeIn></core>",
        true);
    row("lowest-number", version + "<core id='-2147483648'/>", true);
    row("no-version", "<core/>", false);
    row("version-last", "<core/>" + version, false);
    row("version-twice", version + version, false);
    row("other-version", "<Version>1.1</Version>", false);
    row("unknown-element", version + "<cores/>", false);
    row("unknown-attribute", version + "<core name='a'/>", false);
    row("signal-in-core", version + "<core><net name='a'/></core>", false);
    row("value-of-probe-in", version + "<core><probeIn value='0x1'/></core>", false);
    row("kind-of-net", version + "<core><probeIn><net name='a' kind='0'/></probeIn></core>", false);
    row("no-name", version + "<core><probeIn><net/></probeIn></core>", false);
    row("text", version + "text", false);
    row("number-above-range", version + "<core id='2147483648'/>", false);
    row("number-with-plus", version + "<core id='+1'/>", false);
    row("number-minus-zero", version + "<core id='-0'/>", false);
    row("number-with-leading-zero", version + "<core id='01'/>", false);
    row("flag-as-number", version + "<core useUserClock='1'/>", false);
    row("flag-with-blank", version + "<core useUserClock=' true'/>", false);
}

void TestMolkSchema::schemaAndReaderAgree()
{
    QFETCH(QByteArray, body);
    QFETCH(bool, valid);
    const QString path = directory.filePath("made.molk");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("<MOLK_CONFIG>" + body + "</MOLK_CONFIG>") > 0);
    file.close();

    QCOMPARE(MOLK::checkMOLKFile(path), valid);
    const QString errors = schemaErrors(path);
    QVERIFY2(errors.isEmpty() == valid, qPrintable(errors));
    QVERIFY2(valid || errors.contains("fails to validate"), qPrintable(errors));
}

MOLK_TEST_GUILESS_MAIN(TestMolkSchema)
#include "tst_molkschema.moc"
