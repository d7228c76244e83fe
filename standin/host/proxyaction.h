// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAction>
#include <QPointer>

namespace Standin {

/// A menu's action that stands for whatever action is live at the moment.
///
/// It shows the live action's text, tool tip and enabled state, and triggers it. Without a live
/// action it is disabled and shows what its owner gave it with setText() and setToolTip(), as it
/// does while the live action has no text.
class ProxyAction : public QAction
{
    Q_OBJECT

public:
    explicit ProxyAction(QObject *parent);

    /// Makes \a action, or none, the live one.
    void follow(QAction *action);

private slots:
    void onLiveChanged();
    void onOwnChanged();
    void onTriggered();

private:
    QPointer<QAction> live;
    QString ownText;
    QString ownToolTip;
    bool mirroring = false;
};

} // namespace Standin
