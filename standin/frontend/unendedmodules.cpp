// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The part of DesignRepair that ends what its file doesn't end.

#include "frontend/designrepair.h"
#include "frontend/sourceplaces.h"
#include "frontend/verilogitems.h"

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
        QByteArray text;
    };

    QVector<DesignRepair::Unended> found;
    QVector<Insertion> insertions;

private:
    VerilogTokens tokens;
    SourcePlaces places;
    QVector<int> open; ///< Tokens that open modules.
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

void UnendedModules::closeAt(quint32 offset)
{
    for (; next < tokens.count() && tokens.at(next).begin < offset; ++next) {
        if (opensUnit(tokens, next))
            open.append(next);
        else if (!open.isEmpty()
                 && tokens.isAny(next,
                                 {"endmodule", "endinterface", "endprogram", "endprimitive",
                                  "endpackage", "endclass"}))
            open.removeLast();
    }
    while (!open.isEmpty()) {
        const int opener = open.takeLast();
        const quint32 at = tokens.at(opener).begin;
        const SourcePlaces::Stretch *stretch = places.stretchAt(at);
        found.append({tokens.text(moduleName(tokens, opener)), stretch ? stretch->file : QString(),
                      places.lineAt(at)});
        const QByteArray word = tokens.is(opener, "macromodule") ? "module" : tokens.text(opener);
        insertions.append({offset, "end" + word + '\n'});
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
    for (int i = unended.insertions.size() - 1; i >= 0; --i)
        design.insert(int(unended.insertions.at(i).offset), unended.insertions.at(i).text);
    return unended.found;
}

} // namespace Standin
