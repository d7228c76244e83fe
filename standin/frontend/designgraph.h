// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <QStringList>
#include <QVector>

namespace Standin {

/// One connection or parameter of an instantiation: its name, empty if it goes by position.
struct ConnectionUse
{
    QByteArray name;
    bool isType = false; ///< The value is a data type.
    /// The value of a parameter if it is a string or a number, which may be negative; else empty.
    QByteArray value;
};

/// A statement that instantiates something.
struct InstanceUse
{
    QByteArray type;
    QByteArray name;
    QVector<ConnectionUse> ports;
    QVector<ConnectionUse> parameters;
    quint32 typeOffset = 0; ///< Where the type's name stands in the text.
};

/// One module, interface or the like as the scanner sees it: before parameters have values, so with
/// the instances of all generate branches.
struct ScannedModule
{
    enum Kind { Module, Interface, Primitive };

    QByteArray name;
    Kind kind = Module;
    bool isVhdl = false;
    QVector<InstanceUse> instances;
    QVector<QByteArray> parameters;     ///< Names of its own parameters or generics.
    QVector<QByteArray> parameterTypes; ///< Of an entity's generics, in lower case.
    QVector<QByteArray> ports;          ///< Names of an entity's ports.
    quint32 begin = 0;                  ///< Where it stands in the text, keyword to keyword.
    quint32 end = 0;
};

/// The modules of a design and who instantiates what.
///
/// VHDL knows no case, so a name that no Verilog module has is looked for among the VHDL entities
/// without regard to case.
class HOST_EXPORT DesignGraph
{
public:
    /// Adds a module; a second one of the same name adds its instances to the first.
    void add(const ScannedModule &module);

    /// Adds an instantiation from outside the module, as `bind` does; without effect if there is no
    /// such module.
    void addInstance(const QByteArray &module, const InstanceUse &use);

    bool isEmpty() const { return modules.isEmpty(); }

    /// All of them, in order of declaration.
    const QVector<ScannedModule> &all() const { return modules; }

    /// Where a module stands in the text, one entry each time that it is declared.
    struct Place
    {
        QByteArray name;
        quint32 begin;
        quint32 end;
    };
    const QVector<Place> &declarations() const { return places; }

    /// The module that \a name means; null if there is none. Valid until the next add().
    const ScannedModule *find(const QByteArray &name) const;

    /// Names of the modules that no other module instantiates, in order of declaration.
    QStringList tops() const;

    /// Names of all modules, without interfaces and primitives, in order of declaration.
    QStringList moduleNames() const;

    /// Names of \a top and the modules below it, in order of declaration; empty if there is no
    /// module \a top.
    QStringList modulesBelow(const QByteArray &top) const;

    /// The instantiations by which a module comes to contain itself by way of others. A module that
    /// instantiates itself is none of them: it mostly does so a few times only.
    QVector<InstanceUse> closingCircles() const;

    /// Types that are instantiated but not declared, sorted.
    QList<QByteArray> unknownTypes() const;

private:
    int indexOf(const QByteArray &name) const;

    QVector<ScannedModule> modules;
    QVector<Place> places;
    QHash<QByteArray, int> index;
    QHash<QByteArray, int> vhdlIndex; ///< By lower-case name.
};

/// What the caller of the extraction learns of a design's modules.
struct ModuleLists
{
    QStringList topModules;
    QStringList modules;
};

/// The lists for a design whose top the user has set to \a top, or left open with "". With a top
/// that is no module of the design both are empty.
HOST_EXPORT ModuleLists moduleLists(const DesignGraph &graph, const QString &top);

/// Empty modules for the types that \a graph lacks, with the ports and parameters that their
/// instances use, as Verilog text. All ports are inputs, so that any connection is legal.
HOST_EXPORT QByteArray stubModules(const DesignGraph &graph);

/// \a text, which \a graph was read from, with all modules but those of \a names blanked.
HOST_EXPORT QByteArray withModules(const QByteArray &text, const DesignGraph &graph,
                                   const QSet<QByteArray> &names);

/// The module \a name as Verilog text with nothing but its instances, which have no connections,
/// and the ports and parameters that instances of it use.
HOST_EXPORT QByteArray hollowModule(const DesignGraph &graph, const QByteArray &name);

} // namespace Standin
