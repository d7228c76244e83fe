// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "expressionmatcher.h"
#include "literalmatcher.h"
#include "netfilter.h"

#include <QScopedPointer>

namespace MOLK {

/// A filter's pattern, made ready once for any number of names.
class NetMatcher
{
public:
    explicit NetMatcher(const NetFilter &filter);
    ~NetMatcher();

    /// Whether \a name passes: always with an empty pattern; literally as QString::indexOf()
    /// tells; as an expression as QRegExp::exactMatch() tells, so never with an invalid one.
    bool matches(const QString &name) const;

    /// Those of \a nets whose full path names pass, in their order.
    QList<FATHOM::RtlNet *> passing(const QList<FATHOM::RtlNet *> &nets) const;

    /// Those of \a buses whose full bus names pass, in their order.
    QList<FATHOM::RtlNetBus *> passing(const QList<FATHOM::RtlNetBus *> &buses) const;

private:
    Q_DISABLE_COPY(NetMatcher)

    bool passesAll;
    LiteralMatcher literal;
    QScopedPointer<ExpressionMatcher> expression; // Null in a literal search.
};

} // namespace MOLK
