// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/verilatorxml.h"
#include "netlistlines.h"

#include "fathom/rtlnetlist.h"
#include "testmain.h"

#include <QTemporaryFile>

#include <memory>

using namespace Standin;

class TestVerilatorXml : public QObject
{
    Q_OBJECT

private slots:
    void show();
};

void TestVerilatorXml::show()
{
    for (const QString &name : {QString("verilog2001.v"), QString("systemverilog.sv")}) {
        const auto n = elaboratedFile(name);
        for (const QString &line : netlistLines(*n))
            fprintf(stderr, "            \"%s\",\n", qPrintable(QString(line).replace("\\", "\\\\").replace("\"", "\\\"")));
        QCOMPARE(namesNotFound(*n), QStringList());
    }
}

MOLK_TEST_GUILESS_MAIN(TestVerilatorXml)

#include "tst_verilatorxml.moc"
