// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The part of DesignRepair that ends what its file doesn't end.

#include "frontend/designrepair.h"
#include "frontend/sourceplaces.h"
#include "frontend/verilogitems.h"

#include <QHash>

namespace Standin {

/// Finds the modules that are open where a file ends.
class UnendedModules
{
public:
    explicit UnendedModules(const QByteArray &text)
        : tokens(text)
        , places(text)
    {
    }

    /// Looks at the text up to \a offset, which is the end of a file.
    void closeAt(quint32 offset);

    const SourcePlaces &sourcePlaces() const { return places; }

    struct Insertion
    {
        quint32 offset;
        int replaced; ///< Characters that give way to the text.
        QByteArray text;
    };

    QVector<DesignRepair::Unended> found;
    QVector<Insertion> insertions;

private:
    QByteArray endOf(int opener) const;
    void close(int token);
    void endLast(quint32 offset, int replaced);

    VerilogTokens tokens;
    SourcePlaces places;
    QVector<int> open;                ///< Tokens that open modules.
    QHash<QByteArray, int> openByEnd; ///< How many of them there are, by what ends them.
    int next = 0;
};

static bool opensUnit(const VerilogTokens &tokens, int i)
{
    if (tokens.at(i).kind != VerilogToken::Keyword)
        return false;
    const bool isClass = tokens.is(i, "class") && !tokens.is(i - 1, "typedef");
    return opensModule(tokens, i)
        || ((isClass || tokens.is(i, "package")) && tokens.isWord(moduleName(tokens, i)));
}

QByteArray UnendedModules::endOf(int opener) const
{
    return tokens.is(opener, "macromodule") ? "endmodule" : "end" + tokens.text(opener);
}

/// Ends the one that was opened last, at \a offset.
void UnendedModules::endLast(quint32 offset, int replaced)
{
    const int opener = open.takeLast();
    const QByteArray word = endOf(opener);
    --openByEnd[word];
    const quint32 at = tokens.at(opener).begin;
    const SourcePlaces::Stretch *stretch = places.stretchAt(at);
    found.append({tokens.text(moduleName(tokens, opener)), stretch ? stretch->file : QString(),
                  places.lineAt(at)});
    insertions.append({offset, replaced, word.leftJustified(replaced)});
}

/// Takes the end at \a token for that of what it is an end of, or else of what was opened last.
void UnendedModules::close(int token)
{
    const QByteArray word = tokens.text(token);
    const VerilogToken &end = tokens.at(token);
    if (openByEnd.value(word) == 0) {
        endLast(end.begin, int(end.length));
        return;
    }
    while (endOf(open.last()) != word) {
        endLast(end.begin, 0);
        insertions.last().text += ' ';
    }
    --openByEnd[word];
    open.removeLast();
}

void UnendedModules::closeAt(quint32 offset)
{
    for (; next < tokens.count() && tokens.at(next).begin < offset; ++next) {
        if (opensUnit(tokens, next)) {
            open.append(next);
            ++openByEnd[endOf(next)];
        } else if (!open.isEmpty()
                   && tokens.isAny(next,
                                   {"endmodule", "endinterface", "endprogram", "endprimitive",
                                    "endpackage", "endclass"})) {
            close(next);
        }
    }
    while (!open.isEmpty()) {
        endLast(offset, 0);
        insertions.last().text += '\n';
    }
}

QVector<DesignRepair::Unended> DesignRepair::endModules(const QSet<QString> &sources)
{
    UnendedModules unended(design);
    const std::vector<SourcePlaces::Stretch> &stretches = unended.sourcePlaces().stretches();
    for (std::size_t i = 1; i < stretches.size(); ++i) {
        if (stretches[i].line == 1 && sources.contains(stretches[i].file))
            unended.closeAt(stretches[i - 1].end);
    }
    unended.closeAt(quint32(design.size()));
    for (int i = unended.insertions.size() - 1; i >= 0; --i) {
        const UnendedModules::Insertion &insertion = unended.insertions.at(i);
        design.replace(int(insertion.offset), insertion.replaced, insertion.text);
    }
    return unended.found;
}

} // namespace Standin
