// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/moduledefinition.h"
#include "netlist/stringinterner.h"
#include "netlist/xmltypes.h"

#include <QHash>
#include <QString>
#include <QVector>

#include <vector>

// A design as its elaborated text tells it, before names and types are brought together. References
// come ahead of the types in the text, so they are kept in short records until both are there.

namespace Standin {

enum class PortDirection : quint8 { None, In, Out, InOut };

/// A reference to a variable, or what else stands as an operand.
struct RawSegment
{
    enum Kind : quint8 { Reference, Constant, Other };

    quint32 entry = 0; ///< Of a reference, in RawModule::entries.
    quint32 path = 0;  ///< Constant array indices, in RawDesign::paths; 0 is none.
    qint32 lsb = 0;    ///< Counted from the lowest bit of what the path leads to.
    qint32 width = -1; ///< In bits; -1 is all of what the path leads to, or unknown.
    Kind kind = Other;
    bool exact = true; ///< False if it is some part, not known which, of what it names.
};

/// Something that is known of the bits of a variable.
struct RawFact
{
    enum Kind : quint8 {
        Drive,    ///< Driven, with others of the same driver as one.
        Initial,  ///< Has a value from the start.
        Maybe,    ///< Can be driven.
        Clock,    ///< Clocks a register.
        TriState, ///< Driven by what can let go.
        Use,      ///< Read.
    };

    RawSegment target;
    quint32 driver = 0;
    Kind kind = Drive;
};

/// A name as it is referred to in a scope, or as a member of something else by `dotted`.
struct RawEntry
{
    static constexpr quint32 External = 0xffffffff;

    quint32 scope; ///< Or External.
    quint32 name;
    quint32 dotted; ///< Of an external name.
    int variable = -1;
    bool isReferenced = false;
    bool isInLoopCondition = false;
    bool isReadWhole = false;
};

struct RawVariable
{
    quint32 name;       ///< As references have it.
    QString sourceName; ///< Null if it is the same.
    quint32 type;
    quint32 scope;
    int pin = 0;
    PortDirection direction = PortDirection::None;
    bool isParameter = false;
    bool isInterface = false; ///< Refers to an interface, so it is no net.
    bool isInteger = false;
    bool isLoopIndex = false;
    bool isReferenced = false;
    bool hasConstant = false; ///< Declared with a constant value.
};

/// A named block. The first one of a module is the module itself.
struct RawScope
{
    quint32 parent;
    quint32 name;
    bool isListed;          ///< A generate scope, not a block of a process.
    std::vector<int> items; ///< Instances, and scopes as -1 - index, in order.
};

struct RawConnection
{
    quint32 port;
    int pin;
    PortDirection direction;
    quint32 firstSegment; ///< In RawModule::segments, the leftmost operand first.
    quint32 segmentCount;
};

struct RawInstance
{
    quint32 name; ///< As references have it.
    QString sourceName;
    quint32 module;
    bool isArray = false;
    Range range;
    std::vector<RawConnection> connections;
};

/// An operand of a call, of which only the callee tells whether it is written.
struct RawArgument
{
    quint32 function;
    quint32 position;
    RawSegment operand;
};

/// A continuous assignment to one exact operand.
struct RawAssignment
{
    RawSegment target;
    quint32 driver;
    quint32 firstSegment; ///< Of the value, in RawModule::segments, the leftmost operand first.
    quint32 segmentCount;
};

using FunctionPorts = QHash<quint32, QVector<PortDirection>>;

struct RawModule
{
    enum Kind { Module, Interface, Primitive, Package };

    Kind kind = Module;
    quint32 name = 0;
    QString sourceName;
    quint32 file = 0;
    std::vector<RawVariable> variables;
    std::vector<RawScope> scopes;
    std::vector<RawEntry> entries;
    std::vector<RawFact> facts;
    std::vector<RawAssignment> assignments;
    std::vector<RawInstance> instances;
    std::vector<RawSegment> segments;
    std::vector<RawArgument> arguments;
    FunctionPorts functions;
    quint32 drivers = 0;
};

struct RawDesign
{
    StringInterner names;
    XmlTypes types;
    std::vector<std::vector<qint32>> paths{{}}; ///< Constant indices of array elements.
    std::vector<RawModule> modules;
    QHash<quint32, QString> files;
    FunctionPorts packageFunctions;
    int top = -1;
};

} // namespace Standin
