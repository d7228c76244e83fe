// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/yosysjson.h"

#include "netlist/moduleorder.h"
#include "netlist/yosyslevels.h"

#include <algorithm>

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

static std::vector<int> orderFromBelow(const YosysDesign &design, int top, int *looping)
{
    const auto child = [&](int number, std::size_t i) {
        const auto &cells = design.modules[std::size_t(number)].cells;
        if (i == cells.size())
            return -2;
        const int below = design.moduleByName.value(cells[i].type, -1);
        const bool isModule =
            below >= 0 && !cells[i].isInterface && !design.modules[std::size_t(below)].isBlackBox;
        return isModule ? below : -1;
    };
    return modulesFromBelow(top, design.modules.size(), child, looping);
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
        int looping = -1;
        for (int number : orderFromBelow(design, tops.front(), &looping))
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

    int looping = -1;
    const std::vector<int> order = orderFromBelow(design, tops.front(), &looping);
    if (looping >= 0) {
        *error = QStringLiteral("%1: Module \"%2\" contains itself")
                     .arg(file, design.modules[std::size_t(looping)].sourceName);
        return false;
    }
    ModuleTable result;
    std::vector<YosysSummary> summaries(design.modules.size());
    std::vector<int> definitionOf(design.modules.size(), -1);
    for (int number : order) {
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
