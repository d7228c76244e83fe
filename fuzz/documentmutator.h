// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// Changes the document \a bytes in its structure: elements and attributes are repeated, dropped,
/// moved and exchanged, texts and values replaced by others of the format or by ones that are just
/// beyond it. The outcome is well formed, so that it comes further into a reader than changed bytes
/// do.
///
/// \param seed decides what is changed; equal arguments give an equal result.
/// \return the changed document; null if \a bytes isn't well formed.
QByteArray mutatedDocument(const QByteArray &bytes, unsigned seed);
