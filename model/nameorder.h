// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QVector>

namespace MOLK {

/// Puts names in their order, that of QString's operator<: by their UTF-16 units, shorter ones
/// first.
///
/// Names of a design have long beginnings in common. Each unit is looked at a few times only,
/// however many names begin alike, so the cost is that of reading the names and of sorting as many
/// numbers.
///
/// \param names aren't null and stay where they are.
/// \return the positions of the names in that order, those of equal names by position.
QVector<int> nameOrder(const QVector<const QString *> &names);

} // namespace MOLK
