// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

class Scene;

/// Something that happens to a view while a nested event loop runs in it.
struct LifetimeAct
{
    const char *name;
    void (*run)(Scene &scene);

    /// The edits that have to be there afterwards, in the view or, if it is gone, on disk, given
    /// those that the view had.
    QStringList (*keeps)(const QStringList &edits);

    /// The view is gone afterwards, where it had been shown.
    bool endsView;

    /// The view is saved first.
    bool saves;

    /// The design is read again.
    bool readsDesign;
};

/// All of them; the first one does nothing.
const QList<LifetimeAct> &lifetimeActs();
