// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "plainview.h"

class Stage;
class QTreeWidget;

/// Everything that the user can see, the model behind it and the file, as lines.
QStringList linesOf(const QList<Plain::Document> &documents, const Plain::Action &action);

/// The same of the first \a documents documents of the real thing.
QStringList linesOf(Stage *stage, int documents);

/// The rows of a flat list of signals as both sides tell them.
QStringList rowLines(const Plain::Items &items);
QStringList rowLines(const QTreeWidget *tree);

/// The first difference of two lists of lines; empty if there is none.
QString difference(const QStringList &wanted, const QStringList &got);
