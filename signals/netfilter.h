// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QRegExp>
#include <QString>

namespace FATHOM {
class Hierachy;
class RtlNet;
class RtlNetBus;
class RtlNetlist;
} // namespace FATHOM

namespace MOLK {

/// Describes one search for nets and buses by their full names.
struct NetFilter
{
    /// What to look for, as typed; an empty pattern passes every name.
    QString pattern;

    Qt::CaseSensitivity caseSensitivity = Qt::CaseInsensitive;

    /// False: the pattern may occur anywhere in a name and is taken literally. True: it is an
    /// expression of the kind \a syntax that has to match the whole name.
    bool useRegExp = false;
    QRegExp::PatternSyntax syntax = QRegExp::RegExp;

    /// Whether the two fields below apply; without them the top level alone is searched.
    bool advanced = false;

    /// The level where the search starts. Belongs to the netlist.
    FATHOM::Hierachy *scope = nullptr;

    /// Whether the search goes on below \a scope.
    bool includeSubentries = false;
};

/// Finds the nets and buses of \a netlist that pass \a filter.
///
/// A bus passes by its own full name; the names of its bits don't matter. An invalid expression
/// passes nothing. Nothing is sorted: both lists come in the order of the netlist.
///
/// \param netlist may be null, as may be the scope of an advanced filter: nothing is found then.
/// \param nets receives the single nets, \a buses the buses; what they held is gone.
void collectNets(FATHOM::RtlNetlist *netlist, const NetFilter &filter,
                 QList<FATHOM::RtlNet *> &nets, QList<FATHOM::RtlNetBus *> &buses);

} // namespace MOLK
