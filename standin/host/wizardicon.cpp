// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "core/iwizardfactory.h"

#include <QApplication>
#include <QStyle>

namespace Core {

QIcon IWizardFactory::icon() const
{
    return QApplication::style()->standardIcon(QStyle::SP_FileIcon);
}

} // namespace Core
