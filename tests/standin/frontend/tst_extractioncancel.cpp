// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "extractiontest.h"
#include "testwidgetsmain.h"

#include <QDirIterator>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include <functional>

/// The extraction stopped in each of its stages, in each way in which it can be stopped.
class tst_ExtractionCancel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void nothingIsLeft_data();
    void nothingIsLeft();
    void netlistIsStoppedToo_data();
    void netlistIsStoppedToo();
    void quittingStopsIt_data();
    void quittingStopsIt();
    void nothingIsLeftOfFaultyDesigns();

private:
    QTemporaryDir temporary; ///< Where the extraction makes its private directories.
};

void tst_ExtractionCancel::initTestCase()
{
    QVERIFY(temporary.isValid());
    qputenv("TMPDIR", QFile::encodeName(temporary.path()));
    QCOMPARE(QDir::tempPath(), temporary.path());
}

/// The process ids of our children that live.
static QStringList livingChildren()
{
    QStringList alive;
    QDirIterator tasks("/proc/self/task", QDir::Dirs | QDir::NoDotAndDotDot);
    while (tasks.hasNext()) {
        QFile file(tasks.next() + "/children");
        if (file.open(QIODevice::ReadOnly))
            alive += QString::fromLatin1(file.readAll()).split(' ', Qt::SkipEmptyParts);
    }
    return alive;
}

static QStringList filesBelow(const QString &directory)
{
    QStringList files;
    QDirIterator all(directory, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    while (all.hasNext())
        files.append(all.next());
    return files;
}

static QProgressDialog *dialogOfExtraction()
{
    const auto widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        if (widget->objectName() == "extractionDialog")
            return qobject_cast<QProgressDialog *>(widget);
    }
    return nullptr;
}

/// Acts once, as soon as the extraction is in a stage.
class AtStage : public QObject
{
public:
    AtStage(const QString &stageText, std::function<void(QProgressDialog *)> action)
        : stage(stageText)
        , act(std::move(action))
    {
        startTimer(0);
    }

    int acted = 0;

protected:
    void timerEvent(QTimerEvent *) override
    {
        QProgressDialog *dialog = dialogOfExtraction();
        if (acted > 0 || !dialog || !dialog->labelText().startsWith(stage))
            return;
        ++acted;
        act(dialog);
    }

private:
    QString stage;
    std::function<void(QProgressDialog *)> act;
};

enum class Stop { CancelButton, CloseWindow, Destroy };

static void stop(Stop way, QProgressDialog *dialog, ExtractionTest *test)
{
    switch (way) {
    case Stop::CancelButton:
        dialog->findChild<QPushButton *>()->click();
        break;
    case Stop::CloseWindow:
        dialog->show();
        dialog->close();
        break;
    case Stop::Destroy:
        test->extraction.reset();
        break;
    }
}

/// The stages of a design that goes through all of them.
static QStringList stagesOfModules()
{
    return {"Preprocessing the sources", "Compiling the VHDL sources",
            "Synthesizing the VHDL sources", "Elaborating the design",
            "Reading the elaborated design"};
}

/// The stages of other designs: of one without a unique top, and of a netlist.
static const QString checking = "Checking the sources";
static const QString readingNetlist = "Reading the netlist";

static void addWays(const QStringList &stages)
{
    QTest::addColumn<QString>("stage");
    QTest::addColumn<int>("way");
    const QStringList ways{"cancel", "close", "destroy"};
    for (const QString &stage : stages) {
        for (int way = 0; way < ways.size(); ++way)
            QTest::newRow(qPrintable(QString(stage).replace(' ', '-') + '-' + ways.at(way)))
                << stage << way;
    }
}

static void addMixedDesign(ExtractionTest *test)
{
    test->addData({"mixed/pulse.vhd", "mixed/toggler.v", "mixed/board.v"});
}

/// So long that it can be stopped before its end.
static QByteArray longNetlist()
{
    QByteArray nets;
    for (int i = 0; i < 50000; ++i) {
        const QByteArray number = QByteArray::number(i);
        nets += (i > 0 ? ",\"n" : "\"n") + number + "\":{\"hide_name\":0,\"bits\":["
            + QByteArray::number(i + 2) + "],\"attributes\":{}}";
    }
    return "{\"creator\":\"Yosys\",\"modules\":{\"board\":{\"attributes\":{\"top\":\"1\"},"
           "\"ports\":{},\"cells\":{},\"netnames\":{"
        + nets + "}}}}";
}

static void addDesignWith(const QString &stage, ExtractionTest *test)
{
    if (stage == readingNetlist)
        test->add(test->write("a.json", longNetlist()));
    else if (stage == checking)
        test->add(test->write("a.v", "module a(input x); endmodule module b(input y); endmodule"));
    else
        addMixedDesign(test);
}

static QString netOf(const QString &stage)
{
    return QLatin1String(stage == readingNetlist ? "board/n49999" : "board/counter/value[7:0]");
}

void tst_ExtractionCancel::nothingIsLeft_data()
{
    addWays(stagesOfModules() + QStringList{checking, readingNetlist});
}

void tst_ExtractionCancel::nothingIsLeft()
{
    QFETCH(QString, stage);
    QFETCH(int, way);
    ExtractionTest test;
    addDesignWith(stage, &test);
    AtStage atStage(stage, [&](QProgressDialog *dialog) { stop(Stop(way), dialog, &test); });
    const ModulesAnswer answer = test.modules();
    QCOMPARE(atStage.acted, 1);
    QCOMPARE(answer.messages.value(answer.messages.size() - 1), QString("ERROR: cancelled"));
    QCOMPARE(answer.errors().size(), 1);
    QCOMPARE(livingChildren(), QStringList());
    QCOMPARE(filesBelow(temporary.path()).filter("molk-extraction"), QStringList());
    QCOMPARE(filesBelow(test.path("cache")), QStringList());
    QVERIFY(!dialogOfExtraction());

    // The next one is whole.
    test.restart();
    const ModulesAnswer next = test.modules();
    QCOMPARE(next.errors(), QStringList());
    if (stage == checking)
        QCOMPARE(next.topModules, QStringList({"a", "b"}));
    else
        QVERIFY(netLines(*test.netlist()).contains(netOf(stage)));
}

void tst_ExtractionCancel::netlistIsStoppedToo_data()
{
    addWays({"Building the netlist"});
}

void tst_ExtractionCancel::netlistIsStoppedToo()
{
    QFETCH(QString, stage);
    QFETCH(int, way);
    ExtractionTest test;
    addMixedDesign(&test);
    QCOMPARE(test.modules().errors(), QStringList());
    AtStage atStage(stage, [&](QProgressDialog *dialog) { stop(Stop(way), dialog, &test); });
    QStringList log;
    const auto netlist = test.netlist(&log);
    QCOMPARE(atStage.acted, 1);
    QCOMPARE(log.last(), QString("ERROR: cancelled"));
    QCOMPARE(netLines(*netlist), QStringList());
    QVERIFY(!dialogOfExtraction());
    QCOMPARE(livingChildren(), QStringList());

    // What was read before is whole, and can be built after all.
    test.restart();
    QCOMPARE(filesBelow(temporary.path()).filter("molk-extraction"), QStringList());
    QCOMPARE(test.modules().errors(), QStringList());
    QVERIFY(netLines(*test.netlist()).contains("board/counter/value[7:0]"));
}

void tst_ExtractionCancel::quittingStopsIt_data()
{
    QTest::addColumn<QString>("stage");
    for (const QString &stage : stagesOfModules())
        QTest::newRow(qPrintable(QString(stage).replace(' ', '-'))) << stage;
}

/// The event loops end when the application quits, whatever runs in them. Nothing is waited for but
/// what reads without a tool, which comes to its end.
void tst_ExtractionCancel::quittingStopsIt()
{
    QFETCH(QString, stage);
    const bool runsTool = stage != stagesOfModules().last();
    ExtractionTest test;
    addMixedDesign(&test);
    AtStage atStage(stage, [](QProgressDialog *) { qApp->quit(); });
    ModulesAnswer answer;
    QTimer::singleShot(0, this, [&] { answer = test.modules(); });
    QCoreApplication::exec();
    QCOMPARE(atStage.acted, 1);
    QCOMPARE(answer.errors(), runsTool ? QStringList("ERROR: cancelled") : QStringList());
    QCOMPARE(livingChildren(), QStringList());
    QCOMPARE(filesBelow(temporary.path()).filter("molk-extraction"), QStringList());
    QCOMPARE(filesBelow(test.path("cache")).isEmpty(), runsTool);
}

/// A faulty design is read again and again, and stopping it stops all of that.
void tst_ExtractionCancel::nothingIsLeftOfFaultyDesigns()
{
    for (int runs = 2; runs < 8; ++runs) {
        ExtractionTest test;
        test.add(test.write("a.v",
                            "module top(input x); always @(posedge x begin end\n"
                            "wire = ; leaf u(.nosuch(x)); assign y = nosuch; endmodule\n"
                            "module leaf(input a); nosuch_t t; endmodule\n"));
        QTimer poll;
        connect(&poll, &QTimer::timeout, this, [&] {
            if (test.extraction && test.extraction->toolRuns() >= runs)
                test.extraction.reset();
        });
        poll.start(0);
        const ModulesAnswer answer = test.modules();
        QVERIFY(!test.extraction);
        QCOMPARE(answer.messages.value(answer.messages.size() - 1), QString("ERROR: cancelled"));
        QCOMPARE(livingChildren(), QStringList());
        QCOMPARE(filesBelow(temporary.path()).filter("molk-extraction"), QStringList());
        QCOMPARE(filesBelow(test.path("cache")), QStringList());
    }
}

MOLK_TEST_MAIN(tst_ExtractionCancel)
#include "tst_extractioncancel.moc"
