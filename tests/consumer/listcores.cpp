// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Prints one line for each core of a configuration file: what a script around the editor would do.

#include <molkcore.h>
#include <molkfile.h>
#include <probein.h>
#include <probeout.h>

#include <QTextStream>

int main(int argc, char *argv[])
{
    QTextStream out(stdout);
    if (argc != 2)
        return 2;
    bool ok = false;
    QString error;
    const QList<MOLK::MolkCore *> cores =
        MOLK::readMOLKConfigFromXml(QString::fromLocal8Bit(argv[1]), &ok, &error);
    if (!ok) {
        out << error << '\n';
        return 1;
    }
    for (const MOLK::MolkCore *core : cores)
        out << "molk_" << core->id << ' ' << core->getAllProbeIns().size() << " in, "
            << core->getAllProbeOuts().size() << " out\n";
    qDeleteAll(cores);
    return 0;
}
