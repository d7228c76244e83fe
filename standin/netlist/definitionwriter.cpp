// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/definitionwriter.h"

#include <QHash>
#include <QRegularExpression>

namespace Standin {

bool isToolName(const QString &name, bool isVhdl)
{
    // A signal in a generate statement has a name such as "lane_n1_data".
    static const QRegularExpression ofGhdl(
        QStringLiteral("(^|\\.)n\\d+(_[a-z]+)?$|_n\\d+(_(o|q|oport))?$"));
    static const QLatin1String marks[] = {
        QLatin1String("__Vcell"), QLatin1String("__Viftop"),   QLatin1String("__Vfunc"),
        QLatin1String("__Vtask"), QLatin1String("__Vlvbound"), QLatin1String("__pinNumber")};
    if (isVhdl && ofGhdl.match(name).hasMatch())
        return true;
    if (!name.contains(QLatin1String("__")))
        return false;
    return name.startsWith(QLatin1String("__V"))
        || std::any_of(std::begin(marks), std::end(marks),
                       [&name](QLatin1String mark) { return name.contains(mark); });
}

// The facts of a net count from the lowest index and bit, its flags from the left.
static QByteArray flagsFromLeft(const NetShape &shape, const BitFacts *facts, bool isTop,
                                PortDirection direction)
{
    const bool isTopPort = isTop && direction != PortDirection::None;
    const auto flagsAt = [&](qint64 bit) {
        NetFlags flags = flagsOf(facts[bit]);
        if (isTopPort)
            flags |= flagsOfTopPort(facts[bit], direction != PortDirection::Out);
        return char(int(flags));
    };
    const qint64 elements = shape.elements();
    bool any = false;
    for (qint64 bit = 0; bit < elements * shape.width && !any; ++bit)
        any = flagsAt(bit) != 0;
    if (!any)
        return QByteArray();
    QByteArray flags;
    flags.reserve(int(elements * shape.width));
    for (qint64 element = 0; element < elements; ++element) {
        qint64 fromLowest = 0;
        qint64 rest = element;
        qint64 stride = 1;
        for (int i = shape.dimensions.size() - 1; i >= 0; --i) {
            const Range &dimension = shape.dimensions.at(i);
            const qint64 position = rest % dimension.size();
            fromLowest += stride
                * (dimension.left >= dimension.right ? dimension.size() - 1 - position : position);
            stride *= dimension.size();
            rest /= dimension.size();
        }
        for (qint64 bit = shape.width - 1; bit >= 0; --bit)
            flags += flagsAt(fromLowest * shape.width + bit);
    }
    return flags;
}

// The translation from VHDL writes blanks in names as tildes.
static QString withBlanks(const QString &name, bool isVhdl)
{
    return isVhdl ? QString(name).replace(QLatin1Char('~'), QLatin1Char(' ')) : name;
}

// Instances and scopes whose own definitions are there already.
class ScopeWriter
{
public:
    ScopeWriter(const RawModule &rawModule, const QHash<quint32, int> &modulesByName,
                const std::vector<int> &definitionsOf, bool isOfVhdl)
        : module(rawModule)
        , isVhdl(isOfVhdl)
        , moduleByName(modulesByName)
        , definitionOf(definitionsOf)
        , definitionOfScope(rawModule.scopes.size(), -1)
    {
    }

    void setDefinition(std::size_t scope, int definition) { definitionOfScope[scope] = definition; }

    void addItems(const RawDesign &design, std::size_t scope, ModuleDefinition *definition) const
    {
        for (int item : module.scopes[scope].items) {
            if (item < 0) {
                const auto inner = std::size_t(-1 - item);
                if (definitionOfScope[inner] >= 0)
                    definition->addInstance(design.names.string(module.scopes[inner].name),
                                            definitionOfScope[inner]);
                continue;
            }
            const RawInstance &instance = module.instances[std::size_t(item)];
            const int child = moduleByName.value(instance.module, -1);
            const int number = child < 0 ? -1 : definitionOf[std::size_t(child)];
            if (number < 0)
                continue;
            const QString name = withBlanks(instance.sourceName, isVhdl);
            if (instance.isArray)
                definition->addInstanceArray(name, number, instance.range);
            else
                definition->addInstance(name, number);
        }
    }

private:
    const RawModule &module;
    bool isVhdl;
    const QHash<quint32, int> &moduleByName;
    const std::vector<int> &definitionOf;
    std::vector<int> definitionOfScope;
};

// The names of the wires that GHDL makes of what instances drive. Of a black box it isn't known
// what it drives.
static QHash<QString, bool> instanceWires(const RawDesign &design, const RawModule &module)
{
    QHash<QString, bool> isOutput;
    for (const RawInstance &instance : module.instances) {
        for (const RawConnection &connection : instance.connections)
            isOutput.insert(instance.sourceName + QLatin1Char('_')
                                + design.names.string(connection.port),
                            connection.direction != PortDirection::In);
    }
    return isOutput;
}

int writeDefinitions(RawDesign *design, const RawModule &module, const ModuleFacts &facts,
                     const DefinitionTraits &traits, const QHash<quint32, int> &moduleByName,
                     const std::vector<int> &definitionOf, ModuleTable *table)
{
    std::vector<ModuleDefinition> own;
    own.reserve(module.scopes.size());
    for (std::size_t scope = 0; scope < module.scopes.size(); ++scope)
        own.emplace_back(scope == 0 ? traits.moduleName : generateScopeModule());
    const QHash<QString, bool> wires =
        traits.isVhdl ? instanceWires(*design, module) : QHash<QString, bool>();
    for (std::size_t i = 0; i < module.variables.size(); ++i) {
        const RawVariable &variable = module.variables[i];
        const BitFacts *bits = facts.of(i);
        if (!bits || !module.scopes[variable.scope].isListed)
            continue;
        const QString name = variable.sourceName.isNull() ? design->names.string(variable.name)
                                                          : variable.sourceName;
        const auto wire = wires.constFind(name);
        const bool isDriven = (*bits & (Driven | MaybeDriven | HasInitialValue)) != 0;
        const bool isWire = variable.direction == PortDirection::None && wire != wires.constEnd()
            && (*wire || ((*bits & OnPin) && !isDriven));
        if (isWire || isToolName(name, traits.isVhdl))
            continue;
        const NetShape &shape = design->types.shape(variable.type);
        NetDeclaration net;
        net.name = withBlanks(name, traits.isVhdl);
        net.dimensions = shape.dimensions;
        net.isBus = shape.isBus;
        net.range = shape.range;
        net.flags = flagsFromLeft(shape, bits, traits.isTop, variable.direction);
        own[variable.scope].addNet(net);
    }

    // Inner scopes stand behind outer ones, so going backwards finds them done.
    ScopeWriter scopes(module, moduleByName, definitionOf, traits.isVhdl);
    for (std::size_t scope = own.size(); scope-- > 0;) {
        ModuleDefinition &definition = own[scope];
        if (!module.scopes[scope].isListed)
            continue;
        scopes.addItems(*design, scope, &definition);
        const bool isEmpty = definition.singles().empty() && definition.buses().empty()
            && definition.instances().empty();
        if (scope > 0 && isEmpty)
            continue;
        definition.seal();
        scopes.setDefinition(scope, int(table->definitions.size()));
        table->definitions.push_back(std::move(definition));
    }
    return int(table->definitions.size()) - 1;
}

} // namespace Standin
