// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verilogdialect.h"

#include "frontend/sourceplaces.h"
#include "frontend/verificationcode.h"
#include "frontend/verilogitems.h"
#include "frontend/verilogtokens.h"

#include <QHash>
#include <QSet>
#include <QVector>

#include <algorithm>

namespace Standin {

static void blank(const VerilogTokens &tokens, int begin, int end, QByteArray *text)
{
    for (int i = begin; i < end && i < tokens.count(); ++i) {
        const VerilogToken &token = tokens.at(i);
        std::fill_n(text->data() + token.begin, token.length, ' ');
    }
}

/// Index behind the brackets at \a i if they hold strengths alone, else \a i.
static int strengthsEnd(const VerilogTokens &tokens, int i)
{
    int at = i + 1;
    for (;; ++at) {
        if (!tokens.isAny(at,
                          {"supply0", "supply1", "strong0", "strong1", "pull0", "pull1", "weak0",
                           "weak1", "highz0", "highz1", "small", "medium", "large"}))
            return i;
        ++at;
        if (tokens.is(at, ')'))
            return at + 1;
        if (!tokens.is(at, ','))
            return i;
    }
}

/// Index behind the condition that the `iff` at \a i gives to an event.
static int guardEnd(const VerilogTokens &tokens, int i)
{
    while (i < tokens.count() && !tokens.isAny(i, {")", ",", "or", ";"}))
        i = tokens.behind(i);
    return i;
}

QByteArray inPlainDialect(const QByteArray &preprocessed)
{
    const VerilogTokens tokens(preprocessed);
    QByteArray text = preprocessed;
    QSet<QByteArray> primitives;
    for (int i = 0; i < tokens.count(); ++i) {
        if (tokens.is(i, "primitive") && opensModule(tokens, i))
            primitives.insert(tokens.text(moduleName(tokens, i)));
    }
    struct Insertion
    {
        quint32 offset;
        QByteArray text;
    };
    QVector<Insertion> insertions;
    for (int i = 0; i < tokens.count(); ++i) {
        if (tokens.is(i, '('))
            blank(tokens, i, strengthsEnd(tokens, i), &text);
        else if (tokens.is(i, "iff"))
            blank(tokens, i, guardEnd(tokens, i), &text);
        if (primitives.isEmpty() || !tokens.isWord(i) || tokens.is(i - 1, "primitive")
            || !primitives.contains(tokens.text(i)))
            continue;
        int at = i + 1;
        while (strengthsEnd(tokens, at) > at)
            at = strengthsEnd(tokens, at);
        if (tokens.is(at, '#')) {
            const int end = tokens.behind(at + 1);
            blank(tokens, at, end, &text);
            at = end;
        }
        if (tokens.is(at, '('))
            insertions.append({tokens.at(at).begin,
                               " molk_unnamed" + QByteArray::number(insertions.size()) + ' '});
    }
    QByteArray named;
    named.reserve(text.size() + insertions.size() * 24);
    quint32 done = 0;
    for (const Insertion &insertion : qAsConst(insertions)) {
        named.append(text.constData() + done, int(insertion.offset - done));
        named += insertion.text;
        done = insertion.offset;
    }
    named.append(text.constData() + done, text.size() - int(done));
    return withoutVerificationCode(named);
}

namespace {

struct Package
{
    quint32 begin;
    quint32 end;
    QVector<int> uses; ///< Other packages.
    bool isPlaced = false;
};

class PackageOrder
{
public:
    explicit PackageOrder(const QByteArray &preprocessed)
        : text(preprocessed)
        , tokens(preprocessed)
    {
    }

    QByteArray run();

private:
    bool findPackages();
    bool isUsedTooEarly() const;
    void place(int first);
    QByteArray moved() const;

    QByteArray text;
    VerilogTokens tokens;
    QVector<Package> packages;
    QHash<QByteArray, int> byName;
    QVector<int> order;
};

/// \return false if a package isn't ended, so that nothing is safe to move.
bool PackageOrder::findPackages()
{
    for (int i = 0; i < tokens.count(); ++i) {
        if (!tokens.is(i, "package") || !tokens.isWord(moduleName(tokens, i)))
            continue;
        const QByteArray name = tokens.text(moduleName(tokens, i));
        const quint32 begin = tokens.at(i).begin;
        while (i < tokens.count() && !tokens.is(i, "endpackage"))
            ++i;
        if (i == tokens.count() || byName.contains(name))
            return false;
        if (tokens.is(i + 1, ':') && tokens.isWord(i + 2))
            i += 2;
        byName.insert(name, packages.size());
        packages.append({begin, tokens.at(i).begin + tokens.at(i).length, {}});
    }
    return true;
}

bool PackageOrder::isUsedTooEarly() const
{
    for (int i = 0; i < tokens.count(); ++i) {
        if (!tokens.isWord(i) || !tokens.is(i + 1, "::"))
            continue;
        const int package = byName.value(tokens.text(i), -1);
        if (package >= 0 && tokens.at(i).begin < packages.at(package).begin)
            return true;
    }
    return false;
}

/// Orders \a first behind those that it uses, with a stack of its own: chains may be long.
void PackageOrder::place(int first)
{
    QVector<QPair<int, int>> stack{{first, 0}};
    packages[first].isPlaced = true;
    while (!stack.isEmpty()) {
        auto &[package, next] = stack.last();
        if (next == packages.at(package).uses.size()) {
            order.append(package);
            stack.removeLast();
            continue;
        }
        const int used = packages.at(package).uses.at(next++);
        if (packages.at(used).isPlaced)
            continue;
        packages[used].isPlaced = true;
        stack.append({used, 0});
    }
}

QByteArray PackageOrder::moved() const
{
    const SourcePlaces places(text);
    QByteArray front;
    QByteArray rest = text;
    for (int index : order) {
        const Package &package = packages.at(index);
        const SourcePlaces::Stretch *stretch = places.stretchAt(package.begin);
        if (!stretch)
            return text;
        front += "`line " + QByteArray::number(places.lineAt(package.begin)) + " \""
            + stretch->file.toUtf8() + "\" 0\n";
        // In its line it stays where it was, so that columns are right too.
        const int lineBegin = text.lastIndexOf('\n', int(package.begin)) + 1;
        front += QByteArray(int(package.begin) - lineBegin, ' ')
            + text.mid(int(package.begin), int(package.end - package.begin)) + '\n';
        char *const begin = rest.data() + package.begin;
        bool inDirective = false;
        for (char *c = begin; c < rest.data() + package.end; ++c) {
            inDirective =
                *c == '\n' ? false : inDirective || (*c == '`' && (c == begin || c[-1] == '\n'));
            if (*c != '\n' && !inDirective)
                *c = ' ';
        }
    }
    return front + rest;
}

QByteArray PackageOrder::run()
{
    if (!text.contains("package") || !findPackages() || !isUsedTooEarly())
        return text;
    for (int i = 0; i < tokens.count(); ++i) {
        if (!tokens.isWord(i) || !tokens.is(i + 1, "::"))
            continue;
        const int used = byName.value(tokens.text(i), -1);
        const quint32 at = tokens.at(i).begin;
        const auto user = std::find_if(packages.begin(), packages.end(), [&](const Package &each) {
            return each.begin <= at && at < each.end;
        });
        if (used >= 0 && user != packages.end() && !user->uses.contains(used))
            user->uses.append(used);
    }
    for (int package = 0; package < packages.size(); ++package) {
        if (!packages.at(package).isPlaced)
            place(package);
    }
    return moved();
}

} // namespace

QByteArray withPackagesFirst(const QByteArray &preprocessed)
{
    return PackageOrder(preprocessed).run();
}

namespace {

/// Reads the port list of a module for ports of interface type.
class InterfacePorts
{
public:
    InterfacePorts(const QByteArray &preprocessed, const QByteArray &top)
        : tokens(preprocessed)
        , text(preprocessed)
        , name(top)
    {
    }

    QByteArray run(QVector<InterfacePort> *found);

private:
    int openList(const VerilogUnit &unit) const;
    bool readPort(int begin, int end, QVector<InterfacePort> *found);

    VerilogTokens tokens;
    QByteArray text;
    QByteArray name;
    QSet<QByteArray> interfaces;
    QByteArray type;         ///< Of the last port; empty if it is no interface.
    QByteArray declarations; ///< What takes the place of the ports.
};

/// Index of the bracket that opens the port list, or -1.
int InterfacePorts::openList(const VerilogUnit &unit) const
{
    int at = unit.name + 1;
    while (tokens.is(at, "import")) {
        while (at < unit.header && !tokens.is(at, ';'))
            ++at;
        ++at;
    }
    if (tokens.is(at, '#'))
        at = tokens.behind(at + 1);
    return tokens.is(at, '(') && tokens.at(at).match > at ? at : -1;
}

bool InterfacePorts::readPort(int begin, int end, QVector<InterfacePort> *found)
{
    int at = begin;
    const bool hasType = tokens.isWord(begin)
        && (tokens.isWord(begin + 1) || (tokens.is(begin + 1, '.') && tokens.isWord(begin + 3)));
    if (hasType) {
        type = interfaces.contains(tokens.text(begin)) ? tokens.text(begin) : QByteArray();
        at = tokens.isWord(begin + 1) ? begin + 1 : begin + 3;
    } else if (!tokens.isWord(begin)) {
        type.clear();
    }
    if (type.isEmpty() || at >= end)
        return false;
    const VerilogToken &first = tokens.at(at);
    const VerilogToken &last = tokens.at(end - 1);
    const QByteArray declared =
        text.mid(int(first.begin), int(last.begin + last.length - first.begin));
    if (declared.contains('`'))
        return false;
    found->append({tokens.text(at), first.begin});
    declarations += ' ' + type + ' ' + QByteArray(declared).replace('\n', ' ') + " ();";
    return true;
}

QByteArray InterfacePorts::run(QVector<InterfacePort> *found)
{
    const std::vector<VerilogUnit> units = verilogUnits(tokens);
    const VerilogUnit *top = nullptr;
    for (const VerilogUnit &unit : units) {
        if (unit.name < 0)
            continue;
        if (tokens.is(unit.begin, "interface"))
            interfaces.insert(tokens.text(unit.name));
        else if (tokens.is(unit.begin, "module") && tokens.text(unit.name) == name)
            top = &unit;
    }
    const int open = top && !interfaces.isEmpty() ? openList(*top) : -1;
    if (open < 0)
        return text;
    const int close = tokens.at(open).match;
    QByteArray result = text;
    bool anyKept = false;
    for (int begin = open + 1; begin < close;) {
        int end = begin;
        while (end < close && !tokens.is(end, ','))
            end = tokens.behind(end);
        const bool goes = readPort(begin, end, found);
        if (goes)
            blank(tokens, begin, end, &result);
        if (begin > open + 1 && (goes || !anyKept))
            blank(tokens, begin - 1, begin, &result);
        anyKept = anyKept || !goes;
        begin = end + 1;
    }
    if (found->isEmpty())
        return text;
    const VerilogToken &semicolon = tokens.at(top->header - 1);
    return result.insert(int(semicolon.begin + semicolon.length), declarations);
}

} // namespace

QByteArray withoutInterfacePorts(const QByteArray &preprocessed, const QByteArray &top,
                                 QVector<InterfacePort> *ports)
{
    return InterfacePorts(preprocessed, top).run(ports);
}

} // namespace Standin
