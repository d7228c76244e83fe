// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QWidget>

namespace Core {

/// Base of every view that the host shows in its document area.
///
/// A shown view gets a parent widget of its own from the host. A view may set
/// Qt::WA_DeleteOnClose on that parent and close it, and is gone with it.
class HOST_EXPORT IView : public QWidget
{
    Q_OBJECT

public:
    explicit IView(QWidget *parent = nullptr);
    ~IView() override;

    /// Sets the title that the host shows where room is short, such as on a tab. It is independent
    /// of the window title.
    void setShortTitle(const QString &title);

    /// Called when the view has become the host's active view.
    virtual void onActivated();

    /// Called when another view has become active, or none.
    virtual void onDeactivated();
};

} // namespace Core
