// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The check before a save over as many Probe Out names as a configuration can hold, against hashing
// each name once and against the plain way with a map.

#include "comparison.h"

#include "literalvalidation.h"
#include "molkcore.h"
#include "validation.h"

#include <QCoreApplication>
#include <QHash>

using namespace MOLK;

static const int cores = 16;
static const int portsOfACore = 64;
static const int signalsOfAPort = 256;
static const int nameCount = cores * portsOfACore * signalsOfAPort;

// As long as in large designs, and alike in most of their characters.
static QString name(int number)
{
    return QString("top/u_cpu%1/u_core%2/u_pipe%3/u_stage/data_valid_q%4")
        .arg(number % 4)
        .arg(number / 4 % 8)
        .arg(number / 32 % 16)
        .arg(number, 6, 10, QLatin1Char('0'));
}

/// Probe Outs that drive `repeats` times as many bits as there are nets. Repeats of a net stand in
/// different cores.
class Configuration
{
public:
    explicit Configuration(int repeats)
    {
        int number = 0;
        for (int i = 0; i < cores; ++i) {
            all.append(new MolkCore(i));
            for (int j = 0; j < portsOfACore; ++j) {
                if (j > 0)
                    all.last()->addProbeOut(j);
                QList<SignalItem> items;
                for (int k = 0; k < signalsOfAPort; ++k) {
                    SignalItem item;
                    item.name = name(number++ % (nameCount / repeats));
                    item.kind = 0;
                    items.append(item);
                    names.append(item.name);
                }
                all.last()->getProbeOut(j)->setSignalNet(items);
            }
        }
    }
    ~Configuration() { qDeleteAll(all); }
    Q_DISABLE_COPY(Configuration)

    QList<MolkCore *> all;
    QStringList names;
};

static void hashAll(const QStringList &names)
{
    uint sum = 0;
    for (const QString &each : names)
        sum += qHash(each);
    // Looked at, so that nothing is left out.
    if (sum == 1)
        qDebug("a rare sum");
}

static void requireFaults(const QStringList &faults, int expected)
{
    if (faults.size() != expected)
        qFatal("%d faults were found and not %d", faults.size(), expected);
}

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    Comparison comparison(argc, argv);
    if (comparison.wants("validate")) {
        const Configuration distinct(1);
        comparison.time("validate", 5, nameCount, {[&] {
                            requireFaults(configurationFaults(distinct.all, nullptr), 0);
                        }},
                        {[&] {
                            hashAll(distinct.names);
                        }});
    }
    if (comparison.wants("validate-repeats")) {
        const Configuration repeated(2);
        if (configurationFaults(repeated.all, nullptr) != literalFaults(repeated.all, nullptr))
            qFatal("the reports differ");
        comparison.time("validate-repeats", 0.55, nameCount, {[&] {
                            requireFaults(configurationFaults(repeated.all, nullptr),
                                          nameCount / 2);
                        }},
                        {[&] {
                            requireFaults(literalFaults(repeated.all, nullptr), nameCount / 2);
                        }});
    }
    return comparison.exitCode();
}
