// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QObject>
#include <QPair>

class QAction;

namespace Standin {

class ProxyAction;
class ViewService;

/// The table of actions of a Host: which action an identifier stands for now.
class ActionService : public QObject
{
    Q_OBJECT

public:
    explicit ActionService(ViewService *views);
    ~ActionService() override;

    /// The table of the living Host; null without one.
    static ActionService *current();

    /// See Core::ActionManager::registerAction().
    bool add(QAction *action, const QString &id, const QString &context);

    /// The action that \a id stands for in the active contexts; null if there is none.
    QAction *activeAction(const QString &id) const;

    /// The action for menus, one for each identifier; see ProxyAction.
    QAction *proxyAction(const QString &id);

private slots:
    void refreshProxies();
    void onActionDestroyed(QObject *action);

private:
    using Place = QPair<QString, QString>; // identifier, context

    ViewService *views;
    QHash<Place, QAction *> actions;
    QHash<QString, ProxyAction *> proxies;
};

} // namespace Standin
