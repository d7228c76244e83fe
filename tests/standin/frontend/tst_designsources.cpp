// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designinfo.h"
#include "frontend/designsources.h"
#include "testmain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace DesignInfo = Standin::DesignInfo;

class tst_DesignSources : public QObject
{
    Q_OBJECT

private slots:
    void languageFollowsTypeAndSuffix_data();
    void languageFollowsTypeAndSuffix();
    void standardsAreRecognised_data();
    void standardsAreRecognised();
    void vhdlStandardsAreRecognised_data();
    void vhdlStandardsAreRecognised();
    void valuesBecomeLiterals_data();
    void valuesBecomeLiterals();
    void oddNamesAreNoMacros();
    void wrongTypesCountAsMissing();
    void unreadableFilesAreReported_data();
    void unreadableFilesAreReported();
    void emptyFileIsRead();
};

static Standin::DesignSources withFile(const QVariantMap &file)
{
    return Standin::designSources({{DesignInfo::Files, QVariantList{file}}});
}

void tst_DesignSources::languageFollowsTypeAndSuffix_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("language");

    QTest::newRow("verilog") << "/a.v" << 0 << int(Standin::SourceFile::Verilog);
    QTest::newRow("system-verilog") << "/a.sv" << 0 << int(Standin::SourceFile::SystemVerilog);
    QTest::newRow("vhdl") << "/a.VHD" << 0 << int(Standin::SourceFile::Vhdl);
    QTest::newRow("vhdl-long") << "/a.vhdl" << 0 << int(Standin::SourceFile::Vhdl);
    QTest::newRow("json") << "/a.json" << 2 << int(Standin::SourceFile::YosysNetlist);
    QTest::newRow("unknown") << "/a.txt" << 0 << int(Standin::SourceFile::Verilog);
    QTest::newRow("type-wins") << "/a.v" << 3 << int(Standin::SourceFile::SystemVerilog);
    QTest::newRow("type-vhdl") << "/a.v" << 4 << int(Standin::SourceFile::Vhdl);
    QTest::newRow("type-verilog") << "/a.sv" << 2 << int(Standin::SourceFile::Verilog);
}

void tst_DesignSources::languageFollowsTypeAndSuffix()
{
    QFETCH(QString, path);
    QFETCH(int, type);
    QVariantMap file{{DesignInfo::Path, path}};
    if (type != 0)
        file.insert(DesignInfo::Type, type);
    QTEST(int(withFile(file).files.first().language), "language");
}

void tst_DesignSources::standardsAreRecognised_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("standard");

    QTest::newRow("empty") << "" << QByteArray();
    QTest::newRow("full") << "1364-2001" << QByteArray("1364-2001");
    QTest::newRow("year") << "2001" << QByteArray("1364-2001");
    QTest::newRow("short") << "95" << QByteArray("1364-1995");
    QTest::newRow("words") << "Verilog 2001" << QByteArray("1364-2001");
    QTest::newRow("system") << "SystemVerilog-2012" << QByteArray("1800-2012");
    QTest::newRow("2005") << "2005" << QByteArray("1364-2005");
    QTest::newRow("2005-system") << "SystemVerilog 2005" << QByteArray("1800-2005");
    QTest::newRow("1800-2005") << "1800-2005" << QByteArray("1800-2005");
    QTest::newRow("sv05") << "sv05" << QByteArray("1800-2005");
    QTest::newRow("newest") << "1800-2017" << QByteArray("1800-2017");
    QTest::newRow("too-new") << "1800-2023" << QByteArray();
    QTest::newRow("nonsense") << "\"; exec" << QByteArray();
    QTest::newRow("three-digits") << "195" << QByteArray();
}

void tst_DesignSources::standardsAreRecognised()
{
    QFETCH(QString, text);
    QTEST(Standin::verilogStandard(text), "standard");
}

void tst_DesignSources::vhdlStandardsAreRecognised_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("standard");

    QTest::newRow("empty") << "" << QByteArray("08");
    QTest::newRow("87") << "87" << QByteArray("87");
    QTest::newRow("1993") << "1993" << QByteArray("93");
    QTest::newRow("2002") << "vhdl-2002" << QByteArray("02");
    QTest::newRow("2000") << "2000" << QByteArray("02");
    QTest::newRow("2008") << "VHDL 2008" << QByteArray("08");
    QTest::newRow("nonsense") << "--run" << QByteArray("08");
}

void tst_DesignSources::vhdlStandardsAreRecognised()
{
    QFETCH(QString, text);
    QTEST(Standin::vhdlStandard(text), "standard");
}

void tst_DesignSources::valuesBecomeLiterals_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("literal");

    QTest::newRow("number") << QVariant(12) << "12";
    QTest::newRow("true") << QVariant(true) << "1";
    QTest::newRow("false") << QVariant(false) << "0";
    QTest::newRow("real") << QVariant(1.5) << "1.5";
    QTest::newRow("text-number") << QVariant("-7") << "-7";
    QTest::newRow("based") << QVariant("8'hFf_x") << "8'hFf_x";
    QTest::newRow("string") << QVariant("fast") << "\"fast\"";
    QTest::newRow("quote") << QVariant("a\"b\\c") << "\"a\\\"b\\\\c\"";
    QTest::newRow("newline") << QVariant("a\nb") << "\"a b\"";
    QTest::newRow("empty") << QVariant("") << "\"\"";
}

void tst_DesignSources::valuesBecomeLiterals()
{
    QFETCH(QVariant, value);
    const Standin::DesignSources sources =
        Standin::designSources({{DesignInfo::Parameters, QVariantMap{{"P", value}}}});
    QTEST(sources.parameters.first().value, "literal");
}

void tst_DesignSources::oddNamesAreNoMacros()
{
    const QVariantMap names{{"GOOD_1", ""}, {"with blank", ""}, {"-x", ""},   {"a=b", ""},
                            {"", ""},       {"1x", ""},         {"a\nb", ""}, {"$x", ""}};
    const Standin::DesignSources sources = Standin::designSources({{DesignInfo::Defines, names}});
    QCOMPARE(sources.defines.size(), 1);
    QCOMPARE(sources.defines.first().name, QString("GOOD_1"));
}

void tst_DesignSources::wrongTypesCountAsMissing()
{
    const Standin::DesignSources sources =
        Standin::designSources({{DesignInfo::Top, QVariantList()},
                                {DesignInfo::Files, QVariantList{42}},
                                {DesignInfo::IncludePath, 3.5},
                                {DesignInfo::Defines, "x"}});
    QCOMPARE(sources.top, QString());
    QCOMPARE(sources.files.size(), 1);
    QCOMPARE(sources.files.first().path, QString());
    QVERIFY(sources.defines.isEmpty());
    QVERIFY(Standin::designSources({}).files.isEmpty());
}

void tst_DesignSources::unreadableFilesAreReported_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("message");

    QTest::newRow("missing") << "nosuch.v"
                             << "ERROR: %1: No such file or directory";
    QTest::newRow("directory") << "directory"
                               << "ERROR: %1: not a regular file";
    QTest::newRow("pipe") << "pipe"
                          << "ERROR: %1: not a regular file";
    QTest::newRow("too-long") << "long.v"
                              << "ERROR: %1: the file is longer than 1 MB";
    QTest::newRow("no-path") << ""
                             << "ERROR: source file: the entry has no path";
}

void tst_DesignSources::unreadableFilesAreReported()
{
    QFETCH(QString, name);
    QFETCH(QString, message);
    const QTemporaryDir directory;
    QDir(directory.path()).mkdir("directory");
    QCOMPARE(::mkfifo(QFile::encodeName(directory.filePath("pipe")).constData(), 0600), 0);
    QFile file(directory.filePath("long.v"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize((1 << 20) + 1));

    const QString path = name.isEmpty() ? QString() : directory.filePath(name);
    Standin::DesignSources sources = withFile({{DesignInfo::Path, path}});
    QStringList log;
    QVERIFY(!Standin::loadTexts(&sources, 1 << 20, &log));
    QCOMPARE(log, QStringList(message.contains("%1") ? message.arg(path) : message));
}

void tst_DesignSources::emptyFileIsRead()
{
    const QTemporaryDir directory;
    QFile file(directory.filePath("a.v"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    Standin::DesignSources sources = withFile({{DesignInfo::Path, file.fileName()}});
    QStringList log;
    QVERIFY(Standin::loadTexts(&sources, 1 << 20, &log));
    QCOMPARE(log, QStringList());
}

MOLK_TEST_GUILESS_MAIN(tst_DesignSources)
#include "tst_designsources.moc"
