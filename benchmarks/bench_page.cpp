// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The page of a core with 64 Probe Outs of 256 signals each, and sixteen such pages, against what
// any solution pays: making the labels and rows alone, in no view.

#include "host/host.h"
#include "molkcore.h"
#include "molkoptionwidget.h"
#include "probedialog.h"
#include "probeportsoptionwidget.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QVector>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <malloc.h>
#include <memory>

using namespace MOLK;

static const int portCount = 64;
static const int signalsOfAPort = 256;
static const int labelCount = portCount * signalsOfAPort;
static const int pageCount = 16;
static const int rounds = 7;

static bool allMet = true;

static double milliseconds(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return timer.nsecsElapsed() / 1e6;
}

static double median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

static void report(const char *name, double value, double bound, double target, const char *unit,
                   int size)
{
    const double ratio = value / bound;
    std::printf("%-24s ratio %7.3f target %6.2f value %9.3f bound %9.3f %s size %d\n", name, ratio,
                target, value, bound, unit, size);
    std::fflush(stdout);
    allMet = allMet && ratio <= target;
}

// Lets everything happen that was posted, late deletions and painting included.
static void settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}

static QList<SignalItem> portSignals(int port)
{
    QList<SignalItem> items;
    for (int i = 0; i < signalsOfAPort; ++i) {
        SignalItem item;
        item.name = QString("top/u_core/u_block_%1/some_signal_name_%2").arg(port).arg(i);
        item.kind = 0;
        items.append(item);
    }
    return items;
}

static std::unique_ptr<MolkCore> makeCore(int ports)
{
    auto core = std::make_unique<MolkCore>(0);
    for (int i = 0; i < ports; ++i) {
        if (i > 0)
            core->addProbeOut(i);
        core->getProbeOut(i)->setSignalNet(portSignals(i));
    }
    return core;
}

// Making the labels and rows of one page alone; what is made goes outside the measurement.
static double lowerBound(int labels = labelCount)
{
    QVector<QLabel *> made;
    QList<QTreeWidgetItem *> rows;
    const double time = milliseconds([&] {
        for (int i = 0; i < labels; ++i) {
            auto *label = new QLabel;
            label->setText("0");
            made.append(label);
            rows.append(new QTreeWidgetItem(1002));
            rows.append(
                new QTreeWidgetItem(QStringList("top/u_core/u_block/some_signal_name"), 1002));
        }
    });
    settle();
    qDeleteAll(made);
    qDeleteAll(rows);
    return time;
}

// Runs the lower bound and a piece of work in turn, so that both meet the same machine.
static void compare(
    const char *name, double target, const std::function<void()> &work,
    const std::function<void()> &between = [] {})
{
    QVector<double> times;
    QVector<double> bounds;
    for (int i = 0; i < rounds; ++i) {
        bounds.append(lowerBound());
        between();
        settle();
        times.append(milliseconds(work));
    }
    report(name, median(times), median(bounds), target, "ms", labelCount);
}

// A page in a stack in a window, as a view has it.
struct ShownPage
{
    explicit ShownPage(int ports = portCount)
        : core(makeCore(ports))
    {
        stack.resize(852, 508);
        stack.addWidget(new QWidget);
        stack.show();
        settle();
    }

    void build()
    {
        page = new MolkOptionWidget(core.get(), nullptr, &stack);
        stack.addWidget(page);
        stack.setCurrentWidget(page);
        settle();
    }

    void clear()
    {
        delete page;
        page = nullptr;
        settle();
    }

    QTreeWidget *tree(const char *name) const
    {
        return page->findChild<QTreeWidget *>(QLatin1String(name));
    }

    void expandAll() const
    {
        tree("treeProbeOut")->expandAll();
        tree("treeValue")->expandAll();
        settle();
    }

    void collapseAll() const
    {
        tree("treeProbeOut")->collapseAll();
        tree("treeValue")->collapseAll();
        settle();
    }

    void refresh() const
    {
        page->findChild<ProbePortsOptionWidget *>()->refreshProbeOutSignals();
        settle();
    }

    std::unique_ptr<MolkCore> core;
    QStackedWidget stack;
    MolkOptionWidget *page = nullptr;
};

static void measureOnePage()
{
    ShownPage shown;
    compare(
        "page-build", 3.0, [&] { shown.build(); }, [&] { shown.clear(); });
    compare("page-refresh", 4.0, [&] { shown.refresh(); });
    compare(
        "page-expand", 0.9, [&] { shown.expandAll(); }, [&] { shown.collapseAll(); });
    compare("page-refresh-expanded", 7.0, [&] { shown.refresh(); });

    QScrollBar *bar = shown.tree("treeValue")->verticalScrollBar();
    compare(
        "page-scroll", 1.1,
        [&] {
            for (int i = 0; i < 20; ++i) {
                bar->setValue(bar->value() + 1);
                settle();
            }
        },
        [&] { bar->setValue(bar->maximum() / 2); });

    int height = 508;
    compare("page-resize", 0.5, [&] {
        height = height == 508 ? 600 : 508;
        shown.stack.resize(860, height);
        settle();
    });
    compare("page-switch", 0.9, [&] {
        shown.stack.setCurrentIndex(0);
        settle();
        shown.stack.setCurrentWidget(shown.page);
        settle();
    });
}

// Accepts the next modal dialog as it stands, from inside its event loop.
static void acceptNextDialog()
{
    QTimer::singleShot(0, [] {
        auto *dialog = qobject_cast<ProbeDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            qFatal("no dialog to accept");
        dialog->accept();
    });
}

static void measureEdit()
{
    ShownPage shown;
    shown.build();
    shown.expandAll();
    auto *page = shown.page->findChild<ProbePortsOptionWidget *>();
    QTreeWidgetItem *row = shown.tree("treeProbeOut")->topLevelItem(portCount / 2);

    QVector<double> edits;
    QVector<double> refreshes;
    for (int i = 0; i < rounds; ++i) {
        refreshes.append(milliseconds([&] { shown.refresh(); }));
        acceptNextDialog();
        edits.append(milliseconds([&] {
            QMetaObject::invokeMethod(page, "editProbeOut", Q_ARG(QTreeWidgetItem *, row),
                                      Q_ARG(int, 0));
            settle();
        }));
    }
    report("page-edit", median(edits), median(refreshes), 1.1, "ms", labelCount);
}

static void measureRemoval()
{
    QVector<double> times;
    QVector<double> bounds;
    for (int i = 0; i < rounds; ++i) {
        bounds.append(lowerBound());
        ShownPage shown;
        shown.build();
        shown.tree("treeProbeOut")->topLevelItem(portCount / 2)->setSelected(true);
        auto *button = shown.page->findChild<QPushButton *>("btnProbeOutRemove");
        settle();
        times.append(milliseconds([&] {
            button->click();
            settle();
        }));
    }
    report("page-remove-port", median(times), median(bounds), 0.6, "ms", labelCount);
}

static void measureGrowth()
{
    QVector<double> whole;
    QVector<double> half;
    for (int i = 0; i < rounds; ++i) {
        ShownPage small(portCount / 2);
        half.append(milliseconds([&] { small.build(); }) / (portCount / 2));
        ShownPage large(portCount);
        whole.append(milliseconds([&] { large.build(); }) / portCount);
    }
    report("page-growth", median(whole), median(half), 1.15, "ms a port", portCount);
}

static void measureManyPages()
{
    QVector<std::shared_ptr<MolkCore>> cores;
    for (int i = 0; i < pageCount; ++i)
        cores.append(makeCore(portCount));

    QVector<double> builds;
    QVector<double> ends;
    QVector<double> bounds;
    QVector<double> heaps;
    for (int i = 0; i < rounds; ++i) {
        double bound = 0;
        for (int j = 0; j < pageCount; ++j)
            bound += lowerBound();
        bounds.append(bound);
        malloc_trim(0);

        auto stack = std::make_unique<QStackedWidget>();
        const size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        builds.append(milliseconds([&] {
            for (const auto &core : qAsConst(cores))
                stack->addWidget(new MolkOptionWidget(core.get(), nullptr, nullptr));
            settle();
        }));
        const size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
        heaps.append(double(after - before) / (pageCount * labelCount) / 1000);
        ends.append(milliseconds([&] {
            stack.reset();
            settle();
        }));
    }
    report("pages-16", median(builds), median(bounds), 3.0, "ms", pageCount * labelCount);
    report("pages-16-heap", median(heaps), 1, 2.9, "kB a label", pageCount * labelCount);
    report("pages-16-destroy", median(ends), median(bounds), 2.5, "ms", pageCount * labelCount);
}

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    Standin::Host host;
    host.setRecording(false);
    measureOnePage();
    measureEdit();
    measureRemoval();
    measureGrowth();
    measureManyPages();
    return allMet ? 0 : 1;
}
