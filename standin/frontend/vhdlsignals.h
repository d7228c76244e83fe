// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>
#include <QSet>
#include <QVector>

namespace Standin {

/// Text that was put into a VHDL source.
struct VhdlInsertion
{
    int line;   ///< From 1.
    int column; ///< From 1, tabulators counted as GHDL does.
    int length;
};

/// The data types of a design whose signals are plain nets: bits, vectors of them, numbers,
/// enumerations, and records of such. Arrays aren't, as a memory may be one.
class HOST_EXPORT VhdlNetTypes
{
public:
    /// Notes the types that \a source declares.
    void add(const QByteArray &source);

    /// To be called when all sources have been added.
    void resolve();

    /// True for the name, in lower case, of such a type.
    bool contains(const QByteArray &type) const { return known.contains(type); }

private:
    struct Declaration
    {
        QByteArray name;
        QVector<QByteArray> parts; ///< Types that it is made of.
        bool isNet;                ///< If the parts are.
    };

    QVector<Declaration> declarations;
    QSet<QByteArray> known;
};

/// Marks all signals of plain types in \a source to be kept, as the synthesis drops what nothing
/// depends on. Lines stay as they are.
///
/// \param insertions receives what was put in.
HOST_EXPORT QByteArray withKeptSignals(const QByteArray &source, const VhdlNetTypes &types,
                                       QVector<VhdlInsertion> *insertions);

/// \a source with the blanks in extended identifiers written as tildes, as the escaped identifiers
/// that the synthesis makes of them can't hold blanks. The reader of the netlist takes that back.
HOST_EXPORT QByteArray withoutBlanksInNames(const QByteArray &source);

/// True if \a source declares an attribute of the name that marks them.
HOST_EXPORT bool declaresKeep(const QByteArray &source);

} // namespace Standin
