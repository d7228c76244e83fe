// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/designgraph.h"

#include <QMap>
#include <QSet>

#include <algorithm>
#include <vector>

namespace Standin {

void DesignGraph::add(const ScannedModule &module)
{
    places.append({module.name, module.begin, module.end});
    const auto known = index.constFind(module.name);
    if (known != index.constEnd()) {
        modules[known.value()].instances += module.instances;
        return;
    }
    index.insert(module.name, modules.size());
    if (module.isVhdl)
        vhdlIndex.insert(module.name.toLower(), modules.size());
    modules.append(module);
}

void DesignGraph::addInstance(const QByteArray &module, const InstanceUse &use)
{
    const int at = indexOf(module);
    if (at >= 0)
        modules[at].instances.append(use);
}

int DesignGraph::indexOf(const QByteArray &name) const
{
    const int exact = index.value(name, -1);
    return exact >= 0 || vhdlIndex.isEmpty() ? exact : vhdlIndex.value(name.toLower(), -1);
}

const ScannedModule *DesignGraph::find(const QByteArray &name) const
{
    const int at = indexOf(name);
    return at >= 0 ? &modules.at(at) : nullptr;
}

QStringList DesignGraph::tops() const
{
    QVector<bool> used(modules.size(), false);
    for (int i = 0; i < modules.size(); ++i) {
        for (const InstanceUse &use : modules.at(i).instances) {
            const int type = indexOf(use.type);
            if (type >= 0 && type != i)
                used[type] = true;
        }
    }
    QStringList names;
    for (int i = 0; i < modules.size(); ++i) {
        if (!used.at(i) && modules.at(i).kind == ScannedModule::Module)
            names.append(QString::fromUtf8(modules.at(i).name));
    }
    return names;
}

QStringList DesignGraph::moduleNames() const
{
    QStringList names;
    for (const ScannedModule &module : modules) {
        if (module.kind == ScannedModule::Module)
            names.append(QString::fromUtf8(module.name));
    }
    return names;
}

QStringList DesignGraph::modulesBelow(const QByteArray &top) const
{
    const int first = indexOf(top);
    if (first < 0 || modules.at(first).kind != ScannedModule::Module)
        return QStringList();
    QVector<bool> reached(modules.size(), false);
    QVector<int> pending = {first};
    reached[first] = true;
    while (!pending.isEmpty()) {
        const int at = pending.takeLast();
        for (const InstanceUse &use : modules.at(at).instances) {
            const int type = indexOf(use.type);
            if (type < 0 || reached.at(type))
                continue;
            reached[type] = true;
            pending.append(type);
        }
    }
    QStringList names;
    for (int i = 0; i < modules.size(); ++i) {
        if (reached.at(i) && modules.at(i).kind == ScannedModule::Module)
            names.append(QString::fromUtf8(modules.at(i).name));
    }
    return names;
}

QVector<InstanceUse> DesignGraph::closingCircles() const
{
    enum State { Unknown, Open, Done };
    struct Step
    {
        int module;
        int instance;
    };
    QVector<InstanceUse> closing;
    std::vector<State> states(std::size_t(modules.size()), Unknown);
    std::vector<Step> stack;
    for (int first = 0; first < modules.size(); ++first) {
        if (states[std::size_t(first)] == Unknown)
            stack.push_back({first, 0});
        while (!stack.empty()) {
            Step &step = stack.back();
            const int at = step.module;
            states[std::size_t(at)] = Open;
            if (step.instance == modules.at(at).instances.size()) {
                states[std::size_t(at)] = Done;
                stack.pop_back();
                continue;
            }
            const InstanceUse &use = modules.at(at).instances.at(step.instance++);
            const int type = indexOf(use.type);
            if (type < 0 || type == at)
                continue;
            if (states[std::size_t(type)] == Open)
                closing.append(use);
            else if (states[std::size_t(type)] == Unknown)
                stack.push_back({type, 0});
        }
    }
    return closing;
}

QList<QByteArray> DesignGraph::unknownTypes() const
{
    QSet<QByteArray> unknown;
    for (const ScannedModule &module : modules) {
        for (const InstanceUse &use : module.instances) {
            if (indexOf(use.type) < 0)
                unknown.insert(use.type);
        }
    }
    QList<QByteArray> sorted = unknown.values();
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

ModuleLists moduleLists(const DesignGraph &graph, const QString &top)
{
    ModuleLists lists;
    if (top.isEmpty()) {
        lists.topModules = graph.tops();
        lists.modules = graph.moduleNames();
        return lists;
    }
    lists.modules = graph.modulesBelow(top.toUtf8());
    if (!lists.modules.isEmpty())
        lists.topModules.append(top);
    return lists;
}

/// What the instances of one unknown type use of it.
struct StubShape
{
    QMap<QByteArray, bool> ports;
    QMap<QByteArray, bool> parameters; ///< True for one that takes a type.
    int positionalPorts = 0;
    QVector<bool> positionalParameters;
};

static void collect(const InstanceUse &use, StubShape *shape)
{
    int position = 0;
    for (const ConnectionUse &port : use.ports) {
        if (port.name.isEmpty())
            ++position;
        else
            shape->ports.insert(port.name, false);
    }
    shape->positionalPorts = std::max(shape->positionalPorts, position);
    position = 0;
    for (const ConnectionUse &parameter : use.parameters) {
        if (!parameter.name.isEmpty()) {
            bool &isType = shape->parameters[parameter.name];
            isType = isType || parameter.isType;
            continue;
        }
        if (position == shape->positionalParameters.size())
            shape->positionalParameters.append(false);
        if (parameter.isType)
            shape->positionalParameters[position] = true;
        ++position;
    }
}

static bool isPlainName(const QByteArray &name)
{
    return std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
            || c == '_';
    });
}

/// The name as Verilog has to write it. Digits never come first: such a name is an escaped one in
/// the source already, and escaping a plain name changes nothing.
static QByteArray written(const QByteArray &name)
{
    const bool plain = isPlainName(name) && !(name.at(0) >= '0' && name.at(0) <= '9');
    return plain ? name : '\\' + name + ' ';
}

static QByteArray stub(const QByteArray &type, const StubShape &shape,
                       const QByteArray &body = QByteArray())
{
    QList<QByteArray> parameters;
    for (int i = 0; i < shape.positionalParameters.size(); ++i) {
        const QByteArray name = "molk_parameter" + QByteArray::number(i);
        parameters.append(shape.positionalParameters.at(i) ? "type " + name + " = logic"
                                                           : name + " = 0");
    }
    for (auto it = shape.parameters.begin(); it != shape.parameters.end(); ++it)
        parameters.append(it.value() ? "type " + written(it.key()) + " = logic"
                                     : written(it.key()) + " = 0");

    QList<QByteArray> ports;
    for (int i = 0; i < shape.positionalPorts; ++i)
        ports.append("input wire molk_port" + QByteArray::number(i));
    for (auto it = shape.ports.begin(); it != shape.ports.end(); ++it)
        ports.append("input wire " + written(it.key()));

    QByteArray text = "module " + written(type);
    if (!parameters.isEmpty())
        text += " #(parameter " + parameters.join(", parameter ") + ')';
    return text + " (" + ports.join(", ") + "); " + body + "endmodule\n";
}

QByteArray stubModules(const DesignGraph &graph)
{
    QMap<QByteArray, StubShape> shapes;
    const auto types = graph.unknownTypes();
    for (const QByteArray &type : types)
        shapes.insert(type, StubShape());
    for (const ScannedModule &module : graph.all()) {
        for (const InstanceUse &use : module.instances) {
            const auto shape = shapes.find(use.type);
            if (shape != shapes.end())
                collect(use, &shape.value());
        }
    }
    QByteArray text;
    for (auto it = shapes.begin(); it != shapes.end(); ++it)
        text += stub(it.key(), it.value());
    return text;
}

QByteArray withModules(const QByteArray &text, const DesignGraph &graph,
                       const QSet<QByteArray> &names)
{
    QByteArray rest = text;
    for (const DesignGraph::Place &place : graph.declarations()) {
        if (graph.find(place.name)->kind != ScannedModule::Module || names.contains(place.name))
            continue;
        for (quint32 at = place.begin; at < place.end; ++at) {
            if (rest.at(int(at)) != '\n')
                rest[int(at)] = ' ';
        }
    }
    return rest;
}

QByteArray hollowModule(const DesignGraph &graph, const QByteArray &name)
{
    StubShape shape;
    for (const ScannedModule &module : graph.all()) {
        for (const InstanceUse &use : module.instances) {
            if (use.type == name)
                collect(use, &shape);
        }
    }
    QByteArray body;
    QSet<QByteArray> taken;
    const ScannedModule *hollow = graph.find(name);
    for (const InstanceUse &use : hollow ? hollow->instances : QVector<InstanceUse>()) {
        // Of branches that exclude each other the first stands for all.
        const ScannedModule *type = graph.find(use.type);
        if (!type || type->kind == ScannedModule::Primitive || taken.contains(use.name))
            continue;
        taken.insert(use.name);
        body += written(use.type) + ' ' + written(use.name) + "(); ";
    }
    return stub(name, shape, body);
}

} // namespace Standin
