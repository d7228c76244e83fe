// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/moduledefinition.h"

#include <QHash>
#include <QVector>

namespace Standin {

/// What a data type looks like as a net.
struct NetShape
{
    QVector<Range> dimensions; ///< Of an unpacked array, outermost first.
    qint64 width = 0;          ///< Bits of one element; 0 if the type has no bits.
    bool isBus = false;
    Range range; ///< Of a bus.

    /// Number of elements, no more than one beyond ModuleDefinition::MaximumSize.
    qint64 elements() const;
};

/// The types of a design, by number.
class XmlTypes
{
public:
    struct Type
    {
        enum Kind { NoBits, Basic, Alias, Struct, Union, Packed, Unpacked };

        Kind kind = NoBits;
        bool hasRange = false;
        Range range;         ///< Of a basic type with a range and of arrays.
        quint32 element = 0; ///< Of arrays and aliases.
        QVector<quint32> members;
    };

    void add(quint32 id, const Type &type) { types.insert(id, type); }

    /// The shape of a type; one without bits if there is no such type, or if the type contains
    /// itself, nests deeper than any real one, or is wider than ModuleDefinition::MaximumSize.
    const NetShape &shape(quint32 id);

private:
    NetShape resolve(const Type &type, int depth);
    const NetShape &shape(quint32 id, int depth);

    QHash<quint32, Type> types;
    QHash<quint32, NetShape> shapes;
    NetShape none;
};

} // namespace Standin
