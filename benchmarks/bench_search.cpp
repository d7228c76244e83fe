// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Finding nets among a million names, against what reading the names takes alone and against
// QRegExp; and keeping repeats out of a million picks, against putting their names into a set.

#include "benchnets.h"
#include "comparison.h"

#include "hierarchymatch.h"
#include "netfilter.h"
#include "signalset.h"

#include <QCoreApplication>
#include <QSet>

using namespace MOLK;

static const int million = 1000000;

static NetFilter filterFor(const BenchNetlist &design, const QString &pattern,
                           Qt::CaseSensitivity sensitivity)
{
    NetFilter filter;
    filter.pattern = pattern;
    filter.caseSensitivity = sensitivity;
    filter.advanced = true;
    filter.scope = design.get()->top;
    filter.includeSubentries = true;
    return filter;
}

static NetFilter expressionFor(const BenchNetlist &design, const QString &pattern,
                               QRegExp::PatternSyntax syntax)
{
    NetFilter filter = filterFor(design, pattern, Qt::CaseSensitive);
    filter.useRegExp = true;
    filter.syntax = syntax;
    return filter;
}

static int hits(const BenchNetlist &design, const NetFilter &filter)
{
    QList<FATHOM::RtlNet *> nets;
    QList<FATHOM::RtlNetBus *> buses;
    collectNets(design.get(), filter, nets, buses);
    return nets.size();
}

static int walk(const BenchNetlist &design)
{
    int characters = 0;
    for (const FATHOM::RtlNet *net : design.get()->top->singleNets())
        characters += net->fullPathName().size();
    return characters;
}

static int hitsOfQRegExp(const BenchNetlist &design, const NetFilter &filter)
{
    const QRegExp expression(filter.pattern, filter.caseSensitivity, filter.syntax);
    QList<FATHOM::RtlNet *> nets;
    for (FATHOM::RtlNet *net : design.get()->top->singleNets()) {
        if (expression.exactMatch(net->fullPathName()))
            nets.append(net);
    }
    return nets.size();
}

static void require(bool right, const char *what)
{
    if (!right)
        qFatal("%s", what);
}

static void searchAgainstWalk(Comparison *comparison, const BenchNetlist &design)
{
    struct Case
    {
        const char *name;
        double target;
        const char *pattern;
        bool wildcard;
        Qt::CaseSensitivity sensitivity;
    };
    const Case cases[] = {
        {"search-literal", 2.5, "valid_q77777", false, Qt::CaseSensitive},
        {"search-literal-ci", 2.8, "VALID_q77777", false, Qt::CaseInsensitive},
        {"search-wildcard", 2.5, "*valid_q77777*", true, Qt::CaseSensitive},
        {"search-wildcard-ci", 3.0, "*VALID_q77777*", true, Qt::CaseInsensitive},
    };
    for (const Case &each : cases) {
        NetFilter filter = filterFor(design, QString::fromLatin1(each.pattern), each.sensitivity);
        filter.useRegExp = each.wildcard;
        filter.syntax = QRegExp::WildcardUnix;
        comparison->time(each.name, each.target, million, {[&] {
                             require(hits(design, filter) == 10, "a rare text has ten hits");
                         }},
                         {[&] {
                             require(walk(design) > 50 * million, "names are missing");
                         }});
    }
}

static void searchAgainstQRegExp(Comparison *comparison, const BenchNetlist &design)
{
    const NetFilter filters[] = {
        expressionFor(design, "*_q????4?", QRegExp::WildcardUnix),
        expressionFor(design, ".*(valid|ready).*3", QRegExp::RegExp),
        expressionFor(design, "*[02468]", QRegExp::WildcardUnix),
        expressionFor(design, "top/u_cpu[0-2]/.*q(0|1)+", QRegExp::RegExp),
    };
    for (const NetFilter &filter : filters) {
        const int expected = hitsOfQRegExp(design, filter);
        require(expected > 0, "an expression has hits");
        const Side rival{[&] {
            hitsOfQRegExp(design, filter);
        }};
        comparison->time("search-expression", 0.15, million, {[&] {
                             require(hits(design, filter) == expected, "other hits");
                         }},
                         rival);
        comparison->time("search-expression-tree", 0.15, million, {[&] {
                             require(matchHierarchy(filter).nets.size() == expected, "other hits");
                         }},
                         rival);
    }
}

static void searchGrowth(Comparison *comparison, const BenchNetlist &design,
                         const BenchNetlist &tenth)
{
    const auto search = [](const BenchNetlist &where) {
        return Side{[&where] {
            hits(where, filterFor(where, "q77777", Qt::CaseInsensitive));
            hits(where, expressionFor(where, "*[02468]", QRegExp::WildcardUnix));
        }};
    };
    if (!comparison->wants("search-growth"))
        return;
    QVector<double> ratios;
    QVector<double> times;
    for (int i = 0; i < 7; ++i) {
        const double small = Comparison::milliseconds(search(tenth));
        times.append(Comparison::milliseconds(search(design)));
        ratios.append(times.last() / small / 10);
    }
    const double ratio = Comparison::median(ratios);
    comparison->print("search-growth", ratio, 1.3, Comparison::median(times), 10, "ms", million);
}

static SignalItem netItem(const QString &name, int kind)
{
    SignalItem item;
    item.name = name;
    item.kind = kind;
    return item;
}

static void insertAll(const QStringList &names)
{
    QSet<QString> set;
    for (const QString &name : names)
        set.insert(name);
    require(!set.isEmpty(), "no names");
}

// Picks `picked` while rows that carry `rows` stand in the list.
static int pick(const QList<SignalItem> &rows, const QList<SignalItem> &picked)
{
    PickedSignals split;
    for (const SignalItem &item : picked)
        split.add(item);
    QList<SignalItem> buses = split.buses();
    QList<SignalItem> singles = split.singles();
    {
        IncomingSignals incoming(buses, singles);
        for (const SignalItem &row : rows)
            incoming.meet(row);
    }
    return buses.size() + singles.size();
}

static void addPicked(Comparison *comparison, const BenchNetlist &design,
                      const BenchNetlist &busDesign)
{
    QStringList names;
    QList<SignalItem> singles;
    for (const FATHOM::RtlNet *net : design.get()->top->singleNets()) {
        names.append(net->fullPathName());
        singles.append(netItem(names.last(), 0));
    }
    comparison->time("add-singles", 2.2, million, {[&] {
                         require(pick(singles, singles) == 0, "a net came twice");
                     }},
                     {[&] {
                         insertAll(names);
                     }});

    QStringList busNames;
    QList<SignalItem> flat;
    QList<SignalItem> whole;
    QList<SignalItem> bits;
    for (const FATHOM::RtlNetBus *bus : busDesign.get()->top->netbuses()) {
        SignalItem item = netItem(bus->fullBusName(), 1);
        for (const FATHOM::RtlNet *bit : bus->nets())
            item.members.append(netItem(bit->fullPathName(), 1));
        whole.append(item);
        bits += item.members;
        flat.append(item);
        flat += item.members;
    }
    for (const SignalItem &item : qAsConst(flat))
        busNames.append(item.name);
    comparison->time("add-all", 2.2, flat.size(), {[&] {
                         require(pick({}, flat) == whole.size(), "a bit came along");
                     }},
                     {[&] {
                         insertAll(busNames);
                     }});
    comparison->time("add-bits", 2.2, bits.size(), {[&] {
                         require(pick(whole, bits) == 0, "a bit came along");
                     }},
                     {[&] {
                         insertAll(busNames);
                     }});
}

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    Comparison comparison(argc, argv);
    const BenchNetlist design(million, 0);
    searchAgainstWalk(&comparison, design);
    searchAgainstQRegExp(&comparison, design);
    searchGrowth(&comparison, design, BenchNetlist(million / 10, 0));
    addPicked(&comparison, design, BenchNetlist(0, million / 33));
    return comparison.exitCode();
}
