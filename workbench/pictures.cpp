// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "pictures.h"

#include <QDir>

// The macro only works outside of any namespace.
static void initResources()
{
    Q_INIT_RESOURCE(pictures);
}

namespace Workbench {

void initPictures()
{
    initResources();
}

} // namespace Workbench
