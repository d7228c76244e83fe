// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/vhdlsignals.h"

#include "frontend/vhdlconstructs.h"

#include <QMap>

#include <algorithm>

namespace Standin {

static const int tabWidth = 8;

/// The last name of `a.b.c` at \a i, in lower case.
static QByteArray selectedName(const VhdlTokens &tokens, int i)
{
    while (tokens.is(i + 1, ".") && tokens.isName(i + 2))
        i += 2;
    return tokens.text(i).toLower();
}

/// Index behind the colon of the declaration from \a begin to \a end; \a end if there is none.
static int behindColon(const VhdlTokens &tokens, int begin, int end)
{
    for (int i = begin; i < end; ++i) {
        if (tokens.is(i, ":"))
            return i + 1;
    }
    return end;
}

void VhdlNetTypes::add(const QByteArray &source)
{
    const VhdlTokens tokens(source);
    const VhdlConstructs constructs(tokens);
    int record = -1;
    for (const VhdlConstruct &construct : constructs.all()) {
        const int i = construct.begin;
        if (tokens.is(i, "subtype")) {
            // A resolution function may stand ahead of the type.
            const bool isResolved = tokens.isName(i + 4) && !tokens.is(i + 4, "range");
            declarations.append({tokens.text(i + 1).toLower(),
                                 {selectedName(tokens, i + (isResolved ? 4 : 3))},
                                 true});
        } else if (tokens.is(i, "type") && construct.kind == VhdlConstruct::Leaf) {
            const bool isNet = tokens.is(i + 3, "(") || tokens.is(i + 3, "range");
            declarations.append({tokens.text(i + 1).toLower(), {}, isNet});
        } else if (tokens.is(i, "type")) {
            const bool isRecord = tokens.is(construct.header - 1, "record");
            record = declarations.size();
            declarations.append({tokens.text(i + 1).toLower(), {}, isRecord});
        } else if (record >= 0 && construct.parent >= 0
                   && tokens.is(constructs.all()[std::size_t(construct.parent)].begin, "type")) {
            const int type = behindColon(tokens, i, construct.end);
            declarations[record].parts.append(selectedName(tokens, type));
        }
    }
}

void VhdlNetTypes::resolve()
{
    known = {
        "std_logic", "std_ulogic", "std_logic_vector", "std_ulogic_vector", "signed",  "unsigned",
        "bit",       "bit_vector", "boolean",          "integer",           "natural", "positive",
        "x01",       "ux01"};
    QSet<QByteArray> refused;
    for (const Declaration &declaration : qAsConst(declarations)) {
        if (!declaration.isNet)
            refused.insert(declaration.name);
    }
    // Types are declared ahead of what they are used in, but files come in any order. Few types are
    // made of types that are made of types, so a few rounds find all.
    bool more = true;
    for (int round = 0; more && round < 16; ++round) {
        more = false;
        for (const Declaration &declaration : qAsConst(declarations)) {
            const bool isNew = declaration.isNet && !known.contains(declaration.name)
                && !refused.contains(declaration.name)
                && std::all_of(declaration.parts.begin(), declaration.parts.end(),
                               [&](const QByteArray &part) { return known.contains(part); });
            if (isNew)
                known.insert(declaration.name);
            more = more || isNew;
        }
    }
}

QByteArray withoutBlanksInNames(const QByteArray &source)
{
    // Most sources have none and stay as they are.
    if (!source.contains('\\'))
        return source;
    const VhdlTokens tokens(source);
    QByteArray result = source;
    for (int i = 0; i < tokens.count(); ++i) {
        if (source.at(int(tokens.begin(i))) != '\\')
            continue;
        for (quint32 at = tokens.begin(i); at < tokens.end(i); ++at) {
            if (source.at(int(at)) == ' ')
                result[int(at)] = '~';
        }
    }
    return result;
}

bool declaresKeep(const QByteArray &source)
{
    const VhdlTokens tokens(source);
    for (int i = 0; i < tokens.count(); ++i) {
        if (tokens.is(i, "keep") && tokens.is(i - 1, "attribute") && tokens.is(i + 1, ":"))
            return true;
    }
    return false;
}

/// Attributes for the names that the declaration at \a begin declares.
static QByteArray keptNames(const VhdlTokens &tokens, int begin, int end)
{
    QByteArray names;
    for (int i = begin + 1; i < end && !tokens.is(i, ":"); ++i)
        names += tokens.text(i);
    return " attribute keep of " + names + " : signal is true;";
}

QByteArray withKeptSignals(const QByteArray &source, const VhdlNetTypes &types,
                           QVector<VhdlInsertion> *insertions)
{
    const VhdlTokens tokens(source);
    const VhdlConstructs constructs(tokens);
    QMap<int, QByteArray> texts; ///< By the token ahead of which they belong.
    for (const VhdlConstruct &construct : constructs.all()) {
        if (!tokens.is(construct.begin, "signal") || construct.parent < 0)
            continue;
        const VhdlConstruct &parent = constructs.all()[std::size_t(construct.parent)];
        const bool isScope =
            parent.kind == VhdlConstruct::Unit || parent.kind == VhdlConstruct::Region;
        const int type = behindColon(tokens, construct.begin, construct.end);
        if (!isScope || parent.body < construct.begin
            || !types.contains(selectedName(tokens, type)))
            continue;
        QByteArray &text = texts[parent.body];
        if (text.isEmpty())
            text = " attribute keep : boolean;";
        text += keptNames(tokens, construct.begin, construct.end);
    }
    QByteArray result = source;
    for (auto text = texts.cend(); text != texts.cbegin();) {
        --text;
        result.insert(int(tokens.begin(text.key())), text.value() + ' ');
    }
    int line = 1;
    int lineBegin = 0;
    for (auto text = texts.cbegin(); text != texts.cend(); ++text) {
        const int at = int(tokens.begin(text.key()));
        for (int newline = source.indexOf('\n', lineBegin); newline >= 0 && newline < at;
             newline = source.indexOf('\n', lineBegin)) {
            lineBegin = newline + 1;
            ++line;
        }
        int column = 1;
        for (int i = lineBegin; i < at; ++i)
            column = source.at(i) == '\t' ? (column - 1) / tabWidth * tabWidth + tabWidth + 1
                                          : column + 1;
        insertions->append({line, column, text.value().size() + 1});
    }
    return result;
}

} // namespace Standin
