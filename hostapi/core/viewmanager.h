// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QObject>

class QWidget;

namespace Core {

class IView;

/// The host's document area: shows views, closes them, and tells which one is active.
class HOST_EXPORT ViewManager : public QObject
{
    Q_OBJECT

public:
    /// The one view manager; never null while a plug-in is loaded.
    static ViewManager *instance();

    /// Shows \a view, or brings it forward if it is shown already; viewActiveted() follows. The
    /// host owns the view from the first call on and deletes it after closing it.
    static void showView(IView *view);

    /// Closes \a view as if the user had: its close event is sent and may refuse.
    /// \return whether the view closed. viewClosed() follows then, while \a view still is an object
    ///         of its own class.
    static bool closeView(IView *view);

    /// Ties \a widget to \a context: actions registered in that context are live while the widget,
    /// or a child of it, is active. With \a on false the tie is undone.
    static void registerContext(QWidget *widget, const QString &context, bool on);

    /// The widget that message boxes without a view of their own take as parent; may be null
    /// before the host has a window.
    static QWidget *dialogParent();

signals:
    /// \a view has become the active view; null when no view is active any more.
    void viewActiveted(Core::IView *view);

    /// \a view has been closed. It is deleted after the signal.
    void viewClosed(Core::IView *view);

protected:
    explicit ViewManager(QObject *parent = nullptr);
    ~ViewManager() override;
};

} // namespace Core
