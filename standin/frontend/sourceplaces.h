// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVector>

#include <vector>

namespace Standin {

/// Leads from places in files to offsets in preprocessed text and back, by the `line directives in
/// the text.
class HOST_EXPORT SourcePlaces
{
public:
    /// \param preprocessed must outlive the object.
    explicit SourcePlaces(const QByteArray &preprocessed);

    /// Where the line \a line of \a file begins, once for each time that it is part of the text.
    QVector<quint32> offsets(const QString &file, int line) const;

    /// A stretch of the text that came from one file without a break.
    struct Stretch
    {
        quint32 begin; ///< Offset of its first line.
        quint32 end;   ///< Offset of the directive that ends it.
        int line;      ///< Number of its first line.
        QString file;
    };

    /// All stretches, in order.
    const std::vector<Stretch> &stretches() const { return all; }

    /// The stretch that \a offset lies in; null in front of all.
    const Stretch *stretchAt(quint32 offset) const;

    /// The number of the line that \a offset lies in, in the file of its stretch.
    int lineAt(quint32 offset) const;

private:
    QByteArray text;
    std::vector<Stretch> all;
    QHash<QString, QVector<int>> byFile; ///< Indices of stretches.
};

} // namespace Standin
