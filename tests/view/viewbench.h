// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "molkview.h"
#include "molkview_p.h"

#include "host/host.h"

#include <QTemporaryDir>
#include <QWidget>

#include <memory>

namespace MOLK {
class MolkCore;
}

/// A new netlist of the design that the bench serves, owned by the caller:
///
///   top
///     clk, rst      rst may not be watched
///     q[3:0]
///     u0 (uart)
///       ready
FATHOM::RtlNetlist *benchNetlist();

/// A new core with one single net at its first Probe In; owned by the caller.
MOLK::MolkCore *coreWatching(int id, const QString &name);

/// A host that serves a small design, and a directory with files for views on it.
class ViewBench
{
public:
    ViewBench();

    /// The path of \a name in the directory.
    QString path(const QString &name) const;

    /// Writes a file without cores and returns its path.
    QString writeSkeleton(const QString &name = "a.molk") const;

    /// Writes a file with \a count cores, each of which watches top/clk, and returns its path.
    QString writeCores(int count, const QString &name = "a.molk") const;

    /// Writes \a content to \a name in place, without leaving the old inode, and returns the path.
    QString write(const QString &name, const QByteArray &content) const;

    static QByteArray read(const QString &file);

    /// A view on \a file, opened with success, or null if that failed.
    std::unique_ptr<MOLK::MolkView> openView(const QString &file) const;

    Standin::Host host;
    QTemporaryDir dir;
};

/// What the document behind \a view is.
MOLK::private_impl::MolkViewPrivate *documentOf(MOLK::MolkView *view);
MOLK::private_impl::MolkViewPrivate *documentOf(const std::unique_ptr<MOLK::MolkView> &view);

/// The descendant of \a widget of the type \a Type that is called \a name.
template<typename Type>
Type *child(const QWidget *widget, const QString &name)
{
    return widget->findChild<Type *>(name);
}

template<typename Type>
Type *child(const std::unique_ptr<MOLK::MolkView> &view, const QString &name)
{
    return child<Type>(view.get(), name);
}

/// The short title of \a view as set last; empty if none was set.
QString shortTitle(const QWidget *view);
