// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/yosysjson.h"

#include "netlist/yosyslevels.h"

namespace Standin {

QString yosysSourceName(const QString &name)
{
    QString plain = name;
    if (plain.startsWith(QLatin1String("$paramod"))) {
        // $paramod\leaf\W=4, or $paramod$<hash>\leaf if that would be too long.
        const int begin = plain.indexOf(QLatin1Char('\\')) + 1;
        const int end = plain.indexOf(QLatin1Char('\\'), begin);
        plain = plain.mid(begin, end < 0 ? -1 : end - begin);
    }
    if (plain.startsWith(QLatin1Char('\\')))
        plain.remove(0, 1);
    const int interfaces = plain.indexOf(QLatin1String("$interfaces$"));
    return interfaces > 0 ? plain.left(interfaces) : plain;
}

// Numbers of the modules from which the design may start: the ones marked, else those that no other
// instantiates.
static std::vector<int> findTops(const YosysDesign &design, const QString &name)
{
    std::vector<bool> isChild(design.modules.size());
    for (const YosysModule &module : design.modules) {
        for (const YosysCell &cell : module.cells) {
            const int child = design.moduleByName.value(cell.type, -1);
            if (child >= 0)
                isChild[std::size_t(child)] = true;
        }
    }
    std::vector<int> named;
    std::vector<int> marked;
    std::vector<int> unused;
    for (std::size_t i = 0; i < design.modules.size(); ++i) {
        const YosysModule &module = design.modules[i];
        if (module.isBlackBox)
            continue;
        if (module.sourceName == name)
            named.push_back(int(i));
        if (module.isTop)
            marked.push_back(int(i));
        if (!isChild[i])
            unused.push_back(int(i));
    }
    if (name.isEmpty())
        return marked.empty() ? unused : marked;
    // Of several variants of a module the one that nothing instantiates is meant, or the first.
    std::stable_sort(named.begin(), named.end(), [&](int a, int b) {
        return !isChild[std::size_t(a)] && isChild[std::size_t(b)];
    });
    return named;
}

// The modules below and with \a top, each behind those below it. A module that is reached from
// itself is reported by the elaboration.
static std::vector<int> orderFromBelow(const YosysDesign &design, int top)
{
    struct Step
    {
        int module;
        std::size_t cell;
    };
    std::vector<int> order;
    std::vector<bool> seen(design.modules.size());
    std::vector<Step> stack{{top, 0}};
    seen[std::size_t(top)] = true;
    while (!stack.empty()) {
        Step &step = stack.back();
        const YosysModule &module = design.modules[std::size_t(step.module)];
        if (step.cell == module.cells.size()) {
            order.push_back(step.module);
            stack.pop_back();
            continue;
        }
        const YosysCell &cell = module.cells[step.cell++];
        const int child = design.moduleByName.value(cell.type, -1);
        const bool isModule = child >= 0 && !cell.isInterface;
        if (isModule && !seen[std::size_t(child)]
            && !design.modules[std::size_t(child)].isBlackBox) {
            seen[std::size_t(child)] = true;
            stack.push_back({child, 0});
        }
    }
    return order;
}

static bool isJtag(const YosysDesign &design, const YosysCell &cell)
{
    const int child = design.moduleByName.value(cell.type, -1);
    const QString name = child < 0 ? yosysSourceName(design.names.string(cell.type))
                                   : design.modules[std::size_t(child)].sourceName;
    return name.compare(QLatin1String("OD_JTAG"),
                        cell.isVhdl ? Qt::CaseInsensitive : Qt::CaseSensitive)
        == 0;
}

bool listYosysModules(const QString &file, const QString &top, JsonModules *modules, QString *error)
{
    YosysDesign design;
    if (!parseYosysJson(file, &design, error))
        return false;
    *modules = JsonModules();
    const std::vector<int> tops = findTops(design, top);
    std::vector<bool> used(design.modules.size(), top.isEmpty());
    if (!top.isEmpty() && !tops.empty()) {
        modules->topModules.append(top);
        for (int number : orderFromBelow(design, tops.front()))
            used[std::size_t(number)] = true;
    } else {
        for (int number : tops)
            modules->topModules.append(design.modules[std::size_t(number)].sourceName);
        modules->topModules.removeDuplicates();
    }
    for (std::size_t i = 0; i < design.modules.size(); ++i) {
        if (used[i] && !design.modules[i].isBlackBox)
            modules->modules.append(design.modules[i].sourceName);
    }
    modules->modules.removeDuplicates();
    return true;
}

bool readYosysJson(const QString &file, const JsonReadOptions &options, ModuleTable *table,
                   QString *error)
{
    YosysDesign design;
    if (!parseYosysJson(file, &design, error))
        return false;
    const std::vector<int> tops = findTops(design, options.top);
    if (tops.empty() || (options.top.isEmpty() && tops.size() > 1)) {
        *error = tops.empty() ? QStringLiteral("%1: There is no such top module").arg(file)
                              : QStringLiteral("%1: There are several top modules").arg(file);
        return false;
    }

    ModuleTable result;
    std::vector<YosysSummary> summaries(design.modules.size());
    std::vector<int> definitionOf(design.modules.size(), -1);
    for (int number : orderFromBelow(design, tops.front())) {
        const auto index = std::size_t(number);
        const YosysModule &module = design.modules[index];
        result.usesJtag = result.usesJtag
            || std::any_of(module.cells.begin(), module.cells.end(),
                           [&](const YosysCell &cell) { return isJtag(design, cell); });
        YosysFacts facts(&design, module, summaries);
        if (number == tops.front())
            facts.addTopPorts();
        summaries[index] = facts.summary();
        definitionOf[index] = writeYosysDefinitions(design, module, facts, definitionOf, &result);
    }
    result.top = definitionOf[std::size_t(tops.front())];
    *table = std::move(result);
    return true;
}

} // namespace Standin
