// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/rawdesign.h"

namespace Standin {

/// Operands that stand in a row.
struct RawOperands
{
    const RawSegment *first;
    const RawSegment *last;

    std::size_t size() const { return std::size_t(last - first); }
};

/// Writes down one module while its text is read: scopes, declarations, references, and what
/// processes do with them.
class RawModuleWriter
{
public:
    enum ProcessKind : quint8 {
        NoProcess, ///< Continuous assignments.
        Always,
        Initial,
        Function, ///< A function or task: what it writes is written by its callers.
        Final,
    };

    /// Begins \a newModule, whose name is set. Both have to stay where they are until finish().
    void begin(RawModule *newModule, std::vector<std::vector<qint32>> *designPaths);

    /// Ends the module: brings references and declarations together.
    void finish();

    bool isOpen() const { return module != nullptr; }

    /// Opens a named block. \return false if blocks are nested deeper than any author does it.
    bool openScope(quint32 name);
    void closeScope();
    bool inProcess() const { return process != NoProcess; }

    void openProcess(ProcessKind kind);
    void closeProcess();

    /// \return false if the scope has a variable of that name, which then stays the only one.
    bool addVariable(RawVariable variable);
    void addInstance(RawInstance instance);

    /// The operand that \a name is here; it counts as referred to.
    RawSegment reference(quint32 name);

    /// As reference(), for the member \a name of what \a dotted leads to.
    RawSegment externalReference(quint32 dotted, quint32 name);

    /// \a operand's element \a index, counted from the lowest.
    void selectElement(RawSegment *operand, qint32 index);

    void read(const RawSegment &operand);
    void add(const RawSegment &operand, RawFact::Kind kind);

    /// The process that is open is triggered by an edge of \a clock, or of a reset: of several
    /// edges those that the process reads besides are no clocks.
    void addEdge(const RawSegment &clock);

    /// References between the two calls are in the condition of a loop.
    void beginLoopCondition() { ++loopConditions; }
    void endLoopCondition() { --loopConditions; }

    /// The operands \a targets are assigned the operands \a values, the leftmost first in both;
    /// \a letsGo tells that the value may be high impedance.
    void assign(RawOperands targets, RawOperands values, bool letsGo);

    /// The port directions of the function whose text is read.
    void addFunctionPort(quint32 function, PortDirection direction);

private:
    struct Edge
    {
        RawSegment clock;
        bool isRead;
    };

    quint32 entryHere(quint32 name);
    bool isSame(quint32 outer, quint32 index) const;
    RawSegment markReference(quint32 entry);

    RawModule *module = nullptr;
    std::vector<std::vector<qint32>> *paths = nullptr;
    QHash<quint64, quint32> entryIndex;
    QHash<quint64, quint32> externalIndex;
    quint32 scope = 0;
    int depth = 0;

    ProcessKind process = NoProcess;
    quint32 processDriver = 0;
    std::vector<Edge> edges;
    int loopConditions = 0;
};

} // namespace Standin
