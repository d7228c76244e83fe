// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The part of DesignRepair that mends what would cost more if it were taken out, and that tells
// which errors to trust.

#include "frontend/designrepair_p.h"

#include <algorithm>

namespace Standin {

static bool isSyntaxError(const ToolMessage &error)
{
    return error.isError && error.text.startsWith("syntax error");
}

int DesignRepair::Round::tokenAt(quint32 lineBegin, const ToolMessage &error) const
{
    const quint32 offset = lineBegin + quint32(std::max(0, error.column - 1));
    return std::min(tokens.find(offset), tokens.count());
}

bool isPinError(const ToolMessage &error)
{
    return error.code == "PINNOTFOUND" || error.text.contains("pin connection")
        || error.text.contains("port connection")
        || (error.text.startsWith("Pin is not an in/out") && error.text.contains("/param/"));
}

void DesignRepair::Round::note(const ToolMessage &error)
{
    if (!isSyntaxError(error))
        return;
    const QVector<quint32> lines = places.offsets(error.file, error.line);
    for (quint32 line : lines)
        misread.insert(int(&unitAt(tokenAt(line, error)) - units.data()));
}

/// The tool finds back on its way in a unit without errors. Where a unit was mended, what it would
/// have said of the rest is known only later.
bool DesignRepair::Round::isDoubtful(const ToolMessage &error) const
{
    const QVector<quint32> lines = places.offsets(error.file, error.line);
    if (lines.isEmpty())
        return false;
    if (headerIsMended && isPinError(error))
        return true;
    const VerilogUnit &unit = unitAt(tokenAt(lines.first(), error));
    const int index = int(&unit - units.data());
    return unit.name >= 0
        && (mendedUnits.contains(index) || (isSyntaxError(error) && misread.contains(index - 1)));
}

/// Index of the innermost bracket that is open at \a token, not ahead of \a first; or -1.
int DesignRepair::Round::openBracketAround(int token, int first) const
{
    for (int at = token - 1; at >= first;) {
        const int match = tokens.at(at).match;
        if (match > token)
            return at;
        at = match >= first && match < at ? match - 1 : at - 1;
    }
    return -1;
}

/// Mends what is wrong at \a token, once at each place.
bool DesignRepair::Round::mend(const ToolMessage &error, const VerilogUnit &unit, int token)
{
    const QString place =
        error.file + ':' + QString::number(error.line) + ':' + QString::number(error.column);
    if (repair->mended.contains(place))
        return false;
    repair->mended.insert(place);
    // Two ports without a comma read as an interface and its port.
    const bool mayLackSeparator = isSyntaxError(error)
        || (token < unit.header && error.text.startsWith("Pin is not an in/out"));
    if (!(mayLackSeparator && addSeparator(unit, token)) && !mendHeader(unit, token))
        return false;
    mendedUnits.insert(int(&unit - units.data()));
    headerIsMended = headerIsMended || token < unit.header;
    return true;
}

/// Ends what stands on the line ahead of \a token, if that can be what is missing: a statement, or
/// an element of a list of ports or connections.
bool DesignRepair::Round::addSeparator(const VerilogUnit &unit, int token)
{
    const int last = token - 1;
    if (last <= unit.name || token > unit.end)
        return false;
    const VerilogToken &before = tokens.at(last);
    const auto behind = int(before.begin + before.length);
    const auto here = int(tokens.at(token).begin);
    const QByteArray gap = repair->design.mid(behind, here - behind);
    const bool beginsLine = gap.contains('\n') && gap.left(gap.indexOf('\n')).trimmed().isEmpty();
    const bool mayEnd = before.kind == VerilogToken::Word || before.kind == VerilogToken::Number
        || before.kind == VerilogToken::String || tokens.isAny(last, {")", "]", "}"});
    if (!beginsLine || !mayEnd)
        return false;
    const bool inHeader = token < unit.header;
    const int item = itemAt(unit.items, token);
    const int first = item < 0 ? token : unit.items[std::size_t(item)].begin;
    const int open = openBracketAround(token, inHeader ? unit.name + 1 : first);
    const bool isWord = tokens.isWord(token) || tokens.at(token).kind == VerilogToken::Keyword;
    if (open >= 0) {
        const bool isElement = inHeader ? isWord : tokens.is(token, '.') && tokens.is(last, ')');
        if (!tokens.is(open, '(') || !isElement)
            return false;
        added.insert(last, ',');
        return true;
    }
    if (!isWord || inHeader)
        return false;
    added.insert(last, ';');
    return true;
}

/// Makes what is unknown in the first line of a module plain, since without that line all of the
/// module would be lost: a range goes, so do a type and an import, and a value becomes 1.
bool DesignRepair::Round::mendHeader(const VerilogUnit &unit, int token)
{
    if (token <= unit.name || token >= unit.header)
        return false;
    for (int open = openBracketAround(token, unit.name + 1); open >= 0;
         open = openBracketAround(open, unit.name + 1)) {
        if (!tokens.is(open, '['))
            continue;
        blank(open, tokens.at(open).match + 1);
        return true;
    }
    return takeOutImport(unit, token) || mendValue(unit, token) || takeOutType(unit, token);
}

bool DesignRepair::Round::takeOutImport(const VerilogUnit &unit, int token)
{
    int first = token;
    while (first > unit.name
           && (tokens.isWord(first) || tokens.isAny(first, {"::", "*", ",", ";"})))
        --first;
    if (!tokens.is(first, "import"))
        return false;
    int end = first;
    while (end < unit.header && !tokens.is(end, ';'))
        ++end;
    blank(first, end + 1);
    return true;
}

bool DesignRepair::Round::mendValue(const VerilogUnit &unit, int token)
{
    // What is faulty may stand in brackets of the value.
    int open = openBracketAround(token, unit.name + 1);
    for (int outer = open; (outer = openBracketAround(outer, unit.name + 1)) >= 0; open = outer)
        token = open;
    int equals = token;
    while (equals > std::max(open, unit.name) && !tokens.isAny(equals, {"=", ","})) {
        const int match = tokens.at(equals).match;
        equals = match >= 0 && match < equals ? match - 1 : equals - 1;
    }
    if (!tokens.is(equals, '=') || equals >= token)
        return false;
    int end = equals + 1;
    while (end < unit.header && !tokens.isAny(end, {",", ")", ";"}))
        end = tokens.behind(end);
    const quint32 begin = tokens.at(equals + 1).begin;
    const quint32 room = tokens.at(end - 1).begin + tokens.at(end - 1).length - begin;
    const QByteArray value = tokens.is(equals - 2, "type") ? "bit" : "1";
    if (end == equals + 1 || int(room) < value.size())
        return false;
    blank(equals + 1, end);
    repair->design.replace(int(begin), value.size(), value);
    return true;
}

bool DesignRepair::Round::takeOutType(const VerilogUnit &unit, int token)
{
    // The tool finds fault with the name behind a type that it doesn't know.
    int before = token - 1;
    while (tokens.is(before, ']') && tokens.at(before).match > unit.name)
        before = tokens.at(before).match - 1;
    const bool isBehind = tokens.isWord(before) || tokens.is(before, "::");
    int first = tokens.isWord(token) && isBehind ? before : token;
    if (tokens.is(first, "::"))
        --first;
    const int name = tokens.is(first + 1, "::") ? first + 3 : first + 1;
    const bool isType =
        first > unit.name && tokens.isWord(first) && (tokens.isWord(name) || tokens.is(name, '['));
    if (isType)
        blank(first, name);
    return isType;
}

} // namespace Standin
