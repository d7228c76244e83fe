// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>

namespace MOLK {
class MolkCore;
}

/// The bytes that a configuration file has to have, made the plain way with Qt's stream writer.
QByteArray streamWrittenBytes(const QList<MOLK::MolkCore *> &cores);
