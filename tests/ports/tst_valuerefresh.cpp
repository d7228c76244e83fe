// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "pagefixture.h"
#include "testwidgetsmain.h"
#include "treelines.h"
#include "turnloop.h"
#include "valueconversion.h"

#include <QLabel>
#include <QPointer>
#include <QRandomGenerator>
#include <QSignalSpy>

using namespace MOLK;

class tst_ValueRefresh : public QObject
{
    Q_OBJECT

private slots:
    void loadTakesTheLowBits_data();
    void loadTakesTheLowBits();
    void changedPortKeepsItsBitsFromTheLeft_data();
    void changedPortKeepsItsBitsFromTheLeft();
    void grownDigitsComeBackAsBlanks();
    void losingTheFocusTakesTheBlanksToo();
    void refreshOfAnotherPortTakesTheBlanksToo();
    void newPortIsDisabledUntilItHasASignal();
    void losingAllSignalsClearsTheValue();
    void labelsAreReplacedAndInOrder();
    void oldLabelsGoWhenTheLoopTurns();
    void expansionStays();
    void nothingIsEmitted();
    void focusedLineThatIsDisabledCommitsFirst();
    void pageMayGoUnderTheMessageOfALineThatIsDisabled();
    void randomEditsAgreeWithTheStepByStepReading();
};

static void refresh(PageFixture &fixture)
{
    runInLoop([&] { fixture.page->refreshProbeOutSignals(); });
}

static void setWidths(PageFixture &fixture, int port, const QList<int> &widths)
{
    fixture.core->getProbeOut(port)->setSignalNet(signalsOfWidths(widths));
    refresh(fixture);
}

void tst_ValueRefresh::loadTakesTheLowBits_data()
{
    QTest::addColumn<QList<int>>("widths");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("bits");

    QTest::newRow("fits") << QList<int>{8} << "0xA5"
                          << "0xA5"
                          << "10100101";
    QTest::newRow("over-several-signals") << QList<int>{1, 8} << "0x1FF"
                                          << "0x1FF"
                                          << "1|11111111";
    QTest::newRow("lower-case") << QList<int>{1, 8} << "0x1ff"
                                << "0x1FF"
                                << "1|11111111";
    QTest::newRow("surplus-bits-go-at-the-top") << QList<int>{2, 4} << "0x7F"
                                                << "0x3F"
                                                << "11|1111";
    QTest::newRow("surplus-digits-go-at-the-right") << QList<int>{8} << "0x123"
                                                    << "0x12"
                                                    << "00010010";
    QTest::newRow("missing-digits-read-zero") << QList<int>{8} << "0xF"
                                              << "0xF0"
                                              << "11110000";
    QTest::newRow("empty") << QList<int>{8} << ""
                           << "0x00"
                           << "00000000";
    QTest::newRow("no-prefix") << QList<int>{8} << "FF"
                               << "0x00"
                               << "00000000";
    QTest::newRow("no-digits") << QList<int>{8} << "0xzz"
                               << "0x00"
                               << "00000000";
    QTest::newRow("no-signals") << QList<int>{} << "0xFF"
                                << "0x0"
                                << "";
    QTest::newRow("one-bit") << QList<int>{1} << "0x1"
                             << "0x1"
                             << "1";
    QTest::newRow("widest") << QList<int>{256} << "0x" + QString(64, 'A') << "0x" + QString(64, 'A')
                            << QString("10").repeated(128);
}

void tst_ValueRefresh::loadTakesTheLowBits()
{
    QFETCH(QList<int>, widths);
    QFETCH(QString, stored);
    QFETCH(QString, shown);
    QFETCH(QString, bits);

    PageFixture fixture(coreOfWidths(widths, stored));
    QCOMPARE(fixture.value(0), shown);
    QCOMPARE(fixture.bits(0), bits);
    QCOMPARE(fixture.line(0)->isEnabled(), !widths.isEmpty());
    QCOMPARE(fixture.core->getProbeOut(0)->getValue(), stored);
}

void tst_ValueRefresh::changedPortKeepsItsBitsFromTheLeft_data()
{
    QTest::addColumn<QList<int>>("before");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QList<int>>("after");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("bits");

    QTest::newRow("grows") << QList<int>{4} << "0xF" << QList<int>{4, 4} << "0xF0"
                           << "1111|0000";
    QTest::newRow("shrinks") << QList<int>{8} << "0xA5" << QList<int>{4} << "0xA"
                             << "1010";
    QTest::newRow("splits-differently") << QList<int>{8} << "0xA5" << QList<int>{3, 5} << "0xA5"
                                        << "101|00101";
    QTest::newRow("to-nothing") << QList<int>{8} << "0xA5" << QList<int>{} << "0x0"
                                << "";
    QTest::newRow("from-nothing") << QList<int>{} << "0xF" << QList<int>{8} << "0x00"
                                  << "00000000";
    QTest::newRow("unchanged") << QList<int>{2, 3} << "0x1B" << QList<int>{2, 3} << "0x1B"
                               << "11|011";
}

void tst_ValueRefresh::changedPortKeepsItsBitsFromTheLeft()
{
    QFETCH(QList<int>, before);
    QFETCH(QString, value);
    QFETCH(QList<int>, after);
    QFETCH(QString, shown);
    QFETCH(QString, bits);

    PageFixture fixture(coreOfWidths(before, value));
    setWidths(fixture, 0, after);
    QCOMPARE(fixture.value(0), shown);
    QCOMPARE(fixture.bits(0), bits);
    QCOMPARE(fixture.line(0)->isEnabled(), !after.isEmpty());
}

// The text is set while the mask still has the old length.
static void growFromTwoToFive(PageFixture &fixture)
{
    setWidths(fixture, 0, {2, 3});
    QCOMPARE(fixture.bits(0), QString("11|000"));
    QCOMPARE(fixture.value(0), QString("0x10"));
}

void tst_ValueRefresh::grownDigitsComeBackAsBlanks()
{
    PageFixture fixture(coreOfWidths({2}, "0x3"));
    growFromTwoToFive(fixture);
    fixture.widget->storeToModel();
    QCOMPARE(fixture.core->getProbeOut(0)->getValue(), QString("0x10"));
}

void tst_ValueRefresh::losingTheFocusTakesTheBlanksToo()
{
    PageFixture fixture(coreOfWidths({2}, "0x3"));
    fixture.show();
    growFromTwoToFive(fixture);
    fixture.line(0)->setFocus();
    QCOMPARE(fixture.bits(0), QString("11|000"));
    fixture.leaveLines();
    QCOMPARE(fixture.bits(0), QString("10|000"));
    QCOMPARE(fixture.value(0), QString("0x10"));
}

void tst_ValueRefresh::refreshOfAnotherPortTakesTheBlanksToo()
{
    PageFixture fixture(coreOfWidths({2}, "0x3"));
    growFromTwoToFive(fixture);
    runInLoop([&] { fixture.call("onAddProbeOut"); });
    QCOMPARE(fixture.bits(0), QString("10|000"));
    QCOMPARE(fixture.value(0), QString("0x10"));
}

void tst_ValueRefresh::newPortIsDisabledUntilItHasASignal()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    runInLoop([&] { fixture.call("onAddProbeOut"); });
    QVERIFY(!fixture.line(1)->isEnabled());
    QCOMPARE(fixture.value(1), QString("0x0"));

    setWidths(fixture, 1, {8});
    QVERIFY(fixture.line(1)->isEnabled());
    QCOMPARE(fixture.value(1), QString("0x00"));
    QCOMPARE(fixture.bits(1), QString("00000000"));
    QCOMPARE(fixture.line(1)->inputMask(), QString("NN>HH;0"));
}

void tst_ValueRefresh::losingAllSignalsClearsTheValue()
{
    PageFixture fixture(coreOfWidths({1}, "0x1"));
    setWidths(fixture, 0, {});
    QCOMPARE(fixture.value(0), QString("0x0"));
    QVERIFY(!fixture.line(0)->isEnabled());
    QVERIFY(fixture.line(0)->labels.isEmpty());
    QCOMPARE(fixture.treeValue->topLevelItem(0)->childCount(), 0);
}

void tst_ValueRefresh::labelsAreReplacedAndInOrder()
{
    PageFixture fixture(coreOfWidths({2, 1, 3}, "0x2A"));
    const QList<QLabel *> before = fixture.line(0)->labels;
    fixture.page->refreshProbeOutSignals();

    const QTreeWidgetItem *row = fixture.treeValue->topLevelItem(0);
    const QList<QLabel *> labels = fixture.line(0)->labels;
    QCOMPARE(labels.size(), 3);
    QCOMPARE(row->childCount(), 3);
    for (int i = 0; i < labels.size(); ++i) {
        QVERIFY(!before.contains(labels.at(i)));
        QCOMPARE(fixture.treeValue->itemWidget(row->child(i), 0), labels.at(i));
        QCOMPARE(row->child(i)->type(), 1002);
        QCOMPARE(row->child(i)->text(0), QString());
        QCOMPARE(labels.at(i)->metaObject()->className(), "QLabel");
        QCOMPARE(labels.at(i)->minimumHeight(), 20);
        QCOMPARE(labels.at(i)->maximumHeight(), 20);
    }
    QCOMPARE(treeLines(fixture.treeProbeOut->model()),
             QStringList({"Probe Out0", "  top/s0[1:0]", "  top/s1", "  top/s2[2:0]"}));
}

void tst_ValueRefresh::oldLabelsGoWhenTheLoopTurns()
{
    PageFixture fixture(coreOfWidths({2, 1}, "0x5"));
    const QPointer<QLabel> old = fixture.line(0)->labels.first();
    refresh(fixture);
    turnLoop();
    QVERIFY(!old);
    QCOMPARE(fixture.treeValue->findChildren<QLabel *>().size(), 2);
}

void tst_ValueRefresh::expansionStays()
{
    PageFixture fixture(makeCore({{}}, {signalsOfWidths({1, 1}), signalsOfWidths({4})}));
    fixture.show();
    fixture.treeProbeOut->expandItem(fixture.treeProbeOut->topLevelItem(1));
    refresh(fixture);
    for (QTreeWidget *tree : {fixture.treeProbeOut, fixture.treeValue}) {
        QVERIFY(!tree->topLevelItem(0)->isExpanded());
        QVERIFY(tree->topLevelItem(1)->isExpanded());
    }
}

void tst_ValueRefresh::nothingIsEmitted()
{
    PageFixture fixture(coreOfWidths({2, 1}, "0x5"));
    QSignalSpy modified(fixture.page, SIGNAL(modified()));
    QSignalSpy netlistChanged(fixture.page, SIGNAL(netlistChanged()));
    setWidths(fixture, 0, {8});
    QCOMPARE(modified.count(), 0);
    QCOMPARE(netlistChanged.count(), 0);
}

void tst_ValueRefresh::focusedLineThatIsDisabledCommitsFirst()
{
    PageFixture fixture(coreOfWidths({6}, "0x00"));
    fixture.show();
    fixture.line(0)->setFocus();
    typeDigits(fixture.line(0), "7F");

    ModalDriver driver;
    driver.expectMessage("Error",
                         "Value '7F' for Probe Out0 Initial Value exceeds the effective width.",
                         QMessageBox::Ok);
    QSignalSpy modified(fixture.page, SIGNAL(modified()));
    setWidths(fixture, 0, {});
    QVERIFY(driver.done());
    QCOMPARE(modified.count(), 1);
    QCOMPARE(fixture.value(0), QString("0x0"));
    QVERIFY(!fixture.line(0)->isEnabled());
}

void tst_ValueRefresh::pageMayGoUnderTheMessageOfALineThatIsDisabled()
{
    PageFixture fixture(makeCore({{}}, {signalsOfWidths({6}), signalsOfWidths({4})}));
    fixture.show();
    const QPointer<InitialValueLine> line = fixture.line(0);
    line->setFocus();
    typeDigits(line, "7F");

    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) {
        fixture.widget.reset();
        // Qt is in the midst of taking the focus from it.
        QVERIFY(line);
    });
    setWidths(fixture, 0, {});
    QVERIFY(driver.done());
    QVERIFY(!fixture.widget);
    turnLoop();
    QVERIFY(!line);
}

namespace {

// A port's value as it goes through refreshes, told step by step on plain strings.
struct PlainPort
{
    QString text = "0x0"; // as displayed
    QStringList labels;
    int digits = 1;

    void setText(const QString &wanted)
    {
        text = wanted.left(2 + digits).leftJustified(2 + digits, '0');
    }

    void setMask(int count)
    {
        const QString shown = text;
        digits = qMax(1, (count + 3) / 4);
        setText(shown);
    }

    int bitCount() const { return labels.join(QString()).size(); }

    void refresh(const QList<int> &widths)
    {
        int width = 0;
        for (const int one : widths)
            width += one;
        QString bits = stringHextoBinfor0x(text);
        int kept = bitCount();
        if (kept == 0)
            kept = qMin(width, bits.size());
        bits = bits.right(kept);
        if (width > kept)
            bits += QString(width - kept, '0');
        else
            bits = bits.left(width);
        setText("0x" + (bits.isEmpty() ? "0" : stringBintoHex(bits)));
        labels.clear();
        for (const int one : widths) {
            labels.append(bits.size() >= one ? bits.left(one) : QString(one, '0'));
            bits = bits.size() >= one ? bits.mid(one) : QString();
        }
        setMask(bitCount());
    }
};

} // namespace

void tst_ValueRefresh::randomEditsAgreeWithTheStepByStepReading()
{
    constexpr int Ports = 3;
    QRandomGenerator random(4711);
    for (int round = 0; round < 60; ++round) {
        QList<QList<int>> widths(QVector<QList<int>>(Ports).toList());
        auto core = makeCore({{}}, {{}, {}, {}});
        PlainPort plain[Ports];
        for (int i = 0; i < Ports; ++i) {
            for (int left = random.bounded(4); left > 0; --left)
                widths[i].append(1 + random.bounded(6));
            core->getProbeOut(i)->setSignalNet(signalsOfWidths(widths[i]));
            const QString value = QString("0x%1").arg(random.bounded(4096), 0, 16).toUpper();
            core->getProbeOut(i)->setValue("0x" + value.mid(2));
            plain[i].setMask(core->getProbeOut(i)->width());
            plain[i].setText("0x" + value.mid(2));
            plain[i].refresh(widths[i]);
        }
        PageFixture fixture(std::move(core));
        for (int step = 0; step < 8; ++step) {
            for (int i = 0; i < Ports; ++i) {
                QCOMPARE(fixture.value(i), plain[i].text);
                QCOMPARE(fixture.bits(i), plain[i].labels.join('|'));
            }
            const int changed = random.bounded(Ports);
            widths[changed].clear();
            for (int left = random.bounded(4); left > 0; --left)
                widths[changed].append(1 + random.bounded(6));
            fixture.core->getProbeOut(changed)->setSignalNet(signalsOfWidths(widths[changed]));
            fixture.page->refreshProbeOutSignals();
            for (int i = 0; i < Ports; ++i)
                plain[i].refresh(widths[i]);
        }
    }
}

MOLK_TEST_MAIN(tst_ValueRefresh)

#include "tst_valuerefresh.moc"
