// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "plainview.h"

class Stage;
class QTreeWidget;

/// Everything that the user can see, the model behind it and the file, as lines.
QStringList linesOf(const Plain::View &view, const Plain::Disk &disk);
QStringList linesOf(const Stage &stage);

/// The rows of a flat list of signals as both sides tell them.
QStringList rowLines(const Plain::Items &items);
QStringList rowLines(const QTreeWidget *tree);

/// The first difference of two lists of lines; empty if there is none.
QString difference(const QStringList &wanted, const QStringList &got);
