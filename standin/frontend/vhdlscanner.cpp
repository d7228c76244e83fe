// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verilogscanner.h"

#include <vector>

namespace Standin {

namespace {

/// Walks the words and symbols of a VHDL text once. Words are compared in lower case; extended
/// identifiers keep their backslashes, which makes them differ from all keywords.
class VhdlScanner
{
public:
    explicit VhdlScanner(const QByteArray &text) { read(text); }

    void scan(DesignGraph *graph);

private:
    struct Token
    {
        QByteArray text;
        QByteArray lower;
    };

    void read(const QByteArray &text);
    bool is(size_t i, const char *word) const
    {
        return i < tokens.size() && tokens[i].lower == word;
    }
    bool isName(size_t i) const;
    size_t selectedName(size_t i, QByteArray *last) const;
    size_t readEntity(size_t i, DesignGraph *graph);
    void readGenerics(size_t i, ScannedModule *module) const;
    size_t readInstance(size_t i);

    std::vector<Token> tokens;
    QByteArray current;
    QVector<QPair<QByteArray, InstanceUse>> uses;
};

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c & 0x80) != 0;
}

bool isInName(char c)
{
    return isLetter(c) || (c >= '0' && c <= '9') || c == '_';
}

/// Index behind the quoted text at \a i, which ends with its line at the latest.
int quotedEnd(const QByteArray &text, int i)
{
    const char quote = text.at(i);
    for (++i; i < text.size() && text.at(i) != '\n'; ++i) {
        if (text.at(i) == quote)
            return i + 1;
    }
    return i;
}

/// Index behind what begins at \a i and means nothing here, or \a i.
int ignoredEnd(const QByteArray &text, int i)
{
    const char c = text.at(i);
    const char next = i + 1 < text.size() ? text.at(i + 1) : '\0';
    if (c == '-' && next == '-') {
        const int newline = text.indexOf('\n', i);
        return newline < 0 ? text.size() : newline;
    }
    if (c == '/' && next == '*') {
        const int close = text.indexOf("*/", i + 2);
        return close < 0 ? text.size() : close + 2;
    }
    if (c == '"')
        return quotedEnd(text, i);
    if (c == '\'' && i + 2 < text.size() && text.at(i + 2) == '\'')
        return i + 3;
    return c == ' ' || (c >= '\t' && c <= '\r') ? i + 1 : i;
}

void VhdlScanner::read(const QByteArray &text)
{
    int i = 0;
    while (i < text.size()) {
        int end = ignoredEnd(text, i);
        if (end > i) {
            i = end;
            continue;
        }
        end = i + 1;
        if (text.at(i) == '\\')
            end = quotedEnd(text, i);
        else if (isInName(text.at(i)))
            while (end < text.size() && isInName(text.at(end)))
                ++end;
        const QByteArray word = text.mid(i, end - i);
        tokens.push_back({word, word.startsWith('\\') ? word : word.toLower()});
        i = end;
    }
}

bool VhdlScanner::isName(size_t i) const
{
    return i < tokens.size() && (isLetter(tokens[i].text.at(0)) || tokens[i].text.at(0) == '\\');
}

/// Reads `a.b.c` at \a i. \return index behind it; \a last receives the last name.
size_t VhdlScanner::selectedName(size_t i, QByteArray *last) const
{
    if (!isName(i))
        return i;
    while (is(i + 1, ".") && isName(i + 2))
        i += 2;
    *last = tokens[i].text;
    return i + 1;
}

void VhdlScanner::scan(DesignGraph *graph)
{
    for (size_t i = 0; i < tokens.size();) {
        if (is(i, "end")) {
            // "end entity name" and its like open nothing.
            i += 2;
        } else if (is(i, "entity") && isName(i + 1) && is(i + 2, "is")) {
            i = readEntity(i, graph);
        } else if ((is(i, "architecture") || is(i, "configuration")) && is(i + 2, "of")
                   && isName(i + 3)) {
            selectedName(i + 3, &current);
            i += 4;
        } else if (is(i, "use") && is(i + 1, "entity")) {
            InstanceUse use;
            i = selectedName(i + 2, &use.type);
            if (!use.type.isEmpty())
                uses.append({current, use});
        } else if (isName(i) && is(i + 1, ":")) {
            i = readInstance(i);
        } else {
            ++i;
        }
    }
    for (const auto &use : qAsConst(uses))
        graph->addInstance(use.first, use.second);
}

size_t VhdlScanner::readEntity(size_t i, DesignGraph *graph)
{
    ScannedModule module;
    module.name = tokens[i + 1].text;
    module.isVhdl = true;
    if (is(i + 3, "generic") && is(i + 4, "("))
        readGenerics(i + 5, &module);
    graph->add(module);
    return i + 3;
}

/// Notes the names ahead of each colon of a generic clause.
void VhdlScanner::readGenerics(size_t i, ScannedModule *module) const
{
    int depth = 1;
    bool inNames = true;
    for (; i < tokens.size() && depth > 0; ++i) {
        if (is(i, "("))
            ++depth;
        else if (is(i, ")"))
            --depth;
        else if (is(i, ":"))
            inNames = false;
        else if (is(i, ";"))
            inNames = true;
        else if (inNames && depth == 1 && isName(i) && !is(i, "constant"))
            module->parameters.append(tokens[i].text);
    }
}

/// Reads the instantiation that the label at \a i may begin.
size_t VhdlScanner::readInstance(size_t i)
{
    InstanceUse use;
    use.name = tokens[i].text;
    const bool explicitly = is(i + 2, "entity") || is(i + 2, "component");
    size_t at = selectedName(explicitly ? i + 3 : i + 2, &use.type);
    if (use.type.isEmpty())
        return i + 1;
    if (is(at, "(") && is(at + 2, ")"))
        at += 3;
    const bool mapped = (is(at, "generic") || is(at, "port")) && is(at + 1, "map");
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
