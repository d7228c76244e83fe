// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "viewbench.h"

#include <QStringList>

/// A view with an unsaved edit on a file that takes several writes, and what a save does to both.
class SaveBench
{
public:
    /// \param name of the file, in a directory of its own.
    explicit SaveBench(const QString &name = "a.molk");

    /// Opens the view, with the edit in it. Whatever is to be arranged with the file comes before.
    void open();

    /// The directory that holds the file and nothing else.
    QString directory() const { return bench.path("d"); }

    QByteArray oldBytes() const { return before; }

    /// What a save that works writes.
    QByteArray newBytes() const;

    /// Saves, and answers the message about a failure, whose title and text are checked.
    /// \return what save() returned; the running test fails if the message and that don't fit.
    bool save();

    /// What is wrong with the view and the directory after a save that returned \a saved; empty if
    /// nothing is. The file must hold one whole text, the star must fit, no other file may be left.
    QString faultAfter(bool saved) const;

    /// What is wrong with the watch on the file: it is changed from outside, and the view has to
    /// ask whether to reload. Answers with no.
    QString faultOfWatch();

    /// Edits once more, so that there is something to save.
    void edit();

    ViewBench bench;
    QString file;
    std::unique_ptr<MOLK::MolkView> view;

private:
    QByteArray before;
};
