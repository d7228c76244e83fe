// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QStringList>

namespace MOLK {
class MolkCore;
}

/// The whole model as indented lines, one a core, port and signal, with every field of each. A null
/// alias is told from an empty one. Two models are equal if their lines are.
QStringList modelLines(const QList<MOLK::MolkCore *> &cores);
