// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "plainsearch.h"

#include <QRegularExpression>

namespace Plain {

// Whole match of a wildcard pattern: any run, any one character, one of a set, and a backslash that
// makes what follows plain.
static bool matchesWildcard(const QString &pattern, const QString &name)
{
    if (pattern.isEmpty())
        return name.isEmpty();
    const QChar first = pattern.at(0);
    if (first == '*') {
        return matchesWildcard(pattern.mid(1), name)
            || (!name.isEmpty() && matchesWildcard(pattern, name.mid(1)));
    }
    if (name.isEmpty())
        return false;
    if (first == '?')
        return matchesWildcard(pattern.mid(1), name.mid(1));
    const int end = first == '[' ? pattern.indexOf(']', 2) : -1;
    if (end > 0) {
        return pattern.mid(1, end - 1).contains(name.at(0))
            && matchesWildcard(pattern.mid(end + 1), name.mid(1));
    }
    const int plain = first == '\\' && pattern.size() > 1 ? 1 : 0;
    return pattern.at(plain) == name.at(0) && matchesWildcard(pattern.mid(plain + 1), name.mid(1));
}

static bool matches(const Search &search, const QString &name)
{
    if (search.pattern.isEmpty())
        return true;
    const bool fold = !search.caseSensitive;
    const QString pattern = fold ? search.pattern.toLower() : search.pattern;
    const QString text = fold ? name.toLower() : name;
    switch (search.syntax) {
    case Syntax::Normal:
        return text.contains(pattern);
    case Syntax::Wildcard:
        return matchesWildcard(pattern, text);
    case Syntax::Expression:
        break;
    }
    const QRegularExpression expression(QRegularExpression::anchoredPattern(search.pattern),
                                        fold ? QRegularExpression::CaseInsensitiveOption
                                             : QRegularExpression::NoPatternOption);
    return expression.isValid() && expression.match(name).hasMatch();
}

static Found rowOf(const Signal &item, int depth, const QString &text)
{
    Found row;
    row.text = text;
    row.depth = depth;
    row.hasItem = true;
    row.item = item;
    row.selectable = item.selectable;
    return row;
}

// The bits of a flat list carry no item; those of the hierarchy view do.
static void addBus(QList<Found> *rows, const Design &design, int level, const Bus &bus, int type,
                   int depth, bool shortNames)
{
    const Signal item = design.signalOf(level, bus, type);
    rows->append(rowOf(item, depth, shortNames ? bus.name : item.name));
    for (int i = 0; i < item.members.size(); ++i) {
        const Signal &bit = item.members.at(i);
        Found row = rowOf(bit, depth + 1, shortNames ? bus.bits.at(i).name : bit.name);
        row.hasItem = shortNames;
        rows->append(row);
    }
}

static void addHits(QList<Found> *rows, const Design &design, const Search &search, int level,
                    int type, int depth, bool shortNames)
{
    const QString prefix = design.path(level) + '/';
    for (const Bus &bus : design.levels.at(level).buses) {
        if (matches(search, prefix + bus.name))
            addBus(rows, design, level, bus, type, depth, shortNames);
    }
    for (const Net &net : design.levels.at(level).nets) {
        if (matches(search, prefix + net.name)) {
            const Signal item = design.signalOf(level, net, false, type);
            rows->append(rowOf(item, depth, shortNames ? net.name : item.name));
        }
    }
}

static QList<Found> levelRows(const Design &design, const Search &search, int level, int type,
                              int depth, bool below)
{
    Found module;
    const Level &self = design.levels.at(level);
    module.text = self.parent < 0 ? self.name : self.module + ':' + self.name;
    module.depth = depth;
    module.isModule = true;
    module.selectable = false;
    QList<Found> rows = {module};
    addHits(&rows, design, search, level, type, depth + 1, true);
    if (below) {
        for (int child : design.below(level))
            rows += levelRows(design, search, child, type, depth + 1, true);
    }
    return rows.size() > 1 ? rows : QList<Found>();
}

static void addLevels(QList<int> *levels, const Design &design, int level, bool below)
{
    levels->append(level);
    if (!below)
        return;
    for (int child : design.below(level))
        addLevels(levels, design, child, true);
}

QList<Found> search(const Design &design, const Search &asked, int type)
{
    if (asked.advanced && asked.hierarchyView)
        return levelRows(design, asked, asked.level, type, 0, asked.subentries);

    QList<int> levels;
    addLevels(&levels, design, asked.advanced ? asked.level : 0,
              asked.subentries || !asked.advanced);
    QList<Found> buses;
    QList<Found> nets;
    for (int level : levels) {
        QList<Found> hits;
        addHits(&hits, design, asked, level, type, 0, false);
        for (const Found &row : hits)
            (row.item.kind == 1 ? buses : nets).append(row);
    }
    return buses + nets;
}

Items picked(const QList<Found> &results, const QList<int> &rows)
{
    Items items;
    for (int row : rows) {
        const Found &found = results.at(row);
        Signal item = found.item;
        if (!found.hasItem) {
            item = Signal();
            item.name = found.text;
            item.kind = 1;
        }
        items.append(item);
    }
    return items;
}

QString levelText(const Design &design, int level)
{
    const Level &self = design.levels.at(level);
    return self.parent < 0 ? self.name : self.name + '[' + self.module + ']';
}

} // namespace Plain
