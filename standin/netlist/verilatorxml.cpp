// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/verilatorxml.h"

#include "netlist/definitionwriter.h"
#include "netlist/memberaccess.h"
#include "netlist/xmldesignreader.h"

#include <QFile>
#include <QFileInfo>

namespace Standin {

// Modules from the top downwards, each behind those below it. One that is reached from itself is
// taken as a black box there; the elaboration reports it.
static std::vector<int> orderFromBelow(const RawDesign &design,
                                       const QHash<quint32, int> &moduleByName)
{
    struct Step
    {
        int module;
        std::size_t instance;
    };
    std::vector<int> order;
    std::vector<bool> seen(design.modules.size());
    std::vector<Step> stack{{design.top, 0}};
    seen[std::size_t(design.top)] = true;
    while (!stack.empty()) {
        Step &step = stack.back();
        const RawModule &module = design.modules[std::size_t(step.module)];
        if (step.instance == module.instances.size()) {
            order.push_back(step.module);
            stack.pop_back();
            continue;
        }
        const int child = moduleByName.value(module.instances[step.instance++].module, -1);
        if (child >= 0 && !seen[std::size_t(child)]) {
            seen[std::size_t(child)] = true;
            stack.push_back({child, 0});
        }
    }
    return order;
}

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
        origin.name =
            options.sourceNames.value(design.names.string(module.name), module.sourceName);
        origin.isVhdl = options.vhdlFiles.contains(file);
        // A component without an entity comes out of the translation as a module with ports alone.
        const bool isEmpty = module.facts.empty() && module.instances.empty();
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

static ModuleTable makeTable(RawDesign *design, const XmlReadOptions &options)
{
    QHash<quint32, int> moduleByName;
    for (std::size_t i = 0; i < design->modules.size(); ++i)
        moduleByName.insert(design->modules[i].name, int(i));
    const std::vector<int> order = orderFromBelow(*design, moduleByName);
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
    return table;
}

bool readVerilatorXml(const QString &file, const XmlReadOptions &options, ModuleTable *table,
                      QString *error)
{
    QFile device(file);
    if (!QFileInfo(file).isFile() || !device.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(file, device.errorString());
        return false;
    }
    RawDesign design;
    XmlDesignReader reader;
    if (!reader.read(&device, &design)) {
        *error = QStringLiteral("%1:%2").arg(file, reader.errorText());
        return false;
    }
    ModuleTable result = makeTable(&design, options);
    if (result.top < 0) {
        *error = QStringLiteral("%1: The top module is a black box").arg(file);
        return false;
    }
    *table = std::move(result);
    return true;
}

} // namespace Standin
