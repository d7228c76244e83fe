// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "core/viewmanager.h"

#include <QHash>
#include <QPointer>
#include <QStringList>

namespace Standin {

class DocumentArea;

/// The view manager of a Host: reports what happens in its document area, and knows the contexts.
class ViewService : public Core::ViewManager
{
    Q_OBJECT

public:
    /// Becomes what Core::ViewManager::instance() answers.
    ViewService();

    /// Deletes the area if nobody has taken it over.
    ~ViewService() override;

    /// The view manager of the living Host; null without one.
    static ViewService *current();

    /// The area, made on the first call. Whoever gives it a parent owns it.
    DocumentArea *area();

    /// As area(), but null as long as none was made.
    DocumentArea *existingArea() const;

    void setContext(QWidget *widget, const QString &name, bool on);

    /// The contexts that are active, innermost first: those of the widget with the focus and of its
    /// parents, then those of the active view and of its parents.
    QStringList activeContexts() const;

    QPointer<QWidget> mainWindow;

signals:
    /// The answer of activeContexts() may have changed.
    void activeContextsChanged();

private slots:
    void onViewActivated(Core::IView *view);
    void onViewClosed(Core::IView *view);
    void onWidgetDestroyed(QObject *widget);

private:
    void appendContexts(QStringList &names, const QWidget *widget) const;

    QPointer<DocumentArea> documentArea;
    QHash<const QObject *, QStringList> contexts;
};

} // namespace Standin
