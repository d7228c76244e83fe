// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "turnloop.h"

#include <QCoreApplication>
#include <QEvent>

void turnLoop()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}
