// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/proxyaction.h"

#include <QScopedValueRollback>

namespace Standin {

ProxyAction::ProxyAction(QObject *parent)
    : QAction(parent)
{
    setEnabled(false);
    connect(this, SIGNAL(triggered()), this, SLOT(onTriggered()));
    connect(this, SIGNAL(changed()), this, SLOT(onOwnChanged()));
}

void ProxyAction::follow(QAction *action)
{
    if (live == action && action)
        return;
    if (live)
        disconnect(live, nullptr, this, nullptr);
    live = action;
    if (live) {
        connect(live, SIGNAL(changed()), this, SLOT(onLiveChanged()));
        connect(live, SIGNAL(destroyed(QObject *)), this, SLOT(onLiveChanged()));
    }
    onLiveChanged();
}

void ProxyAction::onLiveChanged()
{
    QScopedValueRollback<bool> guard(mirroring, true);
    const bool hasText = live && !live->text().isEmpty();
    setText(hasText ? live->text() : ownText);
    setToolTip(hasText ? live->toolTip() : ownToolTip);
    setEnabled(live && live->isEnabled());
}

// What the owner sets while no action is live is remembered; the enabled state isn't the owner's.
void ProxyAction::onOwnChanged()
{
    if (mirroring)
        return;
    ownText = text();
    ownToolTip = toolTip();
    onLiveChanged();
}

void ProxyAction::onTriggered()
{
    // trigger() works on a disabled action too.
    if (live && live->isEnabled())
        live->trigger();
}

} // namespace Standin
