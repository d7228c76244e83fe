// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The part of VhdlRepair that finds what an error lies in, and what it is about.

#include "frontend/vhdlrepair_p.h"

#include <QRegularExpression>

namespace Standin {

// Columns count tabulators as so many places, up to the next multiple.
static constexpr int TabWidth = 8;

int VhdlRepair::Round::tokenAt(const ToolMessage &error) const
{
    if (error.line < 1 || error.line > int(lines.size()))
        return tokens.count();
    const QByteArray &text = repair->source;
    int offset = int(lines[std::size_t(error.line) - 1]);
    for (int column = 1; column < error.column && offset < text.size() && text.at(offset) != '\n';
         ++offset)
        column = text.at(offset) == '\t' ? (column - 1) / TabWidth * TabWidth + TabWidth + 1
                                         : column + 1;
    return tokens.find(quint32(offset));
}

/// The construct that is to blame for an error at \a token; -1 if there is none.
int VhdlRepair::Round::constructAt(int token) const
{
    int construct = constructs.innermost(token);
    if (construct < 0 && token >= tokens.count() && !constructs.all().empty()) {
        // The text ends too early.
        construct = int(constructs.all().size()) - 1;
        while (at(construct).parent >= 0)
            construct = at(construct).parent;
    }
    if (construct < 0)
        return -1;
    if (at(construct).kind == VhdlConstruct::Branch)
        construct = at(construct).parent;
    // An end or a begin that comes too early is the fault of what isn't ended ahead of it.
    const int child = token >= at(construct).header ? constructs.childBefore(construct, token) : -1;
    return child >= 0 && at(child).kind != VhdlConstruct::Branch ? child : construct;
}

const VhdlUnit *VhdlRepair::Round::unitOf(int construct) const
{
    while (construct >= 0 && at(construct).kind != VhdlConstruct::Unit)
        construct = at(construct).parent;
    for (const VhdlUnit &unit : constructs.units()) {
        if (unit.construct == construct)
            return &unit;
    }
    return nullptr;
}

/// The construct around \a construct that stands in a unit, block or generate statement.
int VhdlRepair::Round::outermost(int construct) const
{
    for (int parent = at(construct).parent; parent >= 0; parent = at(parent).parent) {
        const VhdlConstruct::Kind kind = at(parent).kind;
        if (kind == VhdlConstruct::Unit || kind == VhdlConstruct::Region)
            break;
        construct = parent;
    }
    return construct;
}

bool VhdlRepair::Round::namesMissingLibrary(const VhdlConstruct &clause) const
{
    for (int i = clause.begin + 1; i < clause.end; ++i) {
        if (losses->missingLibraries.contains(tokens.text(i).toLower()))
            return true;
    }
    return false;
}

/// The type that an instance is of, in lower case.
QByteArray VhdlRepair::Round::instantiated(const VhdlConstruct &instance) const
{
    int i = instance.begin + 2;
    if (tokens.isAny(i, {"entity", "component", "configuration"}))
        ++i;
    while (tokens.is(i + 1, "."))
        i += 2;
    return tokens.text(i).toLower();
}

QByteArray quotedName(const QString &text)
{
    static const QRegularExpression quoted("[\"']([A-Za-z_][\\w.]*)[\"']");
    return quoted.match(text).captured(1).toLower().toUtf8();
}

bool namesLibrary(const ToolMessage &error)
{
    return error.text.startsWith("cannot find resource library");
}

VhdlRepair::Concern VhdlRepair::Round::concernOf(const ToolMessage &error) const
{
    if (namesLibrary(error))
        return Concern::Library;
    const int construct = constructAt(tokenAt(error));
    const QByteArray name = quotedName(error.text);
    if (construct >= 0 && !losses->missingLibraries.isEmpty()) {
        const VhdlConstruct &place = at(construct);
        const bool isClause = place.kind == VhdlConstruct::Context || tokens.is(place.begin, "use");
        if (isClause && namesMissingLibrary(place))
            return Concern::Library;
        // What is declared nowhere else can only come from there.
        if (place.kind == VhdlConstruct::Instance && !name.isEmpty()
            && (name == instantiated(place) || losses->missingLibraries.contains(name)))
            return Concern::Library;
    }
    return construct >= 0 && mentionsLost(construct) ? Concern::Consequence : Concern::Design;
}

bool VhdlRepair::Round::isWithin(int construct, int outer) const
{
    while (construct > outer)
        construct = at(construct).parent;
    return construct == outer;
}

/// True if a part mentions what another part declared that is taken out.
bool VhdlRepair::Round::mentionsLost(int construct) const
{
    const VhdlConstruct &part = at(construct);
    const bool isWhole = part.header >= part.end;
    for (int i = part.begin; i < (isWhole ? part.end : part.header); ++i) {
        const QByteArray name = tokens.text(i).toLower();
        const int owner = lostNow.value(name, -1);
        if (owner >= 0 ? !isWithin(construct, owner) : losses->names.contains(name))
            return true;
    }
    return false;
}

} // namespace Standin
