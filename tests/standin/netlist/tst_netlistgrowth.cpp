// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/moduletable.h"
#include "netlist/verilatorxml.h"

#include "alikenames.h"
#include "blockcount.h"
#include "fathom/hierachy.h"
#include "fathom/rtlnet.h"
#include "fathom/rtlnetlist.h"
#include "testmain.h"

#include <QTemporaryDir>

#include <memory>

using namespace Standin;

/// What it takes to read a design, to build its hierarchy and to find its nets grows with the
/// design, counted in basic blocks of our own code.
class TestNetlistGrowth : public QObject
{
    Q_OBJECT

private slots:
    void costsGrowWithTheDesign_data();
    void costsGrowWithTheDesign();
};

static QByteArray variables(int count, bool areAlike = false)
{
    QByteArray text;
    for (int i = 0; i < count; ++i) {
        const QByteArray name = areAlike ? alikeName(i).toLatin1() : "net_" + QByteArray::number(i);
        text += "<var loc=\"a,1,1,1,1\" name=\"" + name
            + "\" dtype_id=\"1\" vartype=\"logic\" origName=\"" + name + "\"/>";
    }
    return text;
}

// Each net is assigned the one before it.
static QByteArray assignments(int count)
{
    QByteArray text;
    for (int i = 1; i < count; ++i) {
        text += "<contassign dtype_id=\"1\"><varref name=\"net_" + QByteArray::number(i - 1)
            + "\" dtype_id=\"1\"/><varref name=\"net_" + QByteArray::number(i)
            + "\" dtype_id=\"1\"/></contassign>";
    }
    return text;
}

static QByteArray instances(int count, bool ofOneModule)
{
    QByteArray text;
    for (int i = 0; i < count; ++i) {
        const QByteArray number = QByteArray::number(i);
        text += "<instance loc=\"a,1,1,1,1\" name=\"u_" + number + "\" defName=\"part_"
            + (ofOneModule ? QByteArray("0") : number) + "\" origName=\"u_" + number + "\"/>";
    }
    return text;
}

static QByteArray module(const QByteArray &name, const QByteArray &contents,
                         const QByteArray &attributes = QByteArray())
{
    return "<module loc=\"a,1,1,1,1\" name=\"" + name + "\" origName=\"" + name + "\" " + attributes
        + ">" + contents + "</module>";
}

static QByteArray designOfShape(const QString &shape, int size)
{
    QByteArray contents;
    if (shape == "nets" || shape == "alike")
        contents = variables(size, shape == "alike");
    if (shape == "assignments")
        contents = variables(size) + assignments(size);
    if (shape == "instances" || shape == "modules")
        contents = instances(size, shape == "instances");
    QByteArray modules = module("top", contents, "topModule=\"1\"");
    for (int i = 0; i < (shape == "modules" ? size : 1); ++i)
        modules += module("part_" + QByteArray::number(i), variables(3) + assignments(3));
    return "<?xml version=\"1.0\" ?>\n<verilator_xml><files><file id=\"a\" "
           "filename=\"a.v\"/></files>"
           "<netlist>"
        + modules
        + "<typetable><basicdtype id=\"1\" name=\"logic\"/></typetable></netlist></verilator_xml>";
}

static qint64 cost(const QString &file, int nets)
{
    const BlockCount counted;
    ModuleTable table;
    QString error;
    if (!readVerilatorXml(file, XmlReadOptions(), &table, &error))
        QTest::qFail(qPrintable(error), __FILE__, __LINE__);
    const std::unique_ptr<FATHOM::RtlNetlist> netlist(elaborate(std::move(table), &error));
    const QList<FATHOM::RtlNet *> all = netlist->top->singleNetsIncludeSub();
    if (all.size() != nets)
        QTest::qFail(qPrintable(QString::number(all.size())), __FILE__, __LINE__);
    for (const FATHOM::RtlNet *net : all) {
        if (netlist->findNet(net->fullPathName()) != net)
            QTest::qFail(qPrintable(net->fullPathName()), __FILE__, __LINE__);
    }
    return counted.blocks();
}

void TestNetlistGrowth::costsGrowWithTheDesign_data()
{
    QTest::addColumn<QString>("shape");
    QTest::addColumn<int>("netsOfOne");

    QTest::newRow("nets") << "nets" << 1;
    // A design that makes its names meet in a table of hashes.
    QTest::newRow("nets-alike-to-qHash") << "alike" << 1;
    QTest::newRow("assignments") << "assignments" << 1;
    QTest::newRow("instances-of-one-module") << "instances" << 3;
    QTest::newRow("modules") << "modules" << 3;
}

void TestNetlistGrowth::costsGrowWithTheDesign()
{
    QFETCH(QString, shape);
    QFETCH(int, netsOfOne);
    const QTemporaryDir directory;
    const auto costOf = [&](int size) {
        QFile file(directory.filePath(QString::number(size)));
        if (!file.open(QIODevice::WriteOnly))
            QTest::qFail("no temporary file", __FILE__, __LINE__);
        file.write(designOfShape(shape, size));
        file.close();
        return cost(file.fileName(), netsOfOne * size);
    };
    const qint64 small = costOf(1000);
    const qint64 large = costOf(10000);
    QVERIFY(small > 1000);
    QVERIFY2(large > 5 * small, "the cost isn't counted");
    QVERIFY2(large < 13 * small,
             qPrintable(QString("ten times the design costs %1 times as much").arg(large / small)));
}

MOLK_TEST_GUILESS_MAIN(TestNetlistGrowth)

#include "tst_netlistgrowth.moc"
