// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "plaindesign.h"

namespace Plain {

enum class Syntax { Normal, Wildcard, Expression };

/// How the search dialog is filled in.
struct Search
{
    QString pattern;
    Syntax syntax = Syntax::Normal;
    bool caseSensitive = false;
    bool advanced = false;
    int level = 0; ///< What "Search In" stands on.
    bool subentries = false;
    bool hierarchyView = false;
};

/// One row of the results; the rows below it follow it, one deeper.
struct Found
{
    QString text;
    int depth = 0;
    bool hasItem = false; ///< Rows without an item of their own are picked by their text.
    Signal item;
    bool isModule = false;
    bool selectable = true;
};

QList<Found> search(const Design &design, const Search &search, int type);

/// What the rows \a rows of \a results amount to when they are picked.
Items picked(const QList<Found> &results, const QList<int> &rows);

/// The text of a level in the list "Search In".
QString levelText(const Design &design, int level);

} // namespace Plain
