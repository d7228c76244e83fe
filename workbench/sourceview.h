// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "core/iview.h"

namespace Workbench {

class SourceText;

/// Shows a text file, read-only, with line numbers.
class SourceView : public Core::IView
{
    Q_OBJECT

public:
    explicit SourceView(QWidget *parent = nullptr);

    /// Reads \a path. Longer files than 64 MiB are refused; bytes that are no UTF-8 are shown as
    /// replacement characters.
    /// \param error receives why the file can't be shown, in a form fit for the user.
    bool open(const QString &path, QString *error);

    /// The absolute path that was opened; empty before.
    QString file() const;

    /// Moves to \a line, counted from 1, and marks it. A line that isn't there does nothing.
    void showLine(int line);

    /// The line of the cursor, counted from 1.
    int currentLine() const;

private:
    QString path;
    SourceText *text;
};

} // namespace Workbench
