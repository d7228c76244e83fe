// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "shownview.h"
#include "viewbench.h"

#include <QObject>

#include <memory>

/// Base of the tests of a view.
///
/// Each test function begins with a fresh host and directory. It opens its view by one of the
/// operations here, wrapped in QVERIFY; the view goes when the function ends, however it ends.
class ViewTest : public QObject
{
    Q_OBJECT

protected:
    ViewTest();
    ~ViewTest() override;

    /// Makes a view without parent that isn't opened yet.
    void newView();

    /// Opens a view without parent on \a path.
    bool openFile(const QString &path);

    /// Writes the file "a.molk" with \a count cores and opens a view without parent on it.
    bool openCores(int count = 1);

    /// openCores() in a window that is the active one.
    bool openActive(int count = 1);

    /// Shows a view on \a path as a host does, in a parent of its own.
    bool showFile(const QString &path);

    /// Writes the file "a.molk" with \a count cores and shows a view on it as a host does.
    bool showCores(int count = 1);

    /// The document behind the one view that is open.
    MOLK::private_impl::MolkViewPrivate *document() const;

    std::unique_ptr<ViewBench> bench;
    QString file;                         ///< What was opened last.
    std::unique_ptr<MOLK::MolkView> view; ///< Null unless made without parent.
    std::unique_ptr<ShownView> shown;     ///< Null unless shown as a host does.

private slots:
    void init();
    void cleanup();
};
