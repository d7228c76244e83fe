// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QHash>
#include <QList>
#include <QPointer>
#include <QWidget>

class QTabWidget;

namespace Core {
class IView;
}

namespace Standin {

class ViewPage;

/// The middle of the window: one tab for each shown view.
///
///     DocumentArea
///       QTabWidget "documentTabs"
///         ViewPage            a view's parent, which the view may close
///           Core::IView
///
/// The area owns what it shows. A view leaves it by closeView(), by the button of its tab, by
/// closing the page that is its parent, or with the area itself. In each case viewClosed() is sent
/// while the view is whole, and the view is deleted later, so that it may be closed from one of its
/// own slots. A view that is deleted from outside just disappears.
class HOST_EXPORT DocumentArea : public QWidget
{
    Q_OBJECT

public:
    explicit DocumentArea(QWidget *parent = nullptr);

    /// Sends viewClosed() for each view that is left; no close event is sent.
    ~DocumentArea() override;

    /// The active view; null if there is none.
    Core::IView *activeView() const;

    /// All views in the order of their tabs.
    QList<Core::IView *> views() const;

    /// The text on the tab of \a view: its short title, or its window title as long as it has
    /// none; empty if \a view isn't shown here.
    QString tabText(Core::IView *view) const;

    /// Shows \a view in a tab of its own, or brings its tab forward. viewActivated() follows in
    /// both cases. Nothing happens if \a view has been closed and only waits for its deletion.
    void showView(Core::IView *view);

    /// Sends \a view a close event, and closes it unless it refuses.
    /// \return whether the view has gone; false also while a close event of it is being handled,
    ///         and for a view that isn't shown here.
    bool closeView(Core::IView *view);

    /// Closes the views one by one, the active one first, until one refuses.
    /// \return whether all have gone.
    bool closeAllViews();

    /// Closes all views without asking them.
    void dropAllViews();

signals:
    /// \a view has become the active view, or was to be shown while it was active; null when none
    /// is active any more.
    void viewActivated(Core::IView *view);

    /// \a view has left. It is deleted when the event loop turns.
    void viewClosed(Core::IView *view);

    /// The window title or the short title of \a view has changed.
    void viewTitleChanged(Core::IView *view);

public:
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void onCurrentChanged();
    void onTabCloseRequested(int index);
    void onViewDestroyed(QObject *view);

private:
    friend class ViewPage;

    ViewPage *addPage(Core::IView *view);
    void leave(ViewPage *page);
    void forget(ViewPage *page);
    void activate(ViewPage *page);
    void activateCurrent();
    void refreshTitle(ViewPage *page);

    QTabWidget *tabs;
    QHash<QObject *, ViewPage *> pages;
    ViewPage *activePage = nullptr;
    bool changingTabs = false;
};

} // namespace Standin
