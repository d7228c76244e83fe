// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "frontend/toollog.h"
#include "frontend/vhdlconstructs.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QVector>

namespace Standin {

/// What all repairs of a design know.
struct VhdlLosses
{
    QSet<QByteArray> names;            ///< Declared in what was taken out, in lower case.
    QSet<QByteArray> missingLibraries; ///< That the design uses and doesn't have, in lower case.
};

/// Takes out of a VHDL file what can't be read, so that the rest can.
///
/// It goes by where the errors are: first the statement or declaration that holds one goes, and
/// what refers to it in the next round. Of a unit that stays faulty round after round, whole
/// processes go, then all but the instances, then all but the ports, then the unit itself. Lines
/// and columns of what stays are as they were.
class HOST_EXPORT VhdlRepair
{
public:
    explicit VhdlRepair(const QByteArray &source);

    /// What an error is about.
    enum class Concern {
        Design,
        Library,     ///< A library that the sources don't have, or what is instantiated from one.
        Consequence, ///< The lack of something that was taken out for another error.
    };

    /// Takes out what \a errors lie in, all of them errors in this file.
    ///
    /// \param concerns receives what each error is about.
    /// \return false if nothing is left to be taken out.
    bool takeOut(const QVector<ToolMessage> &errors, VhdlLosses *losses,
                 QVector<Concern> *concerns);

    /// Names of all units that are left, in lower case.
    QList<QByteArray> unitNames() const;

    struct Architecture
    {
        QByteArray key;
        QByteArray entity; ///< In lower case.
        int line;
    };

    /// The architectures that still have something in them.
    QVector<Architecture> architectures() const;

    /// Leaves the architectures with the keys \a which without everything but declarations and
    /// instances, or without anything.
    void gut(const QSet<QByteArray> &which, bool toPorts);

    const QByteArray &text() const { return source; }

private:
    class Round;

    void endComment();

    QByteArray source;
    QHash<QByteArray, int> faultyRounds; ///< Of each unit by kind and name.
};

} // namespace Standin
