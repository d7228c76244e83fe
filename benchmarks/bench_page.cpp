// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The page of a core with 64 Probe Outs of 256 signals each, and sixteen such pages, against what
// any solution pays: making the labels and rows alone, in no view.

#include "comparison.h"
#include "fullpage.h"

#include "host/host.h"
#include "probedialog.h"
#include "probeportsoptionwidget.h"

#include <QApplication>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

#include <malloc.h>

using namespace MOLK;

static void measureOnePage(Comparison *comparison)
{
    if (!comparison->wantsAny({"page-build", "page-refresh", "page-refresh-expanded", "page-expand",
                               "page-scroll", "page-resize", "page-switch"}))
        return;
    ShownPage shown;
    const Side bound = barePage();
    const auto build = [&] {
        shown.build();
    };
    const auto drop = [&] {
        shown.clear();
    };
    comparison->time("page-build", 3.0, LabelCount, {build, [] {}, drop}, bound);

    shown.build();
    const auto refresh = [&] {
        shown.refresh();
    };
    const auto expand = [&] {
        shown.expandAll();
    };
    const auto collapse = [&] {
        shown.collapseAll();
    };
    comparison->time("page-refresh", 4.0, LabelCount, {refresh}, bound);
    comparison->time("page-expand", 0.9, LabelCount, {expand, collapse}, bound);

    shown.expandAll();
    comparison->time("page-refresh-expanded", 7.0, LabelCount, {refresh}, bound);

    QScrollBar *bar = shown.tree("treeValue")->verticalScrollBar();
    const auto scroll = [&] {
        for (int i = 0; i < 20; ++i) {
            bar->setValue(bar->value() + 1);
            settle();
        }
    };
    const auto toTheMiddle = [&] {
        bar->setValue(bar->maximum() / 2);
        settle();
    };
    comparison->time("page-scroll", 1.1, LabelCount, {scroll, toTheMiddle}, bound);

    int height = 508;
    const auto resize = [&] {
        height = height == 508 ? 600 : 508;
        shown.stack.resize(height == 508 ? 852 : 860, height);
        settle();
    };
    comparison->time("page-resize", 0.5, LabelCount, {resize}, bound);

    const auto awayAndBack = [&] {
        shown.stack.setCurrentIndex(0);
        settle();
        shown.stack.setCurrentWidget(shown.page);
        settle();
    };
    comparison->time("page-switch", 0.9, LabelCount, {awayAndBack}, bound);
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

static void measureEdit(Comparison *comparison)
{
    if (!comparison->wants("page-edit"))
        return;
    ShownPage shown;
    shown.build();
    shown.expandAll();
    auto *page = shown.page->findChild<ProbePortsOptionWidget *>();
    QTreeWidgetItem *row = shown.tree("treeProbeOut")->topLevelItem(PortCount / 2);
    const auto edit = [&] {
        QMetaObject::invokeMethod(page, "editProbeOut", Q_ARG(QTreeWidgetItem *, row),
                                  Q_ARG(int, 0));
        settle();
    };
    comparison->time("page-edit", 1.1, LabelCount, {edit, acceptNextDialog}, {[&] {
                         shown.refresh();
                     }});
}

static void measureRemoval(Comparison *comparison)
{
    if (!comparison->wants("page-remove-port"))
        return;
    std::unique_ptr<ShownPage> shown;
    const auto build = [&] {
        shown = std::make_unique<ShownPage>();
        shown->build();
        shown->tree("treeProbeOut")->topLevelItem(PortCount / 2)->setSelected(true);
        settle();
    };
    const auto remove = [&] {
        shown->page->findChild<QPushButton *>("btnProbeOutRemove")->click();
        settle();
    };
    const auto drop = [&] {
        shown.reset();
        settle();
    };
    comparison->time("page-remove-port", 0.6, LabelCount, {remove, build, drop}, barePage());
}

static void measureGrowth(Comparison *comparison)
{
    if (!comparison->wants("page-growth"))
        return;
    QVector<double> whole;
    QVector<double> half;
    for (int i = 0; i < Comparison::Rounds; ++i) {
        ShownPage small(PortCount / 2);
        half.append(Comparison::milliseconds({[&] {
                        small.build();
                    }})
                    / (PortCount / 2));
        ShownPage large(PortCount);
        whole.append(Comparison::milliseconds({[&] {
                         large.build();
                     }})
                     / PortCount);
    }
    const double value = Comparison::median(whole);
    const double bound = Comparison::median(half);
    comparison->print("page-growth", value / bound, 1.15, value, bound, "ms a port", PortCount);
}

static void measureManyPages(Comparison *comparison)
{
    if (!comparison->wantsAny({"pages-16", "pages-16-heap", "pages-16-destroy"}))
        return;
    std::vector<std::unique_ptr<MolkCore>> cores;
    for (int i = 0; i < PageCount; ++i)
        cores.push_back(makeFullCore(PortCount));

    constexpr int Labels = PageCount * LabelCount;
    QVector<Duration> builds;
    QVector<Duration> ends;
    QVector<Duration> bounds;
    QVector<double> heaps;
    for (int i = 0; i < Comparison::Rounds; ++i) {
        bounds.append(barePages(PageCount));
        malloc_trim(0);

        auto stack = std::make_unique<QStackedWidget>();
        const double before = Comparison::heap();
        builds.append(Comparison::duration([&] {
            for (const auto &core : cores)
                stack->addWidget(new MolkOptionWidget(core.get(), nullptr, nullptr));
            settle();
        }));
        heaps.append((Comparison::heap() - before) / Labels / 1000);
        ends.append(Comparison::duration([&] {
            stack.reset();
            settle();
        }));
    }
    comparison->times("pages-16", 3.0, Labels, builds, bounds);
    const double heap = Comparison::median(heaps);
    comparison->print("pages-16-heap", heap, 2.9, heap, 1, "kB a label", Labels);
    comparison->times("pages-16-destroy", 2.5, Labels, ends, bounds);
}

int main(int argc, char *argv[])
{
    useNoDisplay();
    const QApplication app(argc, argv);
    Comparison comparison(argc, argv);
    Standin::Host host;
    host.setRecording(false);
    measureOnePage(&comparison);
    measureEdit(&comparison);
    measureRemoval(&comparison);
    measureGrowth(&comparison);
    measureManyPages(&comparison);
    return comparison.exitCode();
}
