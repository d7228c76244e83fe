// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verilogscanner.h"
#include "frontend/vhdltokens.h"

namespace Standin {

namespace {

/// Walks the tokens of a VHDL text once.
class VhdlScanner
{
public:
    explicit VhdlScanner(const QByteArray &text)
        : tokens(text)
    {
    }

    void scan(DesignGraph *graph);

private:
    int selectedName(int i, QByteArray *last) const;
    int readEntity(int i, DesignGraph *graph);
    int readInterface(int i, QVector<QByteArray> *names, QVector<QByteArray> *types) const;
    int readInstance(int i);

    VhdlTokens tokens;
    QByteArray current;
    QVector<QPair<QByteArray, InstanceUse>> uses;
};

/// Reads `a.b.c` at \a i. \return index behind it; \a last receives the last name.
int VhdlScanner::selectedName(int i, QByteArray *last) const
{
    if (!tokens.isName(i))
        return i;
    while (tokens.is(i + 1, ".") && tokens.isName(i + 2))
        i += 2;
    *last = tokens.text(i);
    return i + 1;
}

void VhdlScanner::scan(DesignGraph *graph)
{
    for (int i = 0; i < tokens.count();) {
        if (tokens.is(i, "end")) {
            // "end entity name" and its like open nothing.
            i += 2;
        } else if (tokens.is(i, "entity") && tokens.isName(i + 1) && tokens.is(i + 2, "is")) {
            i = readEntity(i, graph);
        } else if ((tokens.is(i, "architecture") || tokens.is(i, "configuration"))
                   && tokens.is(i + 2, "of") && tokens.isName(i + 3)) {
            selectedName(i + 3, &current);
            i += 4;
        } else if (tokens.is(i, "use") && tokens.is(i + 1, "entity")) {
            InstanceUse use;
            i = selectedName(i + 2, &use.type);
            if (!use.type.isEmpty())
                uses.append({current, use});
        } else if (tokens.isName(i) && tokens.is(i + 1, ":")) {
            i = readInstance(i);
        } else {
            ++i;
        }
    }
    for (const auto &use : qAsConst(uses))
        graph->addInstance(use.first, use.second);
}

int VhdlScanner::readEntity(int i, DesignGraph *graph)
{
    ScannedModule module;
    module.name = tokens.text(i + 1);
    module.isVhdl = true;
    int at = i + 3;
    if (tokens.is(at, "generic") && tokens.is(at + 1, "("))
        at = readInterface(at + 2, &module.parameters, &module.parameterTypes);
    if (tokens.is(at, ";"))
        ++at;
    QVector<QByteArray> types;
    if (tokens.is(at, "port") && tokens.is(at + 1, "("))
        readInterface(at + 2, &module.ports, &types);
    graph->add(module);
    return i + 3;
}

/// Notes the names ahead of each colon of a generic or port clause, and the type behind it.
///
/// \return index behind the clause's closing bracket.
int VhdlScanner::readInterface(int i, QVector<QByteArray> *names, QVector<QByteArray> *types) const
{
    int depth = 1;
    bool inNames = true;
    for (; i < tokens.count() && depth > 0; ++i) {
        if (tokens.is(i, "(")) {
            ++depth;
        } else if (tokens.is(i, ")")) {
            --depth;
        } else if (tokens.is(i, ":") && depth == 1) {
            inNames = false;
            while (types->size() < names->size())
                types->append(tokens.text(i + 1).toLower());
        } else if (tokens.is(i, ";") && depth == 1) {
            inNames = true;
        } else if (inNames && depth == 1 && tokens.isName(i) && !tokens.is(i, "constant")
                   && !tokens.is(i, "signal")) {
            names->append(tokens.text(i));
        }
    }
    return i;
}

/// Reads the instantiation that the label at \a i may begin.
int VhdlScanner::readInstance(int i)
{
    InstanceUse use;
    use.name = tokens.text(i);
    const bool explicitly = tokens.is(i + 2, "entity") || tokens.is(i + 2, "component");
    int at = selectedName(explicitly ? i + 3 : i + 2, &use.type);
    if (use.type.isEmpty())
        return i + 1;
    if (tokens.is(at, "(") && tokens.is(at + 2, ")"))
        at += 3;
    const bool mapped =
        (tokens.is(at, "generic") || tokens.is(at, "port")) && tokens.is(at + 1, "map");
    if (!mapped && !explicitly)
        return i + 1;
    uses.append({current, use});
    return at;
}

} // namespace

void scanVhdl(const QByteArray &source, DesignGraph *graph)
{
    VhdlScanner(source).scan(graph);
}

} // namespace Standin
