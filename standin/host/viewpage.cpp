// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/viewpage.h"

#include "host/documentarea.h"

#include "core/iview.h"

#include <QCloseEvent>
#include <QVBoxLayout>

namespace Standin {

ViewPage::ViewPage(Core::IView *shownView, DocumentArea *documentArea)
    : QWidget(documentArea)
    , view(shownView)
    , area(documentArea)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view);
    setFocusProxy(view);
}

ViewPage::~ViewPage()
{
    if (!left)
        area->forget(this);
}

void ViewPage::closeEvent(QCloseEvent *event)
{
    event->accept();
    if (!left)
        area->leave(this);
}

} // namespace Standin
