// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QString>

namespace Workbench {

/// \a image with at most 256 colours, so that its file is small. Colours that look like a more
/// frequent one, such as those in the edges of letters, become that one.
QImage withFewColours(const QImage &image);

/// Writes \a image, with few colours, to the PNG file \a path.
/// \return whether it is written.
bool savePicture(const QImage &image, const QString &path);

} // namespace Workbench
