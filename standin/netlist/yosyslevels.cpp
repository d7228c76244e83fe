// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/yosyslevels.h"

#include "netlist/pathname.h"

#include <algorithm>
#include <tuple>

namespace Standin {

// Levels nest as deep as modules do in a design; what nests deeper is left where it is.
static constexpr int MaximumSteps = 1000;

// A level on the way to being a definition.
struct YosysLevel
{
    struct Child
    {
        QString name;
        int level;      ///< Or -1 for an instance.
        int definition; ///< Of an instance.
        YosysPlace place;
    };

    QString moduleName;
    QHash<QString, int> byName; ///< Levels below.
    std::vector<Child> children;
    std::vector<const YosysNet *> nets;
};

// A letter or underscore, then letters, digits, underscores and dollars, and an index or none.
static bool isScopeName(QStringView name)
{
    const auto bracket = name.indexOf(QLatin1Char('['));
    QStringView word = name;
    if (bracket >= 0) {
        QByteArray base;
        qint32 index = 0;
        if (!splitIndex(name.toUtf8(), &base, &index))
            return false;
        word = name.left(bracket);
        if (base.size() != word.toUtf8().size())
            return false;
    }
    if (word.isEmpty() || word.at(0).isDigit() || word.at(0) == QLatin1Char('$'))
        return false;
    return std::all_of(word.begin(), word.end(), [](QChar c) {
        return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('$');
    });
}

// A step of a path is an instance or a net, with the generate scopes around it ahead: g[0].u. A
// name with a dot that can't be that is an escaped one.
static QStringList scopesOf(const QString &step)
{
    const QStringList parts = step.split(QLatin1Char('.'));
    const bool isPath = parts.size() > 1 && parts.size() <= MaximumSteps
        && std::all_of(parts.begin(), parts.end(),
                       [](const QString &part) { return isScopeName(part); });
    return isPath ? parts : QStringList(step);
}

class LevelTree
{
public:
    LevelTree(const YosysDesign &wholeDesign, const YosysModule &yosysModule)
        : design(wholeDesign)
        , module(yosysModule)
    {
        levels.push_back({module.sourceName, {}, {}, {}});
    }

    void fill(const std::vector<int> &definitionOf);
    int write(const YosysFacts &facts, ModuleTable *table);

private:
    int levelBelow(int parent, const QString &name, const QString &moduleName,
                   const YosysPlace &place);
    int levelOf(const QString &name, const QString &path, const YosysPlace &place, QString *last);
    void addCells(const std::vector<int> &definitionOf);
    void addNets();
    void sort(YosysLevel *level);
    NetDeclaration declaration(const YosysNet &net, const QString &name,
                               const YosysFacts &facts) const;

    const YosysDesign &design;
    const YosysModule &module;
    std::vector<YosysLevel> levels;
    QHash<const YosysNet *, QString> shortNames;
};

int LevelTree::levelBelow(int parent, const QString &name, const QString &moduleName,
                          const YosysPlace &place)
{
    const auto known = levels[std::size_t(parent)].byName.constFind(name);
    if (known != levels[std::size_t(parent)].byName.constEnd()) {
        const int level = *known;
        if (levels[std::size_t(level)].moduleName.isEmpty())
            levels[std::size_t(level)].moduleName = moduleName;
        return level;
    }
    const auto level = int(levels.size());
    levels[std::size_t(parent)].byName.insert(name, level);
    levels[std::size_t(parent)].children.push_back({name, level, -1, place});
    levels.push_back({moduleName, {}, {}, {}});
    return level;
}

// The level in which something stands whose name may lead through other levels. The module of a
// flattened instance isn't told by the names.
int LevelTree::levelOf(const QString &name, const QString &path, const YosysPlace &place,
                       QString *last)
{
    QStringList steps(name);
    if (!path.isEmpty())
        steps = path.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (steps.isEmpty() || steps.size() > MaximumSteps)
        steps = QStringList(name);
    int level = 0;
    for (int i = 0; i < steps.size(); ++i) {
        const QStringList scopes = scopesOf(steps.at(i));
        for (int k = 0; k + 1 < scopes.size(); ++k)
            level = levelBelow(level, scopes.at(k), generateScopeModule(), place);
        *last = scopes.last();
        if (i + 1 < steps.size())
            level = levelBelow(level, *last, QString(), place);
    }
    return level;
}

void LevelTree::addCells(const std::vector<int> &definitionOf)
{
    for (const YosysCell &cell : module.cells) {
        const QString type = design.names.string(cell.type);
        const bool tellsLevel = cell.isInterface || type == QLatin1String("$scopeinfo");
        const int child = design.moduleByName.value(cell.type, -1);
        const int definition = child < 0 ? -1 : definitionOf[std::size_t(child)];
        if (!tellsLevel && definition < 0)
            continue;
        QString name;
        const int parent = levelOf(cell.name, cell.path, cell.place, &name);
        if (!tellsLevel) {
            levels[std::size_t(parent)].children.push_back({name, -1, definition, cell.place});
            continue;
        }
        const QString moduleName = cell.isInterface ? yosysSourceName(type) : cell.scopeModule;
        if (!moduleName.isEmpty())
            levelBelow(parent, name, moduleName, cell.place);
    }
}

void LevelTree::addNets()
{
    // A memory that was turned into registers is as little a net as one that wasn't.
    QHash<QByteArray, int> elements;
    const auto arrayOf = [](const YosysNet &net) {
        QByteArray base;
        qint32 index = 0;
        const QByteArray whole = net.path.isEmpty() ? net.name.toUtf8() : net.path.toUtf8();
        return splitIndex(whole, &base, &index) ? base : QByteArray();
    };
    for (const YosysNet &net : module.nets) {
        const QByteArray array = arrayOf(net);
        if (!array.isEmpty())
            ++elements[array];
    }
    for (const YosysNet &net : module.nets) {
        const QByteArray array = arrayOf(net);
        if (net.bits.count == 0 || (!array.isEmpty() && elements.value(array) > 64))
            continue;
        QString name;
        const int level = levelOf(net.name, net.path, net.place, &name);
        levels[std::size_t(level)].nets.push_back(&net);
        shortNames.insert(&net, name);
    }
}

void LevelTree::fill(const std::vector<int> &definitionOf)
{
    addCells(definitionOf);
    addNets();
    for (YosysLevel &level : levels)
        sort(&level);
}

// Elements of an array or of a generate loop are declared at one place, and come by their index.
static std::tuple<YosysPlace, QByteArray, qint32> sourceOrder(const YosysPlace &place,
                                                              const QString &name)
{
    QByteArray base = name.toUtf8();
    qint32 index = 0;
    splitIndex(base, &base, &index);
    return {place, base, index};
}

void LevelTree::sort(YosysLevel *level)
{
    std::stable_sort(level->nets.begin(), level->nets.end(),
                     [this](const YosysNet *a, const YosysNet *b) {
                         return sourceOrder(a->place, shortNames.value(a))
                             < sourceOrder(b->place, shortNames.value(b));
                     });
    std::stable_sort(level->children.begin(), level->children.end(),
                     [](const YosysLevel::Child &a, const YosysLevel::Child &b) {
                         return sourceOrder(a.place, a.name) < sourceOrder(b.place, b.name);
                     });
}

NetDeclaration LevelTree::declaration(const YosysNet &net, const QString &name,
                                      const YosysFacts &facts) const
{
    NetDeclaration result;
    result.name = name;
    result.isBus = net.hasRange || net.bits.count > 1;
    const auto highest = qint32(qint64(net.offset) + net.bits.count - 1);
    result.range = net.goesUp ? Range{net.offset, highest} : Range{highest, net.offset};
    bool any = false;
    for (quint32 i = net.bits.count; i-- > 0;) {
        const NetFlags flags = facts.flags(design.bits[net.bits.begin + i]);
        result.flags += char(int(flags));
        any = any || flags;
    }
    if (!any)
        result.flags.clear();
    return result;
}

int LevelTree::write(const YosysFacts &facts, ModuleTable *table)
{
    // Levels below stand behind, so going backwards finds them done.
    std::vector<int> definitions(levels.size(), -1);
    for (std::size_t i = levels.size(); i-- > 0;) {
        const YosysLevel &level = levels[i];
        ModuleDefinition definition(level.moduleName);
        for (const YosysNet *net : level.nets)
            definition.addNet(declaration(*net, shortNames.value(net), facts));
        for (const YosysLevel::Child &child : level.children) {
            const int below =
                child.level < 0 ? child.definition : definitions[std::size_t(child.level)];
            definition.addInstance(child.name, below);
        }
        definition.seal();
        definitions[i] = int(table->definitions.size());
        table->definitions.push_back(std::move(definition));
    }
    return definitions.front();
}

int writeYosysDefinitions(const YosysDesign &design, const YosysModule &module,
                          const YosysFacts &facts, const std::vector<int> &definitionOf,
                          ModuleTable *table)
{
    LevelTree tree(design, module);
    tree.fill(definitionOf);
    return tree.write(facts, table);
}

} // namespace Standin
