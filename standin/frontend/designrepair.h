// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "frontend/designgraph.h"
#include "frontend/toollog.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QVector>

namespace Standin {

/// Takes out of a design what can't be read, so that the rest can.
///
/// It goes by where the errors are: what a lost semicolon or comma, or an unknown width or type in
/// the first line of a module makes unreadable is mended; else the statements that hold the errors
/// go, and what refers to them in the next round. A module that stays faulty round after round
/// loses its processes and assignments, then everything but its instances, then becomes a black
/// box.
class HOST_EXPORT DesignRepair
{
public:
    /// Rounds after which further ones make no difference any more.
    static constexpr int MaximumRounds = 20;

    /// \param top its name is never taken out.
    DesignRepair(const QByteArray &preprocessed, const QByteArray &top);

    /// A module, package or class that its file doesn't end.
    struct Unended
    {
        QByteArray name;
        QString file;
        int line;
    };

    /// Ends modules, packages and classes at the end of the file that they begin in, where the file
    /// forgets it.
    ///
    /// \param sources the names of the files that the text was made of.
    QVector<Unended> endModules(const QSet<QString> &sources);

    /// What an error is about.
    enum class Concern {
        Design,
        Checks,      ///< What no hardware comes of: classes, programs, testbenches.
        BlackBox,    ///< A connection of a module that the sources don't have.
        Consequence, ///< The lack of something that was taken out for another error.
    };

    /// Begins a round: takes out what \a errors lie in.
    ///
    /// \param concerns receives what each error is about.
    /// \return false if none of them names a place in the text.
    bool takeOut(const QVector<ToolMessage> &errors, QVector<Concern> *concerns);

    /// Takes out the statements that hold \a uses, which a scan of the text found.
    void takeOutInstances(const QVector<InstanceUse> &uses);

    /// Leaves the modules \a names without processes and assignments, or with nothing but their
    /// ports.
    void gut(const QSet<QByteArray> &names, bool toPorts);

    const QByteArray &text() const { return design; }

private:
    class Round;

    QByteArray design;
    QByteArray top;
    QSet<QString> needed;                ///< Modules below the top.
    QSet<QByteArray> blackBoxes;         ///< Types that the design lacks.
    QHash<QByteArray, int> faultyRounds; ///< Of each module by name.
    QSet<QByteArray> lost;               ///< Words in what was taken out.
    QSet<QString> mended;                ///< Places at which nothing but taking out is left.
    int patience = 8; ///< Rounds in which doubtful errors may still wait for the next one.
    bool isFirstRound = true;
};

} // namespace Standin
