// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/verilatorxml.h"

#include "netlist/definitionwriter.h"
#include "netlist/memberaccess.h"
#include "netlist/moduleorder.h"
#include "netlist/xmldesignreader.h"

#include <QFile>
#include <QFileInfo>

namespace Standin {

// What there is to know of a module before its facts.
struct ModuleOrigin
{
    QString name;
    bool isVhdl = false;
    bool isBlackBox = false;
};

static std::vector<ModuleOrigin> findOrigins(const RawDesign &design, const XmlReadOptions &options)
{
    std::vector<ModuleOrigin> origins;
    origins.reserve(design.modules.size());
    for (const RawModule &module : design.modules) {
        const QString file = design.files.value(module.file);
        ModuleOrigin origin;
        const QString name = design.names.string(module.name);
        // A module with parameters has a name for each set of them.
        const QString known = options.sourceNames.contains(name) ? name : module.sourceName;
        origin.name = options.sourceNames.value(known, module.sourceName);
        origin.isVhdl = options.vhdlFiles.contains(file);
        // A component without an entity comes out of the translation as a module with ports alone.
        const bool isEmpty = module.facts.empty() && module.instances.empty()
            && !options.sourceNames.contains(known);
        origin.isBlackBox = options.blackBoxFiles.contains(file) || (origin.isVhdl && isEmpty);
        origins.push_back(origin);
    }
    return origins;
}

// Whether the module instantiates the primitive. VHDL doesn't tell letters of both cases apart.
static bool instantiatesJtag(const RawDesign &design, int number,
                             const QHash<quint32, int> &moduleByName,
                             const std::vector<ModuleOrigin> &origins)
{
    const RawModule &module = design.modules[std::size_t(number)];
    for (const RawInstance &instance : module.instances) {
        const int child = moduleByName.value(instance.module, -1);
        if (child < 0)
            continue;
        const ModuleOrigin &origin = origins[std::size_t(child)];
        const bool anyCase = origin.isVhdl || origins[std::size_t(number)].isVhdl;
        if (origin.name.compare(QLatin1String("OD_JTAG"),
                                anyCase ? Qt::CaseInsensitive : Qt::CaseSensitive)
            == 0)
            return true;
    }
    return false;
}

// \return the number of a module that contains itself, or -1.
static int makeTable(RawDesign *design, const XmlReadOptions &options, ModuleTable *result)
{
    QHash<quint32, int> moduleByName;
    for (std::size_t i = 0; i < design->modules.size(); ++i)
        moduleByName.insert(design->modules[i].name, int(i));
    const auto child = [&](int number, std::size_t i) {
        const auto &instances = design->modules[std::size_t(number)].instances;
        return i == instances.size() ? -2 : moduleByName.value(instances[i].module, -1);
    };
    int looping = -1;
    const std::vector<int> order =
        modulesFromBelow(design->top, design->modules.size(), child, &looping);
    if (looping >= 0)
        return looping;
    const MemberAccess members(design, moduleByName, order);

    const std::vector<ModuleOrigin> origins = findOrigins(*design, options);
    ModuleTable table;
    for (int number : order)
        table.usesJtag = table.usesJtag || instantiatesJtag(*design, number, moduleByName, origins);

    ModuleFacts::Summaries summaries(design->modules.size());
    std::vector<int> definitionOf(design->modules.size(), -1);
    for (int number : order) {
        const ModuleOrigin &origin = origins[std::size_t(number)];
        if (origin.isBlackBox)
            continue;
        RawModule &module = design->modules[std::size_t(number)];
        const DefinitionTraits traits{origin.name, number == design->top, origin.isVhdl};
        ModuleFacts facts(design, module, moduleByName, summaries);
        facts.add(members.factsOf(number));
        facts.settle();
        summaries[std::size_t(number)] = facts.summary();
        if (module.kind != RawModule::Primitive)
            definitionOf[std::size_t(number)] =
                writeDefinitions(design, module, facts, traits, moduleByName, definitionOf, &table);
        module = RawModule(); // What others need of it is in its summary.
    }
    table.top = definitionOf[std::size_t(design->top)];
    *result = std::move(table);
    return -1;
}

bool readVerilatorXml(const QString &file, const XmlReadOptions &options, ModuleTable *table,
                      QString *error)
{
    QFile device(file);
    if (!QFileInfo(file).isFile()) {
        *error = QStringLiteral("%1: No such file").arg(file);
        return false;
    }
    if (!device.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(file, device.errorString());
        return false;
    }
    RawDesign design;
    XmlDesignReader reader;
    if (!reader.read(&device, &design)) {
        *error = QStringLiteral("%1:%2").arg(file, reader.errorText());
        return false;
    }
    ModuleTable result;
    const int looping = makeTable(&design, options, &result);
    if (looping >= 0) {
        *error = QStringLiteral("%1: Module \"%2\" contains itself")
                     .arg(file, design.modules[std::size_t(looping)].sourceName);
        return false;
    }
    if (result.top < 0) {
        *error = QStringLiteral("%1: The top module is a black box").arg(file);
        return false;
    }
    *table = std::move(result);
    return true;
}

} // namespace Standin
