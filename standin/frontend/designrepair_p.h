// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "frontend/designrepair.h"
#include "frontend/sourceplaces.h"
#include "frontend/verilogitems.h"
#include "frontend/verilogtokens.h"

#include <QMap>
#include <QSet>

#include <vector>

namespace Standin {

/// What is left of a faulty module.
enum class Remains {
    AllButFaults,
    Declarations, ///< And instances.
    Ports,
    Instances,
    Nothing,
};

/// One look at the text: finds what is to go, and in the end takes it out.
class DesignRepair::Round
{
public:
    explicit Round(DesignRepair *wholeRepair)
        : repair(wholeRepair)
        , tokens(wholeRepair->design)
        , units(verilogUnits(tokens))
        , places(wholeRepair->design)
    {
    }

    /// True if \a error is likely to be there because the tool lost its way in an error ahead of
    /// it. All errors have to be noted first.
    bool isDoubtful(const ToolMessage &error) const;
    void note(const ToolMessage &error);

    bool takeOut(const ToolMessage &error, Concern *concern);
    void takeOutItem(quint32 offset);
    void gut(const QSet<QByteArray> &names, Remains remains);
    void finish();

private:
    const VerilogUnit &unitAt(int token) const;
    Concern concernOf(const ToolMessage &error, const VerilogUnit &unit, int token) const;
    bool isTestbench(const VerilogUnit &unit) const;
    bool isConsequence(const ToolMessage &error, int token) const;
    void takeOutAt(const ToolMessage &error, const VerilogUnit &unit, int token);
    int tokenAt(quint32 lineBegin, const ToolMessage &error) const;
    bool mend(const ToolMessage &error, const VerilogUnit &unit, int token);
    bool addSeparator(const VerilogUnit &unit, int token);
    bool mendHeader(const VerilogUnit &unit, int token);
    bool takeOutImport(const VerilogUnit &unit, int token);
    bool mendValue(const VerilogUnit &unit, int token);
    bool takeOutType(const VerilogUnit &unit, int token);
    int openBracketAround(int token, int first) const;
    bool takeOutConnection(const VerilogItem &item, int token);
    void takeOutElements(int open, const QSet<int> &marked);
    void takeOutUnit(const VerilogUnit &unit, Remains remains);
    VerilogItem itemOf(const VerilogUnit &unit, int token) const;
    bool isPort(const VerilogItem &item) const;
    bool isDeclaration(const VerilogItem &item) const;
    void blank(int begin, int end);
    QByteArray nameOf(const VerilogUnit &unit) const { return tokens.text(unit.name); }

    DesignRepair *repair;
    VerilogTokens tokens;
    std::vector<VerilogUnit> units;
    SourcePlaces places;
    QSet<int> faulty;      ///< Units by index that have had an error in this round.
    QSet<int> misread;     ///< Units by index with syntax errors.
    QSet<int> mendedUnits; ///< Units by index.
    bool headerIsMended = false;
    QMap<int, char> added;  ///< Characters to come behind tokens.
    bool losesNames = true; ///< No hardware refers to what only checks it.
    QSet<QByteArray> hollow;
    QHash<int, QSet<int>> connections; ///< Tokens in lists by the bracket that opens the list.
};

/// True for an error in how an instance is connected.
bool isPinError(const ToolMessage &error);

/// Index in \a items of the one that holds \a token, or -1.
int itemAt(const std::vector<VerilogItem> &items, int token);

} // namespace Standin
