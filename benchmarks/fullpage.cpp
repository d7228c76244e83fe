// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "fullpage.h"

#include "probeportsoptionwidget.h"

#include <QCoreApplication>
#include <QLabel>

using namespace MOLK;

void settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}

QList<SignalItem> fullPort(int port)
{
    QList<SignalItem> items;
    for (int i = 0; i < SignalsOfAPort; ++i) {
        SignalItem item;
        item.name = QString("top/u_core/u_block_%1/some_signal_name_%2").arg(port).arg(i);
        item.kind = 0;
        items.append(item);
    }
    return items;
}

std::unique_ptr<MolkCore> makeFullCore(int ports)
{
    auto core = std::make_unique<MolkCore>(0);
    for (int i = 0; i < ports; ++i) {
        if (i > 0)
            core->addProbeOut(i);
        core->getProbeOut(i)->setSignalNet(fullPort(i));
    }
    return core;
}

namespace {

struct BarePage
{
    void make()
    {
        for (int i = 0; i < LabelCount; ++i) {
            auto *label = new QLabel;
            label->setText("0");
            labels.append(label);
            rows.append(new QTreeWidgetItem(1002));
            rows.append(
                new QTreeWidgetItem(QStringList("top/u_core/u_block/some_signal_name"), 1002));
        }
    }

    void drop()
    {
        settle();
        qDeleteAll(labels);
        qDeleteAll(rows);
        labels.clear();
        rows.clear();
    }

    QVector<QLabel *> labels;
    QList<QTreeWidgetItem *> rows;
};

} // namespace

Side barePage()
{
    const auto page = std::make_shared<BarePage>();
    return {[=] { page->make(); }, [] {},
            [=] {
                page->drop();
            }};
}

Duration barePages(int count)
{
    Duration sum;
    const Side one = barePage();
    for (int i = 0; i < count; ++i) {
        const Duration taken = Comparison::duration(one);
        sum.processor += taken.processor;
        sum.wall += taken.wall;
    }
    return sum;
}

ShownPage::ShownPage(int ports)
    : core(makeFullCore(ports))
{
    stack.resize(852, 508);
    stack.addWidget(new QWidget);
    stack.show();
    settle();
}

void ShownPage::build()
{
    page = new MolkOptionWidget(core.get(), nullptr, &stack);
    stack.addWidget(page);
    stack.setCurrentWidget(page);
    settle();
}

void ShownPage::clear()
{
    delete page;
    page = nullptr;
    settle();
}

QTreeWidget *ShownPage::tree(const char *name) const
{
    return page->findChild<QTreeWidget *>(QLatin1String(name));
}

void ShownPage::expandAll() const
{
    tree("treeProbeOut")->expandAll();
    tree("treeValue")->expandAll();
    settle();
}

void ShownPage::collapseAll() const
{
    tree("treeProbeOut")->collapseAll();
    tree("treeValue")->collapseAll();
    settle();
}

void ShownPage::refresh() const
{
    page->findChild<ProbePortsOptionWidget *>()->refreshProbeOutSignals();
    settle();
}
