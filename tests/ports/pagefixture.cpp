// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "pagefixture.h"

#include <QApplication>
#include <QEventLoop>
#include <QLabel>
#include <QTest>
#include <QTimer>

using namespace MOLK;

std::unique_ptr<MolkCore> makeCore(const QList<QList<SignalItem>> &probeIns,
                                   const QList<QList<SignalItem>> &probeOuts)
{
    auto core = std::make_unique<MolkCore>(0);
    for (int i = 0; i < probeIns.size(); ++i) {
        if (i > 0)
            core->addProbeIn(i);
        core->getProbeIn(i)->setSignalNet(probeIns.at(i));
    }
    for (int i = 0; i < probeOuts.size(); ++i) {
        if (i > 0)
            core->addProbeOut(i);
        core->getProbeOut(i)->setSignalNet(probeOuts.at(i));
    }
    return core;
}

QList<SignalItem> signalsOfWidths(const QList<int> &widths)
{
    QList<SignalItem> items;
    for (int i = 0; i < widths.size(); ++i) {
        const QString name = QString("top/s%1").arg(i);
        items.append(widths.at(i) == 1 ? net(name) : bus(name, widths.at(i)));
    }
    return items;
}

std::unique_ptr<MolkCore> coreOfWidths(const QList<int> &widths, const QString &value)
{
    auto core = makeCore({{}}, {signalsOfWidths(widths)});
    core->getProbeOut(0)->setValue(value);
    return core;
}

void typeDigits(InitialValueLine *line, const QString &digits)
{
    line->setCursorPosition(2);
    QTest::keyClicks(line, digits);
}

void runInLoop(const std::function<void()> &act)
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        act();
        QTimer::singleShot(0, &loop, &QEventLoop::quit);
    });
    loop.exec();
}

PageFixture::PageFixture(std::unique_ptr<MolkCore> shownCore, FATHOM::RtlNetlist *netlist)
    : core(std::move(shownCore))
    , widget(std::make_unique<MolkOptionWidget>(core.get(), netlist, nullptr))
    , page(widget->findChild<ProbePortsOptionWidget *>())
    , treeProbeIn(child<QTreeWidget>("treeProbeIn"))
    , treeProbeOut(child<QTreeWidget>("treeProbeOut"))
    , treeValue(child<QTreeWidget>("treeValue"))
{
}

void PageFixture::show()
{
    widget->resize(872, 560);
    widget->show();
    QApplication::setActiveWindow(widget.get());
    QVERIFY(QTest::qWaitForWindowActive(widget.get()));
}

InitialValueLine *PageFixture::line(int port) const
{
    return qobject_cast<InitialValueLine *>(
        treeValue->itemWidget(treeValue->topLevelItem(port), 0));
}

QString PageFixture::value(int port) const
{
    return line(port)->displayText();
}

QString PageFixture::bits(int port) const
{
    QStringList texts;
    for (const QLabel *label : line(port)->labels)
        texts.append(label->text());
    return texts.join("|");
}

void PageFixture::leaveLines()
{
    treeProbeIn->setFocus();
}

void PageFixture::call(const char *slot)
{
    QVERIFY(QMetaObject::invokeMethod(page, slot));
}

void PageFixture::call(const char *slot, QTreeWidgetItem *item)
{
    QVERIFY(QMetaObject::invokeMethod(page, slot, Q_ARG(QTreeWidgetItem *, item), Q_ARG(int, 0)));
}

static QPoint centre(QTreeWidgetItem *row)
{
    return row->treeWidget()->visualItemRect(row).center();
}

void PageFixture::click(QTreeWidgetItem *row)
{
    QTest::mouseClick(row->treeWidget()->viewport(), Qt::LeftButton, {}, centre(row));
}

void PageFixture::doubleClick(QTreeWidgetItem *row)
{
    click(row);
    QTest::mouseDClick(row->treeWidget()->viewport(), Qt::LeftButton, {}, centre(row));
}
