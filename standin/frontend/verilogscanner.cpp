// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verilogscanner.h"

#include "frontend/verilogitems.h"
#include "frontend/verilogtokens.h"

#include <QHash>
#include <QSet>

namespace Standin {

namespace {

/// Walks the tokens once from front to back. Looking ahead goes through matched brackets, and what
/// was looked at in detail isn't walked again.
class VerilogScanner
{
public:
    explicit VerilogScanner(const QByteArray &text)
        : tokens(text)
    {
    }

    DesignGraph scan();

private:
    int step(int i);
    int openModule(int i);
    int closeModule(int i);
    int skipDeclaration(int i) const;
    int readTypedef(int i);
    void readParameters(int i);
    int readBind(int i);
    int readDefparam(int i);
    int readInstances(int i, QVector<InstanceUse> *uses) const;
    bool mayStartInstance(int i) const;
    QVector<ConnectionUse> readConnections(int open) const;
    bool readsAsType(int begin, int end) const;

    VerilogTokens tokens;
    QVector<ScannedModule> open;
    QHash<QByteArray, QVector<ConnectionUse>> defparams; ///< By instance, of the innermost module.
    QVector<QPair<QByteArray, InstanceUse>> binds;
    QSet<QByteArray> typeNames;
    DesignGraph graph;
};

DesignGraph VerilogScanner::scan()
{
    for (int i = 0; i < tokens.count();)
        i = step(i);
    // A module without its end is kept: the parser will complain about it, with a place.
    while (!open.isEmpty())
        closeModule(tokens.count());
    for (const auto &bind : qAsConst(binds))
        graph.addInstance(bind.first, bind.second);
    return graph;
}

int VerilogScanner::step(int i)
{
    if (tokens.is(i, "extern"))
        return skipDeclaration(i);
    if (tokens.is(i, "module") || tokens.is(i, "macromodule") || tokens.is(i, "interface")
        || tokens.is(i, "program") || tokens.is(i, "primitive"))
        return openModule(i);
    if (tokens.is(i, "endmodule") || tokens.is(i, "endinterface") || tokens.is(i, "endprogram")
        || tokens.is(i, "endprimitive"))
        return closeModule(i);
    if (tokens.is(i, "typedef"))
        return readTypedef(i);
    if (tokens.is(i, "function") || tokens.is(i, "task"))
        return skipDeclaration(i);
    if (tokens.is(i, "bind"))
        return readBind(i);
    if (tokens.is(i, "defparam"))
        return readDefparam(i);
    if (tokens.is(i, "parameter") && !open.isEmpty())
        readParameters(i);
    if (!open.isEmpty() && mayStartInstance(i)) {
        QVector<InstanceUse> uses;
        const int next = readInstances(i, &uses);
        if (!uses.isEmpty()) {
            open.last().instances += uses;
            return next;
        }
    }
    return i + 1;
}

int VerilogScanner::openModule(int i)
{
    if (!opensModule(tokens, i))
        return i + 1;
    const int name = moduleName(tokens, i);
    ScannedModule module;
    module.name = tokens.text(name);
    if (tokens.is(i, "interface"))
        module.kind = ScannedModule::Interface;
    else if (tokens.is(i, "primitive"))
        module.kind = ScannedModule::Primitive;
    module.begin = tokens.at(i).begin;
    open.append(module);
    return name + 1;
}

int VerilogScanner::closeModule(int i)
{
    if (open.isEmpty())
        return i + 1;
    const VerilogToken &last = tokens.at(i);
    open.last().end = last.begin + last.length;
    for (InstanceUse &use : open.last().instances)
        use.parameters += defparams.value(use.name);
    defparams.clear();
    graph.add(open.takeLast());
    return i + 1;
}

int VerilogScanner::skipDeclaration(int i) const
{
    while (i < tokens.count() && !tokens.is(i, ';'))
        i = tokens.behind(i);
    return i;
}

int VerilogScanner::readTypedef(int i)
{
    const int end = skipDeclaration(i);
    int name = end - 1;
    while (name > i && tokens.is(name, ']'))
        name = tokens.at(name).match < 0 ? i : tokens.at(name).match - 1;
    if (tokens.isWord(name))
        typeNames.insert(tokens.text(name));
    return end;
}

/// Notes the names that a parameter declaration declares, up to the next declaration.
void VerilogScanner::readParameters(int i)
{
    const bool declaresTypes = tokens.is(i + 1, "type");
    for (++i; i < tokens.count(); i = tokens.behind(i)) {
        if (tokens.is(i, ';') || tokens.is(i, ')') || tokens.is(i, "parameter")
            || tokens.is(i, "localparam"))
            return;
        if (!tokens.isWord(i) || !tokens.is(i + 1, '=') || tokens.is(i + 2, '='))
            continue;
        open.last().parameters.append(tokens.text(i));
        if (declaresTypes)
            typeNames.insert(tokens.text(i));
    }
}

/// A bind statement instantiates in a module that may stand anywhere.
int VerilogScanner::readBind(int i)
{
    int at = i + 1;
    if (!tokens.isWord(at))
        return at;
    const QByteArray target = tokens.text(at++);
    // A list of instances, or the path of one, ahead of the type: the module itself is enough.
    while (tokens.is(at, ':') || tokens.is(at, ',') || tokens.is(at, '.'))
        at += 2;
    QVector<InstanceUse> uses;
    const int next = readInstances(at, &uses);
    for (const InstanceUse &use : qAsConst(uses))
        binds.append({target, use});
    return uses.isEmpty() ? at : next;
}

/// A defparam statement gives an instance of this module a parameter, or one further down, which
/// then has to exist.
int VerilogScanner::readDefparam(int i)
{
    for (++i; i < tokens.count() && !tokens.is(i, ';'); i = tokens.behind(i)) {
        if (!tokens.is(i, '.') || !tokens.isWord(i + 1) || !tokens.is(i + 2, '='))
            continue;
        int instance = i - 1;
        if (tokens.is(instance, ']') && tokens.at(instance).match > 0)
            instance = tokens.at(instance).match - 1;
        ConnectionUse use;
        use.name = tokens.text(i + 1);
        if (tokens.isWord(instance))
            defparams[tokens.text(instance)].append(use);
    }
    return i;
}

bool VerilogScanner::mayStartInstance(int i) const
{
    return tokens.isWord(i) && !tokens.is(i - 1, '.') && !tokens.is(i - 1, "::")
        && !tokens.is(i - 1, "class") && !tokens.is(i - 1, "extends")
        && !tokens.is(i - 1, "import");
}

/// Reads `TYPE [#(...)] NAME [range] (...), NAME ... ;` at \a i.
///
/// \return index behind what belongs to it; \a uses stays empty if it isn't of that shape.
int VerilogScanner::readInstances(int i, QVector<InstanceUse> *uses) const
{
    int at = i + 1;
    int parameters = -1;
    if (tokens.is(at, '#')) {
        if (tokens.is(at + 1, '('))
            parameters = at + 1;
        at = tokens.behind(at + 1);
    }
    while (tokens.isWord(at)) {
        int ports = at + 1;
        while (tokens.is(ports, '['))
            ports = tokens.behind(ports);
        if (!tokens.is(ports, '('))
            break;
        const int behind = tokens.behind(ports);
        if (!tokens.is(behind, ';') && !tokens.is(behind, ','))
            break;
        InstanceUse use;
        use.type = tokens.text(i);
        use.typeOffset = tokens.at(i).begin;
        use.name = tokens.text(at);
        use.ports = readConnections(ports);
        if (parameters >= 0 && uses->isEmpty())
            use.parameters = readConnections(parameters);
        uses->append(use);
        at = behind + 1;
        if (tokens.is(behind, ';'))
            break;
    }
    return at;
}

QVector<ConnectionUse> VerilogScanner::readConnections(int bracket) const
{
    QVector<ConnectionUse> connections;
    const int close = tokens.behind(bracket) - 1;
    for (int i = bracket + 1; i < close;) {
        int end = i;
        while (end < close && !tokens.is(end, ','))
            end = tokens.behind(end);
        ConnectionUse use;
        int value = i;
        bool wildcard = false;
        if (tokens.is(i, '.')) {
            wildcard = !tokens.isWord(i + 1);
            use.name = tokens.isWord(i + 1) ? tokens.text(i + 1) : QByteArray();
            value = i + 3;
        }
        const int valueEnd = tokens.is(i, '.') ? end - 1 : end;
        use.isType = readsAsType(value, valueEnd);
        const bool isNegative =
            tokens.is(value, '-') && tokens.at(value + 1).kind == VerilogToken::Number;
        const int last = isNegative ? value + 1 : value;
        const quint32 kind = tokens.at(last).kind;
        if (valueEnd == last + 1 && (kind == VerilogToken::Number || kind == VerilogToken::String))
            use.value = (isNegative ? "-" : "") + tokens.text(last);
        if (!wildcard)
            connections.append(use);
        i = end + 1;
        if (i == close && tokens.is(end, ','))
            connections.append(ConnectionUse());
    }
    return connections;
}

/// True if the tokens from \a begin to before \a end are a data type, as far as can be told without
/// knowing what the names mean.
bool VerilogScanner::readsAsType(int begin, int end) const
{
    static const char *const words[] = {"logic",   "bit",      "reg",     "byte",   "int",
                                        "integer", "shortint", "longint", "struct", "union",
                                        "enum",    "string",   "real",    "type"};
    for (const char *word : words) {
        if (tokens.is(begin, word))
            return true;
    }
    if (begin >= end)
        return false;
    const bool scoped = tokens.isWord(begin) && tokens.is(begin + 1, "::");
    const int name = scoped ? begin + 2 : begin;
    return name + 1 == end && tokens.isWord(name) && typeNames.contains(tokens.text(name));
}

} // namespace

DesignGraph scanVerilog(const QByteArray &preprocessed)
{
    return VerilogScanner(preprocessed).scan();
}

} // namespace Standin
