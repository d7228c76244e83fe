// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "plaindesign.h"
#include "plainpage.h"

#include <QVariantMap>

namespace Plain {

struct Banner
{
    bool aboutDesign = false;
    QString text;
    QString yes;
    QString no;
};

/// The Save action as it stands in menus.
struct Action
{
    QString text;
    QString toolTip;
    bool enabled = false;
};

/// What lies under the view's file name on disk.
struct Disk
{
    enum Kind { Missing, Readable, Damaged, Directory };

    Kind kind = Missing;
    Configuration content; ///< Of a readable file.
    QByteArray bytes;
};

/// A view and the action that follows it.
class View
{
public:
    explicit View(const QString &path = QString());

    /// The file was read and the design too.
    void open(const Configuration &configuration, int readDesign);

    /// The view was brought forward, and \a saveAction follows it from here on. Whoever calls this
    /// takes the action away from the view that had it.
    void activate(Action *saveAction);

    /// The view has gone.
    void close();

    /// The view goes without asking about unsaved edits.
    void closeUnasked();

    /// The user edited something.
    void touch();

    void addCore();
    void removeCore(int index);

    /// Stores the pages and judges the cores.
    /// \return the report; empty if they may be written.
    QString check();

    /// The check was passed: what is to be written.
    Configuration coresToWrite();

    /// It was written.
    void saved();

    /// The pages are made anew from the file.
    void reload(const Configuration &configuration);

    /// A design was read, with success.
    void takeDesign(int readDesign);

    /// The question that a host event raises; null if it raises none.
    QString questionFor(const QString &event, const QVariantMap &values, int fileType,
                        bool fileEnabled) const;

    void addDesignBanner(const QString &question);
    void addFileBanner(bool exists);
    void removeBanner(bool aboutDesign);

    /// Brings the Save action up to date if it follows this view.
    void updateAction();

    Configuration cores() const;
    QString baseName() const;

    QString path;
    bool isOpen = false;
    QList<Page> pages;
    int current = 0;
    bool modified = false;
    bool watched = false;
    bool reloadPending = false;
    bool designChanged = false;
    QString title;
    QString shortTitle;
    QList<Banner> banners;
    int design = 0;
    Action *save = nullptr; ///< Null while it follows another view.

private:
    void makePages(const Configuration &configuration);
};

/// A view and what lies under its file name.
struct Document
{
    View view;
    Disk disk;
};

} // namespace Plain
