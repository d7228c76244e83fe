// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "frontend/vhdlrepair.h"

#include <vector>

namespace Standin {

/// What is left of a faulty unit.
enum class VhdlRemains {
    AllButFaults,
    AllButProcesses, ///< The whole processes and declarations that are faulty go.
    Instances,       ///< And declarations.
    Ports,
    Nothing,
};

/// One look at the text: finds what is to go, and in the end takes it out.
class VhdlRepair::Round
{
public:
    Round(VhdlRepair *wholeRepair, VhdlLosses *lossesOfAll);

    Concern concernOf(const ToolMessage &error) const;
    bool takeOut(const ToolMessage &error);
    void takeOutUnit(const VhdlUnit &unit, VhdlRemains remains);
    void finish();

    const std::vector<VhdlUnit> &units() const { return constructs.units(); }
    int lineOf(const VhdlUnit &unit) const;
    bool isEmpty(const VhdlUnit &unit) const;

private:
    int tokenAt(const ToolMessage &error) const;
    int constructAt(int token) const;
    const VhdlUnit *unitOf(int construct) const;
    const VhdlConstruct &at(int index) const { return constructs.all()[std::size_t(index)]; }
    int outermost(int construct) const;
    bool isWithin(int construct, int outer) const;
    bool mentionsLost(int construct) const;
    bool namesMissingLibrary(const VhdlConstruct &clause) const;
    QByteArray instantiated(const VhdlConstruct &instance) const;
    void blank(int begin, int end);
    void lose(int construct);
    void loseName(int token, int construct);

    VhdlRepair *repair;
    VhdlLosses *losses;
    VhdlTokens tokens;
    VhdlConstructs constructs;
    std::vector<quint32> lines;     ///< Where each begins.
    QSet<QByteArray> faulty;        ///< Units that have had an error in this round.
    QHash<int, QSet<int>> elements; ///< That go, by their list.
    QHash<QByteArray, int> lostNow; ///< Names lost in this round, and what declared them.
    QVector<quint32> emptied;       ///< Where architectures get an empty body.
};

/// The first name in quotes in \a text, in lower case.
QByteArray quotedName(const QString &text);

/// True if the error is that a library is missing.
bool namesLibrary(const ToolMessage &error);

} // namespace Standin
