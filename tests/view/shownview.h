// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "reloadbanner.h"
#include "viewbench.h"

#include <QPointer>

/// A view in a parent of its own, as a host shows it; the view may close the parent.
class ShownView
{
public:
    ShownView(const ViewBench &bench, const QString &file);
    ~ShownView();

    Q_DISABLE_COPY(ShownView)

    /// The banners of the view in the order in which they came.
    QList<MOLK::ReloadBanner *> banners() const;

    /// The first banner, or null.
    MOLK::ReloadBanner *banner() const;

    QPointer<QWidget> page;
    QPointer<MOLK::MolkView> view; ///< Null from the start if the file couldn't be opened.
};

/// The question that \a banner asks.
QString bannerText(const MOLK::ReloadBanner *banner);

/// Clicks the button \a button of \a banner, "btnA" or "btnB".
void press(const MOLK::ReloadBanner *banner, const QString &button);
