// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

class ShownView;

namespace MOLK {
class ReloadBanner;
}

/// What a banner asks about \a file that has changed, or that has been removed.
QString changedText(const QString &file);
QString removedText(const QString &file);

/// Adds \a bytes to \a file, in place.
void append(const QString &file, const QByteArray &bytes);

/// Puts \a bytes in place of \a file by renaming, as careful programs save.
void replace(const QString &file, const QByteArray &bytes);

/// Raises the banner of \a shown at once, as the end of the waiting does.
MOLK::ReloadBanner *raiseBanner(const ShownView &shown);
